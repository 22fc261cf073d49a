#include "mainwindow/TimerCommands.h"

#include "model/Entry.h"
#include "model/ProjectCollection.h"

#include <tuple>

TimerCommands::TimerCommands(ProjectCollection &collection)
    : m_collection(collection) {}

void TimerCommands::pause(const std::shared_ptr<Project> &project,
                          const std::shared_ptr<ProjectItem> &item) {
    apply(
        project, item, [](Entry &entry) { entry.pause(); }, false);
}

void TimerCommands::resume(const std::shared_ptr<Project> &project,
                           const std::shared_ptr<ProjectItem> &item) {
    apply(
        project, item, [](Entry &entry) { entry.resume(); }, true);
}

void TimerCommands::apply(const std::shared_ptr<Project> &project,
                          const std::shared_ptr<ProjectItem> &item,
                          const std::function<void(Entry &)> &change, bool onlyPausedOfProject) {
    bool changed = false;
    // Pausing a paused entry or resuming a running one changes nothing and writes nothing.
    const auto changeEntry = [&](ProjectItem &each) {
        auto &entry = static_cast<Entry &>(each);
        const auto before =
            std::tuple(entry.isWorking(), entry.isPaused(), entry.pauseEntries().size());
        change(entry);
        changed |=
            before != std::tuple(entry.isWorking(), entry.isPaused(), entry.pauseEntries().size());
    };
    if (item) {
        if (item->isEntry())
            changeEntry(*item);
    } else if (project) {
        for (const auto &each : project->entries()) {
            if (each->isEntry() && (!onlyPausedOfProject || each->isPaused()))
                changeEntry(*each);
        }
    }
    if (changed)
        m_collection.projectChanged(item ? item->parent() : project.get());
}

TimerCommands::Command TimerCommands::commandForSegment(const ProjectItem *item, int segment) {
    if (item && item->isEntry()) {
        static constexpr Command entry[] = {Command::Resume, Command::Pause, Command::Stop};
        return entry[qBound(0, segment, 2)];
    }
    static constexpr Command project[] = {Command::StartTimer, Command::Resume, Command::Pause};
    return project[qBound(0, segment, 2)];
}
