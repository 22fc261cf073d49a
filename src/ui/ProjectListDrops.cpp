#include "ProjectListDrops.h"

#include "ProjectListPasteboard.h"
#include "model/ProjectCollection.h"
#include "platform/DroppedFiles.h"
#include "stores/CustomerStorage.h"
#include "stores/VCardReader.h"

#include <QMimeData>

namespace {

bool hasAnyFormat(const QMimeData &data, const QStringList &types) {
    for (const QString &type : types) {
        if (data.hasFormat(type))
            return true;
    }
    return false;
}

} // namespace

ProjectListDrops::ProjectListDrops(ProjectCollection &collection)
    : m_collection(collection) {}

QStringList ProjectListDrops::mimeTypes() {
    return QStringList{ProjectListPasteboard::dragEntriesType(),
                       ProjectListPasteboard::dragFlatFeeEntriesType(),
                       ProjectListPasteboard::dragProjectsType(),
                       ProjectListPasteboard::dragCustomerType(), QStringLiteral("text/uri-list")} +
           ProjectListPasteboard::vCardTypes();
}

const ProjectList &ProjectListDrops::indexedProjects() const {
    return m_collection.hideFadedProjects() ? m_collection.visibleProjects()
                                            : m_collection.projectArray();
}

QMimeData *ProjectListDrops::dragData(const std::shared_ptr<ProjectItem> &item,
                                      const std::shared_ptr<Project> &project) const {
    QMimeData *data = nullptr;
    if (item) {
        m_draggedItem = item;
        data = ProjectListPasteboard::dragData(*item);
    } else {
        m_draggedItem.reset();
        data = ProjectListPasteboard::dragData(int(indexedProjects().indexOf(project)));
    }
    m_dragData = data;
    return data;
}

bool ProjectListDrops::canDrop(const QMimeData &data, bool onRow, bool onProjectRow,
                               bool topLevel) {
    if (hasAnyFormat(data, QStringList{ProjectListPasteboard::dragEntriesType(),
                                       ProjectListPasteboard::dragFlatFeeEntriesType(),
                                       ProjectListPasteboard::dragCustomerType()} +
                               ProjectListPasteboard::vCardTypes()))
        return onRow && onProjectRow;
    if (data.hasFormat(ProjectListPasteboard::dragProjectsType()))
        return topLevel;
    if (!DroppedFiles::localFiles(data).isEmpty())
        return onRow;
    return true;
}

ProjectListDrops::Outcome ProjectListDrops::drop(const QMimeData &data,
                                                 const std::shared_ptr<Project> &target,
                                                 const std::shared_ptr<ProjectItem> &targetItem,
                                                 int row, int rowCount) {
    if (data.hasFormat(ProjectListPasteboard::dragEntriesType()) ||
        data.hasFormat(ProjectListPasteboard::dragFlatFeeEntriesType()))
        return dropEntry(data, target);
    if (data.hasFormat(ProjectListPasteboard::dragCustomerType()))
        return dropCustomer(data, target);
    if (hasAnyFormat(data, ProjectListPasteboard::vCardTypes()))
        return dropVCard(data, target);
    if (data.hasFormat(ProjectListPasteboard::dragProjectsType()))
        // A drop below the last row puts the project at the end.
        return dropProject(data, row < 0 ? rowCount : row);
    if (!DroppedFiles::localFiles(data).isEmpty())
        return dropFiles(data, target, targetItem);
    return {true, nullptr, nullptr, false};
}

ProjectListDrops::Outcome ProjectListDrops::dropEntry(const QMimeData &data,
                                                      const std::shared_ptr<Project> &target) {
    const auto dragged = m_draggedItem.lock();
    if (dragged && &data == m_dragData.data()) {
        // Dropped on its own project, it stays where it is.
        if (dragged->parent() == target.get())
            return {true, nullptr, nullptr, false};
        // The item itself moves: it keeps its check mark and attachments.
        m_collection.moveEntries({dragged}, target);
    } else {
        const bool isEntry = data.hasFormat(ProjectListPasteboard::dragEntriesType());
        const auto item = isEntry ? ProjectListPasteboard::entryFromArchive(
                                        data.data(ProjectListPasteboard::dragEntriesType()))
                                  : ProjectListPasteboard::flatFeeFromArchive(
                                        data.data(ProjectListPasteboard::dragFlatFeeEntriesType()));
        if (!item)
            return {};
        m_collection.addEntry(item, target, tr("Move Entry"));
    }
    m_collection.setDataChanged(true);
    return {true, target, nullptr, true};
}

ProjectListDrops::Outcome ProjectListDrops::dropProject(const QMimeData &data, int row) {
    bool ok = false;
    const int dragged =
        QString::fromLatin1(data.data(ProjectListPasteboard::dragProjectsType())).toInt(&ok);
    const ProjectList &list = indexedProjects();
    if (!ok || dragged < 0 || dragged >= list.size())
        return {};
    const auto project = list[dragged];
    m_collection.moveProject(project, row);
    m_collection.setDataChanged(true);
    return {true, project, nullptr, false};
}

ProjectListDrops::Outcome ProjectListDrops::dropCustomer(const QMimeData &data,
                                                         const std::shared_ptr<Project> &target) {
    bool ok = false;
    const int customer = QString::fromUtf8(data.data(ProjectListPasteboard::dragCustomerType()))
                             .trimmed()
                             .toInt(&ok);
    if (!ok)
        return {};
    m_collection.assignCustomerWithID(customer, target);
    m_collection.setDataChanged(true);
    return {true, target, nullptr, true};
}

ProjectListDrops::Outcome ProjectListDrops::dropVCard(const QMimeData &data,
                                                      const std::shared_ptr<Project> &target) {
    if (!m_customers)
        return {};
    QByteArray card;
    for (const QString &type : ProjectListPasteboard::vCardTypes()) {
        if (data.hasFormat(type)) {
            card = data.data(type);
            break;
        }
    }
    if (VCardReader::read(card).isEmpty())
        return {};
    QUndoStack *undo = m_collection.undoStack();
    undo->beginMacro(tr("Assign customer"));
    const int customer = m_customers->addCustomersFromVCard(card);
    m_collection.assignCustomerWithID(customer, target);
    undo->endMacro();
    m_collection.setDataChanged(true);
    return {true, target, nullptr, true};
}

ProjectListDrops::Outcome
ProjectListDrops::dropFiles(const QMimeData &data, const std::shared_ptr<Project> &target,
                            const std::shared_ptr<ProjectItem> &targetItem) {
    const QStringList paths = DroppedFiles::localFiles(data);
    if (targetItem)
        targetItem->addAttachments(paths);
    else
        target->addAttachments(paths);
    m_collection.setDataChanged(true);
    return {true, target, targetItem, true};
}
