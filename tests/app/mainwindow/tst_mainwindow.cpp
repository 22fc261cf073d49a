#include "app/mainwindow/MainWindowFixture.h"
#include "core/model/ModelFixtures.h"

#include "ActionTableColumn.h"
#include "ProjectListModel.h"
#include "ProjectListView.h"
#include "customers/CustomerSideBar.h"
#include "desktop/DesktopPresence.h"
#include "desktop/MiniWindow.h"
#include "details/AttachmentsPanel.h"
#include "details/DetailsPane.h"
#include "editors/EntrySheet.h"
#include "editors/FlatFeeSheet.h"
#include "editors/ProjectSheet.h"
#include "mainwindow/MainWindow.h"
#include "mainwindow/ProjectController.h"
#include "mainwindow/QuickFilterBar.h"
#include "mainwindow/ToolbarItems.h"
#include "model/ProjectCollection.h"
#include "model/ProjectFile.h"
#include "platform/CurrencyFormatter.h"
#include "search/FilterController.h"
#include "search/QuickFilters.h"
#include "stores/CustomerStorage.h"
#include "stores/TagStorage.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QToolBar>
#include <QUndoStack>

namespace {

ProjectList sampleProjects() {
    auto web = std::make_shared<Project>(u"Web shop"_s, u"Relaunch"_s, 80.0f, 0, 0, 0, -1, u""_s);
    web->addEntry(periodEntry(u"20.11.2026 09:00"_s, u"20.11.2026 11:30"_s));
    web->addEntry(dayEntry(u"22.11.2026"_s, 45));
    auto app = std::make_shared<Project>(u"App"_s, u""_s, 60.0f, 0, 0, 0, -1, u""_s);
    app->addEntry(flatFee(u"01.10.2026"_s, 250.0f));
    return {web, app};
}

} // namespace

// The main window as the user meets it: start-up, the document commands with their prompts, the
// toolbar and menu states, the status line and changes made by other programs.
class TestMainWindow : public QObject, protected MainWindowFixture {
    Q_OBJECT

private slots:
    void init() {
        Clock::setNow(QDateTime(QDate(2026, 11, 22), QTime(10, 0)));
        openFolder();
        m_file = m_folder->filePath(u"work.projects"_s);
        QVERIFY(ProjectFile::save(m_file, sampleProjects()).ok);
    }

    void cleanup() { closeWindow(); }

    void startsUntitledWithoutALastFile() {
        startWindow();
        QCOMPARE(m_window->windowTitle(), u"untitled[*] — Hourfold"_s);
        QCOMPARE(rows(), 0);
        const QStringList shown = ToolbarItems::defaultItemIdentifiers();
        QCOMPARE(m_preferences->objectForKey(u"TB Item Identifiers"_s).toStringList(), shown);
        QCOMPARE(m_window->toolbarItemIdentifiers(), shown);
    }

    void reopensTheLastFile() {
        startWindow(m_file);
        QCOMPARE(m_window->windowTitle(), u"work.projects[*] — Hourfold"_s);
        QCOMPARE(m_window->windowFilePath(), m_file);
        QCOMPARE(rows(), 2);
        QCOMPARE(m_window->statusInfoLabel()->text(),
                 m_collection->statusBarInfo().replace(u'\t', u"    "_s));
        QVERIFY(m_window->statusInfoLabel()->text().startsWith(u"Total duration: 03:15"_s));
    }

