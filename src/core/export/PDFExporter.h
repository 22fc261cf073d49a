#pragma once

#include "RenderedReportExporter.h"

class CustomerStorage;
class ReportRenderer;

// Writes the chosen projects as a PDF document, or prints them: the HTML report of a style is
// written into a fresh scratch folder and rendered by the HTML engine with its print style sheet.
// The PDF bytes come back from the engine and are written atomically.
class PDFExporter : public RenderedReportExporter {
public:
    // The customers may be null; the renderer must outlive the exporter.
    PDFExporter(const QString &stylePath, const CustomerStorage *customers,
                ReportRenderer &renderer);

    // Print through the print dialogue instead of writing a file.
    void setShowPrintPanels(bool show) { m_showPrintPanels = show; }
    bool showPrintPanels() const { return m_showPrintPanels; }

    // The field choices and the encoding are ignored; the path is unused when printing.
    Result exportProjects(const QStringList &projectNames, const QList<bool> &projectFields,
                          const QList<bool> &entryFields, const QString &path, bool applyFilter,
                          const QString &encoding) override;

private:
    ReportRenderer &m_renderer;
    bool m_showPrintPanels = false;
};
