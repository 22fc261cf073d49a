#include "ModelFixtures.h"

#include "model/CalendarDateExtensions.h"
#include "model/HelpFunctions.h"
#include "model/LocalTimeFormat.h"
#include "platform/CurrencyFormatter.h"
#include "platform/LocaleFormat.h"

#include <QTest>
#include <ctime>

class TestTimeHelpers : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void cleanup() { Clock::reset(); }

    void processTimeFormatComesFromTimeLocale() {
        // Runs first: LANG is en_US.UTF-8, whose clock format %r loses its seconds.
        QCOMPARE(LocalTimeFormat::format(), u"%I:%M %p"_s);
        QCOMPARE(LocalTimeFormat::localisedTimeString(u"13:05"), u"01:05 PM"_s);
    }

    void roundTime_data() {
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("step");
        QTest::addColumn<uint>("hours");
        QTest::addColumn<uint>("roundedMinutes");
        QTest::addColumn<int>("duration");
        QTest::newRow("67 nearest 15 goes down") << 67 << 0 << 15 << 1u << 0u << 60;
        QTest::newRow("68 nearest 15 goes up") << 68 << 0 << 15 << 1u << 15u << 75;
        QTest::newRow("tie rounds up") << 45 << 0 << 30 << 1u << 0u << 60;
        QTest::newRow("53 nearest 15 carries into the hour") << 53 << 0 << 15 << 1u << 0u << 60;
        QTest::newRow("67 up to 10") << 67 << 1 << 10 << 1u << 10u << 70;
        QTest::newRow("up keeps a value on a step") << 90 << 1 << 15 << 1u << 30u << 90;
        QTest::newRow("0 up stays 0") << 0 << 1 << 15 << 0u << 0u << 0;
        QTest::newRow("50 up to 45 keeps 90 minutes") << 50 << 1 << 45 << 0u << 90u << 90;
        QTest::newRow("235 up to 10 carries") << 235 << 1 << 10 << 4u << 0u << 240;
        QTest::newRow("15 down to 15 stays") << 15 << 2 << 15 << 0u << 15u << 15;
        QTest::newRow("179 down to 30") << 179 << 2 << 30 << 2u << 30u << 150;
        QTest::newRow("unknown type leaves it") << 67 << 3 << 15 << 1u << 7u << 67;
    }
    void roundTime() {
        QFETCH(int, minutes);
        QFETCH(int, type);
        QFETCH(int, step);
        QFETCH(int, duration);
        const HFTime rounded =
            HelpFunctions::roundTime(HelpFunctions::calculateTimeFromDuration(minutes), type, step);
        QTEST(rounded.hours, "hours");
        QTEST(rounded.minutes, "roundedMinutes");
        QCOMPARE(HelpFunctions::calculateDurationFromTime(rounded), duration);
        QCOMPARE(HelpFunctions::roundDuration(minutes, type, step), duration);
    }

    void durationText_data() {
        QTest::addColumn<int>("minutes");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << 0 << u"00:00"_s;
        QTest::newRow("59") << 59 << u"00:59"_s;
        QTest::newRow("60") << 60 << u"01:00"_s;
        QTest::newRow("a day and an hour") << 1500 << u"25:00"_s;
        QTest::newRow("three-digit hours") << 6000 << u"100:00"_s;
        QTest::newRow("negative truncates per part") << -90 << u"-1:-30"_s;
        QTest::newRow("negative below an hour") << -5 << u"00:-5"_s;
    }
    void durationText() {
        QFETCH(int, minutes);
        QFETCH(QString, text);
        QCOMPARE(StoredForms::durationText(minutes), text);
        QCOMPARE(Entry::calculateMinutesFromString(text), minutes);
    }

    void oneDigitHourIsMisread() { QCOMPARE(Entry::calculateMinutesFromString(u"1:30"), 60); }

    void moments_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDateTime>("moment");
        QTest::addColumn<QString>("written");
        const QString winter = u"2008-03-07 10:15:09 +0100"_s;
        const QString summer = u"2008-07-01 00:00:00 +0200"_s;
        QTest::newRow("winter") << winter << at(u"07.03.2008 10:15:09"_s) << winter;
        QTest::newRow("summer") << summer << at(u"01.07.2008 00:00"_s) << summer;
        QTest::newRow("west of UTC")
            << u"2008-06-30 17:30:00 -0430"_s << at(u"01.07.2008 00:00"_s) << summer;
        QTest::newRow("no offset") << u"2008-03-07 10:15:00"_s << QDateTime() << QString();
        QTest::newRow("no seconds") << u"2008-03-07 10:15 +0100"_s << QDateTime() << QString();
    }
    void moments() {
        QFETCH(QString, text);
        QFETCH(QDateTime, moment);
        QCOMPARE(StoredForms::parseMoment(text), moment);
        QTEST(StoredForms::momentText(moment), "written");
    }

    // Every day and time of day has a moment, also on the days the clocks change; a time they skip
    // gives the first moment after it.
    void localMoments_data() {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<QString>("day");
        QTest::addColumn<QString>("time");
        QTest::addColumn<QString>("moment");   // in UTC
        QTest::addColumn<QString>("dayStart"); // in UTC
        const QByteArray berlin = "Europe/Berlin";
        const QByteArray saoPaulo = "America/Sao_Paulo";
        QTest::newRow("clocks forward, later that day")
            << berlin << u"30.03.2008"_s << u"10:07"_s << u"2008-03-30T08:07:00Z"_s
            << u"2008-03-29T23:00:00Z"_s;
        QTest::newRow("clocks forward, skipped time")
            << berlin << u"30.03.2008"_s << u"02:30"_s << u"2008-03-30T01:00:00Z"_s
            << u"2008-03-29T23:00:00Z"_s;
        QTest::newRow("clocks back, later that day")
            << berlin << u"26.10.2008"_s << u"09:07"_s << u"2008-10-26T08:07:00Z"_s
            << u"2008-10-25T22:00:00Z"_s;
        QTest::newRow("skipped midnight") << saoPaulo << u"04.11.2018"_s << u"00:00"_s
                                          << u"2018-11-04T03:00:00Z"_s << u"2018-11-04T03:00:00Z"_s;
        QTest::newRow("skipped midnight, later that day")
            << saoPaulo << u"04.11.2018"_s << u"10:00"_s << u"2018-11-04T12:00:00Z"_s
            << u"2018-11-04T03:00:00Z"_s;
    }
    void localMoments() {
        QFETCH(QByteArray, zone);
        QFETCH(QString, day);
        QFETCH(QString, time);
        const QByteArray testZone = qgetenv("TZ");
        qputenv("TZ", zone);
        tzset();
        const QDateTime moment = HelpFunctions::makeDateFromDateString(day, time);
        const QString inUtc = moment.toUTC().toString(Qt::ISODate);
        const QString dayStart =
            HelpFunctions::removeTimeComponentFromDate(moment).toUTC().toString(Qt::ISODate);
        qputenv("TZ", testZone);
        tzset();
        QTEST(inUtc, "moment");
        QTEST(dayStart, "dayStart");
    }

    void dateInThisWeek_data() {
        QTest::addColumn<QString>("now");
        QTest::addColumn<int>("firstDayOfWeek");
        QTest::addColumn<QString>("date");
        QTest::addColumn<bool>("inWeek");
        // 12.03.2008 is a Wednesday.
        const auto row = [](const char *name, int firstDay, const QString &date, bool inWeek,
                            const QString &now = u"12.03.2008 15:00"_s) {
            QTest::newRow(name) << now << firstDay << date << inWeek;
        };
        row("Sunday start", 0, u"09.03.2008 00:00:00"_s, true);
        row("before Sunday start", 0, u"08.03.2008 23:59:59"_s, false);
        row("last second", 0, u"15.03.2008 23:59:59"_s, true);
        row("after the last second", 0, u"16.03.2008 00:00:00"_s, false);
        row("Monday week, Sunday before", 1, u"09.03.2008 12:00"_s, false);
        row("Monday week, Sunday at end", 1, u"16.03.2008 23:59"_s, true);
        row("week starts today", 3, u"12.03.2008 00:00"_s, true);
        row("week starts today, day before", 3, u"11.03.2008 23:59"_s, false);
        row("week starts tomorrow", 4, u"06.03.2008 00:00"_s, true);
        row("week starts tomorrow, tomorrow", 4, u"13.03.2008 00:00"_s, false);
        row("no date", 0, QString(), false);
        // The clocks change on the last day of these weeks; the week still ends at Sunday midnight.
        row("clocks back, late Sunday", 1, u"26.10.2008 23:30"_s, true, u"22.10.2008 12:00"_s);
        row("clocks forward, early Monday", 1, u"31.03.2008 00:30"_s, false, u"26.03.2008 12:00"_s);
    }
    void dateInThisWeek() {
        QFETCH(QString, now);
        QFETCH(int, firstDayOfWeek);
        QFETCH(QString, date);
        TemporaryPreferences preferences;
        preferences->setObject(firstDayOfWeek, u"firstDayOfWeek");
        Clock::setNow(at(now));
        QTEST(HelpFunctions::isDateInThisWeek(at(date)), "inWeek");
    }

    void stringURL_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isURL");
        QTest::newRow("web address") << u"https://example.org/a?b=c"_s << true;
        QTest::newRow("file URL") << u"file:///home/user/a.pdf"_s << true;
        QTest::newRow("path") << u"/home/user/a.pdf"_s << false;
        QTest::newRow("URL without slashes") << u"mailto:user@example.org"_s << false;
        QTest::newRow("not a URL") << u"http://exa mple.org"_s << false;
    }
    void stringURL() {
        QFETCH(QString, text);
        QTEST(HelpFunctions::isStringURL(text), "isURL");
    }

    void sameYearAndMonth_data() {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<bool>("sameYear");
        QTest::addColumn<bool>("sameMonth");
        const auto row = [](const char *name, const QString &a, const QString &b, bool year,
                            bool month) { QTest::newRow(name) << a << b << year << month; };
        row("March of two years", u"07.03.2007 10:00"_s, u"31.03.2008 23:00"_s, false, true);
        row("two months of a year", u"31.03.2008 23:59"_s, u"01.04.2008 00:00"_s, true, false);
        row("New Year's Eve, local time", u"31.12.2008 23:30"_s, u"01.01.2009 00:30"_s, false,
            false);
    }
    void sameYearAndMonth() {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QTEST(CalendarDateExtensions::inSameYearAsDate(at(a), at(b)), "sameYear");
        QTEST(CalendarDateExtensions::inSameMonthAsDate(at(a), at(b)), "sameMonth");
    }

    void timeFormat_data() {
        QTest::addColumn<QString>("platform");
        QTest::addColumn<QString>("twelveHour");
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("shown");
        const auto row = [](const char *name, const QString &platform, const QString &twelveHour,
                            const QString &format, bool german, const QString &shown) {
            QTest::newRow(name) << platform << twelveHour << format
                                << (german ? u"de_DE.UTF-8"_s : u"en_US.UTF-8"_s) << shown;
        };
        const QString pm = u"01:05 PM"_s;
        row("seconds with colon", u"%H:%M:%S"_s, QString(), u"%H:%M"_s, true, u"13:05"_s);
        row("%T", u"%T"_s, QString(), u"%H:%M"_s, true, u"13:05"_s);
        row("%r from the locale", u"%r"_s, u"%I:%M:%S %p"_s, u"%I:%M %p"_s, false, pm);
        row("%r, locale without one", u"%r"_s, QString(), u"%I:%M %p"_s, false, pm);
        row("twelve hours written out", u"%I:%M:%S %p"_s, QString(), u"%I:%M %p"_s, false, pm);
        row("no seconds", u"%H.%M Uhr"_s, QString(), u"%H.%M Uhr"_s, true, u"13.05 Uhr"_s);
        row("month and day cut", u"%H:%M:%S | %b %e"_s, QString(), u"%H:%M"_s, false, u"13:05"_s);
        row("full month cut", u"%I:%M %p | %B %e"_s, QString(), u"%I:%M %p"_s, false, pm);
    }
    void timeFormat() {
        QFETCH(QString, platform);
        QFETCH(QString, twelveHour);
        QFETCH(QString, format);
        QFETCH(QString, locale);
        QCOMPARE(LocalTimeFormat::deriveFormat(platform, twelveHour), format);
        LocalTimeFormat::setFormat(format, locale);
        QTEST(Entry().localisedTimeString(u"13:05"), "shown");
        QCOMPARE(LocalTimeFormat::localisedTimeString(u"1305"), QString());
    }

    void localeTexts_data() {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<int>("style");
        QTest::addColumn<QString>("date");
        QTest::addColumn<QString>("money");
        const QString dollars = u"-$1,234.50"_s;
        const QString euros = u"-1.234,50\u00a0€"_s;
        QTest::newRow("en_US short") << u"en_US"_s << 1 << u"3/7/08"_s << dollars;
        QTest::newRow("en_US medium") << u"en_US"_s << 2 << u"Mar 7, 2008"_s << dollars;
        QTest::newRow("en_US long") << u"en_US"_s << 3 << u"March 7, 2008"_s << dollars;
        QTest::newRow("en_US full") << u"en_US"_s << 4 << u"Friday, March 7, 2008"_s << dollars;
        QTest::newRow("de_DE long") << u"de_DE"_s << 3 << u"7. März 2008"_s << euros;
    }
    void localeTexts() {
        QFETCH(QString, locale);
        QFETCH(int, style);
        QFETCH(QString, date);
        LocaleFormat::setDateLocale(locale);
        QCOMPARE(LocaleFormat::formatDate(QDate(2008, 3, 7), style), date);
        TemporaryPreferences preferences;
        preferences->setObject(style, u"listDateFormat");
        QCOMPARE(LocaleFormat::formatDateInListStyle(QDate(2008, 3, 7)), date);
        LocaleFormat::setDateLocale({});
        QTEST(CurrencyFormatter(locale).format(-1234.5), "money");
    }
};

QTEST_GUILESS_MAIN(TestTimeHelpers)
#include "tst_timehelpers.moc"
