#pragma once

#include "../platform/FileIdentity.h"

#include <QString>

// The project file a document was read from or last written to, and what it was then, so that a
// save never overwrites what another program wrote in between.
class OpenedFile {
public:
    // Empty for a new document.
    QString path() const { return m_path; }
    bool isEmpty() const { return m_path.isEmpty(); }
    // The document now comes from the file at this absolute path, read with this content hash.
    void take(const QString &path, quint64 contentHash);
    // The document was written to the file at this absolute path, which then was as described.
    void take(const QString &path, const FileIdentity &identity);
    const FileIdentity &identity() const { return m_identity; }
    void forget();

    // Whether another program has changed the file since it was read or written.
    bool changedOnDisk() const;
    // Takes the file as it is on disk now as the one the document was made from.
    void adoptFileOnDisk();

private:
    QString m_path;
    FileIdentity m_identity;
};
