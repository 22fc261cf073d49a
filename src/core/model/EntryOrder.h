#pragma once

#include "Project.h"

#include <QString>

class Preferences;

// The order of the items of every project: the list column entries are sorted by ("Day_Col",
// "Description_Col", "Action_Col" or "Duration_Col") and the direction, kept in the preferences
// "sortingColumn" and "sortAscending". The desktop program and the command-line program both take
// it from there, so the list, the command line's listings and indexes, and every file either
// program writes show the items in the same order.
class EntryOrder {
public:
    explicit EntryOrder(const Preferences &preferences);

    QString sortingColumn() const { return m_sortingColumn; }
    bool ascending() const { return m_ascending; }

    // Sorts the project's items by the column; with an unknown column they stay as they are.
    void sortEntriesOfProject(Project &project) const;
    void sortAllProjects(const ProjectList &projects) const;
    // A click on a column heading: that column sorts, and the direction flips on every click,
    // also when the column is another one. Both are stored in the preferences.
    void columnClicked(const QString &column, Preferences &preferences);

private:
    QString m_sortingColumn;
    bool m_ascending = true;
};
