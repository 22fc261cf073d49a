#include "FiltersFixture.h"

#include "filters/CriterionRow.h"
#include "filters/FilterSheet.h"
#include "filters/QueryEditor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QProcess>
#include <QStatusBar>
#include <QTabBar>
#include <QToolButton>

// The filter sheet, its query editors and their rows, driven as the user does from the main
// window's filter pop-up.
class TestFilterSheet : public QObject {
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<FiltersFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void okWritesTheFileAndCancelKeepsIt_data() {
        QTest::addColumn<bool>("accept");
        QTest::newRow("OK") << true;
        QTest::newRow("Cancel") << false;
    }
    void okWritesTheFileAndCancelKeepsIt() {
        QFETCH(bool, accept);
        auto old = std::make_shared<Filter>();
        old->setName(u"Old"_s);
        QVERIFY(writeFile(m_fixture->filtersPath(), Filter::archiveList({old})));
        const QByteArray before = readFile(m_fixture->filtersPath());
        FilterSheet *sheet = openSheet();
        click(sheet, u"addButton"_s);
        QTest::keyClicks(focused<QLineEdit>(), u"Long calls"_s);
        QueryEditor *projects = sheet->projectEditor();
        type(projects, u"valueField"_s, u"Web"_s);
        control<QTabBar>(sheet, u"filterTabs"_s)->setCurrentIndex(1);
        QCOMPARE(sheet->entryEditor()->rows().first()->logic().criterion()->name(), u"Duration"_s);
        choose(sheet->entryEditor(), u"matchKindPopUp"_s, u"is equal to or greater than"_s);
        type(sheet->entryEditor(), u"valueField"_s, u"1"_s);
        type(sheet->entryEditor(), u"valueField2"_s, u"15"_s);
        if (accept)
            QTest::keyClick(sheet, Qt::Key_Return);
        else
            QTest::keyClick(sheet, Qt::Key_Escape);
        QVERIFY(!sheet->isVisible());
        if (!accept) {
            QCOMPARE(readFile(m_fixture->filtersPath()), before);
            return;
        }
        const auto read = Filter::unarchiveList(readFile(m_fixture->filtersPath()));
        QVERIFY(read);
        QCOMPARE(read->size(), 2);
        const Filter &made = *read->at(1);
        QCOMPARE(made.name(), u"Long calls"_s);
        const auto name = made.projectQuery()->criterionAtIndex(0);
        QCOMPARE(name->identifier(), u"name"_s);
        QCOMPARE(name->objectValue(), QVariant(u"Web"_s));
        const auto duration = made.entryQuery()->criterionAtIndex(0);
        QCOMPARE(duration->matchKind(), int(MPSearchCriterion::IsEqualToOrGreaterThan));
        QCOMPARE(duration->objectValue().toInt(), 75);
        // Chosen in the pop-up, the filter narrows the list.
        QComboBox *popUp = m_fixture->window->filterPopUp();
        popUp->setCurrentIndex(popUp->findText(u"Long calls"_s));
        emit popUp->activated(popUp->currentIndex());
        QCOMPARE(m_fixture->shownProjects(), QStringList{u"Web shop"_s});
        QCOMPARE(
            m_fixture->window->listModel()->rowCount(m_fixture->window->listModel()->index(0, 0)),
            1);
        // The command line lists what the sheet saved.
        QProcess cli;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(u"XDG_DATA_HOME"_s, m_fixture->dataHome());
        env.insert(u"XDG_CONFIG_HOME"_s, m_fixture->folder.filePath(u"config"_s));
        cli.setProcessEnvironment(env);
        cli.start(QStringLiteral(HOURFOLD_CLI_PATH), {u"filters"_s});
        QVERIFY(cli.waitForFinished(30000));
        QCOMPARE(QString::fromUtf8(cli.readAllStandardOutput()),
                 u"Old         projects, entries\nLong calls  projects, entries\n"_s);
    }

    void rowsFollowTheProperty_data() {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("to");
        QTest::addColumn<int>("matchKind");
        QTest::addColumn<QString>("valueControl");
        QTest::newRow("duration to customer: built anew")
            << u"Total duration"_s << u"is greater than"_s << u"Customer"_s
            << int(MPSearchCriterion::IsEqualTo) << u"customerPopUp"_s;
        QTest::newRow("name to description: kind kept")
            << u"Name"_s << u"starts with"_s << u"Description"_s
            << int(MPSearchCriterion::StartsWith) << u"valueField"_s;
    }
    void rowsFollowTheProperty() {
        QFETCH(QString, from);
        QFETCH(QString, kind);
        QFETCH(QString, to);
        QFETCH(int, matchKind);
        QFETCH(QString, valueControl);
        FilterSheet *sheet = openSheet();
        click(sheet, u"addButton"_s);
        QueryEditor *editor = sheet->projectEditor();
        choose(editor, u"propertyPopUp"_s, from);
        choose(editor, u"matchKindPopUp"_s, kind);
        choose(editor, u"propertyPopUp"_s, to);
        QCoreApplication::processEvents();
        const auto criterion = editor->query()->criterionAtIndex(0);
        QCOMPARE(criterion->name(), to);
        QCOMPARE(criterion->matchKind(), matchKind);
        QCOMPARE(editor->rows().first()->logic().criterion(), criterion);
        QVERIFY(editor->rows().first()->findChild<QWidget *>(valueControl)->isVisible());
        if (valueControl == u"customerPopUp")
            QCOMPARE(criterion->objectValue().toInt(), 1);
    }

