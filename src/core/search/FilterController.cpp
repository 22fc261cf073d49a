#include "FilterController.h"

#include "../Logging.h"
#include "../platform/AtomicFile.h"
#include "../platform/Preferences.h"

#include <QCoreApplication>

namespace {

struct SelectedName {
    QString name;
    bool set = false;
};

SelectedName &selected() {
    static SelectedName value;
    return value;
}

} // namespace

FilterController::FilterController(const QString &filtersPath, Preferences &preferences,
                                   FilterTarget &target)
    : m_filtersPath(filtersPath)
    , m_preferences(preferences)
    , m_target(target)
    , m_projectEditorQuery(m_projectProperties.newQuery())
    , m_entryEditorQuery(m_entryProperties.newQuery()) {}

bool FilterController::loadFilters() {
    m_loadError.clear();
    return Filter::readListFile(m_filtersPath, m_filters, &m_loadError);
}

bool FilterController::saveFilters() {
    const AtomicFile::Result written =
        AtomicFile::write(m_filtersPath, Filter::archiveList(m_filters));
    if (!written.ok)
        qCWarning(lcSearch).noquote() << written.error;
    return written.ok;
}

QString FilterController::titleOf(const Filter &filter) {
    return filter.name().isEmpty() ? QCoreApplication::translate("Filter", "error: no name")
                                   : filter.name();
}

QList<FilterController::MenuItem> FilterController::menuItems() const {
    QList<MenuItem> items{
        {QCoreApplication::translate("Filter", "Edit Filters..."), EditFiltersTag},
        {QCoreApplication::translate("Filter", "Off"), OffTag},
        {QString(), SeparatorTag},
    };
    for (int i = 0; i < m_filters.size(); ++i)
        items.append({titleOf(*m_filters[i]), i});
    return items;
}

bool FilterController::selectItemWithTitle(const QString &title) {
    for (const MenuItem &item : menuItems()) {
        if (item.tag != SeparatorTag && item.title == title) {
            m_selectedTag = item.tag;
            return true;
        }
    }
    return false;
}

bool FilterController::filterAction(int tag) {
    bool openSheet = false;
    if (tag == EditFiltersTag) {
        openSheet = true;
    } else if (isFilterIndex(tag)) {
        m_selectedTag = tag;
        m_target.disableQuickFilters();
        setSelectedFilterName(titleOf(*m_filters[tag]));
        m_target.setCurrentFilter(m_filters[tag]);
    } else {
        m_selectedTag = OffTag;
        setSelectedFilterName(QStringLiteral(""));
        m_target.setCurrentFilter(nullptr);
    }
    m_preferences.setObject(selectedFilterName(), u"selectedFilterName");
    return openSheet;
}

void FilterController::awake() {
    loadFilters();
    if (isSelectedFilterNameSet())
        return;
    const QString name = m_preferences.stringForKey(u"selectedFilterName");
    if (!name.isEmpty() && selectItemWithTitle(name))
        filterAction(m_selectedTag);
    else
        m_selectedTag = OffTag;
}

QString FilterController::selectedFilterName() {
    return selected().name;
}

void FilterController::setSelectedFilterName(const QString &name) {
    selected().name = name;
    selected().set = true;
}

bool FilterController::isSelectedFilterNameSet() {
    return selected().set;
}

void FilterController::forgetSelectedFilterName() {
    selected() = SelectedName();
}

void FilterController::temporaryDisableFilter() {
    m_temporaryFilterTag = m_selectedTag;
    m_selectedTag = OffTag;
    m_target.setCurrentFilter(nullptr);
}

void FilterController::reenableFilter() {
    m_selectedTag = isFilterIndex(m_temporaryFilterTag) ? m_temporaryFilterTag : OffTag;
    m_target.setCurrentFilter(isFilterIndex(m_temporaryFilterTag) ? m_filters[m_temporaryFilterTag]
                                                                  : nullptr);
}

void FilterController::showSheet() {
    loadFilters();
    m_projectQueryLoaded = false;
    m_entryQueryLoaded = false;
    if (!m_filters.isEmpty()) {
        m_previousFilterIndex = -1;
        filterSelected(std::clamp(m_sheetSelection, 0, int(m_filters.size()) - 1));
    }
}

void FilterController::loadEditorQuery(Tab tab) {
    if (!isFilterIndex(m_sheetSelection))
        return;
    const Filter &filter = *m_filters[m_sheetSelection];
    // A filter without the query leaves the editor showing what it showed before.
    if (tab == Tab::Projects) {
        if (filter.projectQuery())
            m_projectEditorQuery = filter.projectQuery();
        m_projectQueryLoaded = true;
    } else {
        if (filter.entryQuery())
            m_entryEditorQuery = filter.entryQuery();
        m_entryQueryLoaded = true;
    }
}

void FilterController::filterSelected(int index) {
    storeQueries();
    if (!isFilterIndex(index))
        return;
    m_sheetSelection = index;
    m_projectQueryLoaded = false;
    m_entryQueryLoaded = false;
    loadEditorQuery(m_tab);
    m_previousFilterIndex = index;
}

void FilterController::storeQueries() {
    if (!isFilterIndex(m_previousFilterIndex))
        return;
    Filter &filter = *m_filters[m_previousFilterIndex];
    filter.setProjectQuery(filter.isProjectsQueryActive() && m_projectEditorQuery
                               ? m_projectEditorQuery->copy()
                               : nullptr);
    filter.setEntryQuery(
        filter.isEntriesQueryActive() && m_entryEditorQuery ? m_entryEditorQuery->copy() : nullptr);
}

void FilterController::selectTab(Tab tab) {
    m_tab = tab;
    if (tab == Tab::Projects ? !m_projectQueryLoaded : !m_entryQueryLoaded)
        loadEditorQuery(tab);
}

void FilterController::add() {
    if (!m_filters.isEmpty())
        storeQueries();
    m_projectEditorQuery = m_projectProperties.newQuery();
    m_entryEditorQuery = m_entryProperties.newQuery();
    m_projectQueryLoaded = true;
    m_entryQueryLoaded = true;
    m_tab = Tab::Projects;
    m_filters.append(std::make_shared<Filter>());
    m_sheetSelection = int(m_filters.size()) - 1;
    m_previousFilterIndex = m_sheetSelection;
}

void FilterController::remove(int index) {
    if (!isFilterIndex(index))
        return;
    m_filters.removeAt(index);
    m_previousFilterIndex = -1;
    if (!m_filters.isEmpty()) {
        m_sheetSelection = std::min(index, int(m_filters.size()) - 1);
        filterSelected(m_sheetSelection);
    }
}

void FilterController::setProjectFilterActive(bool active) {
    if (!isFilterIndex(m_sheetSelection))
        return;
    m_filters[m_sheetSelection]->setIsProjectsQueryActive(active);
    if (active)
        m_projectEditorQuery = m_projectProperties.newQuery();
}

void FilterController::setEntryFilterActive(bool active) {
    if (!isFilterIndex(m_sheetSelection))
        return;
    m_filters[m_sheetSelection]->setIsEntriesQueryActive(active);
    if (active)
        m_entryEditorQuery = m_entryProperties.newQuery();
}

void FilterController::sheetDidEnd(int returnCode) {
    if (returnCode == 0) {
        storeQueries();
        saveFilters();
    }
    const QString name = selectedFilterName();
    if (name.isEmpty() || !selectItemWithTitle(name))
        m_selectedTag = OffTag;
    filterAction(m_selectedTag);
}
