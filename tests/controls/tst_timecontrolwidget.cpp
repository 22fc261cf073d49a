#include "TimeControlWidget.h"
#include "model/Clock.h"
#include "support/RecordingAlerts.h"

#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QString timeOf(const WBTimeControl &control) {
    const auto two = [](int value) { return QString::number(value).rightJustified(2, u'0'); };
    return two(control.hour()) + u':' + two(control.minute());
}

} // namespace

class TestTimeControlWidget : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { Clock::setNow(QDateTime(QDate(2026, 11, 2), QTime(11, 0))); }

    void init() {
        m_window = std::make_unique<QWidget>();
        m_control = new WBTimeControl(
            WBTimeControl::FormatInfo::fromFormat(u"%I:%M %p"_s, u"AM"_s, u"PM"_s), m_window.get());
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
        QTEST(timeOf(*m_control), "expected");
        QTEST(m_control->selected(), "selected");
        QVERIFY(m_widget->hasFocus());
    }

    // Tab after the last field, and shift+tab before the first, leave the control.
    void tabLeavesAtTheEnds() {
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(m_widget, Qt::Key_Tab);
        QVERIFY(m_next->hasFocus());
        m_widget->setFocus(Qt::BacktabFocusReason);
        QCOMPARE(m_control->selected(), int(WBTimeControl::MeridianField));
    }

    void arrowsStepAndBeepAtTheBounds() {
        m_control->setMaxHour(10, 0, 0);
        QTest::mouseClick(m_widget, Qt::LeftButton, {}, m_widget->fieldRect(1).center());
        QCOMPARE(m_control->selected(), int(WBTimeControl::MinuteField));
        QTest::mouseClick(m_widget, Qt::LeftButton, {}, m_widget->upButtonRect().center());
        QCOMPARE(timeOf(*m_control), u"09:31"_s);
        QTest::mouseClick(m_widget, Qt::LeftButton, {}, m_widget->fieldRect(0).center());
        QTest::mouseClick(m_widget, Qt::LeftButton, {}, m_widget->upButtonRect().center());
        QCOMPARE(timeOf(*m_control), u"09:31"_s);
        QCOMPARE(m_alerts.beeps, 1);
        QTest::mouseClick(m_widget, Qt::LeftButton, {}, m_widget->downButtonRect().center());
        QCOMPARE(timeOf(*m_control), u"08:31"_s);
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
        QCOMPARE(timeOf(*m_control), u"09:30"_s);
    }

private:
    RecordingAlerts m_alerts;
    std::unique_ptr<QWidget> m_window;
    WBTimeControl *m_control = nullptr;
    TimeControlWidget *m_widget = nullptr;
    QLineEdit *m_next = nullptr;
};

QTEST_MAIN(TestTimeControlWidget)
#include "tst_timecontrolwidget.moc"
