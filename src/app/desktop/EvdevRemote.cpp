#include "desktop/EvdevRemote.h"

#include "Logging.h"
#include "desktop/RemoteKeys.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSocketNotifier>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <libevdev/libevdev.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

struct EvdevRemote::Device {
    QString path;
    int fd = -1;
    libevdev *evdev = nullptr;
    std::unique_ptr<QSocketNotifier> notifier;
    QSet<int> held;
};

bool EvdevRemote::isRemoteDevice(const QString &name, const QString &devicePath) {
    static const QRegularExpression remoteName(
        u"(^|[^a-z])(ir|remote|infrared|cec|lirc)([^a-z]|$)"_s);
    // Receivers of the kernel's remote-control core sit under an "rc" device.
    return devicePath.contains(u"/rc/rc"_s) || remoteName.match(name.toLower()).hasMatch();
}

EvdevRemote::EvdevRemote(QObject *parent)
    : QObject(parent) {}

EvdevRemote::~EvdevRemote() {
    stopListening();
}

bool EvdevRemote::startListening(bool exclusive) {
    if (isListeningToRemote())
        return true;
    m_permissionMissing = false;
    const QDir inputs(u"/sys/class/input"_s);
    const QStringList events = inputs.entryList({u"event*"_s}, QDir::Dirs | QDir::System);
    for (const QString &event : events) {
        QFile nameFile(inputs.filePath(event + u"/device/name"_s));
        if (!nameFile.open(QIODevice::ReadOnly))
            continue;
        const QString name = QString::fromUtf8(nameFile.readAll()).trimmed();
        if (!isRemoteDevice(name,
                            QFileInfo(inputs.filePath(event + u"/device"_s)).canonicalFilePath()))
            continue;
        auto device = std::make_unique<Device>();
        device->path = u"/dev/input/"_s + event;
        device->fd =
            ::open(QFile::encodeName(device->path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        if (device->fd < 0) {
            if (errno == EACCES || errno == EPERM)
                m_permissionMissing = true;
            qCWarning(lcDesktop, "Error when opening device %s (%s): %s",
                      qUtf8Printable(device->path), qUtf8Printable(name), std::strerror(errno));
            continue;
        }
        if (libevdev_new_from_fd(device->fd, &device->evdev) < 0) {
            qCWarning(lcDesktop, "Error when opening device %s: not an input device",
                      qUtf8Printable(device->path));
            closeDevice(*device);
            continue;
        }
        if (exclusive && libevdev_grab(device->evdev, LIBEVDEV_GRAB) < 0)
            qCWarning(lcDesktop, "Could not open %s exclusively; other programs see its keys",
                      qUtf8Printable(device->path));
        Device &opened = *device;
        opened.notifier = std::make_unique<QSocketNotifier>(opened.fd, QSocketNotifier::Read);
        connect(opened.notifier.get(), &QSocketNotifier::activated, this,
                [this, &opened] { readEvents(opened); });
        qCInfo(lcDesktop, "Listening to the remote %s (%s)", qUtf8Printable(name),
               qUtf8Printable(opened.path));
        m_devices.push_back(std::move(device));
    }
    if (m_devices.empty())
        qCInfo(lcDesktop, "No infrared receiver or remote among the input devices");
    return isListeningToRemote();
}

void EvdevRemote::stopListening() {
    for (const auto &device : m_devices)
        closeDevice(*device);
    m_devices.clear();
}

void EvdevRemote::closeDevice(Device &device) {
    device.notifier.reset();
    if (device.evdev) {
        libevdev_grab(device.evdev, LIBEVDEV_UNGRAB);
        libevdev_free(device.evdev);
        device.evdev = nullptr;
    }
    if (device.fd >= 0)
        ::close(device.fd);
    device.fd = -1;
}

void EvdevRemote::readEvents(Device &device) {
    input_event event;
    unsigned flags = LIBEVDEV_READ_FLAG_NORMAL;
    for (;;) {
        const int status = libevdev_next_event(device.evdev, flags, &event);
        if (status == LIBEVDEV_READ_STATUS_SYNC) {
            // Events were dropped: catch up with the device's state, then read on.
            flags = LIBEVDEV_READ_FLAG_SYNC;
            continue;
        }
        if (status == -EAGAIN && flags == LIBEVDEV_READ_FLAG_SYNC) {
            flags = LIBEVDEV_READ_FLAG_NORMAL;
            continue;
        }
        if (status != LIBEVDEV_READ_STATUS_SUCCESS) {
            if (status != -EAGAIN) {
                qCWarning(lcDesktop, "The remote %s went away", qUtf8Printable(device.path));
                device.notifier->setEnabled(false);
            }
            return;
        }
        if (event.type != EV_KEY || flags == LIBEVDEV_READ_FLAG_SYNC)
            continue;
        // Only the first repeat of a held key counts.
        if (event.value == 2 && device.held.contains(event.code))
            continue;
        const bool held = device.held.contains(event.code);
        if (event.value == 2)
            device.held.insert(event.code);
        else
            device.held.remove(event.code);
        const AppleRemote::Burst keys = RemoteKeys::burstForKey(event.code, event.value, held);
        if (!keys.isEmpty())
            emit burst(keys);
    }
}
