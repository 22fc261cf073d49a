#include "desktop/LogindSleep.h"

#include "Logging.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>

using namespace Qt::StringLiterals;

LogindSleep::LogindSleep(QObject *parent)
    : QObject(parent) {
    QDBusConnection bus = QDBusConnection::systemBus();
    const QString service = u"org.freedesktop.login1"_s;
    if (!bus.isConnected() || !bus.interface() ||
        !bus.interface()->isServiceRegistered(service).value()) {
        qCInfo(lcDesktop, "No logind on the system bus: sleep of the computer is not noticed");
        return;
    }
    if (!bus.connect(service, u"/org/freedesktop/login1"_s, u"org.freedesktop.login1.Manager"_s,
                     u"PrepareForSleep"_s, this, SLOT(prepareForSleep(bool))))
        qCWarning(lcDesktop, "Could not listen to logind: %s",
                  qUtf8Printable(bus.lastError().message()));
}

void LogindSleep::prepareForSleep(bool start) {
    emit preparingForSleep(start);
}
