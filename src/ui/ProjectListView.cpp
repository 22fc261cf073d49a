#include "ProjectListView.h"

#include "ProjectListDelegate.h"
#include "ProjectListModel.h"
#include "ProjectListPasteboard.h"
#include "model/ProjectCollection.h"
#include "platform/Preferences.h"
#include "platform/UserAlerts.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>
#include <QMimeData>
#include <QPainter>

namespace {

struct OptionalColumn {
    int column;
    const char16_t *preference;
    const char *title;
};

// In the order in which they are updated.
constexpr OptionalColumn optionalColumns[] = {
    {ProjectListModel::DescriptionColumn, u"showDescriptionColumn",
     QT_TRANSLATE_NOOP("ProjectListView", "Description")},
    {ProjectListModel::StateColumn, u"showStateColumn",
     QT_TRANSLATE_NOOP("ProjectListView", "State")},
    {ProjectListModel::ActionColumn, u"showActionColumn",
     QT_TRANSLATE_NOOP("ProjectListView", "Action")},
    {ProjectListModel::DurationColumn, u"showDurationColumn",
     QT_TRANSLATE_NOOP("ProjectListView", "Duration")},
};

constexpr float gridShare = 0.18f;

QColor gridColor(const QPalette &palette) {
    const QColor base = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    const auto mix = [](float from, float to) { return from + (to - from) * gridShare; };
    return QColor::fromRgbF(mix(base.redF(), text.redF()), mix(base.greenF(), text.greenF()),
                            mix(base.blueF(), text.blueF()));
}

bool isInternalDrag(const QMimeData &data) {
    return data.hasFormat(ProjectListPasteboard::dragEntriesType()) ||
           data.hasFormat(ProjectListPasteboard::dragFlatFeeEntriesType()) ||
           data.hasFormat(ProjectListPasteboard::dragProjectsType());
}

} // namespace

ProjectListView::ProjectListView(UserAlerts &alerts, QWidget *parent)
    : QTreeView(parent)
    , m_alerts(alerts)
    , m_delegate(new ProjectListDelegate(this))
    , m_headerMenu(new QMenu(this)) {
    setItemDelegate(m_delegate);
    setUniformRowHeights(true);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setAllColumnsShowFocus(true);
    setExpandsOnDoubleClick(false);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(true);
    setDragDropMode(DragDrop);
    setDefaultDropAction(Qt::MoveAction);
    header()->setSectionsClickable(true);
    header()->setSortIndicatorShown(true);
    header()->setSectionsMovable(true);
    header()->setStretchLastSection(false);
    header()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header(), &QHeaderView::sectionClicked, this, &ProjectListView::headerClicked);
    connect(header(), &QHeaderView::customContextMenuRequested, this,
            [this](const QPoint &point) { m_headerMenu->popup(header()->mapToGlobal(point)); });
    for (const OptionalColumn &optional : optionalColumns) {
        QAction *action = m_headerMenu->addAction(tr(optional.title));
        action->setCheckable(true);
        action->setData(optional.column);
        connect(action, &QAction::toggled, this, [this, optional](bool checked) {
            if (m_model)
                m_model->preferences().setObject(checked, optional.preference);
        });
    }
    connect(m_delegate, &ProjectListDelegate::actionSegmentClicked, this,
            &ProjectListView::actionSegmentClicked);
}

void ProjectListView::setProjectListModel(ProjectListModel *model) {
    if (m_model) {
        disconnect(m_model, nullptr, this, nullptr);
        disconnect(this, nullptr, m_model, nullptr);
        disconnect(&m_model->preferences(), nullptr, this, nullptr);
    }
    m_model = model;
    setModel(model);
    if (!model)
        return;
    model->setPalette(palette());
    connect(model, &QAbstractItemModel::rowsInserted, this, &ProjectListView::expandInserted);
    connect(model, &QAbstractItemModel::modelReset, this, &ProjectListView::restoreExpansion);
    connect(model, &ProjectListModel::dropFinished, this, &ProjectListView::dropFinished);
    connect(this, &QTreeView::expanded, model,
            [model](const QModelIndex &index) { model->setProjectExpanded(index, true); });
    connect(this, &QTreeView::collapsed, model,
            [model](const QModelIndex &index) { model->setProjectExpanded(index, false); });
    connect(&model->preferences(), &Preferences::valueChanged, this,
            &ProjectListView::preferenceChanged);

    header()->setSectionResizeMode(ProjectListModel::DescriptionColumn, QHeaderView::Stretch);
    setColumnWidth(ProjectListModel::DayColumn, 220);
    setColumnWidth(ProjectListModel::DurationColumn, 90);
    setColumnWidth(ProjectListModel::ActionColumn, 84);
    setColumnWidth(ProjectListModel::StateColumn, 50);

    const Preferences &preferences = model->preferences();
    m_gridLines = preferences.boolForKey(u"useGridLines");
    setAlternatingRowColors(preferences.boolForKey(u"useAlternateBackground"));
    updateVisibleColumns();
    updateSortIndicator();
    restoreExpansion();
}

