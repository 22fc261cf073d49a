#pragma once

#include "CsvExportReader.h"

// Clockify's detailed CSV export: Project, Client, Description, Task, User, Group, Email, Tags,
// Billable, Start Date, Start Time, End Date, End Time, Duration (h), Duration (decimal), Billable
// Rate (currency), Billable Amount (currency).
class ClockifyReader : public CsvExportReader {
protected:
    Columns columns() const override;
    QString serviceName() const override { return QStringLiteral("Clockify"); }
};
