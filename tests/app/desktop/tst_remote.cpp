#include "DesktopFixture.h"

#include "desktop/AppleRemote.h"
#include "desktop/EvdevRemote.h"
#include "desktop/MiniWindow.h"
#include "desktop/MprisPlayer.h"
#include "desktop/RemoteButtonLogic.h"
#include "desktop/RemoteControl.h"
#include "desktop/RemoteKeys.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QSignalSpy>
#include <QTest>

#include <linux/input-event-codes.h>

using Action = RemoteButtonLogic::Action;
Q_DECLARE_METATYPE(RemoteButtonLogic::Action)

namespace {

// The buttons a burst or a string gives, as "button:pressed" (1 or 0).
QStringList buttonsOf(QSignalSpy &spy) {
    QStringList buttons;
    for (const QList<QVariant> &call : std::as_const(spy))
        buttons << u"%1:%2"_s.arg(call.at(0).toInt()).arg(call.at(1).toBool() ? 1 : 0);
    return buttons;
}

} // namespace

// The remote: its two tables, bursts, the keys of input devices, what each button does and the
// media player on the session bus.
class TestRemote : public QObject {
    Q_OBJECT

private slots:
    void cookieStrings_data() {
        QTest::addColumn<int>("version");
        QTest::addColumn<QString>("cookies");
        QTest::addColumn<int>("button");
        QTest::newRow("4: up") << 4 << u"14_12_11_6_5_"_s << 0;
        QTest::newRow("4: play") << 4 << u"14_8_6_5_14_8_6_5_"_s << 3;
        QTest::newRow("4: menu held") << 4 << u"14_6_5_14_6_5_"_s << 8;
        QTest::newRow("4: the other play") << 4 << u"18_14_6_5_18_14_6_5_"_s << 9;
        QTest::newRow("4: identity") << 4 << u"19_"_s << 10;
        QTest::newRow("5: down") << 5 << u"31_30_28_18_"_s << 1;
        QTest::newRow("5: right") << 5 << u"31_22_18_31_22_18_"_s << 4;
        QTest::newRow("5: left held") << 5 << u"31_18_3_2_"_s << 7;
        QTest::newRow("5: play is 9, never 3") << 5 << u"31_21_18_31_21_18_"_s << 9;
        QTest::newRow("5: identity") << 5 << u"19_"_s << 10;
        QTest::newRow("5: a version-4 string") << 5 << u"14_12_11_6_5_"_s << -1;
        QTest::newRow("6: nothing known") << 6 << u"19_"_s << -1;
    }
    void cookieStrings() {
        QFETCH(int, version);
        QFETCH(QString, cookies);
        QFETCH(int, button);
        AppleRemote remote(version);
        QSignalSpy spy(&remote, &AppleRemote::appleRemoteButton);
        if (button < 0)
            QTest::ignoreMessage(QtWarningMsg,
                                 qPrintable(u"Unknown button for cookiestring "_s + cookies));
        remote.handleCookieString(cookies, 1);
        QCOMPARE(buttonsOf(spy), button < 0 ? QStringList() : QStringList{u"%1:1"_s.arg(button)});
        QCOMPARE(remote.cookieToButtonMapping().size(), version == 4 ? 11 : version == 5 ? 10 : 0);
    }

    void bursts() {
        AppleRemote remote(5);
        QSignalSpy spy(&remote, &AppleRemote::appleRemoteButton);
        remote.handleBurst({{31, 1}, {29, 1}, {28, 0}, {18, 0}});
        remote.handleBurst({{31, 0}, {29, 0}, {28, 0}, {18, 0}});
        // The identity comes first, the rest of its burst after.
        remote.handleBurst({{31, 0}, {19, 217}, {30, 1}, {28, 0}, {18, 0}});
        QCOMPARE(buttonsOf(spy), (QStringList{u"0:1"_s, u"0:0"_s, u"10:0"_s, u"1:1"_s}));
        QCOMPARE(remote.remoteId(), 217);
    }

