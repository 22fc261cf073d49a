#include "ScratchFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <cerrno>
#include <cstring>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

QString ScratchFolder::path() {
    const passwd *user = getpwuid(getuid());
    const QString name = user ? QString::fromLocal8Bit(user->pw_name) : QString::number(getuid());
    return QDir::tempPath() + u"/hfexport-" + name;
}

ScratchFolder::Result ScratchFolder::ensure() {
    return ensure(path());
}

ScratchFolder::Result ScratchFolder::ensure(const QString &path) {
    const QByteArray native = QFile::encodeName(path);
    if (mkdir(native.constData(), 0700) != 0 && errno != EEXIST) {
        return {false, QCoreApplication::translate("ScratchFolder", "Cannot create %1: %2")
                           .arg(path, QString::fromLocal8Bit(strerror(errno)))};
    }
    struct stat info {};
    // lstat: a symbolic link planted under the name is refused, not followed.
    if (lstat(native.constData(), &info) != 0 || !S_ISDIR(info.st_mode) ||
        info.st_uid != getuid() || (info.st_mode & 077) != 0) {
        return {false, QCoreApplication::translate("ScratchFolder",
                                                   "%1 is not a private folder of this user.")
                           .arg(path)};
    }
    return {true, {}};
}
