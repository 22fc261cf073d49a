#pragma once

#include "desktop/AppleRemote.h"

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

// Hourfold as a media player on the session bus ("org.mpris.MediaPlayer2.hourfold"), so that
// keyboard media keys, headsets and phone remotes reach the timers: Play/Pause, Next and Previous
// come out as the remote's play, down and up bursts. The player shows the timer those keys act
// on ("Project: 1:23"), playing while it runs and paused while it pauses.
class MprisPlayer : public QObject {
    Q_OBJECT

public:
    static inline const QString serviceName = QStringLiteral("org.mpris.MediaPlayer2.hourfold");
    static inline const QString objectPath = QStringLiteral("/org/mpris/MediaPlayer2");
    static inline const QString playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");

    enum class Status { Stopped, Playing, Paused };

    explicit MprisPlayer(QObject *parent = nullptr);
    ~MprisPlayer() override;

    // Takes the player's name on the bus; false (and a line in the log) when that fails.
    bool registerOn(const QDBusConnection &bus);
    void unregister();
    bool isRegistered() const { return m_registered; }

    // The timer shown: its line and state; an empty line with Stopped when there is none.
    void setTimer(const QString &title, Status status);
    QString playbackStatus() const;
    QVariantMap metadata() const;
    bool hasTimer() const { return m_status != Status::Stopped; }

    // What the player's methods do.
    void playPause();
    void play();
    void pause();
    void next();
    void previous();
    void raise();

signals:
    void burst(const AppleRemote::Burst &burst);
    void raiseRequested();

private:
    // Up and down come as a press and a release, like the remote's own.
    void pressAndRelease(int key);
    void announce(const QVariantMap &changed);

    QDBusConnection m_bus;
    bool m_registered = false;
    QString m_title;
    Status m_status = Status::Stopped;
};
