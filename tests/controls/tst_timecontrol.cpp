#include "TimeControlWidget.h"
#include "WBTimeControl.h"
#include "model/Clock.h"
#include "stores/KeyedArchiver.h"
#include "stores/KeyedUnarchiver.h"
#include "support/RecordingAlerts.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

WBTimeControl::FormatInfo format(const QString &timeFormat) {
    return WBTimeControl::FormatInfo::fromFormat(timeFormat, u"AM"_s, u"PM"_s);
}

QString timeOf(const WBTimeControl &control) {
    const auto two = [](int value) { return QString::number(value).rightJustified(2, u'0'); };
    return two(control.hour()) + u':' + two(control.minute()) + u':' + two(control.second());
}

// One typed change: replace `length` characters at `position` with `text`.
struct Change {
    int position;
    int length;
    QString text;
};

} // namespace

Q_DECLARE_METATYPE(Change)

class TestTimeControl : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { Clock::setNow(QDateTime(QDate(2026, 11, 2), QTime(11, 0))); }
    void cleanup() { m_window.reset(); }

    void clockTypes_data() {
        QTest::addColumn<QString>("timeFormat");
        QTest::addColumn<bool>("localizing");
        QTest::addColumn<int>("hourType");
        QTest::addColumn<int>("minimum");
        QTest::addColumn<int>("maximum");
        QTest::addColumn<QString>("midnight");
        QTest::addColumn<QString>("afternoon"); // 13:00
        QTest::addColumn<int>("fields");
        QTest::addColumn<QString>("separator");
        QTest::newRow("24-hour") << u"%H:%M"_s << true << 1 << 0 << 23 << u"00"_s << u"13"_s << 2
                                 << u":"_s;
        QTest::newRow("12-hour") << u"%I:%M %p"_s << true << 2 << 1 << 12 << u"12"_s << u"01"_s << 3
                                 << u":"_s;
        QTest::newRow("12-hour unpadded")
            << u"%1I:%M %p"_s << true << 2 << 1 << 12 << u"12"_s << u"1"_s << 3 << u":"_s;
        QTest::newRow("C library unpadded 12-hour")
            << u"%l:%M %p"_s << true << 2 << 1 << 12 << u"12"_s << u"1"_s << 3 << u":"_s;
        QTest::newRow("C library unpadded 24-hour")
            << u"%k.%M"_s << true << 1 << 0 << 23 << u"0"_s << u"13"_s << 2 << u"."_s;
        QTest::newRow("neither clock")
            << u"%M %p"_s << true << 3 << 0 << 11 << u"00"_s << u"01"_s << 3 << u":"_s;
        QTest::newRow("not localizing")
            << u"%1I:%M %p"_s << false << 1 << 0 << 23 << u"00"_s << u"13"_s << 2 << u":"_s;
    }
    void clockTypes() {
        QFETCH(QString, timeFormat);
        QFETCH(bool, localizing);
        WBTimeControl control(format(timeFormat));
        control.setIsLocalizing(localizing);
        QTEST(control.hourType(), "hourType");
        QTEST(control.displayedHourMinimum(), "minimum");
        QTEST(control.displayedHourMaximum(), "maximum");
        QTEST(control.hourString(0), "midnight");
        QTEST(control.hourString(13), "afternoon");
        QTEST(int(control.visibleFields().size()), "fields");
        QTEST(control.timeSeparator(), "separator");
    }

    // Both ways: the 24-hour hour shown on the clock, and the shown hour with its half of the
    // day back to the 24-hour clock.
    void hourConversions_data() {
        QTest::addColumn<QString>("timeFormat");
        QTest::addColumn<int>("hour");
        QTest::addColumn<int>("localized");
        QTest::addColumn<bool>("afternoon");
        QTest::newRow("type 1") << u"%H:%M"_s << 15 << 15 << true;
        QTest::newRow("type 2 midnight") << u"%I:%M %p"_s << 0 << 12 << false;
        QTest::newRow("type 2 noon") << u"%I:%M %p"_s << 12 << 12 << true;
        QTest::newRow("type 2 morning") << u"%I:%M %p"_s << 9 << 9 << false;
        QTest::newRow("type 2 evening") << u"%I:%M %p"_s << 23 << 11 << true;
        QTest::newRow("type 3 midnight") << u"%M %p"_s << 0 << 0 << false;
        QTest::newRow("type 3 noon") << u"%M %p"_s << 12 << 0 << true;
        QTest::newRow("type 3 evening") << u"%M %p"_s << 23 << 11 << true;
    }
    void hourConversions() {
        QFETCH(QString, timeFormat);
        QFETCH(int, hour);
        QFETCH(int, localized);
        QFETCH(bool, afternoon);
        const WBTimeControl control(format(timeFormat));
        QCOMPARE(control.hourToLocalizedHour(hour), localized);
        QCOMPARE(control.localizedHourToHour(localized, afternoon), hour);
    }

    void stepping_data() {
        QTest::addColumn<QString>("timeFormat");
        QTest::addColumn<QTime>("start");
        QTest::addColumn<int>("roundTo");
        QTest::addColumn<int>("roundType");
        QTest::addColumn<int>("field");
        QTest::addColumn<QString>("steps"); // '+' up, '-' down
        QTest::addColumn<QTime>("minimum");
        QTest::addColumn<QTime>("maximum");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<int>("beeps");
        const int hour = WBTimeControl::HourField, minute = WBTimeControl::MinuteField;
        const int half = WBTimeControl::MeridianField;
        const auto row = [](const char *name, const QString &timeFormat, QTime start, int roundTo,
                            int roundType, int field, const QString &steps, QTime minimum,
                            QTime maximum, const QString &expected, int beeps) {
            QTest::newRow(name) << timeFormat << start << roundTo << roundType << field << steps
                                << minimum << maximum << expected << beeps;
        };
        const QString h24 = u"%H:%M"_s, h12 = u"%I:%M %p"_s, up = u"+"_s, down = u"-"_s;
        row("minute wrap moves the hour back and rounds down", h24, {10, 0}, 15, 0, minute, down,
            {}, {}, u"09:45:00"_s, 0);
        row("minute wrap at midnight", h24, {0, 0}, 15, 0, minute, down, {}, {}, u"23:45:00"_s, 0);
        row("minute wrap without rounding keeps the hour", h24, {10, 0}, 0, 0, minute, down, {}, {},
            u"10:59:00"_s, 0);
        row("minute up rounds up", h24, {10, 7}, 15, 0, minute, up, {}, {}, u"10:15:00"_s, 0);
        row("minute down rounds down", h24, {10, 8}, 15, 1, minute, down, {}, {}, u"10:00:00"_s, 0);
        row("rounding up carries into the hour", h24, {10, 50}, 15, 0, minute, up, {}, {},
            u"11:00:00"_s, 0);
        row("rounding up past midnight wraps", h24, {23, 50}, 15, 0, minute, up, {}, {},
            u"00:00:00"_s, 0);
        row("minute up wrap rounds down", h24, {10, 59}, 15, 0, minute, up, {}, {}, u"10:00:00"_s,
            0);
        row("hour wraps", h24, {23, 5}, 15, 0, hour, up, {}, {}, u"00:05:00"_s, 0);
        row("morning to afternoon and back", h12, {9, 30}, 0, 0, half, up, {}, {}, u"21:30:00"_s,
            0);
        row("afternoon field twice", h12, {9, 30}, 0, 0, half, u"++"_s, {}, {}, u"09:30:00"_s, 0);
        row("above the maximum beeps", h24, {17, 0}, 0, 0, hour, up, {}, {17, 30}, u"17:00:00"_s,
            1);
        row("below the minimum beeps", h24, {9, 30}, 5, 0, minute, u"--"_s, {9, 30}, {},
            u"09:30:00"_s, 2);
        row("at the maximum is inside", h24, {16, 30}, 0, 0, hour, up, {}, {17, 30}, u"17:30:00"_s,
            0);
        row("afternoon beyond the maximum", h12, {9, 0}, 0, 0, half, up, {}, {18, 0}, u"09:00:00"_s,
            1);
    }
    void stepping() {
        QFETCH(QString, timeFormat);
        QFETCH(QTime, start);
        QFETCH(int, roundTo);
        QFETCH(int, roundType);
        QFETCH(QString, steps);
        QFETCH(QTime, minimum);
        QFETCH(QTime, maximum);
        RecordingAlerts alerts;
        WBTimeControl control(format(timeFormat));
        control.setAlerts(&alerts);
        control.setDate(QDateTime(QDate(2026, 11, 2), start));
        control.setRoundTo(roundTo);
        control.setRoundType(roundType);
        if (minimum.isValid())
            control.setMinHour(minimum.hour(), minimum.minute(), 0);
        if (maximum.isValid())
            control.setMaxHour(maximum.hour(), maximum.minute(), 0);
        QFETCH(int, field);
        control.setSelected(field);
        QSignalSpy stepped(&control, &WBTimeControl::stepped);
        for (const QChar step : steps)
            step == u'+' ? control.stepUp() : control.stepDown();
        QTEST(timeOf(control), "expected");
        QTEST(alerts.beeps, "beeps");
        QCOMPARE(stepped.count(), steps.size());
        QCOMPARE(control.roundType(), roundType); // the direction of a step is only borrowed
        QCOMPARE(control.stepperMidValue(), control.stepperValue());
    }

    void typing_data() {
        QTest::addColumn<QString>("timeFormat");
        QTest::addColumn<QTime>("start");
        QTest::addColumn<int>("field");
        QTest::addColumn<QList<Change>>("changes");
        QTest::addColumn<QList<bool>>("taken");
        QTest::addColumn<double>("stepper"); // after the changes, before editing ends
        QTest::addColumn<QTime>("minimum");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QString>("expected"); // after editing ends
        const int hour = WBTimeControl::HourField, minute = WBTimeControl::MinuteField;
        const int half = WBTimeControl::MeridianField;
        const auto row = [](const char *name, const QString &timeFormat, QTime start, int field,
                            const QList<Change> &changes, const QList<bool> &taken, double stepper,
                            QTime minimum, bool accepted, const QString &expected) {
            QTest::newRow(name) << timeFormat << start << field << changes << taken << stepper
                                << minimum << accepted << expected;
        };
        const QString h24 = u"%H:%M"_s, h12 = u"%I:%M %p"_s;
        row("afternoon hour takes effect when editing ends", h12, {15, 0}, hour, {{0, 2, u"7"_s}},
            {true}, 7, {}, true, u"19:00:00"_s);
        row("twelve in the afternoon is noon", h12, {15, 0}, hour, {{0, 2, u"1"_s}, {1, 0, u"2"_s}},
            {true, true}, 12, {}, true, u"12:00:00"_s);
        row("twelve in the morning is midnight", h12, {3, 0}, hour,
            {{0, 2, u"1"_s}, {1, 0, u"2"_s}}, {true, true}, 12, {}, true, u"00:00:00"_s);
        row("hour outside the clock's range is refused", h12, {15, 0}, hour,
            {{0, 2, u"1"_s}, {1, 0, u"3"_s}}, {true, true}, 13, {}, false, u"15:00:00"_s);
        row("zero on a 1 to 12 clock is refused", h12, {15, 0}, hour, {{0, 2, u"0"_s}}, {true}, 0,
            {}, false, u"15:00:00"_s);
        row("24-hour clock", h24, {15, 0}, hour, {{0, 2, u"2"_s}, {1, 0, u"1"_s}}, {true, true}, 21,
            {}, true, u"21:00:00"_s);
        row("minute out of range keeps the stepper", h24, {15, 20}, minute,
            {{0, 2, u"7"_s}, {1, 0, u"5"_s}}, {true, true}, 20, {}, false, u"15:20:00"_s);
        row("letters, a third digit and long replacements are refused", h24, {15, 20}, minute,
            {{0, 2, u"a"_s}, {2, 0, u"1"_s}, {0, 3, u"1"_s}, {0, 2, u"4"_s}},
            {false, false, false, true}, 4, {}, true, u"15:04:00"_s);
        row("deleting leaves zero", h24, {15, 20}, minute, {{0, 2, u""_s}}, {true}, 0, {}, true,
            u"15:00:00"_s);
        row("typed hour is tested against the bounds before conversion", h12, {20, 0}, hour,
            {{0, 2, u"8"_s}}, {true}, 8, {9, 0}, false, u"20:00:00"_s);
        row("p switches to the afternoon", h12, {9, 0}, half, {{0, 2, u"p"_s}}, {false}, 1, {},
            true, u"21:00:00"_s);
        row("p twice stays in the afternoon", h12, {9, 0}, half, {{0, 2, u"p"_s}, {0, 2, u"P"_s}},
            {false, false}, 1, {}, true, u"21:00:00"_s);
        row("A switches to the morning", h12, {21, 0}, half, {{0, 2, u"A"_s}, {0, 2, u"x"_s}},
            {false, false}, 0, {}, true, u"09:00:00"_s);
    }
    void typing() {
        QFETCH(QString, timeFormat);
        QFETCH(QTime, start);
        QFETCH(int, field);
        QFETCH(QList<Change>, changes);
        QFETCH(QList<bool>, taken);
        QFETCH(QTime, minimum);
        RecordingAlerts alerts;
        WBTimeControl control(format(timeFormat));
        control.setAlerts(&alerts);
        control.setDate(QDateTime(QDate(2026, 11, 2), start));
        if (minimum.isValid())
            control.setMinHour(minimum.hour(), minimum.minute(), 0);
        control.setSelected(field);
        const int hourBefore = control.hour();
        for (qsizetype i = 0; i < changes.size(); ++i) {
            const Change &change = changes.at(i);
            QCOMPARE(control.changeText(change.position, change.length, change.text), taken.at(i));
        }
        QTEST(control.stepperValue(), "stepper");
        if (field != WBTimeControl::MeridianField)
            QCOMPARE(control.hour(), hourBefore); // nothing is taken over while typing
        QSignalSpy edited(&control, &WBTimeControl::edited);
        QFETCH(bool, accepted);
        QCOMPARE(control.acceptNewValueInSelectedCell(), accepted);
        QTEST(timeOf(control), "expected");
        QCOMPARE(edited.count(), accepted ? 1 : 0);
        QCOMPARE(alerts.beeps, accepted ? 0 : 1);
        QVERIFY(!control.isEditing());
        QCOMPARE(control.stepperValue(), control.stepperMidValue());
    }

    void roundTime_data() {
        QTest::addColumn<QTime>("start");
        QTest::addColumn<int>("roundTo");
        QTest::addColumn<int>("roundType");
        QTest::addColumn<QString>("expected");
        QTest::newRow("no step leaves the seconds") << QTime(10, 7, 30) << 0 << 0 << u"10:07:30"_s;
        QTest::newRow("nearest") << QTime(10, 7, 30) << 15 << 0 << u"10:00:00"_s;
        QTest::newRow("tie rounds up") << QTime(10, 45) << 30 << 0 << u"11:00:00"_s;
        QTest::newRow("a step that does not divide the hour carries")
            << QTime(10, 50) << 45 << 1 << u"11:30:00"_s;
    }
    void roundTime() {
        QFETCH(QTime, start);
        QFETCH(int, roundTo);
        QFETCH(int, roundType);
        WBTimeControl control(format(u"%H:%M"_s));
        control.setDate(QDateTime(QDate(2026, 11, 2), start));
        control.setRoundTo(roundTo);
        control.setRoundType(roundType);
        control.roundTime();
        QTEST(timeOf(control), "expected");
    }

    // Setting the time announces exactly what changed, "date" with any of the three.
    void changeSignals() {
        WBTimeControl control(format(u"%H:%M"_s));
        QSignalSpy hour(&control, &WBTimeControl::hourChanged);
        QSignalSpy minute(&control, &WBTimeControl::minuteChanged);
        QSignalSpy date(&control, &WBTimeControl::dateChanged);
        QSignalSpy enabled(&control, &WBTimeControl::enabledChanged);
        control.setHour(7);
        control.setHour(7);
        control.setMinute(30);
        control.setEnabled(false);
        QCOMPARE(hour.count(), 1);
        QCOMPARE(minute.count(), 1);
        QCOMPARE(date.count(), 2);
        QCOMPARE(date.last().first().toDateTime(), QDateTime(QDate(2026, 11, 2), QTime(7, 30)));
        QCOMPARE(enabled.count(), 1);
        control.stepUp(); // a disabled control does not step
        QCOMPARE(control.hour(), 7);
    }

    // The four look settings are archived under their keys; the time is not.
    void archiving() {
        WBTimeControl control(format(u"%H:%M"_s));
        control.setShowSeconds(true);
        control.setAlignStepper(true);
        control.setAppearance(WBTimeControl::flatAppearance);
        control.setIsLocalizing(false);
        control.setHour(13);
        const QByteArray archive = KeyedArchiver::archivedData(control);
        QVariantMap read;
        const KeyedUnarchiver::ClassTable classes{
            {u"WBTimeControl"_s, [&read](KeyedUnarchiver &coder) {
                 for (const QString &key : {u"showSeconds"_s, u"alignStepper"_s, u"isLocalizing"_s})
                     read.insert(key, coder.decodeBool(key));
                 read.insert(u"appearance"_s, coder.decodeInt(u"appearance"_s));
                 read.insert(u"hour"_s, coder.containsValue(u"hour"_s));
                 return WBTimeControl::initWithCoder(coder);
             }}};
        const KeyedUnarchiver::Result result = KeyedUnarchiver::unarchive(archive, classes);
        QVERIFY2(result.ok, qPrintable(result.error));
        QCOMPARE(read, (QVariantMap{{u"showSeconds"_s, true},
                                    {u"alignStepper"_s, true},
                                    {u"isLocalizing"_s, false},
                                    {u"appearance"_s, qint64(1)},
                                    {u"hour"_s, false}}));
        const auto copy =
            std::dynamic_pointer_cast<WBTimeControl>(result.root.value<KeyedObject>());
        QVERIFY(copy);
        QVERIFY(copy->showSeconds() && copy->alignStepper() && copy->isFlatAppearance());
        QCOMPARE(copy->isLocalizing(), false);
        QCOMPARE(copy->visibleFields().size(), 3);
    }
    void keyboard_data() {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<int>("selected");
        // Keys: U/D up and down, L/R left and right, T tab, B shift+tab, E return, X escape,
        // < backspace; anything else is typed.
        QTest::newRow("up steps the hour") << u"U"_s << u"10:30"_s << 0;
        QTest::newRow("right then down steps the minute") << u"RD"_s << u"09:29"_s << 1;
        QTest::newRow("tab moves to the minute") << u"TU"_s << u"09:31"_s << 1;
        QTest::newRow("shift+tab moves back") << u"TTBU"_s << u"09:31"_s << 1;
        QTest::newRow("left stops at the first field") << u"LLU"_s << u"10:30"_s << 0;
        QTest::newRow("digits replace then append") << u"R45E"_s << u"09:45"_s << 1;
        QTest::newRow("a typed hour counts on moving on") << u"7T"_s << u"07:30"_s << 1;
        QTest::newRow("escape drops the typing") << u"R45X"_s << u"09:30"_s << 1;
        QTest::newRow("backspace then a digit") << u"R4<5E"_s << u"09:05"_s << 1;
        QTest::newRow("p in the last field") << u"RRp"_s << u"21:30"_s << 3;
        QTest::newRow("up on the last field") << u"TTU"_s << u"21:30"_s << 3;
        QTest::newRow("step takes a typed value over first") << u"R4U"_s << u"09:05"_s << 1;
    }
    void keyboard() {
        startWidget();
        QFETCH(QString, keys);
        const QHash<QChar, Qt::Key> named{
            {u'U', Qt::Key_Up},     {u'D', Qt::Key_Down},   {u'L', Qt::Key_Left},
            {u'R', Qt::Key_Right},  {u'T', Qt::Key_Tab},    {u'B', Qt::Key_Backtab},
            {u'E', Qt::Key_Return}, {u'X', Qt::Key_Escape}, {u'<', Qt::Key_Backspace}};
        for (const QChar key : keys) {
            if (!named.contains(key))
                QTest::keyClicks(m_widget, QString(key));
            else
                QTest::keyClick(m_widget, named[key],
                                key == u'B' ? Qt::ShiftModifier : Qt::NoModifier);
        }
        QTEST(shown(), "expected");
        QTEST(m_control->selected(), "selected");
        QVERIFY(m_widget->hasFocus());
    }

    // Tab after the last field, and shift+tab before the first, leave the control.
    void tabLeavesAtTheEnds() {
        startWidget();
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(m_widget, Qt::Key_Tab);
        QVERIFY(m_next->hasFocus());
        m_widget->setFocus(Qt::BacktabFocusReason);
        QCOMPARE(m_control->selected(), int(WBTimeControl::MeridianField));
    }

    void arrowsStepAndBeepAtTheBounds() {
        startWidget();
        m_control->setMaxHour(10, 0, 0);
        QTest::mouseClick(m_widget, Qt::LeftButton, {}, m_widget->fieldRect(1).center());
        QCOMPARE(m_control->selected(), int(WBTimeControl::MinuteField));
        QTest::mouseClick(m_widget, Qt::LeftButton, {}, m_widget->upButtonRect().center());
        QCOMPARE(shown(), u"09:31"_s);
        QTest::mouseClick(m_widget, Qt::LeftButton, {}, m_widget->fieldRect(0).center());
        QTest::mouseClick(m_widget, Qt::LeftButton, {}, m_widget->upButtonRect().center());
        QCOMPARE(shown(), u"09:31"_s);
        QCOMPARE(m_alerts.beeps, 1);
        QTest::mouseClick(m_widget, Qt::LeftButton, {}, m_widget->downButtonRect().center());
        QCOMPARE(shown(), u"08:31"_s);
    }

    // The fields fit inside the frame, left of the arrows, for both clocks and with seconds, and
    // a disabled control takes no keys.
    void fieldsFitAndDisabledIgnoresKeys_data() {
        QTest::addColumn<QString>("timeFormat");
        QTest::addColumn<bool>("seconds");
        QTest::newRow("12-hour") << u"%I:%M %p"_s << false;
        QTest::newRow("24-hour with seconds") << u"%H:%M"_s << true;
    }
    void fieldsFitAndDisabledIgnoresKeys() {
        QFETCH(QString, timeFormat);
        QFETCH(bool, seconds);
        startWidget();
        m_control->setFormatInfo(
            WBTimeControl::FormatInfo::fromFormat(timeFormat, u"AM"_s, u"PM"_s));
        m_control->setShowSeconds(seconds);
        m_widget->resize(m_widget->sizeHint());
        const QRect last = m_widget->fieldRect(m_control->visibleFields().constLast());
        QVERIFY(m_widget->rect().contains(m_widget->fieldRect(0)));
        QVERIFY2(last.right() < m_widget->upButtonRect().left(),
                 qPrintable(u"%1 %2"_s.arg(last.right()).arg(m_widget->upButtonRect().left())));
        m_control->setEnabled(false);
        QVERIFY(!m_widget->isEnabled());
        QTest::keyClick(m_widget, Qt::Key_Up);
        QCOMPARE(shown(), u"09:30"_s);
    }

private:
    // The widget over a 12-hour control at 09:30, focused, with a field after it.
    void startWidget() {
        m_window = std::make_unique<QWidget>();
        m_control = new WBTimeControl(format(u"%I:%M %p"_s), m_window.get());
        m_control->setAlerts(&m_alerts);
        m_control->setHour(9);
        m_control->setMinute(30);
        m_widget = new TimeControlWidget(*m_control);
        m_next = new QLineEdit;
        auto *layout = new QVBoxLayout(m_window.get());
        layout->addWidget(m_widget);
        layout->addWidget(m_next);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_widget->setFocus(Qt::TabFocusReason);
        m_alerts.beeps = 0;
    }
    QString shown() const { return timeOf(*m_control).left(5); }

    RecordingAlerts m_alerts;
    std::unique_ptr<QWidget> m_window;
    WBTimeControl *m_control = nullptr;
    TimeControlWidget *m_widget = nullptr;
    QLineEdit *m_next = nullptr;
};

QTEST_MAIN(TestTimeControl)
#include "tst_timecontrol.moc"