    void commandsFollowTheSelectionAndTheDocument() {
        m_preferences->setObject(true, u"DrawerState");
        startWindow(m_file);
        QCOMPARE(enabled({u"delete:"_s, u"save:"_s, u"revert:"_s}),
                 (QList<bool>{false, false, false}));
        select(cell(1));
        QVERIFY(detailsShow(u"App"_s));
        m_window->listView()->clearSelection();
        select({});
        QVERIFY(!detailsShow(u"App"_s));
        // A click on the row, as the user selects it.
        QTest::mouseClick(m_window->listView()->viewport(), Qt::LeftButton, {}, center(cell(0, 1)));
        QVERIFY(action(u"delete:"_s)->isEnabled());
        QVERIFY(detailsShow(u"Web shop"_s));
        action(u"delete:"_s)->trigger();
        QCOMPARE(rows(), 1);
        QCOMPARE(enabled({u"save:"_s, u"revert:"_s}), (QList<bool>{true, true}));
        QCOMPARE(action(u"undo:"_s)->text(), u"&Undo Delete Project"_s);
        QVERIFY(m_window->isWindowModified());
        action(u"undo:"_s)->trigger();
        QCOMPARE(rows(), 2);
    }

    void detailsPaneRemembersWhetherItIsOpen() {
        startWindow(m_file);
        QVERIFY(!m_window->detailsPane()->isVisible());
        // Selected while the pane is closed: the page comes when the pane opens.
        select(cell(1));
        action(u"toggleDrawer:"_s)->trigger();
        QVERIFY(m_window->detailsPane()->isVisible());
        QVERIFY(detailsShow(u"App"_s));
        QVERIFY(m_preferences->boolForKey(u"DrawerState"));
        m_window->detailsPane()->close();
        QVERIFY(!m_preferences->boolForKey(u"DrawerState"));
        QVERIFY(!action(u"toggleDrawer:"_s)->isChecked());
    }

    void attachmentsAndCustomersFollowTheSelection() {
        startWindow(m_file);
        select(cell(1));
        action(u"openAttachments:"_s)->trigger();
        AttachmentsPanel *attachments = m_window->attachmentsPanel();
        QVERIFY(attachments->isVisible());
        QCOMPARE(attachments->windowTitle(), u"App"_s);
        select(cell(0));
        QCOMPARE(attachments->windowTitle(), u"Web shop"_s);
        QAction *customers = action(u"toggleDropBox:"_s);
        QVERIFY(customers->isChecked());
        customers->trigger();
        QVERIFY(m_window->customerSideBar()->isHidden());
        QVERIFY(m_preferences->boolForKey(u"isDropBoxHidden"));
        QVERIFY(!customers->isChecked());
    }

    // Export… opens the format sheet over the window with PDF chosen.
    void exportOpensTheFormatSheet() {
        startWindow();
        action(u"showExportSheet:"_s)->trigger();
        auto *formats = m_window->findChild<QTabWidget *>(u"formats"_s);
        QVERIFY(formats && formats->isVisible());
        QCOMPARE(formats->tabText(formats->currentIndex()), u"PDF"_s);
    }

    void quitPrompt_data() {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("ended");
        QTest::newRow("Save") << 0 << true;
        QTest::newRow("Cancel") << 1 << false;
        QTest::newRow("Don't save") << 2 << true;
    }
    void quitPrompt() {
        QFETCH(int, answer);
        QFETCH(bool, ended);
        startWindow(m_file);
        m_collection->addProject(emptyProject(u"New"_s));
        QSignalSpy terminated(m_window.get(), &MainWindow::terminated);
        m_user.answers = {answer};
        action(u"terminate:"_s)->trigger();
        QCOMPARE(terminated.size(), ended ? 1 : 0);
        QCOMPARE(ProjectFile::load(m_file).projects.size(), answer == 0 ? 3 : 2);
        if (ended)
            QCOMPARE(m_preferences->stringForKey(u"lastVersion"), QStringLiteral(HOURFOLD_VERSION));
    }

    void quittingUntitledWaitsForTheSavePanel() {
        startWindow();
        m_collection->addProject(sampleProjects().constFirst());
        QSignalSpy terminated(m_window.get(), &MainWindow::terminated);
        m_user.answers = {0};
        m_window->quit();
        QVERIFY(m_user.savePanel);
        QCOMPARE(terminated.size(), 0);
        m_user.endSavePanel(m_folder->filePath(u"named.projects"_s));
        QCOMPARE(terminated.size(), 1);
        QCOMPARE(ProjectFile::load(m_folder->filePath(u"named.projects"_s)).projects.size(), 1);
    }

