// hourfold-cli-pdf FOLDER: renders FOLDER/report.html into PDF and writes the document to the
// standard output (the reason to the standard error when it fails). hourfold-cli runs it for a
// PDF export, so that only this helper loads the HTML engine.

#include "render/WebEngineReportRenderer.h"
#include "render/WebEngineSetup.h"

#include <QApplication>
#include <QLoggingCategory>
#include <cstdio>

int main(int argc, char *argv[]) {
    if (argc != 2) {
        std::fputs("usage: hourfold-cli-pdf FOLDER\n", stderr);
        return 2;
    }
    // Reports are drawn without a display when there is none.
    if (!qEnvironmentVariableIsSet("DISPLAY") && !qEnvironmentVariableIsSet("WAYLAND_DISPLAY") &&
        !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    WebEngineSetup::prepareProcess();
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(
        QStringLiteral("hourfold.*=false\nqt.webenginecontext.info=false"));
    WebEngineReportRenderer renderer;
    const ReportRenderer::PdfResult result = renderer.renderPdf(QString::fromLocal8Bit(argv[1]));
    if (!result.ok) {
        std::fprintf(stderr, "%s\n", qPrintable(result.error));
        return 1;
    }
    return std::fwrite(result.pdf.constData(), 1, size_t(result.pdf.size()), stdout) ==
                   size_t(result.pdf.size())
               ? 0
               : 1;
}
