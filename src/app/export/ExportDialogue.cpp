#include "export/ExportDialogue.h"

#include "export/ExportFormatSheet.h"
#include "export/ExportPanels.h"
#include "export/ExportProjectSheet.h"
#include "platform/UserAlerts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProgressDialog>

ExportDialogue::ExportDialogue(const Services &services, QWidget *window)
    : QObject(window)
    , m_services(services)
    , m_window(window)
    , m_controller(services.collection, services.customers, services.preferences, services.alerts,
                   services.renderer)
    , m_formatSheet(new ExportFormatSheet(m_controller, window))
    , m_projectSheet(new ExportProjectSheet(m_controller, services.customers, window)) {
    connect(m_formatSheet, &QDialog::accepted, this, &ExportDialogue::formatChosen);
    connect(m_formatSheet, &ExportFormatSheet::addStyleRequested, this, &ExportDialogue::addStyle);
    connect(&m_controller, &ExportController::stylesChanged, m_formatSheet,
            &ExportFormatSheet::refillStyles);
    connect(m_projectSheet, &QDialog::accepted, this, &ExportDialogue::projectsChosen);
    connect(&m_controller, &ExportController::progress, this, &ExportDialogue::showProgress);
}

ExportDialogue::~ExportDialogue() = default;

void ExportDialogue::showExportSheet() {
    m_controller.setFormat(ExportController::Pdf);
    m_formatSheet->showChoices();
    m_formatSheet->open();
}

void ExportDialogue::formatChosen() {
    m_projectSheet->showChoices();
    m_projectSheet->open();
}

void ExportDialogue::projectsChosen() {
    const ExportController::Destination destination = m_controller.destination();
    const auto chosen = [this](const QString &path) {
        if (!path.isEmpty())
            run(path);
    };
    if (destination.chooseFolder)
        m_services.panels.beginFolderPanel(destination.startDirectory, destination.prompt, chosen);
    else
        m_services.panels.beginSavePanel(destination.startDirectory, destination.fileType, chosen);
}

void ExportDialogue::addStyle() {
    m_services.panels.beginStylesPanel(QDir::homePath(), [this](const QStringList &paths) {
        if (!paths.isEmpty())
            m_controller.addStyles(paths);
    });
}

void ExportDialogue::run(const QString &path) {
    auto *progress = new QProgressDialog(tr("Exporting to \"%1\"…").arg(QFileInfo(path).fileName()),
                                         tr("Cancel"), 0, 0, m_window);
    m_progress = progress;
    progress->setWindowTitle(tr("Export"));
    progress->setMinimumWidth(400);
    progress->setWindowModality(Qt::WindowModal);
    progress->setAutoClose(false);
    progress->setAutoReset(false);
    // Shows itself when the export is still running after the delay.
    progress->setMinimumDuration(m_progressDelay);
    connect(progress, &QProgressDialog::canceled, this, [this, progress] {
        m_controller.cancelExport();
        // A document being rendered is dropped only once the engine has finished it.
        progress->setLabelText(tr("Stopping…"));
    });
    m_sinceEvents.invalidate();
    const Exporter::Result result = m_controller.exportTo(path);
    delete progress;
    if (!result.ok && !result.cancelled) {
        m_services.alerts.runModal(
            {tr("The report could not be exported to \"%1\".").arg(QDir::toNativeSeparators(path)),
             result.error,
             UserAlerts::Style::Critical,
             {tr("OK")}});
    }
    emit exportFinished(result);
}

void ExportDialogue::showProgress(int done, int total) {
    if (!m_progress)
        return;
    // PDF and RTF are made from the finished HTML report: a busy bar until they are.
    if (done == total && m_controller.format() != ExportController::Csv &&
        m_controller.format() != ExportController::Text) {
        m_progress->setLabelText(tr("Writing the document…"));
        m_progress->setRange(0, 0);
    } else {
        m_progress->setRange(0, total);
        m_progress->setValue(done);
    }
    // Painting, the delayed showing and Cancel go on between projects; until the dialogue
    // blocks the window, typing and clicks wait so that the document stays as it is.
    if (m_sinceEvents.isValid() && m_sinceEvents.elapsed() < 30 && done != total)
        return;
    m_sinceEvents.start();
    QCoreApplication::processEvents(m_progress->isVisible() ? QEventLoop::AllEvents
                                                            : QEventLoop::ExcludeUserInputEvents);
}
