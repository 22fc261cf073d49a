#include "mainwindow/ProjectController.h"

#include "common/FilePanels.h"
#include "model/Clock.h"
#include "model/ProjectBackups.h"
#include "model/ProjectCollection.h"
#include "platform/DesktopServices.h"
#include "platform/Folders.h"
#include "platform/Preferences.h"
#include "platform/UserAlerts.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

constexpr int refreshInterval = 5000;
// File watchers report a save as several events; one look after they settle is enough.
constexpr int diskCheckDelay = 300;

} // namespace

ProjectController::ProjectController(Preferences &preferences, ProjectCollection &collection,
                                     UserAlerts &alerts, FilePanels &panels,
                                     DesktopServices &desktop, QObject *parent)
    : QObject(parent)
    , m_preferences(preferences)
    , m_collection(collection)
    , m_alerts(alerts)
    , m_panels(panels)
    , m_desktop(desktop)
    , m_currentFilename(untitled()) {
    m_refreshTimer.setInterval(refreshInterval);
    connect(&m_refreshTimer, &QTimer::timeout, this, &ProjectController::refresh);
    m_diskCheck.setSingleShot(true);
    m_diskCheck.setInterval(diskCheckDelay);
    connect(&m_diskCheck, &QTimer::timeout, this, &ProjectController::checkFileOnDisk);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_diskCheck,
            qOverload<>(&QTimer::start));
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_diskCheck,
            qOverload<>(&QTimer::start));
    connect(&m_collection, &ProjectCollection::saveFailed, this, [this](const QString &reason) {
        setSaveWarning(tr("Not saved: %1 Your changes are kept; the next change or Save tries "
                          "again.")
                           .arg(reason));
    });
    connect(&m_collection, &ProjectCollection::saved, this, [this] {
        setSaveWarning({});
        watchCurrentFile();
    });
}

QString ProjectController::untitled() {
    return u"untitled"_s;
}

QString ProjectController::websiteAddress() {
    return u"https://www.vellumby.com/hourfold"_s;
}

QString ProjectController::projectsMimeType() {
    return u"application/x-hourfold-projects"_s;
}

void ProjectController::setCurrentFilename(const QString &filename) {
    if (m_currentFilename == filename)
        return;
    m_currentFilename = filename;
    watchCurrentFile();
    emit currentFilenameChanged(filename);
}

void ProjectController::startUp(bool reopenLastFile, bool welcome) {
    const QString lastFile = m_preferences.stringForKey(u"LastOpenFile");
    if (!reopenLastFile) {
        // A file handed over at launch is opened next instead; the last file stays remembered.
        setCurrentFilename(untitled());
    } else if (m_preferences.boolForKey(u"loadLastOpenFile") && !lastFile.isEmpty()) {
        const ProjectFile::LoadResult result = m_collection.loadCollection(lastFile);
        if (result.ok) {
            setCurrentFilename(QFileInfo(lastFile).absoluteFilePath());
            announceRecovery(lastFile, result);
        } else {
            m_preferences.setObject(QString(), u"LastOpenFile");
            setCurrentFilename(untitled());
        }
    } else {
        m_preferences.setObject(QString(), u"LastOpenFile");
        setCurrentFilename(untitled());
    }
    emit documentReplaced();
    m_collection.setDataChanged(false);
    m_refreshTimer.start();
    if (welcome)
        welcomeIfDue();
}

void ProjectController::welcomeIfDue() {
    if (m_preferences.boolForKey(u"showInfo"))
        showWelcome();
}

void ProjectController::showWelcome() {
    const int answer =
        m_alerts.runModal({tr("Welcome to Hourfold!"),
                           tr("Do you want to visit the Vellumby website for newest information "
                              "and special offers?"),
                           UserAlerts::Style::Informational,
                           {tr("Yes"), tr("No"), tr("Remind me later")}});
    if (answer == UserAlerts::firstButton) {
        m_desktop.openUrl(websiteAddress());
        m_preferences.setObject(false, u"showInfo");
    } else if (answer == UserAlerts::firstButton + 1) {
        m_preferences.setObject(false, u"showInfo");
    }
}

int ProjectController::askUserToSaveChanges() {
    return m_alerts.runModal({tr("Do you want to save your changes?"),
                              tr("If you don't save, your changes are lost."),
                              UserAlerts::Style::Informational,
                              {tr("Save"), tr("Cancel"), tr("Don't save")}});
}

bool ProjectController::settleChanges(const std::function<void()> &afterSavePanel) {
    // A change that crash protection is writing is no unsaved change once written.
    if (m_collection.isWriting())
        m_collection.flushPendingSave();
    if (!m_collection.dataChanged())
        return true;
    switch (askUserToSaveChanges()) {
    case UserAlerts::firstButton:
        if (!canSaveInPlace()) {
            // The command goes on when the panel has written the file.
            m_afterSavePanel = afterSavePanel;
            saveAs();
            return false;
        }
        save();
        // A document that could not be written stays: going on would throw the changes away.
        return !m_collection.dataChanged();
    case UserAlerts::firstButton + 2:
        return true;
    default:
        return false;
    }
}

