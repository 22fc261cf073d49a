#pragma once

#include "../model/Project.h"

#include <QObject>
#include <functional>
#include <variant>

class DesktopServices;
class UserAlerts;
class QMimeData;

// The logic of the attachments panel: the files, folders and web addresses attached to the item
// selected in the project list (an entry, a flat fee or a project), with adding, removing,
// opening and revealing them, and the offer to remove one whose file is gone. Changes mark the
// document changed and are not undoable. The panel only shows what this holds.
class AttachmentController : public QObject {
    Q_OBJECT

public:
    using Item =
        std::variant<std::monostate, std::shared_ptr<Project>, std::shared_ptr<ProjectItem>>;

    enum class IconKind { Url, Folder, FileType };

    struct Row {
        QString text; // the web address, or the path's last component
        IconKind icon = IconKind::FileType;
        QString extension; // for IconKind::FileType: the icon is the one of this extension
        QString toolTip;   // the whole attachment
    };

    // markDocumentChanged is called after every change to an item's attachments.
    AttachmentController(DesktopServices &desktop, UserAlerts &alerts,
                         std::function<void()> markDocumentChanged, QObject *parent = nullptr);

    // Shows the panel with the item.
    void openAttachmentsWindowForItem(const Item &item);
    // The item becomes the current one; nothing happens while the panel is hidden.
    void updateWindowWithItem(const Item &item);
    void windowDidClose() { m_windowVisible = false; }
    bool isWindowVisible() const { return m_windowVisible; }

    const Item &currentItem() const { return m_item; }
    bool hasCurrentItem() const { return !std::holds_alternative<std::monostate>(m_item); }
    // The project's name; for an entry or flat fee its project's name and its date (the start
    // date of a period, else the day); "(Nothing selected)" without an item.
    QString windowTitle() const;
    bool isNothingSelectedLabelVisible() const { return !hasCurrentItem(); }

    QStringList attachments() const;
    int rowCount() const { return int(attachments().size()); }
    // An empty row for an index outside the table.
    Row row(int index) const;
    static Row rowFor(const QString &attachment);

    // The add button works only with a current item; its open panel starts here.
    bool canAdd() const { return hasCurrentItem(); }
    static QString openPanelDirectory();
    // Adds the non-empty strings that are not attached yet.
    void addAttachmentsToCurrentItem(const QStringList &attachments);
    // A drop is taken only with a current item: file names when there are any, else addresses.
    bool validateDrop(const QMimeData &data) const;
    bool acceptDrop(const QMimeData &data);

    void removeButtonClicked(const QList<int> &selectedRows);
    void removeAttachmentsFromCurrentItem(const QStringList &attachments);

    // Double-click: opens the address or the file with its default application.
    void openLinkedFile(int index);
    // The row's link button: opens the address, or shows the file in the file manager.
    void followButtonClicked(int index);
    // Asks whether to remove an attachment whose file or folder is gone; "Yes" removes it.
    void displayMissingFileAlertForPath(const QString &path);

signals:
    void windowOpened();
    // The title, label and table show another (or the same) item.
    void currentItemChanged();
    // The current item's attachments changed: the table reloads without selection and the
    // details are refreshed.
    void attachmentsChanged();

private:
    void open(int index, bool reveal);

    DesktopServices &m_desktop;
    UserAlerts &m_alerts;
    std::function<void()> m_markDocumentChanged;
    Item m_item;
    bool m_windowVisible = false;
};
