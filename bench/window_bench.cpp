// Times the main window with a large document: opening it (document read, list built and first
// painted), scrolling page by page, the 5-second refresh, and the processor time it takes while
// idle. Usage: hourfold-window-bench FILE [IDLE_SECONDS]
#include "ProjectListView.h"
#include "common/FilePanels.h"
#include "mainwindow/MainWindow.h"
#include "mainwindow/ProjectController.h"
#include "model/ProjectCollection.h"
#include "platform/CurrencyFormatter.h"
#include "platform/DesktopServices.h"
#include "platform/Preferences.h"
#include "platform/UserAlerts.h"
#include "stores/CustomerStorage.h"
#include "stores/TagStorage.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

// Panels and alerts are never shown: the document opens at start without any question.
class Silent : public UserAlerts, public FilePanels, public DesktopServices {
public:
    void beep() override {}
    int runModal(const Alert &) override { return firstButton; }
    void beginOpenPanel(const QString &, Done done) override { done({}); }
    void beginSavePanel(const QString &, Done done) override { done({}); }
    bool openUrl(const QString &) override { return false; }
    bool openPath(const QString &) override { return false; }
    bool revealPath(const QString &) override { return false; }
};

double cpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

} // namespace

int main(int argc, char *argv[]) {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2) {
        std::fputs("usage: hourfold-window-bench FILE [IDLE_SECONDS]\n", stderr);
        return 1;
    }
    const int idleSeconds = arguments.size() > 2 ? arguments[2].toInt() : 30;
    QTemporaryDir folder;
    Preferences preferences(folder.filePath(u"bench.conf"_s));
    Preferences::setShared(&preferences);
    preferences.setObject(arguments[1], u"LastOpenFile");
    preferences.setObject(false, u"showInfo");
    preferences.setObject(true, u"DrawerState");

    QElapsedTimer clock;
    clock.start();
    ProjectCollection collection(preferences);
    CurrencyFormatter currency;
    collection.setCurrencyFormatter(&currency);
    CustomerStorage customers(folder.filePath(u"customers.plist"_s), collection, preferences);
    collection.setCustomerDirectory(&customers);
    Silent user;
    TagStorage tags(folder.filePath(u"tags.plist"_s));
    MainWindow window({preferences, collection, customers, tags, currency, user, user, user,
                       folder.filePath(u"filters.plist"_s), folder.filePath(u"none.plist"_s)});
    window.resize(1280, 800);
    window.show();
    window.startUp();
    window.listView()->viewport()->repaint();
    QApplication::processEvents();
    const double openMs = double(clock.nsecsElapsed()) / 1e6;

    QScrollBar *bar = window.listView()->verticalScrollBar();
    const int pages = 200;
    clock.restart();
    for (int page = 0; page < pages; ++page) {
        bar->setValue(bar->maximum() * page / pages);
        window.listView()->viewport()->repaint();
    }
    const double scrollMs = double(clock.nsecsElapsed()) / 1e6 / pages;

    const int refreshes = 50;
    clock.restart();
    for (int i = 0; i < refreshes; ++i) {
        emit window.controller().refresh();
        window.listView()->viewport()->repaint();
    }
    const double refreshMs = double(clock.nsecsElapsed()) / 1e6 / refreshes;

    const double cpuBefore = cpuSeconds();
    clock.restart();
    QTimer::singleShot(idleSeconds * 1000, &app, [] { QCoreApplication::exit(0); });
    QApplication::exec();
    const double idlePercent = 100.0 * (cpuSeconds() - cpuBefore) / (double(clock.elapsed()) / 1e3);

    std::printf("open (read, list, first paint): %8.1f ms   (target < 2000 ms)\n", openMs);
    std::printf("scroll one page and paint:      %8.2f ms\n", scrollMs);
    std::printf("5-second refresh and paint:     %8.2f ms\n", refreshMs);
    std::printf("idle processor time:            %8.2f %%   (target < 1 %%, over %d s)\n",
                idlePercent, idleSeconds);
    return openMs < 2000 && idlePercent < 1.0 ? 0 : 3;
}
