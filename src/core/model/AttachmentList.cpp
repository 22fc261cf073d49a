#include "AttachmentList.h"

#include "../Logging.h"

void AttachmentList::add(const QStringList &paths) {
    if (!m_paths) {
        qCWarning(lcModel, "attachments array not initialized");
        return;
    }
    for (const QString &path : paths) {
        if (m_paths->contains(path)) {
            qCInfo(lcModel, "path '%s' already added", qUtf8Printable(path));
            continue;
        }
        m_paths->append(path);
    }
}

void AttachmentList::remove(const QStringList &paths) {
    if (!m_paths) {
        qCWarning(lcModel, "attachments array not initialized");
        return;
    }
    for (const QString &path : paths)
        m_paths->removeAll(path);
}