    void keysOfInputDevices_data() {
        QTest::addColumn<QList<int>>("keys"); // code, value, held; three numbers a key event
        QTest::addColumn<QStringList>("buttons");
        QTest::newRow("volume up pressed and let go")
            << QList<int>{KEY_VOLUMEUP, 1, 0, KEY_VOLUMEUP, 2, 0, KEY_VOLUMEUP, 0, 1}
            << QStringList{u"0:1"_s, u"0:0"_s};
        QTest::newRow("down arrow")
            << QList<int>{KEY_DOWN, 1, 0, KEY_DOWN, 0, 0} << QStringList{u"1:1"_s, u"1:0"_s};
        QTest::newRow("play/pause")
            << QList<int>{KEY_PLAYPAUSE, 1, 0, KEY_PLAYPAUSE, 0, 0} << QStringList{u"9:1"_s};
        QTest::newRow("next clicked, then held")
            << QList<int>{KEY_NEXTSONG, 1, 0, KEY_NEXTSONG, 0, 0, KEY_NEXTSONG, 1, 0,
                          KEY_NEXTSONG, 2, 0, KEY_NEXTSONG, 0, 1}
            << QStringList{u"4:1"_s, u"4:1"_s, u"6:1"_s, u"6:0"_s};
        QTest::newRow("menu held")
            << QList<int>{KEY_MENU, 1, 0, KEY_MENU, 2, 0} << QStringList{u"2:1"_s, u"8:1"_s};
        QTest::newRow("previous") << QList<int>{KEY_PREVIOUSSONG, 1, 0} << QStringList{u"5:1"_s};
        QTest::newRow("a letter") << QList<int>{KEY_A, 1, 0, KEY_A, 0, 0} << QStringList();
    }
    void keysOfInputDevices() {
        QFETCH(QList<int>, keys);
        QFETCH(QStringList, buttons);
        AppleRemote remote(RemoteControl::tableVersion);
        QSignalSpy spy(&remote, &AppleRemote::appleRemoteButton);
        for (qsizetype i = 0; i + 2 < keys.size(); i += 3) {
            const AppleRemote::Burst burst =
                RemoteKeys::burstForKey(keys[i], keys[i + 1], keys[i + 2] != 0);
            if (!burst.isEmpty())
                remote.handleBurst(burst);
        }
        QCOMPARE(buttonsOf(spy), buttons);
    }

