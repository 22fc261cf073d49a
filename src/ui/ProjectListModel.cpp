#include "ProjectListModel.h"

#include "model/ProjectCollection.h"
#include "model/StoredForms.h"
#include "platform/Preferences.h"

#include <QGuiApplication>
#include <QSet>

namespace {

// The same items, possibly in another order.
bool sameItems(const ItemList &a, const ItemList &b) {
    if (a.size() != b.size())
        return false;
    QSet<const ProjectItem *> set;
    set.reserve(a.size());
    for (const auto &item : a)
        set.insert(item.get());
    for (const auto &item : b) {
        if (!set.remove(item.get()))
            return false;
    }
    return true;
}

} // namespace

ProjectListModel::ProjectListModel(ProjectCollection &collection, Preferences &preferences,
                                   const CurrencyFormatter &currency, QObject *parent)
    : QAbstractItemModel(parent)
    , m_collection(collection)
    , m_preferences(preferences)
    , m_cells(collection, currency, QGuiApplication::palette())
    , m_drops(collection) {
    m_cells.readPreferences(preferences);
    for (const auto &project : collection.visibleProjects()) {
        m_nodes.push_back(makeNode(project));
        m_nodeOf.insert(project.get(), m_nodes.back().get());
    }
    renumber();
    rebuildRunning();
    connect(&collection, &ProjectCollection::projectsChanged, this, &ProjectListModel::reload);
    // Changes made in place (timers paused, check marks) only set the mark; a save clearing it
    // changes nothing shown.
    connect(&collection, &ProjectCollection::changedMarkChanged, this, [this](bool changed) {
        if (changed && !m_collection.isMarkingAnnouncedChange())
            reload();
    });
    connect(&preferences, &Preferences::valueChanged, this, &ProjectListModel::preferenceChanged);
}

ProjectListModel::~ProjectListModel() = default;

void ProjectListModel::setPalette(const QPalette &palette) {
    m_cells.setPalette(palette);
    emitAllChanged();
}

ProjectListModel::Node *ProjectListModel::nodeOf(const QModelIndex &index) const {
    if (!index.isValid() || index.model() != this)
        return nullptr;
    if (index.internalPointer())
        return static_cast<Node *>(index.internalPointer());
    return m_nodes[size_t(index.row())].get();
}

const ProjectListModel::Node *ProjectListModel::parentNode(const QModelIndex &index) const {
    return index.isValid() ? static_cast<const Node *>(index.internalPointer()) : nullptr;
}

QModelIndex ProjectListModel::index(int row, int column, const QModelIndex &parent) const {
    if (row < 0 || column < 0 || column >= ColumnCount)
        return {};
    if (!parent.isValid())
        return row < int(m_nodes.size()) ? createIndex(row, column, nullptr) : QModelIndex();
    if (parentNode(parent) || parent.column() != 0 || parent.row() >= int(m_nodes.size()))
        return {};
    Node *node = m_nodes[size_t(parent.row())].get();
    return row < node->items.size() ? createIndex(row, column, node) : QModelIndex();
}

QModelIndex ProjectListModel::parent(const QModelIndex &child) const {
    const Node *node = parentNode(child);
    return node ? createIndex(node->row, 0, nullptr) : QModelIndex();
}

int ProjectListModel::rowCount(const QModelIndex &parent) const {
    if (!parent.isValid())
        return int(m_nodes.size());
    if (parentNode(parent) || parent.column() != 0 || parent.row() >= int(m_nodes.size()))
        return 0;
    return int(m_nodes[size_t(parent.row())]->items.size());
}

int ProjectListModel::columnCount(const QModelIndex &) const {
    return ColumnCount;
}

std::shared_ptr<Project> ProjectListModel::projectAt(const QModelIndex &index) const {
    const Node *node = nodeOf(index);
    return node ? node->project : nullptr;
}

std::shared_ptr<ProjectItem> ProjectListModel::itemAt(const QModelIndex &index) const {
    const Node *node = parentNode(index);
    if (!node || index.model() != this)
        return nullptr;
    return node->items.value(index.row());
}

bool ProjectListModel::isProjectRow(const QModelIndex &index) const {
    return index.isValid() && index.model() == this && !parentNode(index);
}

QModelIndex ProjectListModel::indexOfProject(const Project &project, int column) const {
    const Node *node = m_nodeOf.value(&project);
    return node ? createIndex(node->row, column, nullptr) : QModelIndex();
}

