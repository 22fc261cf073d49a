#include "mainwindow/MainWindowDrawer.h"

#include "details/DetailsPane.h"
#include "platform/Preferences.h"

#include <QAction>
#include <QMainWindow>

using namespace Qt::StringLiterals;

MainWindowDrawer::MainWindowDrawer(Preferences &preferences, DetailsPane *pane, QAction *command,
                                   QMainWindow *window)
    : QObject(window)
    , m_preferences(preferences)
    , m_pane(pane)
    , m_window(window) {
    window->addDockWidget(Qt::RightDockWidgetArea, pane);
    pane->setVisible(preferences.boolForKey(u"DrawerState"));
    connect(command, &QAction::triggered, pane, [pane] { pane->setVisible(!pane->isVisible()); });
    connect(pane, &QDockWidget::visibilityChanged, this, [this, command](bool visible) {
        command->setChecked(visible);
        m_shown = m_shown || visible;
        if (visible)
            emit opened();
        // The pane's own close button counts as much as the command; a minimised window does not.
        if (m_window->isVisible() && !m_window->isMinimized())
            m_preferences.setObject(visible, u"DrawerState");
    });
}

void MainWindowDrawer::restoreSize() {
    m_window->resizeDocks({m_pane}, {int(m_preferences.floatForKey(u"drawerWidth"))},
                          Qt::Horizontal);
}

void MainWindowDrawer::storeSize() {
    if (!m_shown)
        return;
    m_preferences.setObject(float(m_pane->width()), u"drawerWidth");
    m_preferences.setObject(float(m_pane->height()), u"drawerHeight");
}
