#include "OpenedFile.h"

#include <QFile>

void OpenedFile::take(const QString &path, quint64 contentHash) {
    m_path = path;
    m_identity = FileIdentity::of(path, contentHash);
}

void OpenedFile::take(const QString &path, const FileIdentity &identity) {
    m_path = path;
    m_identity = identity;
}

void OpenedFile::forget() {
    m_path.clear();
    m_identity = FileIdentity();
}

bool OpenedFile::changedOnDisk() const {
    return !m_path.isEmpty() && m_identity.isKnown() && m_identity.differsFrom(m_path);
}

void OpenedFile::adoptFileOnDisk() {
    if (m_path.isEmpty())
        return;
    QFile file(m_path);
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    m_identity = FileIdentity::of(m_path, FileIdentity::hashOf(bytes));
}
