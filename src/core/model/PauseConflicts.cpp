#include "PauseConflicts.h"

#include "Clock.h"
#include "Entry.h"

PauseConflicts::PauseConflicts(const PauseList &pauses) {
    update(pauses);
}

void PauseConflicts::update(const PauseList &pauses) {
    m_hasConflicts = false;
    m_conflicts.clear();
    for (int i = 0; i < pauses.size(); ++i) {
        const auto &p = pauses[i];
        PauseList list;
        if (p->fromSecs() > p->toSecs()) {
            list.append(p);
            m_hasConflicts = true;
        }
        for (int j = 0; j < pauses.size(); ++j) {
            if (j == i)
                continue;
            const auto &q = pauses[j];
            if (q->fromSecs() < p->toSecs() && q->toSecs() > p->fromSecs()) {
                list.append(q);
                m_hasConflicts = true;
            }
        }
        m_conflicts.insert(i, list);
    }
}

bool PauseConflicts::isInConflictWith(int selectedRow, const PauseEntry *pause) const {
    const auto it = m_conflicts.constFind(selectedRow);
    if (it == m_conflicts.cend())
        return false;
    return std::any_of(it->cbegin(), it->cend(),
                       [pause](const auto &p) { return p.get() == pause; });
}

PauseConflicts::Clamped PauseConflicts::clampedFrom(const QDateTime &proposed, const Entry &entry) {
    const QDateTime start = entry.fromAsDate();
    if (start.isValid() && proposed < start)
        return {start, true};
    return {proposed, false};
}

PauseConflicts::Clamped PauseConflicts::clampedTo(const QDateTime &proposed, const Entry &entry) {
    QDateTime limit = entry.toAsDate();
    if (!limit.isValid())
        limit = Clock::now();
    if (proposed > limit)
        return {limit, true};
    return {proposed, false};
}
