#include "CliCommands.h"
#include "ProcessReportRenderer.h"
#include "model/HelpFunctions.h"
#include "model/ProjectBackups.h"
#include "platform/Preferences.h"

#include <QGuiApplication>
#include <QLoggingCategory>
#include <QTextStream>

#include <cstdio>
#include <memory>

namespace {

std::unique_ptr<QCoreApplication> makeApplication(CliCommands::Application kind, int &argc,
                                                  char **argv) {
    if (kind == CliCommands::Application::Core)
        return std::make_unique<QCoreApplication>(argc, argv);
    // Reports are drawn without a display when there is none.
    if (!qEnvironmentVariableIsSet("DISPLAY") && !qEnvironmentVariableIsSet("WAYLAND_DISPLAY") &&
        !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // A PDF export lays out its report here and has it rendered by the helper process.
    return std::make_unique<QGuiApplication>(argc, argv);
}

} // namespace

int main(int argc, char *argv[]) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const auto app = makeApplication(CliCommands::applicationFor(arguments), argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Hourfold"));
    QCoreApplication::setOrganizationName(QStringLiteral("Hourfold"));
    // The commands print their own messages; the library's log says the same again.
    // QT_LOGGING_RULES still turns it on.
    QLoggingCategory::setFilterRules(QStringLiteral("hourfold.*=false"));
    ProjectBackups::setShared(HelpFunctions::applicationSupportFolder() +
                              QStringLiteral("/Backups"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    CliCommands commands(out, err, Preferences::defaultFilePath(),
                         HelpFunctions::applicationSupportFolder(),
                         [] { return std::make_unique<ProcessReportRenderer>(); });
    const int status = commands.run(arguments);
    out.flush();
    err.flush();
    return status;
}
