#include "TogglReader.h"

CsvExportReader::Columns TogglReader::columns() const {
    return {QStringLiteral("Project"),     QStringLiteral("Client"),
            QStringLiteral("Description"), QStringLiteral("Start date"),
            QStringLiteral("Start time"),  QStringLiteral("End date"),
            QStringLiteral("End time"),    QStringLiteral("Tags"),
            QStringLiteral("Amount"),      QString()};
}
