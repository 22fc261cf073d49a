#pragma once

#include <QString>

// The process-wide format of clock times in display texts, taken once from the C library's time
// format of the LC_TIME locale with the seconds removed (for example "%H:%M" or "%I:%M %p").
class LocalTimeFormat {
public:
    // The derivation on its own: %T, %R and %r expanded (%r to twelveHourFormat), then "%S" cut
    // out with the one character before it, then everything from " | %b %e" or " | %B %e" on.
    static QString deriveFormat(const QString &platformFormat, const QString &twelveHourFormat);

    // Fills the format once per process; later calls do nothing. Where the LC_TIME locale is not
    // installed, "%H:%M" stands in.
    static void determine();
    static bool isDetermined();
    static QString format();
    // The morning and afternoon designations of the LC_TIME locale ("AM", "PM"); a locale that has
    // none (a 24-hour one such as de_DE) answers "AM" and "PM".
    static QString amString();
    static QString pmString();

    // A stored time "HH:mm" in the display format; empty when it does not parse.
    static QString localisedTimeString(QStringView storedTime);

    // Puts a given format and C-library locale in place (tests, and a locale change at run time).
    static void setFormat(const QString &format, const QString &localeName);
};
