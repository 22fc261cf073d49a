#pragma once

#include <QtGlobal>
#include <optional>

// How long the user has not touched keyboard or mouse. The application asks the desktop;
// tests answer themselves.
class IdleTime {
public:
    virtual ~IdleTime() = default;
    // None when no source of idle time is there.
    virtual std::optional<qint64> idleMilliseconds() = 0;
};