QModelIndex ProjectListModel::indexOfItem(const ProjectItem &item, int column) const {
    Node *node = m_nodeOf.value(item.parent());
    if (!node)
        return {};
    if (!node->rowOfBuilt) {
        node->rowOf.clear();
        node->rowOf.reserve(node->items.size());
        for (int row = 0; row < node->items.size(); ++row)
            node->rowOf.insert(node->items[row].get(), row);
        node->rowOfBuilt = true;
    }
    const int row = node->rowOf.value(&item, -1);
    return row < 0 ? QModelIndex() : createIndex(row, column, node);
}

ItemList ProjectListModel::shownItems(const Project &project) const {
    if (m_collection.currentFilter() || !m_collection.searchText().isEmpty())
        return m_collection.filteredEntriesForProject(project);
    return project.entries();
}

std::unique_ptr<ProjectListModel::Node>
ProjectListModel::makeNode(const std::shared_ptr<Project> &project) const {
    auto node = std::make_unique<Node>();
    node->project = project;
    node->items = shownItems(*project);
    return node;
}

void ProjectListModel::renumber() {
    for (size_t row = 0; row < m_nodes.size(); ++row)
        m_nodes[row]->row = int(row);
}

void ProjectListModel::reload() {
    bool topLevelReordered = false;
    syncTopLevel(topLevelReordered);
    std::vector<Node *> reordered;
    for (const auto &node : m_nodes)
        syncChildren(*node, reordered);
    applyReorders(topLevelReordered, reordered);
    for (const auto &node : m_nodes) {
        node->totalDuration.reset();
        node->checkState.reset();
    }
    rebuildRunning();
    emitAllChanged();
}

void ProjectListModel::syncTopLevel(bool &reordered) {
    const ProjectList &now = m_collection.visibleProjects();
    const qsizetype oldSize = qsizetype(m_nodes.size());
    const qsizetype newSize = now.size();
    const qsizetype common = std::min(oldSize, newSize);
    qsizetype prefix = 0;
    while (prefix < common && m_nodes[size_t(prefix)]->project == now[prefix])
        ++prefix;
    if (prefix == oldSize && prefix == newSize)
        return;
    if (oldSize == newSize) {
        const bool sameSet = std::all_of(now.cbegin(), now.cend(), [this](const auto &project) {
            return m_nodeOf.contains(project.get());
        });
        if (sameSet) {
            reordered = true;
            return;
        }
    }
    qsizetype suffix = 0;
    while (suffix < common - prefix &&
           m_nodes[size_t(oldSize - 1 - suffix)]->project == now[newSize - 1 - suffix])
        ++suffix;
    const qsizetype oldLast = oldSize - suffix - 1;
    if (oldLast >= prefix) {
        beginRemoveRows({}, int(prefix), int(oldLast));
        for (qsizetype row = prefix; row <= oldLast; ++row)
            m_nodeOf.remove(m_nodes[size_t(row)]->project.get());
        m_nodes.erase(m_nodes.begin() + prefix, m_nodes.begin() + oldLast + 1);
        renumber();
        endRemoveRows();
    }
    const qsizetype newLast = newSize - suffix - 1;
    if (newLast >= prefix) {
        beginInsertRows({}, int(prefix), int(newLast));
        for (qsizetype row = prefix; row <= newLast; ++row) {
            auto node = makeNode(now[row]);
            m_nodeOf.insert(now[row].get(), node.get());
            m_nodes.insert(m_nodes.begin() + row, std::move(node));
        }
        renumber();
        endInsertRows();
    }
}

void ProjectListModel::syncChildren(Node &node, std::vector<Node *> &reordered) {
    const ItemList now = shownItems(*node.project);
    const ItemList &old = node.items;
    if (old.size() == now.size() &&
        (old.constData() == now.constData() || std::equal(old.cbegin(), old.cend(), now.cbegin())))
        return;
    if (sameItems(old, now)) {
        node.reordered = now;
        reordered.push_back(&node);
        return;
    }
    const qsizetype common = std::min(old.size(), now.size());
    qsizetype prefix = 0;
    while (prefix < common && old[prefix] == now[prefix])
        ++prefix;
    qsizetype suffix = 0;
    while (suffix < common - prefix && old[old.size() - 1 - suffix] == now[now.size() - 1 - suffix])
        ++suffix;
    const QModelIndex parent = createIndex(node.row, 0, nullptr);
    const qsizetype oldLast = old.size() - suffix - 1;
    if (oldLast >= prefix) {
        beginRemoveRows(parent, int(prefix), int(oldLast));
        node.items.remove(prefix, oldLast - prefix + 1);
        node.rowOfBuilt = false;
        endRemoveRows();
    }
    const qsizetype newLast = now.size() - suffix - 1;
    if (newLast >= prefix) {
        beginInsertRows(parent, int(prefix), int(newLast));
        node.items = now;
        node.rowOfBuilt = false;
        endInsertRows();
    }
}

