#include "CSVExporter.h"

#include "../Logging.h"
#include "../model/Clock.h"
#include "../model/HelpFunctions.h"
#include "../model/ProjectCollection.h"
#include "../model/StoredForms.h"
#include "../platform/AtomicFile.h"
#include "EntryTexts.h"
#include "TextEncodings.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

using namespace Qt::StringLiterals;

namespace {

// The value with at most seven significant digits, as short as possible, never in exponent
// form, with a point for the decimals: 45.5, 33.33333, 10000000.
QString plainNumber(float value) {
    if (!std::isfinite(value))
        return StoredForms::floatText(value);
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, double(value),
                                   std::chars_format::scientific, 6)
                         .ptr;
    // buffer holds "[-]d.dddddde[+-]xx".
    const char *mantissa = buffer[0] == '-' ? buffer + 1 : buffer;
    const char *exponentMark = std::find(mantissa, static_cast<const char *>(end), 'e');
    int exponent = 0;
    std::from_chars(exponentMark + (exponentMark[1] == '+' ? 2 : 1), end, exponent);
    std::string digits(1, mantissa[0]);
    digits.append(mantissa + 2, exponentMark);

    std::string text = buffer[0] == '-' ? "-" : "";
    if (exponent < 0) {
        text += "0." + std::string(size_t(-exponent - 1), '0') + digits;
    } else if (size_t(exponent) + 1 >= digits.size()) {
        text += digits + std::string(size_t(exponent) + 1 - digits.size(), '0');
    } else {
        text += digits.substr(0, size_t(exponent) + 1) + '.' + digits.substr(size_t(exponent) + 1);
    }
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.')
            text.pop_back();
    }
    return QString::fromLatin1(text.data(), qsizetype(text.size()));
}

// Minutes since the start of a running entry, its pauses taken off.
int liveDuration(const Entry &entry) {
    const QDateTime start =
        HelpFunctions::makeDateFromDateString(entry.fromDate(), entry.fromTime());
    const QDateTime now = Clock::now();
    const double seconds = start.isValid() ? double(start.msecsTo(now)) / 1000.0 : 0.0;
    return int(std::trunc(seconds / 60.0 - entry.pauseTimeWithPeriodFrom(start, now)));
}

} // namespace

void CSVExporter::trim(QString &text) const {
    if (text.isEmpty())
        return;
    text.chop(1);
    text += m_lineEnding;
}

QString CSVExporter::headline(const QStringList &titles) const {
    return titles.join(m_fieldDelimiter) + m_lineEnding;
}

QString CSVExporter::delimitedText(const QString &text) const {
    return m_textDelimiter + text + m_textDelimiter;
}

QString CSVExporter::getHeadlineOfProjectFields(const QList<bool> &projectFields) const {
    QStringList titles;
    if (chosen(projectFields, ProjectName))
        titles.append(tr("Name"));
    if (chosen(projectFields, TotalDuration))
        titles.append(tr("Total duration"));
    if (chosen(projectFields, HourlyWages))
        titles.append(tr("Hourly wages"));
    if (chosen(projectFields, TotalWages))
        titles.append(tr("Total wages"));
    if (chosen(projectFields, ProjectDescription))
        titles.append(tr("Description"));
    return headline(titles);
}

QString CSVExporter::getHeadlineOfEntryFields(const QList<bool> &entryFields) const {
    QStringList titles;
    if (chosen(entryFields, Day) && !chosen(entryFields, Period))
        titles.append(tr("Day"));
    if (chosen(entryFields, Period))
        titles << tr("From Date") << tr("From Time") << tr("To Date") << tr("To Time");
    if (chosen(entryFields, Duration))
        titles.append(tr("Duration"));
    if (chosen(entryFields, EntryDescription))
        titles.append(tr("Description"));
    if (chosen(entryFields, State))
        titles.append(tr("State"));
    return headline(titles);
}

QString CSVExporter::getHeadlineOfFlatFeeEntryFields(const QList<bool> &entryFields) const {
    QStringList titles;
    if (chosen(entryFields, Day))
        titles.append(tr("Day"));
    titles.append(tr("Amount"));
    if (chosen(entryFields, EntryDescription))
        titles.append(tr("Description"));
    return headline(titles);
}

