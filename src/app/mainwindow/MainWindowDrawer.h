#pragma once

#include <QObject>

class DetailsPane;
class Preferences;
class QAction;
class QMainWindow;

// The details pane as the main window's drawer at its right edge: open or closed as in the last
// run ("DrawerState"), its size kept in "drawerWidth" and "drawerHeight", and the Details
// command that opens and closes it.
class MainWindowDrawer : public QObject {
    Q_OBJECT

public:
    MainWindowDrawer(Preferences &preferences, DetailsPane *pane, QAction *command,
                     QMainWindow *window);

    // Gives the drawer the width of the last run.
    void restoreSize();
    // Keeps the drawer's size for the next run when the drawer was in view in this one: one that
    // never was has no size of its own to keep.
    void storeSize();

signals:
    // The drawer came into view: its page is filled now.
    void opened();

private:
    Preferences &m_preferences;
    DetailsPane *m_pane;
    QMainWindow *m_window;
    bool m_shown = false;
};
