#include "export/ExportCommands.h"

#include "export/ExportDialogue.h"
#include "export/ReportPrinter.h"
#include "render/WebEngineReportRenderer.h"

ExportCommands::ExportCommands(const Services &services, QWidget *window)
    : QObject(window)
    , m_services(services)
    , m_window(window)
    , m_panels(window) {}

ExportCommands::~ExportCommands() = default;

ExportDialogue &ExportCommands::dialogue() {
    if (!m_dialogue) {
        m_renderer = std::make_unique<WebEngineReportRenderer>(m_window);
        m_dialogue =
            new ExportDialogue({m_services.collection, m_services.customers, m_services.preferences,
                                m_services.alerts, m_panels, m_renderer.get()},
                               m_window);
    }
    return *m_dialogue;
}

ReportPrinter &ExportCommands::printer() {
    if (!m_printer) {
        m_printer = std::make_unique<ReportPrinter>(
            ReportPrinter::Services{m_services.collection, m_services.customers, m_services.alerts,
                                    m_panels},
            m_window);
    }
    return *m_printer;
}

void ExportCommands::showExportSheet() {
    dialogue().showExportSheet();
}

void ExportCommands::print() {
    printer().printReport();
}

void ExportCommands::printPreview() {
    printer().previewReport();
}
