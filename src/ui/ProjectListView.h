#pragma once

#include "model/Project.h"

#include <QTreeView>

class ProjectListDelegate;
class ProjectListModel;
class UserAlerts;

// The main window's project list: one row per shown project with its items beneath. Adds cut,
// copy and paste of entries and flat fees, the context menus, grid lines and alternating rows
// from the preferences, the optional columns (the heading's context menu switches them), sorting
// by a click on a heading, and dragging entries between projects and projects between each other.
class ProjectListView : public QTreeView {
    Q_OBJECT

public:
    explicit ProjectListView(UserAlerts &alerts, QWidget *parent = nullptr);

    void setProjectListModel(ProjectListModel *model);
    ProjectListModel *projectListModel() const { return m_model; }
    ProjectListDelegate *listDelegate() const { return m_delegate; }

    // Column 0 of the selected row; invalid without a selection.
    QModelIndex selectedIndex() const;
    bool hasSelection() const { return selectedIndex().isValid(); }
    // The selected project row's project, or the project holding the selected item.
    std::shared_ptr<Project> selectedProject() const;
    // The selected item; null when a project row or nothing is selected.
    std::shared_ptr<ProjectItem> selectedItem() const;
    void selectRow(const QModelIndex &index);

    // An entry or flat fee goes on the clipboard with its description as text; on any other row
    // the program beeps and the clipboard stays as it was.
    void copy();
    // Copies, then deletes the selected item ("Cut Entry") or project ("Delete Project"); the row
    // at the same place is selected afterwards.
    void cut();
    // Adds the entry or flat fee on the clipboard to the selected project, or to the project of
    // the selected item ("Paste Entry"); the row stays selected.
    void paste();
    bool canCopy() const { return selectedItem() != nullptr; }
    bool canCut() const { return canCopy(); }
    bool canPaste() const;

    void setProjectMenu(QMenu *menu) { m_projectMenu = menu; }
    void setEntryMenu(QMenu *menu) { m_entryMenu = menu; }
    void setDefaultMenu(QMenu *menu) { m_defaultMenu = menu; }
    // The menu for a click at the point of the viewport: outside all rows the selection is
    // cleared and the default menu chosen; on a row the row is selected and the project or entry
    // menu chosen.
    QMenu *menuForEvent(const QPoint &point);
    // The heading's context menu: one switch per optional column.
    QMenu *headerMenu() const { return m_headerMenu; }

    // Hides the optional columns whose preference is off; one switched on again comes back as
    // the last column.
    void updateVisibleColumns();
    // The heading shows the document's sort column and direction.
    void updateSortIndicator();
    // Expands the projects that are marked expanded.
    void restoreExpansion();

signals:
    void actionSegmentClicked(const QModelIndex &index, int segment);
    // A double click on a row, outside its check box and action button; column 0 of the row.
    void itemDoubleClicked(const QModelIndex &index);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                 const QModelIndex &index) const override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void preferenceChanged(const QString &key);
    void headerClicked(int section);
    void expandInserted(const QModelIndex &parent, int first, int last);
    void dropFinished(const QModelIndex &target, bool expandProject);
    void offerCopyForForeignData(QDropEvent *event) const;

    UserAlerts &m_alerts;
    ProjectListModel *m_model = nullptr;
    ProjectListDelegate *m_delegate;
    QMenu *m_projectMenu = nullptr;
    QMenu *m_entryMenu = nullptr;
    QMenu *m_defaultMenu = nullptr;
    QMenu *m_headerMenu;
    bool m_gridLines = true;
};
