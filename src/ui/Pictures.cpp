#include "Pictures.h"

#include "platform/Folders.h"

#include <QFileInfo>
#include <QHash>

QIcon Pictures::icon(const QString &name) {
    static QHash<QString, QIcon> loaded;
    const auto found = loaded.constFind(name);
    if (found != loaded.cend())
        return *found;
    const QString path = Folders::imagePath(name);
    const QIcon icon = QFileInfo::exists(path) ? QIcon(path) : QIcon();
    loaded.insert(name, icon);
    return icon;
}
