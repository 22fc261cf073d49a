#include "app/SheetFixture.h"

#include "TimeControlWidget.h"
#include "editors/EntrySheet.h"
#include "editors/PauseEditorView.h"
#include "editors/PauseTableModel.h"
#include "model/LocalTimeFormat.h"
#include "platform/LocaleFormat.h"

#include <QAbstractItemModelTester>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>

class TestEntrySheet;
using Drive = std::function<void(TestEntrySheet &)>;
Q_DECLARE_METATYPE(Drive)

namespace {

QDateTime on2nd(int hour, int minute) {
    return QDateTime(QDate(2026, 11, 2), QTime(hour, minute));
}

// What a test needs to know of an entry, in one line.
QString summary(const Entry &entry) {
    QString text;
    if (!entry.hasPeriod())
        text = u"day "_s + entry.date() + u' ' + QString::number(entry.storedMinutes());
    else if (entry.isWorking())
        text = entry.fromDate() + u' ' + entry.fromTime() + u" - running"_s;
    else
        text = entry.fromDate() + u' ' + entry.fromTime() + u" - "_s + entry.toDate() + u' ' +
               entry.toTime() + u' ' + QString::number(entry.storedMinutes());
    if (!entry.comment().isEmpty() || !entry.tags().isEmpty())
        text += u" ["_s + entry.comment() + u'|' + entry.tags() + u']';
    if (!entry.pauseEntries().isEmpty())
        text += u" pauses "_s + QString::number(entry.pauseEntries().size());
    return text;
}

} // namespace

class TestEntrySheet : public QObject {
    Q_OBJECT

public:
    template <typename T> T *find(const QString &name) {
        return SheetFixture::control<T>(*m_sheet, name);
    }
    TimeControlWidget *timeControl(const QString &name) { return find<TimeControlWidget>(name); }
    void click(const QString &name) { find<QAbstractButton>(name)->click(); }
    // Types into a field of a time control and moves on with Tab.
    void type(const QString &control, int field, const QString &text) {
        TimeControlWidget *widget = timeControl(control);
        QTest::mouseClick(widget, Qt::LeftButton, {}, widget->fieldRect(field).center());
        QTest::keyClicks(widget, text);
        QTest::keyClick(widget, Qt::Key_Tab);
    }
    void step(const QString &control, int field, Qt::Key key, int times = 1) {
        TimeControlWidget *widget = timeControl(control);
        QTest::mouseClick(widget, Qt::LeftButton, {}, widget->fieldRect(field).center());
        for (int i = 0; i < times; ++i)
            QTest::keyClick(widget, key);
    }
    void setDate(const QString &picker, QDate date) { find<QDateEdit>(picker)->setDate(date); }
    QString projectSummary() const {
        QStringList entries;
        for (const auto &item : m_fixture->alpha->entries())
            entries << summary(static_cast<const Entry &>(*item));
        return entries.join(u"; "_s);
    }
    QString time(const QString &control) {
        const WBTimeControl &logic = timeControl(control)->control();
        return StoredForms::timeText(logic.hour(), logic.minute());
    }
    std::shared_ptr<Entry> addToProject(const std::shared_ptr<Entry> &entry) {
        m_fixture->collection.addEntry(entry, m_fixture->alpha);
        m_fixture->collection.undoStack()->clear();
        return entry;
    }
    // The entry's sheet in the state the test needs.
    void open(const QString &how) {
        if (how == u"new")
            m_sheet->newEntry(m_fixture->alpha);
        else if (how == u"edit running")
            m_sheet->editEntry(addToProject(periodEntry(on2nd(8, 0))));
        else if (how == u"edit finished")
            m_sheet->editEntry(addToProject(periodEntry(on2nd(8, 0), on2nd(12, 0))));
        else
            m_sheet->editEntry(addToProject(dayEntry(u"30.10.2026"_s, 90)));
        QVERIFY(QTest::qWaitForWindowActive(m_sheet));
    }

private slots:
    void initTestCase() {
        LocalTimeFormat::setFormat(u"%I:%M %p"_s, u"en_US.UTF-8"_s);
        LocaleFormat::setDateLocale(u"en_US"_s);
    }

    void init() {
        Clock::setNow(on2nd(11, 2));
        m_fixture = std::make_unique<SheetFixture>();
        // Rounding nothing, with the step a new project gets: the clock controls snap to it.
        m_fixture->alpha->setRoundTo(5);
        QVERIFY(QTest::qWaitForWindowExposed(&m_fixture->window));
        m_sheet = new EntrySheet(m_fixture->collection, m_fixture->preferences, m_fixture->user,
                                 &m_fixture->tags, &m_fixture->window);
    }