    // Without a tray, the first close of a run says once that the timers go on; a launch without
    // a file brings back the window "showMiniWindow" names.
    void closingTheWindowKeepsTheTimersRunning() {
        startWindow(m_file);
        const auto entry = m_collection->startTimerInProject(m_collection->projectArray().first());
        QSignalSpy terminated(m_window.get(), &MainWindow::terminated);
        m_window->close();
        m_window->close();
        QVERIFY(!m_window->isVisible());
        QCOMPARE(terminated.size(), 0);
        QVERIFY(entry->isWorking());
        QCOMPARE(m_user.messages(), QStringList{u"Hourfold keeps running."_s});
        m_window->openFiles({});
        QVERIFY(m_window->isVisible());
        m_preferences->setObject(true, u"showMiniWindow");
        m_window->openFiles({});
        QVERIFY(m_window->desktopPresence().miniWindow().isHUDVisible());
        QVERIFY(!m_window->isVisible());
    }

    void aFailedSaveShowsAPersistentWarning() {
        startWindow(m_file);
        saveAppOnly();
        m_collection->addProject(emptyProject(u"Mine"_s));
        // Crash protection saves at the end of the turn and finds the file changed by someone.
        m_collection->flushPendingSave();
        QVERIFY(!m_window->saveWarningLabel()->isHidden());
        QVERIFY(m_window->saveWarningLabel()->text().startsWith(u"Not saved: "_s));
        QVERIFY(m_window->isWindowModified());
    }

    void anotherProgramsChangeIsReloaded() {
        startWindow(m_file);
        saveAppOnly();
        QTRY_COMPARE(rows(), 1);
        QCOMPARE(m_user.messages(), QStringList());
    }

    void anotherProgramsChangeWaitsWhileASheetIsOpen() {
        startWindow(m_file);
        select(cell(0));
        action(u"newFlatFeeEntry:"_s)->trigger();
        QVERIFY(m_window->flatFeeSheet()->isVisible());
        saveAppOnly();
        m_window->controller().checkFileOnDisk();
        QCOMPARE(m_collection->projectArray().size(), 2);
        m_user.answers = {1}; // "Keep My Version"
        m_window->flatFeeSheet()->accept();
        QCOMPARE(m_collection->undoStack()->undoText(), u"Add Entry"_s);
        // The sheet is closed: now the question comes, and the kept version is written at once.
        QTRY_COMPARE(m_user.messages(),
                     QStringList{u"The project file was changed by another program."_s});
        QTRY_COMPARE(ProjectFile::load(m_file).projects.size(), 2);
        QCOMPARE(m_collection->projectArray().size(), 2);
    }

    void quickAndSavedFiltersAreRestored() {
        m_preferences->setObject(u"today"_s, u"quickfilter");
        startWindow(m_file);
        QCOMPARE(m_window->quickFilterBar()->selected(), u"today"_s);
        QVERIFY(m_collection->currentFilter());
        // Only the day entry of today is shown under the project.
        QCOMPARE(rows(cell(0)), 1);
        m_window->quickFilterBar()->findChild<QAbstractButton *>(u"off"_s)->click();
        QVERIFY(!m_collection->currentFilter());
        QCOMPARE(m_preferences->stringForKey(u"quickfilter"), u"off"_s);
        QCOMPARE(m_window->filterPopUp()->currentText(), u"Off"_s);
    }

    void searchFieldNarrowsTheList() {
        startWindow(m_file);
        m_window->searchField()->setText(u"nothing matches this"_s);
        QCOMPARE(rows(), 2);
        QCOMPARE(rows(cell(0)), 0);
    }

