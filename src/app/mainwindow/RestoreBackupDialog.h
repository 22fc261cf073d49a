#pragma once

#include "model/ProjectBackups.h"

#include <QDialog>

#include <atomic>

class QDialogButtonBox;
class QThread;
class QTreeWidget;

// File ▸ Restore from Backup…: the kept copies of project files, newest first, with their date,
// document, and (read in the background, as they can be large) their project and entry counts and
// total hours. Open hands the chosen copy on; the caller opens it as a new untitled document.
class RestoreBackupDialog : public QDialog {
    Q_OBJECT

public:
    RestoreBackupDialog(const ProjectBackups &backups, QWidget *parent = nullptr);
    ~RestoreBackupDialog() override;

    QTreeWidget *list() const { return m_list; }

signals:
    void backupChosen(const QString &path);

private:
    void showSummary(int row, const ProjectBackups::Summary &summary);
    void openChosen();

    QTreeWidget *m_list;
    QDialogButtonBox *m_buttons;
    QThread *m_reader = nullptr;
    std::atomic<bool> m_stopReading = false;
};
