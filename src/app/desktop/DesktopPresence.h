#pragma once

#include "desktop/CountBadge.h"
#include "desktop/StatusMenuLogic.h"
#include "desktop/WindowPresence.h"

#include <QObject>
#include <memory>

class LauncherEntry;
class MiniWindow;
class Preferences;
class ProjectCollection;
class QWidget;
class StatusMenu;
class TrayIcon;
class UserAlerts;

// Keeps the timers in reach outside the main window: the tray icon with its status menu, the
// count badge on the icon and the launcher, the mini window, and which window shows when the
// program is asked to come back. They follow the timers as they change, the 5-second refresh and
// their preferences ("showStatusMenuItem", "showDockBadge", "showMiniWindow").
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

    StatusMenu &statusMenu() const { return *m_statusMenu; }
    MiniWindow &miniWindow() const { return *m_miniWindow; }

signals:
    void preferencesWanted();
    void quitWanted();

private:
    // The set of timers or one's state changed.
    void timersChanged();
    void preferenceChanged(const QString &key);
    void trayClicked();
    // The tray's click or command: the main window, and it stays the one that comes back.
    void chooseMainWindow();
    void quitFromTray();

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
};
