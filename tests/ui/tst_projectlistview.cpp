#include "ui/ProjectListFixture.h"

#include "ActionTableColumn.h"
#include "ProjectListPasteboard.h"
#include "ProjectListView.h"
#include "stores/KeyedUnarchiver.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QMenu>
#include <QMimeData>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

class TestProjectListView : public QObject {
    Q_OBJECT

private slots:
    void init() {
        // Missing pictures and every other cell are handled without a warning.
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_fixture = std::make_unique<ProjectListFixture>();
        m_fixture->web->setExpanded(true);
        m_fixture->app->setExpanded(true);
        m_fixture->preferences.setObject(false, u"useAlternateBackground");
        m_model = std::make_unique<ProjectListModel>(m_fixture->collection, m_fixture->preferences,
                                                     m_fixture->currency);
        m_view = std::make_unique<ProjectListView>(m_alerts);
        m_view->setPalette(plainPalette());
        m_view->setProjectListModel(m_model.get());
        m_view->resize(900, 500);
        m_view->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
        QApplication::clipboard()->clear();
        m_alerts.beeps = 0;
    }

    void cleanup() {
        m_view.reset();
        m_model.reset();
        m_fixture.reset();
    }

    void expansionComesFromAndGoesToTheProjects() {
        QVERIFY(m_view->isExpanded(row(u"Web"_s)));
        QVERIFY(!m_view->isExpanded(row(u"Internal"_s)));
        QVERIFY(!m_fixture->collection.dataChanged());
        m_view->collapse(row(u"Web"_s));
        QVERIFY(!m_fixture->web->expanded());
        QVERIFY(m_fixture->collection.dataChanged());
    }

    void copyPutsItemAndTextOnTheClipboard_data() {
        QTest::addColumn<QString>("project");
        QTest::addColumn<QString>("type");
        QTest::newRow("entry") << u"Web"_s << ProjectListPasteboard::entriesType();
        QTest::newRow("flat fee") << u"App"_s << ProjectListPasteboard::flatFeeEntriesType();
    }
    void copyPutsItemAndTextOnTheClipboard() {
        QFETCH(QString, project);
        QFETCH(QString, type);
        m_view->selectRow(row(project, 0));
        const auto item = m_view->selectedItem();
        m_view->copy();
        const QMimeData *data = QApplication::clipboard()->mimeData();
        QCOMPARE(data->formats(), (QStringList{type, u"text/plain"_s}));
        QCOMPARE(data->text(), item->stringDescription());
        const auto archived = KeyedUnarchiver::unarchive(data->data(type), {});
        QVERIFY(archived.ok);
        QCOMPARE(archived.root.toMap(), archivedDictionary(*item));
        const auto pasted = ProjectListPasteboard::itemFromCopy(*data);
        QCOMPARE(pasted->stringDescription(), item->stringDescription());
        QCOMPARE(pasted->isPaused(), item->isPaused());
        QCOMPARE(m_alerts.beeps, 0);
    }

    void copyOnAProjectRowBeeps() {
        QApplication::clipboard()->setText(u"kept"_s);
        m_view->selectRow(row(u"Web"_s));
        m_view->copy();
        QCOMPARE(m_alerts.beeps, 1);
        QCOMPARE(QApplication::clipboard()->mimeData()->formats(), QStringList{u"text/plain"_s});
        QCOMPARE(QApplication::clipboard()->text(), u"kept"_s);
    }

    void cutDeletesAndSelectsTheSamePlace() {
        const auto review = m_fixture->item(m_fixture->web, 1);
        const auto next = m_fixture->item(m_fixture->web, 2);
        m_view->selectRow(row(u"Web"_s, 1));
        m_view->cut();
        QVERIFY(!m_fixture->web->entries().contains(review));
        QCOMPARE(m_fixture->collection.undoStack()->undoText(), u"Cut Entry"_s);
        QVERIFY(
            QApplication::clipboard()->mimeData()->hasFormat(ProjectListPasteboard::entriesType()));
        QCOMPARE(m_view->selectedItem(), next);
        // A project goes as a whole; the copy beeps.
        m_view->selectRow(row(u"App"_s));
        m_view->cut();
        QCOMPARE(m_fixture->collection.projectNames(), (QStringList{u"Web"_s, u"Internal"_s}));
        QCOMPARE(m_fixture->collection.undoStack()->undoText(), u"Delete Project"_s);
        QCOMPARE(m_alerts.beeps, 1);
        QCOMPARE(m_view->selectedProject(), m_fixture->internal);
        QVERIFY(!m_view->selectedItem());
    }

