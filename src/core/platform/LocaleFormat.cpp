#include "LocaleFormat.h"

#include "Preferences.h"

#include <array>
#include <memory>
#include <unicode/datefmt.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

namespace {

struct DateFormatters {
    QString localeName;
    std::array<std::unique_ptr<icu::DateFormat>, 4> byStyle;
};

DateFormatters &formatters() {
    static DateFormatters instance;
    return instance;
}

QString &localeOverride() {
    static QString name;
    return name;
}

icu::DateFormat *formatterFor(int style) {
    DateFormatters &f = formatters();
    const QString locale = LocaleFormat::dateLocale();
    if (f.localeName != locale) {
        for (auto &formatter : f.byStyle)
            formatter.reset();
        f.localeName = locale;
    }
    if (style < 1 || style > 4)
        style = 2;
    auto &slot = f.byStyle[style - 1];
    if (!slot) {
        static const icu::DateFormat::EStyle icuStyles[4] = {
            icu::DateFormat::kShort, icu::DateFormat::kMedium, icu::DateFormat::kLong,
            icu::DateFormat::kFull};
        slot.reset(icu::DateFormat::createDateInstance(icuStyles[style - 1],
                                                       icu::Locale(locale.toLatin1().constData())));
        if (slot)
            slot->adoptTimeZone(icu::TimeZone::createTimeZone("UTC"));
    }
    return slot.get();
}

} // namespace

QString LocaleFormat::localeNameFor(const char *categoryVariable) {
    QByteArray name = qgetenv("LC_ALL");
    if (name.isEmpty())
        name = qgetenv(categoryVariable);
    if (name.isEmpty())
        name = qgetenv("LANG");
    if (name.isEmpty())
        return QStringLiteral("C");
    const qsizetype cut = name.indexOf('.') >= 0 ? name.indexOf('.') : name.indexOf('@');
    if (cut >= 0)
        name.truncate(cut);
    return QString::fromLatin1(name);
}

QString LocaleFormat::dateLocale() {
    if (!localeOverride().isEmpty())
        return localeOverride();
    const QString name = localeNameFor("LC_TIME");
    return (name == u"C" || name == u"POSIX") ? QStringLiteral("en_US_POSIX") : name;
}

void LocaleFormat::setDateLocale(const QString &name) {
    localeOverride() = name;
}

QString LocaleFormat::formatDate(QDate date, int style) {
    if (!date.isValid())
        return {};
    icu::DateFormat *formatter = formatterFor(style);
    if (!formatter)
        return date.toString(Qt::ISODate);
    const UDate when = double(QDateTime(date, QTime(12, 0), Qt::UTC).toMSecsSinceEpoch());
    icu::UnicodeString out;
    formatter->format(when, out);
    return QString(reinterpret_cast<const QChar *>(out.getBuffer()), out.length());
}

QString LocaleFormat::formatDateInListStyle(QDate date) {
    return formatDate(date, Preferences::shared().integerForKey(u"listDateFormat"));
}

QString LocaleFormat::pauseMomentPattern() {
    std::unique_ptr<icu::DateFormat> format(
        icu::DateFormat::createDateTimeInstance(icu::DateFormat::kShort, icu::DateFormat::kMedium,
                                                icu::Locale(dateLocale().toLatin1().constData())));
    auto *simple = dynamic_cast<icu::SimpleDateFormat *>(format.get());
    if (!simple)
        return QStringLiteral("dd.MM.yy HH:mm");
    icu::UnicodeString pattern;
    simple->toPattern(pattern);
    QString text(reinterpret_cast<const QChar *>(pattern.getBuffer()), pattern.length());
    const qsizetype seconds = text.indexOf(QStringLiteral("ss"));
    if (seconds >= 0) {
        const qsizetype from = seconds > 0 ? seconds - 1 : 0;
        text.remove(from, seconds + 2 - from);
    }
    return text;
}

namespace {

std::unique_ptr<icu::SimpleDateFormat> pauseFormat() {
    UErrorCode status = U_ZERO_ERROR;
    const QString pattern = LocaleFormat::pauseMomentPattern();
    auto format = std::make_unique<icu::SimpleDateFormat>(
        icu::UnicodeString(reinterpret_cast<const UChar *>(pattern.utf16()),
                           int32_t(pattern.size())),
        icu::Locale(LocaleFormat::dateLocale().toLatin1().constData()), status);
    if (U_FAILURE(status))
        return nullptr;
    format->setLenient(false);
    return format;
}

} // namespace

QString LocaleFormat::formatPauseMoment(const QDateTime &moment) {
    const auto format = pauseFormat();
    if (!format || !moment.isValid())
        return {};
    icu::UnicodeString out;
    format->format(double(moment.toMSecsSinceEpoch()), out);
    return QString(reinterpret_cast<const QChar *>(out.getBuffer()), out.length());
}

QDateTime LocaleFormat::parsePauseMoment(const QString &text) {
    const auto format = pauseFormat();
    if (!format)
        return {};
    const icu::UnicodeString input(reinterpret_cast<const UChar *>(text.utf16()),
                                   int32_t(text.size()));
    icu::ParsePosition position(0);
    const UDate when = format->parse(input, position);
    if (position.getErrorIndex() >= 0 || position.getIndex() != input.length())
        return {};
    return QDateTime::fromMSecsSinceEpoch(qint64(when));
}
