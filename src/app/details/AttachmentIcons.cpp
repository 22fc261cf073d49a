#include "details/AttachmentIcons.h"

#include "Pictures.h"

#include <QHash>
#include <QMimeDatabase>

using namespace Qt::StringLiterals;

QIcon AttachmentIcons::iconFor(const AttachmentController::Row &row) {
    switch (row.icon) {
    case AttachmentController::IconKind::Url:
        return urlIcon();
    case AttachmentController::IconKind::Folder:
        return folderIcon();
    case AttachmentController::IconKind::FileType:
        break;
    }
    return iconForExtension(row.extension);
}

QIcon AttachmentIcons::folderIcon() {
    static const QIcon icon = QIcon::fromTheme(u"folder"_s, Pictures::icon(u"folder"_s));
    return icon;
}

QIcon AttachmentIcons::urlIcon() {
    static const QIcon icon =
        QIcon::fromTheme(u"applications-internet"_s, Pictures::icon(u"url"_s));
    return icon;
}

QIcon AttachmentIcons::defaultIcon() {
    static const QIcon icon = QIcon::fromTheme(u"text-x-generic"_s, Pictures::icon(u"file"_s));
    return icon;
}

QIcon AttachmentIcons::iconForExtension(const QString &extension) {
    if (extension.isEmpty())
        return defaultIcon();
    static QHash<QString, QIcon> icons;
    const QString key = extension.toLower();
    const auto found = icons.constFind(key);
    if (found != icons.cend())
        return *found;
    const QMimeType type =
        QMimeDatabase().mimeTypeForFile(u"file."_s + extension, QMimeDatabase::MatchExtension);
    const QIcon icon =
        type.isDefault()
            ? defaultIcon()
            : QIcon::fromTheme(type.iconName(),
                               QIcon::fromTheme(type.genericIconName(), defaultIcon()));
    icons.insert(key, icon);
    return icon;
}
