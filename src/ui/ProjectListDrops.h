#pragma once

#include "model/Project.h"

#include <QCoreApplication>
#include <QPointer>
#include <QStringList>
#include <memory>

class CustomerStorage;
class ProjectCollection;
class QMimeData;

// Dragging from and dropping onto the project list, in terms of projects and items rather than
// rows. A drag carries the first dragged row: an item as its archive, a project as its index (in
// the visible projects while faded ones are hidden, else in all). What may be dropped where:
//
//   entries, flat fees, a customer, an address card   onto a project row itself
//   a project                                         between the top-level rows
//   files                                             onto any row itself
//   anything else                                     anywhere (and then ignored)
//
// A dropped entry or flat fee moves to the target project in one undoable step (the dragged item
// itself when the drop is the drag this list started, else a new item made from the archive); a
// project moves to the drop position; a customer is assigned to the project, an address card
// first added to the customer list; files are attached to the target row's item or project.
class ProjectListDrops {
    Q_DECLARE_TR_FUNCTIONS(ProjectListDrops)

public:
    // Where a drop ends: the row the list selects, and whether it expands that row's project.
    struct Outcome {
        bool taken = false;
        std::shared_ptr<Project> project;
        std::shared_ptr<ProjectItem> item;
        bool expand = false;
    };

    explicit ProjectListDrops(ProjectCollection &collection);

    // Address cards dropped on a project are added to this customer list first.
    void setCustomerStorage(CustomerStorage *storage) { m_customers = storage; }

    static QStringList mimeTypes();
    // The data of a drag that starts at an item, or (item null) at a project.
    QMimeData *dragData(const std::shared_ptr<ProjectItem> &item,
                        const std::shared_ptr<Project> &project) const;

    // onRow: the drop is onto a row itself; onProjectRow: that row is a project's; topLevel: the
    // drop is between the top-level rows.
    static bool canDrop(const QMimeData &data, bool onRow, bool onProjectRow, bool topLevel);
    // A drop the rules accept, onto the target row's project and item (null for a project row) or
    // between the top-level rows before row (-1: below the last of rowCount rows).
    Outcome drop(const QMimeData &data, const std::shared_ptr<Project> &target,
                 const std::shared_ptr<ProjectItem> &targetItem, int row, int rowCount);

private:
    const ProjectList &indexedProjects() const;
    Outcome dropEntry(const QMimeData &data, const std::shared_ptr<Project> &target);
    Outcome dropProject(const QMimeData &data, int row);
    Outcome dropCustomer(const QMimeData &data, const std::shared_ptr<Project> &target);
    Outcome dropVCard(const QMimeData &data, const std::shared_ptr<Project> &target);
    Outcome dropFiles(const QMimeData &data, const std::shared_ptr<Project> &target,
                      const std::shared_ptr<ProjectItem> &targetItem);

    ProjectCollection &m_collection;
    CustomerStorage *m_customers = nullptr;
    // The item being dragged and the data its drag carries: a drop of that very data moves the
    // item itself.
    mutable std::weak_ptr<ProjectItem> m_draggedItem;
    mutable QPointer<QMimeData> m_dragData;
};