    void cleanup() { m_fixture.reset(); }

    // Each way through the sheet ends in the document as one undoable step (or none), which
    // undo takes back and redo repeats.
    void scenarios_data() {
        QTest::addColumn<QString>("how");
        QTest::addColumn<Drive>("drive");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QStringList>("alerts");
        QTest::newRow("new day entry") << u"new"_s << Drive([](TestEntrySheet &t) {
            t.setDate(u"dayDatePicker"_s, QDate(2026, 10, 30));
            t.type(u"timeTimeCtrl"_s, 0, u"7"_s);
            t.type(u"timeTimeCtrl"_s, 1, u"30"_s);
            QTest::keyClicks(t.find<QPlainTextEdit>(u"commentTextBox"_s), u"Notes"_s);
            QTest::keyClicks(t.find<QLineEdit>(u"timerTokenField"_s), u"Work"_s);
        }) << u"day 30.10.2026 450 [Notes|Work]"_s
                                       << u"Add Entry"_s << QStringList();
        QTest::newRow("new period") << u"new"_s << Drive([](TestEntrySheet &t) {
            t.click(u"periodModeButton"_s);
            t.step(u"toTimeCtrl"_s, 0, Qt::Key_Down);
        }) << u"02.11.2026 09:00 - 02.11.2026 16:00 420"_s
                                    << u"Add Entry"_s << QStringList();
        QTest::newRow("period across midnight") << u"new"_s << Drive([](TestEntrySheet &t) {
            t.click(u"periodModeButton"_s);
            t.setDate(u"toDatePicker"_s, QDate(2026, 11, 3));
            t.type(u"toTimeCtrl"_s, 0, u"1"_s);
            t.type(u"toTimeCtrl"_s, 3, u"a"_s);
        }) << u"02.11.2026 09:00 - 03.11.2026 01:00 960"_s
                                                << u"Add Entry"_s << QStringList();
        QTest::newRow("running entry started in the sheet (rounded to the project's step)")
            << u"new"_s << Drive([](TestEntrySheet &t) {
                   t.click(u"periodModeButton"_s);
                   t.click(u"startButton"_s);
               })
            << u"02.11.2026 11:00 - running"_s << u"Add Entry"_s << QStringList();
        QTest::newRow("reversed period") << u"new"_s << Drive([](TestEntrySheet &t) {
            t.click(u"periodModeButton"_s);
            t.setDate(u"toDatePicker"_s, QDate(2026, 11, 3));
            t.type(u"fromTimeCtrl"_s, 0, u"8"_s);
            t.type(u"fromTimeCtrl"_s, 3, u"p"_s);
            t.setDate(u"toDatePicker"_s, QDate(2026, 11, 2));
        }) << QString() << QString() << QStringList{u"Date range error."_s};
        QTest::newRow("stopped in the sheet")
            << u"edit running"_s << Drive([](TestEntrySheet &t) { t.click(u"stopButton"_s); })
            << u"02.11.2026 08:00 - 02.11.2026 11:00 180"_s << u"Edit Entry"_s << QStringList();
        QTest::newRow("editing a running entry keeps it running")
            << u"edit running"_s << Drive([](TestEntrySheet &t) {
                   QTest::keyClicks(t.find<QPlainTextEdit>(u"commentTextBox"_s), u"late"_s);
               })
            << u"02.11.2026 08:00 - running [late|]"_s << u"Edit Entry"_s << QStringList();
        QTest::newRow("a finished period becomes a day entry")
            << u"edit finished"_s
            << Drive([](TestEntrySheet &t) { t.click(u"durationModeButton"_s); })
            << u"day 02.11.2026 480"_s << u"Edit Entry"_s << QStringList();
    }
    void scenarios() {
        QFETCH(QString, how);
        QFETCH(Drive, drive);
        QFETCH(QString, expected);
        QFETCH(QString, action);
        open(how);
        const QString before = projectSummary();
        drive(*this);
        find<QPushButton>(u"entryAcceptButton"_s)->click();
        QVERIFY(!m_sheet->isVisible());
        QTEST(m_fixture->user.messages(), "alerts");
        QUndoStack &undo = *m_fixture->collection.undoStack();
        QCOMPARE(undo.undoText(), action);
        if (action.isEmpty()) {
            QCOMPARE(projectSummary(), before);
            return;
        }
        QCOMPARE(projectSummary(), expected);
        undo.undo();
        QCOMPARE(projectSummary(), before);
        undo.redo();
        QCOMPARE(projectSummary(), expected);
    }

