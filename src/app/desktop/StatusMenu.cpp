#include "desktop/StatusMenu.h"

#include "desktop/TrayIcon.h"
#include "model/Entry.h"
#include "model/HelpFunctions.h"
#include "model/Project.h"
#include "platform/Folders.h"
#include "platform/Preferences.h"

#include <QMenu>
#include <QPixmap>

using namespace Qt::StringLiterals;

StatusMenu::StatusMenu(Preferences &preferences, StatusMenuLogic &logic, TrayIcon &tray,
                       QObject *parent)
    : QObject(parent)
    , m_preferences(preferences)
    , m_logic(logic)
    , m_tray(tray)
    , m_menu(new QMenu)
    , m_playImage(Folders::imagePath(u"btn_play"_s))
    , m_pauseImage(Folders::imagePath(u"btn_pause"_s)) {
    m_menu->setObjectName(u"statusMenu"_s);
    connect(m_menu->addAction(tr("Show Hourfold")), &QAction::triggered, this,
            &StatusMenu::mainWindowWanted);
    m_startTimer = m_menu->addMenu(new QMenu(tr("Start Timer"), m_menu));
    m_startTimer->setData(99);
    connect(m_menu->addAction(tr("Show Mini Window")), &QAction::triggered, this,
            &StatusMenu::miniWindowWanted);
    connect(m_menu->addAction(tr("Preferences…")), &QAction::triggered, this,
            &StatusMenu::preferencesWanted);
    m_menu->addSeparator();
    m_menu->addSeparator();
    connect(m_menu->addAction(tr("Quit")), &QAction::triggered, this, &StatusMenu::quitWanted);
}

StatusMenu::~StatusMenu() {
    delete m_menu;
}

void StatusMenu::activate() {
    if (!m_preferences.boolForKey(u"showStatusMenuItem"))
        return;
    m_tray.show(m_menu);
    refreshStatusMenu();
}

void StatusMenu::deactivate() {
    m_tray.hide();
}

void StatusMenu::refreshStatusMenu() {
    if (!m_preferences.boolForKey(u"showStatusMenuItem"))
        return;
    fillProjects();
    // A command of the menu may be what asked for the refresh: the old items go once it is done.
    for (QMenu *submenu : std::as_const(m_entryMenus)) {
        m_menu->removeAction(submenu->menuAction());
        submenu->deleteLater();
    }
    m_entryMenus.clear();
    const QList<StatusMenuLogic::EntryLine> lines = m_logic.entryLines();
    QAction *before = m_menu->actions().value(firstEntryPosition);
    for (const StatusMenuLogic::EntryLine &line : lines) {
        QMenu *submenu = entryMenu(line);
        m_menu->insertAction(before, submenu->menuAction());
        m_entryMenus << submenu;
    }
    m_tray.setToolTip(m_logic.toolTip(lines));
}

void StatusMenu::fillProjects() {
    QMenu *projects = m_startTimer->menu();
    for (QAction *item : projects->actions()) {
        projects->removeAction(item);
        item->deleteLater();
    }
    for (const StatusMenuLogic::ProjectLine &line : m_logic.projectLines()) {
        QAction *item = projects->addAction(colourIcon(line.colour), line.project->name());
        connect(item, &QAction::triggered, this, [this, project = std::weak_ptr(line.project)] {
            if (const auto started = project.lock()) {
                m_logic.startTimer(started);
                refreshStatusMenu();
            }
        });
    }
    m_startTimer->setEnabled(!projects->isEmpty());
}

QMenu *StatusMenu::entryMenu(const StatusMenuLogic::EntryLine &line) {
    auto *submenu = new QMenu(line.title, m_menu);
    submenu->setIcon(line.entry->isPaused() ? m_pauseImage : m_playImage);
    const std::weak_ptr<Entry> entry = line.entry;
    connect(submenu->addAction(line.pauseTitle), &QAction::triggered, this, [this, entry] {
        if (const auto held = entry.lock()) {
            m_logic.pauseResume(*held);
            refreshStatusMenu();
        }
    });
    connect(submenu->addAction(tr("Stop")), &QAction::triggered, this, [this, entry] {
        if (const auto held = entry.lock()) {
            m_logic.stop(*held);
            refreshStatusMenu();
        }
    });
    submenu->menuAction()->setData(1);
    return submenu;
}

QIcon StatusMenu::colourIcon(const QColor &colour) {
    const QRgb key = colour.isValid() ? colour.rgba() : 0;
    auto found = m_colourIcons.constFind(key);
    if (found == m_colourIcons.cend())
        found = m_colourIcons.insert(
            key, QIcon(QPixmap::fromImage(HelpFunctions::makeFilledRectImageWithColor(colour))));
    return *found;
}