void ProjectListModel::applyReorders(bool topLevelReordered, const std::vector<Node *> &reordered) {
    if (!topLevelReordered && reordered.empty())
        return;
    QList<QPersistentModelIndex> parents;
    if (!topLevelReordered) {
        for (const Node *node : reordered)
            parents.append(createIndex(node->row, 0, nullptr));
    }
    emit layoutAboutToBeChanged(parents, VerticalSortHint);

    QHash<const Node *, int> newRowOfNode;
    if (topLevelReordered) {
        const ProjectList &now = m_collection.visibleProjects();
        for (int row = 0; row < now.size(); ++row)
            newRowOfNode.insert(m_nodeOf.value(now[row].get()), row);
    }
    for (Node *node : reordered) {
        node->rowOf.clear();
        node->rowOf.reserve(node->reordered.size());
        for (int row = 0; row < node->reordered.size(); ++row)
            node->rowOf.insert(node->reordered[row].get(), row);
        node->rowOfBuilt = true;
    }

    const QModelIndexList from = persistentIndexList();
    QModelIndexList to;
    to.reserve(from.size());
    for (const QModelIndex &index : from) {
        Node *node = static_cast<Node *>(index.internalPointer());
        if (!node) {
            const Node *project = m_nodes[size_t(index.row())].get();
            const int row = topLevelReordered ? newRowOfNode.value(project) : index.row();
            to.append(createIndex(row, index.column(), nullptr));
        } else if (!node->reordered.isEmpty()) {
            const int row = node->rowOf.value(node->items[index.row()].get());
            to.append(createIndex(row, index.column(), node));
        } else {
            to.append(index);
        }
    }

    if (topLevelReordered) {
        std::vector<std::unique_ptr<Node>> nodes(m_nodes.size());
        for (auto &node : m_nodes) {
            const int row = newRowOfNode.value(node.get());
            nodes[size_t(row)] = std::move(node);
        }
        m_nodes = std::move(nodes);
        renumber();
    }
    for (Node *node : reordered) {
        node->items = node->reordered;
        node->reordered.clear();
    }
    changePersistentIndexList(from, to);
    emit layoutChanged(parents, VerticalSortHint);
}

void ProjectListModel::rebuildRunning() {
    m_running.clear();
    for (const auto &node : m_nodes) {
        for (int row = 0; row < node->items.size(); ++row) {
            const ProjectItem &item = *node->items[row];
            if (item.isEntry() && item.isWorking())
                m_running.push_back({node.get(), row});
        }
    }
}

void ProjectListModel::refreshRunning() {
    for (const RunningCell &cell : m_running) {
        const QModelIndex index =
            createIndex(cell.row, DurationColumn, const_cast<Node *>(cell.node));
        emit dataChanged(index, index, {Qt::DisplayRole});
    }
}

void ProjectListModel::emitAllChanged() {
    if (m_nodes.empty())
        return;
    emit dataChanged(index(0, 0), index(int(m_nodes.size()) - 1, ColumnCount - 1));
    for (const auto &node : m_nodes) {
        if (node->items.isEmpty())
            continue;
        emit dataChanged(createIndex(0, 0, node.get()),
                         createIndex(int(node->items.size()) - 1, ColumnCount - 1, node.get()));
    }
}

void ProjectListModel::preferenceChanged(const QString &key) {
    if (!ProjectListCells::isShownPreference(key))
        return;
    m_cells.readPreferences(m_preferences);
    emitAllChanged();
}

int ProjectListModel::totalDurationOf(const Node &node) const {
    if (!node.totalDuration)
        node.totalDuration = m_collection.filteredTotalDurationOfProject(*node.project);
    return *node.totalDuration;
}

