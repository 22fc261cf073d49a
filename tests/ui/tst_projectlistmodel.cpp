#include "ui/ProjectListFixture.h"

#include "ProjectListPasteboard.h"
#include "search/MPSearchQuery.h"
#include "stores/CustomerStorage.h"
#include "stores/KeyedUnarchiver.h"

#include <QAbstractItemModelTester>
#include <QMimeData>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

using Operation = std::function<void(ProjectListFixture &)>;
Q_DECLARE_METATYPE(Operation)

namespace {

enum Place { OnProject, OnItem, BetweenTopRows, BetweenItems, BelowRows };

QString cardText() {
    return u"BEGIN:VCARD\r\nVERSION:3.0\r\nN:Lovelace;Ada;;;\r\nFN:Ada Lovelace\r\nEND:VCARD\r\n"_s;
}

} // namespace

class TestProjectListModel : public QObject {
    Q_OBJECT

private slots:
    void init() {
        // Missing pictures and every other cell are handled without a warning.
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_fixture = std::make_unique<ProjectListFixture>();
        m_model = std::make_unique<ProjectListModel>(m_fixture->collection, m_fixture->preferences,
                                                     m_fixture->currency);
        m_model->setPalette(plainPalette());
    }

    void cleanup() {
        m_model.reset();
        m_fixture.reset();
    }

