#include "app/SheetFixture.h"

#include "TimeControlWidget.h"
#include "WBTimeControl.h"
#include "mainwindow/MainWindow.h"
#include "platform/LocaleFormat.h"
#include "preferences/PreferencesForm.h"
#include "preferences/PreferencesWindow.h"
#include "stores/CustomerStorage.h"
#include "stores/TagStorage.h"

#include <QAbstractSpinBox>
#include <QButtonGroup>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

using Drive = std::function<void(PreferencesWindow &)>;
Q_DECLARE_METATYPE(Drive)

namespace {

template <typename T> T *control(PreferencesWindow &window, const QString &name) {
    T *widget = window.findChild<T *>(name);
    if (!widget)
        qFatal("no control %s", qPrintable(name));
    return widget;
}

Drive click(const QString &name) {
    return [name](PreferencesWindow &window) { control<QAbstractButton>(window, name)->click(); };
}

Drive key(const QString &name, Qt::Key key) {
    return [name, key](PreferencesWindow &window) {
        QTest::keyClick(control<QWidget>(window, name), key);
    };
}

Drive chooseColor(const QString &name, const QColor &color) {
    return [name, color](PreferencesWindow &window) {
        control<QAbstractButton>(window, name)->click();
        auto *dialog = window.findChild<QColorDialog *>();
        QVERIFY(dialog);
        dialog->setCurrentColor(color);
        dialog->accept();
    };
}

// The controls of the preferences window that hold a setting; each is named after its key, a
// radio button after its key and row.
bool isSettingControl(const QWidget *widget) {
    if (widget->objectName().isEmpty())
        return false;
    return qobject_cast<const QAbstractButton *>(widget) ||
           qobject_cast<const QComboBox *>(widget) ||
           qobject_cast<const QAbstractSpinBox *>(widget) ||
           qobject_cast<const TimeControlWidget *>(widget);
}

QString settingKey(const QWidget *control) {
    if (const auto *radio = qobject_cast<const QRadioButton *>(control))
        return radio->group()->objectName();
    return control->objectName();
}

// What a setting's control shows, as text, to compare two windows.
QString shownSetting(const QWidget *control) {
    if (const auto *radio = qobject_cast<const QRadioButton *>(control))
        return radio->group()->checkedButton()->objectName();
    if (const auto *box = qobject_cast<const QCheckBox *>(control))
        return box->isChecked() ? u"on"_s : u"off"_s;
    if (const auto *button = qobject_cast<const QPushButton *>(control)) {
        const QImage swatch = button->icon().pixmap(button->iconSize()).toImage();
        return swatch.pixelColor(swatch.rect().center()).name();
    }
    if (const auto *combo = qobject_cast<const QComboBox *>(control))
        return combo->currentText();
    if (const auto *spin = qobject_cast<const QAbstractSpinBox *>(control))
        return spin->text();
    const WBTimeControl &time = qobject_cast<const TimeControlWidget *>(control)->control();
    return QTime(time.hour(), time.minute()).toString();
}

// Changes what the control shows, or puts back (undo) what it showed before; a control that
// another setting switches off changes all the same, its setting still holds a value.
void changeSetting(QWidget *control, bool undo, const QString &before) {
    if (auto *radio = qobject_cast<QRadioButton *>(control)) {
        QAbstractButton *target = control->window()->findChild<QAbstractButton *>(before);
        if (!undo) {
            target = radio;
            if (radio->isChecked())
                target = radio->group()->buttons().at(radio->group()->id(radio) == 0 ? 1 : 0);
        }
        target->setChecked(true);
    } else if (auto *box = qobject_cast<QCheckBox *>(control)) {
        box->toggle();
    } else if (auto *button = qobject_cast<QPushButton *>(control)) {
        button->click();
        auto *dialog = control->window()->findChild<QColorDialog *>();
        dialog->setCurrentColor(undo ? QColor(before) : QColor(before).darker());
        dialog->accept();
        delete dialog;
    } else if (auto *combo = qobject_cast<QComboBox *>(control)) {
        combo->setCurrentIndex(undo ? combo->findText(before)
                                    : (combo->currentIndex() + 1) % combo->count());
    } else if (auto *spin = qobject_cast<QAbstractSpinBox *>(control)) {
        spin->stepBy(undo ? -1 : 1);
    } else {
        QTest::keyClick(control, undo ? Qt::Key_Down : Qt::Key_Up);
    }
}

} // namespace

