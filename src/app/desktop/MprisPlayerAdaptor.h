#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>
#include <QVariantMap>

class MprisPlayer;

// The media player's controls. Only play, pause and the two skips do something; the player
// cannot seek and has no volume of its own.
class MprisPlayerAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ playbackStatus)
    Q_PROPERTY(double Rate READ one)
    Q_PROPERTY(double MinimumRate READ one)
    Q_PROPERTY(double MaximumRate READ one)
    Q_PROPERTY(double Volume READ one)
    Q_PROPERTY(QVariantMap Metadata READ metadata)
    Q_PROPERTY(qlonglong Position READ position)
    Q_PROPERTY(bool CanGoNext READ yes)
    Q_PROPERTY(bool CanGoPrevious READ yes)
    Q_PROPERTY(bool CanPlay READ hasTimer)
    Q_PROPERTY(bool CanPause READ hasTimer)
    Q_PROPERTY(bool CanSeek READ no)
    Q_PROPERTY(bool CanControl READ yes)

public:
    explicit MprisPlayerAdaptor(MprisPlayer *player);

    QString playbackStatus() const;
    QVariantMap metadata() const;
    bool hasTimer() const;
    double one() const { return 1.0; }
    qlonglong position() const { return 0; }
    bool yes() const { return true; }
    bool no() const { return false; }

public slots:
    void PlayPause();
    void Play();
    void Pause();
    void Next();
    void Previous();
    void Stop() {}
    void Seek(qlonglong) {}
    void SetPosition(const QDBusObjectPath &, qlonglong) {}
    void OpenUri(const QString &) {}

private:
    MprisPlayer *m_player;
};
