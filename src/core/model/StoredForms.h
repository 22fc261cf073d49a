#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringView>
#include <optional>

// The fixed text forms in which dates, times and numbers are stored. None of them depends on the
// user's locale: the project file, CSV and plists read the same everywhere.
class StoredForms {
public:
    // "dd.MM.yyyy"; also accepts one-digit day and month. Invalid for anything else.
    static QDate parseDate(QStringView text);
    // "HH:mm" as minutes since midnight (0..1439); also accepts a one-digit hour. -1 when invalid.
    static int parseTime(QStringView text);
    static QString dateText(QDate date);           // "%02d.%02d.%04d"
    static QString timeText(int hour, int minute); // "%02d:%02d"
    static QString timeText(QTime time);

    // "%02d:%02d" of minutes / 60 and minutes % 60, truncating toward zero.
    static QString durationText(int minutes);

    // The calendar-date text form of a moment: "2008-03-07 10:15:00 +0100", local time with the
    // offset written by hand (Qt's formats can only write the zone's abbreviation).
    static QString momentText(const QDateTime &moment);
    // Parses the form above; the result is in local time. Invalid when the text does not parse.
    static QDateTime parseMoment(QStringView text);
    // The same moment as seconds since the epoch, worked out from the written offset alone: no
    // time-zone lookup, so reading many moments stays cheap. None when the text does not parse.
    static std::optional<qint64> parseMomentSecs(QStringView text);

    // Whole-text numbers: surrounding white space is allowed, anything else is not.
    static std::optional<int> parseInt(QStringView text);
    static std::optional<float> parseFloat(QStringView text);

    // Shortest text that reads back as the same float ("45.5", "0", "10000000").
    static QString floatText(float value);
    // Six decimals, as printf's "%f" of the value widened to double ("12.500000").
    static QString fixedText(double value, int decimals = 6);
};
