#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

class CliConsole;
class CliFileAccess;
class CurrencyFormatter;

// The commands that only list: projects, entries, running and filters. Each prints aligned text,
// or JSON when the run asks for it; the project file is only read.
class CliListings {
public:
    // The support folder holds customers.plist and filters.plist.
    CliListings(CliConsole &console, const CurrencyFormatter &currency, CliFileAccess &file,
                const QString &supportFolder);

    int projects(const QStringList &args);
    int entries(const QStringList &args);
    int running(const QStringList &args);
    int filters(const QStringList &args);

private:
    QHash<int, QString> customerNames() const;

    CliConsole &m_console;
    const CurrencyFormatter &m_currency;
    CliFileAccess &m_file;
    QString m_supportFolder;
};
