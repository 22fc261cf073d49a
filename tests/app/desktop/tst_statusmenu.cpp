#include "DesktopFixture.h"

#include "desktop/MiniWindow.h"
#include "desktop/StatusMenu.h"

#include <QMenu>
#include <QTest>

namespace {

QStringList titles(const QMenu *menu) {
    QStringList texts;
    for (const QAction *item : menu->actions())
        texts << (item->isSeparator() ? u"-"_s : item->text());
    return texts;
}

QAction *item(const QMenu *menu, const QString &title) {
    for (QAction *each : menu->actions()) {
        if (each->text() == title)
            return each;
    }
    return nullptr;
}

} // namespace

// The tray's status menu: its items for the projects and the timers, and what its commands do.
class TestStatusMenu : public QObject {
    Q_OBJECT

private slots:
    void listsTheTimersWithTheirCommands() {
        DesktopFixture desktop;
        desktop.collection.startTimerInProject(desktop.project);
        Clock::advance(83 * 60);
        desktop.collection.startTimerInProject(desktop.project)->pause();
        desktop.presence->refresh();
        const QMenu *menu = desktop.tray.menu;
        QCOMPARE(titles(menu),
                 (QStringList{u"Show Hourfold"_s, u"Start Timer"_s, u"Show Mini Window"_s,
                              u"Preferences…"_s, u"-"_s, u"Web shop: 01:23"_s, u"Web shop: 00:00"_s,
                              u"-"_s, u"Quit"_s}));
        QCOMPARE(titles(menu->actions().at(1)->menu()), (QStringList{u"Web shop"_s, u"App"_s}));
        QCOMPARE(titles(menu->actions().at(5)->menu()), (QStringList{u"Pause"_s, u"Stop"_s}));
        QCOMPARE(titles(menu->actions().at(6)->menu()), (QStringList{u"Resume"_s, u"Stop"_s}));
        QCOMPARE(desktop.tray.toolTip, u"Hourfold\nWeb shop: 01:23\nWeb shop: 00:00 (paused)"_s);
        // A timer started from the menu goes into the project chosen.
        item(menu->actions().at(1)->menu(), u"App"_s)->trigger();
        QCOMPARE(menu->actions().at(7)->text(), u"App: 00:00"_s);
    }

    void stopRoundsTheClockTime_data() {
        QTest::addColumn<int>("roundWhat");
        QTest::addColumn<int>("roundType");
        QTest::addColumn<QString>("toTime");
        QTest::newRow("no rounding") << 0 << 0 << u"10:52"_s;
        QTest::newRow("clock to the nearest 15") << 1 << 0 << u"10:45"_s;
        QTest::newRow("clock up") << 1 << 1 << u"11:00"_s;
        QTest::newRow("clock down") << 1 << 2 << u"10:45"_s;
    }
    void stopRoundsTheClockTime() {
        QFETCH(int, roundWhat);
        QFETCH(int, roundType);
        QFETCH(QString, toTime);
        DesktopFixture desktop(roundWhat, roundType);
        const auto entry = desktop.collection.startTimerInProject(desktop.project);
        entry->pause();
        Clock::advance(52 * 60);
        const QMenu *menu = desktop.tray.menu;
        item(menu->actions().at(StatusMenu::firstEntryPosition)->menu(), u"Stop"_s)->trigger();
        QVERIFY(!entry->isWorking());
        QCOMPARE(entry->toDate(), u"22.11.2026"_s);
        QCOMPARE(entry->toTime(), toTime);
        QVERIFY(desktop.collection.dataChanged());
        QCOMPARE(titles(menu).at(StatusMenu::firstEntryPosition), u"-"_s);
    }

    // The icon goes at once when the preference is switched off, and the menu stays as it was
    // while it is off.
    void preferenceSwitchesTheIcon() {
        DesktopFixture desktop;
        QVERIFY(desktop.tray.shown);
        desktop.preferences.setObject(false, u"showStatusMenuItem");
        QVERIFY(!desktop.tray.shown);
        desktop.collection.startTimerInProject(desktop.project);
        QCOMPARE(desktop.tray.menu->actions().size(), 7);
        desktop.preferences.setObject(true, u"showStatusMenuItem");
        QVERIFY(desktop.tray.shown);
        QCOMPARE(desktop.tray.menu->actions().size(), 8);
    }

    // A click brings the main window in place of the mini window, and it stays the one that
    // comes back; the next click hides it.
    void trayClickShowsOrHidesTheMainWindow() {
        DesktopFixture desktop;
        desktop.preferences.setObject(true, u"showMiniWindow");
        desktop.presence->reopen();
        QVERIFY(!desktop.mainWindow.isVisible());
        emit desktop.tray.clicked();
        QVERIFY(desktop.mainWindow.isVisible());
        QVERIFY(!desktop.presence->miniWindow().isHUDVisible());
        QVERIFY(!desktop.preferences.boolForKey(u"showMiniWindow"));
        emit desktop.tray.clicked();
        QVERIFY(!desktop.mainWindow.isVisible());
    }
};

QTEST_MAIN(TestStatusMenu)
#include "tst_statusmenu.moc"
