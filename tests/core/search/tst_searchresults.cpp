#include "core/model/ModelFixtures.h"

#include "model/Project.h"
#include "search/SearchController.h"

#include <QSignalSpy>
#include <QTest>

namespace {

std::shared_ptr<Project> project(const QString &name, const QString &description,
                                 const QStringList &comments) {
    auto made = std::make_shared<Project>();
    made->setName(name);
    made->setDescription(description);
    for (const QString &comment : comments) {
        auto entry = dayEntry(u"01.02.2008"_s, 10);
        entry->setComment(comment);
        made->addEntry(entry);
    }
    return made;
}

QString label(const SearchController::Result &result) {
    return result.isProject() ? u"P "_s + result.project->name() : result.entry->comment();
}

} // namespace

class TestSearchResults : public QObject {
    Q_OBJECT

private slots:
    void searchFor_data() {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<QStringList>("results");
        const QStringList all{u"P Website"_s, u"Kick-off Meeting"_s, u"Memes"_s,
                              u"P Home"_s,    u"Some men"_s,         u"Taxmeeting"_s};
        QTest::newRow("me") << QString() << u"ME"_s << all;
        QTest::newRow("me, mee refines")
            << u"me"_s << u"mEe"_s << QStringList{u"P Website"_s, u"Kick-off Meeting"_s};
        QTest::newRow("me, xme anew") << u"me"_s << u"xme"_s << QStringList{u"Taxmeeting"_s};
        QTest::newRow("mee, me anew") << u"mee"_s << u"me"_s << all;
        QTest::newRow("emptied") << u"me"_s << QString() << QStringList();
    }
    void searchFor() {
        QFETCH(QString, first);
        QFETCH(QString, second);
        ProjectList projects{project(u"Website"_s, u"Relaunch meeting"_s,
                                     {u"Kick-off Meeting"_s, u"Design"_s, u"Memes"_s}),
                             project(u"Home"_s, u"Chores"_s, {u"Some men"_s})};
        SearchController search([&projects] { return projects; });
        QSignalSpy reloaded(&search, &SearchController::resultsChanged);
        search.searchFor(first);
        // Found only when searching anew.
        projects.last()->addEntry(project(QString(), QString(), {u"Taxmeeting"_s})->entries()[0]);
        search.searchFor(second);
        QStringList labels;
        for (const auto &result : search.searchResults())
            labels.append(label(result));
        QTEST(labels, "results");
        QCOMPARE(reloaded.count(), 2);
        QCOMPARE(search.oldSearchString(), second.toLower());
    }

    void rows() {
        const ProjectList projects{project(u"Website"_s, u"Relaunch"_s, {u"Call mel, MEL!"_s})};
        SearchController search([&projects] { return projects; });
        search.searchFor(u"E"_s);
        QCOMPARE(search.rowCount(), 2);
        QCOMPARE(search.row(0).text, u"Website: Relaunch"_s);
        QVERIFY(search.row(0).bold);
        const SearchController::Row entry = search.row(1);
        QCOMPARE(entry.text, u"Call mel, MEL!"_s);
        QVERIFY(!entry.bold);
        QCOMPARE(entry.redRanges, (QList<RangeValue>{{6, 1}, {11, 1}}));
        QVERIFY(!search.result(2).project);
#ifdef QT_NO_DEBUG
        QCOMPARE(search.row(2).text, QString());
#endif
    }

    void excerpts_data() {
        QTest::addColumn<QString>("string");
        QTest::addColumn<QString>("search");
        QTest::addColumn<QString>("excerpt");
        QTest::addColumn<QList<RangeValue>>("red");
        const QString a12(12, u'a'), b33(33, u'b'), b60(60, u'b');
        const QList<RangeValue> at12{{12, 3}}, at15{{15, 3}};
        QTest::newRow("match at 12")
            << a12 + u"Key"_s + b60 << u"key"_s << a12 + u"Key"_s + b33 + u"..."_s << at12;
        QTest::newRow("match at 13") << u"x"_s + a12 + u"KEY"_s + b60 << u"key"_s
                                     << u"..."_s + a12 + u"KEY"_s + b33 + u"..."_s << at15;
        QTest::newRow("ends with the excerpt")
            << a12 + u"key"_s + b33 << u"key"_s << a12 + u"key"_s + b33 << at12;
        QTest::newRow("one past the excerpt")
            << a12 + u"key"_s + b33 + u"x"_s << u"key"_s << a12 + u"key"_s + b33 + u"..."_s << at12;
        QTest::newRow("short, match late")
            << u"Long prefix text key"_s << u"key"_s << u"...prefix text key"_s << at15;
        QTest::newRow("near the end") << u"xxxx"_s + a12 + u"key"_s + b33.left(20) << u"key"_s
                                      << u"..."_s + a12 + u"key"_s + b33.left(20) << at15;
        QTest::newRow("every case, no overlaps")
            << u"Meet mEEE"_s << u"ee"_s << u"Meet mEEE"_s << QList<RangeValue>{{1, 2}, {6, 2}};
        QTest::newRow("dots of the prefix")
            << u"xxxxxxxxxxxxxx."_s << u"."_s << u"...xxxxxxxxxxxx."_s
            << QList<RangeValue>{{0, 1}, {1, 1}, {2, 1}, {15, 1}};
    }
    void excerpts() {
        QFETCH(QString, string);
        QFETCH(QString, search);
        QFETCH(QString, excerpt);
        QCOMPARE(SearchController::trimString(string, search), excerpt);
        QTEST(SearchController::colorSearchString(search, excerpt), "red");
    }
};

QTEST_GUILESS_MAIN(TestSearchResults)
#include "tst_searchresults.moc"
