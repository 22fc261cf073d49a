#include "editors/AmountText.h"

#include <cmath>

QString AmountText::text(float value, const QLocale &locale) {
    QLocale plain = locale;
    plain.setNumberOptions(QLocale::OmitGroupSeparator);
    // A float holds about nine significant digits; the first precision that reads back as the
    // same float is shown, so opening and accepting a sheet never changes an amount.
    QString shown;
    for (int decimals = 2; decimals <= 9; ++decimals) {
        shown = plain.toString(double(value), 'f', decimals);
        if (plain.toFloat(shown) == value)
            break;
    }
    return shown;
}

float AmountText::value(const QString &text, const QLocale &locale) {
    const QString trimmed = text.trimmed();
    // "nan" and "inf" are numbers to the parser, but no amount of money.
    bool ok = false;
    const float number = locale.toFloat(trimmed, &ok);
    if (ok)
        return std::isfinite(number) ? number : 0.0f;
    const float plain = QLocale::c().toFloat(trimmed, &ok);
    return ok && std::isfinite(plain) ? plain : 0.0f;
}
