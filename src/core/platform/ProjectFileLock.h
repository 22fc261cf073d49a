#pragma once

#include <QLockFile>
#include <QString>
#include <memory>

// The advisory lock that the desktop program and the command-line program take around reading,
// changing and writing one project file. It is a lock file beside the project file (NAME.lock),
// since writing replaces the project file itself.
class ProjectFileLock {
public:
    explicit ProjectFileLock(const QString &projectPath);
    ~ProjectFileLock();

    // Waits up to the timeout for the lock; false (with the reason) when another program keeps
    // holding it.
    bool lock(int timeoutMs = 5000);
    bool isLocked() const;
    QString errorString() const { return m_error; }

    static QString lockPathFor(const QString &projectPath);

private:
    // Sets the reason the lock was not taken; false.
    bool fail();
    // Removes a lock file that names no program and is too old to be in the making.
    bool removeIfOwnerless();

    QString m_projectPath;
    std::unique_ptr<QLockFile> m_lock;
    QString m_error;
};
