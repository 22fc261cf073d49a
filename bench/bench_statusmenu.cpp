// The tray's status menu over a document of 500 projects with 50 running or paused timers: one
// refresh as the 5-second refresh does it (the durations move on: argument 0), one after a
// project was renamed and a timer stopped or started (argument 1), and the first filling of a new
// menu, every item made (argument 2).
// Target: under 10 ms. Run it with QT_QPA_PLATFORM=offscreen (the default when unset).

#include "desktop/StatusMenu.h"
#include "desktop/TrayIcon.h"
#include "model/Clock.h"
#include "model/Project.h"
#include "model/ProjectCollection.h"
#include "platform/Preferences.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int projectCount = 500;
constexpr int timerCount = 50;

class SilentTray : public TrayIcon {
public:
    bool isAvailable() const override { return true; }
    void show(QMenu *) override {}
    void hide() override {}
    bool isShown() const override { return true; }
    void setToolTip(const QString &) override {}
};

void BM_RefreshStatusMenu(benchmark::State &state) {
    Clock::setNow(QDateTime(QDate(2026, 11, 25), QTime(9, 0)));
    QTemporaryDir folder;
    Preferences preferences(folder.filePath(u"bench.conf"_s));
    ProjectCollection collection(preferences);
    for (int i = 0; i < projectCount; ++i) {
        collection.addProject(std::make_shared<Project>(u"Project %1"_s.arg(i), u""_s, 50.0f, 0, 0,
                                                        0, i % 7 == 0 ? -1 : i % 20, u""_s));
    }
    const auto &projects = collection.projectArray();
    for (int i = 0; i < timerCount; ++i) {
        const auto entry = collection.startTimerInProject(projects.at(i * 7 % projectCount));
        if (i % 3 == 0)
            entry->pause();
        Clock::advance(97);
    }
    const auto colour = [](int customer) {
        return customer < 0 ? QColor() : QColor::fromHsv(customer * 18, 160, 220);
    };
    StatusMenuLogic logic(collection, colour);
    SilentTray tray;
    StatusMenu menu(preferences, logic, tray);
    menu.activate();
    const auto first = projects.first();
    const auto timer = collection.workingEntries().first();
    for (auto _ : state) {
        if (state.range(0) == 2) {
            StatusMenu fresh(preferences, logic, tray);
            fresh.activate();
            continue;
        }
        if (state.range(0) == 1) {
            first->setName(first->name() + u'.');
            timer->setIsWorking(!timer->isWorking());
        }
        Clock::advance(60);
        menu.refreshStatusMenu();
        // The items replaced go at the end of the event-loop turn, as they do in the program.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    Clock::reset();
}

} // namespace

BENCHMARK(BM_RefreshStatusMenu)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
