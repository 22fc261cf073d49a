#pragma once

#include <QString>
#include <QStringList>

// The options of the whole run: --help, --version, --json, --file PATH and --wait SECONDS. They are
// taken wherever they stand on the line, before the command or among its arguments; what is left is
// the command and its own arguments.
class CliGlobalOptions {
public:
    // False, with error() saying why, when the options do not fit. A --help or --version ends the
    // reading.
    bool parse(const QStringList &arguments);
    QString error() const { return m_error; }

    // --help before the command asks for the general help, after it for the command's.
    bool help() const { return m_help; }
    bool commandHelp() const { return m_commandHelp; }
    bool version() const { return m_version; }
    bool json() const { return m_json; }
    QString file() const { return m_file; }
    // How long to wait for the project file's lock.
    int waitSeconds() const { return m_waitSeconds; }
    // The command and its arguments.
    const QStringList &rest() const { return m_rest; }

private:
    // The value of --NAME=VALUE, or else of the next argument; false when there is none.
    bool takeValue(const QStringList &arguments, qsizetype &i, QString &value);

    bool m_help = false;
    bool m_commandHelp = false;
    bool m_version = false;
    bool m_json = false;
    QString m_file;
    int m_waitSeconds = 10;
    QStringList m_rest;
    QString m_error;
};
