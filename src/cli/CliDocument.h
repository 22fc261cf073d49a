#pragma once

#include "model/Project.h"
#include "model/ProjectFile.h"

#include <QString>

class CurrencyFormatter;

// One project file as the command-line program sees it: read (and, for changes, written back)
// under the file's lock, with projects found by name and items by their 1-based place.
class CliDocument {
public:
    explicit CliDocument(const QString &path);

    QString path() const { return m_path; }
    // Reads the file; the projects use the formatter for money.
    ProjectFile::LoadResult load(const CurrencyFormatter &currency);
    ProjectFile::SaveResult save() const;

    const ProjectList &projects() const { return m_projects; }
    // Null when no project has exactly this name.
    std::shared_ptr<Project> projectNamed(const QString &name) const;

private:
    QString m_path;
    ProjectList m_projects;
};
