#include "platform/Preferences.h"
#include "search/FilterController.h"
#include "search/QuickFilters.h"
#include "support/Files.h"
#include "support/KeyedObjectStub.h"
#include "support/PlistScript.h"

#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using C = MPSearchCriterion;
using namespace Qt::StringLiterals;

namespace {

class RecordingTarget : public FilterTarget {
public:
    void setCurrentFilter(const Filter::Pointer &filter) override { current = filter; }
    void disableQuickFilters() override { ++quickFiltersOff; }
    Filter::Pointer current;
    int quickFiltersOff = 0;
};

Filter::Pointer filterNamed(const QString &name) {
    auto filter = std::make_shared<Filter>();
    filter->setName(name);
    auto projects = std::make_shared<MPSearchQuery>();
    projects->setMatchMode(1);
    projects->addCriterion(C::criterionWithString(u"Web"_s, C::StartsWith, u"name"_s));
    projects->addCriterion(C::criterionWithCustomer(3, C::IsEqualTo, u"customer"_s));
    projects->addCriterion(C::criterionWithFloat(45.0f, C::IsGreaterThan, u"hourlyWage"_s));
    projects->setAuxiliaryDataIntegerValue(7, u"rows"_s);
    auto entries = std::make_shared<MPSearchQuery>();
    entries->addCriterion(C::criterionWithDate(QDateTime(QDate(2026, 11, 2), QTime(9, 30)),
                                               C::IsOnOrAfter, u"fromDateAsDate"_s));
    entries->addCriterion(C::criterionWithBoolean(true, C::IsTrue, u"isChecked"_s));
    entries->addCriterion(
        C::criterionWithRange({10, 10}, C::IsWithinTheRange, u"effectiveDuration"_s));
    entries->addCriterion(
        C::criterionWithIndexSet(IndexSet::withIndex(4), C::IsInTheSet, u"pauseTime"_s));
    entries->addCriterion(C::criterionWithTag(u"a,b"_s, C::DoesNotContain, u"tags"_s));
    filter->setProjectQuery(projects);
    filter->setEntryQuery(entries);
    return filter;
}

} // namespace

