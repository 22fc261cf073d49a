#include "ProjectFileLock.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QThread>

#include <algorithm>

namespace {

constexpr qint64 retryIntervalMs = 20;
// A program writes its name into the lock file as it makes it; a file that still names nobody
// after this long belongs to a program that was killed in between.
constexpr qint64 ownerlessAfterMs = 1000;

} // namespace

ProjectFileLock::ProjectFileLock(const QString &projectPath)
    : m_projectPath(projectPath)
    , m_lock(std::make_unique<QLockFile>(lockPathFor(projectPath))) {
    m_lock->setStaleLockTime(30000);
}

ProjectFileLock::~ProjectFileLock() = default;

QString ProjectFileLock::lockPathFor(const QString &projectPath) {
    const QFileInfo info(projectPath);
    return info.absolutePath() + u'/' + info.fileName() + QStringLiteral(".lock");
}

bool ProjectFileLock::lock(int timeoutMs) {
    // Tried again at short, even intervals: QLockFile's own waiting doubles the pause after each
    // try, so of many programs waiting together most would sleep through the moments the lock
    // is free and give up.
    const QDeadlineTimer deadline(timeoutMs);
    while (!m_lock->tryLock(0)) {
        if (m_lock->error() == QLockFile::LockFailedError && removeIfOwnerless())
            continue;
        if (m_lock->error() != QLockFile::LockFailedError || deadline.hasExpired())
            return fail();
        QThread::msleep(ulong(std::min<qint64>(retryIntervalMs, deadline.remainingTime())));
    }
    return true;
}

bool ProjectFileLock::removeIfOwnerless() {
    qint64 pid = 0;
    QString host;
    QString application;
    if (m_lock->getLockInfo(&pid, &host, &application))
        return false;
    const QFileInfo file(lockPathFor(m_projectPath));
    if (!file.exists() ||
        file.lastModified().msecsTo(QDateTime::currentDateTime()) < ownerlessAfterMs)
        return false;
    return m_lock->removeStaleLockFile();
}

bool ProjectFileLock::fail() {
    switch (m_lock->error()) {
    case QLockFile::LockFailedError: {
        qint64 pid = 0;
        QString host;
        QString application;
        m_lock->getLockInfo(&pid, &host, &application);
        m_error = QStringLiteral("Another program (%1, process %2) is working on \"%3\".")
                      .arg(application.isEmpty() ? QStringLiteral("unknown") : application)
                      .arg(pid)
                      .arg(m_projectPath);
        break;
    }
    case QLockFile::PermissionError:
        m_error = QStringLiteral("No permission to lock \"%1\".").arg(m_projectPath);
        break;
    default:
        m_error = QStringLiteral("Could not lock \"%1\".").arg(m_projectPath);
        break;
    }
    return false;
}

bool ProjectFileLock::isLocked() const {
    return m_lock->isLocked();
}
