#include "ModelFixtures.h"

#include "model/PauseConflicts.h"

#include <QTest>

using Rows = QList<QList<int>>;

class TestPauseConflicts : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void cleanup() { Clock::reset(); }

    void conflicts_data() {
        QTest::addColumn<QStringList>("pauses");
        QTest::addColumn<bool>("hasConflicts");
        QTest::addColumn<Rows>("rows");
        QTest::newRow("touching") << QStringList{u"10:00-10:30"_s, u"10:30-11:00"_s} << false
                                  << Rows{{}, {}};
        QTest::newRow("overlapping by a minute")
            << QStringList{u"10:00-10:31"_s, u"10:30-11:00"_s} << true << Rows{{1}, {0}};
        QTest::newRow("ends before it starts")
            << QStringList{u"11:00-10:00"_s} << true << Rows{{0}};
        QTest::newRow("reversed beside another")
            << QStringList{u"11:00-10:00"_s, u"10:15-10:45"_s} << true << Rows{{0}, {}};
        QTest::newRow("new pause at the entry's start")
            << QStringList{u"10:00-10:30"_s, u"09:00-09:00"_s} << false << Rows{{}, {}};
        QTest::newRow("empty pause inside another")
            << QStringList{u"10:00-10:30"_s, u"10:10-10:10"_s} << true << Rows{{1}, {0}};
        QTest::newRow("one overlapping two")
            << QStringList{u"10:00-11:00"_s, u"10:15-10:20"_s, u"10:50-11:30"_s, u"12:00-12:10"_s}
            << true << Rows{{1, 2}, {0}, {0}, {}};
        QTest::newRow("identical")
            << QStringList{u"10:00-10:30"_s, u"10:00-10:30"_s} << true << Rows{{1}, {0}};
    }
    void conflicts() {
        QFETCH(QStringList, pauses);
        QFETCH(Rows, rows);
        PauseList list;
        for (const QString &p : pauses)
            list.append(std::make_shared<PauseEntry>(at(u"12.03.2008 "_s + p.left(5)),
                                                     at(u"12.03.2008 "_s + p.mid(6))));
        // Start from a table with a conflict, so that a stale result would show.
        PauseConflicts conflicts(
            {std::make_shared<PauseEntry>(at(u"12.03.2008 11:00"_s), at(u"12.03.2008 10:00"_s))});
        conflicts.update(list);
        QTEST(conflicts.hasConflicts(), "hasConflicts");
        for (int row = 0; row < list.size(); ++row) {
            PauseList expected;
            for (int other : rows[row])
                expected.append(list[other]);
            QCOMPARE(conflicts.conflictsOf(row), expected);
            for (int other = 0; other < list.size(); ++other)
                QCOMPARE(conflicts.isInConflictWith(row, list[other].get()),
                         rows[row].contains(other));
        }
        QVERIFY(conflicts.conflictsOf(int(list.size())).isEmpty());
    }

    // The entry runs 09:00-12:00 on 12.03.2008, or since 09:00 with the clock at 10:30.
    void clamping_data() {
        QTest::addColumn<bool>("running");
        QTest::addColumn<bool>("end");
        QTest::addColumn<QString>("proposed");
        QTest::addColumn<QString>("moment");
        QTest::addColumn<bool>("beep");
        const auto row = [](const char *name, bool running, bool end, const QString &proposed,
                            const QString &moment, bool beep) {
            QTest::newRow(name) << running << end << proposed << moment << beep;
        };
        row("start before the entry", false, false, u"08:59"_s, u"09:00"_s, true);
        row("start at the entry's start", false, false, u"09:00"_s, u"09:00"_s, false);
        row("start after the entry's end", false, false, u"13:00"_s, u"13:00"_s, false);
        row("end after the entry", false, true, u"12:01"_s, u"12:00"_s, true);
        row("end at the entry's end", false, true, u"12:00"_s, u"12:00"_s, false);
        row("end before the entry's start", false, true, u"08:00"_s, u"08:00"_s, false);
        row("running, end after now", true, true, u"11:00"_s, u"10:30"_s, true);
        row("running, end before now", true, true, u"10:29"_s, u"10:29"_s, false);
    }
    void clamping() {
        QFETCH(bool, running);
        QFETCH(bool, end);
        QFETCH(QString, proposed);
        QFETCH(QString, moment);
        const QString day = u"12.03.2008 "_s;
        Clock::setNow(at(day + u"10:30"_s));
        const auto entry = periodEntry(day + u"09:00"_s, running ? QString() : day + u"12:00"_s);
        const auto clamped = end ? PauseConflicts::clampedTo(at(day + proposed), *entry)
                                 : PauseConflicts::clampedFrom(at(day + proposed), *entry);
        QCOMPARE(clamped.moment, at(day + moment));
        QTEST(clamped.beep, "beep");
    }
};

QTEST_GUILESS_MAIN(TestPauseConflicts)
#include "tst_pauseconflicts.moc"
