#pragma once

#include "CliDocument.h"
#include "model/EntryOrder.h"

#include <QStringList>
#include <functional>

class CliConsole;
class CurrencyFormatter;
class Preferences;
class ProjectFileLock;

// The project file of one run of hourfold-cli: read for listings, and read, changed and written
// under the file's lock for changes, so that no other process's change is lost in between. The
// items of every project are in the desktop program's order, the one of the sorting preferences.
// Every problem is printed with the status it ends the command with.
class CliFileAccess {
public:
    using Reader = std::function<int(CliDocument &)>;
    // Adds the lines to print once the change is written; answers Success to have it written.
    using Change = std::function<int(CliDocument &, QStringList &done)>;
    using ProjectChange = std::function<int(CliDocument &, Project &, QStringList &done)>;

    // The order of the items comes from the preferences.
    CliFileAccess(CliConsole &console, const CurrencyFormatter &currency,
                  const Preferences &preferences);

    // The file given with --file, else the desktop program's last opened one; empty for none.
    void setPath(const QString &path) { m_path = path; }
    QString path() const { return m_path; }
    bool hasPath() const { return !m_path.isEmpty(); }
    // The message for a run without a file.
    int failWithoutPath();

    // How long a command waits for a lock that another program holds; 0 to fail at once.
    void setLockWait(int seconds) { m_lockWaitSeconds = seconds; }
    // Takes the lock, waiting as long as set; false after printing why it could not.
    bool lock(ProjectFileLock &lock);
    // The order every project's items are read in.
    const EntryOrder &order() const { return m_order; }

    // Reads the file (a write always replaces it whole, so no lock is needed) and hands it to
    // the reader; a file only the forgiving parse could read is used with a warning.
    int read(const Reader &reader);
    // Reads the file under its lock and writes it when the change answers Success having changed
    // the document; nothing is written otherwise.
    int change(const Change &apply);
    // change() of the project with exactly this name; an unknown name is refused.
    int changeProject(const QString &projectName, const ProjectChange &apply);

private:
    bool load(CliDocument &document);

    CliConsole &m_console;
    const CurrencyFormatter &m_currency;
    EntryOrder m_order;
    QString m_path;
    int m_lockWaitSeconds = 10;
};
