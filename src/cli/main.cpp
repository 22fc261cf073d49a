#include "CliCommands.h"
#include "model/HelpFunctions.h"
#include "platform/Preferences.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTextStream>

#include <cstdio>

int main(int argc, char *argv[]) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Hourfold"));
    QCoreApplication::setOrganizationName(QStringLiteral("Hourfold"));
    // The commands print their own messages; the library's log says the same again.
    // QT_LOGGING_RULES still turns it on.
    QLoggingCategory::setFilterRules(QStringLiteral("hourfold.*=false"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    CliCommands commands(out, err, Preferences::defaultFilePath(),
                         HelpFunctions::applicationSupportFolder() +
                             QStringLiteral("/customers.plist"));
    const int status = commands.run(QCoreApplication::arguments().mid(1));
    out.flush();
    err.flush();
    return status;
}
