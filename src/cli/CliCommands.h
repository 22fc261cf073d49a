#pragma once

#include "CliDocument.h"

#include <QHash>
#include <QJsonArray>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <functional>
#include <optional>

class CurrencyFormatter;
class Entry;

// The commands of hourfold-cli. Normal output goes to out, messages about problems to err; run()
// returns the exit status. Preferences are only read, never written.
class CliCommands {
public:
    enum ExitCode { Success = 0, BadArguments = 1, Unreadable = 2, Recovered = 3 };

    CliCommands(QTextStream &out, QTextStream &err, const QString &preferencesPath,
                const QString &customersPath);
    ~CliCommands();

    // The arguments after the program's name.
    int run(const QStringList &arguments);

    static QString generalHelp();
    // Empty for an unknown command.
    static QString commandHelp(const QString &command);

private:
    enum class TimerAction { Pause, Resume, Stop };

    int fail(const QString &message);
    QString projectFilePath() const;
    // Reads the file for a listing; prints why it cannot be read.
    bool loadForReading(CliDocument &document);
    // Reads the file under its lock, lets change() change the named project (adding the lines
    // to print), and writes the file when change() answers Success; nothing is written otherwise.
    int changeProject(const QString &projectName,
                      const std::function<int(Project &, QStringList &)> &change);

    int check(const QStringList &args);
    int listProjects(const QStringList &args);
    int listEntries(const QStringList &args);
    int listRunning(const QStringList &args);
    int start(const QStringList &args);
    int changeTimers(TimerAction action, const QStringList &args);
    int changeTimersOf(Project &project, TimerAction action, std::optional<int> index,
                       QStringList &done);

    QHash<int, QString> customerNames() const;
    void printJson(const QJsonArray &array);

    QTextStream &m_out;
    QTextStream &m_err;
    QString m_preferencesPath;
    QString m_customersPath;
    QString m_file;
    bool m_json = false;
    std::unique_ptr<CurrencyFormatter> m_currency;
};
