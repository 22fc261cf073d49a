#include "FiltersFixture.h"

#include "ProjectListView.h"
#include "filters/SearchResultsModel.h"
#include "filters/SearchResultsWindow.h"

#include <QAction>
#include <QLineEdit>
#include <QListView>

// The search results window as the user reaches it from the menu: it searches for the search
// field's text, and a chosen result is selected in the main list.
class TestSearchResultsWindow : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_fixture = std::make_unique<FiltersFixture>();
        m_fixture->startWindow();
    }
    void cleanup() { m_fixture.reset(); }

    void aChosenResultIsSelectedInTheList_data() {
        QTest::addColumn<bool>("doubleClick");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("selected");
        // The results of "call": Web shop's "Urgent call", App's "call back".
        QTest::newRow("double click on an entry") << true << 1 << u"call back"_s;
        QTest::newRow("Enter on an entry") << false << 0 << u"Urgent call"_s;
    }
    void aChosenResultIsSelectedInTheList() {
        QFETCH(bool, doubleClick);
        QFETCH(int, row);
        QFETCH(QString, selected);
        MainWindow &window = *m_fixture->window;
        QTest::keyClicks(window.searchField(), u"cal"_s);
        window.listView()->collapseAll();
        window.commandAction(u"showSearchResults:"_s)->trigger();
        SearchResultsWindow *results = window.searchResultsWindow();
        QVERIFY(QTest::qWaitForWindowActive(results));
        auto *field = FiltersFixture::control<QLineEdit>(results, u"resultsSearchField"_s);
        QCOMPARE(field->text(), u"cal"_s);
        QTest::keyClick(field, Qt::Key_L);
        QListView *table = results->resultsTable();
        QCOMPARE(table->model()->rowCount(), 2);
        const QModelIndex index = table->model()->index(row, 0);
        QCOMPARE(index.data(SearchResultsModel::RedRangesRole).toList().size(), 1);
        // Choosing the row selects it in the list; choosing it again does so again.
        table->setCurrentIndex(index);
        ProjectListView *list = window.listView();
        list->selectRow({});
        list->collapseAll();
        const QPoint at = table->visualRect(index).center();
        // A double click arrives as a click followed by the double click.
        if (doubleClick) {
            QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, at);
            QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, at);
        } else {
            QTest::keyClick(table, Qt::Key_Return);
        }
        QVERIFY(list->selectedItem());
        QCOMPARE(list->selectedItem()->comment(), selected);
        QVERIFY(list->isExpanded(list->selectedIndex().parent()));
    }

private:
    std::unique_ptr<FiltersFixture> m_fixture;
};

QTEST_MAIN(TestSearchResultsWindow)
#include "tst_searchresultswindow.moc"
