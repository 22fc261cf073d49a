#include "DesktopFixture.h"

#include "desktop/CountBadge.h"
#include "desktop/UnityLauncherEntry.h"

#include <QDBusConnection>
#include <QSignalSpy>
#include <QTest>

// Catches the launcher's "Update" signal on the test's own session bus.
class LauncherListener : public QObject {
    Q_OBJECT

public:
    QList<QVariantMap> updates;

public slots:
    void update(const QString &uri, const QVariantMap &properties) {
        if (uri == UnityLauncherEntry::applicationUri)
            updates << properties;
    }
};

// The count of running and paused timers on the icon and on the launcher.
class TestCountBadge : public QObject {
    Q_OBJECT

private slots:
    void drawsTheCount_data() {
        QTest::addColumn<int>("count");
        QTest::addColumn<bool>("badged");
        QTest::newRow("none: the plain icon") << 0 << false;
        QTest::newRow("one") << 1 << true;
        QTest::newRow("twelve") << 12 << true;
    }
    void drawsTheCount() {
        QFETCH(int, count);
        QFETCH(bool, badged);
        QImage icon(CountBadge::iconSize, CountBadge::iconSize,
                    QImage::Format_ARGB32_Premultiplied);
        icon.fill(Qt::blue);
        const QImage drawn = CountBadge::drawCountIcon(icon, count);
        QCOMPARE(drawn == icon, !badged);
        if (!badged)
            return;
        const QRect badge = CountBadge::badgeRect(icon.size(), count);
        QCOMPARE(badge.topRight(), QPoint(CountBadge::iconSize - 1, 0));
        // The circle's red, beside the digits at its centre line; the icon outside it.
        QCOMPARE(drawn.pixelColor(badge.left() + 4, badge.center().y()), QColor(230, 0, 0));
        QCOMPARE(drawn.pixelColor(badge.left() - 2, badge.center().y()), QColor(Qt::blue));
        // Two digits make a wider circle than one.
        QCOMPARE(badge.width() > CountBadge::badgeRect(icon.size(), 1).width(), count >= 10);
    }

    void tellsTheLauncher() {
        if (!QDBusConnection::sessionBus().isConnected())
            QSKIP("no session bus (the test runs under dbus-run-session)");
        LauncherListener listener;
        QVERIFY(QDBusConnection::sessionBus().connect(
            {}, UnityLauncherEntry::objectPath, UnityLauncherEntry::interfaceName, u"Update"_s,
            &listener, SLOT(update(QString, QVariantMap))));
        UnityLauncherEntry launcher;
        CountBadge badge(QImage(), launcher, [](const QImage &) {});
        badge.update(3, true);
        badge.update(0, true);
        QTRY_COMPARE(listener.updates.size(), 2);
        QCOMPARE(listener.updates.at(0).value(u"count"_s).toLongLong(), 3);
        QCOMPARE(listener.updates.at(0).value(u"count-visible"_s).toBool(), true);
        QCOMPARE(listener.updates.at(1).value(u"count-visible"_s).toBool(), false);
    }

    // The badge follows the timers and its preference.
    void followsTheTimersAndThePreference() {
        DesktopFixture desktop;
        desktop.collection.startTimerInProject(desktop.project);
        desktop.collection.startTimerInProject(desktop.project)->pause();
        desktop.preferences.setObject(false, u"showDockBadge");
        desktop.preferences.setObject(true, u"showDockBadge");
        desktop.collection.workingEntries().first()->stop();
        desktop.collection.setDataChanged(true);
        QCOMPARE(desktop.launcher.counts, (QList<int>{-1, 1, 2, -1, 2, 1}));
    }
};

QTEST_MAIN(TestCountBadge)
#include "tst_countbadge.moc"