    void toolbarArrangementComesFromThePreferences() {
        m_preferences->setObject(
            QStringList{u"Details"_s, u"AddEntry"_s, u"MiniWindow"_s, u"Delete"_s},
            u"TB Item Identifiers"_s);
        m_preferences->setObject(u"3.1.0"_s, u"lastVersion");
        startWindow();
        // 3.1.0 brings "Attachments" in after "Edit" (missing here: at the end).
        const QStringList arranged{u"Details"_s, u"AddEntry"_s, u"MiniWindow"_s, u"Delete"_s,
                                   u"Attachments"_s};
        QCOMPARE(m_preferences->objectForKey(u"TB Item Identifiers"_s).toStringList(), arranged);
        QCOMPARE(m_window->toolbarItemIdentifiers(), arranged);
    }

    // The action column's segments: an entry resumes, pauses and stops; a project starts a
    // timer, resumes and pauses.
    void actionSegments_data() {
        QTest::addColumn<QString>("row");
        QTest::addColumn<int>("segment");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<bool>("changed");
        QTest::newRow("project 0 starts a timer")
            << u"project"_s << 0 << u"running 2, paused 1"_s << true;
        QTest::newRow("project 1 resumes") << u"project"_s << 1 << u"running 2, paused 0"_s << true;
        QTest::newRow("project 2 pauses") << u"project"_s << 2 << u"running 0, paused 2"_s << true;
        QTest::newRow("running entry 1 pauses")
            << u"running"_s << 1 << u"running 0, paused 2"_s << true;
        QTest::newRow("paused entry 0 resumes")
            << u"paused"_s << 0 << u"running 2, paused 0"_s << true;
        // Nothing changes, so nothing is marked changed (and nothing written).
        QTest::newRow("paused entry 1 stays")
            << u"paused"_s << 1 << u"running 1, paused 1"_s << false;
    }
    void actionSegments() {
        QFETCH(QString, row);
        QFETCH(int, segment);
        startWithTimers();
        m_collection->setDataChanged(false);
        m_window->actionButtonClicked(
            row == u"project" ? cell(0) : cell(row == u"running" ? 1 : 0, 3, cell(0)), segment);
        QTEST(timerStates(), "expected");
        QTEST(m_collection->dataChanged(), "changed");
    }

    void stopOpensTheSheetWithTheTimerStopped() {
        startWithTimers();
        // The list sorts by day and start: the paused entry (07:00) comes first.
        select(cell(1, 0, cell(0)));
        QAction *stop = action(u"actionButtonClicked:"_s);
        QVERIFY(stop->isEnabled());
        stop->trigger();
        QVERIFY(m_window->entrySheet()->isVisible());
        m_window->entrySheet()->accept();
        QCOMPARE(timerStates(), u"running 0, paused 1"_s);
        QCOMPARE(m_collection->undoStack()->undoText(), u"Edit Entry"_s);
    }

    void timerCommandsFollowTheSelection() {
        startWithTimers();
        const QStringList commands{u"pause:"_s, u"resume:"_s, u"actionButtonClicked:"_s};
        select(cell(0, 0, cell(0)));
        QCOMPARE(enabled(commands), (QList<bool>{false, true, true}));
        action(u"resume:"_s)->trigger();
        QCOMPARE(timerStates(), u"running 2, paused 0"_s);
        QCOMPARE(enabled(commands), (QList<bool>{true, false, true}));
        select(cell(0));
        action(u"pause:"_s)->trigger();
        QCOMPARE(timerStates(), u"running 0, paused 2"_s);
    }

