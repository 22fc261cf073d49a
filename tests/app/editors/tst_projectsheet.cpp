#include "app/SheetFixture.h"

#include "editors/ProjectSheet.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>

namespace {

// "name|description|wage|roundWhat/roundTo/roundType|customer|tags" of a project.
QString describe(const Project &project) {
    return u"%1|%2|%3|%4/%5/%6|%7|%8"_s.arg(project.name(), project.description())
        .arg(project.hourlyWage())
        .arg(project.roundWhat())
        .arg(project.roundTo())
        .arg(project.roundType())
        .arg(project.customer())
        .arg(project.tags());
}

// Chooses the item with the tag by keyboard, as the user would.
void choose(QComboBox *popUp, int tag) {
    QTest::keyClick(popUp, Qt::Key_Home);
    for (int row = 0; row < popUp->findData(tag); ++row)
        QTest::keyClick(popUp, Qt::Key_Down);
}

} // namespace

class TestProjectSheet : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_fixture = std::make_unique<SheetFixture>();
        m_sheet = std::make_unique<ProjectSheet>(
            m_fixture->collection, m_fixture->customers, m_fixture->tags, m_fixture->preferences,
            m_fixture->currency, m_fixture->user, &m_fixture->window);
    }

    void cleanup() {
        m_sheet.reset();
        m_fixture.reset();
    }

    void newProjectNameIsChecked_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("alerted");
        QTest::addColumn<bool>("warning");
        QTest::addColumn<QStringList>("projects");
        QTest::newRow("empty: alert, sheet stays")
            << u""_s << true << false << QStringList{u"Alpha"_s, u"Beta"_s};
        QTest::newRow("taken: warning line, sheet stays")
            << u"Alpha"_s << false << true << QStringList{u"Alpha"_s, u"Beta"_s};
        QTest::newRow("case differs: created")
            << u"alpha"_s << false << false << QStringList{u"Alpha"_s, u"Beta"_s, u"alpha"_s};
    }
    void newProjectNameIsChecked() {
        QFETCH(QString, name);
        QFETCH(bool, alerted);
        QFETCH(bool, warning);
        m_sheet->newProject(-1);
        QVERIFY(m_sheet->isVisible());
        QCOMPARE(m_sheet->windowModality(), Qt::WindowModal);
        QVERIFY(control<QLabel>(u"nameExistsTextBox"_s)->isHidden());
        auto *field = control<QLineEdit>(u"projectNameTextBox"_s);
        SheetFixture::type(field, name);
        QTest::keyClick(field, Qt::Key_Return);
        const bool created = !alerted && !warning;
        QCOMPARE(m_sheet->isVisible(), !created);
        QCOMPARE(m_fixture->user.beeps, created ? 0 : 1);
        QCOMPARE(control<QLabel>(u"nameExistsTextBox"_s)->isVisible(), warning);
        QCOMPARE(m_fixture->user.alerts.size(), alerted ? 1 : 0);
        if (alerted) {
            const UserAlerts::Alert &alert = m_fixture->user.alerts.constFirst();
            QCOMPARE(alert.message, u"No project name entered."_s);
            QCOMPARE(alert.informativeText, u"A project must have a unique name."_s);
            QCOMPARE(alert.style, UserAlerts::Style::Critical);
            QCOMPARE(alert.buttons, QStringList{u"OK"_s});
        }
        QTEST(m_fixture->collection.projectNames(), "projects");
    }

    void newProjectTakesDefaults_data() {
        QTest::addColumn<int>("customerIndex");
        QTest::addColumn<QString>("typedCustomer");
        QTest::addColumn<bool>("removeCustomer");
        QTest::addColumn<QString>("shownCustomer");
        QTest::addColumn<QString>("created");
        QTest::newRow("selected customer")
            << 1 << QString() << false << u"Bolt"_s << u"Gamma||42.5|0/5/0|2|"_s;
        QTest::newRow("no customer selected")
            << -1 << QString() << false << u""_s << u"Gamma||42.5|0/5/0|-1|"_s;
        QTest::newRow("typed customer")
            << -1 << u"ACME"_s << false << u""_s << u"Gamma||42.5|0/5/0|1|"_s;
        QTest::newRow("unknown customer: none")
            << -1 << u"Nobody"_s << false << u""_s << u"Gamma||42.5|0/5/0|-1|"_s;
        QTest::newRow("customer removed")
            << 0 << QString() << true << u"ACME"_s << u"Gamma||42.5|0/5/0|-1|"_s;
    }
    void newProjectTakesDefaults() {
        QFETCH(int, customerIndex);
        QFETCH(QString, typedCustomer);
        QFETCH(bool, removeCustomer);
        QFETCH(QString, shownCustomer);
        m_fixture->preferences.setObject(42.5f, u"hourlyWage");
        m_sheet->newProject(customerIndex);
        QCOMPARE(m_sheet->windowTitle(), u"new project"_s);
        QCOMPARE(control<QPushButton>(u"projectAcceptButton"_s)->text(), u"Create"_s);
        QCOMPARE(control<QLineEdit>(u"wageTextBox"_s)->text(), u"42.50"_s);
        QCOMPARE(control<QLabel>(u"projectHourlyRateCurrency"_s)->text(), u"$"_s);
        auto *customer = control<QComboBox>(u"customerName"_s);
        QCOMPARE(customer->currentText(), shownCustomer);
        auto *remove = control<QPushButton>(u"removeCustomerButton"_s);
        QCOMPARE(remove->isEnabled(), !shownCustomer.isEmpty());
        if (!typedCustomer.isNull())
            SheetFixture::type(customer, typedCustomer);
        if (removeCustomer) {
            remove->click();
            QCOMPARE(customer->currentText(), QString());
            QVERIFY(!remove->isEnabled());
        }
        SheetFixture::type(control<QLineEdit>(u"projectNameTextBox"_s), u"Gamma"_s);
        control<QPushButton>(u"projectAcceptButton"_s)->click();
        QVERIFY(!m_sheet->isVisible());
        const auto project = m_fixture->collection.projectWithName(u"Gamma"_s);
        QVERIFY(project);
        QTEST(describe(*project), "created");
        QUndoStack *undo = m_fixture->collection.undoStack();
        QCOMPARE(undo->undoText(), u"Add Project"_s);
        undo->undo();
        QVERIFY(!m_fixture->collection.projectExists(u"Gamma"_s));
        undo->redo();
        QCOMPARE(m_fixture->collection.projectArray().constLast(), project);
    }

    void roundingControlsFollowWhatIsRounded_data() {
        QTest::addColumn<QList<int>>("roundWhat");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<QString>("created");
        QTest::newRow("left at none: step 5, disabled") << QList<int>{} << false << u"0/5/0"_s;
        QTest::newRow("clock times") << QList<int>{1} << true << u"1/15/2"_s;
        QTest::newRow("durations") << QList<int>{2} << true << u"2/15/2"_s;
        QTest::newRow("another choice proposes step 5 again")
            << QList<int>{1, 2} << true << u"2/15/2"_s;
        QTest::newRow("switched on and off again") << QList<int>{2, 0} << false << u"0/15/2"_s;
    }
    void roundingControlsFollowWhatIsRounded() {
        QFETCH(QList<int>, roundWhat);
        QFETCH(bool, enabled);
        m_sheet->newProject(-1);
        auto *what = control<QComboBox>(u"roundWhatPopUp"_s);
        auto *step = control<QComboBox>(u"roundingPopUp"_s);
        auto *down = control<QRadioButton>(u"roundingMatrix2"_s);
        QCOMPARE(what->currentData(), QVariant(0));
        QCOMPARE(step->currentData(), QVariant(5));
        QVERIFY(!step->isEnabled());
        QVERIFY(!down->isEnabled());
        for (int tag : roundWhat) {
            choose(what, tag);
            if (tag > 0) {
                QCOMPARE(step->currentData(), QVariant(5));
                choose(step, 15);
                down->click();
            }
        }
        QCOMPARE(step->isEnabled(), enabled);
        QCOMPARE(down->isEnabled(), enabled);
        QCOMPARE(control<QRadioButton>(u"roundingMatrix0"_s)->isEnabled(), enabled);
        SheetFixture::type(control<QLineEdit>(u"projectNameTextBox"_s), u"Gamma"_s);
        control<QPushButton>(u"projectAcceptButton"_s)->click();
        const auto project = m_fixture->collection.projectWithName(u"Gamma"_s);
        QTEST(describe(*project).section(u'|', 3, 3), "created");
    }

    void editChecksTheNameAfterClosing_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("after");
        QTest::newRow("own name kept") << u"Beta"_s << u"Beta|notes|75|2/15/1|1|Work"_s;
        QTest::newRow("renamed") << u"Gamma"_s << u"Gamma|notes|75|2/15/1|1|Work"_s;
        QTest::newRow("taken: the edit is lost") << u"Alpha"_s << u"Beta||60|2/15/1|-1|"_s;
    }
    void editChecksTheNameAfterClosing() {
        QFETCH(QString, name);
        QFETCH(QString, after);
        const QString before = describe(*m_fixture->beta);
        m_sheet->editProject(m_fixture->beta);
        QCOMPARE(m_sheet->windowTitle(), u"edit project"_s);
        QCOMPARE(control<QPushButton>(u"projectAcceptButton"_s)->text(), u"Accept"_s);
        QCOMPARE(control<QLineEdit>(u"wageTextBox"_s)->text(), u"60.00"_s);
        QCOMPARE(control<QComboBox>(u"roundingPopUp"_s)->currentData(), QVariant(15));
        QVERIFY(control<QRadioButton>(u"roundingMatrix1"_s)->isChecked());
        QVERIFY(control<QComboBox>(u"roundingPopUp"_s)->isEnabled());
        QVERIFY(!control<QPushButton>(u"removeCustomerButton"_s)->isEnabled());
        SheetFixture::type(control<QLineEdit>(u"projectNameTextBox"_s), name);
        control<QPlainTextEdit>(u"descriptionTextBox"_s)->setPlainText(u"notes"_s);
        SheetFixture::type(control<QLineEdit>(u"wageTextBox"_s), u"75"_s);
        SheetFixture::type(control<QComboBox>(u"customerName"_s), u"ACME"_s);
        SheetFixture::type(control<QLineEdit>(u"projectTokenField"_s), u"Work"_s);
        QTest::keyClick(control<QLineEdit>(u"projectTokenField"_s), Qt::Key_Return);
        QVERIFY(!m_sheet->isVisible());
        QCOMPARE(m_fixture->user.alerts.size(), 0);
        QCOMPARE(m_fixture->user.beeps, 0);
        QCOMPARE(describe(*m_fixture->beta), after);
        QUndoStack *undo = m_fixture->collection.undoStack();
        const bool lost = after == before;
        QCOMPARE(m_sheet->logic().isNameWarningVisible(), lost);
        QCOMPARE(undo->count(), lost ? 0 : 1);
        if (lost)
            return;
        QCOMPARE(undo->undoText(), u"Edit Project"_s);
        undo->undo();
        QCOMPARE(describe(*m_fixture->beta), before);
        undo->redo();
        QCOMPARE(describe(*m_fixture->beta), after);
    }

    void escapeCancels() {
        m_sheet->editProject(m_fixture->alpha);
        QCOMPARE(control<QComboBox>(u"customerName"_s)->currentText(), u"ACME"_s);
        QVERIFY(control<QPushButton>(u"removeCustomerButton"_s)->isEnabled());
        SheetFixture::type(control<QLineEdit>(u"projectNameTextBox"_s), u"Gamma"_s);
        QTest::keyClick(control<QLineEdit>(u"projectNameTextBox"_s), Qt::Key_Escape);
        QVERIFY(!m_sheet->isVisible());
        QCOMPARE(m_fixture->alpha->name(), u"Alpha"_s);
        QCOMPARE(m_fixture->collection.undoStack()->count(), 0);
    }

private:
    template <typename T> T *control(const QString &name) {
        return SheetFixture::control<T>(*m_sheet, name);
    }

    std::unique_ptr<SheetFixture> m_fixture;
    std::unique_ptr<ProjectSheet> m_sheet;
};

QTEST_MAIN(TestProjectSheet)
#include "tst_projectsheet.moc"
