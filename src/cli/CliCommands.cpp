#include "CliCommands.h"

#include "CliAdditions.h"
#include "CliCustomers.h"
#include "CliFileCommands.h"
#include "CliGlobalOptions.h"
#include "CliHelp.h"
#include "CliImport.h"
#include "CliListings.h"
#include "CliOptions.h"
#include "CliTimers.h"
#include "export/ReportRenderer.h"
#include "platform/CurrencyFormatter.h"

#include <QHash>

using namespace Qt::StringLiterals;

CliCommands::CliCommands(QTextStream &out, QTextStream &err, const QString &preferencesPath,
                         const QString &supportFolder, RendererFactory rendererFactory)
    : m_console(out, err)
    , m_preferences(preferencesPath)
    , m_supportFolder(supportFolder)
    , m_rendererFactory(std::move(rendererFactory))
    , m_currency(std::make_unique<CurrencyFormatter>())
    , m_file(m_console, *m_currency, m_preferences) {
    Preferences::setShared(&m_preferences);
}

CliCommands::~CliCommands() {
    Preferences::setShared(nullptr);
}

CliCommands::Application CliCommands::applicationFor(const QStringList &arguments) {
    CliGlobalOptions global;
    if (!global.parse(arguments) || global.help() || global.commandHelp() || global.version() ||
        global.rest().value(0) != u"export")
        return Application::Core;
    CliOptions options(CliExport::valuedOptions(), CliExport::switches());
    if (!options.parse(global.rest().mid(1)))
        return Application::Core;
    const QString format = options.value(u"--format"_s);
    return format == u"rtf" || format == u"pdf" ? Application::Gui : Application::Core;
}

int CliCommands::run(const QStringList &arguments) {
    CliGlobalOptions global;
    if (!global.parse(arguments))
        return m_console.fail(global.error());
    if (global.help()) {
        m_console.out() << CliHelp::general();
        return CliConsole::Success;
    }
    if (global.version()) {
        m_console.out() << u"hourfold-cli " HOURFOLD_VERSION "\n"_s;
        return CliConsole::Success;
    }
    m_console.setJson(global.json());
    m_file.setPath(global.file().isEmpty() ? m_preferences.stringForKey(u"LastOpenFile")
                                           : global.file());
    m_file.setLockWait(global.waitSeconds());
    QStringList rest = global.rest();
    if (rest.isEmpty())
        return m_console.fail(u"No command given; see hourfold-cli --help"_s);
    const QString command = rest.takeFirst();
    if (!CliHelp::commands().contains(command))
        return m_console.fail(u"Unknown command \"%1\"; see hourfold-cli --help"_s.arg(command));
    if (global.commandHelp()) {
        m_console.out() << CliHelp::command(command);
        return CliConsole::Success;
    }
    return runCommand(command, rest);
}

int CliCommands::runCommand(const QString &command, const QStringList &args) {
    CliFileCommands file(m_console, *m_currency, m_file);
    CliListings listings(m_console, *m_currency, m_file, m_supportFolder);
    CliTimers timers(m_console, m_file);
    CliAdditions additions(m_console, m_preferences, *m_currency, m_file, m_supportFolder);
    using Handler = std::function<int(const QStringList &)>;
    const QHash<QString, Handler> handlers{
        {u"check"_s, [&](const QStringList &a) { return file.check(a); }},
        {u"convert"_s, [&](const QStringList &a) { return file.convert(a); }},
        {u"backups"_s, [&](const QStringList &a) { return file.backups(a); }},
        {u"projects"_s, [&](const QStringList &a) { return listings.projects(a); }},
        {u"entries"_s, [&](const QStringList &a) { return listings.entries(a); }},
        {u"running"_s, [&](const QStringList &a) { return listings.running(a); }},
        {u"filters"_s, [&](const QStringList &a) { return listings.filters(a); }},
        {u"start"_s, [&](const QStringList &a) { return timers.start(a); }},
        {u"pause"_s, [&](const QStringList &a) { return timers.change(command, a); }},
        {u"resume"_s, [&](const QStringList &a) { return timers.change(command, a); }},
        {u"stop"_s, [&](const QStringList &a) { return timers.change(command, a); }},
        {u"add-project"_s, [&](const QStringList &a) { return additions.addProject(a); }},
        {u"add-entry"_s, [&](const QStringList &a) { return additions.addEntry(a); }},
        {u"add-fee"_s, [&](const QStringList &a) { return additions.addFee(a); }},
        {u"customers"_s,
         [&](const QStringList &a) {
             return CliCustomers(m_console, m_preferences, m_supportFolder + u"/customers.plist"_s,
                                 m_file)
                 .run(a);
         }},
        {u"import"_s,
         [&](const QStringList &a) {
             return CliImport(m_console, m_preferences, m_file, m_supportFolder).run(a);
         }},
        {u"export"_s,
         [&](const QStringList &a) {
             return CliExport(m_console, m_preferences, m_supportFolder, *m_currency, m_file,
                              m_rendererFactory)
                 .run(a);
         }},
    };
    return handlers.value(command)(args);
}
