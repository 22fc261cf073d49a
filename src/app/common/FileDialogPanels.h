#pragma once

#include "common/FilePanels.h"

class QWidget;

// Open and save panels for ".projects" files as window-modal file dialogs.
class FileDialogPanels : public FilePanels {
public:
    void setParentWindow(QWidget *window) { m_window = window; }
    void beginOpenPanel(const QString &directory, Done done) override;
    void beginSavePanel(const QString &directory, Done done) override;

private:
    void begin(bool saving, const QString &directory, Done done);
    QWidget *m_window = nullptr;
};
