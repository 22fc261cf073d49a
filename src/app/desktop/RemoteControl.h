#pragma once

#include "desktop/AppleRemote.h"
#include "desktop/EvdevRemote.h"
#include "desktop/MprisPlayer.h"

#include <QObject>

class Entry;

// The remote's two sources while "useRemote" is set: infrared receivers and remotes among the
// input devices (opened exclusively), and the media player on the session bus. Both feed one
// decoder, whose buttons come out of appleRemoteButton().
class RemoteControl : public QObject {
    Q_OBJECT

public:
    // The sources give the bursts of the version-5 table.
    static constexpr int tableVersion = 5;

    explicit RemoteControl(QObject *parent = nullptr);

    // Starts or stops both sources; a source that cannot start says why in the log.
    void setListening(bool listening);
    bool isListening() const { return m_listening; }
    // The timer the play button acts on, shown by the media player; nullptr for none.
    void showTimer(const Entry *entry);
    // What the preferences window says about the remote: empty, or why it cannot be read.
    QString notice() const;

    AppleRemote &remote() { return m_remote; }
    MprisPlayer &player() { return m_player; }

signals:
    void appleRemoteButton(int button, bool pressedDown);
    void raiseRequested();
    void noticeChanged();

private:
    AppleRemote m_remote;
    EvdevRemote m_evdev;
    MprisPlayer m_player;
    bool m_listening = false;
};
