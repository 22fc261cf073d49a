#include "CliCommands.h"

#include "TextTable.h"
#include "model/Entry.h"
#include "model/FlatFeeEntry.h"
#include "platform/CurrencyFormatter.h"
#include "platform/Preferences.h"
#include "platform/ProjectFileLock.h"
#include "stores/Customer.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

QString hoursAndMinutes(int minutes) {
    return QString::asprintf("%02d:%02d", minutes / 60, minutes % 60);
}

QString whenText(const ProjectItem &item) {
    if (!item.hasPeriod() || !item.isEntry())
        return item.date();
    const auto &entry = static_cast<const Entry &>(item);
    QString text = entry.fromDate() + u' ' + entry.fromTime() + u" -"_s;
    if (!entry.toDate().isEmpty())
        text += u' ' + entry.toDate() + u' ' + entry.toTime();
    return text;
}

QString oneLine(QString text) {
    text.replace(u"\r\n"_s, u" "_s);
    text.replace(u'\n', u' ');
    text.replace(u'\r', u' ');
    return text;
}

std::optional<int> parseIndex(const QString &text) {
    bool ok = false;
    const int value = text.toInt(&ok);
    if (!ok || value < 1)
        return std::nullopt;
    return value;
}

} // namespace

CliCommands::CliCommands(QTextStream &out, QTextStream &err, const QString &preferencesPath,
                         const QString &customersPath)
    : m_out(out)
    , m_err(err)
    , m_preferencesPath(preferencesPath)
    , m_customersPath(customersPath)
    , m_currency(std::make_unique<CurrencyFormatter>()) {}

CliCommands::~CliCommands() = default;

QString CliCommands::generalHelp() {
    return u"Usage: hourfold-cli [--file PATH] [--json] COMMAND [ARGUMENTS]\n"
           "\n"
           "Reads and changes a Hourfold project file. Without --file the file is the one the\n"
           "desktop program opened last (preference \"LastOpenFile\"). Preferences are never\n"
           "written.\n"
           "\n"
           "Options:\n"
           "  --file PATH   the project file to use\n"
           "  --json        listing commands print JSON instead of aligned text\n"
           "  --help        this text; COMMAND --help describes one command\n"
           "\n"
           "Commands:\n"
           "  check                    reads the file and counts what it holds\n"
           "  projects                 lists the projects with their totals\n"
           "  entries PROJECT          lists the items of a project in stored order\n"
           "  running                  lists running and paused timers\n"
           "  start PROJECT            starts a timer in the project\n"
           "  pause PROJECT [INDEX]    pauses a running timer, or all of the project\n"
           "  resume PROJECT [INDEX]   resumes a paused timer, or all of the project\n"
           "  stop PROJECT [INDEX]     ends a running or paused timer, or all of the project\n"
           "\n"
           "INDEX is 1-based, as entries prints it. Changes are made under the file's lock and\n"
           "written atomically.\n"
           "\n"
           "Exit status: 0 success, 1 bad arguments or unknown project (nothing written),\n"
           "2 the file cannot be read, 3 (check) only the forgiving parse could read the file.\n"_s;
}