    // The model stays consistent through every kind of change, and shows what the document shows.
    void followsTheDocument_data() {
        QTest::addColumn<Operation>("operation");
        const auto add = [](const char *name, Operation operation) {
            QTest::newRow(name) << operation;
        };
        add("search text", [](auto &f) { f.collection.setSearchText(u"review"_s); });
        add("filter", [](auto &f) {
            auto query = std::make_shared<MPSearchQuery>();
            query->addCriterion(MPSearchCriterion::criterionWithString(
                u"Hosting"_s, MPSearchCriterion::Contains, u"comment"_s));
            auto filter = std::make_shared<Filter>();
            filter->setEntryQuery(query);
            f.collection.setCurrentFilter(filter);
        });
        add("sort descending", [](auto &f) { f.collection.columnClicked(u"Day_Col"_s); });
        add("sort by comment", [](auto &f) { f.collection.columnClicked(u"Description_Col"_s); });
        add("paste and cut", [](auto &f) {
            f.collection.addEntry(dayEntry(u"01.11.2026"_s, 5), f.web, u"Paste Entry"_s);
            f.collection.deleteEntry(f.item(f.web, 1), f.web, u"Cut Entry"_s);
        });
        add("move entries", [](auto &f) {
            f.collection.moveEntries({f.item(f.web, 0), f.item(f.web, 1)}, f.app);
        });
        add("move project", [](auto &f) { f.collection.moveProject(f.internal, 0); });
        add("delete and add projects", [](auto &f) {
            f.collection.deleteProject(f.app);
            f.collection.addProject(std::make_shared<Project>());
        });
        add("customer hidden", [](auto &f) {
            f.customers.visible[1] = false;
            f.collection.updateVisibleProjects();
        });
    }
    void followsTheDocument() {
        QFETCH(Operation, operation);
        QAbstractItemModelTester tester(m_model.get(),
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        const auto undoSteps = m_fixture->collection.undoStack()->count();
        operation(*m_fixture);
        QVERIFY(mirrorsDocument());
        auto *undo = m_fixture->collection.undoStack();
        while (undo->count() > undoSteps && undo->canUndo()) {
            undo->undo();
            QVERIFY(mirrorsDocument());
        }
        while (undo->canRedo()) {
            undo->redo();
            QVERIFY(mirrorsDocument());
        }
    }

    void cells_data() {
        QTest::addColumn<QString>("project");
        QTest::addColumn<int>("item");
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("role");
        QTest::addColumn<QVariant>("expected");
        const int display = Qt::DisplayRole;
        const int image = ProjectListModel::ImageNameRole;
        const int check = Qt::CheckStateRole;
        const int actions = ProjectListModel::ActionImagesRole;
        const int foreground = Qt::ForegroundRole;
        const int background = Qt::BackgroundRole;
        const QVariant none;
        const QVariant black = QColor(Qt::black);
        const QVariant grey = QColor(128, 128, 128);
        const QVariant projectTint = QColor(200, 100, 100);
        const QVariant unfinishedTint = QColor(250, 250, 150);
        const auto row = [](const char *name, const QString &project, int item, int column,
                            int role, const QVariant &expected) {
            QTest::newRow(name) << project << item << column << role << expected;
        };
        using M = ProjectListModel;
        row("project name", u"Web"_s, -1, M::DayColumn, display, u"Web"_s);
        row("project description", u"Web"_s, -1, M::DescriptionColumn, display, u"Site relaunch"_s);
        row("project finished total", u"Web"_s, -1, M::DurationColumn, display, u"01:15"_s);
        row("project partly checked", u"Web"_s, -1, M::StateColumn, check,
            int(Qt::PartiallyChecked));
        row("project without checks", u"App"_s, -1, M::StateColumn, check, int(Qt::Unchecked));
        row("project actions", u"Web"_s, -1, M::ActionColumn, actions,
            QStringList{u"btn_clock"_s, u"btn_play"_s, u"btn_pause"_s});
        row("project tint", u"Web"_s, -1, M::DescriptionColumn, background, projectTint);
        row("project text", u"Web"_s, -1, M::DurationColumn, foreground, black);
        row("project has no picture", u"Web"_s, -1, M::DayColumn, image, none);
        row("period day", u"Web"_s, 0, M::DayColumn, display, u"November 2, 2026"_s);
        row("period picture", u"Web"_s, 0, M::DayColumn, image, u"clip_blank"_s);
        row("period comment", u"Web"_s, 0, M::DescriptionColumn, display, u"Urgent call"_s);
        row("period duration", u"Web"_s, 0, M::DurationColumn, display, u"00:45"_s);
        row("period checked", u"Web"_s, 0, M::StateColumn, check, int(Qt::Checked));
        row("finished has no button", u"Web"_s, 0, M::ActionColumn, actions, QStringList());
        row("finished not tinted", u"Web"_s, 0, M::DayColumn, background, none);
        row("day entry day", u"Web"_s, 1, M::DayColumn, display, u"November 3, 2026"_s);
        row("day entry clip", u"Web"_s, 1, M::DayColumn, image, u"clip"_s);
        row("day entry duration", u"Web"_s, 1, M::DurationColumn, display, u"00:30"_s);
        row("day entry unchecked", u"Web"_s, 1, M::StateColumn, check, int(Qt::Unchecked));
        row("paused duration", u"Web"_s, 2, M::DurationColumn, display, u"02:00"_s);
        row("paused grey", u"Web"_s, 2, M::DayColumn, foreground, grey);
        row("paused duration grey", u"Web"_s, 2, M::DurationColumn, foreground, grey);
        row("paused tint", u"Web"_s, 2, M::DayColumn, background, unfinishedTint);
        row("paused actions", u"Web"_s, 2, M::ActionColumn, actions,
            QStringList{u"btn_play"_s, u"btn_pause_dis"_s, u"btn_stop"_s});
        row("running duration", u"Web"_s, 3, M::DurationColumn, display, u"00:57"_s);
        row("running duration red", u"Web"_s, 3, M::DurationColumn, foreground, QColor(Qt::red));
        row("running day black", u"Web"_s, 3, M::DayColumn, foreground, black);
        row("running tint", u"Web"_s, 3, M::StateColumn, background, unfinishedTint);
        row("running actions", u"Web"_s, 3, M::ActionColumn, actions,
            QStringList{u"btn_play_dis"_s, u"btn_pause"_s, u"btn_stop"_s});
        row("flat fee amount", u"App"_s, 0, M::DurationColumn, display, u"$100.00"_s);
        row("flat fee day", u"App"_s, 0, M::DayColumn, display, u"November 5, 2026"_s);
        row("flat fee clip", u"App"_s, 0, M::DayColumn, image, u"clip"_s);
        row("flat fee no clip", u"App"_s, 1, M::DayColumn, image, u"clip_blank"_s);
        row("flat fee no button", u"App"_s, 1, M::ActionColumn, actions, QStringList());
        row("flat fee text", u"App"_s, 1, M::DurationColumn, foreground, black);
        row("flat fee untinted", u"App"_s, 1, M::DurationColumn, background, none);
    }
    void cells() {
        QFETCH(QString, project);
        QFETCH(int, item);
        QFETCH(int, column);
        QFETCH(int, role);
        const QModelIndex index = cell(project, item, column);
        QVERIFY(index.isValid());
        QTEST(m_model->data(index, role), "expected");
    }

    void tintsAndDarkPalette() {
        const QModelIndex running = cell(u"Web"_s, 3, ProjectListModel::DurationColumn);
        m_model->setPalette(plainPalette(true));
        QCOMPARE(m_model->data(running.siblingAtColumn(0), Qt::ForegroundRole),
                 QVariant(QColor(230, 230, 230)));
        QCOMPARE(m_model->data(running, Qt::ForegroundRole), QVariant(QColor(255, 110, 110)));
        // 35 % of the tint (250, 250, 150) over the base (30, 30, 30).
        QCOMPARE(m_model->data(running, Qt::BackgroundRole).value<QColor>().name(), u"#6b6b48"_s);
        m_fixture->preferences.setObject(false, u"useUnfinishedEntryColor");
        QVERIFY(!m_model->data(running, Qt::BackgroundRole).isValid());
        m_fixture->preferences.setObject(false, u"useProjectColor");
        QVERIFY(!m_model->data(cell(u"Web"_s, -1, 1), Qt::BackgroundRole).isValid());
    }

    void filteredRowsFadeAndTotalsFollowTheFilter() {
        m_fixture->collection.setSearchText(u"Review"_s);
        QCOMPARE(m_model->rowCount(cell(u"Web"_s, -1, 0)), 1);
        QCOMPARE(m_model->data(cell(u"Web"_s, -1, 2)).toString(), u"00:30"_s);
        QCOMPARE(m_model->data(cell(u"Web"_s, -1, 4), Qt::CheckStateRole), QVariant(0));
        // The customer is hidden but the shown projects are not recomputed yet: its rows fade.
        m_fixture->customers.visible[1] = false;
        QColor faded(Qt::black);
        faded.setAlphaF(0.45f);
        QCOMPARE(m_model->data(cell(u"Web"_s, -1, 1), Qt::ForegroundRole), QVariant(faded));
        QCOMPARE(m_model->data(cell(u"Web"_s, 0, 1), Qt::ForegroundRole), QVariant(faded));
        QCOMPARE(m_model->data(cell(u"App"_s, -1, 1), Qt::ForegroundRole),
                 QVariant(QColor(Qt::black)));
        m_fixture->collection.updateVisibleProjects();
        QVERIFY(!m_model->indexOfProject(*m_fixture->web).isValid());
    }

    void checkMarks() {
        QSignalSpy changes(m_model.get(), &QAbstractItemModel::dataChanged);
        const QModelIndex review = cell(u"Web"_s, 1, ProjectListModel::StateColumn);
        QVERIFY(m_model->setData(review, int(Qt::Checked), Qt::CheckStateRole));
        QVERIFY(m_fixture->item(m_fixture->web, 1)->isChecked());
        QVERIFY(m_fixture->collection.dataChanged());
        QVERIFY(!changes.isEmpty());
        // The project row shows the state of the items it shows; clicking it marks every entry of
        // the project, since the search text alone is no filter.
        m_fixture->collection.setSearchText(u"Urgent"_s);
        const QModelIndex web = cell(u"Web"_s, -1, ProjectListModel::StateColumn);
        QCOMPARE(m_model->data(web, Qt::CheckStateRole), QVariant(int(Qt::Checked)));
        QVERIFY(m_model->setData(web, int(Qt::Unchecked), Qt::CheckStateRole));
        QVERIFY(!m_fixture->item(m_fixture->web, 0)->isChecked());
        QVERIFY(!m_fixture->item(m_fixture->web, 1)->isChecked());
        QCOMPARE(m_model->data(web, Qt::CheckStateRole), QVariant(int(Qt::Unchecked)));
        QVERIFY(!m_model->setData(web.siblingAtColumn(1), u"x"_s, Qt::EditRole));
    }

    void refreshRunningReportsOnlyRunningDurations() {
        Clock::advance(120);
        QSignalSpy changes(m_model.get(), &QAbstractItemModel::dataChanged);
        m_model->refreshRunning();
        QCOMPARE(changes.size(), 2);
        for (const auto &change : std::as_const(changes)) {
            const QModelIndex index = change[0].toModelIndex();
            QCOMPARE(change[1].toModelIndex(), index);
            QCOMPARE(index.column(), int(ProjectListModel::DurationColumn));
            QVERIFY(m_model->itemAt(index)->isWorking());
        }
        QCOMPARE(m_model->data(cell(u"Web"_s, 3, 2)).toString(), u"00:59"_s);
        QCOMPARE(m_model->data(cell(u"Web"_s, 2, 2)).toString(), u"02:00"_s);
    }

    void columnClicksSortAndKeepRows() {
        const QPersistentModelIndex review = cell(u"Web"_s, 1, 0);
        m_model->columnClicked(ProjectListModel::DescriptionColumn);
        QCOMPARE(m_fixture->collection.sortingColumn(), u"Description_Col"_s);
        m_model->columnClicked(ProjectListModel::DescriptionColumn);
        QCOMPARE(m_model->data(cell(u"Web"_s, 3, 1)).toString(), u"Urgent call"_s);
        // The same rows, moved: a row held by the view follows its item.
        QCOMPARE(review.row(), 2);
        QCOMPARE(m_model->itemAt(review)->comment(), u"Review"_s);
        m_model->columnClicked(ProjectListModel::DurationColumn);
        QCOMPARE(m_fixture->collection.sortingColumn(), u"Duration_Col"_s);
        QCOMPARE(m_fixture->preferences.stringForKey(u"sortingColumn"), u"Duration_Col"_s);
    }

    void expansionIsStoredInTheProject() {
        const QModelIndex web = cell(u"Web"_s, -1, 0);
        m_model->setProjectExpanded(web, true);
        QVERIFY(m_fixture->web->expanded());
        QVERIFY(m_fixture->collection.dataChanged());
        m_fixture->collection.setDataChanged(false);
        m_model->setProjectExpanded(web, true);
        QVERIFY(!m_fixture->collection.dataChanged());
    }

    void dragData_data() {
        QTest::addColumn<QString>("project");
        QTest::addColumn<int>("item");
        QTest::addColumn<bool>("hideFaded");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QByteArray>("projectIndex");
        const QString entries = ProjectListPasteboard::dragEntriesType();
        const QString fees = ProjectListPasteboard::dragFlatFeeEntriesType();
        const QString projects = ProjectListPasteboard::dragProjectsType();
        QTest::newRow("entry") << u"Internal"_s << 0 << false << entries << QByteArray();
        QTest::newRow("flat fee") << u"App"_s << 0 << false << fees << QByteArray();
        QTest::newRow("project in all") << u"Internal"_s << -1 << false << projects << "2"_ba;
        QTest::newRow("project in shown") << u"Internal"_s << -1 << true << projects << "1"_ba;
    }
    void dragData() {
        QFETCH(QString, project);
        QFETCH(int, item);
        QFETCH(bool, hideFaded);
        QFETCH(QString, type);
        // Web is hidden: the index counts all projects, or only the shown ones.
        m_fixture->customers.visible[1] = false;
        m_fixture->collection.setHideFadedProjects(hideFaded);
        const QModelIndex row = cell(project, item, 0);
        std::unique_ptr<QMimeData> data(m_model->mimeData({row, row.siblingAtColumn(2)}));
        QCOMPARE(data->formats(), QStringList{type});
        if (item < 0) {
            QTEST(data->data(type), "projectIndex");
            return;
        }
        const auto unarchived = KeyedUnarchiver::unarchive(data->data(type), {});
        QVERIFY(unarchived.ok);
        QCOMPARE(unarchived.root.toMap(), archivedDictionary(*m_model->itemAt(row)));
    }

    void dropRules_data() {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("place");
        QTest::addColumn<bool>("accepted");
        const QString card = u"text/vcard"_s;
        const QString customer = ProjectListPasteboard::dragCustomerType();
        const QString projects = ProjectListPasteboard::dragProjectsType();
        const QString files = u"text/uri-list"_s;
        const QByteArray file = QUrl::fromLocalFile(u"/tmp/a.txt"_s).toEncoded();
        const QString text = u"text/plain"_s;
        const auto row = [](const char *name, const QString &type, const QByteArray &content,
                            Place place, bool accepted) {
            QTest::newRow(name) << type << content << int(place) << accepted;
        };
        row("customer on project", customer, "7", OnProject, true);
        row("customer on item", customer, "7", OnItem, false);
        row("customer between", customer, "7", BetweenTopRows, false);
        row("card on project", card, cardText().toUtf8(), OnProject, true);
        row("card below rows", card, cardText().toUtf8(), BelowRows, false);
        row("project between top rows", projects, "0", BetweenTopRows, true);
        row("project below rows", projects, "0", BelowRows, true);
        row("project on project", projects, "0", OnProject, false);
        row("project between items", projects, "0", BetweenItems, false);
        row("files on project", files, file, OnProject, true);
        row("files on item", files, file, OnItem, true);
        row("files between", files, file, BetweenTopRows, false);
        row("text on item", text, "x", OnItem, true);
        row("text between items", text, "x", BetweenItems, true);
        row("text below rows", text, "x", BelowRows, true);
    }
    void dropRules() {
        QFETCH(QString, type);
        QFETCH(QByteArray, content);
        QFETCH(int, place);
        QFETCH(bool, accepted);
        QMimeData data;
        data.setData(type, content);
        const int row = place == BetweenTopRows || place == BetweenItems ? 1 : -1;
        QModelIndex parent;
        if (place == OnProject || place == BetweenItems)
            parent = cell(u"Web"_s, -1, 0);
        else if (place == OnItem)
            parent = cell(u"Web"_s, 1, 0);
        QCOMPARE(m_model->canDropMimeData(&data, Qt::CopyAction, row, 0, parent), accepted);
        if (!accepted)
            QVERIFY(!m_model->dropMimeData(&data, Qt::CopyAction, row, 0, parent));
    }

    void droppedEntryMovesInOneStep_data() {
        QTest::addColumn<int>("item");
        QTest::newRow("entry") << 0;
        QTest::newRow("flat fee") << 1;
    }
    void droppedEntryMovesInOneStep() {
        QFETCH(int, item);
        const auto source = item == 0 ? m_fixture->web : m_fixture->app;
        const auto moved = m_fixture->item(source, 0);
        moved->addAttachments({u"/tmp/notes.txt"_s});
        moved->setChecked(true);
        const auto target = m_fixture->internal;
        QSignalSpy finished(m_model.get(), &ProjectListModel::dropFinished);
        const QModelIndex row = m_model->indexOfItem(*moved);
        std::unique_ptr<QMimeData> data(m_model->mimeData({row}));
        QVERIFY(m_model->dropMimeData(data.get(), Qt::MoveAction, -1, 0,
                                      m_model->indexOfProject(*target)));
        QVERIFY(target->entries().contains(moved));
        QVERIFY(!source->entries().contains(moved));
        QVERIFY(moved->isChecked());
        QVERIFY(moved->attachments().contains(u"/tmp/notes.txt"_s));
        QCOMPARE(m_model->indexOfItem(*moved).parent(), m_model->indexOfProject(*target));
        QCOMPARE(m_fixture->collection.undoStack()->count(), 1);
        QCOMPARE(m_fixture->collection.undoStack()->undoText(), u"Move Entry"_s);
        QCOMPARE(finished.size(), 1);
        QCOMPARE(finished[0][0].toModelIndex(), m_model->indexOfProject(*target));
        m_fixture->collection.undoStack()->undo();
        QVERIFY(source->entries().contains(moved));
        QVERIFY(!target->entries().contains(moved));
    }

    void droppedProjectMoves() {
        QMimeData data;
        data.setData(ProjectListPasteboard::dragProjectsType(), "0");
        QVERIFY(!m_model->dropMimeData(&data, Qt::MoveAction, -1, 0, cell(u"App"_s, -1, 0)));
        QCOMPARE(m_fixture->collection.projectNames(),
                 (QStringList{u"Web"_s, u"App"_s, u"Internal"_s}));
        QVERIFY(m_model->dropMimeData(&data, Qt::MoveAction, 2, 0, {}));
        QCOMPARE(m_fixture->collection.projectNames(),
                 (QStringList{u"App"_s, u"Internal"_s, u"Web"_s}));
        QCOMPARE(m_fixture->collection.undoStack()->undoText(), u"Move Project"_s);
        QCOMPARE(m_model->data(m_model->index(2, 0)).toString(), u"Web"_s);
    }

    void droppedCardBecomesTheCustomer() {
        CustomerStorage storage(m_fixture->folder.filePath(u"customers.plist"_s),
                                m_fixture->collection, m_fixture->preferences);
        m_model->setCustomerStorage(&storage);
        QMimeData data;
        data.setData(u"text/x-vcard"_s, cardText().toUtf8());
        QVERIFY(m_model->dropMimeData(&data, Qt::CopyAction, -1, 0, cell(u"App"_s, -1, 0)));
        const auto customer = storage.customerWithID(m_fixture->app->customer());
        QVERIFY(customer);
        QCOMPARE(customer->name(), u"Ada Lovelace"_s);
        QCOMPARE(m_fixture->collection.undoStack()->count(), 1);
        m_fixture->collection.undoStack()->undo();
        QCOMPARE(m_fixture->app->customer(), -1);
        QCOMPARE(storage.count(), 0);
        m_model->setCustomerStorage(nullptr);
    }

    void droppedFilesAreAttached() {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(u"/tmp/a.txt"_s), QUrl::fromLocalFile(u"/tmp/b.txt"_s),
                      QUrl(u"https://example.org/"_s)});
        const auto fee = m_fixture->item(m_fixture->app, 1);
        QVERIFY(m_model->dropMimeData(&data, Qt::CopyAction, -1, 0, m_model->indexOfItem(*fee)));
        QCOMPARE(fee->attachments(), (QStringList{u"/tmp/a.txt"_s, u"/tmp/b.txt"_s}));
        QVERIFY(m_model->dropMimeData(&data, Qt::CopyAction, -1, 0, cell(u"App"_s, -1, 0)));
        QCOMPARE(m_fixture->app->attachments(), (QStringList{u"/tmp/a.txt"_s, u"/tmp/b.txt"_s}));
        QVERIFY(m_fixture->collection.dataChanged());
        QCOMPARE(m_model->data(m_model->indexOfItem(*fee), ProjectListModel::ImageNameRole),
                 QVariant(u"clip"_s));
    }

    void anythingElseIsTakenAndIgnored() {
        QMimeData data;
        data.setText(u"hello"_s);
        QVERIFY(m_model->dropMimeData(&data, Qt::CopyAction, 1, 0, cell(u"Web"_s, -1, 0)));
        QCOMPARE(m_fixture->collection.undoStack()->count(), 0);
        QVERIFY(!m_fixture->collection.dataChanged());
    }