    // The remote's buttons on the list: up and down go round its ends, play pauses and resumes
    // the selected entry, left and right close and open the selected project.
    void remoteButtonsOnTheList() {
        startWithTimers();
        DesktopPresence &presence = m_window->desktopPresence();
        const auto selectedRow = [this] {
            const QModelIndex current = m_window->listView()->selectedIndex();
            return u"%1.%2"_s.arg(current.parent().row()).arg(current.row());
        };
        const auto paused = [this] { return m_window->listView()->selectedItem()->isPaused(); };
        presence.appleRemoteButton(0, true);
        presence.appleRemoteButton(0, false);
        QCOMPARE(selectedRow(), u"0.1"_s);
        const bool wasPaused = paused();
        presence.appleRemoteButton(9, true);
        QCOMPARE(paused(), !wasPaused);
        presence.appleRemoteButton(1, false);
        QCOMPARE(selectedRow(), u"-1.0"_s);
        presence.appleRemoteButton(5, true);
        QVERIFY(!m_window->listView()->isExpanded(cell(0)));
        presence.appleRemoteButton(0, false);
        QCOMPARE(selectedRow(), u"-1.0"_s);
        presence.appleRemoteButton(4, true);
        presence.appleRemoteButton(1, false);
        QCOMPARE(selectedRow(), u"0.0"_s);
        presence.appleRemoteButton(3, true);
        // The other entry changed its state too.
        QCOMPARE(timerStates(), u"running 1, paused 1"_s);
    }

    void sheetsOpenFromTheCommands() {
        startWithTimers();
        select(cell(0));
        action(u"newFlatFeeEntry:"_s)->trigger();
        QVERIFY(m_window->flatFeeSheet()->isVisible());
        m_window->flatFeeSheet()->reject();
        action(u"newTimerEntry:"_s)->trigger();
        QVERIFY(m_window->entrySheet()->isVisible());
        m_window->listView()->collapse(cell(0));
        m_window->entrySheet()->accept();
        QCOMPARE(m_collection->undoStack()->undoText(), u"Add Entry"_s);
        QCOMPARE(action(u"undo:"_s)->text(), u"&Undo Add Entry"_s);
        // The project opens to show the new entry; the project row stays selected.
        QVERIFY(m_window->listView()->isExpanded(cell(0)));
        QCOMPARE(m_window->listView()->currentIndex(), cell(0));
        // Undo and Redo from the menu take the entry away and bring it back.
        const int items = rows(cell(0));
        action(u"undo:"_s)->trigger();
        QCOMPARE(rows(cell(0)), items - 1);
        QCOMPARE(action(u"redo:"_s)->text(), u"&Redo Add Entry"_s);
        action(u"redo:"_s)->trigger();
        QCOMPARE(rows(cell(0)), items);
        action(u"newProject:"_s)->trigger();
        QVERIFY(m_window->projectSheet()->isVisible());
        m_window->projectSheet()->reject();
        // A double click on a project row opens its editor.
        QTest::mouseDClick(m_window->listView()->viewport(), Qt::LeftButton, {},
                           center(cell(0, 1)));
        QVERIFY(m_window->projectSheet()->isVisible());
        m_window->projectSheet()->reject();
    }

