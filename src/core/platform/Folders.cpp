#include "Folders.h"

#include <QCoreApplication>
#include <QDir>

QString Folders::resourceFolder() {
    return QDir::cleanPath(QCoreApplication::applicationDirPath() +
                           QStringLiteral("/../share/hourfold"));
}

QString Folders::imagePath(const QString &name) {
    return resourceFolder() + QStringLiteral("/images/") + name + QStringLiteral(".svg");
}

QString Folders::withTilde(const QString &path) {
    const QString home = QDir::homePath();
    if (path == home)
        return QStringLiteral("~");
    if (path.startsWith(home + u'/'))
        return u'~' + path.mid(home.size());
    return path;
}
