#pragma once

#include <QLocale>
#include <QString>

// Money typed into a text field: shown and read with the user's number format. Text that is not a
// number reads as 0, so a mistyped amount never blocks a sheet.
class AmountText {
public:
    // Two decimals, or as many more as the value needs to read back unchanged; no grouping.
    static QString text(float value, const QLocale &locale = QLocale());
    // The text as a number of the locale, else as a plain "12.5"; 0 when it is neither.
    static float value(const QString &text, const QLocale &locale = QLocale());
};
