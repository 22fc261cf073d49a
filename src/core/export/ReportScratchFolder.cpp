#include "ReportScratchFolder.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

ReportScratchFolder::Result refused(const QString &path, const QString &reason) {
    return {false, ReportScratchFolder::tr("The folder %1 cannot be used for the report: %2")
                       .arg(QDir::toNativeSeparators(path), reason)};
}

QString systemError(int error) {
    return QString::fromLocal8Bit(std::strerror(error));
}

} // namespace

QString ReportScratchFolder::defaultPath() {
    const uid_t uid = geteuid();
    const passwd *entry = getpwuid(uid);
    const QString user = entry ? QString::fromLocal8Bit(entry->pw_name) : QString::number(uid);
    return QDir::tempPath() + QStringLiteral("/hfexport-") + user;
}

ReportScratchFolder::Result ReportScratchFolder::recreate(const QString &path) {
    const QByteArray nativePath = QFile::encodeName(path);
    struct stat status {};
    if (::lstat(nativePath.constData(), &status) == 0) {
        if (S_ISLNK(status.st_mode))
            return refused(path, tr("it is a symbolic link"));
        if (!S_ISDIR(status.st_mode))
            return refused(path, tr("it is not a folder"));
        if (status.st_uid != geteuid())
            return refused(path, tr("it belongs to another user"));
        if (!QDir(path).removeRecursively())
            return refused(path, tr("its old content cannot be removed"));
    } else if (errno != ENOENT) {
        return refused(path, systemError(errno));
    }
    // mkdir fails when something appeared under that name since the check, which is then left
    // alone; the mode is set again because mkdir applies the umask.
    if (::mkdir(nativePath.constData(), 0700) != 0 || ::chmod(nativePath.constData(), 0700) != 0)
        return refused(path, systemError(errno));
    return {true, {}};
}
