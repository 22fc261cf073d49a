#include "ModelFixtures.h"

#include "model/LocalTimeFormat.h"
#include "model/Project.h"
#include "platform/LocaleFormat.h"

#include <QTest>

namespace {
// A moment text on 12.03.2008.
QString d(QStringView time) {
    return u"12.03.2008 "_s + time;
}

// "HH:mm" counted from midnight of 11.03.2008; hours past 23 run into the next days.
QDateTime clock(QStringView time) {
    return at(u"11.03.2008 00:00"_s)
        .addSecs(time.left(2).toInt() * 3600 + time.mid(3, 2).toInt() * 60);
}

// A finished entry over the period "HH:mm-HH:mm" (counted as by clock()) with pauses in the same
// form, separated by blanks.
std::shared_ptr<Entry> entryWithPauses(const QString &period, const QString &pauses) {
    const auto entry = periodEntry(clock(period.left(5)), clock(period.mid(6)));
    PauseList list;
    for (const QString &p : pauses.split(u' ', Qt::SkipEmptyParts))
        list.append(std::make_shared<PauseEntry>(clock(p.left(5)), clock(p.mid(6))));
    entry->setPauseEntries(list);
    return entry;
}

// A project that rounds as given: what (-1 for no project), type and step in "what/type/step".
std::unique_ptr<Project> roundingProject(const QString &rule) {
    const QStringList parts = rule.split(u'/');
    return std::make_unique<Project>(u"P"_s, QString(), 0, parts[0].toInt(), parts[2].toInt(),
                                     parts[1].toInt(), -1, QString());
}
} // namespace

