#pragma once

#include <QString>
#include <QStringList>

class CliConsole;
class CliFileAccess;
class ImportResult;
class Preferences;

// The import command: reads another tracker's data and adds its projects and entries to the
// project file (--into, else the file of --file or the desktop program's last one; a file that
// does not exist yet is made), under the file's lock, with the customers and tags it brings in
// the support folder's stores. --dry-run prints what would be imported and writes nothing;
// problems in the source keep the file unchanged unless --skip-problems says to leave them out.
class CliImport {
public:
    CliImport(CliConsole &console, Preferences &preferences, CliFileAccess &file,
              const QString &supportFolder);

    int run(const QStringList &args);

private:
    void printPreview(const ImportResult &result, const QString &source, const QString &path,
                      const QString &target);
    int write(const ImportResult &result, const QString &target);

    CliConsole &m_console;
    Preferences &m_preferences;
    CliFileAccess &m_file;
    QString m_supportFolder;
};
