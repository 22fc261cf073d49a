#include "CliCommands.h"

#include "CliCustomers.h"
#include "CliExport.h"
#include "CliHelp.h"
#include "CliOptions.h"
#include "CliValues.h"
#include "TextTable.h"
#include "export/ReportRenderer.h"
#include "model/Entry.h"
#include "model/FlatFeeEntry.h"
#include "model/StoredForms.h"
#include "platform/CurrencyFormatter.h"
#include "platform/ProjectFileLock.h"
#include "search/Filter.h"
#include "stores/Customer.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

// Money as JSON: the float's shortest decimal form (12.4, not 12.399999618530273), so that a
// reader does not lose a cent to the float's binary digits.
double jsonMoney(float value) {
    return StoredForms::floatText(value).toDouble();
}

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

// The global options before the command: sets what they ask for and leaves the command and its
// arguments. False with a message when they do not fit.
struct GlobalOptions {
    bool help = false;
    bool json = false;
    QString file;
    QStringList rest;
    QString error;

    bool parse(const QStringList &arguments) {
        rest = arguments;
        while (!rest.isEmpty() && rest.constFirst().startsWith(u"--")) {
            const QString option = rest.takeFirst();
            if (option == u"--help") {
                help = true;
                return true;
            } else if (option == u"--json") {
                json = true;
            } else if (option == u"--file" || option.startsWith(u"--file=")) {
                if (option == u"--file")
                    file = rest.isEmpty() ? QString() : rest.takeFirst();
                else
                    file = option.mid(7);
                if (file.isEmpty()) {
                    error = u"--file needs a path"_s;
                    return false;
                }
            } else {
                error = u"Unknown option \"%1\""_s.arg(option);
                return false;
            }
        }
        return true;
    }
};

} // namespace

CliCommands::CliCommands(QTextStream &out, QTextStream &err, const QString &preferencesPath,
                         const QString &supportFolder, RendererFactory rendererFactory)
    : m_console(out, err)
    , m_preferences(preferencesPath)
    , m_supportFolder(supportFolder)
    , m_rendererFactory(std::move(rendererFactory))
    , m_currency(std::make_unique<CurrencyFormatter>())
    , m_file(m_console, *m_currency) {
    Preferences::setShared(&m_preferences);
}

CliCommands::~CliCommands() {
    Preferences::setShared(nullptr);
}

CliCommands::Application CliCommands::applicationFor(const QStringList &arguments) {
    GlobalOptions global;
    if (!global.parse(arguments) || global.help || global.rest.value(0) != u"export")
        return Application::Core;
    CliOptions options(CliExport::valuedOptions(), CliExport::switches());
    if (!options.parse(global.rest.mid(1)))
        return Application::Core;
    const QString format = options.value(u"--format"_s);
    if (format == u"pdf")
        return Application::WebEngine;
    return format == u"rtf" ? Application::Gui : Application::Core;
}

int CliCommands::run(const QStringList &arguments) {
    GlobalOptions global;
    if (!global.parse(arguments))
        return fail(global.error);
    if (global.help) {
        m_console.out() << CliHelp::general();
        return CliConsole::Success;
    }
    m_console.setJson(global.json);
    m_file.setPath(global.file.isEmpty() ? m_preferences.stringForKey(u"LastOpenFile")
                                         : global.file);
    QStringList rest = global.rest;
    if (rest.isEmpty())
        return fail(u"No command given; see hourfold-cli --help"_s);
    const QString command = rest.takeFirst();
    if (!CliHelp::commands().contains(command))
        return fail(u"Unknown command \"%1\"; see hourfold-cli --help"_s.arg(command));
    if (rest.contains(u"--help"_s)) {
        m_console.out() << CliHelp::command(command);
        return CliConsole::Success;
    }
    static const QHash<QString, int (CliCommands::*)(const QStringList &)> handlers{
        {u"check"_s, &CliCommands::check},         {u"projects"_s, &CliCommands::listProjects},
        {u"entries"_s, &CliCommands::listEntries}, {u"running"_s, &CliCommands::listRunning},
        {u"start"_s, &CliCommands::start},         {u"add-project"_s, &CliCommands::addProject},
        {u"add-entry"_s, &CliCommands::addEntry},  {u"add-fee"_s, &CliCommands::addFee},
        {u"customers"_s, &CliCommands::customers}, {u"filters"_s, &CliCommands::listFilters},
        {u"export"_s, &CliCommands::exportReport}, {u"convert"_s, &CliCommands::convert},
    };
    if (const auto handler = handlers.value(command))
        return (this->*handler)(rest);
    const TimerAction action = command == u"pause"    ? TimerAction::Pause
                               : command == u"resume" ? TimerAction::Resume
                                                      : TimerAction::Stop;
    return changeTimers(action, rest);
}