void ProjectController::newDatabase() {
    if (settleChanges([this] { replaceWithNewDatabase(); }))
        replaceWithNewDatabase();
}

void ProjectController::replaceWithNewDatabase() {
    m_collection.newDatabase();
    setCurrentFilename(untitled());
    emit documentReplaced();
    emit mainWindowWanted();
}

void ProjectController::load() {
    m_panels.beginOpenPanel(startingDirectory(), [this](const QString &path) {
        if (path.isEmpty())
            return;
        storeStartingDirectory(path);
        openFile(path);
    });
}

bool ProjectController::openFile(const QString &path) {
    return settleChanges([this, path] { loadFile(path); }) && loadFile(path);
}

bool ProjectController::loadFile(const QString &path) {
    const ProjectFile::LoadResult result = m_collection.loadCollection(path);
    if (!result.ok) {
        m_alerts.runModal({tr("Load failed."),
                           tr("The file could not be read."),
                           UserAlerts::Style::Critical,
                           {tr("OK")}});
        emit statusMessage(
            tr("\"%1\" could not be read: %2").arg(Folders::withTilde(path), result.error));
        return false;
    }
    setCurrentFilename(QFileInfo(path).absoluteFilePath());
    m_recent.add(path, projectsMimeType(), Clock::now());
    emit documentReplaced();
    announceRecovery(path, result);
    return true;
}

bool ProjectController::openBackup(const QString &path) {
    return settleChanges([this, path] { loadBackup(path); }) && loadBackup(path);
}

bool ProjectController::loadBackup(const QString &path) {
    const ProjectFile::LoadResult result = ProjectFile::load(path);
    if (!result.ok) {
        m_alerts.runModal({tr("Restore failed."),
                           tr("The backup \"%1\" could not be read: %2")
                               .arg(Folders::withTilde(path), result.error),
                           UserAlerts::Style::Critical,
                           {tr("OK")}});
        return false;
    }
    m_collection.newDatabase(result.projects);
    setCurrentFilename(untitled());
    emit documentReplaced();
    emit mainWindowWanted();
    const std::optional<ProjectBackups::Copy> copy = ProjectBackups::copyAt(path);
    const QDateTime made = copy ? copy->made : QFileInfo(path).lastModified();
    emit statusMessage(tr("Opened the backup of %1 as a new document; save it to keep it.")
                           .arg(QLocale().toString(made.toLocalTime(), QLocale::ShortFormat)));
    return true;
}

void ProjectController::announceRecovery(const QString &path,
                                         const ProjectFile::LoadResult &result) {
    if (!result.recovered && result.unreadable.isEmpty())
        return;
    const QString file = Folders::withTilde(path);
    const QString original = Folders::withTilde(result.backupPath);
    QStringList sentences;
    if (result.recovered)
        sentences << tr("\"%1\" was damaged and has been repaired as far as possible; the "
                        "original is kept as \"%2\".")
                         .arg(file, original);
    if (!result.unreadable.isEmpty())
        sentences << (result.recovered ? tr("Some values could not be read and were left empty:")
                                       : tr("Some values in \"%1\" could not be read and were "
                                            "left empty; the original is kept as \"%2\".")
                                             .arg(file, original))
                  << result.unreadable;
    emit statusMessage(sentences.join(u' '));
}

bool ProjectController::canSaveInPlace() const {
    return !m_preferences.stringForKey(u"LastOpenFile").isEmpty() && !isUntitled();
}

void ProjectController::save() {
    // The target is the file of the last Save As or load, not necessarily currentFilename.
    if (canSaveInPlace()) {
        m_collection.saveCollection(m_preferences.stringForKey(u"LastOpenFile"));
        m_needsSaving = false;
    } else {
        saveAs();
    }
}

void ProjectController::saveAs() {
    m_panels.beginSavePanel(startingDirectory(),
                            [this](const QString &path) { savePanelDidEnd(path); });
}

void ProjectController::savePanelDidEnd(const QString &path) {
    const std::function<void()> then = std::exchange(m_afterSavePanel, nullptr);
    bool written = false;
    if (!path.isEmpty()) {
        storeStartingDirectory(path);
        written = m_collection.saveCollection(path).ok;
        if (written) {
            const QString absolute = QFileInfo(path).absoluteFilePath();
            m_preferences.setObject(absolute, u"LastOpenFile");
            setCurrentFilename(absolute);
            m_recent.add(absolute, projectsMimeType(), Clock::now());
        } else {
            m_alerts.runModal({tr("Save failed."),
                               tr("The file could not be written."),
                               UserAlerts::Style::Critical,
                               {tr("OK")}});
        }
    }
    if (m_isQuitting) {
        m_isQuitting = false;
        emit quitAnswered(written);
    }
    if (written && then)
        then();
}

