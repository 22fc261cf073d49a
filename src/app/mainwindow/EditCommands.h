#pragma once

#include <functional>
#include <memory>

class Entry;
class FlatFeeEntry;
class Project;
class ProjectCollection;
class ProjectItem;

// Edit and Delete on the selected row of the project list. A row is given as the list gives it:
// the project (of a project row, or holding the item) and the item, null on a project row.
class EditCommands {
public:
    // What opens a sheet filled from a row of each kind.
    struct Editors {
        std::function<void(const std::shared_ptr<Project> &)> project;
        std::function<void(const std::shared_ptr<Entry> &)> entry;
        std::function<void(const std::shared_ptr<FlatFeeEntry> &)> flatFee;
    };

    EditCommands(ProjectCollection &collection, Editors editors);

    // Opens the sheet that matches the row's kind. False without a row.
    bool edit(const std::shared_ptr<Project> &project, const std::shared_ptr<ProjectItem> &item);
    // Deletes the row without asking: a project with "Delete Project", an entry or a flat fee
    // from its own project with "Delete Entry". False without a row.
    bool deleteSelection(const std::shared_ptr<Project> &project,
                         const std::shared_ptr<ProjectItem> &item);

private:
    ProjectCollection &m_collection;
    Editors m_editors;
};
