#pragma once

#include <QDateTime>

// The one source of "now" for the whole program. Tests fix it to any instant so that running
// timers, "this week" and reminders are checked without sleeping.
class Clock {
public:
    // The current moment in local time (millisecond precision).
    static QDateTime now();
    // The current moment truncated to whole seconds.
    static QDateTime nowToTheSecond();
    static qint64 nowSecsSinceEpoch();

    static void setNow(const QDateTime &fixed);
    static void advance(qint64 seconds);
    static void reset();
};
