#include "app/mainwindow/MainWindowFixture.h"
#include "core/model/ModelFixtures.h"

#include "ProjectListModel.h"
#include "ProjectListView.h"
#include "filters/CriterionRow.h"
#include "filters/FilterSheet.h"
#include "filters/QueryEditor.h"
#include "filters/SearchResultsModel.h"
#include "filters/SearchResultsWindow.h"
#include "mainwindow/MainWindow.h"
#include "model/ProjectCollection.h"
#include "model/ProjectFile.h"
#include "platform/CurrencyFormatter.h"
#include "search/FilterController.h"
#include "search/QuickFilters.h"
#include "stores/CustomerStorage.h"
#include "stores/TagStorage.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QProcess>
#include <QStatusBar>
#include <QTabBar>
#include <QTest>
#include <QToolButton>

// The filter sheet with its query editors and rows, and the search results window, driven as the
// user reaches them from the main window. The document: "Web shop" (customer ACME; entries
// "Urgent call" of 90 minutes and "Design" of 30) and "App" ("call back", 45 minutes); the
// customers ACME (id 1) and Bolt (id 2).
class TestFilterWindows : public QObject, protected MainWindowFixture {
    Q_OBJECT

private slots:
    void init() {
        openFolder();
        auto web = std::make_shared<Project>(u"Web shop"_s, u""_s, 80.0f, 0, 0, 0, 1, u""_s);
        auto app = std::make_shared<Project>(u"App"_s, u""_s, 60.0f, 0, 0, 0, -1, u""_s);
        for (const auto &[project, day, minutes, comment] :
             {std::tuple{web, u"20.11.2026"_s, 90, u"Urgent call"_s},
              std::tuple{web, u"21.11.2026"_s, 30, u"Design"_s},
              std::tuple{app, u"22.11.2026"_s, 45, u"call back"_s}}) {
            auto entry = dayEntry(day, minutes);
            entry->setComment(comment);
            project->addEntry(entry);
        }
        const QString file = m_folder->filePath(u"work.projects"_s);
        QVERIFY(ProjectFile::save(file, {web, app}).ok);
        m_preferences->setObject(file, u"LastOpenFile");
        QVERIFY(QDir().mkpath(m_folder->filePath(u"data/Hourfold3"_s)));
    }

    void cleanup() { closeWindow(); }

    void okWritesTheFileAndCancelKeepsIt_data() {
        QTest::addColumn<bool>("accept");
        QTest::newRow("OK") << true;
        QTest::newRow("Cancel") << false;
    }
    void okWritesTheFileAndCancelKeepsIt() {
        QFETCH(bool, accept);
        auto old = std::make_shared<Filter>();
        old->setName(u"Old"_s);
        QVERIFY(writeFile(filtersPath(), Filter::archiveList({old})));
        const QByteArray before = readFile(filtersPath());
        FilterSheet *sheet = openSheet();
        click(sheet, u"addButton"_s);
        QTest::keyClicks(focused<QLineEdit>(), u"Long calls"_s);
        type(sheet->projectEditor(), u"valueField"_s, u"Web"_s);
        control<QTabBar>(sheet, u"filterTabs"_s)->setCurrentIndex(1);
        choose(sheet->entryEditor(), u"matchKindPopUp"_s, u"is equal to or greater than"_s);
        type(sheet->entryEditor(), u"valueField"_s, u"1"_s);
        type(sheet->entryEditor(), u"valueField2"_s, u"15"_s);
        QTest::keyClick(sheet, accept ? Qt::Key_Return : Qt::Key_Escape);
        QVERIFY(!sheet->isVisible());
        if (!accept) {
            QCOMPARE(readFile(filtersPath()), before);
            return;
        }
        const auto read = Filter::unarchiveList(readFile(filtersPath()));
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
        QComboBox *popUp = m_window->filterPopUp();
        popUp->setCurrentIndex(popUp->findText(u"Long calls"_s));
        emit popUp->activated(popUp->currentIndex());
        const ProjectListModel *list = m_window->listModel();
        QCOMPARE(list->rowCount(), 1);
        QCOMPARE(list->projectAt(list->index(0, 0))->name(), u"Web shop"_s);
        QCOMPARE(list->rowCount(list->index(0, 0)), 1);
        // The command line lists what the sheet saved.
        QProcess cli;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(u"XDG_DATA_HOME"_s, m_folder->filePath(u"data"_s));
        env.insert(u"XDG_CONFIG_HOME"_s, m_folder->filePath(u"config"_s));
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
        QCOMPARE(m_user.messages(), QStringList{u"“12a” is not a number."_s});
        QCOMPARE(focused<QLineEdit>()->text(), u"12a"_s);
        QVERIFY(!QFile::exists(filtersPath()));
    }

