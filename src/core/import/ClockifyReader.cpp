#include "ClockifyReader.h"

CsvExportReader::Columns ClockifyReader::columns() const {
    return {QStringLiteral("Project"),         QStringLiteral("Client"),
            QStringLiteral("Description"),     QStringLiteral("Start Date"),
            QStringLiteral("Start Time"),      QStringLiteral("End Date"),
            QStringLiteral("End Time"),        QStringLiteral("Tags"),
            QStringLiteral("Billable Amount"), QStringLiteral("Billable Rate")};
}
