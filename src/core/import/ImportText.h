#pragma once

#include <QByteArray>
#include <QStringList>

class ImportResult;

// The lines of a text file in UTF-8 (or UTF-16 with a byte-order mark). A line that is not valid
// UTF-8 is listed as a problem of the result and comes back empty, so that line numbers stay
// right and nothing is read from bytes of an unknown encoding.
class ImportText {
public:
    static QStringList lines(const QByteArray &bytes, const QString &file, ImportResult &result);
    // The whole file's bytes; an unreadable file sets the result's error.
    static QByteArray fileBytes(const QString &path, ImportResult &result);
    // The lines of the file, its problems listed under its name; none when it cannot be read
    // (the result's error says why).
    static QStringList fileLines(const QString &path, ImportResult &result);
};
