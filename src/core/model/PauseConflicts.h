#pragma once

#include "PauseEntry.h"

#include <QHash>

class Entry;

// Conflicts among the pauses of one entry, and the limits of a changed pause moment. A pause that
// ends before it starts conflicts with itself; two pauses conflict when they overlap strictly
// (touching pauses do not).
class PauseConflicts {
public:
    PauseConflicts() = default;
    explicit PauseConflicts(const PauseList &pauses);

    // Recomputes the table for the given list.
    void update(const PauseList &pauses);
    bool hasConflicts() const { return m_hasConflicts; }
    // The pauses the pause at row conflicts with, in list order (itself first when it ends before
    // it starts); empty for a row outside the list.
    PauseList conflictsOf(int row) const { return m_conflicts.value(row); }
    // Whether pause lies in the conflict list of the selected row (drawn red while selected).
    bool isInConflictWith(int selectedRow, const PauseEntry *pause) const;

    struct Clamped {
        QDateTime moment;
        bool beep = false;
    };
    // A new start earlier than the entry's start becomes the entry's start, with a beep.
    static Clamped clampedFrom(const QDateTime &proposed, const Entry &entry);
    // A new end later than the entry's end (now, while it runs) becomes that end, with a beep.
    static Clamped clampedTo(const QDateTime &proposed, const Entry &entry);

private:
    QHash<int, PauseList> m_conflicts;
    bool m_hasConflicts = false;
};
