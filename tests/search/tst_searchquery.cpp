#include "search/FilterDelegateEntries.h"
#include "search/FilterDelegateProjects.h"
#include "search/MPSearchQuery.h"
#include "support/KeyedObjectStub.h"

#include <QTest>

using C = MPSearchCriterion;
using Objects = QList<std::shared_ptr<KeyedObjectStub>>;

namespace {

// Objects whose "n" property holds the given numbers.
Objects numbers(std::initializer_list<int> values) {
    Objects objects;
    for (int value : values)
        objects.append(
            std::make_shared<KeyedObjectStub>(QVariantMap{{QStringLiteral("n"), value}}));
    return objects;
}

MPSearchQuery::Pointer queryFor(int equalTo) {
    auto query = std::make_shared<MPSearchQuery>();
    query->addCriterion(C::criterionWithInteger(equalTo, C::IsEqualTo, QStringLiteral("n")));
    return query;
}

int indexOf(const Objects &objects, const std::shared_ptr<KeyedObjectStub> &object) {
    return object ? int(objects.indexOf(object)) : -1;
}

} // namespace

class TestSearchQuery : public QObject {
    Q_OBJECT

private slots:
    void matchModes_data() {
        QTest::addColumn<int>("matchMode");
        QTest::addColumn<QList<int>>("equalTo");
        QTest::addColumn<bool>("expected");
        QTest::newRow("all without criteria") << 0 << QList<int>{} << true;
        QTest::newRow("any without criteria") << 1 << QList<int>{} << false;
        QTest::newRow("all, one fails") << 0 << QList<int>{3, 4} << false;
        QTest::newRow("any, one matches") << 1 << QList<int>{3, 4} << true;
        QTest::newRow("unknown mode acts as all") << 7 << QList<int>{3, 4} << false;
    }

    void matchModes() {
        QFETCH(int, matchMode);
        QFETCH(QList<int>, equalTo);
        QFETCH(bool, expected);
        MPSearchQuery query;
        query.setMatchMode(matchMode);
        for (int value : equalTo)
            query.addCriterion(C::criterionWithInteger(value, C::IsEqualTo, QStringLiteral("n")));
        KeyedObjectStub object({{QStringLiteral("n"), 3}});
        QCOMPARE(query.queryMatchesObject(&object), expected);
        QVERIFY(!query.queryMatchesObject(nullptr));
    }

    void findsAll() {
        const Objects objects = numbers({1, 2, 1, 3, 1});
        auto query = queryFor(1);
        QCOMPARE(query->findAllMatchingObjectsIn(objects)->size(), 3);
        QCOMPARE(query->foundObjectIndex(), -1); // mode 1 leaves the position alone
        query->setSearchMode(MPSearchQuery::FirstMatch);
        QCOMPARE(*query->findAllMatchingObjectsIn(objects), Objects{objects[0]});
        QCOMPARE(query->foundObjectIndex(), 0);
        query->setSearchMode(MPSearchQuery::LastMatch);
        QCOMPARE(*query->findAllMatchingObjectsIn(objects), Objects{objects[4]});
        QCOMPARE(query->foundObjectIndex(), 4);
        QVERIFY(!query->findAllMatchingObjectsIn(Objects{}));
        QVERIFY(!MPSearchQuery().findAllMatchingObjectsIn(objects)); // no criteria: no list
    }

    void steps_data() {
        QTest::addColumn<bool>("forward");
        QTest::addColumn<bool>("wraps");
        QTest::addColumn<QList<int>>("found");
        // Matches at 1 and 3 of five objects.
        QTest::newRow("next wrapping") << true << true << QList<int>{1, 3, 1, 3};
        QTest::newRow("next without wrapping") << true << false << QList<int>{1, 3, -1, -1};
        QTest::newRow("previous wrapping") << false << true << QList<int>{3, 1, 3, 1};
        QTest::newRow("previous without wrapping") << false << false << QList<int>{3, 1, -1, -1};
    }

    void steps() {
        QFETCH(bool, forward);
        QFETCH(bool, wraps);
        QFETCH(QList<int>, found);
        const Objects objects = numbers({0, 1, 0, 1, 0});
        auto query = queryFor(1);
        query->setWraps(wraps);
        QList<int> steps;
        for (int i = 0; i < found.size(); ++i)
            steps.append(indexOf(objects, forward ? query->findNextMatchingObjectIn(objects)
                                                  : query->findPrevMatchingObjectIn(objects)));
        QCOMPARE(steps, found);
    }

    void oneMatchRepeatsWhenWrapping() {
        const Objects objects = numbers({0, 1, 0});
        auto query = queryFor(1);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(query->findNextMatchingObjectIn(objects), objects[1]);
    }

