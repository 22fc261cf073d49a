#include "CliDocument.h"

#include "model/EntryOrder.h"

#include <QFileInfo>

CliDocument::CliDocument(const QString &path)
    : m_path(QFileInfo(path).absoluteFilePath()) {}

ProjectFile::LoadResult CliDocument::load(const CurrencyFormatter &currency,
                                          const EntryOrder &order) {
    ProjectFile::LoadResult result = ProjectFile::load(m_path);
    if (!result.ok)
        return result;
    m_projects = result.projects;
    m_currency = &currency;
    m_order = &order;
    for (const auto &project : std::as_const(m_projects))
        project->setCurrencyFormatter(&currency);
    order.sortAllProjects(m_projects);
    return result;
}

ProjectFile::SaveResult CliDocument::save() const {
    return ProjectFile::save(m_path, m_projects);
}

std::shared_ptr<Project> CliDocument::projectNamed(const QString &name) const {
    for (const auto &project : m_projects) {
        if (project->name() == name)
            return project;
    }
    return nullptr;
}

void CliDocument::addProject(const std::shared_ptr<Project> &project) {
    project->setCurrencyFormatter(m_currency);
    m_projects.append(project);
    m_changed = true;
}

int CliDocument::addEntry(Project &project, const std::shared_ptr<ProjectItem> &item) {
    project.addEntry(item);
    sortEntriesOfProject(project);
    m_changed = true;
    return int(project.entries().indexOf(item)) + 1;
}

void CliDocument::sortEntriesOfProject(Project &project) const {
    if (m_order)
        m_order->sortEntriesOfProject(project);
}

ProjectList CliDocument::removeCustomerFromProjects(int customerId) {
    ProjectList cleared;
    for (const auto &project : std::as_const(m_projects)) {
        if (project->customer() == customerId) {
            project->setCustomer(-1);
            cleared.append(project);
        }
    }
    if (!cleared.isEmpty())
        m_changed = true;
    return cleared;
}

void CliDocument::assignCustomerToProjects(int customerId, const ProjectList &projects) {
    for (const auto &project : projects)
        project->setCustomer(customerId);
    if (!projects.isEmpty())
        m_changed = true;
}
