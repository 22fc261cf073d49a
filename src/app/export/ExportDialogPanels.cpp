#include "export/ExportDialogPanels.h"

#include <QAbstractItemView>
#include <QFileDialog>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>

using namespace Qt::StringLiterals;

namespace {

// A window-modal file dialogue that deletes itself and reports its selection once.
QFileDialog *fileDialog(QWidget *window, const QString &title, const QString &directory,
                        const std::function<void(const QStringList &)> &done) {
    auto *dialog = new QFileDialog(window, title, directory);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(window ? Qt::WindowModal : Qt::ApplicationModal);
    QObject::connect(dialog, &QFileDialog::finished, dialog, [dialog, done](int result) {
        done(result == QDialog::Accepted ? dialog->selectedFiles() : QStringList());
    });
    return dialog;
}

} // namespace

void ExportDialogPanels::beginFolderPanel(const QString &directory, const QString &prompt,
                                          Done done) {
    QFileDialog *dialog = fileDialog(m_window, prompt, directory,
                                     [done](const QStringList &paths) { done(paths.value(0)); });
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setLabelText(QFileDialog::Accept, prompt);
    dialog->open();
}

void ExportDialogPanels::beginSavePanel(const QString &directory, const QString &fileType,
                                        Done done) {
    QFileDialog *dialog = fileDialog(m_window, QObject::tr("Export"), directory,
                                     [done](const QStringList &paths) { done(paths.value(0)); });
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setNameFilter(QObject::tr("%1 files (*.%2)").arg(fileType.toUpper(), fileType));
    dialog->setDefaultSuffix(fileType);
    dialog->open();
}

void ExportDialogPanels::beginStylesPanel(const QString &directory, DoneMany done) {
    QFileDialog *dialog = fileDialog(m_window, QObject::tr("Add Style"), directory, done);
    // Styles are folders: the desktop's own dialogue cannot choose several of those at once.
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setNameFilter(QObject::tr("Styles (*.hfstyle)"));
    for (auto *view : dialog->findChildren<QAbstractItemView *>())
        view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    dialog->open();
}

bool ExportDialogPanels::runPrintDialog(QPrinter &printer) {
    QPrintDialog dialog(&printer, m_window);
    return dialog.exec() == QDialog::Accepted;
}

void ExportDialogPanels::runPrintPreview(QPrinter &printer, const Paint &paint) {
    QPrintPreviewDialog dialog(&printer, m_window);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&paint](QPrinter *shown) { paint(*shown); });
    dialog.resize(900, 700);
    dialog.exec();
}
