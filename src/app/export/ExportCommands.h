#pragma once

#include "export/ExportDialogPanels.h"

#include <QObject>
#include <memory>

class CustomerStorage;
class ExportDialogue;
class Preferences;
class ProjectCollection;
class ReportPrinter;
class UserAlerts;
class WebEngineReportRenderer;

// The main window's Export…, Print… and Print Preview… commands, with the desktop's dialogues.
// The dialogue and the HTML engine are made when first used.
class ExportCommands : public QObject {
    Q_OBJECT

public:
    struct Services {
        ProjectCollection &collection;
        const CustomerStorage *customers;
        Preferences &preferences;
        UserAlerts &alerts;
    };

    ExportCommands(const Services &services, QWidget *window);
    ~ExportCommands() override;

    ExportDialogue &dialogue();
    void showExportSheet();
    void print();
    void printPreview();

private:
    ReportPrinter &printer();

    Services m_services;
    QWidget *m_window;
    ExportDialogPanels m_panels;
    std::unique_ptr<WebEngineReportRenderer> m_renderer;
    ExportDialogue *m_dialogue = nullptr;
    std::unique_ptr<ReportPrinter> m_printer;
};
