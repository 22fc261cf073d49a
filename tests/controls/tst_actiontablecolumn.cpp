#include "core/model/ModelFixtures.h"

#include "ActionTableColumn.h"

#include <QTest>

Q_DECLARE_METATYPE(std::shared_ptr<ProjectItem>)

class TestActionTableColumn : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { Clock::setNow(at(u"22.11.2026 10:00"_s)); }

    void imagesPerRow_data() {
        QTest::addColumn<std::shared_ptr<ProjectItem>>("item");
        QTest::addColumn<QStringList>("images");
        auto paused = periodEntry(u"22.11.2026 08:00"_s);
        paused->setPausedAt(at(u"22.11.2026 09:00"_s));
        QTest::newRow("project") << std::shared_ptr<ProjectItem>()
                                 << QStringList{u"btn_clock"_s, u"btn_play"_s, u"btn_pause"_s};
        QTest::newRow("running") << std::shared_ptr<ProjectItem>(periodEntry(u"22.11.2026 08:00"_s))
                                 << QStringList{u"btn_play_dis"_s, u"btn_pause"_s, u"btn_stop"_s};
        QTest::newRow("paused") << std::shared_ptr<ProjectItem>(paused)
                                << QStringList{u"btn_play"_s, u"btn_pause_dis"_s, u"btn_stop"_s};
        QTest::newRow("finished") << std::shared_ptr<ProjectItem>(
                                         periodEntry(u"21.11.2026 08:00"_s, u"21.11.2026 09:00"_s))
                                  << QStringList();
        QTest::newRow("day entry")
            << std::shared_ptr<ProjectItem>(dayEntry(u"21.11.2026"_s, 30)) << QStringList();
        QTest::newRow("flat fee") << std::shared_ptr<ProjectItem>(flatFee(u"21.11.2026"_s, 5.0f))
                                  << QStringList();
    }
    void imagesPerRow() {
        QFETCH(std::shared_ptr<ProjectItem>, item);
        QFETCH(QStringList, images);
        QCOMPARE(item ? ActionTableColumn::imagesForItemRow(*item)
                      : ActionTableColumn::imagesForProjectRow(),
                 images);
    }

    void segmentUnderAPoint_data() {
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<int>("segment");
        // The cell (100, 10) 94 x 24: segments of 30 pixels from x = 102, y 12 to 31.
        QTest::newRow("first, left edge") << QPoint(102, 20) << 0;
        QTest::newRow("first, right edge") << QPoint(131, 20) << 0;
        QTest::newRow("second") << QPoint(132, 12) << 1;
        QTest::newRow("third, right edge") << QPoint(191, 31) << 2;
        QTest::newRow("in the margin") << QPoint(101, 20) << -1;
        QTest::newRow("below") << QPoint(150, 32) << -1;
        QTest::newRow("outside") << QPoint(300, 20) << -1;
    }
    void segmentUnderAPoint() {
        QFETCH(QPoint, point);
        QTEST(ActionTableColumn::segmentAt(QRect(100, 10, 94, 24), point), "segment");
    }
};

QTEST_GUILESS_MAIN(TestActionTableColumn)
#include "tst_actiontablecolumn.moc"
