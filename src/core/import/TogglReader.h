#pragma once

#include "CsvExportReader.h"

// Toggl Track's detailed CSV export: User, Email, Client, Project, Task, Description, Billable,
// Start date, Start time, End date, End time, Duration, Tags, Amount (currency). Toggl gives no
// rate, so billable amounts are kept in the comments.
class TogglReader : public CsvExportReader {
protected:
    Columns columns() const override;
    QString serviceName() const override { return QStringLiteral("Toggl"); }
};
