#include "export/ReportPrinter.h"

#include "export/ExportPanels.h"
#include "export/PDFExporter.h"
#include "model/ProjectCollection.h"
#include "platform/AtomicFile.h"
#include "platform/Folders.h"
#include "platform/UserAlerts.h"

#include <QLocale>
#include <QPrinter>

using namespace Qt::StringLiterals;

namespace {

constexpr int previewResolution = 150;

} // namespace

ReportPrinter::ReportPrinter(const Services &services, QWidget *window)
    : m_services(services)
    , m_engine(window) {}

QString ReportPrinter::builtInStylePath() {
    return u"%1/Styles/Simple.hfstyle"_s.arg(Folders::resourceFolder());
}

bool ReportPrinter::run(bool preview) {
    m_preview = preview;
    m_printError.clear();
    PDFExporter exporter(builtInStylePath(), m_services.customers, *this);
    exporter.setShowPrintPanels(true);
    exporter.setProjectCollection(&m_services.collection);
    const Exporter::Result result =
        exporter.exportProjects(m_services.collection.projectNames(), {}, {}, {}, true, {});
    // A cancelled dialogue has nothing to tell.
    const QString error = m_printError.isEmpty() ? result.error : m_printError;
    if (!error.isEmpty()) {
        m_services.alerts.runModal({tr("The report could not be printed."),
                                    error,
                                    UserAlerts::Style::Critical,
                                    {tr("OK")}});
    }
    return result.ok;
}

ReportRenderer::PdfResult ReportPrinter::renderPdf(const QString &folder) {
    return m_engine.renderPdf(folder);
}

bool ReportPrinter::print(const QString &folder) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(WebEngineReportRenderer::pageLayout(QLocale()));
    if (m_preview) {
        // The engine prints pictures of its pages: at the printer's full resolution the preview
        // takes many seconds per page, at this one it shows at once and still prints cleanly.
        printer.setResolution(previewResolution);
        m_services.panels.runPrintPreview(
            printer, [this, &folder](QPrinter &shown) { m_engine.printTo(folder, shown); });
        return true;
    }
    if (!m_services.panels.runPrintDialog(printer))
        return false;
    // A PDF file gets the export's own document, with its text, rather than pictures of pages.
    if (printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty()) {
        const PdfResult pdf = m_engine.renderPdf(folder);
        const AtomicFile::Result written =
            pdf.ok ? AtomicFile::write(printer.outputFileName(), pdf.pdf)
                   : AtomicFile::Result{false, pdf.error};
        m_printError = written.error;
        return written.ok;
    }
    if (!m_engine.printTo(folder, printer))
        m_printError = tr("The printer did not take the pages.");
    return m_printError.isEmpty();
}
