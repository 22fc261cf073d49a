#include "ImportPlan.h"

#include "../model/Entry.h"
#include "../model/StoredForms.h"

#include <QCoreApplication>
#include <QHash>
#include <cmath>

namespace {

// Local date and time texts of moments, with the zone's offset looked up once per day unless it
// changes that day.
class LocalTexts {
public:
    std::pair<QString, QString> of(qint64 secs) {
        const qint64 day = secs >= 0 ? secs / 86400 : (secs - 86399) / 86400;
        auto found = m_offsets.constFind(day);
        if (found == m_offsets.cend()) {
            const int atStart = QDateTime::fromSecsSinceEpoch(day * 86400).offsetFromUtc();
            const int atEnd = QDateTime::fromSecsSinceEpoch(day * 86400 + 86399).offsetFromUtc();
            found = m_offsets.insert(day,
                                     atStart == atEnd ? std::optional<int>(atStart) : std::nullopt);
        }
        const int offset =
            found->has_value() ? **found : QDateTime::fromSecsSinceEpoch(secs).offsetFromUtc();
        const QDateTime wall = QDateTime::fromSecsSinceEpoch(secs + offset, Qt::UTC);
        const QTime time = wall.time();
        return {StoredForms::dateText(wall.date()),
                StoredForms::timeText(time.hour(), time.minute())};
    }

private:
    QHash<qint64, std::optional<int>> m_offsets;
};

std::shared_ptr<Entry> entryOf(const ImportedEntry &imported, bool keepAmount, LocalTexts &texts) {
    auto entry = std::make_shared<Entry>();
    entry->setHasPeriod(true);
    const auto [fromDate, fromTime] = texts.of(imported.start);
    entry->setFromDate(fromDate);
    entry->setFromTime(fromTime);
    if (imported.end) {
        const auto [toDate, toTime] = texts.of(*imported.end);
        entry->setToDate(toDate);
        entry->setToTime(toTime);
        entry->setTime(imported.minutes());
    } else {
        entry->setIsWorking(true);
    }
    QString comment = imported.comment;
    if (keepAmount && imported.amount != 0) {
        if (!comment.isEmpty())
            comment += u'\n';
        comment += QCoreApplication::translate("ImportPlan", "Billable amount: %1 %2")
                       .arg(QString::number(imported.amount, 'f', 2), imported.currency)
                       .trimmed();
    }
    // Empty texts rather than none, as for an entry made by hand.
    entry->setComment(comment.isNull() ? QStringLiteral("") : comment);
    const QString tags = imported.tags.join(u',');
    entry->setTags(tags.isNull() ? QStringLiteral("") : tags);
    return entry;
}

} // namespace

ImportPlan ImportPlan::make(const ImportResult &result, const ProjectList &existing,
                            const CustomerIds &customerIds) {
    ImportPlan plan;
    plan.tags = result.tags();
    // The rate every interval of a project was billed at; 0 when they differ or one has none.
    QHash<QString, double> rates;
    for (const ImportedEntry &imported : result.entries) {
        auto found = rates.find(imported.project);
        if (found == rates.end())
            rates.insert(imported.project, imported.rate);
        else if (std::abs(*found - imported.rate) > 1e-6)
            *found = 0;
    }
    QHash<QString, std::shared_ptr<Project>> documentProjects;
    for (const auto &project : existing)
        documentProjects.insert(project->name(), project);
    QHash<QString, std::shared_ptr<Project>> made;
    QHash<QString, qsizetype> additionOf;
    LocalTexts texts;
    for (const ImportedEntry &imported : result.entries) {
        const double rate = rates.value(imported.project);
        const auto inDocument = documentProjects.constFind(imported.project);
        if (inDocument != documentProjects.cend()) {
            const auto &project = *inDocument;
            const bool rateApplies = rate > 0 && std::abs(project->hourlyWage() - rate) < 0.005;
            auto index = additionOf.constFind(imported.project);
            if (index == additionOf.cend()) {
                index = additionOf.insert(imported.project, plan.additions.size());
                plan.additions.append({project, {}});
            }
            plan.additions[*index].second.append(entryOf(imported, !rateApplies, texts));
            continue;
        }
        auto project = made.value(imported.project);
        if (!project) {
            const int customer =
                imported.customer.isEmpty() || !customerIds ? -1 : customerIds(imported.customer);
            project = std::make_shared<Project>(imported.project, QString(), float(rate), 0, 0, 0,
                                                customer, QString());
            made.insert(imported.project, project);
            plan.newProjects.append(project);
        }
        project->addEntry(entryOf(imported, rate <= 0, texts));
    }
    return plan;
}
