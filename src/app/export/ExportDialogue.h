#pragma once

#include "export/ExportController.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QProgressDialog>

class CustomerStorage;
class ExportFormatSheet;
class ExportPanels;
class ExportProjectSheet;
class Preferences;
class ProjectCollection;
class QWidget;
class ReportRenderer;
class UserAlerts;

// The export dialogue of the main window: the format sheet, then the project sheet, then the
// destination panel, then the export itself with a progress dialogue that offers Cancel once it
// takes longer than a moment. The rules are the controller's; this class moves between the steps.
class ExportDialogue : public QObject {
    Q_OBJECT

public:
    struct Services {
        ProjectCollection &collection;
        const CustomerStorage *customers;
        Preferences &preferences;
        UserAlerts &alerts;
        ExportPanels &panels;
        ReportRenderer *renderer; // for PDF; without one PDF export fails with a message
    };

    ExportDialogue(const Services &services, QWidget *window);
    ~ExportDialogue() override;

    ExportController &controller() { return m_controller; }
    ExportFormatSheet *formatSheet() const { return m_formatSheet; }
    ExportProjectSheet *projectSheet() const { return m_projectSheet; }
    // The dialogue of the export under way; nullptr between exports.
    QProgressDialog *progressDialog() const { return m_progress; }
    // How long an export runs before its progress dialogue shows (half a second).
    void setProgressDelay(int milliseconds) { m_progressDelay = milliseconds; }

    // Opens the format sheet over the window with PDF chosen.
    void showExportSheet();

signals:
    // An export has ended, written or not.
    void exportFinished(const Exporter::Result &result);

private:
    void formatChosen();
    void projectsChosen();
    void addStyle();
    void run(const QString &path);
    void showProgress(int done, int total);

    Services m_services;
    QWidget *m_window;
    ExportController m_controller;
    ExportFormatSheet *m_formatSheet;
    ExportProjectSheet *m_projectSheet;
    QPointer<QProgressDialog> m_progress;
    int m_progressDelay = 500;
    QElapsedTimer m_sinceEvents; // since events were last handled during the export
};
