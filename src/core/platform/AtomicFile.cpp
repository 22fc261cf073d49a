#include "AtomicFile.h"

#include "../Logging.h"

#include <QDir>
#include <QFileInfo>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QString failure(const QString &path, int error) {
    return QStringLiteral("Could not write \"%1\": %2")
        .arg(QDir::toNativeSeparators(path), QString::fromLocal8Bit(std::strerror(error)));
}

bool writeAll(int fd, const QByteArray &bytes) {
    const char *data = bytes.constData();
    qsizetype left = bytes.size();
    while (left > 0) {
        const ssize_t n = ::write(fd, data, size_t(left));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        data += n;
        left -= n;
    }
    return true;
}

} // namespace

AtomicFile::Result AtomicFile::write(const QString &path, const QByteArray &bytes) {
    return write(path, QList<QByteArray>{bytes});
}

AtomicFile::Result AtomicFile::write(const QString &path, const QList<QByteArray> &pieces) {
    // Write through a symbolic link to the file it points at, keeping the link.
    QFileInfo info(path);
    const QString target =
        info.isSymLink() && info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    const QFileInfo targetInfo(target);
    const QByteArray folder = QFile::encodeName(targetInfo.absolutePath());
    QByteArray temporary =
        folder + "/." + QFile::encodeName(targetInfo.fileName()) + ".hourfold-XXXXXX";

    const int fd = ::mkstemp(temporary.data());
    if (fd < 0) {
        const int error = errno;
        qCWarning(lcFile) << "cannot create a temporary file in" << folder << std::strerror(error);
        return {false, failure(path, error)};
    }

    struct stat existing {};
    mode_t mode = 0644;
    if (::stat(QFile::encodeName(target).constData(), &existing) == 0) {
        mode = existing.st_mode & 07777;
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        mode = 0666 & ~mask;
    }

    int error = 0;
    bool written = ::fchmod(fd, mode) == 0;
    for (qsizetype i = 0; written && i < pieces.size(); ++i)
        written = writeAll(fd, pieces[i]);
    if (!written || ::fsync(fd) != 0)
        error = errno;
    if (::close(fd) != 0 && error == 0)
        error = errno;
    if (error == 0 && ::rename(temporary.constData(), QFile::encodeName(target).constData()) != 0)
        error = errno;
    if (error != 0) {
        ::unlink(temporary.constData());
        qCWarning(lcFile) << "writing" << target << "failed:" << std::strerror(error);
        return {false, failure(path, error)};
    }

    const int folderFd = ::open(folder.constData(), O_RDONLY | O_DIRECTORY);
    if (folderFd >= 0) {
        ::fsync(folderFd);
        ::close(folderFd);
    }
    return {true, {}};
}
