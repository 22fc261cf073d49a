#pragma once

#include "ProjectListCells.h"
#include "ProjectListDrops.h"
#include "model/Project.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QMimeData>
#include <memory>
#include <optional>
#include <vector>

class CurrencyFormatter;
class CustomerStorage;
class Preferences;
class ProjectCollection;

// The project list as a two-level item model over the document: the shown projects, and under
// each its items (those that pass the filter and search text while either is active). Five columns
// in the order Day, Description, Duration, Action, State.
//
// Cells are drawn as ProjectListCells says; the model adds a project row's total of its finished
// and shown timed entries and its check box: checked when every shown item is checked, partly
// checked when some are, unchecked otherwise (also without items). Drags and drops are taken as
// ProjectListDrops says.
//
// The model follows the document's projectsChanged() by comparing what it shows with what the
// document now shows: rows that came or went are inserted or removed, rows that only changed
// order are moved in one layout change (selection and expansion stay), everything else is
// reported as changed data. Rows of a project are found through a table built on first use, so
// no lookup walks the document.
class ProjectListModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Column {
        DayColumn,
        DescriptionColumn,
        DurationColumn,
        ActionColumn,
        StateColumn,
        ColumnCount
    };

    enum Role {
        // The names of the action button's three pictures (QStringList); empty without a button.
        ActionImagesRole = Qt::UserRole + 1,
        // The name of the picture in the Day column ("clip", "clip_blank"); none on project rows.
        ImageNameRole,
    };

    ProjectListModel(ProjectCollection &collection, Preferences &preferences,
                     const CurrencyFormatter &currency, QObject *parent = nullptr);
    ~ProjectListModel() override;

    // Address cards dropped on a project are added to this customer list first.
    void setCustomerStorage(CustomerStorage *storage) { m_drops.setCustomerStorage(storage); }
    // Text and tint colours derive from this palette.
    void setPalette(const QPalette &palette);

    ProjectCollection &collection() const { return m_collection; }
    Preferences &preferences() const { return m_preferences; }

    // "Day_Col", "Description_Col", "Duration_Col", "Action_Col", "State_Col"; empty outside.
    static QString columnIdentifier(int column) {
        return ProjectListCells::columnIdentifier(column);
    }
    // The column of an identifier; -1 for another text.
    static int columnForIdentifier(QStringView identifier) {
        return ProjectListCells::columnForIdentifier(identifier);
    }

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                         const QModelIndex &parent) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;
    Qt::DropActions supportedDropActions() const override;
    Qt::DropActions supportedDragActions() const override;

    // The project of a project row, or the project holding the item of an item row.
    std::shared_ptr<Project> projectAt(const QModelIndex &index) const;
    // The item of an item row; null for a project row.
    std::shared_ptr<ProjectItem> itemAt(const QModelIndex &index) const;
    bool isProjectRow(const QModelIndex &index) const;
    // The row of a shown project or item; invalid when it is not shown.
    QModelIndex indexOfProject(const Project &project, int column = 0) const;
    QModelIndex indexOfItem(const ProjectItem &item, int column = 0) const;

    // A click on a column heading: the document sorts by that column, flipping the direction.
    void columnClicked(int column);
    // The list expanded or collapsed a project row: the project keeps it, the document is changed.
    void setProjectExpanded(const QModelIndex &index, bool expanded);
    // The 5-second refresh: the duration cells of the running entries shown.
    void refreshRunning();
    // Brings the rows in line with the document and reports every cell as changed.
    void reload();

signals:
    // A drop was taken; the list selects the row (the target project, the moved project, or the
    // row that received files) and, with expand, expands the project it belongs to.
    void dropFinished(const QModelIndex &target, bool expand);

private:
    struct Node {
        std::shared_ptr<Project> project;
        ItemList items;
        // The new order of the same items while a reordering is being applied.
        ItemList reordered;
        int row = 0;
        mutable QHash<const ProjectItem *, int> rowOf;
        mutable bool rowOfBuilt = false;
        mutable std::optional<int> totalDuration;
        mutable std::optional<Qt::CheckState> checkState;
    };
    struct RunningCell {
        const Node *node;
        int row;
    };

    Node *nodeOf(const QModelIndex &index) const;
    const Node *parentNode(const QModelIndex &index) const;
    ItemList shownItems(const Project &project) const;
    std::unique_ptr<Node> makeNode(const std::shared_ptr<Project> &project) const;
    void syncTopLevel(bool &reordered);
    void syncChildren(Node &node, std::vector<Node *> &reordered);
    void applyReorders(bool topLevelReordered, const std::vector<Node *> &reordered);
    void renumber();
    void rebuildRunning();
    void emitAllChanged();
    void preferenceChanged(const QString &key);

    Qt::CheckState checkStateOf(const Node &node) const;
    int totalDurationOf(const Node &node) const;
    void setChecked(const QModelIndex &index, bool checked);

    ProjectCollection &m_collection;
    Preferences &m_preferences;
    ProjectListCells m_cells;
    ProjectListDrops m_drops;

    std::vector<std::unique_ptr<Node>> m_nodes;
    QHash<const Project *, Node *> m_nodeOf;
    std::vector<RunningCell> m_running;
};