QModelIndex ProjectListView::selectedIndex() const {
    if (!selectionModel())
        return {};
    const QModelIndexList indexes = selectionModel()->selectedIndexes();
    return indexes.isEmpty() ? QModelIndex() : indexes.first().siblingAtColumn(0);
}

std::shared_ptr<Project> ProjectListView::selectedProject() const {
    return m_model ? m_model->projectAt(selectedIndex()) : nullptr;
}

std::shared_ptr<ProjectItem> ProjectListView::selectedItem() const {
    return m_model ? m_model->itemAt(selectedIndex()) : nullptr;
}

void ProjectListView::selectRow(const QModelIndex &index) {
    if (!selectionModel())
        return;
    if (!index.isValid()) {
        selectionModel()->clear();
        return;
    }
    selectionModel()->setCurrentIndex(
        index.siblingAtColumn(0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

void ProjectListView::copy() {
    const auto item = selectedItem();
    if (!item) {
        m_alerts.beep();
        return;
    }
    QGuiApplication::clipboard()->setMimeData(ProjectListPasteboard::copyData(*item));
}

void ProjectListView::cut() {
    const QModelIndex selected = selectedIndex();
    copy();
    if (!selected.isValid())
        return;
    const QPersistentModelIndex above = indexAbove(selected);
    ProjectCollection &collection = m_model->collection();
    if (const auto item = selectedItem())
        collection.deleteEntry(item, m_model->projectAt(selected), tr("Cut Entry"));
    else
        collection.deleteProject(m_model->projectAt(selected));
    // The same row number again: the row that now follows the one above.
    QModelIndex next = above.isValid() ? indexBelow(above) : m_model->index(0, 0);
    if (!next.isValid())
        next = above;
    selectRow(next);
}

bool ProjectListView::canPaste() const {
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    return hasSelection() && data && ProjectListPasteboard::hasCopiedItem(*data);
}

void ProjectListView::paste() {
    const auto project = selectedProject();
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    if (!project || !data)
        return;
    const auto item = ProjectListPasteboard::itemFromCopy(*data);
    if (!item)
        return;
    const QPersistentModelIndex selected = selectedIndex();
    m_model->collection().addEntry(item, project, tr("Paste Entry"));
    selectRow(selected);
}

QMenu *ProjectListView::menuForEvent(const QPoint &point) {
    const QModelIndex index = indexAt(point);
    if (!index.isValid()) {
        selectRow({});
        return m_defaultMenu;
    }
    selectRow(index);
    return m_model->isProjectRow(index) ? m_projectMenu : m_entryMenu;
}

void ProjectListView::contextMenuEvent(QContextMenuEvent *event) {
    if (!m_model)
        return;
    if (QMenu *menu = menuForEvent(event->pos()))
        menu->popup(event->globalPos());
}

void ProjectListView::mouseDoubleClickEvent(QMouseEvent *event) {
    const QPoint point = event->position().toPoint();
    const QModelIndex index = indexAt(point);
    // The action column never opens the editor, on its buttons or beside them.
    if (index.isValid() && event->button() == Qt::LeftButton &&
        index.column() != ProjectListModel::ActionColumn) {
        QStyleOptionViewItem option;
        initViewItemOption(&option);
        option.rect = visualRect(index);
        if (!ProjectListDelegate::isOnControl(option, index, point))
            emit itemDoubleClicked(index.siblingAtColumn(0));
    }
    QTreeView::mouseDoubleClickEvent(event);
}

void ProjectListView::drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const {
    // A tinted row is tinted across its whole width, the branch area included.
    const QRect row(0, option.rect.y(), viewport()->width(), option.rect.height());
    const QVariant tint = index.siblingAtColumn(0).data(Qt::BackgroundRole);
    if (tint.isValid())
        painter->fillRect(row, tint.value<QColor>());
    QTreeView::drawRow(painter, option, index);
    if (!m_gridLines)
        return;
    painter->save();
    painter->setPen(gridColor(palette()));
    painter->drawLine(0, row.bottom(), viewport()->width(), row.bottom());
    for (int visual = 0; visual < header()->count(); ++visual) {
        const int logical = header()->logicalIndex(visual);
        if (header()->isSectionHidden(logical))
            continue;
        const int x =
            header()->sectionViewportPosition(logical) + header()->sectionSize(logical) - 1;
        painter->drawLine(x, row.top(), x, row.bottom());
    }
    painter->restore();
}

void ProjectListView::offerCopyForForeignData(QDropEvent *event) const {
    // Only the list's own rows move; files, cards and customers dragged from elsewhere are copied,
    // so their source never deletes them.
    const bool internal = event->source() == this && isInternalDrag(*event->mimeData());
    if (!internal && (event->possibleActions() & Qt::CopyAction))
        event->setDropAction(Qt::CopyAction);
}

void ProjectListView::dragMoveEvent(QDragMoveEvent *event) {
    offerCopyForForeignData(event);
    QTreeView::dragMoveEvent(event);
}

void ProjectListView::dropEvent(QDropEvent *event) {
    offerCopyForForeignData(event);
    QTreeView::dropEvent(event);
}

void ProjectListView::changeEvent(QEvent *event) {
    QTreeView::changeEvent(event);
    if (m_model && event->type() == QEvent::PaletteChange)
        m_model->setPalette(palette());
}

void ProjectListView::preferenceChanged(const QString &key) {
    if (key == u"useGridLines") {
        m_gridLines = m_model->preferences().boolForKey(key);
        viewport()->update();
    } else if (key == u"useAlternateBackground") {
        setAlternatingRowColors(m_model->preferences().boolForKey(key));
    } else if (key.startsWith(u"show") && key.endsWith(u"Column")) {
        updateVisibleColumns();
    }
}

void ProjectListView::updateVisibleColumns() {
    if (!m_model)
        return;
    const QList<QAction *> actions = m_headerMenu->actions();
    for (qsizetype i = 0; i < actions.size(); ++i) {
        const OptionalColumn &optional = optionalColumns[i];
        const bool show = m_model->preferences().boolForKey(optional.preference);
        if (!show) {
            setColumnHidden(optional.column, true);
        } else if (isColumnHidden(optional.column)) {
            setColumnHidden(optional.column, false);
            header()->moveSection(header()->visualIndex(optional.column), header()->count() - 1);
        }
        const QSignalBlocker blocker(actions[i]);
        actions[i]->setChecked(show);
    }
}

void ProjectListView::headerClicked(int section) {
    if (!m_model)
        return;
    m_model->columnClicked(section);
    updateSortIndicator();
}

void ProjectListView::updateSortIndicator() {
    if (!m_model)
        return;
    const ProjectCollection &collection = m_model->collection();
    const int column = ProjectListModel::columnForIdentifier(collection.sortingColumn());
    header()->setSortIndicator(column,
                               collection.ascending() ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void ProjectListView::restoreExpansion() {
    if (!m_model)
        return;
    const ProjectList expanded = m_model->collection().projectsToExpand();
    for (const auto &project : expanded) {
        const QModelIndex index = m_model->indexOfProject(*project);
        if (index.isValid())
            expand(index);
    }
}

void ProjectListView::expandInserted(const QModelIndex &parent, int first, int last) {
    if (parent.isValid()) {
        const auto project = m_model->projectAt(parent);
        if (project && project->expanded() && !isExpanded(parent))
            expand(parent);
        return;
    }
    for (int row = first; row <= last; ++row) {
        const QModelIndex index = m_model->index(row, 0);
        if (m_model->projectAt(index)->expanded())
            expand(index);
    }
}

void ProjectListView::dropFinished(const QModelIndex &target, bool expandProject) {
    if (!target.isValid())
        return;
    if (expandProject)
        expand(m_model->isProjectRow(target) ? target : target.parent());
    selectRow(target);
}