    // The duration counts hours on every clock: no morning or afternoon field, 12 and 13 hours
    // are what they say. The from and to controls keep the user's clock.
    void durationIsNoClockTime_data() {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("timeFormat");
        QTest::addColumn<QString>("hours");
        QTest::addColumn<QString>("expected");
        QTest::newRow("12 hours, 12-hour clock")
            << u"en_US.UTF-8"_s << u"%I:%M %p"_s << u"12"_s << u"day 02.11.2026 720 12:00"_s;
        QTest::newRow("13 hours, 12-hour clock")
            << u"en_US.UTF-8"_s << u"%I:%M %p"_s << u"13"_s << u"day 02.11.2026 780 13:00"_s;
        QTest::newRow("13 hours, 24-hour clock")
            << u"de_DE.UTF-8"_s << u"%H:%M"_s << u"13"_s << u"day 02.11.2026 780 13:00"_s;
    }
    void durationIsNoClockTime() {
        QFETCH(QString, locale);
        QFETCH(QString, timeFormat);
        QFETCH(QString, hours);
        LocalTimeFormat::setFormat(timeFormat, locale);
        delete m_sheet;
        m_sheet = new EntrySheet(m_fixture->collection, m_fixture->preferences, m_fixture->user,
                                 &m_fixture->tags, &m_fixture->window);
        LocalTimeFormat::setFormat(u"%I:%M %p"_s, u"en_US.UTF-8"_s);
        open(u"new"_s);
        type(u"timeTimeCtrl"_s, WBTimeControl::HourField, hours);
        type(u"timeTimeCtrl"_s, WBTimeControl::MinuteField, u"0"_s);
        const WBTimeControl &duration = timeControl(u"timeTimeCtrl"_s)->control();
        QString shown;
        for (const WBTimeControl::Field field : duration.visibleFields())
            shown += (shown.isEmpty() ? QString() : u":"_s) + duration.fieldText(field);
        find<QPushButton>(u"entryAcceptButton"_s)->click();
        QTEST(QString(projectSummary() + u' ' + shown), "expected");
        QCOMPARE(timeControl(u"fromTimeCtrl"_s)->control().hourType(),
                 timeFormat.contains(u"%I"_s) ? 2 : 1);
    }

    void enabling_data() {
        QTest::addColumn<QString>("how");
        QTest::addColumn<Drive>("drive");
        QTest::addColumn<QString>("enabled"); // and visible
        QTest::addColumn<QString>("title");
        const Drive none = [](TestEntrySheet &) {};
        QTest::newRow("new, day and duration")
            << u"new"_s << none << u"dayDatePicker timeTimeCtrl"_s << u"new entry / Create"_s;
        QTest::newRow("new, period")
            << u"new"_s << Drive([](TestEntrySheet &t) { t.click(u"periodModeButton"_s); })
            << u"fromDatePicker fromTimeCtrl toDatePicker toTimeCtrl startButton "
               "timerPauseEditorButton"_s
            << u"new entry / Create"_s;
        QTest::newRow("started") << u"new"_s << Drive([](TestEntrySheet &t) {
            t.click(u"periodModeButton"_s);
            t.click(u"startButton"_s);
        }) << u"fromDatePicker fromTimeCtrl stopButton timerPauseEditorButton"_s
                                 << u"new entry / Create"_s;
        QTest::newRow("running entry") << u"edit running"_s << none
                                       << u"fromDatePicker fromTimeCtrl stopButton "
                                          "timerPauseEditorButton"_s
                                       << u"edit entry / Accept"_s;
        QTest::newRow("stopped entry")
            << u"edit running"_s << Drive([](TestEntrySheet &t) { t.click(u"stopButton"_s); })
            << u"fromDatePicker fromTimeCtrl toDatePicker toTimeCtrl timerPauseEditorButton"_s
            << u"edit entry / Accept"_s;
        QTest::newRow("finished entry") << u"edit finished"_s << none
                                        << u"fromDatePicker fromTimeCtrl toDatePicker toTimeCtrl "
                                           "timerPauseEditorButton"_s
                                        << u"edit entry / Accept"_s;
        QTest::newRow("day entry")
            << u"edit day"_s << none << u"dayDatePicker timeTimeCtrl"_s << u"edit entry / Accept"_s;
    }
    void enabling() {
        QFETCH(QString, how);
        QFETCH(Drive, drive);
        open(how);
        drive(*this);
        QStringList enabled;
        for (const QString &name :
             {u"dayDatePicker"_s, u"timeTimeCtrl"_s, u"fromDatePicker"_s, u"fromTimeCtrl"_s,
              u"toDatePicker"_s, u"toTimeCtrl"_s, u"startButton"_s, u"stopButton"_s,
              u"timerPauseEditorButton"_s}) {
            const QWidget *widget = find<QWidget>(name);
            if (widget->isEnabled() && widget->isVisible())
                enabled << name;
        }
        QTEST(enabled.join(u' '), "enabled");
        QTEST(QString(m_sheet->windowTitle() + u" / "_s +
                      find<QPushButton>(u"entryAcceptButton"_s)->text()),
              "title");
        const bool period = find<QRadioButton>(u"periodModeButton"_s)->isChecked();
        QCOMPARE(find<QLabel>(u"totalEntryTimeTextField"_s)->isEnabled(), period);
    }

