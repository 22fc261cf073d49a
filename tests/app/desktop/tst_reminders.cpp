#include "DesktopFixture.h"

#include "desktop/DBusNotifier.h"
#include "desktop/ReminderPanel.h"
#include "desktop/Reminders.h"

#include <QDBusConnection>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>

// Stands in for the desktop's notification service on the test's own session bus.
class NotificationService : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QList<QStringList> posted;

public slots:
    uint Notify(const QString &application, uint, const QString &icon, const QString &title,
                const QString &text, const QStringList &, const QVariantMap &hints, int) {
        posted << QStringList{application, icon.section(u'/', -1), title, text,
                              hints.value(u"category"_s).toString()};
        return uint(posted.size());
    }
};

// Reminders of running and paused timers: their timers follow the preferences, their texts, the
// built-in panel and desktop notifications.
class TestReminders : public QObject {
    Q_OBJECT

private slots:
    void timersFollowThePreferences_data() {
        QTest::addColumn<bool>("useReminders");
        QTest::addColumn<bool>("useRunning");
        QTest::addColumn<int>("runningMinutes");
        QTest::addColumn<int>("pausedMinutes");
        QTest::newRow("both kinds at the default intervals") << true << true << 15 << 5;
        QTest::newRow("paused ones only, as by default") << true << false << 0 << 5;
        QTest::newRow("reminders off") << false << true << 0 << 0;
    }
    void timersFollowThePreferences() {
        QFETCH(bool, useReminders);
        QFETCH(bool, useRunning);
        QFETCH(int, runningMinutes);
        QFETCH(int, pausedMinutes);
        DesktopFixture desktop;
        Reminders &reminders = desktop.presence->reminders();
        desktop.preferences.setObject(useRunning, u"useRunningReminder");
        desktop.preferences.setObject(useReminders, u"useReminders");
        const auto minutes = [](const QTimer *timer) {
            return timer && timer->isActive() ? timer->interval() / 60000 : 0;
        };
        QCOMPARE(minutes(reminders.runningReminder()), runningMinutes);
        QCOMPARE(minutes(reminders.pausedReminder()), pausedMinutes);
        // A changed interval restarts the timers at once.
        desktop.preferences.setObject(7, u"pausedReminderInterval");
        QCOMPARE(minutes(reminders.pausedReminder()), pausedMinutes ? 7 : 0);
    }

    void builtInPanel() {
        DesktopFixture desktop;
        Reminders &reminders = desktop.presence->reminders();
        reminders.runningReminderTimerFired();
        QVERIFY(!reminders.panel().isVisible());
        QCOMPARE(desktop.user.beeps, 0);

        desktop.collection.startTimerInProject(desktop.project);
        desktop.collection.startTimerInProject(desktop.project);
        desktop.collection.startTimerInProject(desktop.collection.projectWithName(u"App"_s))
            ->pause();
        Clock::advance(25 * 60);
        reminders.runningReminderTimerFired();
        ReminderPanel &panel = reminders.panel();
        QVERIFY(panel.isVisible());
        QVERIFY(!panel.isActiveWindow());
        QCOMPARE(desktop.user.beeps, 1);
        QCOMPARE(panel.titleLabel()->text(), u"Running timers:"_s);
        QCOMPARE(panel.textLabel()->text(), u"Web shop: 00:25\nWeb shop: 00:25"_s);
        QCOMPARE(panel.textLabel()->y(), ReminderPanel::textTop);
        QCOMPARE(Reminders::reminderText(desktop.collection, true), u"App: 00:00"_s);
        panel.findChild<QPushButton *>(u"reminderOk"_s)->click();
        QVERIFY(!panel.isVisible());
    }

    void panelSize_data() {
        QTest::addColumn<QSize>("title");
        QTest::addColumn<QSize>("text");
        QTest::addColumn<QSize>("panel");
        QTest::newRow("the text is wider") << QSize(90, 16) << QSize(150, 32) << QSize(366, 153);
        QTest::newRow("the title is wider") << QSize(400, 16) << QSize(150, 32) << QSize(616, 153);
        QTest::newRow("at least 122 high") << QSize(90, 5) << QSize(80, 5) << QSize(306, 122);
    }
    void panelSize() {
        QFETCH(QSize, title);
        QFETCH(QSize, text);
        QFETCH(QSize, panel);
        QCOMPARE(ReminderPanel::panelSize(title, text), panel);
    }

    void notificationsOnTheBus() {
        if (!QDBusConnection::sessionBus().isConnected())
            QSKIP("no session bus (the test runs under dbus-run-session)");
        QDBusConnection desktopSide =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"notifications"_s);
        NotificationService service;
        QVERIFY(desktopSide.registerObject(DBusNotifier::objectPath, &service,
                                           QDBusConnection::ExportAllSlots));
        QVERIFY(desktopSide.registerService(DBusNotifier::serviceName));
        DesktopFixture desktop;
        desktop.preferences.setObject(1, u"reminderType");
        Reminders &reminders = desktop.presence->reminders();
        // No paused timer: the notification still comes, with an empty text.
        reminders.pausedReminderTimerFired();
        QTRY_COMPARE(service.posted.size(), 1);
        QCOMPARE(service.posted.first(),
                 (QStringList{u"Hourfold"_s, u"pause.svg"_s, u"Paused timers:"_s, QString(),
                              u"Paused timers reminder"_s}));
        QVERIFY(!reminders.panel().isVisible());

        // Without the service the built-in panel takes over.
        desktopSide.unregisterService(DBusNotifier::serviceName);
        desktop.collection.startTimerInProject(desktop.project);
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(u"^No desktop notification service"_s));
        reminders.runningReminderTimerFired();
        QTRY_VERIFY(reminders.panel().isVisible());
        QCOMPARE(reminders.panel().textLabel()->text(), u"Web shop: 00:00"_s);
        QDBusConnection::disconnectFromBus(u"notifications"_s);
    }
};

QTEST_MAIN(TestReminders)
#include "tst_reminders.moc"
