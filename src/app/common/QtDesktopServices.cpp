#include "common/QtDesktopServices.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

bool QtDesktopServices::openUrl(const QString &url) {
    return QDesktopServices::openUrl(QUrl(url));
}

bool QtDesktopServices::openPath(const QString &path) {
    return QFileInfo::exists(path) && QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool QtDesktopServices::revealPath(const QString &path) {
    const QFileInfo info(path);
    if (!info.exists())
        return false;
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
        u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    call << QStringList{QUrl::fromLocalFile(info.absoluteFilePath()).toString()} << QString();
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 3000);
    if (reply.type() == QDBusMessage::ReplyMessage)
        return true;
    return QDesktopServices::openUrl(QUrl::fromLocalFile(info.absolutePath()));
}
