#pragma once

#include "CliConsole.h"
#include "CliExport.h"
#include "CliFileAccess.h"
#include "platform/Preferences.h"

#include <QString>
#include <QStringList>
#include <QTextStream>
#include <memory>

class CurrencyFormatter;

// The commands of hourfold-cli. Normal output goes to out, messages about problems to err; run()
// returns the exit status. Preferences are only read, never written; while the object lives they
// are the process's shared ones, so dates and weeks follow them. Each family of commands has a
// class of its own; this one reads the global options and hands the command to its family.
class CliCommands {
public:
    // What the process needs besides the core: a window system (offscreen when there is no
    // display) for RTF and PDF; the HTML engine that renders PDF runs in a helper process.
    enum class Application { Core, Gui };
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
    int runCommand(const QString &command, const QStringList &args);

    CliConsole m_console;
    Preferences m_preferences;
    QString m_supportFolder;
    RendererFactory m_rendererFactory;
    std::unique_ptr<CurrencyFormatter> m_currency;
    CliFileAccess m_file;
};
