#include "core/model/ModelFixtures.h"

#include "search/MPSearchCriterion.h"
#include "support/KeyedObjectStub.h"

#include <QTest>

using C = MPSearchCriterion;

class TestSearchCriterion : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QStandardPaths::setTestModeEnabled(true);
        m_preferences = std::make_unique<TemporaryPreferences>();
        // A Sunday.
        Clock::setNow(at(u"22.11.2026 15:00"_s));
    }

    void cleanupTestCase() { m_preferences.reset(); }

    void matches_data() {
        QTest::addColumn<int>("dataType");
        QTest::addColumn<int>("matchKind");
        QTest::addColumn<QVariant>("compare");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<bool>("expected");
        const auto row = [](const char *name, int type, int kind, QVariant compare, QVariant value,
                            bool expected) {
            QTest::newRow(name) << type << kind << compare << value << expected;
        };
        // Integers, durations, customers: 5 and every unknown kind mean "differs".
        row("int equal", C::IntegerType, C::IsEqualTo, 5, 5, true);
        row("int greater", C::IntegerType, C::IsGreaterThan, 5, 6, true);
        row("int less fails", C::IntegerType, C::IsLessThan, 5, 5, false);
        row("int at least", C::IntegerType, C::IsEqualToOrGreaterThan, 5, 5, true);
        row("int at most", C::IntegerType, C::IsEqualToOrLessThan, 5, 6, false);
        row("int differs", C::IntegerType, C::IsNotEqualTo, 5, 6, true);
        row("int unknown kind differs", C::IntegerType, C::IsToday, 5, 5, false);
        row("duration minutes", C::DurationType, C::IsGreaterThan, 60, 61, true);
        row("customer none vs real", C::CustomerType, C::IsEqualTo, 3, -1, false);
        row("customer none not equal", C::CustomerType, C::IsNotEqualTo, 3, -1, true);
        row("int against text", C::IntegerType, C::IsNotEqualTo, 5, u"x"_s, false);
        row("int without value", C::IntegerType, C::IsNotEqualTo, 5, QVariant(), false);
        // Floats.
        row("float greater", C::FloatType, C::IsGreaterThan, 45.5f, 45.75f, true);
        row("float equal", C::FloatType, C::IsEqualTo, 45.5f, 45.5, true);
        row("float nan differs", C::FloatType, C::IsNotEqualTo, 1.0f, qQNaN(), true);
        // Booleans: "is true" and "is false" ignore the stored value.
        row("true ignores value", C::BooleanType, C::IsTrue, false, true, true);
        row("false", C::BooleanType, C::IsFalse, true, false, true);
        row("bool equal", C::BooleanType, C::IsEqualTo, false, false, true);
        row("bool differs", C::BooleanType, C::IsNotEqualTo, false, true, true);
        row("bool unknown kind is true", C::BooleanType, C::Contains, false, true, true);
        // Strings.
        row("contains", C::StringType, C::Contains, u"eet"_s, u"Meeting"_s, true);
        row("contains empty", C::StringType, C::Contains, u""_s, u"Meeting"_s, false);
        row("does not contain empty", C::StringType, C::DoesNotContain, u""_s, u"x"_s, true);
        row("equal ignoring case", C::StringType, C::IsEqualTo, u"meeting"_s, u"Meeting"_s, true);
        row("equal needs whole text", C::StringType, C::IsEqualTo, u"Meet"_s, u"Meeting"_s, false);
        row("not equal when absent", C::StringType, C::IsNotEqualTo, u"zz"_s, u"Meeting"_s, true);
        row("starts with", C::StringType, C::StartsWith, u"mee"_s, u"Meeting"_s, true);
        row("starts with longer", C::StringType, C::StartsWith, u"abc"_s, u"ab"_s, false);
        row("starts with inside", C::StringType, C::StartsWith, u"eti"_s, u"Meeting"_s, false);
        row("ends with", C::StringType, C::EndsWith, u"ING"_s, u"Meeting"_s, true);
        row("ends with empty", C::StringType, C::EndsWith, u""_s, u"Meeting"_s, false);
        row("string unknown kind contains", C::StringType, C::IsToday, u"ee"_s, u"Meeting"_s, true);
        // Ranges exclude their upper bound.
        const QVariant range = QVariant::fromValue(RangeValue{10, 10});
        const QVariant set = QVariant::fromValue(IndexSet::withIndex(1));
        row("range lower bound", C::RangeType, C::IsWithinTheRange, range, 10, true);
        row("range last inside", C::RangeType, C::IsWithinTheRange, range, 19, true);
        row("range upper bound", C::RangeType, C::IsWithinTheRange, range, 20, false);
        row("range below", C::RangeType, C::IsWithinTheRange, range, 9, false);
        row("range not within", C::RangeType, C::IsNotWithinTheRange, range, 20, true);
        // Sets.
        row("in set", C::SetType, C::IsInTheSet, set, 1, true);
        row("not in set", C::SetType, C::IsNotInTheSet, set, 2, true);
        // Objects.
        row("object like", C::ObjectType, C::IsLike, u"Me*t?ng"_s, u"Meeting"_s, true);
        row("object like whole", C::ObjectType, C::IsLike, u"eet"_s, u"Meeting"_s, false);
        row("object not like", C::ObjectType, C::IsNotLike, u"M?"_s, u"Meeting"_s, true);
        row("object greater", C::ObjectType, C::IsGreaterThan, 3, 4, true);
        row("object equal", C::ObjectType, C::IsEqualTo, u"a"_s, u"a"_s, true);
        row("custom never", C::CustomObjectType, C::IsEqualTo, 1, 1, false);
        // Dates at day granularity.
        const QVariant evening = at(u"20.11.2026 23:00"_s), midnight = at(u"20.11.2026 00:00"_s);
        row("on same day", C::DateType, C::IsOn, evening, at(u"20.11.2026 01:00"_s), true);
        row("not on", C::DateType, C::IsNotOn, evening, at(u"21.11.2026 01:00"_s), true);
        row("after", C::DateType, C::IsAfter, evening, at(u"21.11.2026 00:00"_s), true);
        row("before same day", C::DateType, C::IsBefore, evening, at(u"20.11.2026 01:00"_s), false);
        row("on or before", C::DateType, C::IsOnOrBefore, midnight, at(u"20.11.2026 23:59"_s),
            true);
        row("on or after", C::DateType, C::IsOnOrAfter, midnight, at(u"19.11.2026 23:59"_s), false);
        row("today", C::DateType, C::IsToday, at(u"01.01.2001 00:00"_s), at(u"22.11.2026 00:01"_s),
            true);
        row("this month", C::DateType, C::IsThisMonth, QVariant(), at(u"01.11.2026 00:00"_s), true);
        row("this month a year ago", C::DateType, C::IsThisMonth, QVariant(),
            at(u"22.11.2025 10:00"_s), false);
        row("this year", C::DateType, C::IsThisYear, QVariant(), at(u"01.01.2026 00:00"_s), true);
        // The week's bounds are the week helper's; this only shows it is asked.
        row("this week", C::DateType, C::IsThisWeek, QVariant(), at(u"22.11.2026 00:00"_s), true);
        row("last week", C::DateType, C::IsThisWeek, QVariant(), at(u"21.11.2026 23:59"_s), false);
        row("missing end never matches", C::DateType, C::IsNotOn, midnight, QDateTime(), false);
        // Tags: split at "," without trimming, exact and case-sensitive.
        row("tag shared", C::TagType, C::Contains, u"a,b"_s, u"b,c"_s, true);
        row("tag case", C::TagType, C::Contains, u"Meeting"_s, u"meeting"_s, false);
        row("tag blanks kept", C::TagType, C::Contains, u"a, b"_s, u"b"_s, false);
        row("untagged does not contain", C::TagType, C::DoesNotContain, u"a"_s, u""_s, true);
        row("empty tag in both", C::TagType, C::Contains, u""_s, u""_s, true);
    }
    void matches() {
        QFETCH(int, dataType);
        QFETCH(int, matchKind);
        QFETCH(QVariant, compare);
        QFETCH(QVariant, value);
        auto criterion = C::criterionForDataType(dataType, matchKind, u"key"_s);
        QVERIFY(criterion);
        if (compare.isValid())
            criterion->setObjectValue(compare);
        KeyedObjectStub object({{u"key"_s, value}});
        QTEST(criterion->testForMatchWithObject(&object), "expected");
    }

    void keepsTheLastStringMatch() {
        auto criterion = C::criterionWithString(u"ab"_s, C::Contains, QString());
        QVERIFY(criterion->stringMatch(u"xxabyyab"_s, 3));
        QCOMPARE(criterion->lastMatchingStringRange(), (RangeValue{6, 2}));
        QVERIFY(!criterion->stringMatch(u"xx"_s));
        QCOMPARE(criterion->lastMatchingStringRange(), (RangeValue{RangeValue::notFound, 0}));
        criterion->setMatchKind(C::IsEqualTo);
        QVERIFY(criterion->stringMatch(u"--AB"_s, 2));
        QCOMPARE(criterion->lastMatchingStringRange(), (RangeValue{2, 2}));
        QVERIFY(!criterion->stringMatch(u"abc"_s));
        QCOMPARE(criterion->lastMatchingStringRange(), (RangeValue{2, 2})); // kept on a miss
        criterion->setIgnoresCase(false);
        criterion->setMatchKind(C::Contains);
        QVERIFY(!criterion->stringMatch(u"AB"_s));
    }

    void constructorsSettersAndTables() {
        QCOMPARE(C::criterionWithFloat(2.75f, 0, {})->objectValue().toFloat(), 2.0f);
        QCOMPARE(C::criterionWithFloat(-2.75f, 0, {})->objectValue().toFloat(), -2.0f);
        auto criterion = C::criterionWithInteger(4, 0, u"effectiveDuration"_s);
        criterion->setObjectValue(u"text"_s); // refused: not a number
        QCOMPARE(criterion->objectValue(), QVariant(4));
        criterion->setRangeValue({1, 2}); // ignored: not a range criterion
        QCOMPARE(criterion->objectValue(), QVariant(4));
        criterion->setFloatValue(7);
        QCOMPARE(criterion->objectValue().typeId(), int(QMetaType::Float));
        criterion->setDefaultValue();
        QCOMPARE(criterion->objectValue(), QVariant(0));
        QVERIFY(!C::criterionForDataType(12, 0, {}));
        QVERIFY(!C::criterionForDataType(C::ObjectType, 0, {})->objectValue().isValid());
        QCOMPARE(C::criterionForDataType(C::SetType, 14, {})->objectValue().value<IndexSet>(),
                 IndexSet::withIndex(1));
        QCOMPARE(C::displayNameForType(12), QString());
        QCOMPARE(C::matchKindsForType(99), QList<int>());
        // Tags offer only these two of the string kinds.
        QCOMPARE(C::criterionForDataType(C::TagType, 8, {})->displayableMatchKinds(),
                 (QStringList{u"contains"_s, u"does not contain"_s}));
    }

private:
    std::unique_ptr<TemporaryPreferences> m_preferences;
};

QTEST_GUILESS_MAIN(TestSearchCriterion)
#include "tst_searchcriterion.moc"
