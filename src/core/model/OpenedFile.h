#pragma once

#include "../platform/FileIdentity.h"
#include "ProjectFile.h"

#include <QCoreApplication>
#include <QString>

// The project file a document was read from or last written to, and what it was then, so that a
// save never overwrites what another program wrote in between.
class OpenedFile {
    // Its message is the document's, translated as such.
    Q_DECLARE_TR_FUNCTIONS(ProjectCollection)

public:
    // Empty for a new document.
    QString path() const { return m_path; }
    bool isEmpty() const { return m_path.isEmpty(); }
    // The document now comes from the file at this absolute path, read with this content hash.
    void take(const QString &path, quint64 contentHash);
    void forget();

    // Whether another program has changed the file since it was read or written.
    bool changedOnDisk() const;
    // Takes the file as it is on disk now as the one the document was made from.
    void adoptFileOnDisk();

    // Writes the projects to the absolute path under its lock. When the path is this file and
    // another program changed it, nothing is written and the reason says so; when nothing is at
    // the path any more (removed, or its folder gone and made again), it is written anew. A
    // written file becomes this one.
    ProjectFile::SaveResult save(const QString &path, const ProjectList &projects);

private:
    QString m_path;
    FileIdentity m_identity;
};
