#include "desktop/MiniWindowLogic.h"

#include "model/Clock.h"
#include "model/Entry.h"
#include "model/Project.h"
#include "model/ProjectCollection.h"

MiniWindowLogic::MiniWindowLogic(ProjectCollection &collection)
    : m_collection(collection) {}

void MiniWindowLogic::reloadData() {
    const int oldIndex = m_selectedIndex;
    const std::shared_ptr<Entry> remembered =
        oldIndex > 0 && oldIndex < m_listItems.size() ? m_listItems.at(oldIndex) : nullptr;
    m_listItems = m_collection.workingEntries();
    const qsizetype found = remembered ? m_listItems.indexOf(remembered) : -1;
    const int target = found >= 0 ? int(found) : qMax(oldIndex - 1, 0);
    m_selectedIndex = 0;
    m_shrinkCounter = 0;
    // The list scrolls back to the row without animation.
    for (int step = 0; step < target && down(); ++step) {
    }
}

bool MiniWindowLogic::up() {
    if (m_selectedIndex <= 0)
        return false;
    --m_selectedIndex;
    if (m_shrinkCounter > 0)
        --m_shrinkCounter;
    return true;
}

bool MiniWindowLogic::down() {
    if (!isDownEnabled())
        return false;
    ++m_selectedIndex;
    if (m_selectedIndex > openingRows - 1)
        ++m_shrinkCounter;
    return true;
}

void MiniWindowLogic::play() {
    playOfItem(selectedEntry());
}

void MiniWindowLogic::playOfItem(const std::shared_ptr<Entry> &entry) {
    if (entry)
        pauseOrResume(*entry, m_collection);
}

void MiniWindowLogic::pauseOrResume(Entry &entry, ProjectCollection &collection) {
    if (entry.isPaused())
        entry.resume();
    else
        entry.pause();
    collection.projectChanged(entry.parent());
}

QString MiniWindowLogic::durationString(const Entry &entry) {
    const QDateTime start = entry.fromAsDate();
    const QDateTime now = Clock::now();
    const int minutes = int(start.secsTo(now) / 60) - entry.pauseTimeWithPeriodFrom(start, now);
    return ProjectCollection::makeStringFromMinutes(minutes);
}

QString MiniWindowLogic::projectAndDuration(const Entry &entry) {
    const QString project = entry.parent() ? entry.parent()->name() : QString();
    return project + QStringLiteral(": ") + durationString(entry);
}

QRect MiniWindowLogic::listFrame(int width) const {
    const int top = (m_shrinkCounter - m_selectedIndex) * rowHeight;
    const int height = int(m_listItems.size() - m_shrinkCounter) * rowHeight;
    return {0, top, width, height};
}