    void remoteDevices_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("device");
        QTest::addColumn<bool>("remote");
        const QString usb = u"/sys/devices/pci0000:00/0000:00:14.0/usb1/1-2/1-2:1.0/input/input7"_s;
        QTest::newRow("remote-control core")
            << u"Hauppauge WinTV"_s << u"/sys/devices/platform/ir/rc/rc0/input9"_s << true;
        QTest::newRow("IR receiver") << u"gpio_ir_recv"_s << usb << true;
        QTest::newRow("eHome") << u"Media Center Ed. eHome Infrared Remote Transceiver"_s << usb
                               << true;
        QTest::newRow("HDMI CEC") << u"HDMI CEC"_s << usb << true;
        QTest::newRow("keyboard") << u"AT Translated Set 2 keyboard"_s << usb << false;
        QTest::newRow("wireless receiver") << u"Logitech USB Receiver"_s << usb << false;
        QTest::newRow("a word holding ir") << u"Virtual Mirror Keys"_s << usb << false;
    }
    void remoteDevices() {
        QFETCH(QString, name);
        QFETCH(QString, device);
        QFETCH(bool, remote);
        QCOMPARE(EvdevRemote::isRemoteDevice(name, device), remote);
    }

    void rows_data() {
        QTest::addColumn<int>("current");
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("previous");
        QTest::addColumn<int>("next");
        QTest::newRow("in the middle") << 2 << 5 << 1 << 3;
        QTest::newRow("first row") << 0 << 5 << 4 << 1;
        QTest::newRow("last row") << 4 << 5 << 3 << 0;
        QTest::newRow("no selection") << -1 << 5 << 4 << 0;
        QTest::newRow("no rows") << -1 << 0 << -1 << -1;
    }
    void rows() {
        QFETCH(int, current);
        QFETCH(int, rows);
        QFETCH(int, previous);
        QFETCH(int, next);
        QCOMPARE(RemoteButtonLogic::previousRow(current, rows), previous);
        QCOMPARE(RemoteButtonLogic::nextRow(current, rows), next);
    }

    // The mini window and the main window take turns on button 2; the other buttons act in the
    // window that shows.
    void buttonsInTheWindows() {
        DesktopFixture desktop;
        QSignalSpy actions(desktop.presence.get(), &DesktopPresence::remoteAction);
        const auto entry = desktop.collection.startTimerInProject(desktop.project);
        desktop.presence->appleRemoteButton(1, false);
        desktop.presence->appleRemoteButton(9, true);
        QCOMPARE(actions.size(), 2);
        QCOMPARE(actions.at(0).at(0).value<Action>(), Action::SelectNext);
        QCOMPARE(actions.at(1).at(0).value<Action>(), Action::PauseOrResume);
        desktop.presence->appleRemoteButton(2, true);
        QVERIFY(desktop.presence->miniWindow().isHUDVisible());
        QVERIFY(!desktop.mainWindow.isVisible());
        QVERIFY(desktop.preferences.boolForKey(u"showMiniWindow"));
        desktop.presence->appleRemoteButton(3, true);
        QVERIFY(entry->isPaused());
        QTest::ignoreMessage(QtWarningMsg, "Unmapped event for button 11");
        desktop.presence->appleRemoteButton(11, true);
        desktop.presence->appleRemoteButton(2, true);
        QVERIFY(desktop.mainWindow.isVisible());
        QVERIFY(!desktop.preferences.boolForKey(u"showMiniWindow"));
        QCOMPARE(actions.size(), 2);
    }

    // PlayPause called over the session bus pauses the timer selected in the mini window, and
    // the player shows it.
    void mediaPlayerOnTheBus() {
        if (!QDBusConnection::sessionBus().isConnected())
            QSKIP("no session bus (the test runs under dbus-run-session)");
        DesktopFixture desktop;
        desktop.collection.startTimerInProject(desktop.project);
        const auto second = desktop.collection.startTimerInProject(desktop.project);
        desktop.presence->showMiniWindow();
        desktop.presence->miniWindow().down();
        desktop.preferences.setObject(true, u"useRemote");
        MprisPlayer &player = desktop.presence->remoteControl().player();
        QVERIFY(player.isRegistered());
        QCOMPARE(player.metadata().value(u"xesam:title"_s).toString(), u"Web shop: 00:00"_s);

        QDBusConnection caller =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"caller"_s);
        const auto call = [&caller](const QString &method) {
            QDBusPendingCallWatcher watcher(caller.asyncCall(
                QDBusMessage::createMethodCall(MprisPlayer::serviceName, MprisPlayer::objectPath,
                                               MprisPlayer::playerInterface, method)));
            QTRY_VERIFY(watcher.isFinished());
            QVERIFY(!watcher.isError());
        };
        call(u"PlayPause"_s);
        QVERIFY(second->isPaused());
        QCOMPARE(player.playbackStatus(), u"Paused"_s);
        call(u"Previous"_s);
        QCOMPARE(desktop.presence->miniWindow().logic().selectedIndex(), 0);
        QCOMPARE(player.playbackStatus(), u"Playing"_s);
        QDBusConnection::disconnectFromBus(u"caller"_s);

        desktop.preferences.setObject(false, u"useRemote");
        QVERIFY(!player.isRegistered());
    }
};

QTEST_MAIN(TestRemote)
#include "tst_remote.moc"
