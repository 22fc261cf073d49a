#include "core/model/ModelFixtures.h"
#include "support/FileFailures.h"
#include "support/Files.h"
#include "support/ScriptedUser.h"

#include "mainwindow/ProjectController.h"
#include "model/ProjectCollection.h"
#include "model/ProjectFile.h"

#include <QSignalSpy>
#include <QTest>

namespace {

enum Answer { Save = 0, Cancel = 1, DontSave = 2 };

const QString savePrompt = u"Do you want to save your changes?"_s;

ProjectList oneProject(const QString &name) {
    auto project = std::make_shared<Project>(name, u""_s, 50.0f, 0, 0, 0, -1, u""_s);
    project->addEntry(dayEntry(u"03.11.2026"_s, 90));
    return {project};
}

} // namespace

class TestProjectController : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QStandardPaths::setTestModeEnabled(true);
        Clock::setNow(QDateTime(QDate(2026, 11, 22), QTime(10, 0)));
    }

    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_preferences = std::make_unique<Preferences>(m_folder->filePath(u"p.conf"_s));
        Preferences::setShared(m_preferences.get());
        m_preferences->setObject(false, u"showInfo");
        m_collection = std::make_unique<ProjectCollection>(*m_preferences);
        m_user = std::make_unique<ScriptedUser>();
        m_controller = std::make_unique<ProjectController>(*m_preferences, *m_collection, *m_user,
                                                           *m_user, *m_user);
        m_file = m_folder->filePath(u"work.projects"_s);
        QVERIFY(ProjectFile::save(m_file, oneProject(u"Web"_s)).ok);
    }

    void cleanup() {
        m_controller.reset();
        Preferences::setShared(nullptr);
    }

    void startUpReopensTheLastFile_data() {
        QTest::addColumn<bool>("loadLastOpenFile");
        QTest::addColumn<bool>("fileExists");
        QTest::addColumn<bool>("opened");
        QTest::newRow("reopened") << true << true << true;
        QTest::newRow("missing file: silently untitled") << true << false << false;
        QTest::newRow("not wanted: last file forgotten") << false << true << false;
    }
    void startUpReopensTheLastFile() {
        QFETCH(bool, loadLastOpenFile);
        QFETCH(bool, fileExists);
        QFETCH(bool, opened);
        const QString last = fileExists ? m_file : m_folder->filePath(u"gone.projects"_s);
        m_preferences->setObject(last, u"LastOpenFile");
        m_preferences->setObject(loadLastOpenFile, u"loadLastOpenFile");
        m_controller->startUp();
        QCOMPARE(m_controller->currentFilename(), opened ? m_file : u"untitled"_s);
        QCOMPARE(m_preferences->stringForKey(u"LastOpenFile"), opened ? m_file : QString());
        QCOMPARE(m_collection->projectArray().size(), opened ? 1 : 0);
        QVERIFY(m_user->alerts.isEmpty());
        QVERIFY(!m_collection->dataChanged());
        QVERIFY(m_controller->refreshTimer().isActive());
        QCOMPARE(m_controller->refreshTimer().interval(), 5000);
    }

    void welcomePrompt_data() {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("askAgain");
        QTest::addColumn<bool>("websiteOpened");
        QTest::newRow("Yes") << 0 << false << true;
        QTest::newRow("No") << 1 << false << false;
        QTest::newRow("Remind me later") << 2 << true << false;
    }
    void welcomePrompt() {
        QFETCH(int, answer);
        QFETCH(bool, websiteOpened);
        m_preferences->setObject(true, u"showInfo");
        m_user->answers = {answer};
        m_controller->startUp();
        QCOMPARE(m_user->alerts.size(), 1);
        const UserAlerts::Alert &alert = m_user->alerts.constFirst();
        QCOMPARE(alert.message, u"Welcome to Hourfold!"_s);
        QCOMPARE(alert.informativeText, u"Do you want to visit the Vellumby website for newest "
                                        "information and special offers?"_s);
        QCOMPARE(alert.buttons, (QStringList{u"Yes"_s, u"No"_s, u"Remind me later"_s}));
        QTEST(m_preferences->boolForKey(u"showInfo"), "askAgain");
        QCOMPARE(m_user->opened.size(), websiteOpened ? 1 : 0);
    }

    void newAsksAboutChanges_data() {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("emptied");
        QTest::addColumn<bool>("fileChanged");
        QTest::newRow("Save") << int(Save) << true << true;
        QTest::newRow("Cancel") << int(Cancel) << false << false;
        QTest::newRow("Don't save") << int(DontSave) << true << false;
    }
    void newAsksAboutChanges() {
        QFETCH(int, answer);
        QFETCH(bool, emptied);
        openWorkFile();
        const QByteArray before = readFile(m_file);
        m_collection->addProject(oneProject(u"Added"_s).constFirst());
        m_user->answers = {answer};
        m_controller->newDatabase();
        QCOMPARE(m_user->messages(), QStringList{savePrompt});
        const UserAlerts::Alert &prompt = m_user->alerts.constFirst();
        QCOMPARE(prompt.informativeText, u"If you don't save, your changes are lost."_s);
        QCOMPARE(prompt.buttons, (QStringList{u"Save"_s, u"Cancel"_s, u"Don't save"_s}));
        QCOMPARE(m_collection->projectArray().isEmpty(), emptied);
        QCOMPARE(m_controller->isUntitled(), emptied);
        QTEST(readFile(m_file) != before, "fileChanged");
    }

    void newWaitsForTheSavePanelOfAnUntitledDocument() {
        m_collection->addProject(oneProject(u"Draft"_s).constFirst());
        m_user->answers = {Save};
        m_controller->newDatabase();
        QVERIFY(m_user->savePanel);
        // The document is kept while the panel is up: nothing is thrown away unsaved.
        QCOMPARE(m_collection->projectArray().size(), 1);
    }

    void openingAnUnreadableFileAlerts() {
        const QString broken = m_folder->filePath(u"broken.projects"_s);
        QVERIFY(writeFile(broken, "not a project file"));
        openWorkFile();
        QVERIFY(!m_controller->openFile(broken));
        QCOMPARE(m_user->alerts.size(), 1);
        const UserAlerts::Alert &alert = m_user->alerts.constFirst();
        QCOMPARE(alert.message, u"Load failed."_s);
        QCOMPARE(alert.informativeText, u"The file could not be read."_s);
        QCOMPARE(alert.style, UserAlerts::Style::Critical);
        QCOMPARE(alert.buttons, QStringList{u"OK"_s});
        QCOMPARE(m_controller->currentFilename(), m_file);
        QCOMPARE(m_collection->projectArray().constFirst()->name(), u"Web"_s);
    }

    // A backup opens as a new untitled document with unsaved changes: the open file and the
    // last-file preference stay as they were. An unreadable copy leaves the document alone.
    void openingABackup_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("readable") << ProjectFile::makeXML(oneProject(u"Kept"_s));
        QTest::newRow("unreadable") << QByteArray("not a project file");
    }
    void openingABackup() {
        QFETCH(QByteArray, bytes);
        const QString copy = m_folder->filePath(u"copy.projects"_s);
        QVERIFY(writeFile(copy, bytes));
        openWorkFile();
        const QByteArray work = readFile(m_file);
        const bool readable = m_controller->openBackup(copy);
        QCOMPARE(m_user->alerts.size(), readable ? 0 : 1);
        if (!readable)
            QCOMPARE(m_user->messages(), QStringList{u"Restore failed."_s});
        QCOMPARE(m_controller->currentFilename(), readable ? u"untitled"_s : m_file);
        QCOMPARE(m_collection->projectArray().constFirst()->name(),
                 readable ? u"Kept"_s : u"Web"_s);
        QCOMPARE(m_collection->dataChanged(), readable);
        QVERIFY(m_collection->currentFile().isEmpty() == readable);
        QCOMPARE(m_preferences->stringForKey(u"LastOpenFile"), m_file);
        QCOMPARE(readFile(m_file), work);
    }

    // The status line says what the reading had to repair or leave empty (%1 the file, %2 the
    // original kept beside it).
    void openingARepairedFileSaysWhat_data() {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<QString>("message");
        const QString damaged = u"\"%1\" was damaged and has been repaired as far as possible; the "
                                u"original is kept as \"%2\"."_s;
        QTest::newRow("damaged") << QByteArray(">Web<") << QByteArray(">R&D<") << damaged;
        QTest::newRow("value left empty")
            << QByteArray(">50<") << QByteArray(">50 EUR<")
            << u"Some values in \"%1\" could not be read and were left empty; the original is "
               u"kept as \"%2\". The element \"wage\" of project \"Web\" (line 4) is not a "
               u"number: \"50 EUR\"."_s;
        QTest::newRow("both")
            << QByteArray(">Web</name>\n        <description/>\n        <tags/>\n        <wage>50<")
            << QByteArray(">R&D</name>\n        <description/>\n        <tags/>\n        <wage>x<")
            << damaged + u" Some values could not be read and were left empty: The element "
                         u"\"wage\" of project \"R&D\" (line 4) is not a number: \"x\"."_s;
    }
    void openingARepairedFileSaysWhat() {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(QString, message);
        QByteArray bytes = readFile(m_file);
        QVERIFY(bytes.contains(from));
        QVERIFY(writeFile(m_file, bytes.replace(from, to)));
        QSignalSpy status(m_controller.get(), &ProjectController::statusMessage);
        QVERIFY(m_controller->openFile(m_file));
        QCOMPARE(status.size(), 1);
        QCOMPARE(status[0][0].toString(),
                 message.arg(m_file, m_file + u".recovered-20261122-100000"_s));
    }

    void openPanelStartsInTheLastFolder() {
        m_preferences->setObject(m_folder->path(), u"StartingDirectory");
        m_controller->load();
        QCOMPARE(m_user->panelDirectory, m_folder->path());
        m_user->endOpenPanel(m_file);
        QCOMPARE(m_controller->currentFilename(), m_file);
    }

    void saveWritesToTheLastOpenFile() {
        openWorkFile();
        const QString other = m_folder->filePath(u"other.projects"_s);
        m_preferences->setObject(other, u"LastOpenFile");
        m_collection->addProject(oneProject(u"Added"_s).constFirst());
        m_controller->save();
        QVERIFY(!m_user->savePanel);
        QCOMPARE(ProjectFile::load(other).projects.size(), 2);
    }

    void saveWithoutALastFileAsksForOne() {
        openWorkFile();
        m_preferences->setObject(QString(), u"LastOpenFile");
        m_controller->save();
        QVERIFY(m_user->savePanel);
    }

    void saveAsFailureAlerts() {
        m_collection->addProject(oneProject(u"Draft"_s).constFirst());
        m_controller->saveAs();
        m_user->endSavePanel(m_folder->filePath(u"missing-folder/x.projects"_s));
        QCOMPARE(m_user->messages(), QStringList{u"Save failed."_s});
        QCOMPARE(m_user->alerts.constFirst().informativeText, u"The file could not be written."_s);
        QVERIFY(m_controller->isUntitled());
        QVERIFY(m_collection->dataChanged());
        QVERIFY(!m_controller->saveWarning().isEmpty());
    }

    void saveAsNamesTheDocument() {
        m_collection->addProject(oneProject(u"Draft"_s).constFirst());
        m_controller->saveAs();
        const QString target = m_folder->filePath(u"new.projects"_s);
        m_user->endSavePanel(target);
        QCOMPARE(m_controller->currentFilename(), target);
        QCOMPARE(m_preferences->stringForKey(u"LastOpenFile"), target);
        QCOMPARE(m_preferences->stringForKey(u"StartingDirectory"), m_folder->path());
        QVERIFY(!m_collection->dataChanged());
    }

    void quit_data() {
        QTest::addColumn<bool>("named");
        QTest::addColumn<bool>("saveOnExit");
        QTest::addColumn<QList<int>>("answers");
        QTest::addColumn<int>("reply");
        QTest::addColumn<int>("prompts");
        QTest::addColumn<bool>("savedToFile");
        QTest::addColumn<bool>("changedAfter");
        using Reply = ProjectController::TerminateReply;
        QTest::newRow("named, save on exit")
            << true << true << QList<int>{} << int(Reply::Now) << 0 << true << false;
        QTest::newRow("named, Save")
            << true << false << QList<int>{Save} << int(Reply::Now) << 1 << true << false;
        QTest::newRow("named, Cancel")
            << true << false << QList<int>{Cancel} << int(Reply::Cancel) << 1 << false << true;
        QTest::newRow("named, Don't save: the changes are forgotten")
            << true << false << QList<int>{DontSave} << int(Reply::Now) << 1 << false << false;
        QTest::newRow("untitled, save on exit still asks")
            << false << true << QList<int>{Save} << int(Reply::Later) << 1 << false << true;
    }
    void quit() {
        QFETCH(bool, named);
        QFETCH(bool, saveOnExit);
        QFETCH(QList<int>, answers);
        QFETCH(bool, savedToFile);
        if (named)
            openWorkFile();
        m_preferences->setObject(saveOnExit, u"saveOnExit");
        m_collection->addProject(oneProject(u"Added"_s).constFirst());
        m_user->answers = answers;
        QTEST(int(m_controller->applicationShouldTerminate()), "reply");
        QTEST(int(m_user->alerts.size()), "prompts");
        QCOMPARE(ProjectFile::load(m_file).projects.size(), savedToFile ? 2 : 1);
        QTEST(m_collection->dataChanged(), "changedAfter");
    }

    void deferredQuitFollowsTheSavePanel_data() {
        QTest::addColumn<bool>("chooseFile");
        QTest::newRow("saved") << true;
        QTest::newRow("panel cancelled") << false;
    }
    void deferredQuitFollowsTheSavePanel() {
        QFETCH(bool, chooseFile);
        m_collection->addProject(oneProject(u"Draft"_s).constFirst());
        m_user->answers = {Save};
        QSignalSpy answered(m_controller.get(), &ProjectController::quitAnswered);
        QCOMPARE(m_controller->applicationShouldTerminate(),
                 ProjectController::TerminateReply::Later);
        QVERIFY(m_controller->isQuitting());
        m_user->endSavePanel(chooseFile ? m_folder->filePath(u"draft.projects"_s) : QString());
        QCOMPARE(answered.size(), 1);
        QCOMPARE(answered.constFirst().constFirst().toBool(), chooseFile);
        QVERIFY(!m_controller->isQuitting());
    }

    void aFailedSaveKeepsTheQuitAndWarns() {
        openWorkFile();
        m_collection->addProject(oneProject(u"Added"_s).constFirst());
        m_preferences->setObject(true, u"saveOnExit");
        QSignalSpy warned(m_controller.get(), &ProjectController::saveWarningChanged);
        {
            FileFailures::LimitFileSize diskFull(200);
            QCOMPARE(m_controller->applicationShouldTerminate(),
                     ProjectController::TerminateReply::Cancel);
        }
        QCOMPARE(m_user->messages(), QStringList{u"Save failed."_s});
        QVERIFY(m_collection->dataChanged());
        QVERIFY(m_controller->saveWarning().startsWith(u"Not saved: "_s));
        QCOMPARE(warned.size(), 1);
        QCOMPARE(ProjectFile::load(m_file).projects.size(), 1);
        m_controller->save();
        QVERIFY(m_controller->saveWarning().isEmpty());
        QCOMPARE(ProjectFile::load(m_file).projects.size(), 2);
    }

    // A write that fails (a full disk, a read-only folder, the file replaced by a folder, its
    // folder gone) leaves the old file whole and shows in the status line; Save As to it alerts.
    // Once the cause is gone, the next Save writes the document.
    void saveFaults_data() {
        QTest::addColumn<QString>("fault");
        for (const char *fault :
             {"full disk", "read-only folder", "file replaced by a folder", "folder gone"})
            QTest::newRow(fault) << QString::fromLatin1(fault);
    }
    void saveFaults() {
        QFETCH(QString, fault);
        std::optional<FileFailures::ObeyPermissions> obey;
        if (fault == u"read-only folder") {
            // Rights are per thread: the writer thread takes them from the document made now.
            obey.emplace();
            m_controller.reset();
            m_collection = std::make_unique<ProjectCollection>(*m_preferences);
            m_controller = std::make_unique<ProjectController>(*m_preferences, *m_collection,
                                                               *m_user, *m_user, *m_user);
        }
        const QString folder = m_folder->filePath(u"docs"_s);
        const QString file = folder + u"/work.projects"_s;
        QVERIFY(QDir().mkpath(folder) && ProjectFile::save(file, oneProject(u"Web"_s)).ok);
        QVERIFY(m_controller->openFile(file));
        m_preferences->setObject(file, u"LastOpenFile");
        m_preferences->setObject(1, u"crashProtection");
        const QByteArray before = readFile(file);
        std::optional<FileFailures::LimitFileSize> full;
        if (fault == u"full disk") {
            full.emplace(200);
        } else if (fault == u"read-only folder") {
            QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
        } else if (fault == u"file replaced by a folder") {
            QVERIFY(QFile::remove(file) && QDir().mkpath(file + u"/inside"_s));
        } else {
            QVERIFY(QDir(folder).removeRecursively());
        }
        m_collection->addProject(oneProject(u"Added"_s).constFirst());
        QTRY_VERIFY(m_controller->saveWarning().startsWith(u"Not saved: "_s));
        m_controller->saveAs();
        m_user->endSavePanel(file);
        // A folder in the file's place may also have been announced as another program's change.
        const qsizetype failed = m_user->messages().indexOf(u"Save failed."_s);
        QVERIFY2(failed >= 0, qPrintable(m_user->messages().join(u" | "_s)));
        QCOMPARE(m_user->alerts.at(failed).style, UserAlerts::Style::Critical);
        if (full || obey)
            QCOMPARE(readFile(file), before);
        full.reset();
        if (obey)
            QVERIFY(QFile::setPermissions(folder,
                                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        obey.reset();
        QDir(file).removeRecursively();
        QVERIFY(QDir().mkpath(folder));
        m_controller->save();
        QTRY_VERIFY(m_controller->saveWarning().isEmpty());
        QCOMPARE(ProjectFile::load(file).projects.size(), 2);
    }

    void revertReloadsWithoutAsking() {
        openWorkFile();
        m_collection->addProject(oneProject(u"Added"_s).constFirst());
        m_controller->revert();
        QVERIFY(m_user->alerts.isEmpty());
        QCOMPARE(m_collection->projectArray().size(), 1);
    }

    void anotherProgramsChange_data() {
        QTest::addColumn<bool>("unsaved");
        QTest::addColumn<QList<int>>("answers");
        QTest::addColumn<int>("prompts");
        QTest::addColumn<QString>("firstProject");
        QTest::addColumn<bool>("saveReplacesTheirs");
        QTest::newRow("no changes: reloaded") << false << QList<int>{} << 0 << u"Theirs"_s << false;
        QTest::newRow("changes: Reload") << true << QList<int>{0} << 1 << u"Theirs"_s << false;
        QTest::newRow("changes: Keep My Version") << true << QList<int>{1} << 1 << u"Web"_s << true;
    }
    void anotherProgramsChange() {
        QFETCH(bool, unsaved);
        QFETCH(QList<int>, answers);
        QFETCH(int, prompts);
        QFETCH(bool, saveReplacesTheirs);
        openWorkFile();
        if (unsaved)
            m_collection->addProject(oneProject(u"Mine"_s).constFirst());
        QVERIFY(ProjectFile::save(m_file, oneProject(u"Theirs"_s)).ok);
        m_user->answers = answers;
        m_controller->checkFileOnDisk();
        QCOMPARE(int(m_user->alerts.size()), prompts);
        if (prompts)
            QCOMPARE(m_user->alerts.constFirst().message,
                     u"The project file was changed by another program."_s);
        QTEST(m_collection->projectArray().constFirst()->name(), "firstProject");
        m_controller->save();
        QCOMPARE(ProjectFile::load(m_file).projects.constFirst()->name(),
                 saveReplacesTheirs ? u"Web"_s : u"Theirs"_s);
    }

    // An open sheet holds projects of the document: the reload waits until it has closed.
    void anotherProgramsChangeWaitsForOpenSheets() {
        openWorkFile();
        bool sheetOpen = true;
        m_controller->setBusyCheck([&sheetOpen] { return sheetOpen; });
        QVERIFY(ProjectFile::save(m_file, oneProject(u"Theirs"_s)).ok);
        m_controller->checkFileOnDisk();
        QCOMPARE(m_collection->projectArray().constFirst()->name(), u"Web"_s);
        sheetOpen = false;
        QTRY_COMPARE(m_collection->projectArray().constFirst()->name(), u"Theirs"_s);
        QVERIFY(m_user->alerts.isEmpty());
    }

private:
    void openWorkFile() {
        QVERIFY(m_controller->openFile(m_file));
        m_user->alerts.clear();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<ProjectCollection> m_collection;
    std::unique_ptr<ScriptedUser> m_user;
    std::unique_ptr<ProjectController> m_controller;
    QString m_file;
};

QTEST_GUILESS_MAIN(TestProjectController)
#include "tst_projectcontroller.moc"
