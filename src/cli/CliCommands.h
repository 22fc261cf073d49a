#pragma once

#include "CliConsole.h"
#include "CliExport.h"
#include "CliFileAccess.h"
#include "platform/Preferences.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <functional>
#include <memory>
#include <optional>

class Customer;
class CurrencyFormatter;
class ReportRenderer;

// The commands of hourfold-cli. Normal output goes to out, messages about problems to err; run()
// returns the exit status. Preferences are only read, never written; while the object lives they
// are the process's shared ones, so dates and weeks follow them.
class CliCommands {
public:
    // What the process needs besides the core: a window system (offscreen when there is no
    // display) for RTF, and Qt WebEngine as well for PDF.
    enum class Application { Core, Gui, WebEngine };
    using RendererFactory = CliExport::RendererFactory;

    // The support folder holds customers.plist, filters.plist and the user's styles; the
    // renderer factory is asked for an HTML engine only for a PDF export.
    CliCommands(QTextStream &out, QTextStream &err, const QString &preferencesPath,
                const QString &supportFolder, RendererFactory rendererFactory = {});
    ~CliCommands();

    // The arguments after the program's name.
    int run(const QStringList &arguments);

    // Decided from the arguments alone, before any application object exists.
    static Application applicationFor(const QStringList &arguments);

private:
    enum class TimerAction { Pause, Resume, Stop };

    int fail(const QString &message) { return m_console.fail(message); }
    // No arguments for a command that takes none.
    bool takesNothing(const QString &command, const QStringList &args);

    int check(const QStringList &args);
    int listProjects(const QStringList &args);
    int listEntries(const QStringList &args);
    int listRunning(const QStringList &args);
    int start(const QStringList &args);
    int changeTimers(TimerAction action, const QStringList &args);
    int changeTimersOf(Project &project, TimerAction action, std::optional<int> index,
                       QStringList &done);
    int addProject(const QStringList &args);
    int addEntry(const QStringList &args);
    int addFee(const QStringList &args);
    int listFilters(const QStringList &args);
    int convert(const QStringList &args);
    int customers(const QStringList &args);
    int exportReport(const QStringList &args);

    // The customers of customers.plist in stored order; none when it cannot be read.
    QList<std::shared_ptr<Customer>> storedCustomers() const;
    QHash<int, QString> customerNames() const;

    CliConsole m_console;
    Preferences m_preferences;
    QString m_supportFolder;
    RendererFactory m_rendererFactory;
    std::unique_ptr<CurrencyFormatter> m_currency;
    CliFileAccess m_file;
};
