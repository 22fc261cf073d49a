#pragma once

#include "stores/AttachmentController.h"

#include <QWidget>
#include <functional>

class AttachmentTableModel;
class DesktopServices;
class LinkButtonDelegate;
class ProjectCollection;
class QFrame;
class QLabel;
class QTableView;
class QToolButton;
class UserAlerts;

// The attachments window: the files, folders and web addresses of the item selected in the
// project list, each with its icon and a link button. Files are added with the open panel or by
// dropping files or addresses on the table, removed with the remove button, opened by
// double-click and shown in the file manager (addresses opened) by the link button; a file that
// is gone is offered for removal. The window shows what the AttachmentController holds.
class AttachmentsPanel : public QWidget {
    Q_OBJECT

public:
    using Item = AttachmentController::Item;
    // Runs an open panel for files and folders over the window, starting in the directory; done
    // gets the chosen paths, or none when it is cancelled. AttachmentOpenPanel::begin is one.
    using ChooseFiles = std::function<void(QWidget *window, const QString &directory,
                                           std::function<void(const QStringList &paths)> done)>;

    AttachmentsPanel(ProjectCollection &collection, DesktopServices &desktop, UserAlerts &alerts,
                     ChooseFiles chooseFiles, QWidget *parent = nullptr);

    AttachmentController &controller() { return *m_controller; }

    // Shows the window with the item (the toolbar's "Attachments").
    void openAttachmentsWindowForItem(const Item &item);
    // The selection of the project list changed (a project, an entry or flat fee, or nothing);
    // nothing happens while the window is hidden.
    void updateWindowWithItem(const Item &item);

signals:
    // An item's attachments changed (the document is marked changed already): the details and
    // the list's paper clips show them again.
    void attachmentsChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void showCurrentItem();
    void reloadTable();
    void updateButtons();
    void addButtonClicked();
    void removeButtonClicked();
    void showDropTarget(bool shown);

    AttachmentController *m_controller;
    ChooseFiles m_chooseFiles;
    AttachmentTableModel *m_model;
    QTableView *m_table;
    LinkButtonDelegate *m_linkButtons;
    QLabel *m_nothingSelectedLabel;
    QFrame *m_dropTarget;
    QToolButton *m_addButton;
    QToolButton *m_removeButton;
};
