#pragma once

#include "model/ProjectFile.h"
#include "platform/RecentDocuments.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>
#include <functional>

class DesktopServices;
class FilePanels;
class Preferences;
class ProjectCollection;
class UserAlerts;

// The one open document's life: start-up, New, Open, Save, Save As, Revert and Quit with their
// prompts, the 5-second refresh, the welcome prompt, and watching the file for changes made by
// another program (hourfold-cli, a second copy, a sync tool). It speaks to the user only through
// the injected alerts and panels; the main window shows what it announces.
class ProjectController : public QObject {
    Q_OBJECT

public:
    enum class TerminateReply { Cancel, Now, Later };

    ProjectController(Preferences &preferences, ProjectCollection &collection, UserAlerts &alerts,
                      FilePanels &panels, DesktopServices &desktop, QObject *parent = nullptr);

    static QString untitled();
    static QString websiteAddress();

    QString currentFilename() const { return m_currentFilename; }
    void setCurrentFilename(const QString &filename);
    bool isUntitled() const { return m_currentFilename == untitled(); }
    bool isStartingUp() const { return m_isStartingUp; }
    bool isQuitting() const { return m_isQuitting; }
    // Why the last save did not happen; empty once a save has succeeded.
    QString saveWarning() const { return m_saveWarning; }

    // The document part of start-up: reopens the last file (silently untitled when that fails;
    // not at all when the launch brought a file of its own, which the caller opens next),
    // starts the refresh timer and, with welcome, asks the welcome question when it is due.
    void startUp(bool reopenLastFile = true, bool welcome = true);
    void welcomeIfDue();
    void setStartingUp(bool startingUp) { m_isStartingUp = startingUp; }

    void newDatabase();
    void load();
    void save();
    void saveAs();
    void revert();
    // A file handed over by the command line, the file manager or a second launch; false when it
    // is not open now (it could not be read, the user cancelled, or it waits for the save panel).
    bool openFile(const QString &path);
    // Opens a backup copy as a new untitled document, so that saving it never replaces the file
    // it was copied from; false when it is not open now.
    bool openBackup(const QString &path);

    int askUserToSaveChanges();
    bool canQuitApp();
    TerminateReply applicationShouldTerminate();
    // Stores what must survive the quit (the version that ran last).
    void applicationWillTerminate();

    // The welcome prompt: "Yes" opens the website, "Yes" and "No" stop asking.
    void showWelcome();

    static QString projectsMimeType();
    const RecentDocuments &recentDocuments() const { return m_recent; }

    // While this answers true (a sheet or an alert is open and holds objects of the document),
    // a change of the file by another program is looked at later, not reloaded under it.
    void setBusyCheck(std::function<bool()> busy) { m_busy = std::move(busy); }

    QTimer &refreshTimer() { return m_refreshTimer; }
    // Looks at the open file now instead of waiting for the file watcher.
    void checkFileOnDisk();

signals:
    void currentFilenameChanged(const QString &filename);
    // The document was replaced (new, opened, reverted, reloaded): the window reloads its list,
    // the badge and the details.
    void documentReplaced();
    // The mini window goes away and the main window comes to the front (New).
    void mainWindowWanted();
    void refresh();
    // A deferred quit is answered: true quits.
    void quitAnswered(bool quit);
    void saveWarningChanged(const QString &warning);
    // A passing message for the status line.
    void statusMessage(const QString &message);

private:
    // Runs the save prompt when the document has changes; true when the command that asked may
    // go on now. "Save" on a document without a file opens the save panel instead, and
    // afterSavePanel runs once the panel has written the file (not at all when it did not).
    bool settleChanges(const std::function<void()> &afterSavePanel);
    void replaceWithNewDatabase();
    // Loads the file in place of the document; the user hears of a failure.
    bool loadFile(const QString &path);
    bool loadBackup(const QString &path);
    // Whether Save writes the known file rather than asking for one.
    bool canSaveInPlace() const;
    void savePanelDidEnd(const QString &path);
    // Tells the user on the status line that only the forgiving parse could read the file, or
    // which values could not be read and were left empty, and where the original is kept.
    void announceRecovery(const QString &path, const ProjectFile::LoadResult &result);
    void setSaveWarning(const QString &warning);
    void watchCurrentFile();
    void storeStartingDirectory(const QString &file);
    QString startingDirectory() const;
    void reloadChangedFile();

    Preferences &m_preferences;
    ProjectCollection &m_collection;
    UserAlerts &m_alerts;
    FilePanels &m_panels;
    DesktopServices &m_desktop;
    QString m_currentFilename;
    bool m_isQuitting = false;
    bool m_needsSaving = false;
    bool m_isStartingUp = false;
    bool m_askingAboutDiskChange = false;
    QString m_saveWarning;
    QTimer m_refreshTimer;
    QTimer m_diskCheck;
    QFileSystemWatcher m_watcher;
    RecentDocuments m_recent;
    std::function<bool()> m_busy;
    // What New or Open does once the save panel they opened has written the document.
    std::function<void()> m_afterSavePanel;
};