private:
    // The row of a project (item -1) or of its item at that place in the list, at the column.
    QModelIndex cell(const QString &project, int item, int column) const {
        const auto found = m_fixture->collection.projectWithName(project);
        const QModelIndex row = m_model->indexOfProject(*found, column);
        return item < 0 ? row : m_model->index(item, column, row.siblingAtColumn(0));
    }

    bool mirrorsDocument() const {
        const ProjectCollection &collection = m_fixture->collection;
        const ProjectList &shown = collection.visibleProjects();
        if (m_model->rowCount() != shown.size())
            return false;
        const bool filtered = collection.currentFilter() || !collection.searchText().isEmpty();
        for (int row = 0; row < shown.size(); ++row) {
            const QModelIndex index = m_model->index(row, 0);
            if (m_model->projectAt(index) != shown[row])
                return false;
            const ItemList items = filtered ? collection.filteredEntriesForProject(*shown[row])
                                            : shown[row]->entries();
            if (m_model->rowCount(index) != items.size())
                return false;
            for (int child = 0; child < items.size(); ++child) {
                if (m_model->itemAt(m_model->index(child, 0, index)) != items[child] ||
                    m_model->indexOfItem(*items[child]) != m_model->index(child, 0, index))
                    return false;
            }
        }
        return true;
    }

    std::unique_ptr<ProjectListFixture> m_fixture;
    std::unique_ptr<ProjectListModel> m_model;
};

QTEST_MAIN(TestProjectListModel)
#include "tst_projectlistmodel.moc"
