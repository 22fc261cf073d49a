#include "ProjectTotalsWindow.h"
#include "model/HelpFunctions.h"
#include "platform/VersionMigration.h"
#include "render/WebEngineSetup.h"

#include <QApplication>
#include <QCommandLineParser>

int main(int argc, char *argv[]) {
    // The previous version's preferences and support folder come over before anything reads them.
    VersionMigration::migrate(VersionMigration::defaultPaths());
    WebEngineSetup::prepareProcess();
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Hourfold"));
    QApplication::setOrganizationName(QStringLiteral("Hourfold"));
    QApplication::setApplicationVersion(QStringLiteral(HOURFOLD_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Time tracking for freelancers."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("A project file to open."));
    parser.process(app);
    VersionMigration::createSupportFolder(HelpFunctions::applicationSupportFolder());

    ProjectTotalsWindow window;
    window.show();
    if (!parser.positionalArguments().isEmpty())
        window.openFile(parser.positionalArguments().constFirst());
    return app.exec();
}
