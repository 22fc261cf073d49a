#pragma once

#include "ProjectItem.h"

// The orders of a project's items by the list's columns: "Day_Col", "Description_Col",
// "Action_Col" and "Duration_Col". Each comparison is computed for ascending order and negated
// for descending; the result is negative, zero or positive.
class EntrySort {
public:
    static bool isSortColumn(QStringView column);

    static int compareEntriesDay(const ProjectItem &a, const ProjectItem &b, bool ascending);
    static int compareEntriesDescription(const ProjectItem &a, const ProjectItem &b,
                                         bool ascending);
    static int compareEntriesAction(const ProjectItem &a, const ProjectItem &b, bool ascending);
    static int compareEntriesDuration(const ProjectItem &a, const ProjectItem &b, bool ascending);

    // Literal comparison in which runs of digits compare by their numeric value ("file 9" before
    // "file 10"); case-sensitive.
    static int compareNumerically(QStringView a, QStringView b);

    // Sorts the items by the column; an unknown column leaves them as they are. Items that compare
    // equal keep their order.
    static void sortEntries(ItemList &items, QStringView column, bool ascending);
};
