#pragma once

#include "export/ExportPanels.h"

#include <QPointer>
#include <QWidget>

// The export and print panels as Qt's window-modal file dialogues and its print dialogues.
class ExportDialogPanels : public ExportPanels {
public:
    explicit ExportDialogPanels(QWidget *window)
        : m_window(window) {}

    void beginFolderPanel(const QString &directory, const QString &prompt, Done done) override;
    void beginSavePanel(const QString &directory, const QString &fileType, Done done) override;
    void beginStylesPanel(const QString &directory, DoneMany done) override;
    bool runPrintDialog(QPrinter &printer) override;
    void runPrintPreview(QPrinter &printer, const Paint &paint) override;

private:
    QPointer<QWidget> m_window;
};
