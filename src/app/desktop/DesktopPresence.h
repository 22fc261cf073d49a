#pragma once

#include "desktop/CountBadge.h"
#include "desktop/RemoteButtonLogic.h"
#include "desktop/StatusMenuLogic.h"
#include "desktop/WindowPresence.h"

#include <QObject>
#include <functional>
#include <memory>

class AwayWatcher;
class Entry;
class IdleTime;
class LauncherEntry;
class MiniWindow;
class Notifier;
class Preferences;
class ProjectCollection;
class QWidget;
class Reminders;
class RemoteControl;
class StatusMenu;
class TrayIcon;
class UserAlerts;

// Keeps the timers in reach outside the main window: the tray icon with its status menu, the
// count badge on the icon and the launcher, the mini window, which window shows when the program
// is asked to come back, the reminders, the remote and the question about time away. They follow
// the timers as they change, the 5-second refresh and their preferences ("showStatusMenuItem",
// "showDockBadge", "showMiniWindow", the reminder settings, "useRemote", "idleMinutes").
class DesktopPresence : public QObject {
    Q_OBJECT

public:
    struct Services {
        Preferences &preferences;
        ProjectCollection &collection;
        UserAlerts &alerts;
        StatusMenuLogic::CustomerColour customerColour;
        // The tray and the launcher; the desktop's own ones when not given (not owned).
        TrayIcon *tray = nullptr;
        LauncherEntry *launcher = nullptr;
        // Desktop notifications and the idle time; the desktop's own ones when not given.
        Notifier *notifier = nullptr;
        IdleTime *idleTime = nullptr;
    };

    DesktopPresence(const Services &services, QWidget *mainWindow);
    ~DesktopPresence() override;

    // The status icon, the badge and the window "showMiniWindow" chooses.
    void start();
    // The 5-second refresh: running durations move on in the menu and the mini window.
    void refresh();
    void showMainWindow();
    void showMiniWindow();
    void toggleMiniWindow();
    // A second launch without a file, or a click on the launcher.
    void reopen();
    // The main window was closed: it hides, and the program keeps running.
    void mainWindowClosed();
    // A button of the remote: in the main window while it shows, else in the mini window.
    void appleRemoteButton(int button, bool pressedDown);
    // The timer that the remote's play button acts on in the main window (its selected entry).
    void setSelectedTimer(std::function<std::shared_ptr<Entry>()> selected) {
        m_selectedTimer = std::move(selected);
    }
    // Shows the timer the play button acts on in the media player.
    void updateRemoteTimer();

    StatusMenu &statusMenu() const { return *m_statusMenu; }
    MiniWindow &miniWindow() const { return *m_miniWindow; }
    Reminders &reminders() const { return *m_reminders; }
    RemoteControl &remoteControl() const { return *m_remote; }
    AwayWatcher &awayWatcher() const { return *m_away; }

signals:
    void preferencesWanted();
    void quitWanted();
    // A remote button that acts on the main window's list.
    void remoteAction(RemoteButtonLogic::Action action);

private:
    // The set of timers or one's state changed.
    void timersChanged();
    void preferenceChanged(const QString &key);
    void trayClicked();
    // The tray's click or command: the main window, and it stays the one that comes back.
    void chooseMainWindow();
    void quitFromTray();
    bool isMainWindowShown() const;

    Preferences &m_preferences;
    ProjectCollection &m_collection;
    QWidget *m_mainWindow;
    std::unique_ptr<TrayIcon> m_ownTray;
    std::unique_ptr<LauncherEntry> m_ownLauncher;
    TrayIcon &m_tray;
    StatusMenuLogic m_statusLogic;
    std::unique_ptr<StatusMenu> m_statusMenu;
    CountBadge m_badge;
    std::unique_ptr<MiniWindow> m_miniWindow;
    WindowPresence m_presence;
    std::unique_ptr<Notifier> m_ownNotifier;
    std::unique_ptr<Reminders> m_reminders;
    std::unique_ptr<RemoteControl> m_remote;
    std::unique_ptr<AwayWatcher> m_away;
    std::function<std::shared_ptr<Entry>()> m_selectedTimer;
};
