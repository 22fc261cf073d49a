#pragma once

#include <QDateTime>
#include <QList>
#include <memory>

class Entry;
class ProjectCollection;

// A stretch of time away from the computer (asleep, or idle) while timers ran, and the two ways
// of taking it out of them: as a pause in each, or by stopping them where the absence began. Each
// is one undo step named "Time Away".
class TimeAway {
public:
    TimeAway(const QDateTime &from, const QDateTime &to);

    QDateTime from() const { return m_from; }
    QDateTime to() const { return m_to; }
    // Whole minutes away.
    int minutes() const;

    // The timers that ran when the absence began: working, started before it ended, and not
    // paused already when it began.
    QList<std::shared_ptr<Entry>> entriesThatRan(const ProjectCollection &collection) const;
    // "Away from 12:03 to 13:40 (1:37) while 2 timers ran".
    QString message(int timers) const;

    // Adds a pause over the absence to every timer that ran (from its start when it began during
    // the absence, and up to its own pause when it was paused during it).
    void countAsPause(ProjectCollection &collection) const;
    // Stops every timer that ran where the absence began (at its start when it began later).
    void stopTimers(ProjectCollection &collection) const;

private:
    QDateTime m_from;
    QDateTime m_to;
};
