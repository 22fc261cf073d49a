#include "DesktopFixture.h"

#include "desktop/AwayLogic.h"
#include "desktop/AwayWatcher.h"
#include "desktop/IdleTime.h"
#include "desktop/MiniWindow.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace {

class FakeIdleTime : public IdleTime {
public:
    std::optional<qint64> idleMilliseconds() override { return minutes * 60 * 1000; }
    qint64 minutes = 0;
};

QDateTime today(const QString &time) {
    return at(u"22.11.2026 "_s + time);
}

} // namespace

// Time away from the computer: when it is asked about, and what the answers do.
class TestAway : public QObject {
    Q_OBJECT

private slots:
    // Steps "HH:mm idle <minutes>", "HH:mm sleep", "HH:mm resume", "HH:mm answer" and
    // "HH:mm stop" (the timers stop); each absence asked about is "from-to".
    void absences_data() {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QStringList>("asked");
        QTest::newRow("idle for longer than ten minutes")
            << QStringList{u"12:00 idle 0"_s, u"12:20 idle 17"_s, u"13:41 idle 1"_s}
            << QStringList{u"12:03-13:40"_s};
        QTest::newRow("idle for less")
            << QStringList{u"12:20 idle 9"_s, u"12:30 idle 0"_s} << QStringList();
        QTest::newRow("asleep") << QStringList{u"12:03 sleep"_s, u"13:40 resume"_s}
                                << QStringList{u"12:03-13:40"_s};
        QTest::newRow("idle, then asleep: one absence")
            << QStringList{u"12:20 idle 17"_s, u"12:30 sleep"_s, u"13:40 resume"_s,
                           u"13:41 idle 1"_s}
            << QStringList{u"12:03-13:40"_s};
        QTest::newRow("no second question while one is open")
            << QStringList{u"12:03 sleep"_s, u"13:00 resume"_s, u"13:05 sleep"_s, u"13:40 resume"_s}
            << QStringList{u"12:03-13:00"_s};
        QTest::newRow("a later absence starts where the last one ended")
            << QStringList{u"12:03 sleep"_s, u"13:00 resume"_s, u"13:00 answer"_s,
                           u"13:30 idle 31"_s, u"13:45 idle 0"_s}
            << QStringList{u"12:03-13:00"_s, u"13:00-13:45"_s};
        QTest::newRow("no timer ran")
            << QStringList{u"11:00 stop"_s, u"12:03 sleep"_s, u"13:40 resume"_s} << QStringList();
    }
    void absences() {
        QFETCH(QStringList, steps);
        QFETCH(QStringList, asked);
        DesktopFixture desktop;
        Clock::setNow(today(u"09:00"_s));
        desktop.collection.startTimerInProject(desktop.project);
        AwayLogic logic(desktop.collection);
        logic.setIdleMinutes(10);
        QStringList absences;
        for (const QString &step : std::as_const(steps)) {
            const QStringList words = step.split(u' ');
            Clock::setNow(today(words[0]));
            std::optional<TimeAway> away;
            if (words[1] == u"idle")
                away = logic.idleSample(words[2].toLongLong() * 60 * 1000);
            else if (words[1] == u"sleep")
                logic.sleeping();
            else if (words[1] == u"resume")
                away = logic.resumed();
            else if (words[1] == u"answer")
                logic.answered();
            else
                desktop.collection.workingEntries().first()->stop();
            if (away)
                absences << away->from().toString(u"HH:mm"_s) + u'-' +
                                away->to().toString(u"HH:mm"_s);
        }
        QCOMPARE(absences, asked);
    }

    // The question comes over the mini window; "Count as a Pause" adds the absence as a pause.
    void countAsPauseFromTheDialogue() {
        FakeIdleTime idle;
        DesktopFixture desktop;
        AwayWatcher watcher(desktop.preferences, desktop.collection, &idle);
        watcher.updateIdleMinutes();
        Clock::setNow(today(u"09:00"_s));
        const auto first = desktop.collection.startTimerInProject(desktop.project);
        const auto second = desktop.collection.startTimerInProject(desktop.project);
        desktop.presence->showMiniWindow();
        Clock::setNow(today(u"12:20"_s));
        idle.minutes = 17;
        watcher.pollIdleTime();
        Clock::setNow(today(u"13:41"_s));
        idle.minutes = 1;
        watcher.pollIdleTime();
        AwayDialog &dialog = watcher.dialog();
        QVERIFY(dialog.isVisible());
        QVERIFY(desktop.presence->miniWindow().isHUDVisible());
        QCOMPARE(dialog.messageLabel()->text(),
                 u"Away from 12:03 to 13:40 (1:37) while 2 timers ran"_s);
        dialog.findChild<QPushButton *>(u"countAsPause"_s)->click();
        QVERIFY(!dialog.isVisible());
        QCOMPARE(first->pauseTime(), 97);
        QCOMPARE(second->pauseTime(), 97);
        QCOMPARE(desktop.collection.undoStack()->undoText(), u"Time Away"_s);
        QVERIFY(!watcher.logic().isAsking());
    }
};

QTEST_MAIN(TestAway)
#include "tst_away.moc"
