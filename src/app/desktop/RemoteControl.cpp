#include "desktop/RemoteControl.h"

#include "desktop/MiniWindowLogic.h"
#include "model/Entry.h"

RemoteControl::RemoteControl(QObject *parent)
    : QObject(parent)
    , m_remote(tableVersion) {
    m_remote.setOpenInExclusiveMode(true);
    connect(&m_remote, &AppleRemote::appleRemoteButton, this, &RemoteControl::appleRemoteButton);
    connect(&m_evdev, &EvdevRemote::burst, &m_remote, &AppleRemote::handleBurst);
    connect(&m_player, &MprisPlayer::burst, &m_remote, &AppleRemote::handleBurst);
    connect(&m_player, &MprisPlayer::raiseRequested, this, &RemoteControl::raiseRequested);
}

void RemoteControl::setListening(bool listening) {
    if (listening == m_listening)
        return;
    m_listening = listening;
    if (listening) {
        m_evdev.startListening(m_remote.isOpenInExclusiveMode());
        m_player.registerOn(QDBusConnection::sessionBus());
    } else {
        m_evdev.stopListening();
        m_player.unregister();
    }
    emit noticeChanged();
}

void RemoteControl::showTimer(const Entry *entry) {
    if (!entry) {
        m_player.setTimer(QString(), MprisPlayer::Status::Stopped);
        return;
    }
    m_player.setTimer(MiniWindowLogic::projectAndDuration(*entry),
                      entry->isPaused() ? MprisPlayer::Status::Paused
                                        : MprisPlayer::Status::Playing);
}

QString RemoteControl::notice() const {
    if (m_listening && m_evdev.isPermissionMissing())
        return tr("A remote was found, but Hourfold may not read it. Add yourself to the "
                  "\"input\" group (sudo adduser $USER input) and log in again.");
    return {};
}