class TestPreferencesWindow : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { LocaleFormat::setDateLocale(u"en_US"_s); }

    void init() { m_fixture = std::make_unique<SheetFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void controlsWriteTheirSetting_data() {
        QTest::addColumn<QVariantMap>("given");
        QTest::addColumn<QString>("key");
        QTest::addColumn<Drive>("drive");
        QTest::addColumn<QVariant>("expected");

        const QVariantMap none;
        const QVariantMap reminding{{u"useReminders"_s, true}};
        // Each check box turns its registered default around.
        const QList<std::pair<QString, bool>> switches = {{u"loadLastOpenFile"_s, false},
                                                          {u"saveOnExit"_s, true},
                                                          {u"crashProtection"_s, false},
                                                          {u"showInfo"_s, false},
                                                          {u"useRemote"_s, true},
                                                          {u"useProjectColor"_s, false},
                                                          {u"useUnfinishedEntryColor"_s, false},
                                                          {u"useAlternateBackground"_s, false},
                                                          {u"useGridLines"_s, false},
                                                          {u"hideFadedProjects"_s, true},
                                                          {u"showDescriptionColumn"_s, false},
                                                          {u"showStateColumn"_s, false},
                                                          {u"showActionColumn"_s, false},
                                                          {u"showDurationColumn"_s, false},
                                                          {u"showDockBadge"_s, false},
                                                          {u"showStatusMenuItem"_s, false},
                                                          {u"useReminders"_s, true}};
        for (const auto &[name, value] : switches)
            QTest::addRow("%s", qPrintable(name)) << none << name << click(name) << QVariant(value);
        QTest::newRow("useRunningReminder") << reminding << u"useRunningReminder"_s
                                            << click(u"useRunningReminder"_s) << QVariant(true);
        QTest::newRow("usePauseReminder") << reminding << u"usePauseReminder"_s
                                          << click(u"usePauseReminder"_s) << QVariant(false);

        for (int row = 0; row < 4; ++row) {
            const QString name = u"listDateFormat"_s + QString::number(row);
            QTest::addRow("date style row %d", row)
                << QVariantMap{{u"listDateFormat"_s, row == 2 ? 1 : 3}} << u"listDateFormat"_s
                << click(name) << QVariant(row + 1);
        }
        QTest::newRow("defaultEntryMode period")
            << none << u"defaultEntryMode"_s << click(u"defaultEntryMode1"_s) << QVariant(1);
        QTest::newRow("defaultEntryMode duration")
            << QVariantMap{{u"defaultEntryMode"_s, 1}} << u"defaultEntryMode"_s
            << click(u"defaultEntryMode0"_s) << QVariant(0);
        QTest::newRow("reminderType notification")
            << reminding << u"reminderType"_s << click(u"reminderType1"_s) << QVariant(1);
        QTest::newRow("reminderType panel")
            << QVariantMap{{u"useReminders"_s, true}, {u"reminderType"_s, 1}} << u"reminderType"_s
            << click(u"reminderType0"_s) << QVariant(0);

        QTest::newRow("defaultTime") << none << u"defaultTime"_s
                                     << key(u"defaultTime"_s, Qt::Key_Up) << QVariant(QTime(9, 0));
        QTest::newRow("hourlyWage")
            << none << u"hourlyWage"_s << Drive([](PreferencesWindow &window) {
                   QLineEdit *field =
                       control<QDoubleSpinBox>(window, u"hourlyWage"_s)->findChild<QLineEdit *>();
                   field->selectAll();
                   QTest::keyClicks(field, u"42.5"_s);
                   QTest::keyClick(field, Qt::Key_Return);
               })
            << QVariant(42.5f);
        QTest::newRow("firstDayOfWeek")
            << none << u"firstDayOfWeek"_s << key(u"firstDayOfWeek"_s, Qt::Key_Down) << QVariant(1);
        QTest::newRow("runningReminderInterval")
            << QVariantMap{{u"useReminders"_s, true}, {u"useRunningReminder"_s, true}}
            << u"runningReminderInterval"_s << key(u"runningReminderInterval"_s, Qt::Key_Up)
            << QVariant(16);
        QTest::newRow("pausedReminderInterval")
            << reminding << u"pausedReminderInterval"_s
            << key(u"pausedReminderInterval"_s, Qt::Key_Up) << QVariant(6);
        QTest::newRow("projectColor")
            << none << u"projectColor"_s << chooseColor(u"projectColor"_s, QColor(10, 20, 30))
            << QVariant(Preferences::colorText(QColor(10, 20, 30)));
        QTest::newRow("unfinishedEntryColor")
            << none << u"unfinishedEntryColor"_s
            << chooseColor(u"unfinishedEntryColor"_s, QColor(255, 255, 0))
            << QVariant(Preferences::colorText(QColor(255, 255, 0)));
    }
    void controlsWriteTheirSetting() {
        QFETCH(QVariantMap, given);
        QFETCH(QString, key);
        QFETCH(Drive, drive);
        QFETCH(QVariant, expected);
        for (auto it = given.cbegin(); it != given.cend(); ++it)
            m_fixture->preferences.setObject(it.value(), it.key());
        PreferencesWindow window(m_fixture->preferences, m_fixture->collection,
                                 m_fixture->currency);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QSignalSpy changed(&m_fixture->preferences, &Preferences::valueChanged);

        drive(window);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().first().toString(), key);
        const QVariant stored = m_fixture->preferences.objectForKey(key);
        QCOMPARE(stored.metaType(), expected.metaType());
        QCOMPARE(stored, expected);
    }

    // Every control on every page of the preferences window, changed once and back while the
    // main window listens: each change is announced once and stays what was set.
    void everySettingChangesBothWays_data() {
        QTest::addColumn<int>("page");
        QTest::addColumn<QString>("name");
        SheetFixture fixture;
        PreferencesWindow window(fixture.preferences, fixture.collection, fixture.currency);
        for (int page = 0; page < window.pages()->count(); ++page) {
            for (const QWidget *control : window.pages()->widget(page)->findChildren<QWidget *>()) {
                if (isSettingControl(control))
                    QTest::addRow("%s", qPrintable(control->objectName()))
                        << page << control->objectName();
            }
        }
    }
    void everySettingChangesBothWays() {
        QFETCH(int, page);
        QFETCH(QString, name);
        SheetFixture &f = *m_fixture;
        f.preferences.setObject(false, u"showInfo");
        MainWindow main({f.preferences, f.collection, f.customers, f.tags, f.currency, f.user,
                         f.user, f.user, f.folder.filePath(u"filters.plist"_s),
                         f.folder.filePath(u"quickfilters.plist"_s)});
        main.show();
        main.startUp();
        main.commandAction(u"showPreferences:"_s)->trigger();
        auto *window = main.findChild<PreferencesWindow *>();
        QVERIFY(window && window->isVisible());
        window->pages()->setCurrentIndex(page);
        auto *control = window->findChild<QWidget *>(name);
        const QString before = shownSetting(control);
        for (const bool undo : {false, true}) {
            QSignalSpy changed(&f.preferences, &Preferences::valueChanged);
            changeSetting(control, undo, before);
            QCOMPARE(changed.count(), 1);
            QCOMPARE(changed.first().first().toString(), settingKey(control));
            QCOMPARE(shownSetting(control) == before, undo);
            // A window opened now shows what the preferences hold.
            PreferencesWindow reread(f.preferences, f.collection, f.currency);
            QCOMPARE(shownSetting(reread.findChild<QWidget *>(name)), shownSetting(control));
        }
        QCOMPARE(f.collection.hideFadedProjects(), f.preferences.boolForKey(u"hideFadedProjects"));
    }

    void hidingFadedProjectsReachesTheDocument() {
        PreferencesWindow window(m_fixture->preferences, m_fixture->collection,
                                 m_fixture->currency);
        auto *box = control<QCheckBox>(window, u"hideFadedProjects"_s);
        box->click();
        QVERIFY(m_fixture->collection.hideFadedProjects());
        box->click();
        QVERIFY(!m_fixture->collection.hideFadedProjects());
        QVERIFY(!m_fixture->preferences.boolForKey(u"hideFadedProjects"));
    }

    void dateStyleRows_data() {
        QTest::addColumn<int>("listDateFormat");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("title");
        QTest::newRow("short") << 1 << 0 << u"3/24/01"_s;
        QTest::newRow("medium") << 2 << 1 << u"Mar 24, 2001"_s;
        QTest::newRow("long") << 3 << 2 << u"March 24, 2001"_s;
        QTest::newRow("full") << 4 << 3 << u"Saturday, March 24, 2001"_s;
        QTest::newRow("none: the medium row") << 0 << 1 << u"Mar 24, 2001"_s;
        QTest::newRow("unknown: the medium row") << 5 << 1 << u"Mar 24, 2001"_s;
    }
    void dateStyleRows() {
        QFETCH(int, listDateFormat);
        QFETCH(int, row);
        QFETCH(QString, title);
        QCOMPARE(PreferencesForm::rowOfDateFormat(listDateFormat), row);
        if (listDateFormat >= 1 && listDateFormat <= 4)
            QCOMPARE(PreferencesForm::dateFormatOfRow(row), listDateFormat);
        m_fixture->preferences.setObject(listDateFormat, u"listDateFormat");
        PreferencesWindow window(m_fixture->preferences, m_fixture->collection,
                                 m_fixture->currency);
        auto *button = control<QRadioButton>(window, u"listDateFormat"_s + QString::number(row));
        QCOMPARE(button->text(), title);
        QVERIFY(button->isChecked());
    }

    void controlsShowTheStoredValues() {
        const QVariantMap stored{
            {u"saveOnExit"_s, true},           {u"useGridLines"_s, false},
            {u"defaultEntryMode"_s, 1},        {u"defaultTime"_s, QTime(6, 45)},
            {u"hourlyWage"_s, 75.25f},         {u"firstDayOfWeek"_s, 1},
            {u"useReminders"_s, true},         {u"runningReminderInterval"_s, 30},
            {u"pausedReminderInterval"_s, 12}, {u"reminderType"_s, 1}};
        for (auto it = stored.cbegin(); it != stored.cend(); ++it)
            m_fixture->preferences.setObject(it.value(), it.key());
        m_fixture->preferences.setColor(QColor(0, 128, 0), u"projectColor");
        m_fixture->preferences.synchronize();
        // What the file holds, read afresh, as at a new start.
        Preferences reread(m_fixture->preferences.filePath());
        PreferencesWindow window(reread, m_fixture->collection, m_fixture->currency);
        window.show();

        QVERIFY(control<QCheckBox>(window, u"saveOnExit"_s)->isChecked());
        QVERIFY(!control<QCheckBox>(window, u"useGridLines"_s)->isChecked());
        QVERIFY(control<QCheckBox>(window, u"useProjectColor"_s)->isChecked());
        QVERIFY(control<QRadioButton>(window, u"defaultEntryMode1"_s)->isChecked());
        QVERIFY(control<QRadioButton>(window, u"listDateFormat2"_s)->isChecked());
        const WBTimeControl &proposed =
            control<TimeControlWidget>(window, u"defaultTime"_s)->control();
        QCOMPARE(QTime(proposed.hour(), proposed.minute()), QTime(6, 45));
        QCOMPARE(control<QDoubleSpinBox>(window, u"hourlyWage"_s)->value(), 75.25);
        QCOMPARE(control<QComboBox>(window, u"firstDayOfWeek"_s)->currentText(), u"Monday"_s);
        QCOMPARE(control<QSpinBox>(window, u"runningReminderInterval"_s)->value(), 30);
        QCOMPARE(control<QSpinBox>(window, u"pausedReminderInterval"_s)->value(), 12);
        QVERIFY(control<QRadioButton>(window, u"reminderType1"_s)->isChecked());
        const QIcon swatch = control<QAbstractButton>(window, u"projectColor"_s)->icon();
        const QImage image = swatch.pixmap(QSize(28, 14)).toImage();
        QCOMPARE(image.pixelColor(image.width() / 2, image.height() / 2), QColor(0, 128, 0));
        QCOMPARE(control<QLabel>(window, u"currencySymbol"_s)->text(), u"$"_s);

        // A change made elsewhere (the list's menu, another window) shows at once.
        reread.setObject(false, u"saveOnExit");
        QVERIFY(!control<QCheckBox>(window, u"saveOnExit"_s)->isChecked());
    }

    void settingsTakeInputOnlyWhenTheyApply_data() {
        QTest::addColumn<QVariantMap>("given");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("project colour, tint off")
            << QVariantMap{{u"useProjectColor"_s, false}} << u"projectColor"_s << false;
        QTest::newRow("unfinished colour, tint on")
            << QVariantMap{{u"useUnfinishedEntryColor"_s, true}} << u"unfinishedEntryColor"_s
            << true;
        QTest::newRow("running reminder, reminders off")
            << QVariantMap{{u"useReminders"_s, false}} << u"useRunningReminder"_s << false;
        QTest::newRow("reminder kind, reminders on")
            << QVariantMap{{u"useReminders"_s, true}} << u"reminderType1"_s << true;
        QTest::newRow("running interval, its reminder off")
            << QVariantMap{{u"useReminders"_s, true}, {u"useRunningReminder"_s, false}}
            << u"runningReminderInterval"_s << false;
        QTest::newRow("running interval, its reminder on")
            << QVariantMap{{u"useReminders"_s, true}, {u"useRunningReminder"_s, true}}
            << u"runningReminderInterval"_s << true;
        QTest::newRow("paused interval, reminders off")
            << QVariantMap{{u"useReminders"_s, false}, {u"usePauseReminder"_s, true}}
            << u"pausedReminderInterval"_s << false;
    }
    void settingsTakeInputOnlyWhenTheyApply() {
        QFETCH(QVariantMap, given);
        QFETCH(QString, name);
        QFETCH(bool, enabled);
        PreferencesWindow window(m_fixture->preferences, m_fixture->collection,
                                 m_fixture->currency);
        for (auto it = given.cbegin(); it != given.cend(); ++it)
            m_fixture->preferences.setObject(it.value(), it.key());
        QCOMPARE(control<QWidget>(window, name)->isEnabled(), enabled);
    }

    void aNormalWindowThatEscapeCloses() {
        PreferencesWindow window(m_fixture->preferences, m_fixture->collection,
                                 m_fixture->currency);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.windowModality(), Qt::NonModal);
        QTest::keyClick(&window, Qt::Key_Escape);
        QVERIFY(!window.isVisible());
    }

private:
    std::unique_ptr<SheetFixture> m_fixture;
};

QTEST_MAIN(TestPreferencesWindow)
#include "tst_preferenceswindow.moc"
