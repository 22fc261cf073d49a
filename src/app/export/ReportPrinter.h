#pragma once

#include "export/ReportRenderer.h"
#include "render/WebEngineReportRenderer.h"

#include <QCoreApplication>

class CustomerStorage;
class ExportPanels;
class ProjectCollection;
class UserAlerts;

// The Print and Print Preview commands: every project that the current filter shows, with only
// its shown entries, as the HTML report of the built-in style, through the print dialogue or the
// preview. It is the PDF exporter's path with the dialogues in place of the file.
class ReportPrinter : private ReportRenderer {
    Q_DECLARE_TR_FUNCTIONS(ReportPrinter)

public:
    struct Services {
        ProjectCollection &collection;
        const CustomerStorage *customers;
        UserAlerts &alerts;
        ExportPanels &panels;
    };

    ReportPrinter(const Services &services, QWidget *window);

    // The resources' "Styles/Simple.hfstyle".
    static QString builtInStylePath();

    // False when the dialogue was cancelled or the report could not be made (the user is told).
    bool printReport() { return run(false); }
    // Shows the pages first; they are printed from the preview.
    bool previewReport() { return run(true); }

private:
    bool run(bool preview);
    PdfResult renderPdf(const QString &folder) override;
    bool print(const QString &folder) override;

    Services m_services;
    WebEngineReportRenderer m_engine;
    bool m_preview = false;
    QString m_printError; // why printing failed after the dialogue was answered
};
