#include "DocumentGenerator.h"

#include "model/FlatFeeEntry.h"
#include "model/StoredForms.h"

#include <algorithm>

namespace {

// The years the entries are spread over; running and paused timers start on the last day.
QDate firstDay() {
    return QDate(2019, 1, 2);
}

QDate lastDay() {
    return QDate(2024, 11, 29);
}

// Three timers run, two more are paused, each in a project of its own.
constexpr int runningTimers = 3;
constexpr int pausedTimers = 2;

// Most comments are a few words; some are a sentence, a few run over several paragraphs.
const QList<QString> &shortPhrases() {
    static const QList<QString> list{
        QStringLiteral("Standup"),    QStringLiteral("Emails"),    QStringLiteral("Code review"),
        QStringLiteral("Bugfix"),     QStringLiteral("Telefonat"), QStringLiteral("Übergabe"),
        QStringLiteral("打ち合わせ"), QStringLiteral("Deploy 🚀"),  QStringLiteral("Q&A"),
        QStringLiteral("Workshop"),   QStringLiteral("Planning"),  QStringLiteral("Doku"),
    };
    return list;
}

const QList<QString> &phrases() {
    static const QList<QString> list{
        QStringLiteral("Call with the client about the new layout"),
        QStringLiteral("Reviewed the pull request and left comments on the caching layer"),
        QStringLiteral("Fixed the login bug reported by support"),
        QStringLiteral("Budget & timeline for Q3 <draft>"),
        QStringLiteral("Prepared the \"final\" slides for the board meeting"),
        QStringLiteral("Travel to the customer's office, workshop on requirements"),
        QStringLiteral("Updated the invoice template and sent it to accounting"),
        QStringLiteral("Refactoring of the export module, tests for the edge cases"),
        QStringLiteral("Research: competitor pricing pages"),
        QStringLiteral("Weekly sync with the design team"),
        QStringLiteral("Besprechung mit Frau Müller über die Änderungswünsche"),
        QStringLiteral("Überarbeitung der Größentabelle für den Katalog"),
        QStringLiteral("Straßenbau-Gutachten geprüft, Rückfragen an das Büro in Köln"),
        QStringLiteral("Angebot für die Wartung erstellt (Stundensatz laut Vertrag)"),
        QStringLiteral("会議の議事録を作成"),
        QStringLiteral("デザインレビューと修正"),
        QStringLiteral("請求書の確認と送付"),
        QStringLiteral("東京オフィスとのビデオ会議"),
        QStringLiteral("🚀 Release 2.4 shipped"),
        QStringLiteral("☕ Coffee chat with the new intern ✅"),
        QStringLiteral("Bug hunt 🐛 in the sync code, finally found it 🎉"),
        QStringLiteral("Pasted from mail:\r\nPlease send the offer by Friday"),
    };
    return list;
}

const QList<QString> &tagWords() {
    static const QList<QString> list{
        QStringLiteral("design"),      QStringLiteral("review"),   QStringLiteral("meeting"),
        QStringLiteral("development"), QStringLiteral("support"),  QStringLiteral("travel"),
        QStringLiteral("admin"),       QStringLiteral("research"), QStringLiteral("Überstunden"),
        QStringLiteral("会議"),
    };
    return list;
}

const QList<QString> &projectNames() {
    static const QList<QString> list{
        QStringLiteral("Website relaunch"), QStringLiteral("Müller GmbH – Buchhaltung"),
        QStringLiteral("東京オフィス"),     QStringLiteral("Mobile app"),
        QStringLiteral("Internal tools"),   QStringLiteral("Café Größenwahn"),
        QStringLiteral("Support contract"), QStringLiteral("Conference talk 🎤"),
    };
    return list;
}

const QList<QString> &attachmentPaths() {
    static const QList<QString> list{
        QStringLiteral("/home/anna/Documents/Offers/offer-2021-034.pdf"),
        QStringLiteral("/home/anna/Documents/Müller/Protokoll März.odt"),
        QStringLiteral("/home/anna/Pictures/whiteboard.jpg"),
    };
    return list;
}

const QList<float> &wages() {
    static const QList<float> list{0.0f, 35.0f, 45.5f, 60.0f, 75.0f, 85.0f, 95.0f, 120.0f, 150.0f};
    return list;
}

const QList<int> &roundingSteps() {
    static const QList<int> list{5, 6, 10, 15, 30};
    return list;
}

} // namespace

