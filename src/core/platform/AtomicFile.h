#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// Writes a whole file so that it is either the new content or the old one, never a mix: the bytes
// go to a temporary file beside the target, are flushed to disk, and the temporary file is renamed
// over the target (then the folder is flushed). A failure leaves the old file untouched.
class AtomicFile {
public:
    struct Result {
        bool ok = false;
        QString error; // why it failed, naming the file
    };

    static Result write(const QString &path, const QByteArray &bytes);
    // The same for a file made of pieces, written one after the other.
    static Result write(const QString &path, const QList<QByteArray> &pieces);
};
