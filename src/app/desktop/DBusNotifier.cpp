#include "desktop/DBusNotifier.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QUrl>

using namespace Qt::StringLiterals;

void DBusNotifier::post(const Notification &notification) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        emit failed(notification, tr("no session bus"));
        return;
    }
    QDBusMessage call =
        QDBusMessage::createMethodCall(serviceName, objectPath, serviceName, u"Notify"_s);
    // The notification's kind goes along as its category, so that the desktop can tell the two
    // reminders apart in its settings.
    const QVariantMap hints{{u"desktop-entry"_s, u"hourfold"_s},
                            {u"category"_s, notification.name},
                            {u"urgency"_s, QVariant::fromValue<uchar>(1)}};
    call << u"Hourfold"_s << 0u << QUrl::fromLocalFile(notification.icon).toString()
         << notification.title << notification.text << QStringList() << hints << -1;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, notification] {
        const QDBusPendingReply<uint> reply = *watcher;
        if (reply.isError())
            emit failed(notification, reply.error().message());
        watcher->deleteLater();
    });
}
