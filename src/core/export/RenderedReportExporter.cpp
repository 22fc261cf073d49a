#include "RenderedReportExporter.h"

#include "HTMLExporter.h"
#include "ReportScratchFolder.h"

RenderedReportExporter::RenderedReportExporter(const QString &stylePath,
                                               const CustomerStorage *customers)
    : m_templateName(stylePath)
    , m_customers(customers)
    , m_scratchFolder(ReportScratchFolder::defaultPath()) {}

Exporter::Result RenderedReportExporter::writeHtmlReport(const QStringList &projectNames,
                                                         const QList<bool> &projectFields,
                                                         const QList<bool> &entryFields,
                                                         bool applyFilter,
                                                         const QString &encoding) {
    const ReportScratchFolder::Result scratch = ReportScratchFolder::recreate(m_scratchFolder);
    if (!scratch.ok)
        return {false, scratch.error};
    HTMLExporter html(m_templateName, m_customers);
    html.setProjectCollection(projectCollection());
    html.setProgressHandler(progressHandler());
    html.setCancelCheck(cancelCheck());
    return html.exportProjects(projectNames, projectFields, entryFields, m_scratchFolder,
                               applyFilter, encoding);
}
