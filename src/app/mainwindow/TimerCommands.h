#pragma once

#include <functional>
#include <memory>

class Entry;
class Project;
class ProjectCollection;
class ProjectItem;

// Pause and resume on the selected row of the list, and what a segment of the action column
// does for a row of each kind. Pausing and resuming change entries in place and mark the
// document changed; they are not undo steps (the pause list keeps the record).
class TimerCommands {
public:
    // What a click on the action column asks for.
    enum class Command { StartTimer, Pause, Resume, Stop };

    explicit TimerCommands(ProjectCollection &collection);

    // An entry pauses; a project pauses every timed entry it holds (flat fees skipped).
    void pause(const std::shared_ptr<Project> &project, const std::shared_ptr<ProjectItem> &item);
    // An entry resumes; a project resumes every entry of it that is paused.
    void resume(const std::shared_ptr<Project> &project, const std::shared_ptr<ProjectItem> &item);

    // Segments 0, 1, 2: an entry resumes, pauses, stops; a project or a flat fee starts a timer,
    // resumes, pauses. The orders differ on purpose.
    static Command commandForSegment(const ProjectItem *item, int segment);

private:
    // Changes the item when it is a timed entry, or the project's timed entries (only the paused
    // ones when asked), and marks the document changed.
    void apply(const std::shared_ptr<Project> &project, const std::shared_ptr<ProjectItem> &item,
               const std::function<void(Entry &)> &change, bool onlyPausedOfProject);

    ProjectCollection &m_collection;
};
