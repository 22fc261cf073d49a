#include "desktop/MprisPlayer.h"

#include "Logging.h"
#include "desktop/MprisPlayerAdaptor.h"
#include "desktop/MprisRootAdaptor.h"
#include "desktop/RemoteKeys.h"

#include <QDBusMessage>
#include <QDBusObjectPath>

#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

MprisPlayer::MprisPlayer(QObject *parent)
    : QObject(parent)
    , m_bus(QString()) {
    new MprisRootAdaptor(this);
    new MprisPlayerAdaptor(this);
}

MprisPlayer::~MprisPlayer() {
    unregister();
}

bool MprisPlayer::registerOn(const QDBusConnection &bus) {
    if (m_registered)
        return true;
    m_bus = bus;
    if (!m_bus.isConnected()) {
        qCInfo(lcDesktop, "No session bus: media keys do not reach the timers");
        return false;
    }
    if (!m_bus.registerObject(objectPath, this)) {
        qCWarning(lcDesktop, "Could not offer the media player object on the session bus");
        return false;
    }
    if (!m_bus.registerService(serviceName)) {
        qCWarning(lcDesktop, "Could not take the name %s on the session bus: %s",
                  qUtf8Printable(serviceName), qUtf8Printable(m_bus.lastError().message()));
        m_bus.unregisterObject(objectPath);
        return false;
    }
    m_registered = true;
    return true;
}

void MprisPlayer::unregister() {
    if (!m_registered)
        return;
    m_bus.unregisterService(serviceName);
    m_bus.unregisterObject(objectPath);
    m_registered = false;
}

void MprisPlayer::setTimer(const QString &title, Status status) {
    if (title == m_title && status == m_status)
        return;
    const bool statusChanged = status != m_status;
    m_title = title;
    m_status = status;
    QVariantMap changed{{u"Metadata"_s, metadata()}};
    if (statusChanged)
        changed.insert(u"PlaybackStatus"_s, playbackStatus());
    announce(changed);
}

QString MprisPlayer::playbackStatus() const {
    switch (m_status) {
    case Status::Playing:
        return u"Playing"_s;
    case Status::Paused:
        return u"Paused"_s;
    case Status::Stopped:
        break;
    }
    return u"Stopped"_s;
}

QVariantMap MprisPlayer::metadata() const {
    if (m_status == Status::Stopped)
        return {{u"mpris:trackid"_s, QVariant::fromValue(QDBusObjectPath(
                                         u"/org/mpris/MediaPlayer2/TrackList/NoTrack"_s))}};
    return {{u"mpris:trackid"_s, QVariant::fromValue(QDBusObjectPath(u"/org/hourfold/timer"_s))},
            {u"xesam:title"_s, m_title},
            {u"xesam:artist"_s, QStringList{u"Hourfold"_s}}};
}

void MprisPlayer::playPause() {
    emit burst(RemoteKeys::burstForKey(KEY_PLAYPAUSE, 1, false));
}

void MprisPlayer::play() {
    if (m_status == Status::Paused)
        playPause();
}

void MprisPlayer::pause() {
    if (m_status == Status::Playing)
        playPause();
}

void MprisPlayer::next() {
    pressAndRelease(KEY_VOLUMEDOWN);
}

void MprisPlayer::previous() {
    pressAndRelease(KEY_VOLUMEUP);
}

void MprisPlayer::raise() {
    emit raiseRequested();
}

void MprisPlayer::pressAndRelease(int key) {
    emit burst(RemoteKeys::burstForKey(key, 1, false));
    emit burst(RemoteKeys::burstForKey(key, 0, false));
}

void MprisPlayer::announce(const QVariantMap &changed) {
    if (!m_registered)
        return;
    QDBusMessage signal = QDBusMessage::createSignal(
        objectPath, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
    signal << playerInterface << changed << QStringList();
    m_bus.send(signal);
}
