#pragma once

#include "../search/Filter.h"
#include "Project.h"

#include <QHash>
#include <QSet>

class CustomerDirectory;

// What the project list shows of the document: the projects whose customer is shown and that the
// current filter's project query selects, and for each of them the items that pass the filter's
// entry query and the search field. Recomputed from the document's projects by update().
class ShownProjects {
public:
    ShownProjects();

    // Which customers exist and are shown; without one, no customer exists.
    void setCustomerDirectory(const CustomerDirectory *directory) { m_customers = directory; }

    // Works out the visible projects and their shown items anew.
    void update(const ProjectList &projects);
    const ProjectList &visibleProjects() const { return m_visibleProjects; }

    // Take effect at the next update().
    void setCurrentFilter(const Filter::Pointer &filter) { m_currentFilter = filter; }
    Filter::Pointer currentFilter() const { return m_currentFilter; }
    // Puts the text into the search filter's criteria.
    void setSearchText(const QString &text);
    QString searchText() const { return m_searchText; }
    // The filter behind the search field: comments or tags containing the text, case ignored
    // for the tags.
    Filter::Pointer searchFilter() const { return m_searchFilter; }

    ItemList filteredEntriesForProject(const Project &project) const;
    ItemList filterEntriesArray(const ItemList &items) const;
    bool isCustomerHidden(int customerId) const;
    bool isProjectFiltered(const Project &project) const;
    bool isEntryFiltered(const ProjectItem &item) const;
    // The effective minutes of the project's finished timed entries that are shown.
    int filteredTotalDurationOfProject(const Project &project) const;
    // The projects whose customer is not shown, which includes projects without one and those
    // whose customer is missing (deliberately unlike the visible projects).
    ProjectList collapseFadedProjects(const ProjectList &projects) const;

private:
    void storeShownEntries(const Project &project);

    const CustomerDirectory *m_customers = nullptr;
    ProjectList m_visibleProjects;
    QHash<QString, ItemList> m_filteredEntries;
    QSet<const Project *> m_visibleSet;
    // The same items as sets, so that asking about one entry takes constant time.
    QHash<QString, QSet<const ProjectItem *>> m_shownItems;
    Filter::Pointer m_currentFilter;
    Filter::Pointer m_searchFilter;
    QString m_searchText;
};
