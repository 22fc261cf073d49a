#include "LocalTimeFormat.h"

#include "StoredForms.h"

#include "../Logging.h"
#include <clocale>
#include <cstring>
#include <ctime>
#include <langinfo.h>

namespace {

struct State {
    bool determined = false;
    QString format = QStringLiteral("%H:%M");
    QByteArray formatBytes = "%H:%M";
    locale_t locale = nullptr;
    bool utf8 = true;
};

State &state() {
    static State s;
    return s;
}

QByteArray lcTimeLocaleName() {
    for (const char *variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const QByteArray value = qgetenv(variable);
        if (!value.isEmpty())
            return value;
    }
    return QByteArrayLiteral("C");
}

void useLocale(const QByteArray &name) {
    State &s = state();
    if (s.locale)
        freelocale(s.locale);
    s.locale = newlocale(LC_TIME_MASK | LC_CTYPE_MASK, name.constData(), nullptr);
    s.utf8 = !s.locale || std::strcmp(nl_langinfo_l(CODESET, s.locale), "UTF-8") == 0;
}

QString localeText(nl_item item, const QString &fallback) {
    const State &s = state();
    if (!s.locale)
        return fallback;
    const char *value = nl_langinfo_l(item, s.locale);
    const QString text = s.utf8 ? QString::fromUtf8(value) : QString::fromLatin1(value);
    return text.isEmpty() ? fallback : text;
}

void setFormatText(const QString &format) {
    state().format = format;
    state().formatBytes = format.toUtf8();
}

} // namespace

QString LocalTimeFormat::deriveFormat(const QString &platformFormat,
                                      const QString &twelveHourFormat) {
    QString format = platformFormat;
    format.replace(QStringLiteral("%T"), QStringLiteral("%H:%M:%S"));
    format.replace(QStringLiteral("%R"), QStringLiteral("%H:%M"));
    format.replace(QStringLiteral("%r"),
                   twelveHourFormat.isEmpty() ? QStringLiteral("%I:%M:%S %p") : twelveHourFormat);
    const qsizetype seconds = format.indexOf(QStringLiteral("%S"));
    if (seconds >= 0) {
        const qsizetype from = seconds > 0 ? seconds - 1 : 0;
        format.remove(from, seconds + 2 - from);
    }
    for (const QString &cut : {QStringLiteral(" | %b %e"), QStringLiteral(" | %B %e")}) {
        const qsizetype at = format.indexOf(cut);
        if (at >= 0)
            format.truncate(at);
    }
    return format;
}

void LocalTimeFormat::determine() {
    if (state().determined)
        return;
    state().determined = true;
    const QByteArray name = lcTimeLocaleName();
    useLocale(name);
    if (!state().locale) {
        qCInfo(lcLocale) << "time locale" << name << "is not installed; using %H:%M";
        useLocale(QByteArrayLiteral("C"));
        setFormatText(QStringLiteral("%H:%M"));
        return;
    }
    const auto text = [](nl_item item) {
        const char *value = nl_langinfo_l(item, state().locale);
        return state().utf8 ? QString::fromUtf8(value) : QString::fromLatin1(value);
    };
    QString derived = deriveFormat(text(T_FMT), text(T_FMT_AMPM));
    if (derived.trimmed().isEmpty())
        derived = QStringLiteral("%H:%M");
    setFormatText(derived);
}

bool LocalTimeFormat::isDetermined() {
    return state().determined;
}

QString LocalTimeFormat::format() {
    determine();
    return state().format;
}

QString LocalTimeFormat::amString() {
    determine();
    return localeText(AM_STR, QStringLiteral("AM"));
}

QString LocalTimeFormat::pmString() {
    determine();
    return localeText(PM_STR, QStringLiteral("PM"));
}

QString LocalTimeFormat::localisedTimeString(QStringView storedTime) {
    determine();
    const int minutes = StoredForms::parseTime(storedTime);
    if (minutes < 0)
        return {};
    std::tm tm{};
    tm.tm_hour = minutes / 60;
    tm.tm_min = minutes % 60;
    tm.tm_mday = 1;
    tm.tm_year = 100;
    char buffer[128];
    const State &s = state();
    const size_t length =
        s.locale ? strftime_l(buffer, sizeof buffer, s.formatBytes.constData(), &tm, s.locale)
                 : strftime(buffer, sizeof buffer, s.formatBytes.constData(), &tm);
    return s.utf8 ? QString::fromUtf8(buffer, qsizetype(length))
                  : QString::fromLatin1(buffer, qsizetype(length));
}

void LocalTimeFormat::setFormat(const QString &format, const QString &localeName) {
    state().determined = true;
    useLocale(localeName.toLatin1());
    if (!state().locale)
        useLocale(QByteArrayLiteral("C"));
    setFormatText(format);
}
