#include "filters/QueryEditorLogic.h"

#include "filters/CriterionRowLogic.h"

QueryEditorLogic::QueryEditorLogic(const FilterDelegate &properties)
    : m_properties(properties)
    , m_query(properties.newQuery()) {}

void QueryEditorLogic::setSearchQuery(const MPSearchQuery::Pointer &query) {
    m_query = query ? query : m_properties.newQuery();
}

MPSearchCriterion::Pointer QueryEditorLogic::addNewCriterion(int firstCustomerId) {
    const QStringList titles = m_properties.searchableProperties();
    const QString title = titles.value(std::min(rowCount(), int(titles.size()) - 1));
    auto criterion = CriterionRowLogic::criterionForProperty(m_properties, title, firstCustomerId);
    if (criterion)
        m_query->addCriterion(criterion);
    return criterion;
}

bool QueryEditorLogic::removeLastCriterion() {
    if (rowCount() < 2)
        return false;
    m_query->removeCriterionAtIndex(rowCount() - 1);
    return true;
}
