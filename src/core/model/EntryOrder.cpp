#include "EntryOrder.h"

#include "../platform/Preferences.h"
#include "EntrySort.h"

EntryOrder::EntryOrder(const Preferences &preferences)
    : m_sortingColumn(preferences.stringForKey(u"sortingColumn"))
    , m_ascending(preferences.boolForKey(u"sortAscending")) {}

void EntryOrder::sortEntriesOfProject(Project &project) const {
    if (!EntrySort::isSortColumn(m_sortingColumn))
        return;
    ItemList items = project.entries();
    EntrySort::sortEntries(items, m_sortingColumn, m_ascending);
    project.setEntries(items);
}

void EntryOrder::sortAllProjects(const ProjectList &projects) const {
    for (const auto &project : projects)
        sortEntriesOfProject(*project);
}

void EntryOrder::columnClicked(const QString &column, Preferences &preferences) {
    m_sortingColumn = column;
    m_ascending = !m_ascending;
    preferences.setObject(m_sortingColumn, u"sortingColumn");
    preferences.setObject(m_ascending, u"sortAscending");
}
