#include "desktop/DesktopIdleTime.h"

#include "Logging.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QGuiApplication>

#include <X11/Xlib.h>
#include <X11/extensions/scrnsaver.h>

using namespace Qt::StringLiterals;

namespace {

// A call that answers at once or not at all: the idle time is asked on the main loop.
constexpr int callTimeout = 500;

std::optional<qint64> callForIdleTime(const QString &service, const QString &path,
                                      const QString &interface, const QString &method) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return {};
    const QDBusMessage reply =
        bus.call(QDBusMessage::createMethodCall(service, path, interface, method), QDBus::Block,
                 callTimeout);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    bool ok = false;
    const qint64 idle = reply.arguments().constFirst().toLongLong(&ok);
    return ok ? std::optional<qint64>(idle) : std::nullopt;
}

std::optional<qint64> x11IdleTime() {
    const auto *x11 =
        qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    Display *display = x11 ? x11->display() : nullptr;
    int event = 0;
    int error = 0;
    if (!display || !XScreenSaverQueryExtension(display, &event, &error))
        return {};
    XScreenSaverInfo *info = XScreenSaverAllocInfo();
    std::optional<qint64> idle;
    if (info && XScreenSaverQueryInfo(display, DefaultRootWindow(display), info))
        idle = qint64(info->idle);
    XFree(info);
    return idle;
}

} // namespace

std::optional<qint64> DesktopIdleTime::idleMilliseconds() {
    if (m_source != Source::Unknown)
        return m_source == Source::Unavailable ? std::nullopt : ask(m_source);
    for (Source source : {Source::ScreenSaver, Source::Mutter, Source::X11}) {
        if (const auto idle = ask(source)) {
            m_source = source;
            return idle;
        }
    }
    m_source = Source::Unavailable;
    qCInfo(lcDesktop, "Neither org.freedesktop.ScreenSaver, org.gnome.Mutter.IdleMonitor nor the "
                      "X screen-saver extension tells the idle time: idle time is not noticed");
    return {};
}

std::optional<qint64> DesktopIdleTime::ask(Source source) const {
    switch (source) {
    case Source::ScreenSaver:
        return callForIdleTime(u"org.freedesktop.ScreenSaver"_s, u"/org/freedesktop/ScreenSaver"_s,
                               u"org.freedesktop.ScreenSaver"_s, u"GetSessionIdleTime"_s);
    case Source::Mutter:
        return callForIdleTime(u"org.gnome.Mutter.IdleMonitor"_s,
                               u"/org/gnome/Mutter/IdleMonitor/Core"_s,
                               u"org.gnome.Mutter.IdleMonitor"_s, u"GetIdletime"_s);
    case Source::X11:
        return x11IdleTime();
    case Source::Unknown:
    case Source::Unavailable:
        break;
    }
    return {};
}
