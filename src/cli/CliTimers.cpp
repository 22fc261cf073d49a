#include "CliTimers.h"

#include "CliConsole.h"
#include "CliFileAccess.h"
#include "model/Entry.h"

using namespace Qt::StringLiterals;

namespace {

std::optional<int> parseIndex(const QString &text) {
    bool ok = false;
    const int value = text.toInt(&ok);
    if (!ok || value < 1)
        return std::nullopt;
    return value;
}

} // namespace

CliTimers::CliTimers(CliConsole &console, CliFileAccess &file)
    : m_console(console)
    , m_file(file) {}

int CliTimers::start(const QStringList &args) {
    if (args.size() != 1)
        return m_console.fail(u"start needs exactly one PROJECT"_s);
    const auto startIn = [](CliDocument &document, Project &project, QStringList &done) {
        const auto entry = Entry::startedIn(project);
        const int index = document.addEntry(project, entry);
        done << u"Started entry %1 of \"%2\" at %3 %4"_s.arg(index).arg(
            project.name(), entry->fromDate(), entry->fromTime());
        return int(CliConsole::Success);
    };
    return m_file.changeProject(args.constFirst(), startIn);
}

int CliTimers::change(const QString &command, const QStringList &args) {
    const Action action = command == u"pause"    ? Action::Pause
                          : command == u"resume" ? Action::Resume
                                                 : Action::Stop;
    if (args.isEmpty() || args.size() > 2)
        return m_console.fail(u"%1 needs PROJECT and an optional INDEX"_s.arg(command));
    std::optional<int> index;
    if (args.size() == 2) {
        index = parseIndex(args[1]);
        if (!index)
            return m_console.fail(u"\"%1\" is not an index (1 or more)"_s.arg(args[1]));
    }
    const auto changeIn = [&](CliDocument &document, Project &project, QStringList &done) {
        const int result = changeTimersOf(project, action, index, done);
        // A stopped entry moves to its place, as the desktop program's entry sheet puts it.
        if (action == Action::Stop)
            document.sortEntriesOfProject(project);
        return result;
    };
    return m_file.changeProject(args.constFirst(), changeIn);
}

int CliTimers::changeTimersOf(Project &project, Action action, std::optional<int> index,
                              QStringList &done) {
    const auto applies = [action](const ProjectItem &item) {
        if (!item.isEntry())
            return false;
        switch (action) {
        case Action::Pause:
            return item.isWorking() && !item.isPaused();
        case Action::Resume:
            return item.isPaused();
        case Action::Stop:
            return item.isWorking() || item.isPaused();
        }
        return false;
    };
    const QString wanted = action == Action::Pause    ? u"running"_s
                           : action == Action::Resume ? u"paused"_s
                                                      : u"running or paused"_s;
    QList<int> chosen;
    const ItemList &items = project.entries();
    if (index) {
        if (*index > items.size())
            return m_console.fail(u"\"%1\" has no entry %2 (it has %3)"_s.arg(project.name())
                                      .arg(*index)
                                      .arg(items.size()));
        if (!applies(*items[*index - 1]))
            return m_console.fail(
                u"Entry %1 of \"%2\" is not %3"_s.arg(*index).arg(project.name(), wanted));
        chosen.append(*index);
    } else {
        for (int i = 0; i < items.size(); ++i) {
            if (applies(*items[i]))
                chosen.append(i + 1);
        }
        if (chosen.isEmpty())
            return m_console.fail(u"\"%1\" has no %2 entry"_s.arg(project.name(), wanted));
    }
    for (const int i : std::as_const(chosen)) {
        auto &entry = static_cast<Entry &>(*items[i - 1]);
        switch (action) {
        case Action::Pause:
            entry.pause();
            break;
        case Action::Resume:
            entry.resume();
            break;
        case Action::Stop:
            entry.stop();
            break;
        }
    }
    const QString verbDone = action == Action::Pause    ? u"Paused"_s
                             : action == Action::Resume ? u"Resumed"_s
                                                        : u"Stopped"_s;
    for (const int i : std::as_const(chosen))
        done << u"%1 entry %2 of \"%3\""_s.arg(verbDone).arg(i).arg(project.name());
    return CliConsole::Success;
}