    // The next run starts with the filters of this one.
    void filtersSurviveARestart_data() {
        QTest::addColumn<QStringList>("chosen");
        QTest::addColumn<QString>("quickFilter");
        QTest::addColumn<QString>("savedFilter");
        QTest::addColumn<QString>("current");
        QTest::newRow("This week")
            << QStringList{u"week"_s} << u"week"_s << u"Off"_s << u"This week"_s;
        QTest::newRow("saved filter")
            << QStringList{u"saved"_s} << u"off"_s << u"Mine"_s << u"Mine"_s;
        QTest::newRow("saved filter, then This week")
            << QStringList{u"saved"_s, u"week"_s} << u"week"_s << u"Off"_s << u"This week"_s;
    }
    void filtersSurviveARestart() {
        QFETCH(QStringList, chosen);
        QFETCH(QString, quickFilter);
        QFETCH(QString, current);
        auto mine = QuickFilters::makeDefaultFilters().constFirst();
        mine->setName(u"Mine"_s);
        QVERIFY(writeFile(m_folder->filePath(u"filters.plist"_s), Filter::archiveList({mine})));
        m_preferences->setObject(m_file, u"LastOpenFile");
        startWindow();
        for (const QString &choice : chosen) {
            if (choice == u"saved")
                QTest::keyClick(m_window->filterPopUp(), Qt::Key_Down);
            else
                m_window->quickFilterBar()->findChild<QAbstractButton *>(choice)->click();
        }
        QCOMPARE(currentFilterName(), current);
        restartWindow();
        QCOMPARE(m_window->quickFilterBar()->selected(), quickFilter);
        QTEST(m_window->filterPopUp()->currentText(), "savedFilter");
        QCOMPARE(currentFilterName(), current);
        QCOMPARE(m_preferences->stringForKey(u"quickfilter"), quickFilter);
        // The saved filter set aside for the quick one comes back with it.
        QCOMPARE(m_preferences->stringForKey(u"selectedFilterName"),
                 chosen.contains(u"saved"_s) ? u"Mine"_s : QString());
    }

    // New and Open go on once the untitled document is saved through the panel.
    void commandFollowsTheSavePanel_data() {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("saveAs");
        QTest::addColumn<int>("rowsAfter");
        QTest::addColumn<QString>("title");
        QTest::newRow("New") << u"newDatabase:"_s << u"named.projects"_s << 0
                             << u"untitled[*] — Hourfold"_s;
        QTest::newRow("Open") << u"load:"_s << u"named.projects"_s << 2
                              << u"work.projects[*] — Hourfold"_s;
        QTest::newRow("New, panel cancelled")
            << u"newDatabase:"_s << QString() << 1 << u"untitled[*] — Hourfold"_s;
    }
    void commandFollowsTheSavePanel() {
        QFETCH(QString, command);
        QFETCH(QString, saveAs);
        startWindow();
        m_collection->addProject(sampleProjects().constFirst());
        m_user.answers = {0};
        action(command)->trigger();
        if (command == u"load:")
            m_user.endOpenPanel(m_file);
        QCOMPARE(m_user.messages(), QStringList{u"Do you want to save your changes?"_s});
        QVERIFY(m_user.savePanel);
        m_user.endSavePanel(saveAs.isEmpty() ? QString() : m_folder->filePath(saveAs));
        QTEST(rows(), "rowsAfter");
        QTEST(m_window->windowTitle(), "title");
        QCOMPARE(m_window->isWindowModified(), saveAs.isEmpty());
        if (!saveAs.isEmpty())
            QCOMPARE(ProjectFile::load(m_folder->filePath(saveAs)).projects.size(), 1);
    }

    // The details drawer's size is kept only when the drawer was there to be sized.
    void drawerSizeAfterTheQuit_data() {
        QTest::addColumn<bool>("open");
        QTest::newRow("never shown") << false;
        QTest::newRow("shown") << true;
    }
    void drawerSizeAfterTheQuit() {
        QFETCH(bool, open);
        m_preferences->setObject(321.0f, u"drawerWidth");
        m_preferences->setObject(456.0f, u"drawerHeight");
        m_preferences->setObject(open, u"DrawerState");
        startWindow();
        const QSize shown = m_window->detailsPane()->size();
        m_window->quit();
        const QSize expected = open ? shown : QSize(321, 456);
        QCOMPARE(m_preferences->floatForKey(u"drawerWidth"), float(expected.width()));
        QCOMPARE(m_preferences->floatForKey(u"drawerHeight"), float(expected.height()));
    }