class TestEntry : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QStandardPaths::setTestModeEnabled(true);
        LocaleFormat::setDateLocale(u"en_US"_s);
        LocalTimeFormat::setFormat(u"%I:%M %p"_s, u"en_US.UTF-8"_s);
    }

    void cleanup() { Clock::reset(); }

    void runningTime_data() {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("now");
        QTest::addColumn<int>("minutes");
        QTest::newRow("same day") << d(u"09:00") << d(u"10:31:59") << 91;
        QTest::newRow("not a full minute yet") << d(u"09:00") << d(u"09:00:59") << 0;
        QTest::newRow("across midnight") << u"11.03.2008 22:30"_s << d(u"01:15") << 165;
        QTest::newRow("several days") << u"10.03.2008 22:00"_s << d(u"22:00") << 2880;
        QTest::newRow("clocks forward") << u"29.03.2008 23:00"_s << u"30.03.2008 04:00"_s << 240;
    }
    void runningTime() {
        QFETCH(QString, from);
        QFETCH(QString, now);
        QFETCH(int, minutes);
        const auto entry = periodEntry(from);
        Clock::setNow(at(now));
        QCOMPARE(entry->time(), minutes);
        QCOMPARE(entry->effectiveDuration(), minutes);
    }

    void pauseAndResume() {
        const auto entry = periodEntry(d(u"09:00"));
        Clock::setNow(at(d(u"10:00:25")));
        entry->pause();
        Clock::setNow(at(d(u"10:05")));
        entry->pause();
        QCOMPARE(entry->pausedAt(), at(d(u"10:00:25")));
        QCOMPARE(entry->pauseTime(), 4);
        Clock::setNow(at(d(u"10:07:40")));
        entry->resume();
        QVERIFY(!entry->isPaused() && entry->isWorking());
        QCOMPARE(entry->pauseEntries().size(), 1);
        QCOMPARE(entry->pauseEntries()[0]->stringDescription(),
                 u"from: 2008-03-12 10:00:00 +0100; to: 2008-03-12 10:07:00 +0100"_s);
        QCOMPARE(entry->pauseTime(), 7);
        // Stopping a paused entry closes its pause first.
        Clock::setNow(at(d(u"10:20")));
        entry->pause();
        Clock::setNow(at(d(u"10:30")));
        entry->stop();
        QVERIFY(!entry->isPaused());
        QCOMPARE(entry->pauseTime(), 17);
        QCOMPARE(entry->effectiveDuration(), 73);
    }

    void resumeFinishedCountsGapAsPause() {
        const auto entry = periodEntry(d(u"09:00"));
        Clock::setNow(at(d(u"12:00")));
        entry->stop();
        QCOMPARE(entry->effectiveDuration(), 180);
        Clock::setNow(at(d(u"13:30")));
        entry->resume();
        QVERIFY(entry->isWorking());
        QVERIFY(entry->toTime().isEmpty() && entry->toDate().isEmpty());
        QCOMPARE(entry->pauseTime(), 90);
        entry->stop();
        QCOMPARE(entry->time(), 270);
        QCOMPARE(entry->netPauseTime(), 90);
        QCOMPARE(entry->effectiveDuration(), 180);
    }

    void resumeLeavesOtherStates() {
        Clock::setNow(at(d(u"10:00")));
        const auto dayOnly = dayEntry(u"12.03.2008"_s, 30);
        dayOnly->pause();
        QVERIFY(!dayOnly->isPaused());
        for (const auto &entry : {periodEntry(d(u"09:00")), dayOnly}) {
            const QString before = entry->stringDescription();
            entry->resume();
            QCOMPARE(entry->stringDescription(), before);
            QVERIFY(entry->pauseEntries().isEmpty());
        }
    }

    // A timer started at the moment "now" and one that ran since 01:00 that day and stops then.
    void startAndStop_data() {
        QTest::addColumn<QString>("rule"); // what/type/step of the project's rounding
        QTest::addColumn<QString>("now");
        QTest::addColumn<QString>("clock"); // the start of the one, the end of the other
        QTest::addColumn<int>("minutes");
        QTest::newRow("whole minutes") << u"0/0/15"_s << d(u"10:07:59") << d(u"10:07") << 547;
        QTest::newRow("clock time to nearest 15")
            << u"1/0/15"_s << d(u"10:07:59") << d(u"10:00") << 540;
        QTest::newRow("clock time up to 10") << u"1/1/10"_s << d(u"10:01") << d(u"10:10") << 550;
        QTest::newRow("clock time into the next day")
            << u"1/0/15"_s << d(u"23:53") << u"13.03.2008 00:00"_s << 1380;
        QTest::newRow("durations rounded, clock kept")
            << u"2/0/15"_s << d(u"10:07") << d(u"10:07") << 547;
        // The clocks go forward at 02:00 and back at 03:00; 01:00 to 10:00 is 8 and 9 hours.
        QTest::newRow("clocks forward, nearest 15")
            << u"1/0/15"_s << u"30.03.2008 10:07"_s << u"30.03.2008 10:00"_s << 480;
        QTest::newRow("clocks back, nearest 15")
            << u"1/0/15"_s << u"26.10.2008 09:07"_s << u"26.10.2008 09:00"_s << 540;
    }
    void startAndStop() {
        QFETCH(QString, rule);
        QFETCH(QString, now);
        const auto project = roundingProject(rule);
        const auto entry = periodEntry(at(now.left(10) + u" 01:00"_s));
        project->addEntry(entry);
        Clock::setNow(at(now));
        const auto started = Entry::startedIn(*project);
        QTEST(QString(started->fromDate() + u' ' + started->fromTime()), "clock");
        entry->stop();
        QVERIFY(entry->isFinished());
        QTEST(QString(entry->toDate() + u' ' + entry->toTime()), "clock");
        QTEST(entry->storedMinutes(), "minutes");
    }

    void pauseTimes_data() {
        QTest::addColumn<QString>("period");
        QTest::addColumn<QString>("pauses");
        QTest::addColumn<int>("netPause");
        QTest::addColumn<int>("pause");
        QTest::newRow("inside") << u"09:00-12:00"_s << u"10:00-10:30"_s << 30 << 30;
        QTest::newRow("overhangs both ends") << u"09:00-12:00"_s << u"08:00-13:00"_s << 0 << 300;
        QTest::newRow("overlaps the start") << u"09:00-12:00"_s << u"08:30-09:20"_s << 20 << 50;
        QTest::newRow("overlaps the end") << u"09:00-12:00"_s << u"11:45-12:30"_s << 15 << 45;
        QTest::newRow("ends at the start") << u"09:00-12:00"_s << u"08:00-09:00"_s << 0 << 60;
        QTest::newRow("after the end") << u"09:00-12:00"_s << u"12:00-13:00"_s << 0 << 60;
        QTest::newRow("several") << u"09:00-12:00"_s << u"09:30-09:45 08:00-13:00 11:50-12:10"_s
                                 << 25 << 335;
        QTest::newRow("across midnight")
            << u"22:00-26:00"_s << u"23:30-24:15 25:00-27:00"_s << 105 << 165;
    }
    void pauseTimes() {
        QFETCH(QString, period);
        QFETCH(QString, pauses);
        QFETCH(int, netPause);
        QFETCH(int, pause);
        const auto entry = entryWithPauses(period, pauses);
        QCOMPARE(entry->netPauseTime(), netPause);
        QCOMPARE(entry->pauseTimeWithPeriodFrom(clock(period.left(5)), clock(period.mid(6))),
                 netPause);
        QCOMPARE(entry->pauseTime(), pause);
        QCOMPARE(entry->effectiveDuration(), entry->time() - pause);
    }

    void currentPauseIsNotClipped() {
        const auto entry = periodEntry(d(u"09:00"));
        Clock::setNow(at(d(u"10:00")));
        entry->pause();
        Clock::setNow(at(d(u"10:30:30")));
        QCOMPARE(entry->pauseTime(), 30);
        QCOMPARE(entry->netPauseTime(), 30);
        QCOMPARE(entry->pauseTimeWithPeriodFrom(at(d(u"09:00")), at(d(u"09:15"))), 30);
        QCOMPARE(entry->effectiveDuration(), 60);
    }

    void rounding_data() {
        QTest::addColumn<bool>("running");
        QTest::addColumn<QString>("rule"); // what/type/step of the project's rounding
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("pause");
        QTest::addColumn<int>("time");
        QTest::addColumn<int>("effective");
        // 53 - 1 alone would round to 45; the rounded gross time 60 less the pause rounds to 60.
        QTest::newRow("gross time rounded first") << false << u"2/0/15"_s << 53 << 1 << 60 << 60;
        QTest::newRow("up to 10") << false << u"2/1/10"_s << 61 << 0 << 70 << 70;
        QTest::newRow("down to 15") << false << u"2/2/15"_s << 44 << 0 << 30 << 30;
        QTest::newRow("clock-time rule") << false << u"1/0/15"_s << 53 << 1 << 53 << 52;
        QTest::newRow("no project") << false << u"-1/0/15"_s << 53 << 1 << 53 << 52;
        QTest::newRow("running, each entry rounded") << true << u"2/0/15"_s << 53 << 0 << 0 << 0;
        QTest::newRow("running, clock-time rule") << true << u"1/0/15"_s << 53 << 1 << 53 << 52;
    }
    void rounding() {
        QFETCH(bool, running);
        QFETCH(QString, rule);
        QFETCH(int, minutes);
        QFETCH(int, pause);
        const QDateTime start = at(d(u"09:00"));
        const QDateTime end = start.addSecs(minutes * 60);
        const auto entry = periodEntry(start, running ? QDateTime() : end);
        entry->setPauseEntries({std::make_shared<PauseEntry>(start, start.addSecs(pause * 60))});
        Clock::setNow(end);
        const auto project = roundingProject(rule);
        if (project->roundWhat() >= 0)
            project->addEntry(entry);
        QTEST(entry->time(), "time");
        QTEST(entry->effectiveDuration(), "effective");
    }

    void copySharesPauses() {
        Project project;
        const auto entry = periodEntry(d(u"09:00"));
        entry->setComment(u"Review"_s);
        entry->setTags(u"a,b"_s);
        entry->setChecked(true);
        entry->addAttachments({u"/tmp/a.pdf"_s});
        project.addEntry(entry);
        Clock::setNow(at(d(u"10:00")));
        entry->pause();
        Clock::setNow(at(d(u"10:10")));
        const auto copy = entry->copy();
        QCOMPARE(copy->stringDescription(), entry->stringDescription());
        QCOMPARE(copy->pausedAt(), entry->pausedAt());
        QVERIFY(!copy->isChecked());
        QVERIFY(copy->attachments().isEmpty());
        QVERIFY(!copy->parent());
        copy->resume();
        QCOMPARE(entry->pauseEntries().size(), 1);
        copy->deleteAllPauseEntries();
        QVERIFY(entry->pauseEntries().isEmpty());
        // A list handed to the copy, as the pause editor does, is the copy's alone.
        copy->setPauseEntries({std::make_shared<PauseEntry>(at(d(u"09:10")), at(d(u"09:20")))});
        QVERIFY(entry->pauseEntries().isEmpty());
    }

    void stringDescription_data() {
        QTest::addColumn<std::shared_ptr<ProjectItem>>("item");
        QTest::addColumn<QString>("description");
        const auto row = [](const char *name, std::shared_ptr<ProjectItem> item,
                            const QString &description) {
            QTest::newRow(name) << item << description;
        };
        row("new day entry", dayEntry(u"01.02.2008"_s, 90),
            u"90;01.02.2008;(null);(null);(null);(null);;0;0;"_s);
        auto period = periodEntry(d(u"09:00"), d(u"10:30"));
        period->setDate(u""_s);
        period->setComment(u"a;b"_s);
        period->setTags(u"x,y"_s);
        row("finished period entry", period,
            u"90;;09:00;12.03.2008;10:30;12.03.2008;a;b;0;1;x,y"_s);
        auto fee = flatFee(u"01.02.2008"_s, 12.5f);
        fee->setTags(u""_s);
        row("flat fee", fee, u"01.02.2008;12.500000;;"_s);
        row("new flat fee", flatFee(u"01.02.2008"_s, 0.1f), u"01.02.2008;0.100000;;(null)"_s);
    }
    void stringDescription() {
        QFETCH(std::shared_ptr<ProjectItem>, item);
        QFETCH(QString, description);
        QCOMPARE(item->stringDescription(), description);
        item->setChecked(true);
        const auto copy = item->copyItem();
        QCOMPARE(copy->stringDescription(), description);
        QVERIFY(!copy->isChecked());
    }

    void valueForKey_data() {
        QTest::addColumn<std::shared_ptr<ProjectItem>>("item");
        QTest::addColumn<QStringList>("keys");
        QTest::addColumn<QVariantList>("values");
        const QVariant midnight = at(d(u"00:00")), none = QDateTime();
        Clock::setNow(at(d(u"12:00")));
        const auto running = periodEntry(d(u"09:00"));
        running->pause();
        QTest::newRow("finished")
            << std::shared_ptr<ProjectItem>(entryWithPauses(u"33:00-35:00"_s, u"32:30-33:30"_s))
            << QStringList{u"pauseTime"_s,  u"netPauseTime"_s, u"effectiveDuration"_s,
                           u"fromAsDate"_s, u"toAsDate"_s,     u"toDateAsDate"_s,
                           u"amount"_s}
            << QVariantList{60, 30, 60, at(d(u"09:00")), at(d(u"11:00")), midnight, QVariant()};
        QTest::newRow("running") << std::shared_ptr<ProjectItem>(running)
                                 << QStringList{u"isPaused"_s, u"toDateAsDate"_s, u"toAsDate"_s}
                                 << QVariantList{true, none, none};
        QTest::newRow("day entry") << std::shared_ptr<ProjectItem>(dayEntry(u"12.03.2008"_s, 45))
                                   << QStringList{u"toAsDate"_s} << QVariantList{midnight};
        QTest::newRow("flat fee") << std::shared_ptr<ProjectItem>(flatFee(u"12.03.2008"_s, 2.5f))
                                  << QStringList{u"amount"_s, u"toDateAsDate"_s, u"wages"_s}
                                  << QVariantList{2.5f, midnight, QVariant()};
    }
    void valueForKey() {
        QFETCH(std::shared_ptr<ProjectItem>, item);
        QFETCH(QStringList, keys);
        QVariantList values;
        for (const QString &key : keys)
            values.append(item->valueForKey(key));
        QTEST(values, "values");
    }

    void displayTexts() {
        TemporaryPreferences preferences;
        preferences->setObject(3, u"listDateFormat");
        const auto entry = periodEntry(d(u"09:00"));
        entry->setComment(u"one\ntwo\n"_s);
        QCOMPARE(entry->formattedFromDate(), u"March 12, 2008"_s);
        QCOMPARE(entry->formattedFromDate(true), u"Mar 12, 2008"_s);
        QCOMPARE(entry->formattedToTime(), u""_s);
        QCOMPARE(entry->htmlComment(), u"one<br/>two<br/>"_s);
        QCOMPARE(entry->formattedPauseDate() + entry->formattedPauseTime(), u"--.--.------:--"_s);
        QCOMPARE(entry->localizedPauseDate(), u""_s);
        Clock::setNow(at(d(u"13:45:10")));
        entry->pause();
        Clock::setNow(at(d(u"15:00")));
        QCOMPARE(entry->formattedPauseDate() + u' ' + entry->formattedPauseTime(),
                 u"12.03.2008 13:45"_s);
        QCOMPARE(entry->localizedPauseDate(), u"March 12, 2008 01:45 PM"_s);
        const QStringList durations{entry->formattedTime(), entry->formattedPauseDuration(),
                                    entry->formattedEffectiveTime()};
        QCOMPARE(durations, (QStringList{u"06:00"_s, u"01:14"_s, u"04:46"_s}));
    }

    void pauseEntry_data() {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<int>("minutes");
        QTest::addColumn<QString>("description");
        QTest::newRow("seconds removed")
            << d(u"10:15:42") << d(u"10:45:10") << 30
            << u"from: 2008-03-12 10:15:00 +0100; to: 2008-03-12 10:45:00 +0100"_s;
        QTest::newRow("clocks forward")
            << u"30.03.2008 01:30:59"_s << u"30.03.2008 03:30"_s << 60
            << u"from: 2008-03-30 01:30:00 +0100; to: 2008-03-30 03:30:00 +0200"_s;
        QTest::newRow("ends before it starts")
            << d(u"11:00") << d(u"10:00") << -60
            << u"from: 2008-03-12 11:00:00 +0100; to: 2008-03-12 10:00:00 +0100"_s;
    }
    void pauseEntry() {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, description);
        const PauseEntry pause(at(from), at(to));
        QTEST(pause.duration(), "minutes");
        QCOMPARE(pause.stringDescription(), description);
        QCOMPARE(pause.copy()->stringDescription(), description);
    }
};

QTEST_GUILESS_MAIN(TestEntry)
#include "tst_entry.moc"
