#pragma once

#include <QtGlobal>

// The memory figures of this process as the kernel reports them in /proc/self/status, in KiB.
class ProcessMemory {
public:
    // VmRSS: resident now.
    static qint64 residentKiB();
    // VmHWM: the highest resident size since the process started.
    static qint64 peakKiB();
};
