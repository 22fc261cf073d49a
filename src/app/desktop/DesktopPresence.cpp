#include "desktop/DesktopPresence.h"

#include "Logging.h"
#include "desktop/AwayWatcher.h"
#include "desktop/DBusNotifier.h"
#include "desktop/MiniWindow.h"
#include "desktop/QtTrayIcon.h"
#include "desktop/Reminders.h"
#include "desktop/RemoteControl.h"
#include "desktop/StatusMenu.h"
#include "desktop/UnityLauncherEntry.h"
#include "model/Entry.h"
#include "model/ProjectCollection.h"
#include "platform/Preferences.h"

#include <QApplication>
#include <QIcon>
#include <QWidget>

namespace {

// The program's icon as the badge is drawn into it.
QImage originalIcon() {
    const QImage icon = QApplication::windowIcon()
                            .pixmap(CountBadge::iconSize, CountBadge::iconSize)
                            .toImage()
                            .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (!icon.isNull())
        return icon;
    QImage empty(CountBadge::iconSize, CountBadge::iconSize, QImage::Format_ARGB32_Premultiplied);
    empty.fill(Qt::transparent);
    return empty;
}

template <typename Interface, typename Made>
Interface &given(Interface *service, std::unique_ptr<Interface> &own) {
    if (!service)
        own = std::make_unique<Made>();
    return service ? *service : *own;
}

} // namespace

DesktopPresence::DesktopPresence(const Services &services, QWidget *mainWindow)
    : QObject(mainWindow)
    , m_preferences(services.preferences)
    , m_collection(services.collection)
    , m_mainWindow(mainWindow)
    , m_tray(given<TrayIcon, QtTrayIcon>(services.tray, m_ownTray))
    , m_statusLogic(services.collection, services.customerColour)
    , m_statusMenu(std::make_unique<StatusMenu>(services.preferences, m_statusLogic, m_tray))
    , m_badge(originalIcon(),
              given<LauncherEntry, UnityLauncherEntry>(services.launcher, m_ownLauncher),
              [](const QImage &icon) { QApplication::setWindowIcon(QPixmap::fromImage(icon)); })
    , m_miniWindow(std::make_unique<MiniWindow>(services.collection))
    , m_presence(services.preferences, services.alerts)
    , m_reminders(std::make_unique<Reminders>(
          services.preferences, services.collection, services.alerts,
          given<Notifier, DBusNotifier>(services.notifier, m_ownNotifier)))
    , m_remote(std::make_unique<RemoteControl>())
    , m_away(std::make_unique<AwayWatcher>(services.preferences, services.collection,
                                           services.idleTime)) {
    connect(&m_collection, &ProjectCollection::projectsChanged, this,
            &DesktopPresence::timersChanged);
    // Changes made in place (a timer paused or resumed) only set the mark; a change the
    // collection has just announced, or a save clearing the mark, needs no second refresh.
    connect(&m_collection, &ProjectCollection::changedMarkChanged, this, [this](bool changed) {
        if (changed && !m_collection.isMarkingAnnouncedChange())
            timersChanged();
    });
    connect(&m_preferences, &Preferences::valueChanged, this, &DesktopPresence::preferenceChanged);
    connect(&m_tray, &TrayIcon::clicked, this, &DesktopPresence::trayClicked);
    connect(m_statusMenu.get(), &StatusMenu::mainWindowWanted, this,
            &DesktopPresence::chooseMainWindow);
    connect(m_statusMenu.get(), &StatusMenu::miniWindowWanted, this,
            &DesktopPresence::showMiniWindow);
    connect(m_statusMenu.get(), &StatusMenu::preferencesWanted, this,
            &DesktopPresence::preferencesWanted);
    connect(m_statusMenu.get(), &StatusMenu::quitWanted, this, &DesktopPresence::quitFromTray);
    connect(m_miniWindow.get(), &MiniWindow::visibilityChanged, this, [this](bool visible) {
        if (visible)
            m_mainWindow->hide();
    });
    connect(m_remote.get(), &RemoteControl::appleRemoteButton, this,
            &DesktopPresence::appleRemoteButton);
    connect(m_remote.get(), &RemoteControl::raiseRequested, this,
            &DesktopPresence::chooseMainWindow);
}

DesktopPresence::~DesktopPresence() = default;