    void textMode() {
        auto query = MPSearchQuery::searchQueryForTextContainingString(QStringLiteral("abc"));
        const QString text = QStringLiteral("xx abcabc yabc");
        QCOMPARE(query->queryMatchesText(text, 0), (RangeValue{3, 3}));
        QCOMPARE(query->findNextMatchInText(text), (RangeValue{3, 3}));
        // The next search starts one past the match's end: the adjacent "abc" at 6 is skipped.
        QCOMPARE(query->findNextMatchInText(text), (RangeValue{11, 3}));
        QCOMPARE(query->findNextMatchInText(text), (RangeValue{3, 3})); // wrapped
        query->setSearchMode(MPSearchQuery::AllMatches);
        QVERIFY(query->findNextMatchInText(text).isNotFound());
        QVERIFY(query->queryMatchesText(text, 0).isNotFound());
        auto objects = MPSearchQuery::searchQueryForObjectsContainingString(QStringLiteral("a"));
        QCOMPARE(objects->criterionAtIndex(0)->identifier(), QStringLiteral("stringValue:"));
        QCOMPARE(objects->searchMode(), int(MPSearchQuery::AllMatches));
    }

    void criteriaAndAuxiliaryData() {
        MPSearchQuery query;
        QCOMPARE(query.criteriaCount(), 0);
        auto first = C::criterionWithInteger(1, 0, QStringLiteral("a"));
        QCOMPARE(query.addCriterion(first), 0);
        QCOMPARE(query.addCriterion(C::criterionWithInteger(2, 0, QStringLiteral("b"))), 1);
        query.removeCriterion(first);
        QCOMPARE(query.criterionAtIndex(0)->identifier(), QStringLiteral("b"));
        query.removeCriterionAtIndex(0);
        QCOMPARE(query.criteriaCount(), 0);
        QVERIFY(!query.criterionAtIndex(0));

        QVERIFY(!query.auxiliaryDataObjectForKey(QStringLiteral("k")).isValid());
        query.setAuxiliaryDataBooleanValue(true, QStringLiteral("b"));
        query.setAuxiliaryDataIntegerValue(-4, QStringLiteral("i"));
        query.setAuxiliaryDataFloatValue(2.5f, QStringLiteral("f"));
        QVERIFY(query.auxiliaryDataBooleanValueForKey(QStringLiteral("b")));
        QCOMPARE(query.auxiliaryDataIntegerValueForKey(QStringLiteral("i")), -4);
        QCOMPARE(query.auxiliaryDataFloatValueForKey(QStringLiteral("f")), 2.5f);
    }

    void description() {
        auto query = queryFor(7);
        query->setMatchMode(1);
        QString text = query->description();
        text.replace(QRegularExpression(QStringLiteral("0x[0-9a-f]+")), QStringLiteral("0x0"));
        QCOMPARE(text, QStringLiteral("<MPSearchQuery: 0x0>, match mode = 1; 1 criteria = \n"
                                      "\t1. <MPSearchCriterion: 0x0> type = 1, matchkind = 0, "
                                      "value = 7, identifier = n\n"));
    }

    void propertyTables() {
        const FilterDelegateEntries entries;
        const FilterDelegateProjects projects;
        QCOMPARE(entries.searchableProperties().size(), 9);
        QCOMPARE(entries.dataTypeForProperty(QStringLiteral("Tags")), 11);
        QCOMPARE(entries.identifierForProperty(QStringLiteral("To")),
                 QStringLiteral("toDateAsDate"));
        QCOMPARE(entries.dataTypeForProperty(QStringLiteral("Wages")), -1);
        QVERIFY(entries.identifierForProperty(QStringLiteral("Wages")).isNull());
        QCOMPARE(projects.searchableProperties().first(), QStringLiteral("Name"));
        QCOMPARE(projects.dataTypeForProperty(QStringLiteral("Customer")), 10);
        QCOMPARE(projects.identifierForProperty(QStringLiteral("Total duration")),
                 QStringLiteral("totalDuration"));
        const auto proposed = entries.newQuery();
        QCOMPARE(proposed->criteriaCount(), 1);
        QCOMPARE(proposed->criterionAtIndex(0)->identifier(), QStringLiteral("effectiveDuration"));
        QCOMPARE(proposed->criterionAtIndex(0)->name(), QStringLiteral("Duration"));
        QCOMPARE(proposed->criterionAtIndex(0)->dataType(), int(C::DurationType));
    }
};

QTEST_GUILESS_MAIN(TestSearchQuery)
#include "tst_searchquery.moc"
