#pragma once

#include "RenderedReportExporter.h"

class CustomerStorage;

// Writes the chosen projects as an RTF document: the HTML report of a style is written into the
// scratch folder (earlier copies of its sheets and images are kept), read into a rich-text
// document with the folder as base and saved as RTF. Failures are logged with the texts
// "Cannot create RTF" and "Error writing file".
class RTFExporter : public RenderedReportExporter {
public:
    // The customers may be null.
    RTFExporter(const QString &stylePath, const CustomerStorage *customers);

    // The field choices and the encoding are ignored.
    Result exportProjects(const QStringList &projectNames, const QList<bool> &projectFields,
                          const QList<bool> &entryFields, const QString &path, bool applyFilter,
                          const QString &encoding) override;
};
