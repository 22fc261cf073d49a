#include "FilterDelegate.h"

#include "MPSearchQuery.h"

#include <QCoreApplication>

FilterDelegate::FilterDelegate(QList<Property> properties)
    : m_properties(std::move(properties)) {}

QString FilterDelegate::localized(const char *title) {
    return QCoreApplication::translate("SearchProperties", title);
}

QStringList FilterDelegate::searchableProperties() const {
    QStringList titles;
    for (const Property &property : m_properties)
        titles.append(localized(property.title));
    return titles;
}

const FilterDelegate::Property *FilterDelegate::find(const QString &title) const {
    for (const Property &property : m_properties) {
        if (localized(property.title) == title)
            return &property;
    }
    return nullptr;
}

int FilterDelegate::dataTypeForProperty(const QString &title) const {
    const Property *property = find(title);
    return property ? property->dataType : -1;
}

QString FilterDelegate::identifierForProperty(const QString &title) const {
    const Property *property = find(title);
    return property ? QString::fromLatin1(property->key) : QString();
}

std::shared_ptr<MPSearchQuery> FilterDelegate::newQuery() const {
    auto query = std::make_shared<MPSearchQuery>();
    if (m_properties.isEmpty())
        return query;
    const Property &first = m_properties.first();
    auto criterion = MPSearchCriterion::criterionForDataType(
        first.dataType, MPSearchCriterion::matchKindsForType(first.dataType).value(0),
        QString::fromLatin1(first.key));
    criterion->setName(localized(first.title));
    query->addCriterion(criterion);
    return query;
}
