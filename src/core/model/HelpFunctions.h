#pragma once

#include <QColor>
#include <QDateTime>
#include <QImage>
#include <QString>

// The split form of a duration, used only for rounding.
struct HFTime {
    quint32 hours = 0;
    quint32 minutes = 0;
};

// Stateless time and calendar helpers shared by the whole program.
class HelpFunctions {
public:
    // The moment of a stored date text and stored time text, or an invalid moment when the
    // combined text does not parse.
    static QDateTime makeDateFromDateString(QStringView dateString, QStringView timeString);
    // Midnight of the same calendar day, local time (or the day's first moment when the clocks
    // skip midnight).
    static QDateTime removeTimeComponentFromDate(const QDateTime &date);
    // The moment a local date and clock time name. A time the clocks skip that day (02:30 when
    // they go forward at 02:00) gives the first moment after the skip, so that every day and time
    // has a moment. Every moment made from a date and a time of day comes from here: counting
    // seconds from midnight would be an hour off on the days the clocks change.
    static QDateTime localMoment(QDate date, QTime time);

    // Rounds the minutes of a time to a multiple of roundTo within the hour. roundType: 0 nearest
    // (ties up), 1 up, 2 down, anything else unchanged. A result of exactly 60 carries into the
    // hours; no other normalisation happens (50 rounded up to 45 stays 90 minutes). roundTo must
    // not be 0.
    static HFTime roundTime(HFTime time, int roundType, int roundTo);
    static HFTime calculateTimeFromDuration(int minutes);
    static int calculateDurationFromTime(HFTime time);
    // Rounds a duration in minutes with the rule above (split, round, join).
    static int roundDuration(int minutes, int roundType, int roundTo);

    // True when the moment lies in the current week, which starts on the "firstDayOfWeek"
    // preference (0 Sunday .. 6 Saturday).
    static bool isDateInThisWeek(const QDateTime &date);
    static bool isDateInThisWeek(const QDateTime &date, int firstDayOfWeek);

    // A web address: parses as a URL and contains "://".
    static bool isStringURL(const QString &text);

    // The operating-system minor version; this system cannot tell and answers -1.
    static int getOSXVersion();

    // A 25 x 16 swatch filled with the colour and outlined in black; an invalid colour stands for
    // the "projectColor" preference.
    static QImage makeFilledRectImageWithColor(const QColor &color);

    // The folder of customers, tags, filters and user styles: ~/.local/share/Hourfold3.
    static QString applicationSupportFolder();
};
