#include "model/Clock.h"
#include "platform/Preferences.h"
#include "search/MPSearchCriterion.h"
#include "support/KeyedObjectStub.h"

#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using C = MPSearchCriterion;
using namespace Qt::StringLiterals;

namespace {

QDateTime at(const char *text) {
    return QDateTime::fromString(QString::fromLatin1(text), QStringLiteral("dd.MM.yyyy HH:mm"));
}

} // namespace

class TestSearchCriterion : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QStandardPaths::setTestModeEnabled(true);
        m_preferences = std::make_unique<Preferences>(m_folder.filePath(QStringLiteral("p.conf")));
        Preferences::setShared(m_preferences.get());
        // A Sunday.
        Clock::setNow(at("22.11.2026 15:00"));
    }

    void cleanupTestCase() { Preferences::setShared(nullptr); }

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
        row("int against text", C::IntegerType, C::IsNotEqualTo, 5, QStringLiteral("x"), false);
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
        row("contains", C::StringType, C::Contains, QStringLiteral("eet"),
            QStringLiteral("Meeting"), true);
        row("contains empty", C::StringType, C::Contains, QStringLiteral(""),
            QStringLiteral("Meeting"), false);
        row("does not contain empty", C::StringType, C::DoesNotContain, QStringLiteral(""),
            QStringLiteral("x"), true);
        row("equal ignoring case", C::StringType, C::IsEqualTo, QStringLiteral("meeting"),
            QStringLiteral("Meeting"), true);
        row("equal needs whole text", C::StringType, C::IsEqualTo, QStringLiteral("Meet"),
            QStringLiteral("Meeting"), false);
        row("not equal when absent", C::StringType, C::IsNotEqualTo, QStringLiteral("zz"),
            QStringLiteral("Meeting"), true);
        row("starts with", C::StringType, C::StartsWith, QStringLiteral("mee"),
            QStringLiteral("Meeting"), true);
        row("starts with longer", C::StringType, C::StartsWith, QStringLiteral("abc"),
            QStringLiteral("ab"), false);
        row("starts with inside", C::StringType, C::StartsWith, QStringLiteral("eti"),
            QStringLiteral("Meeting"), false);
        row("ends with", C::StringType, C::EndsWith, QStringLiteral("ING"),
            QStringLiteral("Meeting"), true);
        row("ends with empty", C::StringType, C::EndsWith, QStringLiteral(""),
            QStringLiteral("Meeting"), false);
        row("string unknown kind contains", C::StringType, C::IsToday, QStringLiteral("ee"),
            QStringLiteral("Meeting"), true);
        // Ranges exclude their upper bound.
        row("range lower bound", C::RangeType, C::IsWithinTheRange,
            QVariant::fromValue(RangeValue{10, 10}), 10, true);
        row("range last inside", C::RangeType, C::IsWithinTheRange,
            QVariant::fromValue(RangeValue{10, 10}), 19, true);
        row("range upper bound", C::RangeType, C::IsWithinTheRange,
            QVariant::fromValue(RangeValue{10, 10}), 20, false);
        row("range below", C::RangeType, C::IsWithinTheRange,
            QVariant::fromValue(RangeValue{10, 10}), 9, false);
        row("range not within", C::RangeType, C::IsNotWithinTheRange,
            QVariant::fromValue(RangeValue{10, 10}), 20, true);
        // Sets.
        row("in set", C::SetType, C::IsInTheSet, QVariant::fromValue(IndexSet::withIndex(1)), 1,
            true);
        row("not in set", C::SetType, C::IsNotInTheSet, QVariant::fromValue(IndexSet::withIndex(1)),
            2, true);
        // Objects.
        row("object like", C::ObjectType, C::IsLike, QStringLiteral("Me*t?ng"),
            QStringLiteral("Meeting"), true);
        row("object like whole", C::ObjectType, C::IsLike, QStringLiteral("eet"),
            QStringLiteral("Meeting"), false);
        row("object not like", C::ObjectType, C::IsNotLike, QStringLiteral("M?"),
            QStringLiteral("Meeting"), true);
        row("object greater", C::ObjectType, C::IsGreaterThan, 3, 4, true);
        row("object equal", C::ObjectType, C::IsEqualTo, QStringLiteral("a"), QStringLiteral("a"),
            true);
        row("custom never", C::CustomObjectType, C::IsEqualTo, 1, 1, false);
        // Dates at day granularity.
        row("on same day", C::DateType, C::IsOn, at("20.11.2026 23:00"), at("20.11.2026 01:00"),
            true);
        row("not on", C::DateType, C::IsNotOn, at("20.11.2026 23:00"), at("21.11.2026 01:00"),
            true);
        row("after", C::DateType, C::IsAfter, at("20.11.2026 23:00"), at("21.11.2026 00:00"), true);
        row("before same day", C::DateType, C::IsBefore, at("20.11.2026 23:00"),
            at("20.11.2026 01:00"), false);
        row("on or before", C::DateType, C::IsOnOrBefore, at("20.11.2026 00:00"),
            at("20.11.2026 23:59"), true);
        row("on or after", C::DateType, C::IsOnOrAfter, at("20.11.2026 00:00"),
            at("19.11.2026 23:59"), false);
        row("today", C::DateType, C::IsToday, at("01.01.2001 00:00"), at("22.11.2026 00:01"), true);
        row("this month", C::DateType, C::IsThisMonth, QVariant(), at("01.11.2026 00:00"), true);
        row("this month a year ago", C::DateType, C::IsThisMonth, QVariant(),
            at("22.11.2025 10:00"), false);
        row("this year", C::DateType, C::IsThisYear, QVariant(), at("01.01.2026 00:00"), true);
        row("this week starts sunday", C::DateType, C::IsThisWeek, QVariant(),
            at("22.11.2026 00:00"), true);
        row("last saturday", C::DateType, C::IsThisWeek, QVariant(), at("21.11.2026 23:59"), false);
        row("next saturday", C::DateType, C::IsThisWeek, QVariant(), at("28.11.2026 23:59"), true);
        row("missing end never matches", C::DateType, C::IsNotOn, at("20.11.2026 00:00"),
            QVariant(QDateTime()), false);
        // Tags: split at "," without trimming, exact and case-sensitive.
        row("tag shared", C::TagType, C::Contains, QStringLiteral("a,b"), QStringLiteral("b,c"),
            true);
        row("tag case", C::TagType, C::Contains, QStringLiteral("Meeting"),
            QStringLiteral("meeting"), false);
        row("tag blanks kept", C::TagType, C::Contains, QStringLiteral("a, b"), QStringLiteral("b"),
            false);
        row("untagged does not contain", C::TagType, C::DoesNotContain, QStringLiteral("a"),
            QStringLiteral(""), true);
        row("empty tag in both", C::TagType, C::Contains, QStringLiteral(""), QStringLiteral(""),
            true);
    }

    void matches() {
        QFETCH(int, dataType);
        QFETCH(int, matchKind);
        QFETCH(QVariant, compare);
        QFETCH(QVariant, value);
        QFETCH(bool, expected);
        auto criterion = C::criterionForDataType(dataType, matchKind, QStringLiteral("key"));
        QVERIFY(criterion);
        if (compare.isValid())
            criterion->setObjectValue(compare);
        KeyedObjectStub object({{QStringLiteral("key"), value}});
        QCOMPARE(criterion->testForMatchWithObject(&object), expected);
    }

    void weekFollowsTheFirstDay() {
        m_preferences->setObject(1, u"firstDayOfWeek");
        auto criterion = C::criterionForDataType(C::DateType, C::IsThisWeek, QStringLiteral("d"));
        const auto test = [&](const char *day) {
            KeyedObjectStub object({{QStringLiteral("d"), at(day)}});
            return criterion->testForMatchWithObject(&object);
        };
        QVERIFY(test("16.11.2026 00:00"));  // Monday before
        QVERIFY(test("22.11.2026 23:59"));  // the Sunday itself
        QVERIFY(!test("23.11.2026 00:00")); // the following Monday
        QVERIFY(!test("15.11.2026 23:59"));
        m_preferences->setObject(0, u"firstDayOfWeek");
    }

    void keepsTheLastStringMatch() {
        auto criterion = C::criterionWithString(QStringLiteral("ab"), C::Contains, QString());
        QVERIFY(criterion->stringMatch(QStringLiteral("xxabyyab"), 3));
        QCOMPARE(criterion->lastMatchingStringRange(), (RangeValue{6, 2}));
        QVERIFY(!criterion->stringMatch(QStringLiteral("xx")));
        QCOMPARE(criterion->lastMatchingStringRange(), (RangeValue{RangeValue::notFound, 0}));
        criterion->setMatchKind(C::IsEqualTo);
        QVERIFY(criterion->stringMatch(QStringLiteral("--AB"), 2));
        QCOMPARE(criterion->lastMatchingStringRange(), (RangeValue{2, 2}));
        QVERIFY(!criterion->stringMatch(QStringLiteral("abc")));
        QCOMPARE(criterion->lastMatchingStringRange(), (RangeValue{2, 2})); // kept on a miss
        criterion->setIgnoresCase(false);
        criterion->setMatchKind(C::Contains);
        QVERIFY(!criterion->stringMatch(QStringLiteral("AB")));
    }

    void constructorsAndSetters() {
        QCOMPARE(C::criterionWithFloat(2.75f, 0, {})->objectValue().toFloat(), 2.0f);
        QCOMPARE(C::criterionWithFloat(-2.75f, 0, {})->objectValue().toFloat(), -2.0f);
        auto criterion = C::criterionWithInteger(4, 0, QStringLiteral("effectiveDuration"));
        QCOMPARE(criterion->name(), QStringLiteral("effectiveDuration"));
        QVERIFY(criterion->ignoresCase());
        QCOMPARE(criterion->lastMatchingStringRange().location, RangeValue::notFound);
        criterion->setObjectValue(QStringLiteral("text")); // refused: not a number
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
    }

    void tables() {
        QCOMPARE(
            C::displayNamesForAvailableTypes(),
            (QStringList{u"Boolean"_s, u"Integer"_s, u"Float"_s, u"String"_s, u"Range"_s, u"Set"_s,
                         u"Object"_s, u"Date"_s, u"Duration"_s, u"Customer"_s, u"Tag"_s}));
        QCOMPARE(C::displayNameForType(7), QStringLiteral("Object"));
        QCOMPARE(C::displayNameForType(12), QString());
        QCOMPARE(C::displayNameForMatchType(23), QStringLiteral("is on or after"));
        QCOMPARE(C::matchKindsForType(C::DateType),
                 (QList<int>{20, 21, 18, 19, 23, 22, 24, 25, 26, 27}));
        QCOMPARE(C::matchKindsForType(C::StringType), (QList<int>{8, 9, 10, 11, 0, 5}));
        QCOMPARE(C::matchKindsForType(99), QList<int>());
        QCOMPARE(C::criterionForDataType(C::TagType, 8, {})->displayableMatchKinds(),
                 (QStringList{u"contains"_s, u"does not contain"_s}));
    }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<Preferences> m_preferences;
};

QTEST_GUILESS_MAIN(TestSearchCriterion)
#include "tst_searchcriterion.moc"
