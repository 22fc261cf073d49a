#pragma once

#include <QString>
#include <QStringList>

class CliConsole;
class CliFileAccess;
class CurrencyFormatter;
class Preferences;

// The commands that add to the project file: add-project, add-entry and add-fee. The values are
// checked as the desktop program's sheets check them before the file is locked; nothing is written
// when one does not fit.
class CliAdditions {
public:
    // Customers are named as in the customers.plist of the support folder.
    CliAdditions(CliConsole &console, const Preferences &preferences,
                 const CurrencyFormatter &currency, CliFileAccess &file,
                 const QString &supportFolder);

    int addProject(const QStringList &args);
    int addEntry(const QStringList &args);
    int addFee(const QStringList &args);

private:
    CliConsole &m_console;
    const Preferences &m_preferences;
    const CurrencyFormatter &m_currency;
    CliFileAccess &m_file;
    QString m_supportFolder;
};
