#pragma once

#include "desktop/AppleRemote.h"

#include <QObject>
#include <QSet>
#include <memory>
#include <vector>

// Infrared receivers and remotes among the input devices (/dev/input/event*), read through
// libevdev: their keys come out as the bursts of the remote's version-5 table. A device is taken
// when the kernel's remote-control core made it, or its name says it is a remote (IR, CEC,
// LIRC); keyboards are never taken, so that grabbing one cannot lock the user out. In exclusive
// mode the devices are grabbed, so other programs do not act on the same keys.
class EvdevRemote : public QObject {
    Q_OBJECT

public:
    // Whether the input device with this name and this place among the system's devices is a
    // remote.
    static bool isRemoteDevice(const QString &name, const QString &devicePath);

    explicit EvdevRemote(QObject *parent = nullptr);
    ~EvdevRemote() override;

    // Opens the remotes among the input devices; false when none could be opened. Failures go
    // to the log.
    bool startListening(bool exclusive);
    void stopListening();
    bool isListeningToRemote() const { return !m_devices.empty(); }
    // A remote was found that the user may not read (not in the "input" group).
    bool isPermissionMissing() const { return m_permissionMissing; }

signals:
    void burst(const AppleRemote::Burst &burst);

private:
    struct Device;
    void readEvents(Device &device);
    void closeDevice(Device &device);

    std::vector<std::unique_ptr<Device>> m_devices;
    bool m_permissionMissing = false;
};
