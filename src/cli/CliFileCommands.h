#pragma once

#include <QStringList>

class CliConsole;
class CliFileAccess;
class CurrencyFormatter;

// The commands about the project file as a whole: check reads it and counts what it holds,
// convert writes it again in the current layout, backups lists the kept copies of project files.
class CliFileCommands {
public:
    CliFileCommands(CliConsole &console, const CurrencyFormatter &currency, CliFileAccess &file);

    int check(const QStringList &args);
    int convert(const QStringList &args);
    int backups(const QStringList &args);

private:
    CliConsole &m_console;
    const CurrencyFormatter &m_currency;
    CliFileAccess &m_file;
};
