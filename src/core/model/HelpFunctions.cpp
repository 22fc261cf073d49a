#include "HelpFunctions.h"

#include "../platform/Preferences.h"
#include "Clock.h"
#include "StoredForms.h"

#include <QStandardPaths>
#include <QUrl>
#include <cstdlib>

QDateTime HelpFunctions::makeDateFromDateString(QStringView dateString, QStringView timeString) {
    const QDate date = StoredForms::parseDate(dateString);
    const int minutes = StoredForms::parseTime(timeString);
    if (!date.isValid() || minutes < 0)
        return {};
    return localMoment(date, QTime(minutes / 60, minutes % 60));
}

QDateTime HelpFunctions::removeTimeComponentFromDate(const QDateTime &date) {
    return localMoment(date.toLocalTime().date(), QTime(0, 0));
}

QDateTime HelpFunctions::localMoment(QDate date, QTime time) {
    const QDateTime moment(date, time);
    if (moment.isValid() || !date.isValid() || !time.isValid())
        return moment;
    // In the gap the clocks skip: the first whole minute after it, on this day or the next.
    for (int minute = time.hour() * 60 + time.minute() + 1; minute < 24 * 60; ++minute) {
        const QDateTime next(date, QTime(minute / 60, minute % 60));
        if (next.isValid())
            return next;
    }
    return localMoment(date.addDays(1), QTime(0, 0));
}

HFTime HelpFunctions::roundTime(HFTime time, int roundType, int roundTo) {
    const qint64 m = time.minutes;
    const qint64 s = roundTo;
    const qint64 down = (m / s) * s;
    const qint64 up = down + s;
    const qint64 dDown = std::llabs(m - down);
    const qint64 dUp = std::llabs(m - up);
    qint64 result = m;
    switch (roundType) {
    case 0:
        result = dDown < dUp ? down : up;
        break;
    case 1:
        result = dDown > 0 ? up : m;
        break;
    case 2:
        result = dUp > 0 ? down : m;
        break;
    default:
        break;
    }
    HFTime rounded{time.hours, quint32(result)};
    if (result == 60) {
        rounded.hours += 1;
        rounded.minutes = 0;
    }
    return rounded;
}

HFTime HelpFunctions::calculateTimeFromDuration(int minutes) {
    return HFTime{quint32(minutes / 60), quint32(minutes % 60)};
}

int HelpFunctions::calculateDurationFromTime(HFTime time) {
    return int(time.hours * 60u + time.minutes);
}

int HelpFunctions::roundDuration(int minutes, int roundType, int roundTo) {
    return calculateDurationFromTime(
        roundTime(calculateTimeFromDuration(minutes), roundType, roundTo));
}

bool HelpFunctions::isDateInThisWeek(const QDateTime &date) {
    return isDateInThisWeek(date, Preferences::shared().integerForKey(u"firstDayOfWeek"));
}

bool HelpFunctions::isDateInThisWeek(const QDateTime &date, int firstDayOfWeek) {
    if (!date.isValid())
        return false;
    const QDateTime today = removeTimeComponentFromDate(Clock::now());
    // Qt counts Monday 1 .. Sunday 7; the preference counts Sunday 0 .. Saturday 6.
    const int dayOfWeek = today.date().dayOfWeek() % 7;
    int back = dayOfWeek - firstDayOfWeek;
    if (back < 0)
        back += 7;
    const QDateTime start = localMoment(today.date().addDays(-back), QTime(0, 0));
    // 6 days, 23 hours, 59 minutes and 59 seconds on the calendar: the last second of the week's
    // last day, also when the clocks change during the week (adding 86399 real seconds to its
    // midnight would end an hour early or late).
    const QDateTime end = localMoment(start.date().addDays(6), QTime(23, 59, 59));
    return start.msecsTo(date) >= 0 && date.msecsTo(end) >= 0;
}

bool HelpFunctions::isStringURL(const QString &text) {
    return QUrl(text, QUrl::StrictMode).isValid() && text.contains(u"://");
}

int HelpFunctions::getOSXVersion() {
    return -1;
}

QImage HelpFunctions::makeFilledRectImageWithColor(const QColor &color) {
    const QColor fill =
        color.isValid() ? color : Preferences::shared().colorForKey(u"projectColor");
    QImage image(25, 16, QImage::Format_ARGB32);
    const QRgb inside = fill.rgba();
    const QRgb outline = qRgba(0, 0, 0, 255);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool edge = x == 0 || y == 0 || x == image.width() - 1 || y == image.height() - 1;
            image.setPixel(x, y, edge ? outline : inside);
        }
    }
    return image;
}

QString HelpFunctions::applicationSupportFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/Hourfold3");
}
