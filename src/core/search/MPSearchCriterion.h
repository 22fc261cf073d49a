#pragma once

#include "../model/KeyValueCoding.h"
#include "../stores/IndexSet.h"
#include "../stores/KeyedCoding.h"
#include "../stores/KeyedUnarchiver.h"
#include "../stores/RangeValue.h"

#include <QDateTime>
#include <QString>
#include <QVariant>
#include <memory>

// One test of one property of an entry or project against a stored comparison value: the
// property is read by its key (the identifier), the data type says how to compare, the match
// kind what to compare ("is greater than", "is this week", ...).
class MPSearchCriterion : public KeyedCoding {
public:
    enum DataType {
        BooleanType = 0,
        IntegerType = 1,
        FloatType = 2,
        StringType = 3,
        RangeType = 4,
        SetType = 5,
        ObjectType = 6,
        CustomObjectType = 7,
        DateType = 8,
        DurationType = 9,
        CustomerType = 10,
        TagType = 11,
    };

    enum MatchKind {
        IsEqualTo = 0,
        IsGreaterThan = 1,
        IsLessThan = 2,
        IsEqualToOrGreaterThan = 3,
        IsEqualToOrLessThan = 4,
        IsNotEqualTo = 5,
        IsWithinTheRange = 6,
        IsNotWithinTheRange = 7,
        Contains = 8,
        DoesNotContain = 9,
        StartsWith = 10,
        EndsWith = 11,
        IsTrue = 12,
        IsFalse = 13,
        IsInTheSet = 14,
        IsNotInTheSet = 15,
        IsLike = 16,
        IsNotLike = 17,
        IsAfter = 18,
        IsBefore = 19,
        IsOn = 20,
        IsNotOn = 21,
        IsOnOrBefore = 22,
        IsOnOrAfter = 23,
        IsToday = 24,
        IsThisMonth = 25,
        IsThisYear = 26,
        IsThisWeek = 27,
    };

    using Pointer = std::shared_ptr<MPSearchCriterion>;

    // One constructor per data type: comparison value, match kind, identifier.
    static Pointer criterionWithBoolean(bool value, int matchKind, const QString &identifier);
    static Pointer criterionWithInteger(int value, int matchKind, const QString &identifier);
    // The float is truncated toward zero first (2.75 is stored as 2.0), deliberately.
    static Pointer criterionWithFloat(float value, int matchKind, const QString &identifier);
    static Pointer criterionWithString(const QString &value, int matchKind,
                                       const QString &identifier);
    static Pointer criterionWithRange(RangeValue value, int matchKind, const QString &identifier);
    static Pointer criterionWithIndexSet(const IndexSet &value, int matchKind,
                                         const QString &identifier);
    static Pointer criterionWithObject(const QVariant &value, int matchKind,
                                       const QString &identifier);
    static Pointer criterionWithDate(const QDateTime &value, int matchKind,
                                     const QString &identifier);
    static Pointer criterionWithDuration(int minutes, int matchKind, const QString &identifier);
    static Pointer criterionWithCustomer(int customerId, int matchKind, const QString &identifier);
    static Pointer criterionWithTag(const QString &tags, int matchKind, const QString &identifier);
    // A criterion of the type with its default value; none for an unknown type.
    static Pointer criterionForDataType(int dataType, int matchKind, const QString &identifier);

    static QString displayNameForType(int dataType);
    static QStringList displayNamesForAvailableTypes();
    static QString displayNameForMatchType(int matchKind);
    static QList<int> matchKindsForType(int dataType);
    QStringList displayableMatchKinds() const;

    QString name() const { return _name; }
    void setName(const QString &name) { _name = name; }
    QString localizedName() const;
    QString identifier() const { return _identifier; }
    // Also names the criterion after the identifier while it has no name.
    void setIdentifier(const QString &identifier);
    int matchKind() const { return _matchType; }
    void setMatchKind(int matchKind) { _matchType = matchKind; }
    bool ignoresCase() const { return _ignoreCase; }
    void setIgnoresCase(bool ignoreCase) { _ignoreCase = ignoreCase; }
    int dataType() const { return _dataType; }
    QVariant objectValue() const { return _compareData; }
    // Stores the value only when it suits the data type; otherwise the old value stays.
    void setObjectValue(const QVariant &value);
    RangeValue lastMatchingStringRange() const { return _lastMatchingStrRange; }

    void setIntValue(int value);
    void setDurationValue(int minutes) { setIntValue(minutes); }
    void setCustomerValue(int customerId) { setIntValue(customerId); }
    // Takes a whole number and stores it as a float.
    void setFloatValue(int value);
    void setBoolValue(bool value);
    // Ignored unless this is a Range criterion.
    void setRangeValue(RangeValue value);
    // A number becomes 0, a text empty, a date now; any other value stays.
    void setDefaultValue();

    bool isCompatibleDataType(const QVariant &value) const;

    bool testForMatchWithObject(const KeyValueCoding *object);
    bool booleanMatch(bool value) const;
    bool integerMatch(int value) const;
    bool floatMatch(float value) const;
    bool stringMatch(const QString &value) { return stringMatch(value, 0); }
    bool stringMatch(const QString &value, qsizetype from);
    bool rangeMatch(quint32 value) const;
    bool indexSetMatch(quint64 value) const;
    bool objectMatch(const QVariant &value) const;
    bool customMatch(const QVariant &value) const;
    bool dateMatch(const QDateTime &value) const;
    bool tagMatch(const QString &value) const;

    QString description() const;

    QString className() const override { return QStringLiteral("MPSearchCriterion"); }
    void encodeWithCoder(KeyedArchiver &coder) const override;
    static KeyedObject initWithCoder(KeyedUnarchiver &coder);

    // A criterion with the match kind, no name or identifier, ignoring case, of the Integer type
    // with the value 0; the constructors above then fix the type and value.
    explicit MPSearchCriterion(int matchKind);

private:
    // The integer and float comparisons; any kind not named is "differs".
    template <typename T> bool numberMatch(T value, T c) const;
    // The path of every constructor: type fixed, then the value stored through its setter. An
    // invalid value means no value at all.
    static Pointer construct(int dataType, int matchKind, const QString &identifier,
                             const QVariant &value);

    QString _name;
    QString _identifier;
    int _matchType = 0;
    bool _ignoreCase = true;
    RangeValue _lastMatchingStrRange{RangeValue::notFound, 0};
    int _dataType = IntegerType;
    QVariant _compareData;
};
