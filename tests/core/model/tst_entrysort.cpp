#include "ModelFixtures.h"

#include "model/EntrySort.h"

#include <QTest>

namespace {
// On a day of March 2008: "day:11:30" a day entry of 30 minutes on the 11th; "fin:12:09:00-10:00" a
// finished period entry; "run:12:09:00" a running one; "fee:12:5" a flat fee; "text:..." a day
// entry with that comment.
std::shared_ptr<ProjectItem> item(const QString &description) {
    const QString kind = description.section(u':', 0, 0);
    const QString day = description.section(u':', 1, 1) + u".03.2008"_s;
    const QString rest = description.section(u':', 2);
    if (kind == u"day")
        return dayEntry(day, rest.toInt());
    if (kind == u"fee")
        return flatFee(day, rest.toFloat());
    if (kind == u"run")
        return periodEntry(day + u' ' + rest);
    if (kind == u"fin")
        return periodEntry(day + u' ' + rest.left(5), day + u' ' + rest.mid(6));
    auto entry = dayEntry(u"12.03.2008"_s, 0);
    entry->setComment(description.mid(5));
    return entry;
}
} // namespace

class TestEntrySort : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void init() { Clock::setNow(at(u"12.03.2008 11:00"_s)); }
    void cleanup() { Clock::reset(); }

    void compare_data() {
        // The row's name begins with the column whose comparator is tested.
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<int>("ascending"); // the sign; descending is the opposite
        const auto row = [](const char *name, const QString &a, const QString &b, int sign) {
            QTest::newRow(name) << a << b << sign;
        };
        row("day: earlier day first", u"day:11:90"_s, u"day:12:5"_s, -1);
        row("day: period entry by its start date", u"fin:13:08:00-09:00"_s, u"day:12:5"_s, 1);
        row("day: flat fee by its day", u"fee:11:5"_s, u"fin:12:08:00-09:00"_s, -1);
        row("day: earlier start first", u"fin:12:10:00-10:05"_s, u"fin:12:09:00-11:00"_s, 1);
        row("day: running after finished at the same start", u"run:12:09:00"_s,
            u"fin:12:09:00-09:30"_s, 1);
        row("day: two running", u"run:12:09:00"_s, u"run:12:09:00"_s, 0);
        row("day: same start, earlier end first", u"fin:12:09:00-09:30"_s, u"fin:12:09:00-09:15"_s,
            1);
        row("day: day entries by duration", u"day:12:30"_s, u"day:12:45"_s, -1);
        row("day: period and day entry by duration", u"fin:12:09:00-10:00"_s, u"day:12:45"_s, 1);
        row("day: flat fee on the same day", u"fee:12:5"_s, u"day:12:45"_s, 0);
        row("duration: entries", u"day:12:30"_s, u"fin:12:09:00-09:45"_s, -1);
        row("duration: flat fees by amount", u"fee:12:5"_s, u"fee:11:2.5"_s, 1);
        row("duration: entry before flat fee", u"day:12:600"_s, u"fee:12:0"_s, -1);
        row("duration: flat fee after entry", u"fee:12:0"_s, u"day:12:0"_s, 1);
        row("action: finished before running", u"fin:12:09:00-09:30"_s, u"run:12:10:00"_s, -1);
        row("action: flat fee is not working", u"run:12:10:00"_s, u"fee:12:1"_s, 1);
        row("action: both finished", u"day:12:9"_s, u"fee:12:1"_s, 0);
        row("description: numbers by value", u"text:file 9"_s, u"text:file 10"_s, -1);
        row("description: capitals first", u"text:Zeta"_s, u"text:alpha"_s, -1);
        row("description: prefix first", u"text:x"_s, u"text:x1"_s, -1);
        row("description: run then text", u"text:a2b"_s, u"text:a10a"_s, -1);
        row("description: equal", u"text:same"_s, u"text:same"_s, 0);
    }
    void compare() {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QFETCH(int, ascending);
        const QString column = QString::fromLatin1(QTest::currentDataTag()).section(u':', 0, 0);
        const auto comparator = column == u"day"        ? &EntrySort::compareEntriesDay
                                : column == u"duration" ? &EntrySort::compareEntriesDuration
                                : column == u"action"   ? &EntrySort::compareEntriesAction
                                                        : &EntrySort::compareEntriesDescription;
        const auto sign = [](int value) { return (value > 0) - (value < 0); };
        QCOMPARE(sign(comparator(*item(a), *item(b), true)), ascending);
        QCOMPARE(sign(comparator(*item(a), *item(b), false)), -ascending);
    }

    void sort_data() {
        QTest::addColumn<QString>("column");
        QTest::addColumn<bool>("ascending");
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<QList<int>>("order");
        const QStringList mixed{u"fee:11:5"_s, u"run:12:09:00"_s, u"day:12:45"_s,
                                u"fin:12:09:00-09:20"_s, u"fee:10:1"_s};
        QTest::newRow("unknown column keeps the order")
            << u"State_Col"_s << true << mixed << QList<int>{0, 1, 2, 3, 4};
        QTest::newRow("day ascending")
            << u"Day_Col"_s << true << mixed << QList<int>{4, 0, 3, 2, 1};
        QTest::newRow("duration ascending")
            << u"Duration_Col"_s << true << mixed << QList<int>{3, 2, 1, 4, 0};
        QTest::newRow("description descending")
            << u"Description_Col"_s << false
            << QStringList{u"text:Task 2"_s, u"text:Task 10"_s, u"text:Task 1"_s}
            << QList<int>{1, 0, 2};
    }
    void sort() {
        QFETCH(QString, column);
        QFETCH(bool, ascending);
        QFETCH(QStringList, items);
        ItemList list;
        for (const QString &description : items)
            list.append(item(description));
        const ItemList before = list;
        EntrySort::sortEntries(list, column, ascending);
        QList<int> sorted;
        for (const auto &sortedItem : list)
            sorted.append(int(before.indexOf(sortedItem)));
        QTEST(sorted, "order");
    }
};

QTEST_GUILESS_MAIN(TestEntrySort)
#include "tst_entrysort.moc"
