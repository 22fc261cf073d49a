#include "mainwindow/MainWindowActions.h"

#include "ProjectListView.h"
#include "platform/Folders.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QUndoStack>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

// Fills the menu with the commands named; an empty name is a separator.
void fill(QMenu *menu, const MainWindowActions &actions,
          std::initializer_list<const char *> names) {
    for (const char *name : names) {
        if (*name)
            menu->addAction(actions.action(QString::fromLatin1(name)));
        else
            menu->addSeparator();
    }
}

} // namespace

MainWindowActions::MainWindowActions(QUndoStack *undo, QWidget *window)
    : QObject(window)
    , m_window(window) {
    add(u"newDatabase:"_s, tr("&New"), QKeySequence::New);
    add(u"load:"_s, tr("&Open…"), QKeySequence::Open);
    add(u"save:"_s, tr("&Save"), QKeySequence::Save);
    add(u"saveAs:"_s, tr("Save &As…"), QKeySequence::SaveAs);
    add(u"revert:"_s, tr("&Revert to Saved"), {});
    add(u"restoreFromBackup:"_s, tr("Restore from &Backup…"), {});
    add(u"showExportSheet:"_s, tr("E&xport…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_X));
    add(u"showImportSheet:"_s, tr("&Import…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I));
    add(u"print:"_s, tr("&Print…"), QKeySequence::Print);
    add(u"printPreview:"_s, tr("Print Pre&view…"), {});
    add(u"terminate:"_s, tr("&Quit"), QKeySequence::Quit);
    add(u"cut:"_s, tr("Cu&t"), QKeySequence::Cut);
    add(u"copy:"_s, tr("&Copy"), QKeySequence::Copy);
    add(u"paste:"_s, tr("&Paste"), QKeySequence::Paste);
    add(u"delete:"_s, tr("&Delete"), QKeySequence::Delete, u"Trash"_s);
    add(u"newProject:"_s, tr("New &Project…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N),
        u"NewProject"_s);
    add(u"newTimerEntry:"_s, tr("New &Entry…"), QKeySequence(Qt::CTRL | Qt::Key_E), u"NewEntry"_s);
    add(u"newFlatFeeEntry:"_s, tr("New &Flat Fee…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E),
        u"NewFlatFeeEntry"_s);
    add(u"edit:"_s, tr("&Edit…"), QKeySequence(Qt::CTRL | Qt::Key_I), u"Edit"_s);
    add(u"startTimerInProject:"_s, tr("&Start Timer"), QKeySequence(Qt::CTRL | Qt::Key_T),
        u"btn_clock"_s);
    add(u"pause:"_s, tr("&Pause"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P), u"pause"_s);
    add(u"resume:"_s, tr("&Resume"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R), u"play"_s);
    add(u"actionButtonClicked:"_s, tr("S&top"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T),
        u"Stop"_s);
    add(u"openAttachments:"_s, tr("&Attachments"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A),
        u"attachments"_s);
    add(u"openTagsEditor:"_s, tr("&Tags…"), {});
    add(u"toggleDrawer:"_s, tr("&Details"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_D),
        u"details"_s)
        ->setCheckable(true);
    QAction *customers =
        add(u"toggleDropBox:"_s, tr("&Customers"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C));
    customers->setCheckable(true);
    customers->setChecked(true);
    add(u"toggleMiniWindow:"_s, tr("&Mini Window"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_M),
        u"ico_mini_window"_s);
    add(u"toggleQuickFilters:"_s, tr("&Quick Filters"), {})->setCheckable(true);
    add(u"runToolbarCustomizationPalette:"_s, tr("Customize &Toolbar…"), {});
    QAction *preferences =
        add(u"showPreferences:"_s, tr("Pre&ferences…"), QKeySequence::Preferences);
    if (preferences->shortcut().isEmpty())
        preferences->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    add(u"orderFrontStandardAboutPanel:"_s, tr("&About Hourfold"), {});
    window->addAction(add(u"performFindPanelAction:"_s, tr("&Find"), QKeySequence::Find));
    add(u"showSearchResults:"_s, tr("Search &Results…"),
        QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F));

    QAction *undoAction = undo->createUndoAction(window, tr("&Undo"));
    undoAction->setShortcut(QKeySequence::Undo);
    undoAction->setObjectName(u"undo:"_s);
    m_actions.insert(u"undo:"_s, undoAction);
    QAction *redoAction = undo->createRedoAction(window, tr("&Redo"));
    redoAction->setShortcut(QKeySequence::Redo);
    redoAction->setObjectName(u"redo:"_s);
    m_actions.insert(u"redo:"_s, redoAction);
}

QAction *MainWindowActions::add(const QString &name, const QString &title, const QKeySequence &keys,
                                const QString &image) {
    auto *command = new QAction(title, m_window);
    command->setObjectName(name);
    if (!keys.isEmpty())
        command->setShortcut(keys);
    if (!image.isEmpty())
        command->setIcon(QIcon(Folders::imagePath(image)));
    m_actions.insert(name, command);
    return command;
}

void MainWindowActions::buildMenus(QMenuBar *bar, ProjectListView *list,
                                   const RecentFiles &recent) {
    QMenu *file = bar->addMenu(tr("&File"));
    fill(file, *this, {"newDatabase:", "load:"});
    QMenu *recentMenu = file->addMenu(tr("Open &Recent"));
    connect(recentMenu, &QMenu::aboutToShow, this, [recentMenu, recent] {
        recentMenu->clear();
        const QStringList files = recent.files();
        for (const QString &path : files) {
            connect(recentMenu->addAction(Folders::withTilde(path)), &QAction::triggered,
                    recentMenu, [open = recent.open, path] { open(path); });
        }
        recentMenu->addAction(tr("No Recent Files"))->setEnabled(false);
        recentMenu->actions().constLast()->setVisible(files.isEmpty());
    });
    fill(file, *this,
         {"", "save:", "saveAs:", "revert:", "restoreFromBackup:", "",
          "showImportSheet:", "showExportSheet:", "", "printPreview:", "print:", "", "terminate:"});
    QMenu *edit = bar->addMenu(tr("&Edit"));
    fill(edit, *this,
         {"undo:", "redo:", "", "cut:", "copy:", "paste:", "delete:", "",
          "performFindPanelAction:", "showSearchResults:", "", "showPreferences:"});
    QMenu *projects = bar->addMenu(tr("&Project"));
    fill(projects, *this,
         {"newProject:", "newTimerEntry:", "newFlatFeeEntry:", "", "edit:", "delete:"});
    QMenu *timer = bar->addMenu(tr("&Timer"));
    fill(timer, *this, {"startTimerInProject:", "pause:", "resume:", "actionButtonClicked:"});
    QMenu *view = bar->addMenu(tr("&View"));
    fill(view, *this,
         {"toggleDropBox:", "toggleDrawer:", "openAttachments:", "openTagsEditor:",
          "toggleQuickFilters:", "toggleMiniWindow:"});
    list->headerMenu()->setTitle(tr("&Columns"));
    view->addMenu(list->headerMenu());
    fill(view, *this, {"", "runToolbarCustomizationPalette:"});
    QMenu *help = bar->addMenu(tr("&Help"));
    fill(help, *this, {"orderFrontStandardAboutPanel:"});

    auto *entryMenu = new QMenu(m_window);
    fill(entryMenu, *this,
         {"edit:", "", "resume:", "pause:", "actionButtonClicked:", "",
          "cut:", "copy:", "paste:", "", "delete:"});
    auto *projectMenu = new QMenu(m_window);
    fill(projectMenu, *this,
         {"edit:", "newTimerEntry:", "newFlatFeeEntry:", "",
          "startTimerInProject:", "pause:", "resume:", "", "paste:", "", "delete:"});
    auto *defaultMenu = new QMenu(m_window);
    fill(defaultMenu, *this, {"newProject:", "paste:"});
    list->setEntryMenu(entryMenu);
    list->setProjectMenu(projectMenu);
    list->setDefaultMenu(defaultMenu);
    for (QMenu *menu : {file, edit, projects, timer, view, entryMenu, projectMenu, defaultMenu})
        connect(menu, &QMenu::aboutToShow, this, &MainWindowActions::menuAboutToShow);
}

void MainWindowActions::updateStates(const CommandValidation::Selection &selection,
                                     const CommandValidation::DocumentState &document,
                                     const ProjectListView &list) {
    for (auto it = m_actions.cbegin(); it != m_actions.cend(); ++it) {
        // The undo stack enables these two itself.
        if (it.key() == u"undo:" || it.key() == u"redo:")
            continue;
        it.value()->setEnabled(CommandValidation::validateMenuItem(it.key(), selection, document));
    }
    m_actions.value(u"cut:"_s)->setEnabled(list.canCut());
    m_actions.value(u"copy:"_s)->setEnabled(list.canCopy());
    m_actions.value(u"paste:"_s)->setEnabled(list.canPaste());
}
