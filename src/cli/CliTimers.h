#pragma once

#include <QStringList>
#include <optional>

class CliConsole;
class CliFileAccess;
class Project;

// The timer commands: start, pause, resume and stop, each a change of one project made under the
// file's lock. An index names one entry as entries prints it; without one, pause, resume and stop
// act on every entry of the project they apply to.
class CliTimers {
public:
    CliTimers(CliConsole &console, CliFileAccess &file);

    int start(const QStringList &args);
    // Pause, resume or stop, as the command names it.
    int change(const QString &command, const QStringList &args);

private:
    enum class Action { Pause, Resume, Stop };

    int changeTimersOf(Project &project, Action action, std::optional<int> index,
                       QStringList &done);

    CliConsole &m_console;
    CliFileAccess &m_file;
};
