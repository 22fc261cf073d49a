#include "AttachmentController.h"

#include "../Logging.h"
#include "../model/Entry.h"
#include "../model/HelpFunctions.h"
#include "../platform/DesktopServices.h"
#include "../platform/Preferences.h"
#include "../platform/UserAlerts.h"

#include <QDir>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

namespace {

// The last component of a path, trailing slashes ignored ("/a/b/" gives "b", "/" stays "/").
QString lastPathComponent(const QString &path) {
    QStringView rest(path);
    while (rest.size() > 1 && rest.endsWith(u'/'))
        rest.chop(1);
    const qsizetype slash = rest.lastIndexOf(u'/');
    return (slash < 0 || rest.size() == 1 ? rest : rest.mid(slash + 1)).toString();
}

QString extensionOf(const QString &component) {
    const qsizetype dot = component.lastIndexOf(u'.');
    return dot > 0 ? component.mid(dot + 1) : QString();
}

// Calls the action with the project, entry or flat fee held, if any.
template <typename Action> void withRecord(const AttachmentController::Item &item, Action action) {
    std::visit(
        [&](const auto &record) {
            if constexpr (!std::is_same_v<std::decay_t<decltype(record)>, std::monostate>)
                action(*record);
        },
        item);
}

} // namespace

AttachmentController::AttachmentController(DesktopServices &desktop, UserAlerts &alerts,
                                           std::function<void()> markDocumentChanged,
                                           QObject *parent)
    : QObject(parent)
    , m_desktop(desktop)
    , m_alerts(alerts)
    , m_markDocumentChanged(std::move(markDocumentChanged)) {}

void AttachmentController::openAttachmentsWindowForItem(const Item &item) {
    m_windowVisible = true;
    emit windowOpened();
    updateWindowWithItem(item);
}

void AttachmentController::updateWindowWithItem(const Item &item) {
    if (!m_windowVisible)
        return;
    m_item = item;
    emit currentItemChanged();
}

QString AttachmentController::windowTitle() const {
    if (const auto *project = std::get_if<std::shared_ptr<Project>>(&m_item))
        return (*project)->name();
    if (const auto *item = std::get_if<std::shared_ptr<ProjectItem>>(&m_item)) {
        const auto *entry = dynamic_cast<const Entry *>(item->get());
        const QString date =
            entry && entry->hasPeriod() ? entry->formattedFromDate() : (*item)->formattedDay();
        const Project *parent = (*item)->parent();
        return QStringLiteral("%1: %2").arg(parent ? parent->name() : QString(), date);
    }
    return QStringLiteral("(%1)").arg(tr("Nothing selected"));
}

QStringList AttachmentController::attachments() const {
    QStringList all;
    withRecord(m_item, [&all](const auto &record) { all = record.attachments(); });
    return all;
}

AttachmentController::Row AttachmentController::row(int index) const {
    const QStringList all = attachments();
    return index >= 0 && index < all.size() ? rowFor(all[index]) : Row();
}

AttachmentController::Row AttachmentController::rowFor(const QString &attachment) {
    if (HelpFunctions::isStringURL(attachment))
        return {attachment, IconKind::Url, QString(), attachment};
    const QString name = lastPathComponent(attachment);
    if (QFileInfo(attachment).isDir())
        return {name, IconKind::Folder, QString(), attachment};
    return {name, IconKind::FileType, extensionOf(name), attachment};
}

QString AttachmentController::openPanelDirectory() {
    const QString start = Preferences::shared().stringForKey(u"StartingDirectory");
    return start.isEmpty() ? QDir::homePath() : start;
}

void AttachmentController::addAttachmentsToCurrentItem(const QStringList &attachments) {
    QStringList added;
    for (const QString &attachment : attachments) {
        if (!attachment.isEmpty())
            added.append(attachment);
    }
    if (added.isEmpty() || !hasCurrentItem())
        return;
    withRecord(m_item, [&added](auto &record) { record.addAttachments(added); });
    m_markDocumentChanged();
    emit attachmentsChanged();
}

bool AttachmentController::validateDrop(const QMimeData &data) const {
    return hasCurrentItem() && !data.urls().isEmpty();
}

bool AttachmentController::acceptDrop(const QMimeData &data) {
    if (!validateDrop(data))
        return false;
    QStringList files;
    QStringList addresses;
    for (const QUrl &url : data.urls()) {
        if (url.isLocalFile())
            files.append(url.toLocalFile());
        else
            addresses.append(url.toString());
    }
    addAttachmentsToCurrentItem(files.isEmpty() ? addresses : files);
    return true;
}

void AttachmentController::removeButtonClicked(const QList<int> &selectedRows) {
    const QStringList all = attachments();
    QStringList removed;
    for (int index : selectedRows) {
        if (index >= 0 && index < all.size())
            removed.append(all[index]);
    }
    removeAttachmentsFromCurrentItem(removed);
}

void AttachmentController::removeAttachmentsFromCurrentItem(const QStringList &attachments) {
    if (attachments.isEmpty() || !hasCurrentItem())
        return;
    withRecord(m_item, [&attachments](auto &record) { record.removeAttachments(attachments); });
    m_markDocumentChanged();
    emit attachmentsChanged();
}

void AttachmentController::openLinkedFile(int index) {
    open(index, false);
}

void AttachmentController::followButtonClicked(int index) {
    open(index, true);
}

void AttachmentController::open(int index, bool reveal) {
    const QStringList all = attachments();
    if (index < 0 || index >= all.size())
        return;
    const QString &attachment = all[index];
    if (HelpFunctions::isStringURL(attachment)) {
        if (!m_desktop.openUrl(attachment))
            qCWarning(lcStores).noquote() << "cannot open" << attachment;
        return;
    }
    if (!(reveal ? m_desktop.revealPath(attachment) : m_desktop.openPath(attachment)))
        displayMissingFileAlertForPath(attachment);
}

void AttachmentController::displayMissingFileAlertForPath(const QString &path) {
    UserAlerts::Alert alert;
    alert.style = UserAlerts::Style::Critical;
    alert.message = tr("File or folder does not exist. Do you want to remove the attachment?");
    alert.informativeText = path;
    alert.buttons = {tr("Yes"), tr("No")};
    if (m_alerts.runModal(alert) == UserAlerts::firstButton)
        removeAttachmentsFromCurrentItem({path});
}