void DesktopPresence::start() {
    m_statusMenu->activate();
    m_badge.update(m_collection.numWorkingEntries(), m_preferences.boolForKey(u"showDockBadge"));
    reopen();
    m_reminders->setupReminders();
    m_remote->setListening(m_preferences.boolForKey(u"useRemote"));
    m_away->updateIdleMinutes();
    updateRemoteTimer();
}

void DesktopPresence::refresh() {
    m_statusMenu->refreshStatusMenu();
    if (m_miniWindow->isHUDVisible())
        m_miniWindow->reloadData();
    updateRemoteTimer();
}

void DesktopPresence::timersChanged() {
    refresh();
    m_badge.update(m_collection.numWorkingEntries(), m_preferences.boolForKey(u"showDockBadge"));
}

void DesktopPresence::preferenceChanged(const QString &key) {
    if (key == u"showStatusMenuItem") {
        if (m_preferences.boolForKey(key))
            m_statusMenu->activate();
        else
            m_statusMenu->deactivate();
    } else if (key == u"showDockBadge") {
        m_badge.update(m_collection.numWorkingEntries(), m_preferences.boolForKey(key));
    } else if (Reminders::isReminderSetting(key)) {
        m_reminders->setupReminders();
    } else if (key == u"useRemote") {
        m_remote->setListening(m_preferences.boolForKey(key));
        updateRemoteTimer();
    } else if (key == u"idleMinutes") {
        m_away->updateIdleMinutes();
    }
}

void DesktopPresence::showMainWindow() {
    m_miniWindow->hideHUD();
    m_mainWindow->show();
    m_mainWindow->setWindowState(m_mainWindow->windowState() & ~Qt::WindowMinimized);
    m_mainWindow->raise();
    m_mainWindow->activateWindow();
}

void DesktopPresence::showMiniWindow() {
    m_preferences.setObject(true, u"showMiniWindow");
    m_miniWindow->showHUD();
}

void DesktopPresence::toggleMiniWindow() {
    if (m_presence.toggleMiniWindow(m_miniWindow->isHUDVisible()) == WindowPresence::Window::Mini)
        m_miniWindow->showHUD();
    else
        showMainWindow();
}

void DesktopPresence::reopen() {
    if (m_presence.windowToReopen() == WindowPresence::Window::Mini)
        m_miniWindow->showHUD();
    else
        showMainWindow();
}

void DesktopPresence::mainWindowClosed() {
    m_presence.mainWindowClosed(m_tray.isAvailable() && m_tray.isShown());
    m_mainWindow->hide();
}

void DesktopPresence::trayClicked() {
    if (isMainWindowShown())
        m_mainWindow->hide();
    else
        chooseMainWindow();
}

void DesktopPresence::chooseMainWindow() {
    m_presence.mainWindowChosen();
    showMainWindow();
}

void DesktopPresence::quitFromTray() {
    // The question about unsaved changes comes over the main window.
    if (m_collection.dataChanged())
        showMainWindow();
    emit quitWanted();
}

bool DesktopPresence::isMainWindowShown() const {
    return m_mainWindow->isVisible() && !m_mainWindow->isMinimized();
}

void DesktopPresence::appleRemoteButton(int button, bool pressedDown) {
    using Action = RemoteButtonLogic::Action;
    const Action action = isMainWindowShown()
                              ? RemoteButtonLogic::mainWindowAction(button, pressedDown)
                              : RemoteButtonLogic::miniWindowAction(button, pressedDown);
    switch (action) {
    case Action::None:
        return;
    case Action::Unmapped:
        qCWarning(lcDesktop, "Unmapped event for button %d", button);
        return;
    case Action::ShowMiniWindow:
        showMiniWindow();
        break;
    case Action::ShowMainWindow:
        chooseMainWindow();
        break;
    case Action::Up:
        m_miniWindow->up();
        break;
    case Action::Down:
        m_miniWindow->down();
        break;
    case Action::Play:
        m_miniWindow->play();
        break;
    default:
        emit remoteAction(action);
        break;
    }
    updateRemoteTimer();
}

void DesktopPresence::updateRemoteTimer() {
    if (!m_remote->isListening())
        return;
    std::shared_ptr<Entry> timer;
    if (isMainWindowShown()) {
        timer = m_selectedTimer ? m_selectedTimer() : nullptr;
    } else {
        if (!m_miniWindow->isHUDVisible())
            m_miniWindow->logic().reloadData();
        timer = m_miniWindow->logic().selectedEntry();
    }
    m_remote->showTimer(timer && timer->isWorking() ? timer.get() : nullptr);
}
