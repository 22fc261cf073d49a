#pragma once

// The count shown on the program's launcher (dock, task bar). The application sends it over the
// session bus; tests record it.
class LauncherEntry {
public:
    virtual ~LauncherEntry() = default;
    virtual void setCount(int count, bool countVisible) = 0;
};
