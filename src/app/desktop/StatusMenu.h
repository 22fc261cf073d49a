#pragma once

#include "desktop/StatusMenuLogic.h"

#include <QHash>
#include <QIcon>
#include <QObject>

class Preferences;
class QAction;
class QMenu;
class TrayIcon;

// The tray icon's menu. Its fixed items come first: show the main window, the "Start Timer"
// submenu with one item per project, show the mini window, preferences, a separator; from
// position 5 one item per running or paused timer with its pause or resume and stop commands;
// then Quit. The icon is there while "showStatusMenuItem" is on.
class StatusMenu : public QObject {
    Q_OBJECT

public:
    // Position of the first timer's item.
    static constexpr int firstEntryPosition = 5;

    StatusMenu(Preferences &preferences, StatusMenuLogic &logic, TrayIcon &tray,
               QObject *parent = nullptr);
    ~StatusMenu() override;

    // Puts the icon into the tray (when the preference asks for it) and fills the menu.
    void activate();
    void deactivate();
    // Brings the projects' submenu, the timers' items and the tooltip up to date; nothing while
    // the preference is off.
    void refreshStatusMenu();

    QMenu *menu() const { return m_menu; }
    // The "Start Timer" item, whose submenu lists the projects.
    QAction *startTimerItem() const { return m_startTimer; }

signals:
    void mainWindowWanted();
    void miniWindowWanted();
    void preferencesWanted();
    void quitWanted();

private:
    static QRgb colourKey(const QColor &colour);
    QIcon colourIcon(const QColor &colour);
    void fillProjects();
    void startTimer(QAction *item);
    // An item for a timer, with its pause or resume and stop commands for the timer shown at its
    // place.
    QMenu *entryMenu();
    // Titles the timer's item and its pause or resume command.
    void showLine(QMenu *submenu, const StatusMenuLogic::EntryLine &line);

    Preferences &m_preferences;
    StatusMenuLogic &m_logic;
    TrayIcon &m_tray;
    QMenu *m_menu;
    QAction *m_startTimer;
    QList<QMenu *> m_entryMenus;
    QList<std::weak_ptr<Entry>> m_shownEntries;
    QList<std::weak_ptr<Project>> m_shownProjects;
    QHash<QRgb, QIcon> m_colourIcons;
    QIcon m_playImage;
    QIcon m_pauseImage;
};
