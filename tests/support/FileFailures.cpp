#include "FileFailures.h"

#include <csignal>
#include <linux/capability.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

bool setDacOverride(bool enabled) {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[2] = {};
    if (syscall(SYS_capget, &header, data) != 0)
        return false;
    const unsigned bits = (1u << CAP_DAC_OVERRIDE) | (1u << CAP_DAC_READ_SEARCH);
    if (enabled)
        data[0].effective |= bits & data[0].permitted;
    else
        data[0].effective &= ~bits;
    return syscall(SYS_capset, &header, data) == 0;
}

} // namespace

FileFailures::ObeyPermissions::ObeyPermissions() {
    if (geteuid() == 0)
        m_dropped = setDacOverride(false);
}

FileFailures::ObeyPermissions::~ObeyPermissions() {
    if (m_dropped)
        setDacOverride(true);
}

FileFailures::LimitFileSize::LimitFileSize(long bytes) {
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    m_previous = limit.rlim_cur;
    m_previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    limit.rlim_cur = rlim_t(bytes);
    setrlimit(RLIMIT_FSIZE, &limit);
}

FileFailures::LimitFileSize::~LimitFileSize() {
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = m_previous;
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, m_previousHandler);
}