    void sheetGrowsByARowPerRowOfTheTab() {
        FilterSheet *sheet = openSheet();
        click(sheet, u"addButton"_s);
        click(sheet->projectEditor(), u"addCriterionButton"_s);
        click(sheet->projectEditor(), u"addCriterionButton"_s);
        const QRect projects = settledGeometry(sheet);
        control<QTabBar>(sheet, u"filterTabs"_s)->setCurrentIndex(1);
        const QRect entries = settledGeometry(sheet);
        QCOMPARE(projects.height() - entries.height(), 2 * 32);
        QCOMPARE(entries.top(), projects.top());
        auto *mode = control<QComboBox>(sheet->entryEditor(), u"matchModePopUp"_s);
        auto *remove = control<QToolButton>(sheet->entryEditor(), u"removeCriterionButton"_s);
        QVERIFY(!mode->isEnabled() && !remove->isVisible());
        click(sheet->entryEditor(), u"addCriterionButton"_s);
        QCOMPARE(settledGeometry(sheet).height() - entries.height(), 32);
        QVERIFY(mode->isEnabled() && remove->isVisible());
    }

    void anUnreadableFileIsToldOnceAndKept() {
        QVERIFY(writeFile(filtersPath(), "not a list"));
        QString reason;
        QVERIFY(!Filter::unarchiveList("not a list", &reason));
        FilterSheet *sheet = openSheet();
        QStatusBar *status = m_window->statusBar();
        QCOMPARE(status->currentMessage(),
                 u"The saved filters could not be read from %1 (%2); the file is left as it is "
                 u"until you save filters."_s.arg(filtersPath(), reason));
        QTest::keyClick(sheet, Qt::Key_Escape);
        QCOMPARE(readFile(filtersPath()), QByteArray("not a list"));
        status->clearMessage();
        sheet = openSheet();
        QCOMPARE(status->currentMessage(), QString());
        click(sheet, u"addButton"_s);
        QTest::keyClick(focused<QLineEdit>(), Qt::Key_Delete);
        QCOMPARE(control<QComboBox>(sheet, u"sheetFilterPopup"_s)->currentText(),
                 u"error: no name"_s);
        QTest::keyClick(sheet, Qt::Key_Return);
        QCOMPARE(Filter::unarchiveList(readFile(filtersPath()))->size(), 1);
        QVERIFY(m_window->filterPopUp()->findText(u"error: no name"_s) >= 0);
    }

    void aChosenResultIsSelectedInTheList_data() {
        QTest::addColumn<bool>("doubleClick");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("selected");
        // The results of "call": Web shop's "Urgent call", App's "call back".
        QTest::newRow("double click on an entry") << true << 1 << u"call back"_s;
        QTest::newRow("Enter on an entry") << false << 0 << u"Urgent call"_s;
    }
    void aChosenResultIsSelectedInTheList() {
        QFETCH(bool, doubleClick);
        QFETCH(int, row);
        QFETCH(QString, selected);
        startWindow();
        MainWindow &window = *m_window;
        QTest::keyClicks(window.searchField(), u"cal"_s);
        window.commandAction(u"showSearchResults:"_s)->trigger();
        SearchResultsWindow *results = window.searchResultsWindow();
        QVERIFY(QTest::qWaitForWindowActive(results));
        auto *field = control<QLineEdit>(results, u"resultsSearchField"_s);
        QCOMPARE(field->text(), u"cal"_s);
        QTest::keyClick(field, Qt::Key_L);
        QListView *table = results->resultsTable();
        QCOMPARE(table->model()->rowCount(), 2);
        const QModelIndex index = table->model()->index(row, 0);
        QCOMPARE(index.data(SearchResultsModel::RedRangesRole).toList().size(), 1);
        // Choosing the row selects it in the list; choosing it again does so again.
        table->setCurrentIndex(index);
        ProjectListView *list = window.listView();
        list->selectRow({});
        list->collapseAll();
        const QPoint at = table->visualRect(index).center();
        // A double click arrives as a click followed by the double click.
        if (doubleClick) {
            QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, at);
            QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, at);
        } else {
            QTest::keyClick(table, Qt::Key_Return);
        }
        QVERIFY(list->selectedItem());
        QCOMPARE(list->selectedItem()->comment(), selected);
        QVERIFY(list->isExpanded(list->selectedIndex().parent()));
    }

private:
    FilterSheet *openSheet() {
        if (!m_window)
            startWindow();
        QComboBox *popUp = m_window->filterPopUp();
        popUp->setFocus();
        // From "Off" one up is "Edit Filters...".
        QTest::keyClick(popUp, Qt::Key_Up);
        FilterSheet *sheet = m_window->filterSheet();
        if (!sheet->isVisible() || popUp->currentText() != u"Off")
            qFatal("the sheet did not open over the pop-up showing Off");
        if (!QTest::qWaitForWindowActive(sheet))
            qFatal("the sheet did not become active");
        return sheet;
    }
    template <typename T> static T *control(QWidget *parent, const QString &name) {
        T *widget = parent->findChild<T *>(name);
        if (!widget)
            qFatal("no control %s", qPrintable(name));
        return widget;
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

    // Where the command line finds it with XDG_DATA_HOME at data/.
    QString filtersPath() const { return m_folder->filePath(u"data/Hourfold3/filters.plist"_s); }

    void startWindow() { MainWindowFixture::startWindow(filtersPath(), {u"ACME"_s, u"Bolt"_s}); }
};

QTEST_MAIN(TestFilterWindows)
#include "tst_filterwindows.moc"
