#pragma once

#include "ImportReader.h"

#include <QDateTime>

// What the detailed CSV exports of the web trackers have in common: a header that names the
// columns, one row per time entry with start and end as local date and time columns, clients
// that become customers, tags separated by ", ", and billable amounts. The readers of each
// service name its columns; rows are found by header name, so extra or reordered columns do not
// matter.
class CsvExportReader : public ImportReader {
public:
    ImportResult read(const QString &path, const Progress &progress = {}) const override;

    // "2026-11-01", "11/01/2026" or "01.11.2026".
    static QDate parseDate(QStringView text);
    // "08:00:00", "08:00", "8:00:00 AM" or "8:00 PM".
    static QTime parseTime(QStringView text);

protected:
    // Header names; the amount and rate columns are found by the start of their name, before the
    // currency in brackets ("Amount (USD)"). An empty name is a column the service does not have.
    struct Columns {
        QString project;
        QString client;
        QString description;
        QString startDate;
        QString startTime;
        QString endDate;
        QString endTime;
        QString tags;
        QString amount;
        QString rate;
    };

    virtual Columns columns() const = 0;
    // The service's name in messages ("Toggl").
    virtual QString serviceName() const = 0;
};