QString CliCommands::commandHelp(const QString &command) {
    if (command == u"check")
        return u"Usage: hourfold-cli [--file PATH] check\n"
               "\n"
               "Reads the file and prints how many projects, timed entries, flat fees, running\n"
               "and paused timers it holds. Exit status 0 when the file was read strictly, 3 when\n"
               "only the forgiving parse could read it (the original is kept beside it as\n"
               "NAME.recovered-DATE), 2 when it cannot be read (the reason goes to stderr).\n"_s;
    if (command == u"projects")
        return u"Usage: hourfold-cli [--file PATH] [--json] projects\n"
               "\n"
               "One line per project: name, total duration (hours:minutes), total wages and\n"
               "customer. With --json an array of objects with \"name\", \"description\",\n"
               "\"customer\" (name or null), \"hourlyWage\", \"totalDuration\" and\n"
               "\"totalDurationGross\" (whole minutes) and \"totalWages\".\n"_s;
    if (command == u"entries")
        return u"Usage: hourfold-cli [--file PATH] [--json] entries PROJECT\n"
               "\n"
               "One line per item in stored order: index, kind (timed or flatfee), the day or\n"
               "from/to, the duration (the amount for a flat fee), the pause time, [x] when\n"
               "checked, tags and comment. With --json an array of objects with \"index\",\n"
               "\"kind\", \"hasPeriod\", \"day\", \"fromDate\", \"fromTime\", \"toDate\",\n"
               "\"toTime\" (stored forms), \"time\", \"pauseTime\", \"effectiveDuration\"\n"
               "(minutes), \"working\", \"paused\", \"checked\", \"comment\", \"tags\" and\n"
               "\"amount\" (null for timed entries).\n"_s;
    if (command == u"running")
        return u"Usage: hourfold-cli [--file PATH] [--json] running\n"
               "\n"
               "Every running or paused entry: project, index, live duration and state. With\n"
               "--json an array of objects with \"project\", \"index\", \"minutes\" and\n"
               "\"paused\".\n"_s;
    if (command == u"start")
        return u"Usage: hourfold-cli [--file PATH] start PROJECT\n"
               "\n"
               "Adds a running timed entry to the project, starting now (rounded to the clock\n"
               "as the project rounds start and end times), and saves the file.\n"_s;
    if (command == u"pause")
        return u"Usage: hourfold-cli [--file PATH] pause PROJECT [INDEX]\n"
               "\n"
               "Pauses the running entry INDEX, or without INDEX every running entry of the\n"
               "project, and saves the file.\n"_s;
    if (command == u"resume")
        return u"Usage: hourfold-cli [--file PATH] resume PROJECT [INDEX]\n"
               "\n"
               "Resumes the paused entry INDEX, or without INDEX every paused entry of the\n"
               "project, and saves the file.\n"_s;
    if (command == u"stop")
        return u"Usage: hourfold-cli [--file PATH] stop PROJECT [INDEX]\n"
               "\n"
               "Ends the running or paused entry INDEX now (resuming it first when paused; the\n"
               "end is rounded as the project rounds times), or without INDEX every running or\n"
               "paused entry of the project, and saves the file.\n"_s;
    return {};
}

int CliCommands::fail(const QString &message) {
    m_err << message << '\n';
    m_err.flush();
    return BadArguments;
}

int CliCommands::run(const QStringList &arguments) {
    QStringList rest = arguments;
    while (!rest.isEmpty() && rest.constFirst().startsWith(u"--")) {
        const QString option = rest.takeFirst();
        if (option == u"--help") {
            m_out << generalHelp();
            return Success;
        } else if (option == u"--json") {
            m_json = true;
        } else if (option == u"--file") {
            if (rest.isEmpty())
                return fail(u"--file needs a path"_s);
            m_file = rest.takeFirst();
        } else if (option.startsWith(u"--file=")) {
            m_file = option.mid(7);
            if (m_file.isEmpty())
                return fail(u"--file needs a path"_s);
        } else {
            return fail(u"Unknown option \"%1\""_s.arg(option));
        }
    }
    if (rest.isEmpty())
        return fail(u"No command given; see hourfold-cli --help"_s);
    const QString command = rest.takeFirst();
    if (commandHelp(command).isEmpty())
        return fail(u"Unknown command \"%1\"; see hourfold-cli --help"_s.arg(command));
    if (rest.contains(u"--help"_s)) {
        m_out << commandHelp(command);
        return Success;
    }
    if (command == u"check")
        return check(rest);
    if (command == u"projects")
        return listProjects(rest);
    if (command == u"entries")
        return listEntries(rest);
    if (command == u"running")
        return listRunning(rest);
    if (command == u"start")
        return start(rest);
    if (command == u"pause")
        return changeTimers(TimerAction::Pause, rest);
    if (command == u"resume")
        return changeTimers(TimerAction::Resume, rest);
    return changeTimers(TimerAction::Stop, rest);
}