bool CliCommands::takesNothing(const QString &command, const QStringList &args) {
    if (args.isEmpty())
        return true;
    fail(u"%1 takes no arguments"_s.arg(command));
    return false;
}

int CliCommands::check(const QStringList &args) {
    if (!takesNothing(u"check"_s, args))
        return CliConsole::BadArguments;
    if (!m_file.hasPath())
        return m_file.failWithoutPath();
    CliDocument document(m_file.path());
    const ProjectFile::LoadResult result = document.load(*m_currency);
    if (!result.ok)
        return m_console.fail(u"Cannot read \"%1\": %2"_s.arg(document.path(), result.error),
                              CliConsole::Unreadable);
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
    m_console.out() << u"%1: %2 projects, %3 timed entries, %4 flat fees, %5 running, %6 paused"_s
                           .arg(document.path())
                           .arg(document.projects().size())
                           .arg(timed)
                           .arg(flatFees)
                           .arg(running)
                           .arg(paused)
                    << '\n';
    if (result.recovered)
        return m_console.fail(u"Only the forgiving parse could read the file (%1); the original "
                              u"is kept as \"%2\""_s.arg(result.damage, result.backupPath),
                              CliConsole::Recovered);
    return CliConsole::Success;
}

QList<Customer::Pointer> CliCommands::storedCustomers() const {
    QFile file(m_supportFolder + u"/customers.plist"_s);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return Customer::unarchiveList(file.readAll()).customers;
}

QHash<int, QString> CliCommands::customerNames() const {
    QHash<int, QString> names;
    for (const auto &customer : storedCustomers())
        names.insert(customer->customerID(), customer->name());
    return names;
}

int CliCommands::listProjects(const QStringList &args) {
    if (!takesNothing(u"projects"_s, args))
        return CliConsole::BadArguments;
    return m_file.read([this](CliDocument &document) {
        const QHash<int, QString> customers = customerNames();
        if (m_console.json()) {
            QJsonArray array;
            for (const auto &project : document.projects()) {
                const auto customer = customers.constFind(project->customer());
                array.append(QJsonObject{
                    {u"name"_s, project->name()},
                    {u"description"_s, project->description()},
                    {u"customer"_s,
                     customer == customers.cend() ? QJsonValue() : QJsonValue(*customer)},
                    {u"hourlyWage"_s, jsonMoney(project->hourlyWage())},
                    {u"totalDuration"_s, project->totalTime(true)},
                    {u"totalDurationGross"_s, project->totalTime(false)},
                    {u"totalWages"_s, jsonMoney(project->totalWages())},
                });
            }
            m_console.printJson(array);
            return int(CliConsole::Success);
        }
        TextTable table;
        for (const auto &project : document.projects())
            table.addRow({project->name(), hoursAndMinutes(project->totalTime(true)),
                          project->formattedTotalWages(), customers.value(project->customer())});
        table.print(m_console.out());
        return int(CliConsole::Success);
    });
}

