#include "details/AttachmentOpenPanel.h"

#include <QFileInfo>
#include <algorithm>

AttachmentOpenPanel::AttachmentOpenPanel(QWidget *window, const QString &directory)
    : QFileDialog(window, tr("Add Attachments"), directory) {
    // The desktop's own dialogs choose either files or folders, never both.
    setOption(QFileDialog::DontUseNativeDialog);
    setFileMode(QFileDialog::ExistingFiles);
    setAcceptMode(QFileDialog::AcceptOpen);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(window ? Qt::WindowModal : Qt::ApplicationModal);
}

void AttachmentOpenPanel::begin(QWidget *window, const QString &directory, Done done) {
    auto *panel = new AttachmentOpenPanel(window, directory);
    connect(panel, &QFileDialog::finished, panel, [panel, done = std::move(done)](int result) {
        done(result == QDialog::Accepted ? panel->selectedFiles() : QStringList());
    });
    panel->open();
}

void AttachmentOpenPanel::accept() {
    const QStringList chosen = selectedFiles();
    const bool allThere = !chosen.isEmpty() &&
                          std::all_of(chosen.cbegin(), chosen.cend(),
                                      [](const QString &path) { return QFileInfo::exists(path); });
    // A file dialog would go into a chosen folder; here the folder is taken. What is not there
    // is left to the dialog, which says so.
    if (allThere)
        QDialog::accept();
    else
        QFileDialog::accept();
}