QString CliCommands::projectFilePath() const {
    if (!m_file.isEmpty())
        return m_file;
    const Preferences preferences(m_preferencesPath);
    return preferences.stringForKey(u"LastOpenFile");
}

bool CliCommands::loadForReading(CliDocument &document) {
    const ProjectFile::LoadResult result = document.load(*m_currency);
    if (!result.ok) {
        m_err << u"Cannot read \"%1\": %2"_s.arg(document.path(), result.error) << '\n';
        m_err.flush();
        return false;
    }
    if (result.recovered) {
        m_err << u"Warning: only the forgiving parse could read \"%1\"; the original is kept as "
                 u"\"%2\""_s.arg(document.path(), result.backupPath)
              << '\n';
        m_err.flush();
    }
    return true;
}

int CliCommands::check(const QStringList &args) {
    if (!args.isEmpty())
        return fail(u"check takes no arguments"_s);
    const QString path = projectFilePath();
    if (path.isEmpty())
        return fail(u"No project file: give --file PATH"_s);
    CliDocument document(path);
    const ProjectFile::LoadResult result = document.load(*m_currency);
    if (!result.ok) {
        m_err << u"Cannot read \"%1\": %2"_s.arg(document.path(), result.error) << '\n';
        m_err.flush();
        return Unreadable;
    }
    int timed = 0, flatFees = 0, running = 0, paused = 0;
    for (const auto &project : document.projects()) {
        for (const auto &item : project->entries()) {
            if (item->isFlatFee()) {
                ++flatFees;
                continue;
            }
            ++timed;
            if (item->isPaused())
                ++paused;
            else if (item->isWorking())
                ++running;
        }
    }
    m_out << u"%1: %2 projects, %3 timed entries, %4 flat fees, %5 running, %6 paused"_s
                 .arg(document.path())
                 .arg(document.projects().size())
                 .arg(timed)
                 .arg(flatFees)
                 .arg(running)
                 .arg(paused)
          << '\n';
    if (result.recovered) {
        m_err << u"Only the forgiving parse could read the file (%1); the original is kept as "
                 u"\"%2\""_s.arg(result.damage, result.backupPath)
              << '\n';
        m_err.flush();
        return Recovered;
    }
    return Success;
}

QHash<int, QString> CliCommands::customerNames() const {
    QHash<int, QString> names;
    QFile file(m_customersPath);
    if (!file.open(QIODevice::ReadOnly))
        return names;
    const Customer::ListReading reading = Customer::unarchiveList(file.readAll());
    for (const auto &customer : reading.customers)
        names.insert(customer->customerID(), customer->name());
    return names;
}

void CliCommands::printJson(const QJsonArray &array) {
    m_out << QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Indented));
}

int CliCommands::listProjects(const QStringList &args) {
    if (!args.isEmpty())
        return fail(u"projects takes no arguments"_s);
    const QString path = projectFilePath();
    if (path.isEmpty())
        return fail(u"No project file: give --file PATH"_s);
    CliDocument document(path);
    if (!loadForReading(document))
        return Unreadable;
    const QHash<int, QString> customers = customerNames();
    if (m_json) {
        QJsonArray array;
        for (const auto &project : document.projects()) {
            const auto customer = customers.constFind(project->customer());
            array.append(QJsonObject{
                {u"name"_s, project->name()},
                {u"description"_s, project->description()},
                {u"customer"_s,
                 customer == customers.cend() ? QJsonValue() : QJsonValue(*customer)},
                {u"hourlyWage"_s, double(project->hourlyWage())},
                {u"totalDuration"_s, project->totalTime(true)},
                {u"totalDurationGross"_s, project->totalTime(false)},
                {u"totalWages"_s, double(project->totalWages())},
            });
        }
        printJson(array);
        return Success;
    }
    TextTable table;
    for (const auto &project : document.projects())
        table.addRow({project->name(), hoursAndMinutes(project->totalTime(true)),
                      project->formattedTotalWages(), customers.value(project->customer())});
    table.print(m_out);
    return Success;
}