    // A running entry's sheet shows "to" at now; the totals count only the pauses inside the
    // shown period, while the pause label shows them all.
    void runningEntryShowsNowAndClippedTotals() {
        auto entry = periodEntry(on2nd(8, 0));
        entry->setPauseEntries({std::make_shared<PauseEntry>(on2nd(7, 0), on2nd(8, 30)),
                                std::make_shared<PauseEntry>(on2nd(9, 0), on2nd(9, 10))});
        m_sheet->editEntry(addToProject(entry));
        QCOMPARE(time(u"toTimeCtrl"_s), u"11:02"_s);
        QCOMPARE(find<QLabel>(u"totalEntryTimeTextField"_s)->text(), u"02:22"_s);
        QCOMPARE(find<QLabel>(u"pauseTimeTextField"_s)->text(), u"01:40"_s);
    }

    // Preferences: the proposed duration and first row, and the pause editor's toggle.
    void preferences() {
        m_fixture->preferences.setObject(QTime(7, 15), u"defaultTime");
        m_fixture->preferences.setObject(1, u"defaultEntryMode");
        m_sheet->newEntry(m_fixture->alpha);
        QVERIFY(find<QRadioButton>(u"periodModeButton"_s)->isChecked());
        QVERIFY(find<QPushButton>(u"entryAcceptButton"_s)->isDefault());
        QCOMPARE(time(u"timeTimeCtrl"_s), u"07:15"_s);
        QCOMPARE(find<QLabel>(u"totalEntryTimeTextField"_s)->text(), u"08:00"_s);
        auto *pauses = find<PauseEditorView>(u"pauseEditor"_s);
        QVERIFY(pauses->isVisible());
        click(u"timerPauseEditorButton"_s);
        QVERIFY(!pauses->isVisible());
        QCOMPARE(m_fixture->preferences.boolForKey(u"isPauseEditorHidden"), true);
        m_sheet->reject();
        m_sheet->editEntry(addToProject(periodEntry(on2nd(8, 0), on2nd(9, 0))));
        QVERIFY(!pauses->isVisible());
        QCOMPARE(m_fixture->collection.undoStack()->count(), 0);
        QCOMPARE(projectSummary(), u"02.11.2026 08:00 - 02.11.2026 09:00 60"_s);
    }

    // A time or date that would make the period run backwards beeps and takes the other end.
    void periodStaysValid() {
        m_sheet->newEntry(m_fixture->alpha);
        click(u"periodModeButton"_s);
        step(u"fromTimeCtrl"_s, 0, Qt::Key_Up, 9);
        QCOMPARE(time(u"fromTimeCtrl"_s), u"17:00"_s);
        QCOMPARE(m_fixture->user.beeps, 1);
        type(u"toTimeCtrl"_s, 0, u"3"_s); // 03:00 PM, before 05:00 PM
        QCOMPARE(time(u"toTimeCtrl"_s), u"17:00"_s);
        QCOMPARE(m_fixture->user.beeps, 2);
        setDate(u"toDatePicker"_s, QDate(2026, 11, 5));
        type(u"toTimeCtrl"_s, 0, u"8"_s);
        setDate(u"fromDatePicker"_s, QDate(2026, 11, 6));
        QCOMPARE(m_fixture->user.beeps, 3);
        QCOMPARE(find<QDateEdit>(u"fromDatePicker"_s)->date(), QDate(2026, 11, 5));
        QCOMPARE(time(u"fromTimeCtrl"_s), u"20:00"_s);
        QCOMPARE(find<QLabel>(u"totalEntryTimeTextField"_s)->text(), u"00:00"_s);
    }

