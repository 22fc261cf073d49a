#include "PDFExporter.h"

#include "../platform/AtomicFile.h"
#include "ReportRenderer.h"

PDFExporter::PDFExporter(const QString &stylePath, const CustomerStorage *customers,
                         ReportRenderer &renderer)
    : RenderedReportExporter(stylePath, customers)
    , m_renderer(renderer) {}

Exporter::Result PDFExporter::exportProjects(const QStringList &projectNames,
                                             const QList<bool> &projectFields,
                                             const QList<bool> &entryFields, const QString &path,
                                             bool applyFilter, const QString &encoding) {
    const Result report =
        writeHtmlReport(projectNames, projectFields, entryFields, applyFilter, encoding);
    if (!report.ok)
        return report;
    if (m_showPrintPanels)
        return {m_renderer.print(scratchFolder()), {}};
    const ReportRenderer::PdfResult pdf = m_renderer.renderPdf(scratchFolder());
    if (!pdf.ok)
        return {false, pdf.error};
    // Rendering a long report takes a while: a cancel meanwhile still keeps the file from being
    // written.
    if (isCancelled())
        return cancelled();
    const AtomicFile::Result written = AtomicFile::write(path, pdf.pdf);
    return {written.ok, written.error};
}
