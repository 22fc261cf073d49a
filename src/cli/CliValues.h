#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <optional>

// The values typed on the command line, read the same under every locale: days "DD.MM.YYYY",
// durations "HH:MM", moments "DD.MM.YYYY HH:MM" (local time) and numbers with a decimal point.
class CliValues {
public:
    static std::optional<QDate> day(const QString &text);
    // Minutes; the minutes part is below 60, the hours part has any number of digits.
    static std::optional<int> duration(const QString &text);
    static std::optional<QDateTime> moment(const QString &text);
    // A finite number.
    static std::optional<double> number(const QString &text);
    static std::optional<int> integer(const QString &text, int lowest, int highest);
};
