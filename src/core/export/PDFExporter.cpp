#include "PDFExporter.h"

#include "../platform/AtomicFile.h"
#include "HTMLExporter.h"
#include "ReportRenderer.h"
#include "ReportScratchFolder.h"

PDFExporter::PDFExporter(const QString &stylePath, const CustomerStorage *customers,
                         ReportRenderer &renderer)
    : m_templateName(stylePath)
    , m_customers(customers)
    , m_renderer(renderer)
    , m_scratchFolder(ReportScratchFolder::defaultPath()) {}

Exporter::Result PDFExporter::exportProjects(const QStringList &projectNames,
                                             const QList<bool> &projectFields,
                                             const QList<bool> &entryFields, const QString &path,
                                             bool applyFilter, const QString &encoding) {
    // A fresh folder: style sheets and images are always the style's own.
    const ReportScratchFolder::Result scratch = ReportScratchFolder::recreate(m_scratchFolder);
    if (!scratch.ok)
        return {false, scratch.error};
    HTMLExporter html(m_templateName, m_customers);
    html.setProjectCollection(projectCollection());
    html.setProgressHandler(progressHandler());
    const Result report = html.exportProjects(projectNames, projectFields, entryFields,
                                              m_scratchFolder, applyFilter, encoding);
    if (!report.ok)
        return report;
    if (m_showPrintPanels)
        return {m_renderer.print(m_scratchFolder), {}};
    const ReportRenderer::PdfResult pdf = m_renderer.renderPdf(m_scratchFolder);
    if (!pdf.ok)
        return {false, pdf.error};
    const AtomicFile::Result written = AtomicFile::write(path, pdf.pdf);
    return {written.ok, written.error};
}
