#include "StoredForms.h"

#include <charconv>
#include <cmath>

namespace {

int digitAt(QStringView text, qsizetype i) {
    const char16_t c = text[i].unicode();
    return (c >= u'0' && c <= u'9') ? int(c - u'0') : -1;
}

// Reads 1..maxDigits digits from text at pos; returns the value or -1.
int readNumber(QStringView text, qsizetype &pos, int minDigits, int maxDigits) {
    int value = 0;
    int count = 0;
    while (pos < text.size() && count < maxDigits) {
        const int d = digitAt(text, pos);
        if (d < 0)
            break;
        value = value * 10 + d;
        ++pos;
        ++count;
    }
    return count >= minDigits ? value : -1;
}

bool expect(QStringView text, qsizetype &pos, char16_t c) {
    if (pos < text.size() && text[pos].unicode() == c) {
        ++pos;
        return true;
    }
    return false;
}

void appendPadded(QString &out, int value, int width) {
    QString digits = QString::number(value);
    if (digits.size() < width)
        out += QString(width - digits.size(), u'0');
    out += digits;
}

// The Latin-1 bytes of a text as QStringView::toLatin1() makes them ('?' for a character beyond
// Latin-1), in [begin, end): in the buffer when they fit, as numbers do, without allocating; else
// in spill.
void latin1Bytes(QStringView text, char (&buffer)[64], QByteArray &spill, const char *&begin,
                 const char *&end) {
    if (text.size() > qsizetype(sizeof buffer)) {
        spill = text.toLatin1();
        begin = spill.constData();
        end = begin + spill.size();
        return;
    }
    char *out = buffer;
    for (const QChar c : text)
        *out++ = c.unicode() > 0xFF ? '?' : char(c.unicode());
    begin = buffer;
    end = out;
}

struct MomentParts {
    QDate date;
    QTime time;
    int offsetSeconds = 0;
};

// The fields of "2008-03-07 10:15:00 +0100"; surrounding white space is allowed.
std::optional<MomentParts> parseMomentParts(QStringView text) {
    text = text.trimmed();
    qsizetype pos = 0;
    const int year = readNumber(text, pos, 4, 4);
    if (year < 0 || !expect(text, pos, u'-'))
        return std::nullopt;
    const int month = readNumber(text, pos, 1, 2);
    if (month < 0 || !expect(text, pos, u'-'))
        return std::nullopt;
    const int day = readNumber(text, pos, 1, 2);
    if (day < 0 || !expect(text, pos, u' '))
        return std::nullopt;
    const int hour = readNumber(text, pos, 1, 2);
    if (hour < 0 || !expect(text, pos, u':'))
        return std::nullopt;
    const int minute = readNumber(text, pos, 2, 2);
    if (minute < 0 || !expect(text, pos, u':'))
        return std::nullopt;
    const int second = readNumber(text, pos, 2, 2);
    if (second < 0 || !expect(text, pos, u' ') || pos >= text.size())
        return std::nullopt;
    const char16_t sign = text[pos].unicode();
    if (sign != u'+' && sign != u'-')
        return std::nullopt;
    ++pos;
    const int offset = readNumber(text, pos, 4, 4);
    if (offset < 0 || pos != text.size())
        return std::nullopt;
    const QDate date(year, month, day);
    const QTime time(hour, minute, second);
    if (!date.isValid() || !time.isValid() || offset % 100 > 59)
        return std::nullopt;
    const int offsetSeconds = (offset / 100 * 3600 + offset % 100 * 60) * (sign == u'-' ? -1 : 1);
    return MomentParts{date, time, offsetSeconds};
}

} // namespace

QDate StoredForms::parseDate(QStringView text) {
    qsizetype pos = 0;
    const int day = readNumber(text, pos, 1, 2);
    if (day < 0 || !expect(text, pos, u'.'))
        return {};
    const int month = readNumber(text, pos, 1, 2);
    if (month < 0 || !expect(text, pos, u'.'))
        return {};
    const int year = readNumber(text, pos, 4, 4);
    if (year < 0 || pos != text.size())
        return {};
    return QDate(year, month, day);
}

int StoredForms::parseTime(QStringView text) {
    qsizetype pos = 0;
    const int hour = readNumber(text, pos, 1, 2);
    if (hour < 0 || !expect(text, pos, u':'))
        return -1;
    const int minute = readNumber(text, pos, 2, 2);
    if (minute < 0 || pos != text.size() || hour > 23 || minute > 59)
        return -1;
    return hour * 60 + minute;
}

