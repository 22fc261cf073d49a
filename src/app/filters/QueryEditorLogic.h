#pragma once

#include "search/FilterDelegate.h"
#include "search/MPSearchQuery.h"

// The rules of the query editor, without its controls: the query it edits (a fresh one on the
// first property of the table when it is given none), adding a row that proposes the next
// property of the table, removing the last row, and what the rows make of the editor: the
// match-mode menu only for more than one row, the remove button only from two rows on, and a
// height of 32 points per row, an empty query counting as one row.
class QueryEditorLogic {
public:
    static constexpr int rowHeight = 32;

    explicit QueryEditorLogic(const FilterDelegate &properties);

    const FilterDelegate &properties() const { return m_properties; }
    MPSearchQuery::Pointer query() const { return m_query; }
    void setSearchQuery(const MPSearchQuery::Pointer &query);

    int rowCount() const { return m_query->criteriaCount(); }
    bool isMatchModeEnabled() const { return rowCount() > 1; }
    bool isRemoveVisible() const { return rowCount() >= 2; }
    int rowsHeight() const { return std::max(1, rowCount()) * rowHeight; }

    // Adds a criterion on the property at min(rows, properties - 1) with the type's first match
    // kind and default value (a customer value starts as the id given) and returns it.
    MPSearchCriterion::Pointer addNewCriterion(int firstCustomerId);
    // Drops the last criterion; false (nothing happens) below two rows.
    bool removeLastCriterion();

private:
    const FilterDelegate &m_properties;
    MPSearchQuery::Pointer m_query;
};
