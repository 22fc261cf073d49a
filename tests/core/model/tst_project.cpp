#include "ModelFixtures.h"

#include "model/Project.h"
#include "model/ProjectXmlWriter.h"
#include "platform/CurrencyFormatter.h"

#include <QTest>

namespace {
// "m:7" a finished day entry of 7 minutes; "p:60" a finished period entry of 60 minutes with a
// 15-minute pause inside; "o:60" the same with a 30-minute pause that begins 10 minutes before
// it; "run" an entry whose timer runs since 09:00, "paused" the same paused at 09:30; "fee:2.5" a
// flat fee.
std::shared_ptr<ProjectItem> item(const QString &description) {
    const QString kind = description.section(u':', 0, 0);
    const QString value = description.section(u':', 1);
    if (kind == u"fee")
        return flatFee(u"12.03.2008"_s, value.toFloat());
    if (kind == u"m")
        return dayEntry(u"12.03.2008"_s, value.toInt());
    if (kind == u"p" || kind == u"o") {
        const QDateTime start = at(u"11.03.2008 09:00"_s);
        const auto entry = periodEntry(start, start.addSecs(value.toInt() * 60));
        const QDateTime pauseStart = start.addSecs(kind == u"p" ? 600 : -600);
        entry->setPauseEntries({std::make_shared<PauseEntry>(
            pauseStart, pauseStart.addSecs(kind == u"p" ? 900 : 1800))});
        return entry;
    }
    const auto entry = periodEntry(u"12.03.2008 09:00"_s);
    if (kind == u"paused")
        entry->setPausedAt(at(u"12.03.2008 09:30"_s));
    return entry;
}
} // namespace

class TestProject : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void init() { Clock::setNow(at(u"12.03.2008 10:00"_s)); }
    void cleanup() { Clock::reset(); }

    void totals_data() {
        QTest::addColumn<int>("roundWhat");
        QTest::addColumn<float>("wage");
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<int>("duration");
        QTest::addColumn<int>("grossTime");
        QTest::addColumn<int>("pauseTime");
        QTest::addColumn<QString>("wages");
        QTest::addColumn<QString>("summedWages"); // entry by entry, as with a filter
        QTest::newRow("running entry only")
            << 0 << 60.0f << QStringList{u"run"_s} << 0 << 0 << 0 << u"$0.00"_s << u"$0.00"_s;
        QTest::newRow("paused entry left out") << 0 << 60.0f << QStringList{u"m:10"_s, u"paused"_s}
                                               << 10 << 10 << 0 << u"$10.00"_s << u"$10.00"_s;
        QTest::newRow("each entry rounded") << 2 << 60.0f << QStringList{u"m:7"_s, u"m:8"_s} << 15
                                            << 15 << 0 << u"$15.00"_s << u"$15.00"_s;
        QTest::newRow("total itself not rounded") << 2 << 60.0f << QStringList{u"m:7"_s, u"m:7"_s}
                                                  << 0 << 0 << 0 << u"$0.00"_s << u"$0.00"_s;
        QTest::newRow("flat fees whatever the wage")
            << 0 << 99.0f << QStringList{u"fee:10.0"_s, u"fee:2.5"_s} << 0 << 0 << 0 << u"$12.50"_s
            << u"$12.50"_s;
        QTest::newRow("mixed") << 0 << 30.0f
                               << QStringList{u"m:90"_s, u"fee:5"_s, u"run"_s, u"p:60"_s} << 135
                               << 150 << 15 << u"$72.50"_s << u"$72.50"_s;
        QTest::newRow("pause reaching before the start")
            << 0 << 60.0f << QStringList{u"o:60"_s} << 30 << 60 << 20 << u"$30.00"_s << u"$30.00"_s;
        // 111 minutes at 45.50 once is 84.175003 in single precision; three times 37 minutes,
        // each added to a single-precision sum, is 84.174995.
        QTest::newRow("wages differ in the last cent")
            << 0 << 45.5f << QStringList(3, u"m:37"_s) << 111 << 111 << 0 << u"$84.18"_s
            << u"$84.17"_s;
    }
    void totals() {
        QFETCH(int, roundWhat);
        QFETCH(float, wage);
        QFETCH(QStringList, items);
        QFETCH(int, duration);
        const CurrencyFormatter dollars(u"en_US"_s);
        Project project(u"P"_s, QString(), wage, roundWhat, 15, 0, -1, QString());
        project.setCurrencyFormatter(&dollars);
        for (const QString &description : items)
            project.addEntry(item(description));
        QCOMPARE(project.totalDuration(), duration);
        QCOMPARE(project.valueForKey(u"totalDuration"), QVariant(duration));
        QTEST(project.totalTime(false), "grossTime");
        QTEST(project.totalPauseTime(), "pauseTime");
        QTEST(project.formattedTotalWages(), "wages");
        QTEST(project.formattedTotalWagesWithFilter(false, {}), "summedWages");
    }

    void wagesWithFilter() {
        Project project(u"P"_s, QString(), 10.0f, 0, 0, 0, -1, QString());
        for (const auto &[description, tag] : {std::pair{u"m:60"_s, u"keep"_s},
                                               {u"m:30"_s, u"drop"_s},
                                               {u"fee:5"_s, u"drop"_s},
                                               {u"fee:2"_s, u"keep"_s},
                                               {u"run"_s, u"keep"_s}}) {
            auto added = item(description);
            added->setTags(tag);
            project.addEntry(added);
        }
        const auto dropped = [](const ProjectItem &item) { return item.tags() == u"drop"; };
        QCOMPARE(project.totalWagesWithFilter(true, dropped), 12.0f);
        QCOMPARE(project.totalWagesWithFilter(false, dropped), 22.0f);
        QCOMPARE(project.totalWages(), 22.0f);
    }

    // A copy takes the values but neither the customer nor the entries, attachments or the
    // expanded state.
    void copy() {
        Project project(u"Site"_s, u"Two\nlines"_s, 45.5f, 2, 15, 1, 7, u"web"_s);
        project.setExpanded(true);
        project.addAttachments({u"/tmp/offer.pdf"_s});
        project.addEntry(dayEntry(u"12.03.2008"_s, 30));
        const auto expected =
            std::make_shared<Project>(u"Site"_s, u"Two\nlines"_s, 45.5f, 2, 15, 1, -1, u"web"_s);
        QCOMPARE(ProjectXmlWriter::makeXML({project.copy()}),
                 ProjectXmlWriter::makeXML({expected}));
    }
};

QTEST_GUILESS_MAIN(TestProject)
#include "tst_project.moc"
