#pragma once

#include "Filter.h"
#include "FilterDelegateEntries.h"
#include "FilterDelegateProjects.h"
#include "FilterTarget.h"

class Preferences;

// The saved filters: their file "filters.plist", the model of the main window's filter pop-up
// (which filter is chosen, remembered across restarts in "selectedFilterName"), setting the
// saved filter aside while a quick filter is on, and the logic of the editing sheet with its two
// query editors. The windows only show what this holds.
class FilterController {
public:
    enum Tag { SeparatorTag = -99, EditFiltersTag = -2, OffTag = -1 };
    enum class Tab { Projects, Entries };

    struct MenuItem {
        QString title;
        int tag;
    };

    FilterController(const QString &filtersPath, Preferences &preferences, FilterTarget &target);

    QString filtersPath() const { return m_filtersPath; }
    const QList<Filter::Pointer> &filters() const { return m_filters; }
    void setFilters(const QList<Filter::Pointer> &filters) { m_filters = filters; }

    // Replaces the list by the file's when the file exists; a missing file keeps the list. A
    // damaged file keeps it too and is logged (false); loadError() then tells why.
    bool loadFilters();
    // Why the last reading of the file failed; empty when it did not.
    QString loadError() const { return m_loadError; }
    // Writes the list atomically; a failure is logged (false).
    bool saveFilters();

    // The pop-up: "Edit Filters..." (-2), "Off" (-1), a separator (-99), then one item per
    // filter, tagged with its index and titled with its name ("error: no name" for none).
    QList<MenuItem> menuItems() const;
    int selectedTag() const { return m_selectedTag; }
    // Selects the item with the title; false (selection unchanged) when there is none.
    bool selectItemWithTitle(const QString &title);
    // The pop-up's action for the item with the tag: a filter becomes current (the quick filters
    // go off), "Off" clears it; the chosen name is stored. True for "Edit Filters...": the caller
    // opens the sheet.
    bool filterAction(int tag);
    // At start: reads the file and restores the chosen filter from the preferences.
    void awake();

    // The name of the chosen saved filter, shared by every controller of the process; empty for
    // none.
    static QString selectedFilterName();
    static void setSelectedFilterName(const QString &name);
    static bool isSelectedFilterNameSet();
    static void forgetSelectedFilterName();

    // Used by the quick-filter bar: set the chosen saved filter aside, and bring it back.
    void temporaryDisableFilter();
    void reenableFilter();

    // The editing sheet.
    void showSheet();
    void filterSelected(int index);
    void storeQueries();
    void selectTab(Tab tab);
    void add();
    void remove(int index);
    void setProjectFilterActive(bool active);
    void setEntryFilterActive(bool active);
    // 0 accepts (the edits are stored and written), anything else cancels; then the chosen
    // filter is applied again from the list.
    void sheetDidEnd(int returnCode);

    int sheetSelection() const { return m_sheetSelection; }
    Tab currentTab() const { return m_tab; }
    int previousFilterIndex() const { return m_previousFilterIndex; }
    bool projectQueryLoaded() const { return m_projectQueryLoaded; }
    bool entryQueryLoaded() const { return m_entryQueryLoaded; }
    // The property tables of the two editors.
    const FilterDelegateProjects &projectProperties() const { return m_projectProperties; }
    const FilterDelegateEntries &entryProperties() const { return m_entryProperties; }
    // The queries the two editors show (and edit in place).
    MPSearchQuery::Pointer projectEditorQuery() const { return m_projectEditorQuery; }
    MPSearchQuery::Pointer entryEditorQuery() const { return m_entryEditorQuery; }

    // How a filter is titled in the pop-up and the sheet: its name, "error: no name" for none.
    static QString titleOf(const Filter &filter);

private:
    bool isFilterIndex(int index) const { return index >= 0 && index < m_filters.size(); }
    void loadEditorQuery(Tab tab);

    QString m_filtersPath;
    Preferences &m_preferences;
    FilterTarget &m_target;
    QList<Filter::Pointer> m_filters;
    QString m_loadError;
    int m_selectedTag = OffTag;
    int m_temporaryFilterTag = -1;

    FilterDelegateProjects m_projectProperties;
    FilterDelegateEntries m_entryProperties;
    MPSearchQuery::Pointer m_projectEditorQuery;
    MPSearchQuery::Pointer m_entryEditorQuery;
    int m_previousFilterIndex = -1;
    int m_sheetSelection = 0;
    bool m_projectQueryLoaded = false;
    bool m_entryQueryLoaded = false;
    Tab m_tab = Tab::Projects;
};
