#include "CalendarDateExtensions.h"

bool CalendarDateExtensions::inSameYearAsDate(const QDateTime &date, const QDateTime &other) {
    return date.isValid() && other.isValid() &&
           date.toLocalTime().date().year() == other.toLocalTime().date().year();
}

bool CalendarDateExtensions::inSameMonthAsDate(const QDateTime &date, const QDateTime &other) {
    return date.isValid() && other.isValid() &&
           date.toLocalTime().date().month() == other.toLocalTime().date().month();
}