void CSVExporter::appendEntry(QString &block, const Entry &entry, const QList<bool> &entryFields,
                              EntryTexts &texts) const {
    const QString &fd = m_fieldDelimiter;
    const bool day = chosen(entryFields, Day);
    const bool period = chosen(entryFields, Period);
    if (!entry.hasPeriod()) {
        if (day)
            block += texts.day(entry) + fd;
        if (period) {
            if (!day)
                block += texts.day(entry) + fd;
            block += fd + fd + fd;
        }
        if (chosen(entryFields, Duration))
            block += entry.formattedEffectiveTime() + fd;
    } else {
        if (day && !period)
            block += texts.fromDate(entry) + fd;
        if (period) {
            block += texts.fromDate(entry) + fd + texts.fromTime(entry) + fd;
            if (entry.isWorking())
                block += fd + fd;
            else
                block += texts.toDate(entry) + fd + texts.toTime(entry) + fd;
        }
        if (chosen(entryFields, Duration)) {
            block +=
                (entry.isWorking() ? ProjectCollection::makeStringFromMinutes(liveDuration(entry))
                                   : entry.formattedEffectiveTime()) +
                fd;
        }
    }
    if (chosen(entryFields, EntryDescription))
        block += delimitedText(entry.comment()) + fd;
    if (chosen(entryFields, State))
        block += (entry.isChecked() ? u"1"_s : u"0"_s) + fd;
    trim(block);
}

void CSVExporter::appendFlatFee(QString &block, const ProjectItem &fee,
                                const QList<bool> &entryFields, EntryTexts &texts) const {
    const QString &fd = m_fieldDelimiter;
    if (chosen(entryFields, Day))
        block += texts.day(fee) + fd;
    block +=
        StoredForms::fixedText(double(static_cast<const FlatFeeEntry &>(fee).amount()), 2) + fd;
    if (chosen(entryFields, EntryDescription))
        block += delimitedText(fee.comment()) + fd;
    trim(block);
}

void CSVExporter::appendProjectValues(QString &text, const Project &project, int filteredTotal,
                                      bool applyFilter, const QList<bool> &projectFields) const {
    const QString &fd = m_fieldDelimiter;
    const bool paid = project.hourlyWage() > 0;
    if (chosen(projectFields, ProjectName))
        text += delimitedText(project.name()) + fd;
    if (chosen(projectFields, TotalDuration)) {
        text +=
            (applyFilter ? hoursAndMinutes(filteredTotal) : project.formattedTotalTime(false)) + fd;
    }
    if (chosen(projectFields, HourlyWages))
        text += (paid ? plainNumber(project.hourlyWage()) : QString()) + fd;
    if (chosen(projectFields, TotalWages)) {
        // The wages count the entries the current filter shows, whether or not it applies here.
        const auto filtered = [this](const ProjectItem &item) {
            return projectCollection()->isEntryFiltered(item);
        };
        text += (paid ? plainNumber(project.totalWagesWithFilter(true, filtered)) : QString()) + fd;
    }
    if (chosen(projectFields, ProjectDescription))
        text += delimitedText(project.description()) + fd;
    trim(text);
}

Exporter::Result CSVExporter::exportProjects(const QStringList &projectNames,
                                             const QList<bool> &projectFields,
                                             const QList<bool> &entryFields, const QString &path,
                                             bool applyFilter, const QString &encoding) {
    const QString &le = m_lineEnding;
    QString csv;
    EntryTexts texts;
    const ProjectList projects = selectedProjects(projectNames, applyFilter);
    int done = 0;
    for (const auto &project : projects) {
        QString entries = getHeadlineOfEntryFields(entryFields);
        QString fees = getHeadlineOfFlatFeeEntryFields(entryFields);
        int filteredTotal = 0;
        for (const auto &item : project->entries()) {
            if (isLeftOut(*item, applyFilter))
                continue;
            if (item->isEntry()) {
                filteredTotal += item->effectiveDuration();
                appendEntry(entries, static_cast<const Entry &>(*item), entryFields, texts);
            } else {
                appendFlatFee(fees, *item, entryFields, texts);
            }
        }
        csv += getHeadlineOfProjectFields(projectFields);
        appendProjectValues(csv, *project, filteredTotal, applyFilter, projectFields);
        csv += le + entries + le + fees + le + le;
        csv.chop(1);
        reportProgress(++done, projects.size());
        if (isCancelled())
            return cancelled();
    }
    csv += le;

    if (TextEncodings::displayName(encoding).isEmpty())
        return unknownEncoding(encoding);
    const auto bytes = TextEncodings::encode(csv, encoding, TextEncodings::Conversion::Strict);
    if (!bytes) {
        qCWarning(lcFile) << "not writing" << path << "because the text has characters that"
                          << encoding << "cannot represent";
        return {false, tr("The text cannot be written in the encoding \"%1\".").arg(encoding)};
    }
    const AtomicFile::Result written = AtomicFile::write(path, *bytes);
    return {written.ok, written.error};
}
