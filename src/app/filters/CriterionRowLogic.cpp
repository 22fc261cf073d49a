#include "filters/CriterionRowLogic.h"

#include <QLocale>

using namespace Qt::StringLiterals;

CriterionRowLogic::CriterionRowLogic(MPSearchQuery::Pointer query,
                                     MPSearchCriterion::Pointer criterion,
                                     const FilterDelegate &properties)
    : m_query(std::move(query))
    , m_criterion(std::move(criterion))
    , m_properties(properties) {}

MPSearchCriterion::Pointer CriterionRowLogic::criterionForProperty(const FilterDelegate &properties,
                                                                   const QString &title,
                                                                   int firstCustomerId) {
    const int type = properties.dataTypeForProperty(title);
    auto made = MPSearchCriterion::criterionForDataType(
        type, MPSearchCriterion::matchKindsForType(type).value(0),
        properties.identifierForProperty(title));
    if (!made)
        return nullptr;
    made->setName(title);
    if (type == MPSearchCriterion::CustomerType)
        made->setCustomerValue(firstCustomerId);
    return made;
}

QString CriterionRowLogic::propertyTitle() const {
    const QStringList titles = propertyTitles();
    if (titles.contains(m_criterion->name()))
        return m_criterion->name();
    for (const QString &title : titles) {
        if (m_properties.identifierForProperty(title) == m_criterion->identifier())
            return title;
    }
    return m_criterion->name();
}

CriterionRowLogic::PropertyChange CriterionRowLogic::chooseProperty(const QString &title,
                                                                    int firstCustomerId) {
    if (title == propertyTitle())
        return PropertyChange::None;
    if (m_properties.dataTypeForProperty(title) == dataType()) {
        m_criterion->setName(title);
        m_criterion->setIdentifier(m_properties.identifierForProperty(title));
        m_criterion->setDefaultValue();
        if (dataType() == MPSearchCriterion::CustomerType)
            m_criterion->setCustomerValue(firstCustomerId);
        return PropertyChange::Kept;
    }
    auto made = criterionForProperty(m_properties, title, firstCustomerId);
    if (!made)
        return PropertyChange::None;
    // The query has no insertion, so the criteria after the row are appended again behind it.
    QList<MPSearchCriterion::Pointer> criteria;
    for (int i = 0; i < m_query->criteriaCount(); ++i)
        criteria.append(m_query->criterionAtIndex(i));
    while (m_query->criteriaCount() > 0)
        m_query->removeCriterionAtIndex(0);
    for (const auto &criterion : criteria)
        m_query->addCriterion(criterion == m_criterion ? made : criterion);
    m_criterion = made;
    return PropertyChange::Rebuilt;
}

bool CriterionRowLogic::isValueHidden() const {
    const int kind = m_criterion->matchKind();
    return kind >= MPSearchCriterion::IsToday && kind <= MPSearchCriterion::IsThisWeek;
}

int CriterionRowLogic::textFieldCount() const {
    switch (dataType()) {
    case MPSearchCriterion::RangeType:
    case MPSearchCriterion::DurationType:
        return 2;
    case MPSearchCriterion::BooleanType:
    case MPSearchCriterion::DateType:
    case MPSearchCriterion::CustomerType:
    case MPSearchCriterion::SetType:
        return 0;
    default:
        return 1;
    }
}

QStringList CriterionRowLogic::valueTexts() const {
    const QVariant value = m_criterion->objectValue();
    const QLocale locale;
    switch (dataType()) {
    case MPSearchCriterion::RangeType: {
        const RangeValue range = value.typeId() == qMetaTypeId<RangeValue>()
                                     ? value.value<RangeValue>()
                                     : RangeValue{value.toUInt(), 0};
        return {locale.toString(range.location), locale.toString(range.location + range.length)};
    }
    case MPSearchCriterion::DurationType:
        return {locale.toString(value.toInt() / 60), locale.toString(value.toInt() % 60)};
    case MPSearchCriterion::IntegerType:
        return {locale.toString(value.toInt())};
    case MPSearchCriterion::FloatType:
        return {locale.toString(value.toFloat(), 'g', 7)};
    default:
        return textFieldCount() == 1 ? QStringList{value.toString()} : QStringList();
    }
}

std::optional<int> CriterionRowLogic::setValueTexts(const QStringList &texts) {
    const auto number = [&texts](int field) { return parseInteger(texts.value(field)); };
    switch (dataType()) {
    case MPSearchCriterion::RangeType:
    case MPSearchCriterion::DurationType: {
        // A range holds positions, which are never negative.
        const bool range = dataType() == MPSearchCriterion::RangeType;
        const auto first = number(0);
        if (!first || (range && *first < 0))
            return 0;
        const auto second = number(1);
        if (!second || (range && *second < 0))
            return 1;
        if (range)
            m_criterion->setRangeValue({quint32(*first), quint32(std::max(0, *second - *first))});
        else
            m_criterion->setDurationValue(*first * 60 + *second);
        return std::nullopt;
    }
    case MPSearchCriterion::IntegerType: {
        const auto value = number(0);
        if (!value)
            return 0;
        m_criterion->setIntValue(*value);
        return std::nullopt;
    }
    case MPSearchCriterion::FloatType: {
        const auto value = parseFloat(texts.value(0));
        if (!value)
            return 0;
        m_criterion->setObjectValue(*value);
        return std::nullopt;
    }
    default:
        if (textFieldCount() == 1)
            m_criterion->setObjectValue(texts.value(0));
        return std::nullopt;
    }
}

void CriterionRowLogic::setDateValue(QDate day) {
    m_criterion->setObjectValue(day.startOfDay());
}

std::optional<int> CriterionRowLogic::parseInteger(const QString &text) {
    bool ok = false;
    int value = QLocale().toInt(text.trimmed(), &ok);
    if (!ok)
        value = QLocale::c().toInt(text.trimmed(), &ok);
    return ok ? std::optional<int>(value) : std::nullopt;
}

std::optional<float> CriterionRowLogic::parseFloat(const QString &text) {
    bool ok = false;
    float value = QLocale().toFloat(text.trimmed(), &ok);
    if (!ok)
        value = QLocale::c().toFloat(text.trimmed(), &ok);
    return ok ? std::optional<float>(value) : std::nullopt;
}
