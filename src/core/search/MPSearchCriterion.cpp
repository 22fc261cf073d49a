#include "MPSearchCriterion.h"

#include "../model/Clock.h"
#include "../model/DayScope.h"
#include "../model/ProjectItem.h"
#include "../model/StoredForms.h"
#include "../stores/KeyedArchiver.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <cmath>
#include <limits>

namespace {

// Whether test holds for a comma-separated part of the text (empty parts included), looked at
// in place: the tag criterion runs over every entry, and splitting would copy every tag.
template <typename Test> bool anyPart(QStringView text, Test test) {
    for (qsizetype start = 0;;) {
        const qsizetype comma = text.indexOf(u',', start);
        const qsizetype end = comma < 0 ? text.size() : comma;
        if (test(text.sliced(start, end - start)))
            return true;
        if (comma < 0)
            return false;
        start = comma + 1;
    }
}

QString tr(const char *text) {
    return QCoreApplication::translate("MPSearchCriterion", text);
}

bool isNumber(const QVariant &value) {
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::Float:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

// A glob pattern ("*" any run, "?" one character) as an anchored regular expression.
QRegularExpression globExpression(const QString &pattern) {
    QString expression;
    for (const QChar c : pattern) {
        if (c == u'*')
            expression += QStringLiteral(".*");
        else if (c == u'?')
            expression += u'.';
        else
            expression += QRegularExpression::escape(QString(c));
    }
    return QRegularExpression(QRegularExpression::anchoredPattern(expression),
                              QRegularExpression::DotMatchesEverythingOption);
}

QString describe(const QVariant &value) {
    if (!value.isValid())
        return QStringLiteral("(null)");
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    if (value.typeId() == QMetaType::QDateTime)
        return StoredForms::momentText(value.toDateTime());
    if (value.typeId() == qMetaTypeId<RangeValue>()) {
        const auto range = value.value<RangeValue>();
        return QStringLiteral("NSRange: {%1, %2}").arg(range.location).arg(range.length);
    }
    if (value.typeId() == qMetaTypeId<IndexSet>()) {
        QStringList parts;
        const auto set = value.value<IndexSet>();
        for (const auto &[first, count] : set.ranges())
            parts.append(count == 1 ? QString::number(first)
                                    : QStringLiteral("%1-%2").arg(first).arg(first + count - 1));
        return u'(' + parts.join(u' ') + u')';
    }
    return value.toString();
}

// A day against a date criterion: the match kinds compare calendar days.
bool dayMatch(int matchType, const QVariant &compareData, QDate valueDay) {
    switch (matchType) {
    case MPSearchCriterion::IsToday:
        return valueDay == DayScope::today();
    case MPSearchCriterion::IsThisMonth:
        return valueDay.month() == DayScope::today().month() &&
               valueDay.year() == DayScope::today().year();
    case MPSearchCriterion::IsThisYear:
        return valueDay.year() == DayScope::today().year();
    case MPSearchCriterion::IsThisWeek:
        return DayScope::isInThisWeek(valueDay);
    default:
        break;
    }
    const QDateTime compare = compareData.toDateTime();
    const qint64 d = compare.isValid() ? compare.toLocalTime().date().daysTo(valueDay) : 0;
    switch (matchType) {
    case MPSearchCriterion::IsNotEqualTo:
    case MPSearchCriterion::IsNotOn:
        return d != 0;
    case MPSearchCriterion::IsGreaterThan:
    case MPSearchCriterion::IsAfter:
        return d > 0;
    case MPSearchCriterion::IsLessThan:
    case MPSearchCriterion::IsBefore:
        return d < 0;
    case MPSearchCriterion::IsEqualToOrGreaterThan:
    case MPSearchCriterion::IsOnOrAfter:
        return d >= 0;
    case MPSearchCriterion::IsEqualToOrLessThan:
    case MPSearchCriterion::IsOnOrBefore:
        return d <= 0;
    default:
        return d == 0;
    }
}

} // namespace

MPSearchCriterion::MPSearchCriterion(int matchKind)
    : _matchType(matchKind)
    , _compareData(0) {}

MPSearchCriterion::Pointer MPSearchCriterion::construct(int dataType, int matchKind,
                                                        const QString &identifier,
                                                        const QVariant &value) {
    auto criterion = std::make_shared<MPSearchCriterion>(matchKind);
    criterion->setIdentifier(identifier);
    criterion->_dataType = dataType;
    if (value.isValid())
        criterion->setObjectValue(value);
    else
        criterion->_compareData = QVariant();
    return criterion;
}

MPSearchCriterion::Pointer MPSearchCriterion::criterionWithBoolean(bool value, int matchKind,
                                                                   const QString &identifier) {
    return construct(BooleanType, matchKind, identifier, value);
}

MPSearchCriterion::Pointer MPSearchCriterion::criterionWithInteger(int value, int matchKind,
                                                                   const QString &identifier) {
    return construct(IntegerType, matchKind, identifier, value);
}

MPSearchCriterion::Pointer MPSearchCriterion::criterionWithFloat(float value, int matchKind,
                                                                 const QString &identifier) {
    auto criterion = construct(FloatType, matchKind, identifier, 0.0f);
    criterion->setFloatValue(int(std::trunc(value)));
    return criterion;
}

MPSearchCriterion::Pointer MPSearchCriterion::criterionWithString(const QString &value,
                                                                  int matchKind,
                                                                  const QString &identifier) {
    return construct(StringType, matchKind, identifier, value);
}

MPSearchCriterion::Pointer MPSearchCriterion::criterionWithRange(RangeValue value, int matchKind,
                                                                 const QString &identifier) {
    return construct(RangeType, matchKind, identifier, QVariant::fromValue(value));
}

MPSearchCriterion::Pointer MPSearchCriterion::criterionWithIndexSet(const IndexSet &value,
                                                                    int matchKind,
                                                                    const QString &identifier) {
    return construct(SetType, matchKind, identifier, QVariant::fromValue(value));
}

MPSearchCriterion::Pointer MPSearchCriterion::criterionWithObject(const QVariant &value,
                                                                  int matchKind,
                                                                  const QString &identifier) {
    return construct(ObjectType, matchKind, identifier, value);
}

MPSearchCriterion::Pointer MPSearchCriterion::criterionWithDate(const QDateTime &value,
                                                                int matchKind,
                                                                const QString &identifier) {
    return construct(DateType, matchKind, identifier, value);
}

MPSearchCriterion::Pointer MPSearchCriterion::criterionWithDuration(int minutes, int matchKind,
                                                                    const QString &identifier) {
    return construct(DurationType, matchKind, identifier, minutes);
}

MPSearchCriterion::Pointer MPSearchCriterion::criterionWithCustomer(int customerId, int matchKind,
                                                                    const QString &identifier) {
    return construct(CustomerType, matchKind, identifier, customerId);
}

MPSearchCriterion::Pointer MPSearchCriterion::criterionWithTag(const QString &tags, int matchKind,
                                                               const QString &identifier) {
    return construct(TagType, matchKind, identifier, tags);
}

MPSearchCriterion::Pointer MPSearchCriterion::criterionForDataType(int dataType, int matchKind,
                                                                   const QString &identifier) {
    switch (dataType) {
    case BooleanType:
        return criterionWithBoolean(true, matchKind, identifier);
    case IntegerType:
        return criterionWithInteger(0, matchKind, identifier);
    case FloatType:
        return criterionWithFloat(0.0f, matchKind, identifier);
    case StringType:
        return criterionWithString(QStringLiteral(""), matchKind, identifier);
    case RangeType:
        return criterionWithRange({0, 0}, matchKind, identifier);
    case SetType:
        return criterionWithIndexSet(IndexSet::withIndex(1), matchKind, identifier);
    case ObjectType:
        return construct(ObjectType, matchKind, identifier, {});
    case CustomObjectType:
        return construct(CustomObjectType, matchKind, identifier, {});
    case DateType:
        return criterionWithDate(Clock::now(), matchKind, identifier);
    case DurationType:
        return criterionWithDuration(0, matchKind, identifier);
    case CustomerType:
        return criterionWithCustomer(0, matchKind, identifier);
    case TagType:
        return criterionWithTag(QStringLiteral(""), matchKind, identifier);
    default:
        return nullptr;
    }
}

QString MPSearchCriterion::displayNameForType(int dataType) {
    static const char *const names[] = {"Boolean", "Integer",  "Float",    "String",
                                        "Range",   "Set",      "Object",   "Object",
                                        "Date",    "Duration", "Customer", "Tag"};
    if (dataType < 0 || dataType > TagType)
        return {};
    return tr(names[dataType]);
}

QStringList MPSearchCriterion::displayNamesForAvailableTypes() {
    QStringList names;
    for (int type : {0, 1, 2, 3, 4, 5, 6, 8, 9, 10, 11})
        names.append(displayNameForType(type));
    return names;
}

QString MPSearchCriterion::displayNameForMatchType(int matchKind) {
    static const char *const names[] = {"is equal to",
                                        "is greater than",
                                        "is less than",
                                        "is equal to or greater than",
                                        "is equal to or less than",
                                        "is not equal to",
                                        "is within the range",
                                        "is not within the range",
                                        "contains",
                                        "does not contain",
                                        "starts with",
                                        "ends with",
                                        "is true",
                                        "is false",
                                        "is in the set",
                                        "is not in the set",
                                        "is like",
                                        "is not like",
                                        "is after",
                                        "is before",
                                        "is on",
                                        "is not on",
                                        "is on or before",
                                        "is on or after",
                                        "is today",
                                        "is this month",
                                        "is this year",
                                        "is this week"};
    if (matchKind < 0 || matchKind > IsThisWeek)
        return {};
    return tr(names[matchKind]);
}

QList<int> MPSearchCriterion::matchKindsForType(int dataType) {
    switch (dataType) {
    case BooleanType:
        return {12, 13};
    case IntegerType:
    case FloatType:
    case DurationType:
    case CustomerType:
        return {0, 5, 1, 2, 3, 4};
    case StringType:
        return {8, 9, 10, 11, 0, 5};
    case RangeType:
        return {6, 7};
    case SetType:
        return {14, 15};
    case ObjectType:
    case CustomObjectType:
        return {0, 5, 1, 2, 3, 4, 16, 17};
    case DateType:
        return {20, 21, 18, 19, 23, 22, 24, 25, 26, 27};
    case TagType:
        return {8, 9};
    default:
        return {};
    }
}

QStringList MPSearchCriterion::displayableMatchKinds() const {
    QStringList names;
    for (int kind : matchKindsForType(_dataType))
        names.append(displayNameForMatchType(kind));
    return names;
}

QString MPSearchCriterion::localizedName() const {
    return QCoreApplication::translate("SearchProperties", _name.toUtf8().constData());
}

void MPSearchCriterion::setIdentifier(const QString &identifier) {
    _identifier = identifier;
    if (_name.isNull())
        _name = identifier;
}

void MPSearchCriterion::setObjectValue(const QVariant &value) {
    if (isCompatibleDataType(value))
        _compareData = value;
}

void MPSearchCriterion::setIntValue(int value) {
    setObjectValue(value);
}

void MPSearchCriterion::setFloatValue(int value) {
    setObjectValue(float(value));
}

void MPSearchCriterion::setBoolValue(bool value) {
    setObjectValue(value);
}

void MPSearchCriterion::setRangeValue(RangeValue value) {
    if (_dataType == RangeType)
        setObjectValue(QVariant::fromValue(value));
}

void MPSearchCriterion::setDefaultValue() {
    if (isNumber(_compareData))
        _compareData = 0;
    else if (_compareData.typeId() == QMetaType::QString)
        _compareData = QStringLiteral("");
    else if (_compareData.typeId() == QMetaType::QDateTime)
        _compareData = Clock::now();
}

bool MPSearchCriterion::isCompatibleDataType(const QVariant &value) const {
    if (!value.isValid())
        return false;
    switch (_dataType) {
    case BooleanType:
    case IntegerType:
    case FloatType:
    case DurationType:
    case CustomerType:
        return isNumber(value);
    case StringType:
    case TagType:
        return value.typeId() == QMetaType::QString;
    case RangeType:
        return isNumber(value) || value.typeId() == qMetaTypeId<RangeValue>();
    case SetType:
        return isNumber(value) || value.typeId() == qMetaTypeId<IndexSet>();
    case ObjectType:
    case CustomObjectType:
        return true;
    case DateType:
        return value.typeId() == QMetaType::QDateTime && value.toDateTime().isValid();
    default:
        return false;
    }
}

bool MPSearchCriterion::testForMatchWithObject(const KeyValueCoding *object) {
    if (!object)
        return false;
    // What the search field and the quick filters ask of every entry is read straight from it,
    // without a value made on the way: the start day is kept parsed for sorting.
    if (const auto *item = dynamic_cast<const ProjectItem *>(object)) {
        if (_dataType == DateType && _identifier == u"fromDateAsDate") {
            const qint64 day = item->sortDay();
            return day != std::numeric_limits<qint64>::min() &&
                   dayMatch(_matchType, _compareData, QDate::fromJulianDay(day));
        }
        if (_dataType == StringType && _identifier == u"comment")
            return stringMatch(item->comment());
        if (_dataType == TagType && _identifier == u"tags")
            return tagMatch(item->tags());
    }
    const QVariant value = object->valueForKey(_identifier);
    if (!isCompatibleDataType(value))
        return false;
    switch (_dataType) {
    case BooleanType:
        return booleanMatch(value.toBool());
    case FloatType:
        return floatMatch(value.toFloat());
    case StringType:
        return stringMatch(value.toString());
    case RangeType:
        return rangeMatch(quint32(value.toLongLong()));
    case SetType:
        return indexSetMatch(value.toULongLong());
    case ObjectType:
        return objectMatch(value);
    case CustomObjectType:
        return customMatch(value);
    case DateType:
        return dateMatch(value.toDateTime());
    case TagType:
        return tagMatch(value.toString());
    default:
        return integerMatch(value.toInt());
    }
}

bool MPSearchCriterion::booleanMatch(bool value) const {
    switch (_matchType) {
    case IsFalse:
        return !value;
    case IsEqualTo:
        return value == _compareData.toBool();
    case IsNotEqualTo:
        return value != _compareData.toBool();
    default:
        return value;
    }
}

bool MPSearchCriterion::integerMatch(int value) const {
    return numberMatch(value, _compareData.toInt());
}

bool MPSearchCriterion::floatMatch(float value) const {
    return numberMatch(value, _compareData.toFloat());
}

template <typename T> bool MPSearchCriterion::numberMatch(T value, T c) const {
    switch (_matchType) {
    case IsEqualTo:
        return value == c;
    case IsGreaterThan:
        return value > c;
    case IsLessThan:
        return value < c;
    case IsEqualToOrGreaterThan:
        return value >= c;
    case IsEqualToOrLessThan:
        return value <= c;
    default:
        return value != c;
    }
}

bool MPSearchCriterion::stringMatch(const QString &value, qsizetype from) {
    const QString c = _compareData.toString();
    const qsizetype length = value.size();
    from = std::clamp<qsizetype>(from, 0, length);
    const qsizetype remaining = length - from;
    const Qt::CaseSensitivity cs = _ignoreCase ? Qt::CaseInsensitive : Qt::CaseSensitive;
    const auto find = [&](qsizetype start, qsizetype end) {
        if (c.isEmpty() || end - start < c.size())
            return RangeValue{RangeValue::notFound, 0};
        const qsizetype at = QStringView(value).mid(start, end - start).indexOf(c, 0, cs);
        if (at < 0)
            return RangeValue{RangeValue::notFound, 0};
        return RangeValue{quint32(start + at), quint32(c.size())};
    };
    const qsizetype edge = std::min(remaining, c.size());
    RangeValue found;
    switch (_matchType) {
    case IsEqualTo: {
        found = find(from, length);
        const bool equal = !found.isNotFound() && found.location == quint32(from) &&
                           found.length == quint32(remaining);
        if (equal)
            _lastMatchingStrRange = found;
        return equal;
    }
    case IsNotEqualTo:
        found = find(from, length);
        _lastMatchingStrRange = found;
        return found.isNotFound() || found.location != quint32(from) ||
               found.length != quint32(remaining);
    case DoesNotContain:
        found = find(from, length);
        _lastMatchingStrRange = found;
        return found.isNotFound();
    case StartsWith:
        found = find(from, from + edge);
        break;
    case EndsWith:
        found = find(length - edge, length);
        break;
    default:
        found = find(from, length);
        break;
    }
    _lastMatchingStrRange = found;
    return !found.isNotFound();
}

bool MPSearchCriterion::rangeMatch(quint32 value) const {
    const auto range = _compareData.value<RangeValue>();
    const bool within = quint32(value - range.location) < range.length;
    return _matchType == IsNotWithinTheRange ? !within : within;
}

bool MPSearchCriterion::indexSetMatch(quint64 value) const {
    const bool contained = _compareData.value<IndexSet>().containsIndex(value);
    return _matchType == IsNotInTheSet ? !contained : contained;
}

bool MPSearchCriterion::objectMatch(const QVariant &value) const {
    const QPartialOrdering order = QVariant::compare(value, _compareData);
    switch (_matchType) {
    case IsGreaterThan:
        return order == QPartialOrdering::Greater;
    case IsLessThan:
        return order == QPartialOrdering::Less;
    case IsEqualToOrGreaterThan:
        return order == QPartialOrdering::Greater || order == QPartialOrdering::Equivalent;
    case IsEqualToOrLessThan:
        return order == QPartialOrdering::Less || order == QPartialOrdering::Equivalent;
    case IsNotEqualTo:
        return value != _compareData;
    case IsLike:
        return globExpression(_compareData.toString()).match(value.toString()).hasMatch();
    case IsNotLike:
        return !globExpression(_compareData.toString()).match(value.toString()).hasMatch();
    default:
        return value == _compareData;
    }
}

bool MPSearchCriterion::customMatch(const QVariant &) const {
    return false;
}

bool MPSearchCriterion::dateMatch(const QDateTime &value) const {
    return dayMatch(_matchType, _compareData, value.toLocalTime().date());
}

bool MPSearchCriterion::tagMatch(const QString &value) const {
    const QString wanted = _compareData.toString();
    const bool any = anyPart(value, [&wanted](QStringView tag) {
        return anyPart(wanted, [tag](QStringView name) { return name == tag; });
    });
    return _matchType == DoesNotContain ? !any : any;
}

QString MPSearchCriterion::description() const {
    return QStringLiteral("<MPSearchCriterion: 0x%1> type = %2, matchkind = %3, value = %4, "
                          "identifier = %5")
        .arg(quintptr(this), 0, 16)
        .arg(_dataType)
        .arg(_matchType)
        .arg(describe(_compareData), _identifier.isNull() ? QStringLiteral("(null)") : _identifier);
}

void MPSearchCriterion::encodeWithCoder(KeyedArchiver &coder) const {
    coder.encodeObject(_name, QStringLiteral("mp_sq_crit_name"));
    coder.encodeObject(_identifier, QStringLiteral("mp_sq_crit_identifier"));
    coder.encodeInt(_matchType, QStringLiteral("mp_sq_crit_matchkind"));
    coder.encodeBool(_ignoreCase, QStringLiteral("mp_sq_crit_ignorescase"));
    coder.encodeInt(_dataType, QStringLiteral("mp_sq_crit_datatype"));
    coder.encodeObject(_compareData, QStringLiteral("mp_sq_crit_objectvalue"));
}

KeyedObject MPSearchCriterion::initWithCoder(KeyedUnarchiver &coder) {
    auto criterion = std::make_shared<MPSearchCriterion>(0);
    criterion->_compareData = QVariant();
    const QVariant name = coder.decodeObject(QStringLiteral("mp_sq_crit_name"));
    const QVariant identifier = coder.decodeObject(QStringLiteral("mp_sq_crit_identifier"));
    criterion->_name = name.typeId() == QMetaType::QString ? name.toString() : QString();
    criterion->_identifier =
        identifier.typeId() == QMetaType::QString ? identifier.toString() : QString();
    criterion->_matchType = int(coder.decodeInt(QStringLiteral("mp_sq_crit_matchkind")));
    criterion->_ignoreCase = coder.decodeBool(QStringLiteral("mp_sq_crit_ignorescase"));
    criterion->_dataType = int(coder.decodeInt(QStringLiteral("mp_sq_crit_datatype")));
    criterion->setObjectValue(coder.decodeObject(QStringLiteral("mp_sq_crit_objectvalue")));
    return criterion;
}
