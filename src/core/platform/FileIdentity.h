#pragma once

#include <QByteArray>
#include <QString>

// What a file on disk was when the program last read or wrote it, to tell whether another
// program has changed it since: size, modification time and inode first (cheap), and the
// content's hash when those differ (a copy of the same bytes is not a change).
class FileIdentity {
public:
    FileIdentity() = default;
    // The identity of the file as it is now, with the hash of its content as read or written.
    static FileIdentity of(const QString &path, quint64 contentHash);

    bool isKnown() const { return m_known; }
    // True when the file at path is no longer what this identity describes (also when it has
    // been removed).
    bool differsFrom(const QString &path) const;

    // A fast hash of file content (not for security: to notice a change).
    static quint64 hashOf(const QByteArray &bytes);

private:
    struct Stamp {
        qint64 size = -1;
        qint64 modifiedNs = 0;
        quint64 inode = 0;
        bool operator==(const Stamp &) const = default;
    };
    static bool stampOf(const QString &path, Stamp &stamp);

    bool m_known = false;
    Stamp m_stamp;
    quint64 m_hash = 0;
};
