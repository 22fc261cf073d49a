#pragma once

#include <QDate>

// Pins "today" and the first day of the week while a query runs over a list, so that every item
// is measured against the same day and the clock and the preferences are read once, not once per
// item. Scopes nest: an inner one keeps what the outer one pinned. One thread only.
class DayScope {
public:
    DayScope();
    ~DayScope();
    DayScope(const DayScope &) = delete;
    DayScope &operator=(const DayScope &) = delete;

    // The local date of Clock::now(), or the pinned one inside a scope.
    static QDate today();
    // The "firstDayOfWeek" preference (Sunday 0 .. Saturday 6), or the pinned one.
    static int firstDayOfWeek();
    // Whether the day lies in the week of today that starts on the first day of the week.
    static bool isInThisWeek(QDate day);

private:
    bool m_outermost = false;
};
