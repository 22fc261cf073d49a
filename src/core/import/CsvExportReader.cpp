#include "CsvExportReader.h"

#include "CsvRecords.h"
#include "ImportText.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHash>

namespace {

QString tr(const char *text) {
    return QCoreApplication::translate("CsvExportReader", text);
}

// The index of the column whose header is the name, or starts with "name (" for a money column;
// -1 when there is none.
qsizetype columnOf(const QStringList &header, const QString &name, bool withCurrency = false) {
    if (name.isEmpty())
        return -1;
    for (qsizetype i = 0; i < header.size(); ++i) {
        const QString heading = header[i].trimmed();
        if (heading == name || (withCurrency && heading.startsWith(name + u" (")))
            return i;
    }
    return -1;
}

double moneyOf(const QString &text) {
    QString number = text.trimmed();
    if (number.contains(u'.'))
        number.remove(u',');
    else
        number.replace(u',', u'.');
    return number.toDouble();
}

} // namespace

QDate CsvExportReader::parseDate(QStringView text) {
    text = text.trimmed();
    for (const QString &format : {QStringLiteral("yyyy-MM-dd"), QStringLiteral("MM/dd/yyyy"),
                                  QStringLiteral("dd.MM.yyyy")}) {
        const QDate day = QDate::fromString(text.toString(), format);
        if (day.isValid())
            return day;
    }
    return {};
}

QTime CsvExportReader::parseTime(QStringView text) {
    const QString trimmed = text.trimmed().toString().toUpper();
    for (const QString &format : {QStringLiteral("HH:mm:ss"), QStringLiteral("HH:mm"),
                                  QStringLiteral("h:mm:ss AP"), QStringLiteral("h:mm AP")}) {
        const QTime time = QTime::fromString(trimmed, format);
        if (time.isValid())
            return time;
    }
    return {};
}

ImportResult CsvExportReader::read(const QString &path, const Progress &progress) const {
    ImportResult result;
    const QString file = QFileInfo(path).fileName();
    const QStringList lines = ImportText::fileLines(path, result);
    if (!result.error.isEmpty())
        return result;
    const QString text = lines.join(u'\n');
    const QList<CsvRecords::Record> records =
        CsvRecords::parse(text, CsvRecords::delimiterOf(text));
    if (records.isEmpty())
        return ImportResult::failed(tr("\"%1\" is empty").arg(file));
    const QStringList &header = records.constFirst().fields;
    const Columns names = columns();
    struct Column {
        const QString &name;
        qsizetype &index;
    };
    qsizetype project, client, description, startDate, startTime, endDate, endTime, tags;
    for (const auto &[name, index] :
         {Column{names.project, project}, Column{names.client, client},
          Column{names.description, description}, Column{names.startDate, startDate},
          Column{names.startTime, startTime}, Column{names.endDate, endDate},
          Column{names.endTime, endTime}, Column{names.tags, tags}}) {
        index = columnOf(header, name);
        if (index < 0)
            return ImportResult::failed(
                tr("\"%1\" is not a detailed %2 export: it has no column \"%3\"")
                    .arg(file, serviceName(), name));
    }
    const qsizetype amount = columnOf(header, names.amount, true);
    const qsizetype rate = columnOf(header, names.rate, true);
    const QString currency =
        amount < 0 ? QString() : header[amount].section(u'(', 1).section(u')', 0, 0).trimmed();
    for (qsizetype r = 1; r < records.size(); ++r) {
        if (!goOn(progress, r, records.size() - 1))
            return ImportResult::wasCancelled();
        const CsvRecords::Record &record = records[r];
        if (record.fields.size() == 1 && record.fields[0].trimmed().isEmpty())
            continue;
        if (record.unterminated || record.fields.size() < header.size()) {
            result.addProblem(file, record.line, tr("unreadable line"));
            continue;
        }
        const QStringList &f = record.fields;
        const QDate fromDay = parseDate(f[startDate]);
        const QTime fromTime = parseTime(f[startTime]);
        const bool running = f[endDate].trimmed().isEmpty() && f[endTime].trimmed().isEmpty();
        const QDate toDay = parseDate(f[endDate]);
        const QTime toTime = parseTime(f[endTime]);
        if (!fromDay.isValid() || !fromTime.isValid() ||
            (!running && (!toDay.isValid() || !toTime.isValid()))) {
            result.addProblem(file, record.line, tr("unreadable start or end"));
            continue;
        }
        ImportedEntry entry;
        entry.start = QDateTime(fromDay, fromTime).toSecsSinceEpoch();
        if (!running) {
            entry.end = QDateTime(toDay, toTime).toSecsSinceEpoch();
            if (*entry.end < entry.start) {
                result.addProblem(file, record.line, tr("ends before it starts"));
                continue;
            }
        }
        entry.project = f[project].trimmed();
        if (entry.project.isEmpty())
            entry.project = tr("Without project");
        entry.customer = f[client].trimmed();
        entry.comment = f[description];
        for (const QString &tag : f[tags].split(u',', Qt::SkipEmptyParts)) {
            if (!tag.trimmed().isEmpty())
                entry.tags.append(tag.trimmed());
        }
        if (amount >= 0) {
            entry.amount = moneyOf(f[amount]);
            entry.currency = currency;
        }
        if (rate >= 0)
            entry.rate = moneyOf(f[rate]);
        entry.file = file;
        entry.line = record.line;
        result.entries.append(std::move(entry));
    }
    result.finish();
    return result;
}