void ProjectController::revert() {
    const QString lastFile = m_preferences.stringForKey(u"LastOpenFile");
    if (lastFile.isEmpty() || isUntitled())
        return;
    const ProjectFile::LoadResult result = m_collection.loadCollection(lastFile);
    if (!result.ok) {
        emit statusMessage(tr("\"%1\" could not be read again: %2")
                               .arg(Folders::withTilde(lastFile), result.error));
        return;
    }
    emit documentReplaced();
}

bool ProjectController::canQuitApp() {
    // The last write ends before the quit goes on.
    if (m_collection.isWriting())
        m_collection.flushPendingSave();
    if (!m_collection.dataChanged())
        return true;
    if (m_preferences.boolForKey(u"saveOnExit") && !isUntitled()) {
        m_needsSaving = false;
        save();
    } else {
        switch (askUserToSaveChanges()) {
        case UserAlerts::firstButton:
            m_needsSaving = true;
            save();
            break;
        case UserAlerts::firstButton + 2:
            m_needsSaving = false;
            m_collection.setDataChanged(false);
            return true;
        default:
            m_needsSaving = false;
            return false;
        }
    }
    // A save to the known file that failed must not end in a quit that loses the changes.
    if (!m_needsSaving && m_collection.dataChanged()) {
        m_alerts.runModal({tr("Save failed."),
                           tr("The file could not be written."),
                           UserAlerts::Style::Critical,
                           {tr("OK")}});
        return false;
    }
    return true;
}

ProjectController::TerminateReply ProjectController::applicationShouldTerminate() {
    if (!canQuitApp())
        return TerminateReply::Cancel;
    if (!m_needsSaving)
        return TerminateReply::Now;
    m_isQuitting = true;
    return TerminateReply::Later;
}

void ProjectController::applicationWillTerminate() {
    m_collection.flushPendingSave();
    m_preferences.setObject(QStringLiteral(HOURFOLD_VERSION), u"lastVersion");
    m_preferences.synchronize();
}

void ProjectController::setSaveWarning(const QString &warning) {
    if (m_saveWarning == warning)
        return;
    m_saveWarning = warning;
    emit saveWarningChanged(warning);
}

void ProjectController::watchCurrentFile() {
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    if (!watched.isEmpty())
        m_watcher.removePaths(watched);
    if (isUntitled())
        return;
    // The folder too: a save by another program replaces the file, and the watch on the old
    // file ends with it.
    m_watcher.addPath(QFileInfo(m_currentFilename).absolutePath());
    if (QFileInfo::exists(m_currentFilename))
        m_watcher.addPath(m_currentFilename);
}

void ProjectController::checkFileOnDisk() {
    watchCurrentFile();
    if (isUntitled() || m_askingAboutDiskChange || !m_collection.currentFileChangedOnDisk())
        return;
    // The program's own write, not yet reported, is no other program's change.
    if ((m_busy && m_busy()) || m_collection.isWriting()) {
        m_diskCheck.start();
        return;
    }
    const QString file = m_collection.currentFile();
    if (!QFileInfo::exists(file)) {
        m_collection.adoptFileOnDisk();
        m_collection.setDataChanged(true);
        setSaveWarning(tr("\"%1\" was removed or renamed by another program. Save writes it "
                          "again.")
                           .arg(Folders::withTilde(file)));
        return;
    }
    if (!m_collection.dataChanged()) {
        reloadChangedFile();
        return;
    }
    m_askingAboutDiskChange = true;
    const int answer = m_alerts.runModal(
        {tr("The project file was changed by another program."),
         tr("You have unsaved changes. Reload the file to see the other program's changes "
            "(yours are lost), or keep your version (your next save replaces the other "
            "program's changes)."),
         UserAlerts::Style::Warning,
         {tr("Reload"), tr("Keep My Version")}});
    m_askingAboutDiskChange = false;
    if (answer == UserAlerts::firstButton) {
        reloadChangedFile();
    } else {
        m_collection.adoptFileOnDisk();
        setSaveWarning({});
        // Crash protection writes the kept version now rather than at the next change.
        m_collection.setDataChanged(true);
    }
}

void ProjectController::reloadChangedFile() {
    const QString file = m_collection.currentFile();
    const ProjectFile::LoadResult result = m_collection.loadCollection(file);
    if (!result.ok) {
        setSaveWarning(tr("\"%1\" was changed by another program and cannot be read: %2")
                           .arg(Folders::withTilde(file), result.error));
        return;
    }
    setSaveWarning({});
    emit documentReplaced();
    emit statusMessage(
        tr("Reloaded \"%1\": another program changed it.").arg(Folders::withTilde(file)));
}

void ProjectController::storeStartingDirectory(const QString &file) {
    m_preferences.setObject(QFileInfo(file).absolutePath(), u"StartingDirectory");
}

QString ProjectController::startingDirectory() const {
    const QString directory = m_preferences.stringForKey(u"StartingDirectory");
    return directory.isEmpty() ? QDir::homePath() : directory;
}
