#pragma once

#include <QDateTime>

// Calendar comparisons used by the quick filters and date criteria.
class CalendarDateExtensions {
public:
    // Both moments fall in the same year of the common era (local time).
    static bool inSameYearAsDate(const QDateTime &date, const QDateTime &other);
    // Both moments fall in the same month of the year. The year is deliberately not compared:
    // March 2007 and March 2008 count as the same month.
    static bool inSameMonthAsDate(const QDateTime &date, const QDateTime &other);
};