QString StoredForms::dateText(QDate date) {
    QString out;
    out.reserve(10);
    appendPadded(out, date.day(), 2);
    out += u'.';
    appendPadded(out, date.month(), 2);
    out += u'.';
    appendPadded(out, date.year(), 4);
    return out;
}

QString StoredForms::timeText(int hour, int minute) {
    QString out;
    out.reserve(5);
    appendPadded(out, hour, 2);
    out += u':';
    appendPadded(out, minute, 2);
    return out;
}

QString StoredForms::timeText(QTime time) {
    return timeText(time.hour(), time.minute());
}

QString StoredForms::durationText(int minutes) {
    // printf("%02d:%02d") of truncating division: -90 gives "-1:-30".
    const auto part = [](int v) -> QString {
        if (v >= 0 && v < 10)
            return QStringLiteral("0") + QString::number(v);
        return QString::number(v);
    };
    return part(minutes / 60) + u':' + part(minutes % 60);
}

QString StoredForms::momentText(const QDateTime &moment) {
    if (!moment.isValid())
        return {};
    const QDateTime local = moment.toLocalTime();
    const QDate d = local.date();
    const QTime t = local.time();
    QString out;
    out.reserve(25);
    appendPadded(out, d.year(), 4);
    out += u'-';
    appendPadded(out, d.month(), 2);
    out += u'-';
    appendPadded(out, d.day(), 2);
    out += u' ';
    appendPadded(out, t.hour(), 2);
    out += u':';
    appendPadded(out, t.minute(), 2);
    out += u':';
    appendPadded(out, t.second(), 2);
    const int offsetMinutes = local.offsetFromUtc() / 60;
    out += offsetMinutes < 0 ? u" -" : u" +";
    const int absOffset = std::abs(offsetMinutes);
    appendPadded(out, absOffset / 60, 2);
    appendPadded(out, absOffset % 60, 2);
    return out;
}

QDateTime StoredForms::parseMoment(QStringView text) {
    const std::optional<MomentParts> parts = parseMomentParts(text);
    if (!parts)
        return {};
    return QDateTime(parts->date, parts->time, Qt::OffsetFromUTC, parts->offsetSeconds)
        .toLocalTime();
}

std::optional<qint64> StoredForms::parseMomentSecs(QStringView text) {
    const std::optional<MomentParts> parts = parseMomentParts(text);
    if (!parts)
        return std::nullopt;
    constexpr qint64 epochJulianDay = 2440588; // 1970-01-01
    return (parts->date.toJulianDay() - epochJulianDay) * 86400 +
           parts->time.msecsSinceStartOfDay() / 1000 - parts->offsetSeconds;
}

std::optional<int> StoredForms::parseInt(QStringView text) {
    char buffer[64];
    QByteArray spill;
    const char *begin = nullptr;
    const char *end = nullptr;
    latin1Bytes(text.trimmed(), buffer, spill, begin, end);
    if (begin != end && *begin == '+')
        ++begin;
    int value = 0;
    const auto [ptr, ec] = std::from_chars(begin, end, value);
    if (ec != std::errc() || ptr != end || begin == end)
        return std::nullopt;
    return value;
}

std::optional<float> StoredForms::parseFloat(QStringView text) {
    char buffer[64];
    QByteArray spill;
    const char *begin = nullptr;
    const char *end = nullptr;
    latin1Bytes(text.trimmed(), buffer, spill, begin, end);
    if (begin != end && *begin == '+')
        ++begin;
    float value = 0;
    const auto [ptr, ec] = std::from_chars(begin, end, value);
    if (ec != std::errc() || ptr != end || begin == end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

QString StoredForms::floatText(float value) {
    char buffer[64];
    // Fixed notation for the usual magnitudes, so that 10000000 never reads as 1e+07.
    auto result = std::abs(value) < 1e15f ? std::to_chars(buffer, buffer + sizeof buffer, value,
                                                          std::chars_format::fixed)
                                          : std::to_chars(buffer, buffer + sizeof buffer, value);
    return QString::fromLatin1(buffer, result.ptr - buffer);
}

QString StoredForms::fixedText(double value, int decimals) {
    char buffer[400];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
    return QString::fromLatin1(buffer, result.ptr - buffer);
}
