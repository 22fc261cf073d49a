#pragma once

#include "model/TimeAway.h"

#include <QDateTime>
#include <optional>
#include <utility>

class ProjectCollection;

// Notices time away from the computer: a sleep of the computer, or an idle stretch longer than
// "idleMinutes" (0: idle time is not watched). An absence is asked about only when timers ran
// while it began, and only once: while a question is open no other is asked, and a later
// absence starts no earlier than where the last one ended. Moments come from the clock.
class AwayLogic {
public:
    explicit AwayLogic(const ProjectCollection &collection);

    void setIdleMinutes(int minutes);
    int idleMinutes() const { return m_idleMinutes; }

    // The desktop's idle time now; an absence to ask about when the user has come back.
    std::optional<TimeAway> idleSample(qint64 idleMilliseconds);
    void sleeping();
    // The computer woke: the absence since it went to sleep (or since the user went idle
    // before), when it is worth asking about.
    std::optional<TimeAway> resumed();
    // The question about the last absence was answered.
    void answered() { m_asking = false; }
    bool isAsking() const { return m_asking; }

private:
    std::optional<TimeAway> absence(QDateTime from, const QDateTime &to);

    const ProjectCollection &m_collection;
    int m_idleMinutes = 0;
    QDateTime m_idleSince;
    QDateTime m_sleepingSince;
    QDateTime m_settledUntil;
    bool m_asking = false;
};
