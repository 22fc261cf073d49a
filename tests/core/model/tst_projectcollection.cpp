#include "model/ProjectCollection.h"
#include "model/ProjectXmlWriter.h"
#include "platform/ProjectFileLock.h"
#include "stores/CustomerStorage.h"
#include "support/ExportSamples.h"
#include "support/FakeCustomers.h"
#include "support/Files.h"

#include <QSignalSpy>
#include <QTest>

using Operation = std::function<void(ProjectCollection &)>;
Q_DECLARE_METATYPE(Operation)

namespace {
std::shared_ptr<Project> named(ProjectCollection &collection, const char *name) {
    return collection.projectWithName(QString::fromLatin1(name));
}
} // namespace

class TestProjectCollection : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QStandardPaths::setTestModeEnabled(true);
        Clock::setNow(QDateTime(QDate(2026, 11, 22), QTime(10, 7, 30)));
    }

    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_preferences = std::make_unique<Preferences>(m_folder->filePath(u"p.conf"_s));
        Preferences::setShared(m_preferences.get());
        m_collection = std::make_unique<ProjectCollection>(*m_preferences);
        m_collection->setCustomerDirectory(&m_customers);
        m_customers.visible = {{1, true}, {2, false}};
        auto web = project(u"Web"_s, 60.0f, 1);
        auto app = std::make_shared<Project>(u"App"_s, u""_s, 30.0f, 1, 15, 0, -1, u""_s);
        auto hidden = project(u"Hidden"_s, 10.0f, 2);
        auto paused =
            commented(periodEntry(u"02.11.2026 09:00"_s, u"02.11.2026 10:00"_s), u"Urgent call"_s);
        paused->setDate(u""_s);
        paused->setPauseEntries(
            {std::make_shared<PauseEntry>(at(u"02.11.2026 09:10"_s), at(u"02.11.2026 09:25"_s))});
        auto review = commented(dayEntry(u"03.11.2026"_s, 30), u"Review"_s);
        auto design = commented(dayEntry(u"04.11.2026"_s, 45), u"Design"_s);
        review->setTags(u"urgent"_s);
        design->setTags(u"Urgent"_s);
        web->addEntry(paused);
        web->addEntry(review);
        app->addEntry(design);
        app->addEntry(commented(flatFee(u"05.11.2026"_s, 100.0f), u"Hosting"_s));
        hidden->addEntry(dayEntry(u"06.11.2026"_s, 60));
        m_path = m_folder->filePath(u"projects.xml"_s);
        QVERIFY(writeFile(m_path, ProjectXmlWriter::makeXML({web, app, hidden})));
        QVERIFY(m_collection->loadCollection(m_path).ok);
    }

    void cleanup() {
        m_collection.reset();
        Preferences::setShared(nullptr);
    }

    // A load sets the document up; a failed one keeps it.
    void loading() {
        QCOMPARE(m_collection->projectNames(), (QStringList{u"Web"_s, u"App"_s, u"Hidden"_s}));
        QCOMPARE(m_preferences->stringForKey(u"LastOpenFile"), m_path);
        QVERIFY(!m_collection->dataChanged());
        QVERIFY(m_collection->finishedLoading());
        QCOMPARE(m_collection->undoStack()->count(), 0);
        QVERIFY(m_collection->projectWithName(u"App"_s));
        QVERIFY(!m_collection->projectWithName(u"app"_s));
        const QString broken = m_folder->filePath(u"broken.xml"_s);
        QVERIFY(writeFile(broken, "<projects><project></project></projects>"));
        m_collection->undoStack()->push(new QUndoCommand(u"x"_s));
        QVERIFY(!m_collection->loadCollection(broken).ok);
        QCOMPARE(m_collection->projectArray().size(), 3);
        QCOMPARE(m_collection->undoStack()->count(), 1);
        QCOMPARE(m_collection->currentFile(), m_path);
        QCOMPARE(m_preferences->stringForKey(u"LastOpenFile"), m_path);
    }

    void undoRedo_data() {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QString>("actionName");
        const auto row = [](const char *name, const QString &action, const Operation &operation) {
            QTest::newRow(name) << operation << action;
        };
        row("add project", u"Add Project"_s,
            [](auto &c) { c.addProject(project(u"New"_s, 1.0f)); });
        row("delete last project", u"Delete Project"_s,
            [](auto &c) { c.deleteProject(named(c, "Hidden")); });
        row("add entry", u"Add Entry"_s, [](auto &c) {
            c.addEntry(dayEntry(u"01.11.2026"_s, 5), named(c, "Web"), u"Add Entry"_s);
        });
        row("delete entry", u"Delete Entry"_s,
            [](auto &c) { c.deleteEntry(named(c, "App")->entries().first(), named(c, "App")); });
        row("edit project", u"Edit Project"_s, [](auto &c) {
            c.editProject(named(c, "App"),
                          Project(u"Renamed"_s, u"d"_s, 99.0f, 2, 10, 1, 1, u"t"_s));
        });
        row("edit entry into a day entry", u"Edit Entry"_s, [](auto &c) {
            auto entry = std::static_pointer_cast<Entry>(named(c, "Web")->entries().first());
            auto values = entry->copy();
            values->setHasPeriod(false);
            values->setDate(u"02.11.2026"_s);
            c.editEntry(entry, *values, false);
        });
        row("edit flat fee", u"Edit Entry"_s, [](auto &c) {
            auto fee = std::static_pointer_cast<FlatFeeEntry>(named(c, "App")->entries().last());
            auto values = fee->copy();
            values->setAmount(250.0f);
            values->setDate(u"01.10.2026"_s);
            c.editFlatFeeEntry(fee, *values);
        });
        row("move project", u"Move Project"_s,
            [](auto &c) { c.moveProject(named(c, "Hidden"), 0); });
        row("assign customer", u"Assign customer"_s,
            [](auto &c) { c.assignCustomerWithID(1, named(c, "App")); });
        row("start timer", u"Start"_s, [](auto &c) { c.startTimerInProject(named(c, "Web")); });
        row("move entries between projects", u"Move Entry"_s,
            [](auto &c) { c.moveEntries(named(c, "Web")->entries(), named(c, "App")); });
    }
    void undoRedo() {
        QFETCH(Operation, operation);
        const QByteArray before = ProjectXmlWriter::makeXML(m_collection->projectArray());
        operation(*m_collection);
        const QByteArray after = ProjectXmlWriter::makeXML(m_collection->projectArray());
        QVERIFY(after != before);
        QVERIFY(m_collection->dataChanged());
        QCOMPARE(m_collection->undoStack()->count(), 1);
        QTEST(m_collection->undoStack()->undoText(), "actionName");
        m_collection->undoStack()->undo();
        QCOMPARE(ProjectXmlWriter::makeXML(m_collection->projectArray()), before);
        m_collection->undoStack()->redo();
        QCOMPARE(ProjectXmlWriter::makeXML(m_collection->projectArray()), after);
    }

    void undoingADeletionAppends() {
        m_collection->deleteProject(m_collection->projectWithName(u"Web"_s));
        m_collection->undoStack()->undo();
        QCOMPARE(m_collection->projectNames(), (QStringList{u"App"_s, u"Hidden"_s, u"Web"_s}));
    }

    void startingATimerRoundsTheClock() {
        // App rounds clock times to the nearest quarter hour; Web does not round.
        const auto app = m_collection->projectWithName(u"App"_s);
        QCOMPARE(m_collection->startTimerInProject(app)->fromTime(), u"10:00"_s); // 10:07:30
        Clock::setNow(QDateTime(QDate(2026, 11, 22), QTime(23, 53)));
        const auto late = m_collection->startTimerInProject(app);
        QCOMPARE(late->fromDate() + u' ' + late->fromTime(), u"23.11.2026 00:00"_s);
        const auto web = m_collection->startTimerInProject(m_collection->projectWithName(u"Web"_s));
        QCOMPARE(web->fromTime(), u"23:53"_s);
        QVERIFY(web->isWorking() && web->hasPeriod());
        QCOMPARE(m_collection->numWorkingEntries(), 3);
        Clock::setNow(QDateTime(QDate(2026, 11, 22), QTime(10, 7, 30)));
    }

    void sortingByColumnClicks() {
        auto web = m_collection->projectWithName(u"Web"_s);
        QCOMPARE(m_collection->sortingColumn(), u"Day_Col"_s);
        m_collection->columnClicked(u"Duration_Col"_s);
        QVERIFY(!m_collection->ascending());
        QCOMPARE(web->entries().first()->comment(), u"Urgent call"_s); // 45 before 30
        m_collection->columnClicked(u"Duration_Col"_s);
        QVERIFY(m_collection->ascending());
        QCOMPARE(web->entries().first()->comment(), u"Review"_s);
        m_collection->columnClicked(u"Day_Col"_s); // another column: the direction still flips
        QVERIFY(!m_collection->ascending());
        QCOMPARE(m_preferences->stringForKey(u"sortingColumn"), u"Day_Col"_s);
        QVERIFY(!m_preferences->boolForKey(u"sortAscending"));
    }

    void visibleProjectsAndEntries() {
        QCOMPARE(m_collection->visibleProjects().size(), 2); // the hidden customer's project left
        auto hidden = m_collection->projectWithName(u"Hidden"_s);
        QVERIFY(m_collection->isProjectFiltered(*hidden));
        QVERIFY(m_collection->isEntryFiltered(*hidden->entries().first()));
        // Projects without a customer or with a missing one are collapsed, deliberately.
        QCOMPARE(m_collection->collapseFadedProjects().size(), 2);
        m_collection->setSearchText(u"urgent"_s);
        auto web = m_collection->projectWithName(u"Web"_s);
        auto app = m_collection->projectWithName(u"App"_s);
        QCOMPARE(m_collection->filteredEntriesForProject(*web).size(), 2); // description, tag
        QCOMPARE(m_collection->filteredEntriesForProject(*app).size(), 0); // tag "Urgent" differs
        QCOMPARE(m_collection->visibleProjects().size(), 2);               // no match, still listed
        QVERIFY(m_collection->isEntryFiltered(*app->entries().first()));
        QCOMPARE(m_collection->filteredTotalDurationOfProject(*web), 45 + 30);
        QCOMPARE(m_collection->statusBarInfo(), u"Total duration: 01:15\tTotal wages: $75.00"_s);
        m_collection->setSearchText(u""_s);
        auto filter = std::make_shared<Filter>();
        auto projects = std::make_shared<MPSearchQuery>();
        projects->addCriterion(MPSearchCriterion::criterionWithString(u"App"_s, 0, u"name"_s));
        filter->setProjectQuery(projects);
        m_collection->setCurrentFilter(filter);
        QCOMPARE(m_collection->visibleProjects(), ProjectList{app});
        QVERIFY(m_collection->isEntryFiltered(*web->entries().first()));
        QCOMPARE(m_collection->statusBarInfo(), u"Total duration: 00:45\tTotal wages: $122.50"_s);
    }

    void movingWithHiddenProjects() {
        m_collection->addProject(project(u"Last"_s));
        m_collection->setHideFadedProjects(true);
        // Shown: Web, App, Last. Moving Last to shown position 1 puts it right after Web.
        m_collection->moveProject(m_collection->projectWithName(u"Last"_s), 1);
        QCOMPARE(m_collection->projectNames(),
                 (QStringList{u"Web"_s, u"Last"_s, u"App"_s, u"Hidden"_s}));
        // Undo moves it back to its old shown position, again right after the shown project
        // before it: the hidden project's place is not part of the step.
        m_collection->undoStack()->undo();
        QCOMPARE(m_collection->projectNames(),
                 (QStringList{u"Web"_s, u"App"_s, u"Last"_s, u"Hidden"_s}));
    }

    void crashProtection_data() {
        QTest::addColumn<bool>("enabled");
        QTest::newRow("on") << true;
        QTest::newRow("off") << false;
    }
    void crashProtection() {
        QFETCH(bool, enabled);
        m_preferences->setObject(enabled, u"crashProtection");
        const QByteArray before = readFile(m_path);
        m_collection->addProject(project(u"Saved"_s));
        m_collection->addProject(project(u"Twice"_s));
        QSignalSpy saved(m_collection.get(), &ProjectCollection::saved);
        QCoreApplication::processEvents();
        QTRY_COMPARE(saved.count(), enabled ? 1 : 0); // two changes, one write
        QCOMPARE(m_collection->dataChanged(), !enabled);
        QCOMPARE(readFile(m_path).contains("<name>Twice</name>"), enabled);
        if (!enabled)
            QCOMPARE(readFile(m_path), before);
    }

    // A background write that fails is never reported as saved and is tried again at the next
    // change; Quit waits for the last one.
    void backgroundWritesRetryAndFinish() {
        m_preferences->setObject(true, u"crashProtection");
        QSignalSpy saved(m_collection.get(), &ProjectCollection::saved);
        QSignalSpy failed(m_collection.get(), &ProjectCollection::saveFailed);
        // A folder where the lock file belongs: the lock, and so the write, fails.
        const QString lockPath = ProjectFileLock::lockPathFor(m_path);
        QVERIFY(QDir().mkdir(lockPath));
        m_collection->addProject(project(u"First"_s));
        QTRY_COMPARE(failed.count(), 1);
        QVERIFY(m_collection->dataChanged());
        QVERIFY(!readFile(m_path).contains("<name>First</name>"));
        QVERIFY(QDir().rmdir(lockPath));
        m_collection->addProject(project(u"Second"_s));
        m_collection->flushPendingSave();
        QCOMPARE(saved.count(), 1);
        QCOMPARE(failed.count(), 1);
        QVERIFY(!m_collection->dataChanged());
        QVERIFY(!m_collection->isWriting());
        QCOMPARE(readFile(m_path), ProjectXmlWriter::makeXML(m_collection->projectArray()));
    }

    // Only changed projects are turned into text again, yet the file always holds the whole
    // document as it is.
    void writesEveryChange_data() {
        QTest::addColumn<Operation>("operation");
        QTest::newRow("edit an entry") << Operation([](ProjectCollection &c) {
            const auto entry = std::static_pointer_cast<Entry>(named(c, "Web")->entries().last());
            auto values = entry->copy();
            values->setComment(u"Changed"_s);
            c.editEntry(entry, *values, false);
        });
        QTest::newRow("assign customers") << Operation(
            [](ProjectCollection &c) { c.assignCustomerToProjects(2, {named(c, "App")}); });
        QTest::newRow("a click on a column") << Operation([](ProjectCollection &c) {
            c.columnClicked(u"Duration_Col"_s);
            c.deleteProject(named(c, "Hidden"));
        });
        QTest::newRow("expand, then change another") << Operation([](ProjectCollection &c) {
            named(c, "App")->setExpanded(!named(c, "App")->expanded());
            c.moveProject(named(c, "Hidden"), 0);
        });
        QTest::newRow("import into a project") << Operation([](ProjectCollection &c) {
            c.addProjectsAndEntries(u"Import"_s, {project(u"New"_s)},
                                    {{named(c, "Web"), {dayEntry(u"01.11.2026"_s, 30)}}});
        });
        QTest::newRow("change entries of several projects") << Operation([](ProjectCollection &c) {
            const QList<std::shared_ptr<Entry>> entries{
                std::static_pointer_cast<Entry>(named(c, "Web")->entries().last()),
                c.startTimerInProject(named(c, "App"))};
            c.flushPendingSave();
            c.changeEntries(u"Time Away"_s, entries,
                            [](Entry &entry) { entry.setComment(u"Away"_s); });
        });
        QTest::newRow("pause a timer") << Operation([](ProjectCollection &c) {
            const auto entry = c.startTimerInProject(named(c, "App"));
            c.flushPendingSave();
            entry->pause();
            c.projectChanged(entry->parent());
        });
    }
    void writesEveryChange() {
        QFETCH(Operation, operation);
        m_preferences->setObject(true, u"crashProtection");
        // A first write keeps every project's text.
        m_collection->addProject(project(u"Added"_s));
        m_collection->flushPendingSave();
        operation(*m_collection);
        m_collection->flushPendingSave();
        QVERIFY(!m_collection->dataChanged());
        QCOMPARE(readFile(m_path), ProjectXmlWriter::makeXML(m_collection->projectArray()));
    }

    void refusesToOverwriteAnotherProgramsChange() {
        const QByteArray other =
            readFile(m_path).replace("<name>App</name>", "<name>Theirs</name>");
        QVERIFY(writeFile(m_path, other));
        QVERIFY(m_collection->currentFileChangedOnDisk());
        QSignalSpy failed(m_collection.get(), &ProjectCollection::saveFailed);
        const auto result = m_collection->saveCollection(m_path);
        QVERIFY(!result.ok);
        QCOMPARE(
            result.error,
            u"\"%1\" was changed by another program since it was opened or last saved. "
            "Nothing was written: reload the file or save it under another name."_s.arg(m_path));
        QCOMPARE(failed.count(), 1);
        QCOMPARE(readFile(m_path), other);
        QVERIFY(m_collection->loadCollection(m_path).ok);
        QVERIFY(m_collection->saveCollection(m_path).ok);
        QVERIFY(!m_collection->currentFileChangedOnDisk());
    }

    void worksWithTheCustomerStore() {
        CustomerStorage store(m_folder->filePath(u"customers.plist"_s), *m_collection,
                              *m_preferences);
        m_collection->setCustomerDirectory(&store);
        auto acme = std::make_shared<Customer>();
        acme->setName(u"Acme"_s);
        const int id = store.addCustomer(acme);
        auto app = m_collection->projectWithName(u"App"_s);
        m_collection->assignCustomerWithID(id, app);
        QCOMPARE(id, 1); // the first id: Web's customer is Acme now too
        store.toggleVisible(0);
        QCOMPARE(m_collection->visibleProjects(),
                 ProjectList{m_collection->projectWithName(u"Hidden"_s)});
        QVERIFY(m_collection->isProjectFiltered(*app));
        store.deleteCustomerWithID(id);
        QCOMPARE(app->customer(), -1);
        QVERIFY(!m_collection->isProjectFiltered(*app));
        m_collection->undoStack()->undo();
        QCOMPARE(app->customer(), id);
        QCOMPARE(store.customerWithID(id)->name(), u"Acme"_s);
        m_collection->setCustomerDirectory(&m_customers);
    }

    // A program killed between making the lock file and writing its name into it leaves an empty
    // lock file: it counts as taken only while it could still be in the making.
    void ownerlessLockFile_data() {
        QTest::addColumn<int>("ageSeconds");
        QTest::addColumn<bool>("taken");
        QTest::newRow("just made") << 0 << false;
        QTest::newRow("two seconds old") << 2 << true;
    }
    void ownerlessLockFile() {
        QFETCH(int, ageSeconds);
        QFile empty(ProjectFileLock::lockPathFor(m_path));
        QVERIFY(empty.open(QIODevice::WriteOnly));
        QVERIFY(empty.setFileTime(QDateTime::currentDateTime().addSecs(-ageSeconds),
                                  QFileDevice::FileModificationTime));
        empty.close();
        ProjectFileLock lock(m_path);
        QTEST(lock.lock(0), "taken");
    }

    void waitsForTheLock() {
        ProjectFileLock other(m_path);
        QVERIFY(other.lock());
        const auto result = m_collection->saveCollection(m_path);
        QVERIFY(!result.ok);
        QVERIFY(result.error.startsWith(u"Another program"_s));
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<ProjectCollection> m_collection;
    FakeCustomers m_customers;
    QString m_path;
};

QTEST_GUILESS_MAIN(TestProjectCollection)
#include "tst_projectcollection.moc"
