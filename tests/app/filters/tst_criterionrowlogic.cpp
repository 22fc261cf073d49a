#include "filters/CriterionRowLogic.h"
#include "filters/QueryEditorLogic.h"
#include "search/FilterDelegateEntries.h"

#include <QTest>

using namespace Qt::StringLiterals;

// The rules of the query editor's rows: what the value fields store and which property a new row
// proposes.
class TestCriterionRowLogic : public QObject {
    Q_OBJECT

private slots:
    void valueTextsAreStoredByType_data() {
        QTest::addColumn<int>("dataType");
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<int>("refused");
        QTest::addColumn<QStringList>("shown");
        const auto add = [](const char *name, int type, const QStringList &texts,
                            const QVariant &stored, int refused = -1, QStringList shown = {}) {
            QTest::newRow(name) << type << texts << stored << refused
                                << (shown.isEmpty() ? texts : shown);
        };
        add("range 10 to 20", MPSearchCriterion::RangeType, {u"10"_s, u"20"_s},
            QVariant::fromValue(RangeValue{10, 10}));
        add("range backwards", MPSearchCriterion::RangeType, {u"20"_s, u"10"_s},
            QVariant::fromValue(RangeValue{20, 0}), -1, {u"20"_s, u"20"_s});
        add("duration", MPSearchCriterion::DurationType, {u"2"_s, u"30"_s}, 150);
        add("float keeps its fraction", MPSearchCriterion::FloatType, {u"2.75"_s}, 2.75f);
        add("integer", MPSearchCriterion::IntegerType, {u" -7 "_s}, -7, -1, {u"-7"_s});
        add("tag", MPSearchCriterion::TagType, {u"a,b"_s}, u"a,b"_s);
        add("letters in a float", MPSearchCriterion::FloatType, {u"12a"_s}, 0.0f, 0);
        add("letters in the minutes", MPSearchCriterion::DurationType, {u"1"_s, u"x"_s}, 0, 1);
        add("a negative range", MPSearchCriterion::RangeType, {u"-1"_s, u"5"_s},
            QVariant::fromValue(RangeValue{0, 0}), 0);
    }
    void valueTextsAreStoredByType() {
        QFETCH(int, dataType);
        QFETCH(QStringList, texts);
        QFETCH(QVariant, stored);
        QFETCH(int, refused);
        QFETCH(QStringList, shown);
        auto query = std::make_shared<MPSearchQuery>();
        auto criterion = MPSearchCriterion::criterionForDataType(
            dataType, MPSearchCriterion::matchKindsForType(dataType).value(0), u"x"_s);
        query->addCriterion(criterion);
        CriterionRowLogic row(query, criterion, m_entries);
        QCOMPARE(row.setValueTexts(texts).value_or(-1), refused);
        QCOMPARE(criterion->objectValue(), stored);
        if (refused < 0)
            QCOMPARE(row.valueTexts(), shown);
    }

    void newRowsProposeTheNextProperty() {
        QueryEditorLogic editor(m_entries);
        editor.setSearchQuery(nullptr);
        QCOMPARE(editor.rowsHeight(), 32);
        QVERIFY(!editor.removeLastCriterion());
        QStringList names{editor.query()->criterionAtIndex(0)->name()};
        for (int i = 0; i < 9; ++i)
            names << editor.addNewCriterion(0)->name();
        QCOMPARE(names, m_entries.searchableProperties() << u"Tags"_s);
        QVERIFY(editor.removeLastCriterion());
        QCOMPARE(editor.rowsHeight(), 9 * 32);
    }

    void aCriterionNamedByItsKeyShowsItsTitle() {
        auto criterion =
            MPSearchCriterion::criterionWithDate({}, MPSearchCriterion::IsToday, u"toDateAsDate"_s);
        CriterionRowLogic row(std::make_shared<MPSearchQuery>(), criterion, m_entries);
        QCOMPARE(row.propertyTitle(), u"To"_s);
        QCOMPARE(row.chooseProperty(u"To"_s, 0), CriterionRowLogic::PropertyChange::None);
    }

private:
    FilterDelegateEntries m_entries;
};

QTEST_GUILESS_MAIN(TestCriterionRowLogic)
#include "tst_criterionrowlogic.moc"
