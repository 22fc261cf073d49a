#pragma once

#include "Exporter.h"

class CustomerStorage;

// What the PDF and RTF exporters share: they first write the HTML report of a style into a
// fresh, private scratch folder, which an engine or converter then turns into the document.
class RenderedReportExporter : public Exporter {
public:
    QString templateName() const { return m_templateName; }
    QString scratchFolder() const { return m_scratchFolder; }
    // Another scratch folder than the user's own (for tests).
    void setScratchFolder(const QString &folder) { m_scratchFolder = folder; }

protected:
    // The customers may be null.
    RenderedReportExporter(const QString &stylePath, const CustomerStorage *customers);

    // Empties the scratch folder and writes the style's HTML report of the projects into it (style
    // sheets and images are always the style's own).
    Result writeHtmlReport(const QStringList &projectNames, const QList<bool> &projectFields,
                           const QList<bool> &entryFields, bool applyFilter,
                           const QString &encoding);

private:
    QString m_templateName;
    const CustomerStorage *m_customers;
    QString m_scratchFolder;
};
