#pragma once

#include "Project.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

// The project file on disk: reading (strict first, then forgiving), converting the older
// unversioned layout, and writing atomically.
class ProjectFile {
public:
    struct LoadResult {
        bool ok = false;
        QString error; // a sentence naming the problem, with the line where there is one
        int line = 0;
        ProjectList projects;
        // Only the forgiving parse could read the file.
        bool recovered = false;
        // With recovered: what the strict parse found wrong, and how many items the repair left
        // out because the file ended inside them.
        QString damage;
        int itemsLeftOut = 0;
        // Values that could not be read and were left empty, each a sentence naming the element,
        // the entry or flat fee and the project.
        QStringList unreadable;
        // When the file was recovered or values were left empty, its original bytes were kept
        // here (empty when the copy could not be made: see error).
        QString backupPath;
        // The file was in the older layout and converted in memory.
        bool converted = false;
        // A fast hash of the bytes read, to tell later whether the file changed.
        quint64 contentHash = 0;
    };

    struct SaveResult {
        bool ok = false;
        QString error;
        quint64 contentHash = 0; // of the bytes written
    };

    // Reads a project file. A failure leaves nothing behind: the caller keeps what it had.
    static LoadResult load(const QString &path);
    // Reads project file bytes; no backup is made.
    static LoadResult read(const QByteArray &bytes);

    static QByteArray makeXML(const ProjectList &projects);
    // Writes the projects to a temporary file, flushes it and renames it over the target.
    static SaveResult save(const QString &path, const ProjectList &projects);

    // Keeps a copy of bytes beside path as NAME.recovered-YYYYMMDD-HHMMSS, never overwriting an
    // earlier copy and not again when an identical copy exists. Returns the copy's path, or an
    // empty text when it could not be written.
    static QString keepRecoveredCopy(const QString &path, const QByteArray &bytes,
                                     QString *error = nullptr);
};
