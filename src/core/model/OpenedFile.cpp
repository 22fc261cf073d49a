#include "OpenedFile.h"

#include "../platform/ProjectFileLock.h"

#include <QFile>
#include <QFileInfo>

void OpenedFile::take(const QString &path, quint64 contentHash) {
    m_path = path;
    m_identity = FileIdentity::of(path, contentHash);
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

ProjectFile::SaveResult OpenedFile::save(const QString &path, const ProjectList &projects) {
    ProjectFile::SaveResult result;
    ProjectFileLock lock(path);
    if (!lock.lock()) {
        result.error = lock.errorString();
    } else if (path == m_path && QFileInfo::exists(path) && changedOnDisk()) {
        result.error = tr("\"%1\" was changed by another program since it was opened or last "
                          "saved. Nothing was written: reload the file or save it under another "
                          "name.")
                           .arg(path);
    } else {
        result = ProjectFile::save(path, projects);
    }
    if (result.ok)
        take(path, result.contentHash);
    return result;
}
