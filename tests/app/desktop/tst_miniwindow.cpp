#include "DesktopFixture.h"

#include "desktop/MiniWindow.h"

#include <QTest>

// The mini window's list, driven through its keys: the selection as timers come and go, Space
// and Escape.
class TestMiniWindow : public QObject {
    Q_OBJECT

private slots:
    // Five timers, one selected by the arrow keys, then one stops.
    void selectionAfterATimerStops_data() {
        QTest::addColumn<int>("selected");
        QTest::addColumn<int>("stopped");
        QTest::addColumn<int>("expected");
        QTest::newRow("the selected one stops") << 3 << 3 << 2;
        QTest::newRow("one before it stops") << 4 << 1 << 3;
        QTest::newRow("one after it stops") << 1 << 2 << 1;
        QTest::newRow("the first one stops while selected") << 0 << 0 << 0;
        QTest::newRow("the last one stops while selected") << 4 << 4 << 3;
    }
    void selectionAfterATimerStops() {
        QFETCH(int, selected);
        QFETCH(int, stopped);
        QFETCH(int, expected);
        DesktopFixture desktop;
        MiniWindow &window = desktop.presence->miniWindow();
        for (int i = 0; i < 5; ++i)
            desktop.collection.startTimerInProject(desktop.project);
        desktop.presence->toggleMiniWindow();
        QVERIFY(!desktop.mainWindow.isVisible());
        QVERIFY(desktop.preferences.boolForKey(u"showMiniWindow"));
        for (int i = 0; i < selected; ++i)
            QTest::keyClick(&window, Qt::Key_Down);
        QCOMPARE(window.logic().selectedIndex(), selected);
        const auto entries = desktop.collection.workingEntries();
        entries.at(stopped)->stop();
        desktop.collection.setDataChanged(true);
        QCOMPARE(window.logic().selectedIndex(), expected);
        // The selected line stands in the opening's top row, the lines above it cut off.
        QCOMPARE(window.logic().listFrame(300).top() + window.logic().lineTop(expected), 0);
        QCOMPARE(window.logic().shrinkCounter(), qMax(expected - 2, 0));
        if (stopped != selected)
            QCOMPARE(window.logic().selectedEntry(), entries.at(selected));
    }

    void spaceAndEscape() {
        DesktopFixture desktop;
        MiniWindow &window = desktop.presence->miniWindow();
        const auto entry = desktop.collection.startTimerInProject(desktop.project);
        window.showHUD();
        desktop.collection.startTimerInProject(desktop.project);
        QTest::keyClick(&window, Qt::Key_Down);
        QTest::keyClick(&window, Qt::Key_Up);
        QTest::keyClick(&window, Qt::Key_Space);
        QVERIFY(entry->isPaused());
        QTest::keyClick(&window, Qt::Key_Space);
        QVERIFY(!entry->isPaused());
        QVERIFY(entry->isWorking());
        QTest::keyClick(&window, Qt::Key_Escape);
        QVERIFY(!window.isHUDVisible());
        QTRY_VERIFY(!window.isVisible());
    }
};

QTEST_MAIN(TestMiniWindow)
#include "tst_miniwindow.moc"
