#include "common/FileDialogPanels.h"
#include "common/MessageBoxAlerts.h"
#include "common/QtDesktopServices.h"
#include "mainwindow/MainWindow.h"
#include "mainwindow/ProjectController.h"
#include "mainwindow/SingleInstance.h"
#include "model/HelpFunctions.h"
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

using namespace Qt::StringLiterals;

int main(int argc, char *argv[]) {
    // The previous version's preferences and support folder come over before anything reads them.
    VersionMigration::migrate(VersionMigration::defaultPaths());
    WebEngineSetup::prepareProcess();
    QApplication app(argc, argv);
    QApplication::setApplicationName(u"Hourfold"_s);
    QApplication::setOrganizationName(u"Hourfold"_s);
    QApplication::setApplicationVersion(QStringLiteral(HOURFOLD_VERSION));
    QApplication::setDesktopFileName(u"hourfold"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(
        QIcon::fromTheme(u"hourfold"_s, QIcon(Folders::imagePath(u"hourfold"_s))));

    QCommandLineParser parser;
    parser.setApplicationDescription(u"Time tracking for freelancers."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(u"file"_s, u"A project file to open."_s, u"[file]"_s);
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