    // Pause and resume from the action cells show in the details and the totals at once, not at
    // the next refresh; the totals count finished entries only.
    void timerClicksShowAtOnce() {
        m_preferences->setObject(true, u"DrawerState");
        startWithTimers();
        ProjectListView *list = m_window->listView();
        // The narrow list beside the drawer scrolls to the cell, as the user would.
        const auto click = [list](const QModelIndex &row, int segment) {
            const QModelIndex cell = row.siblingAtColumn(ProjectListModel::ActionColumn);
            list->scrollTo(cell);
            QTest::mouseClick(
                list->viewport(), Qt::LeftButton, {},
                ActionTableColumn::segmentRect(list->visualRect(cell), segment).center());
        };
        const QModelIndex paused = cell(0, 0, cell(0));
        QTextBrowser *details = m_window->detailsPane()->browser();
        for (const int segment : {0, 1}) {
            click(paused, segment);
            QCOMPARE(timerStates(),
                     segment == 0 ? u"running 2, paused 0"_s : u"running 1, paused 1"_s);
            QCOMPARE(details->toPlainText().contains(u"Paused at:"_s), segment == 1);
            QCOMPARE(m_window->statusInfoLabel()->text(),
                     u"Total duration: 00:00    Total wages: $0.00"_s);
        }
    }

private:
    void startWithTimers() {
        auto project = std::make_shared<Project>(u"Timers"_s, u""_s, 60.0f, 0, 0, 0, -1, u""_s);
        project->addEntry(periodEntry(u"22.11.2026 08:00"_s));
        auto paused = periodEntry(u"22.11.2026 07:00"_s);
        paused->setPausedAt(at(u"22.11.2026 07:30"_s));
        project->addEntry(paused);
        QVERIFY(ProjectFile::save(m_file, {project}).ok);
        startWindow(m_file);
        m_window->listView()->expand(cell(0));
    }

    QString currentFilterName() const {
        const Filter::Pointer filter = m_collection->currentFilter();
        return filter ? filter->name() : u"none"_s;
    }

    // Quits and starts again with the same preferences, as the next run of the program.
    void restartWindow() {
        QSignalSpy terminated(m_window.get(), &MainWindow::terminated);
        m_window->quit();
        QCOMPARE(terminated.size(), 1);
        cleanup();
        Preferences::setShared(m_preferences.get());
        FilterController::forgetSelectedFilterName();
        startWindow();
    }

    QModelIndex cell(int row, int column = 0, const QModelIndex &parent = {}) const {
        return m_window->listModel()->index(row, column, parent);
    }
    int rows(const QModelIndex &parent = {}) const {
        return m_window->listModel()->rowCount(parent);
    }
    QAction *action(const QString &name) const { return m_window->commandAction(name); }
    QList<bool> enabled(const QStringList &commands) const {
        QList<bool> states;
        for (const QString &name : commands)
            states << action(name)->isEnabled();
        return states;
    }
    void select(const QModelIndex &index) { m_window->listView()->setCurrentIndex(index); }
    QPoint center(const QModelIndex &index) const {
        return m_window->listView()->visualRect(index).center();
    }
    bool detailsShow(const QString &text) const {
        return m_window->detailsPane()->browser()->toPlainText().contains(text);
    }
    static std::shared_ptr<Project> emptyProject(const QString &name) {
        return std::make_shared<Project>(name, u""_s, 0.0f, 0, 0, 0, -1, u""_s);
    }
    // Another program leaves only the project App in the file.
    void saveAppOnly() { QVERIFY(ProjectFile::save(m_file, {sampleProjects().constLast()}).ok); }

    QString timerStates() const {
        int running = 0;
        int paused = 0;
        for (const auto &entry : m_collection->workingEntries())
            ++(entry->isPaused() ? paused : running);
        return u"running %1, paused %2"_s.arg(running).arg(paused);
    }

    void startWindow(const QString &lastFile = {}) {
        if (!lastFile.isEmpty())
            m_preferences->setObject(lastFile, u"LastOpenFile");
        MainWindowFixture::startWindow(m_folder->filePath(u"filters.plist"_s));
    }

    QString m_file;
};

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
