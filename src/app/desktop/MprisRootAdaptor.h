#pragma once

#include <QDBusAbstractAdaptor>
#include <QStringList>

class MprisPlayer;

// The media player's own interface: its name, its desktop file, and Raise for the main window.
class MprisRootAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(bool CanQuit READ canQuit)
    Q_PROPERTY(bool CanRaise READ canRaise)
    Q_PROPERTY(bool HasTrackList READ hasTrackList)
    Q_PROPERTY(QString Identity READ identity)
    Q_PROPERTY(QString DesktopEntry READ desktopEntry)
    Q_PROPERTY(QStringList SupportedUriSchemes READ supported)
    Q_PROPERTY(QStringList SupportedMimeTypes READ supported)

public:
    explicit MprisRootAdaptor(MprisPlayer *player);

    bool canQuit() const { return false; }
    bool canRaise() const { return true; }
    bool hasTrackList() const { return false; }
    QString identity() const { return QStringLiteral("Hourfold"); }
    QString desktopEntry() const { return QStringLiteral("hourfold"); }
    QStringList supported() const { return {}; }

public slots:
    void Raise();
    void Quit() {}

private:
    MprisPlayer *m_player;
};