Qt::CheckState ProjectListModel::checkStateOf(const Node &node) const {
    if (!node.checkState) {
        const auto checked = std::count_if(node.items.cbegin(), node.items.cend(),
                                           [](const auto &item) { return item->isChecked(); });
        node.checkState = checked == 0                   ? Qt::Unchecked
                          : checked == node.items.size() ? Qt::Checked
                                                         : Qt::PartiallyChecked;
    }
    return *node.checkState;
}

QVariant ProjectListModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid() || index.model() != this)
        return {};
    if (role == Qt::TextAlignmentRole)
        return ProjectListCells::alignment(index.column());
    if (const Node *node = parentNode(index))
        return m_cells.itemData(*node->items[index.row()], index.column(), role);
    const Node &node = *m_nodes[size_t(index.row())];
    if (role == Qt::DisplayRole && index.column() == DurationColumn)
        return StoredForms::durationText(totalDurationOf(node));
    if (role == Qt::CheckStateRole)
        return index.column() == StateColumn ? QVariant(int(checkStateOf(node))) : QVariant();
    return m_cells.projectData(*node.project, index.column(), role);
}

bool ProjectListModel::setData(const QModelIndex &index, const QVariant &value, int role) {
    if (role != Qt::CheckStateRole || index.column() != StateColumn || !nodeOf(index))
        return false;
    setChecked(index, value.toInt() != Qt::Unchecked);
    return true;
}

void ProjectListModel::setChecked(const QModelIndex &index, bool checked) {
    Node *node = nodeOf(index);
    const auto item = itemAt(index);
    if (item) {
        item->setChecked(checked);
    } else {
        // A project row marks the entries the current filter shows, or all of the project's
        // (the search text alone does not narrow it).
        const Project &project = *node->project;
        const ItemList entries = m_collection.currentFilter()
                                     ? m_collection.filteredEntriesForProject(project)
                                     : project.entries();
        for (const auto &entry : entries)
            entry->setChecked(checked);
    }
    node->checkState.reset();
    // A filter on the check mark may now show other rows; the list follows the new visible set.
    m_collection.updateVisibleProjects();
    m_collection.projectChanged(item ? item->parent() : node->project.get());
}

QVariant ProjectListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    return ProjectListCells::headerData(section, role);
}

Qt::ItemFlags ProjectListModel::flags(const QModelIndex &index) const {
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    Qt::ItemFlags flags =
        Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
    if (index.column() == StateColumn)
        flags |= Qt::ItemIsUserCheckable;
    if (parentNode(index))
        flags |= Qt::ItemNeverHasChildren;
    return flags;
}

void ProjectListModel::columnClicked(int column) {
    m_collection.columnClicked(columnIdentifier(column));
}

void ProjectListModel::setProjectExpanded(const QModelIndex &index, bool expanded) {
    if (!isProjectRow(index))
        return;
    Project &project = *m_nodes[size_t(index.row())]->project;
    if (project.expanded() == expanded)
        return;
    project.setExpanded(expanded);
    m_collection.projectChanged(&project);
}

QStringList ProjectListModel::mimeTypes() const {
    return ProjectListDrops::mimeTypes();
}

Qt::DropActions ProjectListModel::supportedDropActions() const {
    return Qt::CopyAction | Qt::MoveAction;
}

Qt::DropActions ProjectListModel::supportedDragActions() const {
    return Qt::CopyAction | Qt::MoveAction;
}

QMimeData *ProjectListModel::mimeData(const QModelIndexList &indexes) const {
    // Only the first dragged row counts.
    if (indexes.isEmpty() || !nodeOf(indexes.first()))
        return nullptr;
    return m_drops.dragData(itemAt(indexes.first()), projectAt(indexes.first()));
}

bool ProjectListModel::canDropMimeData(const QMimeData *data, Qt::DropAction, int row, int,
                                       const QModelIndex &parent) const {
    return data && ProjectListDrops::canDrop(*data, row < 0 && nodeOf(parent), isProjectRow(parent),
                                             !parent.isValid());
}

bool ProjectListModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row,
                                    int column, const QModelIndex &parent) {
    if (!canDropMimeData(data, action, row, column, parent))
        return false;
    const ProjectListDrops::Outcome outcome =
        m_drops.drop(*data, projectAt(parent), itemAt(parent), row, int(m_nodes.size()));
    if (outcome.project)
        emit dropFinished(outcome.item ? indexOfItem(*outcome.item)
                                       : indexOfProject(*outcome.project),
                          outcome.expand);
    return outcome.taken;
}