    void pastingAFlatFeeOnAnEntryRowAddsItToItsProject() {
        m_view->selectRow(row(u"App"_s, 0));
        m_view->copy();
        const auto call = m_fixture->item(m_fixture->web, 0);
        m_view->selectRow(row(u"Web"_s, 0));
        m_view->paste();
        QCOMPARE(m_fixture->web->entries().size(), 5);
        const auto pasted =
            std::find_if(m_fixture->web->entries().cbegin(), m_fixture->web->entries().cend(),
                         [](const auto &item) { return item->isFlatFee(); });
        QVERIFY(pasted != m_fixture->web->entries().cend());
        QCOMPARE(static_cast<const FlatFeeEntry &>(**pasted).amount(), 100.0f);
        QCOMPARE((*pasted)->comment(), u"Hosting"_s);
        QVERIFY(*pasted != m_fixture->item(m_fixture->app, 0));
        QCOMPARE(m_fixture->app->entries().size(), 2);
        QCOMPARE(m_fixture->collection.undoStack()->undoText(), u"Paste Entry"_s);
        QCOMPARE(m_view->selectedItem(), call);
    }

    void menuValidation_data() {
        QTest::addColumn<QString>("project");
        QTest::addColumn<int>("item");
        QTest::addColumn<bool>("entryOnClipboard");
        QTest::addColumn<bool>("copyAndCut");
        QTest::addColumn<bool>("paste");
        QTest::newRow("nothing selected") << QString() << -1 << true << false << false;
        QTest::newRow("project, text") << u"Web"_s << -1 << false << false << false;
        QTest::newRow("project, entry") << u"Web"_s << -1 << true << false << true;
        QTest::newRow("entry, text") << u"Web"_s << 0 << false << true << false;
        QTest::newRow("flat fee, entry") << u"App"_s << 1 << true << true << true;
    }
    void menuValidation() {
        QFETCH(QString, project);
        QFETCH(int, item);
        QFETCH(bool, entryOnClipboard);
        QFETCH(bool, copyAndCut);
        if (entryOnClipboard)
            QApplication::clipboard()->setMimeData(
                ProjectListPasteboard::copyData(*m_fixture->item(m_fixture->web, 0)));
        else
            QApplication::clipboard()->setText(u"text"_s);
        m_view->selectRow(project.isEmpty() ? QModelIndex() : row(project, item));
        QCOMPARE(m_view->hasSelection(), !project.isEmpty());
        QCOMPARE(m_view->canCopy(), copyAndCut);
        QCOMPARE(m_view->canCut(), copyAndCut);
        QTEST(m_view->canPaste(), "paste");
    }

    void contextMenus() {
        QMenu projectMenu, entryMenu, defaultMenu;
        m_view->setProjectMenu(&projectMenu);
        m_view->setEntryMenu(&entryMenu);
        m_view->setDefaultMenu(&defaultMenu);
        QCOMPARE(m_view->menuForEvent(center(row(u"App"_s, 1))), &entryMenu);
        QCOMPARE(m_view->selectedItem(), m_fixture->item(m_fixture->app, 1));
        QCOMPARE(m_view->menuForEvent(center(row(u"Web"_s))), &projectMenu);
        QCOMPARE(m_view->selectedIndex(), row(u"Web"_s));
        QCOMPARE(m_view->menuForEvent(QPoint(10, m_view->viewport()->height() - 5)), &defaultMenu);
        QVERIFY(!m_view->hasSelection());
    }

    void headerMenuSwitchesOptionalColumns() {
        QAction *state = nullptr;
        for (QAction *action : m_view->headerMenu()->actions()) {
            QVERIFY(action->isChecked());
            if (action->data().toInt() == ProjectListModel::StateColumn)
                state = action;
        }
        QCOMPARE(m_view->headerMenu()->actions().size(), 4);
        QVERIFY(state);
        state->trigger();
        QVERIFY(!m_fixture->preferences.boolForKey(u"showStateColumn"));
        QVERIFY(m_view->isColumnHidden(ProjectListModel::StateColumn));
        m_fixture->preferences.setObject(true, u"showStateColumn");
        QVERIFY(!m_view->isColumnHidden(ProjectListModel::StateColumn));
        QVERIFY(state->isChecked());
        QCOMPARE(m_view->header()->visualIndex(ProjectListModel::StateColumn), 4);
        QCOMPARE(m_view->header()->visualIndex(ProjectListModel::ActionColumn), 3);
    }

