#include "CliDocument.h"

#include <QFileInfo>

CliDocument::CliDocument(const QString &path)
    : m_path(QFileInfo(path).absoluteFilePath()) {}

ProjectFile::LoadResult CliDocument::load(const CurrencyFormatter &currency) {
    ProjectFile::LoadResult result = ProjectFile::load(m_path);
    if (!result.ok)
        return result;
    m_projects = result.projects;
    for (const auto &project : std::as_const(m_projects))
        project->setCurrencyFormatter(&currency);
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
