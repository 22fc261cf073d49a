#include "common/FileDialogPanels.h"
#include "common/MessageBoxAlerts.h"
#include "common/QtDesktopServices.h"
#include "mainwindow/MainWindow.h"
#include "mainwindow/ProjectController.h"
#include "mainwindow/SingleInstance.h"
#include "model/HelpFunctions.h"
#include "model/ProjectBackups.h"
#include "model/ProjectCollection.h"
#include "platform/CurrencyFormatter.h"
#include "platform/Folders.h"
#include "platform/Preferences.h"
#include "platform/VersionMigration.h"
#include "render/WebEngineSetup.h"
#include "stores/CustomerStorage.h"
#include "stores/TagStorage.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QIcon>
#include <QUrl>

#include <cstdio>
#include <string_view>

using namespace Qt::StringLiterals;

namespace {

// --help and --version are answered by a process without a window system, so that they work
// without a display (manual pages are made from them at build time) and touch no user file.
// --help-all lists the window system's options as well, so it takes the full start. Options that
// only the window system knows (-platform NAME) are passed over here.
bool asksForHelpOrVersion(int argc, char *argv[]) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument(argv[i]);
        if (argument == "--")
            return false;
        if (argument == "-h" || argument == "--help" || argument == "-v" || argument == "--version")
            return true;
    }
    return false;
}

} // namespace

int main(int argc, char *argv[]) {
    QCoreApplication::setApplicationName(u"Hourfold"_s);
    QCoreApplication::setOrganizationName(u"Hourfold"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(HOURFOLD_VERSION));
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Time tracking for freelancers."_s);
    parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addPositionalArgument(u"file"_s, u"A project file to open."_s, u"[file]"_s);
    if (asksForHelpOrVersion(argc, argv)) {
        const QCoreApplication app(argc, argv);
        parser.parse(QCoreApplication::arguments());
        // Both print their text and end the process.
        if (parser.isSet(version))
            parser.showVersion();
        parser.showHelp();
    }

    // The previous version's preferences and support folder come over before anything reads them.
    VersionMigration::migrate(VersionMigration::defaultPaths());
    WebEngineSetup::prepareProcess();
    QApplication app(argc, argv);
    QApplication::setDesktopFileName(u"hourfold"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(
        QIcon::fromTheme(u"hourfold"_s, QIcon(Folders::imagePath(u"hourfold"_s))));
    parser.process(app);
    QStringList files;
    // Desktop launchers and the recent-files list hand over file:// addresses as well as paths.
    for (const QString &argument : parser.positionalArguments()) {
        const QUrl url(argument);
        files << QFileInfo(url.isLocalFile() ? url.toLocalFile() : argument).absoluteFilePath();
    }

    SingleInstance instance;
    if (!instance.claim()) {
        if (instance.handOver(files))
            return 0;
        std::fputs("hourfold: another copy is running but does not answer; starting anyway.\n",
                   stderr);
    }

    VersionMigration::createSupportFolder(HelpFunctions::applicationSupportFolder());
    ProjectBackups::setShared(HelpFunctions::applicationSupportFolder() + u"/Backups"_s);
    Preferences &preferences = Preferences::shared();
    ProjectCollection collection(preferences);
    CurrencyFormatter currency;
    collection.setCurrencyFormatter(&currency);
    CustomerStorage customers(HelpFunctions::applicationSupportFolder() + u"/customers.plist"_s,
                              collection, preferences);
    customers.loadCustomers();
    collection.setCustomerDirectory(&customers);
    MessageBoxAlerts alerts;
    FileDialogPanels panels;
    QtDesktopServices desktop;

    TagStorage tags(HelpFunctions::applicationSupportFolder() + u"/tags.plist"_s);
    tags.loadTags();
    MainWindow window({preferences, collection, customers, tags, currency, alerts, panels, desktop,
                       HelpFunctions::applicationSupportFolder() + u"/filters.plist"_s,
                       Folders::resourceFolder() + u"/quickfilters.plist"_s});
    alerts.setParentWindow(&window);
    panels.setParentWindow(&window);
    // Answered after the bus call has returned: opening may ask questions, and the second launch
    // must not wait for the user.
    QObject::connect(&instance, &SingleInstance::openRequested, &window, &MainWindow::openFiles,
                     Qt::QueuedConnection);
    // The window has settled the quit already: end the event loop without asking windows again.
    QObject::connect(&window, &MainWindow::terminated, &app, [] { QCoreApplication::exit(0); });
    // The session ending (log out) quits like the Quit command.
    QObject::connect(&app, &QGuiApplication::commitDataRequest, &window,
                     [&window] { window.quit(); });
    window.restoreWindowState();
    // The document is read before the window first shows, so that its first frame has the file's
    // name and list rather than an untitled one. The welcome question comes over the window.
    window.startUp(files.isEmpty(), false);
    for (const QString &file : std::as_const(files))
        window.controller().openFile(file);
    // With the mini window chosen, that one comes instead.
    if (!preferences.boolForKey(u"showMiniWindow"))
        window.show();
    window.controller().welcomeIfDue();
    return app.exec();
}
