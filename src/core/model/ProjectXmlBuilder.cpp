#include "ProjectXmlBuilder.h"

#include "Entry.h"
#include "FlatFeeEntry.h"
#include "HelpFunctions.h"
#include "StoredForms.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

// Calls use with the text as UTF-16, as QString::fromUtf8() makes it. Short ASCII text, which
// every number and moment of a well-formed file is, is widened on the stack without allocating.
template <typename Use> auto utf16(const std::string &text, Use use) {
    char16_t buffer[64];
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (text.size() <= std::size(buffer) && std::all_of(text.begin(), text.end(), isAscii)) {
        std::copy(text.begin(), text.end(), buffer);
        return use(QStringView(buffer, qsizetype(text.size())));
    }
    return use(QStringView(ProjectXmlBuilder::fromUtf8(text)));
}

} // namespace

// The fields are assigned rather than emplaced: clang judges a nested struct with member
// initialisers not default-constructible while the enclosing class is still incomplete.
void ProjectXmlBuilder::startProject(int line) {
    m_project = ProjectFields();
    m_project->line = line;
    ++m_projectIndex;
}

void ProjectXmlBuilder::startEntry(int line) {
    m_entry = EntryFields();
    m_entry->line = line;
}

void ProjectXmlBuilder::startFee(int line) {
    m_fee = FeeFields();
    m_fee->line = line;
}

void ProjectXmlBuilder::startPause() {
    m_pause.emplace();
}

void ProjectXmlBuilder::leaveOutOpenItems() {
    m_entry.reset();
    m_fee.reset();
    m_pause.reset();
}

QString ProjectXmlBuilder::projectLabel() const {
    if (m_project && m_project->name)
        return QStringLiteral("project \"%1\"").arg(*m_project->name);
    return QStringLiteral("project %1").arg(m_projectIndex);
}

QString ProjectXmlBuilder::label(const Object &object) const {
    if (!object.kind)
        return projectLabel() + QStringLiteral(" (line %1)").arg(object.line);
    return QStringLiteral("the %1 at line %2 in %3")
        .arg(QLatin1StringView(object.kind))
        .arg(object.line)
        .arg(projectLabel());
}

void ProjectXmlBuilder::missing(const char *element, const Object &object) const {
    throw ReadError{QStringLiteral("The element \"%1\" is missing in %2.")
                        .arg(QLatin1StringView(element), label(object)),
                    object.line};
}

void ProjectXmlBuilder::noteUnreadable(const char *message, const char *element,
                                       const Object &object, const std::string &text) {
    m_unreadable.append(QString::fromLatin1(message).arg(QLatin1StringView(element), label(object),
                                                         fromUtf8(text)));
}

int ProjectXmlBuilder::integer(const Raw &field, const char *element, const Object &object,
                               int fallback) {
    if (!field)
        return fallback;
    const auto value = utf16(*field, &StoredForms::parseInt);
    if (!value)
        noteUnreadable("The element \"%1\" of %2 is not a whole number: \"%3\".", element, object,
                       *field);
    return value.value_or(fallback);
}

float ProjectXmlBuilder::number(const Raw &field, const char *element, const Object &object,
                                float fallback) {
    if (!field)
        return fallback;
    const auto value = utf16(*field, &StoredForms::parseFloat);
    if (!value)
        noteUnreadable("The element \"%1\" of %2 is not a number: \"%3\".", element, object,
                       *field);
    return value.value_or(fallback);
}

// In UTC: a pause keeps only the seconds since the epoch, and a local moment would cost a
// time-zone lookup per pause.
QDateTime ProjectXmlBuilder::moment(const Raw &field, const char *element, const Object &object) {
    const auto isBlank = [](QStringView text) { return text.trimmed().isEmpty(); };
    if (!field || utf16(*field, isBlank))
        return {};
    const std::optional<qint64> secs = utf16(*field, &StoredForms::parseMomentSecs);
    if (!secs) {
        noteUnreadable("The element \"%1\" of %2 is not a moment: \"%3\".", element, object,
                       *field);
        return {};
    }
    return QDateTime::fromSecsSinceEpoch(*secs, Qt::UTC);
}