int CliCommands::listEntries(const QStringList &args) {
    if (args.size() != 1)
        return fail(u"entries needs exactly one PROJECT"_s);
    return m_file.read([&](CliDocument &document) {
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
            if (m_console.json()) {
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
                    {u"amount"_s, fee ? QJsonValue(jsonMoney(fee->amount())) : QJsonValue()},
                });
                continue;
            }
            table.addRow(
                {QString::number(index), entry ? u"timed"_s : u"flatfee"_s, whenText(*item),
                 fee ? m_currency->format(fee->amount())
                     : hoursAndMinutes(item->effectiveDuration()),
                 hoursAndMinutes(item->pauseTime()), item->isChecked() ? u"[x]"_s : u"[ ]"_s,
                 oneLine(item->tags()), oneLine(item->comment())});
        }
        if (m_console.json())
            m_console.printJson(array);
        else
            table.print(m_console.out());
        return int(CliConsole::Success);
    });
}

int CliCommands::listRunning(const QStringList &args) {
    if (!takesNothing(u"running"_s, args))
        return CliConsole::BadArguments;
    return m_file.read([this](CliDocument &document) {
        QJsonArray array;
        TextTable table;
        for (const auto &project : document.projects()) {
            int index = 0;
            for (const auto &item : project->entries()) {
                ++index;
                if (!item->isEntry() || !(item->isWorking() || item->isPaused()))
                    continue;
                if (m_console.json()) {
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
        if (m_console.json())
            m_console.printJson(array);
        else
            table.print(m_console.out());
        return int(CliConsole::Success);
    });
}

int CliCommands::start(const QStringList &args) {
    if (args.size() != 1)
        return fail(u"start needs exactly one PROJECT"_s);
    return m_file.changeProject(args.constFirst(), [](Project &project, QStringList &done) {
        const auto entry = Entry::startedIn(project);
        project.addEntry(entry);
        done << u"Started entry %1 of \"%2\" at %3 %4"_s.arg(project.entries().size())
                    .arg(project.name(), entry->fromDate(), entry->fromTime());
        return int(CliConsole::Success);
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
    return m_file.changeProject(args.constFirst(), [&](Project &project, QStringList &done) {
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
    return CliConsole::Success;
}

int CliCommands::addProject(const QStringList &args) {
    CliOptions options({u"--description"_s, u"--wage"_s, u"--round-what"_s, u"--round-to"_s,
                        u"--round-type"_s, u"--customer"_s, u"--tags"_s});
    if (!options.parse(args))
        return fail(options.error());
    if (options.words().size() != 1)
        return fail(u"add-project needs exactly one NAME"_s);
    const QString name = options.words().constFirst();
    if (name.isEmpty())
        return fail(u"No project name entered. A project must have a unique name."_s);
    // The project sheet's preset: the default wage, rounding off with a step of 5 minutes.
    float wage = m_preferences.floatForKey(u"hourlyWage");
    if (options.has(u"--wage"_s)) {
        const std::optional<double> value = CliValues::number(options.value(u"--wage"_s));
        if (!value || *value < 0)
            return fail(
                u"\"%1\" is not a wage (a number such as 12.5)"_s.arg(options.value(u"--wage"_s)));
        wage = float(*value);
    }
    int rounding[3] = {0, 5, 0};
    const struct {
        QString option;
        int lowest;
        int highest;
    } roundingOptions[3] = {
        {u"--round-what"_s, 0, 2}, {u"--round-to"_s, 1, 60}, {u"--round-type"_s, 0, 2}};
    for (int i = 0; i < 3; ++i) {
        const auto &[option, lowest, highest] = roundingOptions[i];
        if (!options.has(option))
            continue;
        const std::optional<int> value = CliValues::integer(options.value(option), lowest, highest);
        if (!value)
            return fail(
                u"%1 takes a whole number from %2 to %3"_s.arg(option).arg(lowest).arg(highest));
        rounding[i] = *value;
    }
    int customer = -1;
    if (options.has(u"--customer"_s)) {
        const QString customerName = options.value(u"--customer"_s);
        for (const auto &stored : storedCustomers()) {
            if (stored->name() == customerName) {
                customer = stored->customerID();
                break;
            }
        }
        if (customer == -1)
            return fail(u"Unknown customer \"%1\""_s.arg(customerName));
    }
    return m_file.change([&](CliDocument &document, QStringList &done) {
        if (document.projectNamed(name))
            return fail(u"A project named \"%1\" already exists."_s.arg(name));
        document.addProject(std::make_shared<Project>(name, options.value(u"--description"_s), wage,
                                                      rounding[0], rounding[1], rounding[2],
                                                      customer, options.value(u"--tags"_s)));
        done << u"Added project \"%1\""_s.arg(name);
        return int(CliConsole::Success);
    });
}

int CliCommands::addEntry(const QStringList &args) {
    CliOptions options(
        {u"--day"_s, u"--duration"_s, u"--from"_s, u"--to"_s, u"--comment"_s, u"--tags"_s});
    if (!options.parse(args))
        return fail(options.error());
    if (options.words().size() != 1)
        return fail(u"add-entry needs exactly one PROJECT"_s);
    const bool byDay = options.has(u"--day"_s) && options.has(u"--duration"_s);
    const bool byPeriod = options.has(u"--from"_s) && options.has(u"--to"_s);
    if (byDay == byPeriod || (byDay && (options.has(u"--from"_s) || options.has(u"--to"_s))) ||
        (byPeriod && (options.has(u"--day"_s) || options.has(u"--duration"_s))))
        return fail(u"add-entry needs --day and --duration, or --from and --to"_s);
    auto entry = std::make_shared<Entry>();
    if (byDay) {
        const std::optional<QDate> day = CliValues::day(options.value(u"--day"_s));
        if (!day)
            return fail(u"\"%1\" is not a day (DD.MM.YYYY)"_s.arg(options.value(u"--day"_s)));
        const std::optional<int> minutes = CliValues::duration(options.value(u"--duration"_s));
        if (!minutes)
            return fail(u"\"%1\" is not a duration (HH:MM)"_s.arg(options.value(u"--duration"_s)));
        entry->setDate(StoredForms::dateText(*day));
        entry->setTime(*minutes);
    } else {
        std::optional<QDateTime> ends[2];
        const QString names[2] = {u"--from"_s, u"--to"_s};
        for (int i = 0; i < 2; ++i) {
            ends[i] = CliValues::moment(options.value(names[i]));
            if (!ends[i])
                return fail(
                    u"\"%1\" is not a moment (DD.MM.YYYY HH:MM)"_s.arg(options.value(names[i])));
        }
        const QDateTime &from = *ends[0];
        const QDateTime &to = *ends[1];
        // The entry sheet's texts for a period that ends before it starts.
        if (to < from)
            return fail(u"Date range error. The 'to' time must be after the 'from' time."_s);
        entry->setHasPeriod(true);
        entry->setFromDate(StoredForms::dateText(from.date()));
        entry->setFromTime(StoredForms::timeText(from.time()));
        entry->setToDate(StoredForms::dateText(to.date()));
        entry->setToTime(StoredForms::timeText(to.time()));
        entry->setTime(int(from.secsTo(to) / 60));
    }
    entry->setComment(options.value(u"--comment"_s));
    entry->setTags(options.value(u"--tags"_s));
    return m_file.changeProject(
        options.words().constFirst(), [&](Project &project, QStringList &done) {
            project.addEntry(entry);
            done << u"Added entry %1 of \"%2\" (%3)"_s.arg(project.entries().size())
                        .arg(project.name(), hoursAndMinutes(entry->effectiveDuration()));
            return int(CliConsole::Success);
        });
}

int CliCommands::addFee(const QStringList &args) {
    CliOptions options({u"--day"_s, u"--amount"_s, u"--comment"_s, u"--tags"_s});
    if (!options.parse(args))
        return fail(options.error());
    if (options.words().size() != 1)
        return fail(u"add-fee needs exactly one PROJECT"_s);
    if (!options.has(u"--day"_s) || !options.has(u"--amount"_s))
        return fail(u"add-fee needs --day and --amount"_s);
    const std::optional<QDate> day = CliValues::day(options.value(u"--day"_s));
    if (!day)
        return fail(u"\"%1\" is not a day (DD.MM.YYYY)"_s.arg(options.value(u"--day"_s)));
    const std::optional<double> amount = CliValues::number(options.value(u"--amount"_s));
    if (!amount)
        return fail(u"\"%1\" is not an amount (a number such as 120.5)"_s.arg(
            options.value(u"--amount"_s)));
    auto fee = std::make_shared<FlatFeeEntry>();
    fee->setDate(StoredForms::dateText(*day));
    fee->setAmount(float(*amount));
    fee->setComment(options.value(u"--comment"_s));
    fee->setTags(options.value(u"--tags"_s));
    return m_file.changeProject(
        options.words().constFirst(), [&](Project &project, QStringList &done) {
            project.addEntry(fee);
            done << u"Added flat fee %1 of \"%2\" (%3)"_s.arg(project.entries().size())
                        .arg(project.name(), m_currency->format(fee->amount()));
            return int(CliConsole::Success);
        });
}

int CliCommands::listFilters(const QStringList &args) {
    if (!takesNothing(u"filters"_s, args))
        return CliConsole::BadArguments;
    const QString path = m_supportFolder + u"/filters.plist"_s;
    QString error;
    const std::optional<QList<Filter::Pointer>> filters = CliExport::readSavedFilters(path, error);
    if (!filters)
        return m_console.fail(u"Cannot read \"%1\": %2"_s.arg(path, error), CliConsole::Unreadable);
    QJsonArray array;
    TextTable table;
    for (const auto &filter : *filters) {
        const bool projects = bool(filter->projectQuery());
        const bool entries = bool(filter->entryQuery());
        if (m_console.json()) {
            array.append(QJsonObject{{u"name"_s, filter->name()},
                                     {u"projectsQuery"_s, projects},
                                     {u"entriesQuery"_s, entries}});
            continue;
        }
        QStringList queries;
        if (projects)
            queries << u"projects"_s;
        if (entries)
            queries << u"entries"_s;
        table.addRow({filter->name(), queries.join(u", "_s)});
    }
    if (m_console.json())
        m_console.printJson(array);
    else
        table.print(m_console.out());
    return CliConsole::Success;
}

int CliCommands::convert(const QStringList &args) {
    CliOptions options({u"--output"_s});
    if (!options.parse(args))
        return fail(options.error());
    if (!options.words().isEmpty() || options.value(u"--output"_s).isEmpty())
        return fail(u"convert needs --output PATH and nothing else"_s);
    if (!m_file.hasPath())
        return m_file.failWithoutPath();
    const QString target = QFileInfo(options.value(u"--output"_s)).absoluteFilePath();
    const QString written = u"Wrote \"%1\" in the current layout"_s.arg(target);
    if (target == CliDocument(m_file.path()).path()) {
        return m_file.change([&](CliDocument &document, QStringList &done) {
            document.setChanged();
            done << written;
            return int(CliConsole::Success);
        });
    }
    return m_file.read([&](CliDocument &document) {
        ProjectFileLock lock(target);
        if (!lock.lock())
            return m_console.fail(lock.errorString(), CliConsole::Unreadable);
        const ProjectFile::SaveResult saved = ProjectFile::save(target, document.projects());
        if (!saved.ok)
            return m_console.fail(u"Cannot write \"%1\": %2"_s.arg(target, saved.error),
                                  CliConsole::Unreadable);
        m_console.out() << written << '\n';
        return int(CliConsole::Success);
    });
}

int CliCommands::customers(const QStringList &args) {
    CliCustomers customers(m_console, m_preferences, m_supportFolder + u"/customers.plist"_s,
                           m_file);
    return customers.run(args);
}

int CliCommands::exportReport(const QStringList &args) {
    CliExport report(m_console, m_preferences, m_supportFolder, *m_currency, m_file,
                     m_rendererFactory);
    return report.run(args);
}
