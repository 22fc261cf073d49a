#include "mainwindow/MainWindowToolbar.h"

#include "mainwindow/MainWindowActions.h"
#include "mainwindow/ToolbarCustomizeDialog.h"
#include "mainwindow/ToolbarItems.h"
#include "platform/Preferences.h"

#include <QAction>
#include <QMainWindow>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace {

const QString toolbarKey = u"TB Item Identifiers"_s;

} // namespace

MainWindowToolbar::MainWindowToolbar(Preferences &preferences, const MainWindowActions &actions,
                                     QWidget *filterPopUp, QWidget *searchField,
                                     QMainWindow *window)
    : QObject(window)
    , m_preferences(preferences)
    , m_actions(actions)
    , m_filterPopUp(filterPopUp)
    , m_searchField(searchField)
    , m_window(window)
    , m_toolbar(new QToolBar(tr("Toolbar"), window)) {
    m_toolbar->setObjectName(u"mainToolbar"_s);
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    m_toolbar->setIconSize(QSize(24, 24));
    m_toolbar->setMovable(false);
    m_toolbar->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_toolbar->addAction(m_actions.action(u"runToolbarCustomizationPalette:"_s));
    window->addToolBar(Qt::TopToolBarArea, m_toolbar);
}

QStringList MainWindowToolbar::availableItems() {
    return {u"AddProject"_s, u"AddEntry"_s,   u"AddFlatFeeEntry"_s, u"Delete"_s, u"Edit"_s,
            u"Details"_s,    u"Pause"_s,      u"Resume"_s,          u"Stop"_s,   u"Filters"_s,
            u"Search"_s,     u"MiniWindow"_s, u"Attachments"_s};
}

void MainWindowToolbar::setup() {
    const QVariant stored = m_preferences.objectForKey(toolbarKey);
    const QStringList saved =
        stored.isValid() ? stored.toStringList() : ToolbarItems::defaultItemIdentifiers();
    const QStringList migrated =
        ToolbarItems::migrate(saved, m_preferences.stringForKey(u"lastVersion"));
    if (migrated != saved || !stored.isValid())
        m_preferences.setObject(migrated, toolbarKey);
    setItems(ToolbarItems::validated(migrated));
}

void MainWindowToolbar::setItems(const QStringList &identifiers) {
    // The saved arrangement keeps items this window has no command for; only the shown ones
    // change.
    QAction *customizeCommand = m_actions.action(u"runToolbarCustomizationPalette:"_s);
    m_items.clear();
    for (QAction *action : m_toolbar->actions()) {
        if (action != customizeCommand)
            m_toolbar->removeAction(action);
    }
    const QStringList available = availableItems();
    bool lastWasSeparator = true;
    for (const QString &identifier : identifiers) {
        if (identifier == ToolbarItems::separator) {
            if (!lastWasSeparator)
                m_toolbar->addSeparator();
            lastWasSeparator = true;
            m_items << identifier;
            continue;
        }
        if (identifier == ToolbarItems::space || identifier == ToolbarItems::flexibleSpace) {
            auto *spacer = new QWidget(m_toolbar);
            if (identifier == ToolbarItems::space)
                spacer->setFixedWidth(24);
            else
                spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
            m_toolbar->addWidget(spacer);
            m_items << identifier;
            lastWasSeparator = false;
            continue;
        }
        if (!available.contains(identifier))
            continue;
        const ToolbarItems::Item *item = ToolbarItems::item(identifier);
        if (identifier == u"Filters") {
            m_toolbar->addWidget(m_filterPopUp)->setText(item->label);
        } else if (identifier == u"Search") {
            m_toolbar->addWidget(m_searchField)->setText(item->label);
        } else {
            QAction *command = m_actions.action(item->action);
            command->setIconText(item->label);
            m_toolbar->addAction(command);
        }
        m_items << identifier;
        lastWasSeparator = false;
    }
    // The customise command stays reachable from the toolbar's own context menu only.
    customizeCommand->setVisible(false);
}

void MainWindowToolbar::customize() {
    const QStringList saved = m_preferences.objectForKey(toolbarKey).toStringList();
    ToolbarCustomizeDialog dialog(availableItems(), m_items, m_window);
    if (dialog.exec() != QDialog::Accepted)
        return;
    QStringList result = dialog.items();
    // Items saved by a version that shows them, but not shown here, keep their place.
    const QStringList available = availableItems();
    for (qsizetype i = 0; i < saved.size(); ++i) {
        const QString &identifier = saved[i];
        if (ToolbarItems::item(identifier) && !available.contains(identifier) &&
            !result.contains(identifier))
            result.insert(qMin(i, result.size()), identifier);
    }
    m_preferences.setObject(result, toolbarKey);
    setItems(result);
}