DocumentGenerator::DocumentGenerator(std::uint32_t seed)
    : m_random(seed) {}

ProjectList DocumentGenerator::generate(int itemCount, int projectCount) {
    ProjectList projects;
    if (projectCount <= 0)
        return projects;

    // Uneven shares: most projects are small, one in ten is large.
    QList<qint64> weights;
    qint64 weightSum = 0;
    for (int i = 0; i < projectCount; ++i) {
        weights.append(chance(10) ? between(20, 60) : between(1, 15));
        weightSum += weights.last();
    }
    QList<int> shares;
    int assigned = 0;
    for (int i = 0; i < projectCount; ++i) {
        shares.append(int(qint64(itemCount) * weights[i] / weightSum));
        assigned += shares.last();
    }
    for (int i = 0; assigned < itemCount; i = (i + 1) % projectCount, ++assigned)
        ++shares[i];

    for (int i = 0; i < projectCount; ++i) {
        auto project = makeProject(i);
        const bool hasTimer = i < runningTimers + pausedTimers && shares[i] > 0;
        for (const QDate day : days(shares[i] - (hasTimer ? 1 : 0))) {
            const int kind = below(100);
            if (kind < 60)
                project->addEntry(makePeriodEntry(day));
            else if (kind < 90)
                project->addEntry(makeDayEntry(day));
            else
                project->addEntry(makeFlatFee(day));
        }
        if (hasTimer)
            project->addEntry(makeTimer(lastDay(), i >= runningTimers));
        projects.append(project);
    }
    return projects;
}

std::shared_ptr<Project> DocumentGenerator::makeProject(int index) {
    auto project = std::make_shared<Project>();
    project->setName(pick(projectNames()) + u' ' + QString::number(index + 1));
    project->setDescription(chance(50) ? comment() : QStringLiteral(""));
    project->setTags(tags());
    project->setHourlyWage(pick(wages()));
    // Half the projects round nothing, a quarter the clock times, a quarter each duration.
    const int rounding = below(4);
    if (rounding >= 2) {
        project->setRoundWhat(rounding - 1);
        project->setRoundTo(pick(roundingSteps()));
        project->setRoundType(below(3));
    }
    project->setExpanded(chance(30));
    project->setCustomer(chance(70) ? between(1, 60) : -1);
    if (chance(10))
        project->setAttachments(QStringList{pick(attachmentPaths())});
    return project;
}

std::shared_ptr<Entry> DocumentGenerator::makePeriodEntry(QDate day) {
    auto entry = std::make_shared<Entry>();
    entry->setHasPeriod(true);
    // A few late shifts run past midnight.
    const int start = chance(3) ? between(20 * 60, 23 * 60) : between(7 * 60, 17 * 60);
    const int length = chance(70) ? between(15, 240) : between(241, 600);
    const QDateTime from(day, QTime(start / 60, start % 60));
    const QDateTime to = from.addSecs(qint64(length) * 60);
    entry->setFromDate(StoredForms::dateText(from.date()));
    entry->setFromTime(StoredForms::timeText(from.time()));
    entry->setToDate(StoredForms::dateText(to.date()));
    entry->setToTime(StoredForms::timeText(to.time()));
    entry->setTime(length);

    // Pauses sit in equal slots of the period, so they never overlap.
    const int roll = below(100);
    const int pauseCount = length < 60 ? 0 : roll < 70 ? 0 : roll < 90 ? 1 : roll < 97 ? 2 : 3;
    PauseList pauses;
    const int slot = length / (pauseCount + 1);
    for (int i = 1; i <= pauseCount; ++i) {
        const int offset = slot * i - between(0, slot / 2);
        const int duration = between(5, std::min(45, slot / 2));
        pauses.append(std::make_shared<PauseEntry>(from.addSecs(qint64(offset) * 60),
                                                   from.addSecs(qint64(offset + duration) * 60)));
    }
    entry->setPauseEntries(pauses);
    fillItem(*entry);
    return entry;
}