void ProjectXmlBuilder::finishPause() {
    if (!m_pause || !m_entry)
        return;
    const Object object{"entry", m_entry->line};
    auto pause = std::make_shared<PauseEntry>();
    pause->setFrom(moment(m_pause->from, "pauseentry/from", object));
    pause->setTo(moment(m_pause->to, "pauseentry/to", object));
    m_entry->pauses.append(pause);
    m_pause.reset();
}

void ProjectXmlBuilder::finishEntry() {
    EntryFields &b = *m_entry;
    const Object object{"entry", b.line};
    auto entry = std::make_shared<Entry>();
    const bool working = integer(b.working, "working", object, 0) != 0;
    entry->setIsWorking(working);
    if (b.hasPeriod) {
        entry->setHasPeriod(true);
        entry->setFromDate(required(b.fromDate, "period/from/date", object));
        entry->setFromTime(required(b.fromTime, "period/from/time", object));
        if (working) {
            if (b.hasPausedAt) {
                const QString date = required(b.pausedDate, "pausedAt/date", object);
                const QString time = required(b.pausedTime, "pausedAt/time", object);
                const QDateTime pausedAt = HelpFunctions::makeDateFromDateString(date, time);
                if (pausedAt.isValid())
                    entry->setPausedAt(pausedAt);
                else
                    m_unreadable.append(
                        QStringLiteral("The pause moment of %1 is not a date and time: \"%2 %3\".")
                            .arg(label(object), date, time));
            }
        } else {
            entry->setToDate(required(b.toDate, "period/to/date", object));
            entry->setToTime(required(b.toTime, "period/to/time", object));
        }
        // A new entry starts with an empty pause list of its own.
        if (!b.pauses.isEmpty())
            entry->setPauseEntries(b.pauses);
        entry->setDate(QStringLiteral(""));
    } else {
        entry->setDate(required(b.day, "day", object));
    }
    if (!working) {
        required(b.time, "time", object);
        entry->setTime(integer(b.time, "time", object, 0));
    }
    entry->setChecked(integer(b.checked, "checked", object, 0) != 0);
    entry->setComment(required(b.comment, "comment", object));
    entry->setTags(b.tags.value_or(QStringLiteral("")));
    entry->setAttachments(b.attachments);
    // Opening a file sorts it by day next: the sort keys are worked out now, while the texts
    // they come from are still in the processor's cache.
    entry->sortDay();
    entry->sortFromMinutes();
    m_project->timed.append(entry);
    m_entry.reset();
}

void ProjectXmlBuilder::finishFee() {
    FeeFields &b = *m_fee;
    const Object object{"flat fee", b.line};
    auto fee = std::make_shared<FlatFeeEntry>();
    fee->setDate(required(b.day, "day", object));
    required(b.amount, "amount", object);
    fee->setAmount(number(b.amount, "amount", object, 0.0f));
    fee->setChecked(integer(b.checked, "checked", object, 0) != 0);
    fee->setComment(required(b.comment, "comment", object));
    fee->setTags(b.tags.value_or(QStringLiteral("")));
    fee->setAttachments(b.attachments);
    fee->sortDay();
    m_project->fees.append(fee);
    m_fee.reset();
}

void ProjectXmlBuilder::finishProject() {
    ProjectFields &b = *m_project;
    const Object object{nullptr, b.line};
    auto project = std::make_shared<Project>();
    project->setName(required(b.name, "name", object));
    project->setDescription(b.description.value_or(QStringLiteral("")));
    project->setTags(b.tags.value_or(QStringLiteral("")));
    project->setHourlyWage(number(b.wage, "wage", object, 0.0f));
    if (b.hasRounding) {
        required(b.roundTo, "rounding/roundto", object);
        required(b.type, "rounding/type", object);
        const int roundTo = integer(b.roundTo, "rounding/roundto", object, 0);
        project->setRoundTo(roundTo);
        project->setRoundType(integer(b.type, "rounding/type", object, 0));
        project->setRoundWhat(integer(b.what, "rounding/what", object, roundTo >= 1 ? 1 : 0));
    }
    project->setExpanded(integer(b.expanded, "expanded", object, 0) != 0);
    project->setCustomer(integer(b.customer, "customerID", object, -1));
    project->setAttachments(b.attachments);
    for (const auto &item : std::as_const(b.timed))
        project->addEntry(item);
    for (const auto &item : std::as_const(b.fees))
        project->addEntry(item);
    m_projects.append(project);
    m_project.reset();
}
