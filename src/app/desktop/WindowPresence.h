#pragma once

class Preferences;
class UserAlerts;

// Which window stands for the program when it is asked to come back, and what closing the main
// window says. Closing the main window never quits: the program keeps its timers running in the
// tray. Without a tray the first close of a run tells the user once how to get the window back,
// unless they silenced that notice.
class WindowPresence {
public:
    enum class Window { Main, Mini };

    WindowPresence(Preferences &preferences, UserAlerts &alerts);

    // A second launch or a click on the launcher: the mini window when "showMiniWindow" is set.
    Window windowToReopen() const;
    // The mini window command: it shows the mini window when that is hidden (and remembers the
    // choice), else the main window.
    Window toggleMiniWindow(bool miniWindowVisible);
    // The user brought the main window up (the tray): it is the one that comes back from now on.
    void mainWindowChosen();
    // Called as the main window closes; shows the notice when it is due.
    void mainWindowClosed(bool trayAvailable);

private:
    Preferences &m_preferences;
    UserAlerts &m_alerts;
    bool m_explained = false;
};
