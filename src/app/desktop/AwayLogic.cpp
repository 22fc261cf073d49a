#include "desktop/AwayLogic.h"

#include "model/Clock.h"

AwayLogic::AwayLogic(const ProjectCollection &collection)
    : m_collection(collection) {}

void AwayLogic::setIdleMinutes(int minutes) {
    m_idleMinutes = qMax(minutes, 0);
    if (m_idleMinutes == 0)
        m_idleSince = {};
}

std::optional<TimeAway> AwayLogic::idleSample(qint64 idleMilliseconds) {
    if (m_idleMinutes == 0)
        return {};
    const QDateTime now = Clock::now();
    if (idleMilliseconds >= qint64(m_idleMinutes) * 60 * 1000) {
        if (!m_idleSince.isValid())
            m_idleSince = now.addMSecs(-idleMilliseconds);
        return {};
    }
    if (!m_idleSince.isValid())
        return {};
    const QDateTime from = std::exchange(m_idleSince, QDateTime());
    return absence(from, now.addMSecs(-idleMilliseconds));
}

void AwayLogic::sleeping() {
    m_sleepingSince = Clock::now();
}

std::optional<TimeAway> AwayLogic::resumed() {
    if (!m_sleepingSince.isValid())
        return {};
    QDateTime from = std::exchange(m_sleepingSince, QDateTime());
    if (m_idleSince.isValid())
        from = qMin(from, std::exchange(m_idleSince, QDateTime()));
    return absence(from, Clock::now());
}

std::optional<TimeAway> AwayLogic::absence(QDateTime from, const QDateTime &to) {
    if (m_asking)
        return {};
    if (m_settledUntil.isValid())
        from = qMax(from, m_settledUntil);
    const TimeAway away(from, to);
    if (away.minutes() < 1)
        return {};
    m_settledUntil = to;
    if (away.entriesThatRan(m_collection).isEmpty())
        return {};
    m_asking = true;
    return away;
}
