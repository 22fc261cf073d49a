#include "MPSearchQuery.h"

#include "../Logging.h"
#include "../stores/KeyedArchiver.h"
#include "SearchArchiveClasses.h"

MPSearchQuery::Pointer MPSearchQuery::searchQueryForObjectsContainingString(const QString &text) {
    auto query = std::make_shared<MPSearchQuery>();
    query->addCriterion(MPSearchCriterion::criterionWithString(text, MPSearchCriterion::Contains,
                                                               QStringLiteral("stringValue:")));
    return query;
}

MPSearchQuery::Pointer MPSearchQuery::searchQueryForTextContainingString(const QString &text) {
    auto query = std::make_shared<MPSearchQuery>();
    query->addCriterion(
        MPSearchCriterion::criterionWithString(text, MPSearchCriterion::Contains, QString()));
    query->setSearchMode(TextMode);
    return query;
}

MPSearchQuery::Pointer MPSearchQuery::copy() const {
    const QByteArray archive = KeyedArchiver::archivedData(*this);
    const auto result = KeyedUnarchiver::unarchive(archive, SearchArchiveClasses::table());
    return std::dynamic_pointer_cast<MPSearchQuery>(result.root.value<KeyedObject>());
}

int MPSearchQuery::addCriterion(const MPSearchCriterion::Pointer &criterion) {
    if (!_criteria)
        _criteria.emplace();
    _criteria->append(criterion);
    return int(_criteria->size()) - 1;
}

void MPSearchQuery::removeCriterion(const MPSearchCriterion::Pointer &criterion) {
    if (_criteria)
        _criteria->removeAll(criterion);
}

void MPSearchQuery::removeCriterionAtIndex(int index) {
    if (_criteria && index >= 0 && index < _criteria->size())
        _criteria->removeAt(index);
}

MPSearchCriterion::Pointer MPSearchQuery::criterionAtIndex(int index) const {
    if (!_criteria || index < 0 || index >= _criteria->size())
        return nullptr;
    return _criteria->at(index);
}

bool MPSearchQuery::queryMatchesObject(const KeyValueCoding *object) const {
    if (!object)
        return false;
    static const QList<MPSearchCriterion::Pointer> none;
    const QList<MPSearchCriterion::Pointer> &criteria = _criteria ? *_criteria : none;
    if (_matchMode == 1) {
        for (const auto &criterion : criteria) {
            if (criterion->testForMatchWithObject(object))
                return true;
        }
        return false;
    }
    for (const auto &criterion : criteria) {
        if (!criterion->testForMatchWithObject(object))
            return false;
    }
    return true;
}

RangeValue MPSearchQuery::queryMatchesText(const QString &text, qsizetype from) const {
    const RangeValue none{RangeValue::notFound, 0};
    if (text.isNull() || _searchMode != TextMode || criteriaCount() == 0)
        return none;
    const auto &criterion = _criteria->first();
    return criterion->stringMatch(text, from) ? criterion->lastMatchingStringRange() : none;
}

RangeValue MPSearchQuery::findNextMatchInText(const QString &text) {
    const RangeValue none{RangeValue::notFound, 0};
    if (_searchMode != TextMode || criteriaCount() == 0)
        return none;
    RangeValue found = queryMatchesText(text, _objIndex);
    if (found.isNotFound() && _wraps && _objIndex >= 1) {
        _objIndex = 0;
        found = queryMatchesText(text, 0);
    }
    if (found.isNotFound())
        return none;
    _objIndex = int(found.location + found.length + 1);
    return found;
}

void MPSearchQuery::addAuxiliaryDataObject(const QVariant &value, const QString &key) {
    if (!_auxData)
        _auxData.emplace();
    _auxData->insert(key, value);
}

QVariant MPSearchQuery::auxiliaryDataObjectForKey(const QString &key) const {
    return _auxData ? _auxData->value(key) : QVariant();
}

void MPSearchQuery::setAuxiliaryDataBooleanValue(bool value, const QString &key) {
    addAuxiliaryDataObject(value, key);
}

bool MPSearchQuery::auxiliaryDataBooleanValueForKey(const QString &key) const {
    return auxiliaryDataObjectForKey(key).toBool();
}

void MPSearchQuery::setAuxiliaryDataIntegerValue(int value, const QString &key) {
    addAuxiliaryDataObject(value, key);
}

int MPSearchQuery::auxiliaryDataIntegerValueForKey(const QString &key) const {
    return auxiliaryDataObjectForKey(key).toInt();
}

void MPSearchQuery::setAuxiliaryDataFloatValue(float value, const QString &key) {
    addAuxiliaryDataObject(value, key);
}

float MPSearchQuery::auxiliaryDataFloatValueForKey(const QString &key) const {
    return auxiliaryDataObjectForKey(key).toFloat();
}

QString MPSearchQuery::description() const {
    QString text = QStringLiteral("<MPSearchQuery: 0x%1>, match mode = %2; %3 criteria = \n")
                       .arg(quintptr(this), 0, 16)
                       .arg(_matchMode)
                       .arg(criteriaCount());
    for (int i = 0; i < criteriaCount(); ++i)
        text += QStringLiteral("\t%1. ").arg(i + 1) + _criteria->at(i)->description() + u'\n';
    return text;
}

void MPSearchQuery::encodeWithCoder(KeyedArchiver &coder) const {
    coder.encodeInt(_matchMode, QStringLiteral("mp_sq_matchmode"));
    coder.encodeInt(_searchMode, QStringLiteral("mp_sq_searchmode"));
    coder.encodeBool(_wraps, QStringLiteral("mp_sq_wraps"));
    QVariant criteria;
    if (_criteria) {
        QVariantList list;
        for (const auto &criterion : *_criteria)
            list.append(QVariant::fromValue(KeyedObject(criterion)));
        criteria = list;
    }
    coder.encodeObject(criteria, QStringLiteral("mp_sq_criteria"));
    coder.encodeObject(_auxData ? QVariant(*_auxData) : QVariant(),
                       QStringLiteral("mp_sq_auxiliarydata"));
}

KeyedObject MPSearchQuery::initWithCoder(KeyedUnarchiver &coder) {
    auto query = std::make_shared<MPSearchQuery>();
    query->_matchMode = int(coder.decodeInt(QStringLiteral("mp_sq_matchmode")));
    query->_searchMode = int(coder.decodeInt(QStringLiteral("mp_sq_searchmode")));
    query->_objIndex = 0;
    query->_wraps = coder.decodeBool(QStringLiteral("mp_sq_wraps"));
    const QVariant criteria = coder.decodeObject(QStringLiteral("mp_sq_criteria"));
    if (criteria.typeId() == QMetaType::QVariantList) {
        query->_criteria.emplace();
        for (const QVariant &element : criteria.toList()) {
            auto criterion =
                std::dynamic_pointer_cast<MPSearchCriterion>(element.value<KeyedObject>());
            if (criterion)
                query->_criteria->append(criterion);
            else
                qCWarning(lcSearch) << "a query's criteria list holds something else; left out";
        }
    }
    const QVariant auxiliary = coder.decodeObject(QStringLiteral("mp_sq_auxiliarydata"));
    if (auxiliary.typeId() == QMetaType::QVariantMap)
        query->_auxData = auxiliary.toMap();
    return query;
}
