#include "common/FileDialogPanels.h"

#include <QFileDialog>

using namespace Qt::StringLiterals;

void FileDialogPanels::beginOpenPanel(const QString &directory, Done done) {
    begin(false, directory, std::move(done));
}

void FileDialogPanels::beginSavePanel(const QString &directory, Done done) {
    begin(true, directory, std::move(done));
}

void FileDialogPanels::begin(bool saving, const QString &directory, Done done) {
    auto *dialog = new QFileDialog(
        m_window, saving ? QObject::tr("Save Projects") : QObject::tr("Open Projects"), directory,
        QObject::tr("Projects (*.projects)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(m_window ? Qt::WindowModal : Qt::ApplicationModal);
    dialog->setAcceptMode(saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog->setFileMode(saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (saving)
        dialog->setDefaultSuffix(u"projects"_s);
    // Either signal ends the panel exactly once.
    QObject::connect(dialog, &QFileDialog::finished, dialog, [dialog, done](int result) {
        const QStringList files = dialog->selectedFiles();
        done(result == QDialog::Accepted && !files.isEmpty() ? files.constFirst() : QString());
    });
    dialog->open();
}