    void lettersAreRefusedWithTheFieldKept() {
        FilterSheet *sheet = openSheet();
        click(sheet, u"addButton"_s);
        choose(sheet->projectEditor(), u"propertyPopUp"_s, u"Hourly wages"_s);
        type(sheet->projectEditor(), u"valueField"_s, u"12a"_s);
        QTest::keyClick(sheet, Qt::Key_Return);
        QVERIFY(sheet->isVisible());
        QCOMPARE(m_fixture->user.messages(), QStringList{u"“12a” is not a number."_s});
        QCOMPARE(focused<QLineEdit>()->text(), u"12a"_s);
        QVERIFY(!QFile::exists(m_fixture->filtersPath()));
    }

    void sheetGrowsByARowPerRowOfTheTab() {
        FilterSheet *sheet = openSheet();
        click(sheet, u"addButton"_s);
        click(sheet->projectEditor(), u"addCriterionButton"_s);
        click(sheet->projectEditor(), u"addCriterionButton"_s);
        QCOMPARE(sheet->projectEditor()->rows().size(), 3);
        const QRect projects = settledGeometry(sheet);
        control<QTabBar>(sheet, u"filterTabs"_s)->setCurrentIndex(1);
        const QRect entries = settledGeometry(sheet);
        QCOMPARE(projects.height() - entries.height(), 2 * 32);
        QCOMPARE(entries.top(), projects.top());
        QVERIFY(!control<QComboBox>(sheet->entryEditor(), u"matchModePopUp"_s)->isEnabled());
        QVERIFY(
            !control<QToolButton>(sheet->entryEditor(), u"removeCriterionButton"_s)->isVisible());
    }

    void anUnreadableFileIsToldOnceAndKept() {
        QVERIFY(writeFile(m_fixture->filtersPath(), "not a list"));
        QString reason;
        QVERIFY(!Filter::unarchiveList("not a list", &reason));
        FilterSheet *sheet = openSheet();
        QStatusBar *status = m_fixture->window->statusBar();
        QCOMPARE(status->currentMessage(),
                 u"The saved filters could not be read from %1 (%2); the file is left as it is "
                 u"until you save filters."_s.arg(m_fixture->filtersPath(), reason));
        QTest::keyClick(sheet, Qt::Key_Escape);
        QCOMPARE(readFile(m_fixture->filtersPath()), QByteArray("not a list"));
        status->clearMessage();
        sheet = openSheet();
        QCOMPARE(status->currentMessage(), QString());
        click(sheet, u"addButton"_s);
        QTest::keyClick(focused<QLineEdit>(), Qt::Key_Delete);
        QCOMPARE(control<QComboBox>(sheet, u"sheetFilterPopup"_s)->currentText(),
                 u"error: no name"_s);
        QTest::keyClick(sheet, Qt::Key_Return);
        QCOMPARE(Filter::unarchiveList(readFile(m_fixture->filtersPath()))->size(), 1);
        QVERIFY(m_fixture->window->filterPopUp()->findText(u"error: no name"_s) >= 0);
    }

private:
    FilterSheet *openSheet() {
        if (!m_fixture->window)
            m_fixture->startWindow();
        QComboBox *popUp = m_fixture->window->filterPopUp();
        popUp->setFocus();
        // From "Off" one up is "Edit Filters...".
        QTest::keyClick(popUp, Qt::Key_Up);
        FilterSheet *sheet = m_fixture->window->filterSheet();
        if (!sheet->isVisible() || popUp->currentText() != u"Off")
            qFatal("the sheet did not open over the pop-up showing Off");
        if (!QTest::qWaitForWindowActive(sheet))
            qFatal("the sheet did not become active");
        return sheet;
    }
    template <typename T> static T *control(QWidget *parent, const QString &name) {
        return FiltersFixture::control<T>(parent, name);
    }
    template <typename T> static T *focused() {
        T *widget = qobject_cast<T *>(QApplication::focusWidget());
        if (!widget)
            qFatal("the focus is elsewhere");
        return widget;
    }
    static void click(QWidget *parent, const QString &button) {
        QTest::mouseClick(control<QToolButton>(parent, button), Qt::LeftButton);
    }
    // Replaces the text of the first field of that name, as typed.
    static void type(QWidget *parent, const QString &name, const QString &text) {
        auto *field = control<QLineEdit>(parent, name);
        field->selectAll();
        QTest::keyClicks(field, text);
    }
    // Chooses the item of the first menu of that name, as with the keys.
    static void choose(QWidget *parent, const QString &name, const QString &title) {
        auto *menu = control<QComboBox>(parent, name);
        const int index = menu->findText(title);
        QVERIFY(index >= 0);
        menu->setCurrentIndex(index);
        emit menu->activated(index);
    }
    static QRect settledGeometry(QWidget *window) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        return window->geometry();
    }

    std::unique_ptr<FiltersFixture> m_fixture;
};

QTEST_MAIN(TestFilterSheet)
#include "tst_filtersheet.moc"