int CliCommands::listEntries(const QStringList &args) {
    if (args.size() != 1)
        return fail(u"entries needs exactly one PROJECT"_s);
    const QString path = projectFilePath();
    if (path.isEmpty())
        return fail(u"No project file: give --file PATH"_s);
    CliDocument document(path);
    if (!loadForReading(document))
        return Unreadable;
    const auto project = document.projectNamed(args.constFirst());
    if (!project)
        return fail(u"Unknown project \"%1\""_s.arg(args.constFirst()));
    QJsonArray array;
    TextTable table;
    int index = 0;
    for (const auto &item : project->entries()) {
        ++index;
        const Entry *entry = item->isEntry() ? static_cast<const Entry *>(item.get()) : nullptr;
        const FlatFeeEntry *fee =
            item->isFlatFee() ? static_cast<const FlatFeeEntry *>(item.get()) : nullptr;
        if (m_json) {
            array.append(QJsonObject{
                {u"index"_s, index},
                {u"kind"_s, entry ? u"timed"_s : u"flatfee"_s},
                {u"hasPeriod"_s, item->hasPeriod()},
                {u"day"_s, item->date()},
                {u"fromDate"_s, entry ? entry->fromDate() : QString()},
                {u"fromTime"_s, entry ? entry->fromTime() : QString()},
                {u"toDate"_s, entry ? entry->toDate() : QString()},
                {u"toTime"_s, entry ? entry->toTime() : QString()},
                {u"time"_s, item->time()},
                {u"pauseTime"_s, item->pauseTime()},
                {u"effectiveDuration"_s, item->effectiveDuration()},
                {u"working"_s, item->isWorking()},
                {u"paused"_s, item->isPaused()},
                {u"checked"_s, item->isChecked()},
                {u"comment"_s, item->comment()},
                {u"tags"_s, item->tags()},
                {u"amount"_s, fee ? QJsonValue(double(fee->amount())) : QJsonValue()},
            });
            continue;
        }
        table.addRow(
            {QString::number(index), entry ? u"timed"_s : u"flatfee"_s, whenText(*item),
             fee ? m_currency->format(fee->amount()) : hoursAndMinutes(item->effectiveDuration()),
             hoursAndMinutes(item->pauseTime()), item->isChecked() ? u"[x]"_s : u"[ ]"_s,
             oneLine(item->tags()), oneLine(item->comment())});
    }
    if (m_json)
        printJson(array);
    else
        table.print(m_out);
    return Success;
}

int CliCommands::listRunning(const QStringList &args) {
    if (!args.isEmpty())
        return fail(u"running takes no arguments"_s);
    const QString path = projectFilePath();
    if (path.isEmpty())
        return fail(u"No project file: give --file PATH"_s);
    CliDocument document(path);
    if (!loadForReading(document))
        return Unreadable;
    QJsonArray array;
    TextTable table;
    for (const auto &project : document.projects()) {
        int index = 0;
        for (const auto &item : project->entries()) {
            ++index;
            if (!item->isEntry() || !(item->isWorking() || item->isPaused()))
                continue;
            if (m_json) {
                array.append(QJsonObject{{u"project"_s, project->name()},
                                         {u"index"_s, index},
                                         {u"minutes"_s, item->effectiveDuration()},
                                         {u"paused"_s, item->isPaused()}});
            } else {
                table.addRow({project->name(), QString::number(index),
                              hoursAndMinutes(item->effectiveDuration()),
                              item->isPaused() ? u"paused"_s : u"running"_s});
            }
        }
    }
    if (m_json)
        printJson(array);
    else
        table.print(m_out);
    return Success;
}

