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
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

namespace {

template <typename T> T *control(QWidget &window, const QString &name) {
    return SheetFixture::control<T>(window, name);
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
        // Typed digit by digit: the setting takes the number once, when the field is left. A
        // field that another setting switches off is switched on for the typing.
        spin->setEnabled(true);
        QLineEdit *field = spin->findChild<QLineEdit *>();
        field->selectAll();
        QTest::keyClicks(field, undo ? before : QString::number(QLocale().toDouble(before) + 11));
        QTest::keyClick(field, Qt::Key_Return);
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
        const QString key = settingKey(control);
        // A key the program reads: registered, but for the entry mode, whose default is row 0.
        const QVariant byDefault = Preferences::registeredDefaults().value(
            key, key == u"defaultEntryMode" ? QVariant(0) : QVariant());
        QVERIFY2(byDefault.isValid(), qPrintable(key));
        const QString before = shownSetting(control);
        const QVariant storedBefore = f.preferences.objectForKey(key);
        for (const bool undo : {false, true}) {
            QSignalSpy changed(&f.preferences, &Preferences::valueChanged);
            changeSetting(control, undo, before);
            QCOMPARE(changed.count(), 1);
            QCOMPARE(changed.first().first().toString(), key);
            QCOMPARE(shownSetting(control) == before, undo);
            // Stored in the kind of value the rest of the program reads.
            const QVariant stored = f.preferences.objectForKey(key);
            QCOMPARE(stored.metaType(), byDefault.metaType());
            if (!undo)
                QVERIFY(stored != storedBefore);
            QCOMPARE(f.collection.hideFadedProjects(),
                     f.preferences.boolForKey(u"hideFadedProjects"));
            // A window opened now shows what the preferences hold.
            PreferencesWindow reread(f.preferences, f.collection, f.currency);
            QCOMPARE(shownSetting(reread.findChild<QWidget *>(name)), shownSetting(control));
        }
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
        QCOMPARE(PreferencesForm::rowOfDateFormat(listDateFormat), row);
        if (listDateFormat >= 1 && listDateFormat <= 4)
            QCOMPARE(PreferencesForm::dateFormatOfRow(row), listDateFormat);
        m_fixture->preferences.setObject(listDateFormat, u"listDateFormat");
        PreferencesWindow window(m_fixture->preferences, m_fixture->collection,
                                 m_fixture->currency);
        auto *button = control<QRadioButton>(window, u"listDateFormat"_s + QString::number(row));
        QTEST(button->text(), "title");
        QVERIFY(button->isChecked());
    }

    // What the round trip of every setting cannot tell apart: the colour of a swatch, the day a
    // number stands for, the currency; and a change made elsewhere (the list's menu, another
    // window) shows at once.
    void controlsShowTheStoredValues() {
        m_fixture->preferences.setObject(1, u"firstDayOfWeek");
        m_fixture->preferences.setColor(QColor(0, 128, 0), u"projectColor");
        PreferencesWindow window(m_fixture->preferences, m_fixture->collection,
                                 m_fixture->currency);
        QCOMPARE(control<QComboBox>(window, u"firstDayOfWeek"_s)->currentText(), u"Monday"_s);
        const QIcon swatch = control<QAbstractButton>(window, u"projectColor"_s)->icon();
        const QImage image = swatch.pixmap(QSize(28, 14)).toImage();
        QCOMPARE(image.pixelColor(image.width() / 2, image.height() / 2), QColor(0, 128, 0));
        QCOMPARE(control<QLabel>(window, u"currencySymbol"_s)->text(), u"$"_s);
        m_fixture->preferences.setObject(true, u"saveOnExit");
        QVERIFY(control<QCheckBox>(window, u"saveOnExit"_s)->isChecked());
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
        PreferencesWindow window(m_fixture->preferences, m_fixture->collection,
                                 m_fixture->currency);
        for (auto it = given.cbegin(); it != given.cend(); ++it)
            m_fixture->preferences.setObject(it.value(), it.key());
        QTEST(control<QWidget>(window, name)->isEnabled(), "enabled");
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
