#include "FileIdentity.h"

#include "ContentHash.h"

#include <QFile>
#include <sys/stat.h>

bool FileIdentity::stampOf(const QString &path, Stamp &stamp) {
    struct stat info {};
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return false;
    stamp.size = qint64(info.st_size);
    stamp.modifiedNs = qint64(info.st_mtim.tv_sec) * 1000000000 + info.st_mtim.tv_nsec;
    stamp.inode = quint64(info.st_ino);
    return true;
}

FileIdentity FileIdentity::of(const QString &path, quint64 contentHash) {
    FileIdentity identity;
    identity.m_known = stampOf(path, identity.m_stamp);
    identity.m_hash = contentHash;
    return identity;
}

bool FileIdentity::differsFrom(const QString &path) const {
    Stamp now;
    if (!stampOf(path, now))
        return true;
    if (now == m_stamp)
        return false;
    QFile file(path);
    if (now.size != m_stamp.size || !file.open(QIODevice::ReadOnly))
        return true;
    return hashOf(file.readAll()) != m_hash;
}

quint64 FileIdentity::hashOf(const QByteArray &bytes) {
    return ContentHash::of(bytes);
}
