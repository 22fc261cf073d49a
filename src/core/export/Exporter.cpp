#include "Exporter.h"

#include "../model/HelpFunctions.h"
#include "../model/ProjectCollection.h"
#include "../model/StoredForms.h"
#include "../platform/AtomicFile.h"
#include "EntryTexts.h"
#include "TextEncodings.h"

using namespace Qt::StringLiterals;

Exporter::~Exporter() = default;

ProjectList Exporter::selectedProjects(const QStringList &projectNames, bool applyFilter) const {
    ProjectList projects;
    if (!m_projectCollection)
        return projects;
    for (const auto &project : m_projectCollection->projectArray()) {
        if (!projectNames.contains(project->name()))
            continue;
        if (applyFilter && m_projectCollection->isProjectFiltered(*project))
            continue;
        projects.append(project);
    }
    return projects;
}

bool Exporter::isLeftOut(const ProjectItem &item, bool applyFilter) const {
    return applyFilter && m_projectCollection->isEntryFiltered(item);
}

QString Exporter::hoursAndMinutes(int minutes) {
    const HFTime time = HelpFunctions::calculateTimeFromDuration(minutes);
    return StoredForms::timeText(int(time.hours), int(time.minutes));
}

Exporter::Result Exporter::unknownEncoding(const QString &encoding) {
    return {false, tr("There is no text encoding named \"%1\".").arg(encoding)};
}

QString Exporter::entryText(const ProjectItem &item, const QList<bool> &entryFields,
                            EntryTexts &texts) const {
    QString text;
    const bool withComment = chosen(entryFields, EntryDescription) && !item.comment().isEmpty();
    if (item.isFlatFee()) {
        if (chosen(entryFields, Day))
            text += texts.day(item) + u'\n';
        const auto &fee = static_cast<const FlatFeeEntry &>(item);
        text += tr("Amount") + u": " + m_projectCollection->formattedWages(fee.amount()) + u'\n';
        if (withComment)
            text += item.comment();
        return text + u"\n\n";
    }

    const auto &entry = static_cast<const Entry &>(item);
    const auto appendDuration = [&] {
        if (chosen(entryFields, Duration))
            text += u'(' + entry.formattedEffectiveTime() + u")\t ";
    };
    if (!entry.hasPeriod()) {
        if (chosen(entryFields, Day))
            text += texts.day(entry) + u"\t ";
        appendDuration();
    } else if (chosen(entryFields, Period)) {
        const QString fromDate = texts.fromDate(entry);
        const QString toDate = texts.toDate(entry);
        if (entry.isWorking()) {
            text += fromDate + u"\t " + texts.fromTime(entry) + u" -  --:--";
        } else {
            if (fromDate == toDate) {
                text += fromDate + u"\t " + texts.fromTime(entry) + u" - " + texts.toTime(entry) +
                        u"\t ";
            } else {
                text += tr("From") + u": " + fromDate + u' ' + texts.fromTime(entry) + u'\n' +
                        tr("To") + u": " + toDate + u' ' + texts.toTime(entry) + u'\n';
            }
            appendDuration();
        }
    }
    if (chosen(entryFields, State) && entry.isChecked())
        text += u'*';
    text += u'\n';
    if (withComment)
        text += entry.comment();
    return text + u"\n\n";
}

Exporter::Result Exporter::exportProjects(const QStringList &projectNames,
                                          const QList<bool> &projectFields,
                                          const QList<bool> &entryFields, const QString &path,
                                          bool applyFilter, const QString &encoding) {
    QString report;
    EntryTexts texts;
    const ProjectList projects = selectedProjects(projectNames, applyFilter);
    int done = 0;
    for (const auto &project : projects) {
        QString entries;
        int filteredTotal = 0;
        for (const auto &item : project->entries()) {
            if (isLeftOut(*item, applyFilter))
                continue;
            if (item->isEntry())
                filteredTotal += item->effectiveDuration();
            entries += entryText(*item, entryFields, texts);
        }

        if (chosen(projectFields, ProjectName))
            report += project->name() + u"\n\n";
        if (chosen(projectFields, TotalDuration)) {
            report +=
                tr("Total duration: ") +
                (applyFilter ? hoursAndMinutes(filteredTotal) : project->formattedTotalTime(true)) +
                u'\n';
        }
        const bool paid = project->hourlyWage() > 0;
        if (chosen(projectFields, HourlyWages) && paid)
            report += tr("Hourly wage: ") + project->formattedHourlyWage() + u'\n';
        if (chosen(projectFields, TotalWages) && paid)
            report += tr("Total wages: ") + project->formattedTotalWages() + u'\n';
        if (chosen(projectFields, ProjectDescription) && !project->description().isEmpty())
            report += u'\n' + project->description();
        report += u"\n\n" + entries + u'\n' + QString(73, u'-') + u"\n\n";
        reportProgress(++done, projects.size());
        if (isCancelled())
            return cancelled();
    }

    const auto bytes = TextEncodings::encode(report, encoding, TextEncodings::Conversion::Lossy);
    if (!bytes)
        return unknownEncoding(encoding);
    const AtomicFile::Result written = AtomicFile::write(path, *bytes);
    return {written.ok, written.error};
}
