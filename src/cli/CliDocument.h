#pragma once

#include "model/CustomerAssignments.h"
#include "model/Project.h"
#include "model/ProjectFile.h"

#include <QString>
#include <QUndoStack>

class CurrencyFormatter;
class EntryOrder;

// One project file as the command-line program sees it: read (and, for changes, written back)
// under the file's lock, with projects found by name and items by their 1-based place in the
// desktop program's order. As the customer store's document it takes a deleted customer off its
// projects.
class CliDocument : public CustomerAssignments {
public:
    explicit CliDocument(const QString &path);

    QString path() const { return m_path; }
    // Reads the file and sorts every project's items in the order, as the desktop program does
    // after opening it; the projects use the formatter for money.
    ProjectFile::LoadResult load(const CurrencyFormatter &currency, const EntryOrder &order);
    ProjectFile::SaveResult save() const;

    const ProjectList &projects() const { return m_projects; }
    // Null when no project has exactly this name.
    std::shared_ptr<Project> projectNamed(const QString &name) const;
    // Appends the project, which then uses the formatter of load() for money.
    void addProject(const std::shared_ptr<Project> &project);
    // Adds the item to the project in its place in the order of load(), as the desktop program
    // does; answers its 1-based index.
    int addEntry(Project &project, const std::shared_ptr<ProjectItem> &item);
    // Sorts the project's items again after a change, in the order of load().
    void sortEntriesOfProject(Project &project) const;

    // Whether anything was changed since the file was read.
    bool isChanged() const { return m_changed; }
    void setChanged() { m_changed = true; }

    ProjectList removeCustomerFromProjects(int customerId) override;
    void assignCustomerToProjects(int customerId, const ProjectList &projects) override;
    // The command line shows no project list, so there is nothing to recompute.
    void updateVisibleProjects() override {}
    QUndoStack *undoStack() override { return &m_undoStack; }

private:
    QString m_path;
    ProjectList m_projects;
    const CurrencyFormatter *m_currency = nullptr;
    const EntryOrder *m_order = nullptr;
    bool m_changed = false;
    QUndoStack m_undoStack;
};