    void headingClicksSortWithTheDirectionRule() {
        QHeaderView *header = m_view->header();
        const auto click = [header](int column) {
            QTest::mouseClick(
                header->viewport(), Qt::LeftButton, {},
                QPoint(header->sectionViewportPosition(column) + 5, header->height() / 2));
        };
        click(ProjectListModel::DescriptionColumn);
        QCOMPARE(m_fixture->collection.sortingColumn(), u"Description_Col"_s);
        QCOMPARE(header->sortIndicatorSection(), int(ProjectListModel::DescriptionColumn));
        QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
        QCOMPARE(m_model->data(row(u"Web"_s, 0, 1)).toString(), u"Urgent call"_s);
        click(ProjectListModel::DescriptionColumn);
        QCOMPARE(header->sortIndicatorOrder(), Qt::AscendingOrder);
        click(ProjectListModel::DurationColumn);
        QCOMPARE(header->sortIndicatorSection(), int(ProjectListModel::DurationColumn));
        QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
    }

    void gridLinesAndAlternatingRowsFollowThePreferences() {
        QVERIFY(!m_view->alternatingRowColors());
        m_fixture->preferences.setObject(true, u"useAlternateBackground");
        QVERIFY(m_view->alternatingRowColors());
        m_fixture->preferences.setObject(false, u"useAlternateBackground");
        const QRect cell = m_view->visualRect(row(u"App"_s, 1, 1));
        const QPoint onLine(cell.center().x(), cell.bottom());
        QCOMPARE(m_view->viewport()->grab().toImage().pixelColor(onLine), QColor(209, 209, 209));
        m_fixture->preferences.setObject(false, u"useGridLines");
        QCOMPARE(m_view->viewport()->grab().toImage().pixelColor(onLine), QColor(Qt::white));
    }

    void actionSegmentsCheckBoxesAndDoubleClicks() {
        QSignalSpy segments(m_view.get(), &ProjectListView::actionSegmentClicked);
        QSignalSpy doubleClicks(m_view.get(), &ProjectListView::itemDoubleClicked);
        QWidget *viewport = m_view->viewport();
        const QModelIndex running = row(u"Web"_s, 3, 3);
        const QRect stop = ActionTableColumn::segmentRect(m_view->visualRect(running), 2);
        QTest::mouseClick(viewport, Qt::LeftButton, {}, stop.center());
        QCOMPARE(segments.size(), 1);
        QCOMPARE(segments[0][0].toModelIndex(), running);
        QCOMPARE(segments[0][1].toInt(), 2);
        // A finished entry has no button.
        QTest::mouseClick(viewport, Qt::LeftButton, {}, center(row(u"Web"_s, 0, 3)));
        QCOMPARE(segments.size(), 1);
        const auto review = m_fixture->item(m_fixture->web, 1);
        const QPoint box = center(row(u"Web"_s, 1, 4));
        QTest::mouseClick(viewport, Qt::LeftButton, {}, box);
        QVERIFY(review->isChecked());
        QTest::mouseDClick(viewport, Qt::LeftButton, {}, box);
        QVERIFY(doubleClicks.isEmpty());
        // Nor does the action column open the editor, even where a row has no button.
        QTest::mouseDClick(viewport, Qt::LeftButton, {}, center(row(u"Web"_s, 0, 3)));
        QVERIFY(doubleClicks.isEmpty());
        QTest::mouseDClick(viewport, Qt::LeftButton, {}, center(row(u"Web"_s, 1, 1)));
        QCOMPARE(doubleClicks.size(), 1);
        QCOMPARE(doubleClicks[0][0].toModelIndex(), row(u"Web"_s, 1));
    }

    void aDropSelectsAndExpandsItsProject() {
        QMimeData data;
        data.setData(ProjectListPasteboard::dragCustomerType(), "1");
        QVERIFY(m_model->dropMimeData(&data, Qt::CopyAction, -1, 0, row(u"Internal"_s)));
        QCOMPARE(m_fixture->internal->customer(), 1);
        QCOMPARE(m_fixture->collection.undoStack()->undoText(), u"Assign customer"_s);
        QVERIFY(m_view->isExpanded(row(u"Internal"_s)));
        QVERIFY(m_fixture->internal->expanded());
        QCOMPARE(m_view->selectedIndex(), row(u"Internal"_s));
    }

private:
    QModelIndex row(const QString &project, int item = -1, int column = 0) const {
        const QModelIndex index =
            m_model->indexOfProject(*m_fixture->collection.projectWithName(project));
        return (item < 0 ? index : m_model->index(item, 0, index)).siblingAtColumn(column);
    }

    QPoint center(const QModelIndex &index) const { return m_view->visualRect(index).center(); }

    RecordingAlerts m_alerts;
    std::unique_ptr<ProjectListFixture> m_fixture;
    std::unique_ptr<ProjectListModel> m_model;
    std::unique_ptr<ProjectListView> m_view;
};

QTEST_MAIN(TestProjectListView)
#include "tst_projectlistview.moc"
