#pragma once

#include "export/ReportRenderer.h"

#include <QCoreApplication>

// Renders reports into PDF in a helper process (hourfold-cli-pdf, beside the program), so that the
// command-line program itself neither links nor starts the HTML engine: every other command
// starts without loading it. Printing is no command of this program.
class ProcessReportRenderer : public ReportRenderer {
    Q_DECLARE_TR_FUNCTIONS(ProcessReportRenderer)

public:
    PdfResult renderPdf(const QString &folder) override;
    bool print(const QString &) override { return false; }

    static QString helperPath();
};
