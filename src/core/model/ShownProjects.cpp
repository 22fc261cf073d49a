#include "ShownProjects.h"

#include "CustomerDirectory.h"
#include "DayScope.h"

namespace {

Filter::Pointer makeSearchFilter() {
    auto query = std::make_shared<MPSearchQuery>();
    query->setMatchMode(1);
    query->addCriterion(MPSearchCriterion::criterionWithString(
        QStringLiteral(""), MPSearchCriterion::Contains, QStringLiteral("comment")));
    auto tags = MPSearchCriterion::criterionWithTag(QStringLiteral(""), MPSearchCriterion::Contains,
                                                    QStringLiteral("tags"));
    tags->setIgnoresCase(true);
    query->addCriterion(tags);
    auto filter = std::make_shared<Filter>();
    filter->setIsProjectsQueryActive(false);
    filter->setEntryQuery(query);
    return filter;
}

} // namespace

ShownProjects::ShownProjects()
    : m_searchFilter(makeSearchFilter()) {}

bool ShownProjects::isCustomerHidden(int customerId) const {
    if (customerId == -1 || !m_customers)
        return false;
    return !m_customers->isCustomerVisible(customerId).value_or(true);
}

ProjectList ShownProjects::collapseFadedProjects(const ProjectList &projects) const {
    ProjectList faded;
    for (const auto &project : projects) {
        const auto visible =
            m_customers ? m_customers->isCustomerVisible(project->customer()) : std::nullopt;
        if (!visible.value_or(false))
            faded.append(project);
    }
    return faded;
}

void ShownProjects::update(const ProjectList &projects) {
    const DayScope sameDay;
    m_visibleProjects.clear();
    m_filteredEntries.clear();
    m_shownItems.clear();
    for (const auto &project : projects) {
        if (!isCustomerHidden(project->customer()))
            m_visibleProjects.append(project);
    }
    // A current filter without a project query stores the same projects' entries again below.
    const bool storedBelow = m_currentFilter && !m_currentFilter->projectQuery();
    if (!m_searchText.isEmpty() && !storedBelow) {
        for (const auto &project : std::as_const(m_visibleProjects))
            storeShownEntries(*project);
    }
    if (m_currentFilter) {
        if (const auto query = m_currentFilter->projectQuery())
            m_visibleProjects =
                query->findAllMatchingObjectsIn(m_visibleProjects).value_or(ProjectList());
        for (const auto &project : std::as_const(m_visibleProjects))
            storeShownEntries(*project);
    }
    m_visibleSet.clear();
    for (const auto &project : std::as_const(m_visibleProjects))
        m_visibleSet.insert(project.get());
}

void ShownProjects::storeShownEntries(const Project &project) {
    // Stored under the name: two projects of the same name share one list, as they always have.
    const ItemList shown = filterEntriesArray(project.entries());
    QSet<const ProjectItem *> items;
    items.reserve(shown.size());
    for (const auto &item : shown)
        items.insert(item.get());
    m_filteredEntries.insert(project.name(), shown);
    m_shownItems.insert(project.name(), items);
}

void ShownProjects::setSearchText(const QString &text) {
    m_searchText = text;
    const auto query = m_searchFilter->entryQuery();
    for (int i = 0; i < query->criteriaCount(); ++i)
        query->criterionAtIndex(i)->setObjectValue(text);
}

ItemList ShownProjects::filteredEntriesForProject(const Project &project) const {
    return m_filteredEntries.value(project.name());
}

ItemList ShownProjects::filterEntriesArray(const ItemList &items) const {
    ItemList result = items;
    if (m_currentFilter && m_currentFilter->entryQuery())
        result =
            m_currentFilter->entryQuery()->findAllMatchingObjectsIn(result).value_or(ItemList());
    if (!m_searchText.isEmpty())
        result =
            m_searchFilter->entryQuery()->findAllMatchingObjectsIn(result).value_or(ItemList());
    return result;
}

bool ShownProjects::isProjectFiltered(const Project &project) const {
    if (isCustomerHidden(project.customer()))
        return true;
    return !m_visibleSet.contains(&project);
}

bool ShownProjects::isEntryFiltered(const ProjectItem &item) const {
    const Project *project = item.parent();
    if (!project)
        return true;
    if (isProjectFiltered(*project))
        return true;
    if (!m_currentFilter && m_searchText.isEmpty())
        return false;
    const auto shown = m_shownItems.constFind(project->name());
    return shown == m_shownItems.cend() || !shown->contains(&item);
}

int ShownProjects::filteredTotalDurationOfProject(const Project &project) const {
    int total = 0;
    for (const auto &item : project.entries()) {
        if (item->isEntry() && item->isFinished() && !isEntryFiltered(*item))
            total += item->effectiveDuration();
    }
    return total;
}
