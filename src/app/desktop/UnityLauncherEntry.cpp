#include "desktop/UnityLauncherEntry.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

using namespace Qt::StringLiterals;

void UnityLauncherEntry::setCount(int count, bool countVisible) {
    QDBusMessage update = QDBusMessage::createSignal(objectPath, interfaceName, u"Update"_s);
    const QVariantMap properties{{u"count"_s, qint64(count)}, {u"count-visible"_s, countVisible}};
    update << applicationUri << properties;
    // Without a session bus there is no launcher to tell.
    QDBusConnection::sessionBus().send(update);
}
