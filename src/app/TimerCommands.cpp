#include "TimerCommands.h"

#include "model/Entry.h"
#include "model/ProjectCollection.h"

TimerCommands::TimerCommands(ProjectCollection &collection)
    : m_collection(collection) {}

void TimerCommands::pause(const std::shared_ptr<Project> &project,
                          const std::shared_ptr<ProjectItem> &item) {
    if (item) {
        if (!item->isEntry())
            return;
        static_cast<Entry &>(*item).pause();
    } else if (project) {
        for (const auto &each : project->entries()) {
            if (each->isEntry())
                static_cast<Entry &>(*each).pause();
        }
    } else {
        return;
    }
    m_collection.setDataChanged(true);
}

void TimerCommands::resume(const std::shared_ptr<Project> &project,
                           const std::shared_ptr<ProjectItem> &item) {
    if (item) {
        if (!item->isEntry())
            return;
        static_cast<Entry &>(*item).resume();
    } else if (project) {
        for (const auto &each : project->entries()) {
            if (each->isEntry() && each->isPaused())
                static_cast<Entry &>(*each).resume();
        }
    } else {
        return;
    }
    m_collection.setDataChanged(true);
}

TimerCommands::Command TimerCommands::commandForSegment(const ProjectItem *item, int segment) {
    if (item && item->isEntry()) {
        static constexpr Command entry[] = {Command::Resume, Command::Pause, Command::Stop};
        return entry[qBound(0, segment, 2)];
    }
    static constexpr Command project[] = {Command::StartTimer, Command::Resume, Command::Pause};
    return project[qBound(0, segment, 2)];
}
