#pragma once

#include "mainwindow/CommandValidation.h"

#include <QHash>
#include <QObject>
#include <functional>

class ProjectListView;
class QAction;
class QMenuBar;
class QUndoStack;
class QWidget;

// The main window's commands under their action names ("save:", "delete:", ...) with their
// titles, shortcuts and pictures, the menus of the menu bar and of the list that show them, and
// their enabling. The window connects each command to what it does.
class MainWindowActions : public QObject {
    Q_OBJECT

public:
    // The commands belong to the window, so that their shortcuts work wherever the focus is in it.
    MainWindowActions(QUndoStack *undo, QWidget *window);

    // nullptr when there is no command of that name.
    QAction *action(const QString &name) const { return m_actions.value(name); }

    // The files of the Open Recent menu, newest first, and what choosing one does.
    struct RecentFiles {
        std::function<QStringList()> files;
        std::function<void(const QString &)> open;
    };
    // Fills the menu bar and gives the list its context menus and the Columns menu a place.
    void buildMenus(QMenuBar *bar, ProjectListView *list, const RecentFiles &recent);

    // Enables each command by the selection and the document; cut, copy and paste by what the
    // list can do.
    void updateStates(const CommandValidation::Selection &selection,
                      const CommandValidation::DocumentState &document,
                      const ProjectListView &list);

signals:
    // A menu is about to open: its commands want their states now.
    void menuAboutToShow();

private:
    QAction *add(const QString &name, const QString &title, const QKeySequence &keys,
                 const QString &image = {});

    QWidget *m_window;
    QHash<QString, QAction *> m_actions;
};
