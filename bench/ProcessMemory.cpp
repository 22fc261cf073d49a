#include "ProcessMemory.h"

#include <QByteArray>
#include <QFile>

namespace {

qint64 statusField(const QByteArray &name) {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray prefix = name + ':';
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(prefix))
            return line.mid(prefix.size()).trimmed().split(' ').value(0).toLongLong();
    }
    return -1;
}

} // namespace

qint64 ProcessMemory::residentKiB() {
    return statusField("VmRSS");
}

qint64 ProcessMemory::peakKiB() {
    return statusField("VmHWM");
}