std::shared_ptr<Entry> DocumentGenerator::makeDayEntry(QDate day) {
    auto entry = std::make_shared<Entry>();
    entry->setDate(StoredForms::dateText(day));
    entry->setTime(chance(70) ? between(1, 32) * 15 : between(5, 600));
    fillItem(*entry);
    return entry;
}

std::shared_ptr<ProjectItem> DocumentGenerator::makeFlatFee(QDate day) {
    auto fee = std::make_shared<FlatFeeEntry>();
    fee->setDate(StoredForms::dateText(day));
    fee->setAmount(float(between(2, 400)) * 5.0f + (chance(20) ? 0.99f : 0.0f));
    fillItem(*fee);
    return fee;
}

std::shared_ptr<Entry> DocumentGenerator::makeTimer(QDate day, bool paused) {
    auto entry = std::make_shared<Entry>();
    entry->setHasPeriod(true);
    entry->setIsWorking(true);
    const QDateTime from(day, QTime(between(8, 10), between(0, 59)));
    entry->setFromDate(StoredForms::dateText(from.date()));
    entry->setFromTime(StoredForms::timeText(from.time()));
    if (paused) {
        const QDateTime lunch = from.addSecs(qint64(between(60, 120)) * 60);
        entry->setPauseEntries(
            {std::make_shared<PauseEntry>(lunch, lunch.addSecs(qint64(between(20, 45)) * 60))});
        entry->setPausedAt(lunch.addSecs(qint64(between(120, 240)) * 60));
    }
    entry->setComment(comment());
    entry->setTags(tags());
    return entry;
}

void DocumentGenerator::fillItem(ProjectItem &item) {
    item.setChecked(chance(40));
    item.setComment(comment());
    item.setTags(tags());
    if (chance(1))
        item.setAttachments(QStringList{pick(attachmentPaths())});
}

QString DocumentGenerator::comment() {
    const int roll = below(100);
    if (roll < 25)
        return QStringLiteral("");
    QString text;
    if (roll < 78) {
        text = pick(shortPhrases());
    } else {
        const int sentences = roll < 97 ? 1 : between(3, 6);
        for (int i = 0; i < sentences; ++i) {
            if (i > 0)
                text += chance(30) ? u'\n' : u' ';
            text += pick(phrases());
            text += u'.';
        }
    }
    if (chance(15))
        text += QStringLiteral(" #") + QString::number(++m_ticket);
    return text;
}

QString DocumentGenerator::tags() {
    const int roll = below(100);
    const int count = roll < 35 ? 0 : roll < 75 ? 1 : roll < 92 ? 2 : 3;
    QStringList chosen;
    while (chosen.size() < count) {
        const QString &word = pick(tagWords());
        if (!chosen.contains(word))
            chosen.append(word);
    }
    return chosen.join(u',');
}

QList<QDate> DocumentGenerator::days(int count) {
    // Each project is active for a part of the years, at least three tenths of them.
    const int span = int(firstDay().daysTo(lastDay()));
    const int begin = below(span * 6 / 10);
    const int end = between(begin + span * 3 / 10, span);
    QList<int> offsets;
    offsets.reserve(count);
    for (int i = 0; i < count; ++i)
        offsets.append(between(begin, end));
    std::sort(offsets.begin(), offsets.end());
    // One entry in ten is typed in days after the work and so stands after later days.
    for (int i = 0; i < count / 10; ++i) {
        const int from = below(count);
        const int to = std::min(count - 1, from + between(1, 40));
        std::swap(offsets[from], offsets[to]);
    }
    QList<QDate> result;
    result.reserve(count);
    for (const int offset : std::as_const(offsets))
        result.append(firstDay().addDays(offset));
    return result;
}

int DocumentGenerator::below(int bound) {
    // Plain modulo keeps the sequence the same with every standard library.
    return bound <= 1 ? 0 : int(m_random() % std::uint32_t(bound));
}

int DocumentGenerator::between(int low, int high) {
    return low + below(high - low + 1);
}

bool DocumentGenerator::chance(int percent) {
    return below(100) < percent;
}
