#include "desktop/StatusMenuLogic.h"

#include "desktop/MiniWindowLogic.h"
#include "model/Entry.h"
#include "model/Project.h"
#include "model/ProjectCollection.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

QString tr(const char *text) {
    return QCoreApplication::translate("StatusMenu", text);
}

} // namespace

StatusMenuLogic::StatusMenuLogic(ProjectCollection &collection, CustomerColour customerColour)
    : m_collection(collection)
    , m_customerColour(std::move(customerColour)) {}

QList<StatusMenuLogic::EntryLine> StatusMenuLogic::entryLines() const {
    QList<EntryLine> lines;
    for (const auto &entry : m_collection.workingEntries()) {
        const bool paused = entry->isPaused();
        const QString project = entry->parent() ? entry->parent()->name() : QString();
        lines.append({entry, u"%1: %2"_s.arg(project, MiniWindowLogic::durationString(*entry)),
                      paused ? u"btn_pause"_s : u"btn_play"_s,
                      paused ? tr("Resume") : tr("Pause")});
    }
    return lines;
}

QList<StatusMenuLogic::ProjectLine> StatusMenuLogic::projectLines() const {
    QList<ProjectLine> lines;
    const auto &projects = m_collection.projectArray();
    lines.reserve(projects.size());
    for (const auto &project : projects)
        lines.append({project, m_customerColour(project->customer())});
    return lines;
}

QString StatusMenuLogic::toolTip(const QList<EntryLine> &lines) const {
    QStringList text{u"Hourfold"_s};
    for (const EntryLine &line : lines)
        text << (line.entry->isPaused() ? tr("%1 (paused)").arg(line.title) : line.title);
    if (lines.isEmpty())
        text << tr("No timer is running");
    return text.join(u'\n');
}

std::shared_ptr<Entry> StatusMenuLogic::startTimer(const std::shared_ptr<Project> &project) {
    return m_collection.startTimerInProject(project);
}

void StatusMenuLogic::pauseResume(Entry &entry) {
    MiniWindowLogic::pauseOrResume(entry, m_collection);
}

void StatusMenuLogic::stop(Entry &entry) {
    entry.stop();
    m_collection.projectChanged(entry.parent());
}