    // The pause editor's rules are PauseEditor's (tested headless); here, that its buttons, cells,
    // colours, the conflict marker and the sheet's Accept reach them.
    void pauseEditor() {
        m_fixture->preferences.setObject(false, u"isPauseEditorHidden");
        m_sheet->editEntry(addToProject(periodEntry(on2nd(8, 0), on2nd(12, 0))));
        QVERIFY(QTest::qWaitForWindowActive(m_sheet));
        auto *view = find<PauseEditorView>(u"pauseEditor"_s);
        QAbstractItemModel *model = view->model();
        QAbstractItemModelTester tester(model);
        QTableView *table = view->table();
        QUndoStack &undo = *m_fixture->collection.undoStack();
        auto *marker = find<QLabel>(u"conflictImageView"_s);
        const auto edit = [&](int row, int column, const QString &text) {
            table->setCurrentIndex(model->index(row, column));
            table->edit(table->currentIndex());
            auto *editor = qobject_cast<QLineEdit *>(table->indexWidget(table->currentIndex()));
            QVERIFY(editor);
            editor->setText(text);
        };
        const auto typeCell = [&](int row, int column, const QDateTime &moment) {
            edit(row, column, LocaleFormat::formatPauseMoment(moment));
            QTest::keyClick(table->indexWidget(table->currentIndex()), Qt::Key_Return);
            QCoreApplication::processEvents(); // the table takes the cell over queued
        };
        const auto accept = [this] { find<QPushButton>(u"entryAcceptButton"_s)->click(); };
        click(u"addPauseButton"_s);
        QCOMPARE(undo.undoText(), u"Add pause entry"_s);
        QVERIFY(table->indexWidget(model->index(0, 0))); // opened for typing
        QTest::keyClick(table->indexWidget(model->index(0, 0)), Qt::Key_Escape);
        typeCell(0, PauseTableModel::FromColumn, on2nd(10, 0));
        typeCell(0, PauseTableModel::ToColumn, on2nd(13, 0));
        QCOMPARE(m_fixture->user.beeps, 1); // after the entry's end: clamped to it
        QCOMPARE(undo.undoText(), u"Edit pause entry"_s);
        QCOMPARE(model->index(0, PauseTableModel::TotalColumn).data(), QVariant(u"02:00"_s));
        QCOMPARE(find<QLabel>(u"totalEntryTimeTextField"_s)->text(), u"02:00"_s);
        QVERIFY(!marker->isVisible());
        click(u"addPauseButton"_s);
        typeCell(1, PauseTableModel::ToColumn, on2nd(10, 30)); // 08:00-10:30 overlaps 10:00-12:00
        QVERIFY(marker->isVisible());
        table->selectRow(0);
        QVERIFY(model->index(1, PauseTableModel::FromColumn).data(Qt::ForegroundRole).isValid());
        QVERIFY(!model->index(0, PauseTableModel::FromColumn).data(Qt::ForegroundRole).isValid());
        const QModelIndex conflict = model->index(1, PauseTableModel::ConflictColumn);
        QVERIFY(!conflict.data(Qt::DecorationRole).value<QIcon>().pixmap(16).isNull());
        const int before = int(undo.count());
        accept();
        QVERIFY(m_sheet->isVisible());
        QCOMPARE(m_fixture->user.messages(), QStringList{u"Conflicts in pause entries."_s});
        QCOMPARE(m_fixture->user.alerts.constFirst().informativeText,
                 u"There are overlapping pause entries."_s);
        QCOMPARE(m_fixture->user.alerts.constFirst().style, UserAlerts::Style::Critical);
        // Text that is no moment keeps the sheet open with a beep.
        edit(0, PauseTableModel::FromColumn, u"soon"_s);
        accept();
        QVERIFY(m_sheet->isVisible());
        QCOMPARE(m_fixture->user.beeps, 2);
        QCOMPARE(int(undo.count()), before);
        table->selectRow(1);
        click(u"deletePauseButton"_s);
        QCOMPARE(undo.undoText(), u"Delete pause entry"_s);
        QVERIFY(!marker->isVisible());
        accept();
        QVERIFY(!m_sheet->isVisible());
        QCOMPARE(projectSummary(), u"02.11.2026 08:00 - 02.11.2026 12:00 240 pauses 1"_s);
    }

private:
    std::unique_ptr<SheetFixture> m_fixture;
    EntrySheet *m_sheet = nullptr;
};

QTEST_MAIN(TestEntrySheet)
#include "tst_entrysheet.moc"
