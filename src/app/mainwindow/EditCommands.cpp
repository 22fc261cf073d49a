#include "mainwindow/EditCommands.h"

#include "model/ProjectCollection.h"

EditCommands::EditCommands(ProjectCollection &collection, Editors editors)
    : m_collection(collection)
    , m_editors(std::move(editors)) {}

bool EditCommands::edit(const std::shared_ptr<Project> &project,
                        const std::shared_ptr<ProjectItem> &item) {
    if (item) {
        if (item->isEntry())
            m_editors.entry(std::static_pointer_cast<Entry>(item));
        else
            m_editors.flatFee(std::static_pointer_cast<FlatFeeEntry>(item));
        return true;
    }
    if (!project)
        return false;
    m_editors.project(project);
    return true;
}

bool EditCommands::deleteSelection(const std::shared_ptr<Project> &project,
                                   const std::shared_ptr<ProjectItem> &item) {
    if (item) {
        // The item leaves the project it belongs to, whatever project the caller named.
        const auto owner = m_collection.sharedProject(item->parent());
        if (!owner)
            return false;
        m_collection.deleteEntry(item, owner);
        return true;
    }
    if (!project)
        return false;
    m_collection.deleteProject(project);
    return true;
}
