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
    connect(m_startTimer->menu(), &QMenu::triggered, this, &StatusMenu::startTimer);
    connect(m_menu->addAction(tr("Show Mini Window")), &QAction::triggered, this,
            &StatusMenu::miniWindowWanted);
    connect(m_menu->addAction(tr("Preferences…")), &QAction::triggered, this,
            &StatusMenu::preferencesWanted);
    // The timers' items go between the two separators (an empty list shows one).
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
    const QList<StatusMenuLogic::EntryLine> lines = m_logic.entryLines();
    // Items are kept and retitled, so that an open submenu stays open while the durations move
    // on; a command of the menu may be what asked for the refresh, so items go once it is done.
    while (m_entryMenus.size() > lines.size()) {
        QMenu *submenu = m_entryMenus.takeLast();
        m_menu->removeAction(submenu->menuAction());
        submenu->deleteLater();
    }
    while (m_entryMenus.size() < lines.size()) {
        QMenu *submenu = entryMenu();
        m_menu->insertAction(m_menu->actions().value(firstEntryPosition + m_entryMenus.size()),
                             submenu->menuAction());
        m_entryMenus << submenu;
    }
    m_shownEntries.clear();
    for (qsizetype i = 0; i < lines.size(); ++i) {
        showLine(m_entryMenus.at(i), lines.at(i));
        m_shownEntries << lines.at(i).entry;
    }
    m_tray.setToolTip(m_logic.toolTip(lines));
}

void StatusMenu::fillProjects() {
    const QList<StatusMenuLogic::ProjectLine> lines = m_logic.projectLines();
    QMenu *projects = m_startTimer->menu();
    QList<QAction *> items = projects->actions();
    while (items.size() > lines.size()) {
        QAction *item = items.takeLast();
        projects->removeAction(item);
        item->deleteLater();
    }
    while (items.size() < lines.size())
        items << projects->addAction(QString());
    m_shownProjects.clear();
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const StatusMenuLogic::ProjectLine &line = lines.at(i);
        QAction *item = items.at(i);
        if (item->text() != line.project->name())
            item->setText(line.project->name());
        const QRgb key = colourKey(line.colour);
        if (item->icon().isNull() || item->data().toUInt() != key) {
            item->setIcon(colourIcon(line.colour));
            item->setData(key);
        }
        m_shownProjects << line.project;
    }
    m_startTimer->setEnabled(!lines.isEmpty());
}

void StatusMenu::startTimer(QAction *item) {
    const qsizetype index = m_startTimer->menu()->actions().indexOf(item);
    if (const auto project = m_shownProjects.value(index).lock()) {
        m_logic.startTimer(project);
        refreshStatusMenu();
    }
}

QMenu *StatusMenu::entryMenu() {
    auto *submenu = new QMenu(m_menu);
    const auto command = [this, submenu](void (StatusMenuLogic::*change)(Entry &)) {
        const qsizetype index = m_entryMenus.indexOf(submenu);
        if (const auto entry = m_shownEntries.value(index).lock()) {
            (m_logic.*change)(*entry);
            refreshStatusMenu();
        }
    };
    connect(submenu->addAction(QString()), &QAction::triggered, this,
            [command] { command(&StatusMenuLogic::pauseResume); });
    connect(submenu->addAction(tr("Stop")), &QAction::triggered, this,
            [command] { command(&StatusMenuLogic::stop); });
    return submenu;
}

void StatusMenu::showLine(QMenu *submenu, const StatusMenuLogic::EntryLine &line) {
    submenu->setTitle(line.title);
    const bool paused = line.entry->isPaused();
    // Only a change of state changes the picture (setting one redraws the menu item).
    if (submenu->property("paused").toInt() != int(paused) + 1) {
        submenu->setProperty("paused", int(paused) + 1);
        submenu->setIcon(paused ? m_pauseImage : m_playImage);
    }
    submenu->actions().constFirst()->setText(line.pauseTitle);
}

QRgb StatusMenu::colourKey(const QColor &colour) {
    return colour.isValid() ? colour.rgba() : 0;
}

QIcon StatusMenu::colourIcon(const QColor &colour) {
    const QRgb key = colourKey(colour);
    auto found = m_colourIcons.constFind(key);
    if (found == m_colourIcons.cend())
        found = m_colourIcons.insert(
            key, QIcon(QPixmap::fromImage(HelpFunctions::makeFilledRectImageWithColor(colour))));
    return *found;
}
