#include "ProcessReportRenderer.h"

#include <QProcess>

QString ProcessReportRenderer::helperPath() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/hourfold-cli-pdf");
}

ReportRenderer::PdfResult ProcessReportRenderer::renderPdf(const QString &folder) {
    PdfResult result;
    QProcess helper;
    helper.start(helperPath(), {folder});
    if (!helper.waitForStarted() || !helper.waitForFinished(-1)) {
        result.error = tr("The PDF renderer \"%1\" could not be run: %2")
                           .arg(helperPath(), helper.errorString());
        return result;
    }
    if (helper.exitStatus() != QProcess::NormalExit || helper.exitCode() != 0) {
        result.error = QString::fromLocal8Bit(helper.readAllStandardError()).trimmed();
        return result;
    }
    result.ok = true;
    result.pdf = helper.readAllStandardOutput();
    return result;
}
