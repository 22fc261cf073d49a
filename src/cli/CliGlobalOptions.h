#pragma once

#include <QString>
#include <QStringList>

// The options of the whole run, given before the command: --help, --json and --file PATH. What
// follows them is the command and its arguments.
class CliGlobalOptions {
public:
    // False, with error() saying why, when the options do not fit.
    bool parse(const QStringList &arguments);
    QString error() const { return m_error; }

    bool help() const { return m_help; }
    bool json() const { return m_json; }
    QString file() const { return m_file; }
    // The command and its arguments.
    const QStringList &rest() const { return m_rest; }

private:
    bool m_help = false;
    bool m_json = false;
    QString m_file;
    QStringList m_rest;
    QString m_error;
};