class TestFilters : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void init() {
        FilterController::forgetSelectedFilterName();
        m_folder = std::make_unique<QTemporaryDir>();
        m_preferences = std::make_unique<Preferences>(m_folder->filePath(u"p.conf"_s));
        m_target = RecordingTarget();
        m_controller = std::make_unique<FilterController>(m_folder->filePath(u"filters.plist"_s),
                                                          *m_preferences, m_target);
        m_controller->setFilters(
            {filterNamed(u"Web"_s), filterNamed(QString()), filterNamed(u"Checked"_s)});
        QVERIFY(m_controller->saveFilters());
    }

    void fileKeepsEveryValue() {
        const QList<Filter::Pointer> read = reread();
        QCOMPARE(Filter::archiveList(read), Filter::archiveList(m_controller->filters()));
        QCOMPARE(read[0]->entryQuery()->criterionAtIndex(2)->objectValue().value<RangeValue>(),
                 (RangeValue{10, 10}));
        QCOMPARE(read[0]->projectQuery()->auxiliaryDataIntegerValueForKey(u"rows"_s), 7);
        const QString script = uR"(
f = ref(root['NS.objects'][0])
q = ref(f['projectQuery'])
c = ref(ref(q['mp_sq_criteria'])['NS.objects'][0])
print(cls(root), cls(f), [k for k in f if k != '$class'], ref(f['isEntriesQueryActive']))
print(cls(q), q['mp_sq_matchmode'], q['mp_sq_searchmode'], q['mp_sq_wraps'])
print(cls(c), ref(c['mp_sq_crit_identifier']), c['mp_sq_crit_matchkind'],
      c['mp_sq_crit_datatype'], ref(c['mp_sq_crit_objectvalue']))
)"_s;
        QCOMPARE(runPlistScript(script, m_controller->filtersPath()),
                 u"NSMutableArray Filter ['name', 'projectQuery', 'entryQuery', "
                 u"'isProjectsQueryActive', 'isEntriesQueryActive'] True\n"
                 u"MPSearchQuery 1 1 True\n"
                 u"MPSearchCriterion name 10 3 Web\n"_s);
    }

    void valueOfTheWrongKindIsDropped() {
        QByteArray archive = Filter::archiveList(m_controller->filters());
        // The first text criterion ("Web") claims to be an Integer but holds a text.
        const qsizetype at =
            archive.indexOf("<key>mp_sq_crit_datatype</key>\n\t\t\t<integer>3</integer>");
        QVERIFY(at > 0);
        archive.replace(archive.indexOf("<integer>3</integer>", at), 20, "<integer>1</integer>");
        const auto filters = Filter::unarchiveList(archive);
        QVERIFY(filters);
        const auto criterion = filters->first()->projectQuery()->criterionAtIndex(0);
        QVERIFY(!criterion->objectValue().isValid());
        criterion->setMatchKind(C::IsEqualTo);
        KeyedObjectStub zero({{u"name"_s, 0}});
        QVERIFY(criterion->testForMatchWithObject(&zero)); // compares against 0
    }

    void popUpItems() {
        QStringList items;
        for (const auto &item : m_controller->menuItems())
            items.append(item.title + u'#' + QString::number(item.tag));
        QCOMPARE(items, (QStringList{u"Edit Filters...#-2"_s, u"Off#-1"_s, u"#-99"_s, u"Web#0"_s,
                                     u"error: no name#1"_s, u"Checked#2"_s}));
    }

    void choosingFilters() {
        QVERIFY(m_controller->filterAction(-2)); // the sheet opens
        QVERIFY(!m_controller->filterAction(1));
        QCOMPARE(m_target.current, m_controller->filters()[1]);
        QCOMPARE(m_target.quickFiltersOff, 1);
        QCOMPARE(FilterController::selectedFilterName(), u"error: no name"_s);
        QCOMPARE(m_preferences->stringForKey(u"selectedFilterName"), u"error: no name"_s);
        m_controller->filterAction(-1);
        QVERIFY(!m_target.current);
        QCOMPARE(m_preferences->stringForKey(u"selectedFilterName"), u""_s);
    }

    void restoresTheChosenFilterAtStart() {
        m_preferences->setObject(u"Checked"_s, u"selectedFilterName");
        m_controller->awake();
        QCOMPARE(m_controller->selectedTag(), 2);
        QCOMPARE(m_target.current->name(), u"Checked"_s);
        FilterController::forgetSelectedFilterName();
        m_target.current.reset();
        m_preferences->setObject(u"Gone"_s, u"selectedFilterName");
        m_controller->awake();
        QCOMPARE(m_controller->selectedTag(), -1);
        QVERIFY(!m_target.current);
    }

    void quickFiltersSetTheSavedFilterAside() {
        m_controller->filterAction(0);
        m_controller->temporaryDisableFilter();
        QCOMPARE(m_controller->selectedTag(), -1);
        QVERIFY(!m_target.current);
        m_controller->reenableFilter();
        QCOMPARE(m_controller->selectedTag(), 0);
        QCOMPARE(m_target.current, m_controller->filters()[0]);
    }

    void cancellingKeepsTheFile() {
        const QByteArray before = readFile(m_controller->filtersPath());
        m_controller->showSheet();
        m_controller->add();
        m_controller->filters().last()->setName(u"Unsaved"_s);
        m_controller->sheetDidEnd(1);
        QCOMPARE(readFile(m_controller->filtersPath()), before);
        m_controller->showSheet();
        QCOMPARE(m_controller->filters().size(), 3);
    }

    void storingQueriesFromTheEditors() {
        m_controller->showSheet();
        QCOMPARE(m_controller->previousFilterIndex(), 0);
        QVERIFY(m_controller->projectQueryLoaded() && !m_controller->entryQueryLoaded());
        m_controller->selectTab(FilterController::Tab::Entries);
        QCOMPARE(m_controller->entryEditorQuery(), m_controller->filters()[0]->entryQuery());
        // Turning the project flag off discards the project query when the filter is stored.
        m_controller->setProjectFilterActive(false);
        m_controller->entryEditorQuery()->setMatchMode(1);
        m_controller->filterSelected(2);
        const auto stored = m_controller->filters()[0];
        QVERIFY(!stored->projectQuery());
        QCOMPARE(stored->entryQuery()->matchMode(), 1);
        // The stored query is a copy: further edits in the editor do not reach it.
        QVERIFY(stored->entryQuery() != m_controller->filters()[2]->entryQuery());
        m_controller->entryEditorQuery()->setMatchMode(0);
        QCOMPARE(stored->entryQuery()->matchMode(), 1);
        m_controller->sheetDidEnd(0);
        QVERIFY(!reread()[0]->projectQuery());
    }

    void renamingTheChosenFilterTurnsItOff() {
        m_controller->filterAction(2);
        m_controller->showSheet();
        m_controller->filters()[2]->setName(u"Renamed"_s);
        m_controller->sheetDidEnd(0);
        QCOMPARE(m_controller->selectedTag(), -1);
        QVERIFY(!m_target.current);
    }

    void quickFilters() {
        QuickFilters quick;
        QVERIFY(quick.load(QStringLiteral(HOURFOLD_RESOURCE_DIR "/quickfilters.plist")));
        QStringList criteria; // every quick filter asks for the entries' start day
        for (const auto &filter : quick.filters()) {
            const auto criterion = filter->entryQuery()->criterionAtIndex(0);
            criteria.append(u"%1 %2"_s.arg(criterion->matchKind()).arg(criterion->identifier()));
        }
        QCOMPARE(criteria, (QStringList{u"24 fromDateAsDate"_s, u"25 fromDateAsDate"_s,
                                        u"26 fromDateAsDate"_s, u"27 fromDateAsDate"_s}));
        QCOMPARE(quick.filterForIdentifier(u"week"), quick.filters()[3]);
        QVERIFY(!quick.filterForIdentifier(u"decade"));
        m_controller->filterAction(0);
        quick.choose(u"week"_s, false, *m_controller, m_target, *m_preferences);
        QCOMPARE(m_target.current, quick.filters()[3]);
        QCOMPARE(m_controller->selectedTag(), -1);
        QCOMPARE(m_preferences->stringForKey(u"quickfilter"), u"week"_s);
        quick.choose(u"off"_s, true, *m_controller, m_target, *m_preferences);
        QCOMPARE(m_target.current, quick.filters()[3]); // nothing changes while starting up
        quick.choose(u"off"_s, false, *m_controller, m_target, *m_preferences);
        QVERIFY(!m_target.current);
    }

private:
    // The filters as another controller reads them from the file.
    QList<Filter::Pointer> reread() {
        RecordingTarget target;
        FilterController other(m_controller->filtersPath(), *m_preferences, target);
        return other.loadFilters() ? other.filters() : QList<Filter::Pointer>();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Preferences> m_preferences;
    RecordingTarget m_target;
    std::unique_ptr<FilterController> m_controller;
};

QTEST_GUILESS_MAIN(TestFilters)
#include "tst_filters.moc"
