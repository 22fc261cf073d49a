#include "CliValues.h"

#include "model/HelpFunctions.h"
#include "model/StoredForms.h"

#include <QRegularExpression>
#include <cmath>

using namespace Qt::StringLiterals;

std::optional<QDate> CliValues::day(const QString &text) {
    static const QRegularExpression form(u"^\\d{2}\\.\\d{2}\\.\\d{4}$"_s);
    if (!form.match(text).hasMatch())
        return std::nullopt;
    const QDate date = StoredForms::parseDate(text);
    return date.isValid() ? std::optional(date) : std::nullopt;
}

std::optional<int> CliValues::duration(const QString &text) {
    static const QRegularExpression form(u"^(\\d{1,5}):([0-5]\\d)$"_s);
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    return match.captured(1).toInt() * 60 + match.captured(2).toInt();
}

std::optional<QDateTime> CliValues::moment(const QString &text) {
    static const QRegularExpression form(u"^(\\S+) (\\d{2}:\\d{2})$"_s);
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const std::optional<QDate> date = day(match.captured(1));
    const int minutes = StoredForms::parseTime(match.captured(2));
    if (!date || minutes < 0)
        return std::nullopt;
    return HelpFunctions::localMoment(*date, QTime(minutes / 60, minutes % 60));
}

std::optional<double> CliValues::number(const QString &text) {
    static const QRegularExpression form(u"^[-+]?(\\d+\\.?\\d*|\\.\\d+)$"_s);
    if (!form.match(text).hasMatch())
        return std::nullopt;
    const double value = text.toDouble();
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<int> CliValues::integer(const QString &text, int lowest, int highest) {
    const std::optional<int> value = StoredForms::parseInt(text);
    if (!value || *value < lowest || *value > highest || text.trimmed() != text)
        return std::nullopt;
    return value;
}