int CliCommands::changeProject(const QString &projectName,
                               const std::function<int(Project &, QStringList &)> &change) {
    const QString path = projectFilePath();
    if (path.isEmpty())
        return fail(u"No project file: give --file PATH"_s);
    CliDocument document(path);
    // Read, change and write under the lock, so that no other process's change is lost.
    ProjectFileLock lock(document.path());
    if (!lock.lock()) {
        m_err << lock.errorString() << '\n';
        return Unreadable;
    }
    if (!loadForReading(document))
        return Unreadable;
    const auto project = document.projectNamed(projectName);
    if (!project)
        return fail(u"Unknown project \"%1\""_s.arg(projectName));
    QStringList done;
    const int result = change(*project, done);
    if (result != Success)
        return result;
    const ProjectFile::SaveResult saved = document.save();
    if (!saved.ok) {
        m_err << u"Cannot write \"%1\": %2"_s.arg(document.path(), saved.error) << '\n';
        return Unreadable;
    }
    for (const QString &line : std::as_const(done))
        m_out << line << '\n';
    return Success;
}

int CliCommands::start(const QStringList &args) {
    if (args.size() != 1)
        return fail(u"start needs exactly one PROJECT"_s);
    return changeProject(args.constFirst(), [](Project &project, QStringList &done) {
        const auto entry = Entry::startedIn(project);
        project.addEntry(entry);
        done << u"Started entry %1 of \"%2\" at %3 %4"_s.arg(project.entries().size())
                    .arg(project.name(), entry->fromDate(), entry->fromTime());
        return int(Success);
    });
}

int CliCommands::changeTimers(TimerAction action, const QStringList &args) {
    const QString verb = action == TimerAction::Pause    ? u"pause"_s
                         : action == TimerAction::Resume ? u"resume"_s
                                                         : u"stop"_s;
    if (args.isEmpty() || args.size() > 2)
        return fail(u"%1 needs PROJECT and an optional INDEX"_s.arg(verb));
    std::optional<int> index;
    if (args.size() == 2) {
        index = parseIndex(args[1]);
        if (!index)
            return fail(u"\"%1\" is not an index (1 or more)"_s.arg(args[1]));
    }
    return changeProject(args.constFirst(), [&](Project &project, QStringList &done) {
        return changeTimersOf(project, action, index, done);
    });
}

int CliCommands::changeTimersOf(Project &project, TimerAction action, std::optional<int> index,
                                QStringList &done) {
    const auto applies = [action](const ProjectItem &item) {
        if (!item.isEntry())
            return false;
        switch (action) {
        case TimerAction::Pause:
            return item.isWorking() && !item.isPaused();
        case TimerAction::Resume:
            return item.isPaused();
        case TimerAction::Stop:
            return item.isWorking() || item.isPaused();
        }
        return false;
    };
    const QString wanted = action == TimerAction::Pause    ? u"running"_s
                           : action == TimerAction::Resume ? u"paused"_s
                                                           : u"running or paused"_s;
    QList<int> chosen;
    const ItemList &items = project.entries();
    if (index) {
        if (*index > items.size())
            return fail(u"\"%1\" has no entry %2 (it has %3)"_s.arg(project.name())
                            .arg(*index)
                            .arg(items.size()));
        if (!applies(*items[*index - 1]))
            return fail(u"Entry %1 of \"%2\" is not %3"_s.arg(*index).arg(project.name(), wanted));
        chosen.append(*index);
    } else {
        for (int i = 0; i < items.size(); ++i) {
            if (applies(*items[i]))
                chosen.append(i + 1);
        }
        if (chosen.isEmpty())
            return fail(u"\"%1\" has no %2 entry"_s.arg(project.name(), wanted));
    }
    for (const int i : std::as_const(chosen)) {
        auto &entry = static_cast<Entry &>(*items[i - 1]);
        switch (action) {
        case TimerAction::Pause:
            entry.pause();
            break;
        case TimerAction::Resume:
            entry.resume();
            break;
        case TimerAction::Stop:
            entry.stop();
            break;
        }
    }
    const QString verbDone = action == TimerAction::Pause    ? u"Paused"_s
                             : action == TimerAction::Resume ? u"Resumed"_s
                                                             : u"Stopped"_s;
    for (const int i : std::as_const(chosen))
        done << u"%1 entry %2 of \"%3\""_s.arg(verbDone).arg(i).arg(project.name());
    return Success;
}
