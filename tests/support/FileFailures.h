#pragma once

// Ways to make file writes fail in tests, also when the tests run as root.
class FileFailures {
public:
    // While an instance lives, the process obeys file permissions even as root (the capability
    // that overrides them is dropped from the effective set and restored afterwards).
    class ObeyPermissions {
    public:
        ObeyPermissions();
        ~ObeyPermissions();
        ObeyPermissions(const ObeyPermissions &) = delete;
        ObeyPermissions &operator=(const ObeyPermissions &) = delete;

    private:
        bool m_dropped = false;
    };

    // While an instance lives, no file may grow beyond the given size: writes past it fail with
    // "File too large", as on a full disk.
    class LimitFileSize {
    public:
        explicit LimitFileSize(long bytes);
        ~LimitFileSize();
        LimitFileSize(const LimitFileSize &) = delete;
        LimitFileSize &operator=(const LimitFileSize &) = delete;

    private:
        unsigned long m_previous;
        void (*m_previousHandler)(int);
    };
};
