#pragma once

#include <QJsonArray>
#include <QString>
#include <QStringList>
#include <QTextStream>

// Where the commands of hourfold-cli write: normal output, one-line messages about problems, and
// the exit statuses those messages go with.
class CliConsole {
public:
    enum ExitCode { Success = 0, BadArguments = 1, Unreadable = 2, Recovered = 3 };

    CliConsole(QTextStream &out, QTextStream &err)
        : m_out(out)
        , m_err(err) {}

    QTextStream &out() { return m_out; }
    bool json() const { return m_json; }
    void setJson(bool json) { m_json = json; }

    // Prints the message as one line on the error stream and returns the status.
    int fail(const QString &message, int status = BadArguments);
    // True for no arguments; otherwise says that the command takes none and answers false.
    bool takesNothing(const QString &command, const QStringList &args);
    // A line on the error stream that does not end the command.
    void warn(const QString &message);
    // The terminal's bell, on the error stream.
    void bell();
    void printJson(const QJsonArray &array);

private:
    QTextStream &m_out;
    QTextStream &m_err;
    bool m_json = false;
};
