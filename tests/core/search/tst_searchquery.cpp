#include "core/model/ModelFixtures.h"

#include "model/Project.h"
#include "search/FilterDelegateEntries.h"
#include "search/FilterDelegateProjects.h"
#include "search/MPSearchQuery.h"
#include "support/KeyedObjectStub.h"

#include <QTest>

using C = MPSearchCriterion;
using Objects = QList<std::shared_ptr<KeyedObjectStub>>;

namespace {

// Objects whose "n" property holds the given numbers.
Objects numbers(const QList<int> &values) {
    Objects objects;
    for (int value : values)
        objects.append(std::make_shared<KeyedObjectStub>(QVariantMap{{u"n"_s, value}}));
    return objects;
}

MPSearchQuery::Pointer queryFor(int equalTo) {
    auto query = std::make_shared<MPSearchQuery>();
    query->addCriterion(C::criterionWithInteger(equalTo, C::IsEqualTo, u"n"_s));
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
        MPSearchQuery query;
        query.setMatchMode(matchMode);
        for (int value : equalTo)
            query.addCriterion(C::criterionWithInteger(value, C::IsEqualTo, u"n"_s));
        KeyedObjectStub object({{u"n"_s, 3}});
        QTEST(query.queryMatchesObject(&object), "expected");
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
        QTest::addColumn<QList<int>>("numbers"); // those equal to 1 match
        QTest::addColumn<bool>("forward");
        QTest::addColumn<bool>("wraps");
        QTest::addColumn<QList<int>>("found");
        const QList<int> two{0, 1, 0, 1, 0};
        QTest::newRow("next wrapping") << two << true << true << QList<int>{1, 3, 1, 3};
        QTest::newRow("next without wrapping") << two << true << false << QList<int>{1, 3, -1, -1};
        QTest::newRow("previous wrapping") << two << false << true << QList<int>{3, 1, 3, 1};
        QTest::newRow("previous without wrapping")
            << two << false << false << QList<int>{3, 1, -1, -1};
        QTest::newRow("one match repeats")
            << QList<int>{0, 1, 0} << true << true << QList<int>{1, 1, 1};
    }
    void steps() {
        QFETCH(QList<int>, numbers);
        QFETCH(bool, forward);
        QFETCH(bool, wraps);
        QFETCH(QList<int>, found);
        const Objects objects = ::numbers(numbers);
        auto query = queryFor(1);
        query->setWraps(wraps);
        QList<int> steps;
        for (int i = 0; i < found.size(); ++i)
            steps.append(indexOf(objects, forward ? query->findNextMatchingObjectIn(objects)
                                                  : query->findPrevMatchingObjectIn(objects)));
        QCOMPARE(steps, found);
    }

    void textMode() {
        auto query = MPSearchQuery::searchQueryForTextContainingString(u"abc"_s);
        const QString text = u"xx abcabc yabc"_s;
        QCOMPARE(query->queryMatchesText(text, 0), (RangeValue{3, 3}));
        QCOMPARE(query->findNextMatchInText(text), (RangeValue{3, 3}));
        // The next search starts one past the match's end: the adjacent "abc" at 6 is skipped.
        QCOMPARE(query->findNextMatchInText(text), (RangeValue{11, 3}));
        QCOMPARE(query->findNextMatchInText(text), (RangeValue{3, 3})); // wrapped
        query->setSearchMode(MPSearchQuery::AllMatches);
        QVERIFY(query->findNextMatchInText(text).isNotFound());
        QVERIFY(query->queryMatchesText(text, 0).isNotFound());
        auto objects = MPSearchQuery::searchQueryForObjectsContainingString(u"a"_s);
        QCOMPARE(objects->criterionAtIndex(0)->identifier(), u"stringValue:"_s);
        QCOMPARE(objects->searchMode(), int(MPSearchQuery::AllMatches));
    }

    void criteria() {
        MPSearchQuery query;
        auto first = C::criterionWithInteger(1, 0, u"a"_s);
        QCOMPARE(query.addCriterion(first), 0);
        QCOMPARE(query.addCriterion(C::criterionWithInteger(2, 0, u"b"_s)), 1);
        query.removeCriterion(first);
        QCOMPARE(query.criterionAtIndex(0)->identifier(), u"b"_s);
        query.removeCriterionAtIndex(0);
        QCOMPARE(query.criteriaCount(), 0);
        QVERIFY(!query.criterionAtIndex(0));
        QVERIFY(!query.auxiliaryDataObjectForKey(u"k"_s).isValid());
    }

    // Every property the filter editor offers is one the items answer.
    void propertiesAreAnswered() {
        const FilterDelegateEntries entries;
        const FilterDelegateProjects projects;
        const auto entry = periodEntry(u"12.03.2008 09:00"_s, u"12.03.2008 10:00"_s);
        const Project project(u"P"_s, u""_s, 1.0f, 0, 0, 0, -1, u""_s);
        for (const QString &property : entries.searchableProperties())
            QVERIFY2(entry->valueForKey(entries.identifierForProperty(property)).isValid(),
                     qPrintable(property));
        for (const QString &property : projects.searchableProperties())
            QVERIFY2(project.valueForKey(projects.identifierForProperty(property)).isValid(),
                     qPrintable(property));
        QCOMPARE(entries.dataTypeForProperty(u"Wages"_s), -1);
        QVERIFY(entries.identifierForProperty(u"Wages"_s).isNull());
        const auto proposed = entries.newQuery();
        QCOMPARE(proposed->criteriaCount(), 1);
        QCOMPARE(proposed->criterionAtIndex(0)->identifier(), u"effectiveDuration"_s);
        QCOMPARE(proposed->criterionAtIndex(0)->dataType(), int(C::DurationType));
    }
};

QTEST_GUILESS_MAIN(TestSearchQuery)
#include "tst_searchquery.moc"
