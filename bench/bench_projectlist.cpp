// The project list over a generated document of 10,000 or 100,000 items in 8 projects: building
// the model, following a change of the document, the cells of the rows on screen, the 5-second
// refresh, and scrolling a shown list. Run it with QT_QPA_PLATFORM=offscreen.

#include "DocumentGenerator.h"
#include "ProjectListModel.h"
#include "ProjectListView.h"
#include "model/Clock.h"
#include "model/ProjectCollection.h"
#include "platform/CurrencyFormatter.h"
#include "platform/Preferences.h"
#include "platform/UserAlerts.h"

#include <QHash>
#include <QImage>
#include <QScrollBar>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr int projectCount = 8;
// Rows a window shows at once.
constexpr int rowsOnScreen = 40;

class SilentAlerts : public UserAlerts {
public:
    void beep() override {}
    int runModal(const Alert &) override { return firstButton; }
};

struct Document {
    explicit Document(int items) {
        Clock::setNow(QDateTime(QDate(2024, 11, 29), QTime(17, 0)));
        Preferences::setShared(&preferences);
        collection.setCurrencyFormatter(&currency);
        for (const auto &project : DocumentGenerator().generate(items, projectCount)) {
            project->setExpanded(true);
            collection.addProject(project);
        }
        collection.sortAllProjects();
        collection.updateVisibleProjects();
        collection.undoStack()->clear();
    }

    // The largest project's row.
    QModelIndex largestProject(const ProjectListModel &model) const {
        QModelIndex largest;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QModelIndex index = model.index(row, 0);
            if (!largest.isValid() || model.rowCount(index) > model.rowCount(largest))
                largest = index;
        }
        return largest;
    }

    QTemporaryDir folder;
    Preferences preferences{folder.filePath(u"Hourfold3.conf"_s)};
    CurrencyFormatter currency{u"en_US"_s};
    ProjectCollection collection{preferences};
};

Document &document(int items) {
    static QHash<int, Document *> documents;
    Document *&found = documents[items];
    if (!found)
        found = new Document(items);
    Preferences::setShared(&found->preferences);
    return *found;
}

void BM_BuildModel(benchmark::State &state) {
    Document &doc = document(int(state.range(0)));
    for (auto _ : state) {
        ProjectListModel model(doc.collection, doc.preferences, doc.currency);
        benchmark::DoNotOptimize(model.rowCount());
    }
}

// What every change of the document costs the list: comparing the rows with the document,
// reporting the changed cells and computing the project rows' totals and check boxes again, here
// for a change that leaves the rows as they are.
void BM_FollowChange(benchmark::State &state) {
    Document &doc = document(int(state.range(0)));
    ProjectListModel model(doc.collection, doc.preferences, doc.currency);
    for (auto _ : state) {
        model.reload();
        for (int row = 0; row < model.rowCount(); ++row) {
            benchmark::DoNotOptimize(
                model.data(model.index(row, ProjectListModel::DurationColumn)));
            benchmark::DoNotOptimize(
                model.data(model.index(row, ProjectListModel::StateColumn), Qt::CheckStateRole));
        }
    }
}

// A pasted entry and its undo: the document's own work and the list's insert and removal.
void BM_AddAndUndoEntry(benchmark::State &state) {
    Document &doc = document(int(state.range(0)));
    ProjectListModel model(doc.collection, doc.preferences, doc.currency);
    const auto project = model.projectAt(doc.largestProject(model));
    for (auto _ : state) {
        auto entry = std::make_shared<Entry>();
        entry->setDate(u"01.06.2022"_s);
        entry->setTime(30);
        doc.collection.addEntry(entry, project, u"Paste Entry"_s);
        doc.collection.undoStack()->undo();
    }
    doc.collection.undoStack()->clear();
}

// The cells of the rows on screen, every role the view asks for.
void BM_DataOfRowsOnScreen(benchmark::State &state) {
    Document &doc = document(int(state.range(0)));
    ProjectListModel model(doc.collection, doc.preferences, doc.currency);
    const QModelIndex project = doc.largestProject(model);
    const int first = model.rowCount(project) / 2;
    const int roles[] = {Qt::DisplayRole,    Qt::DecorationRole,
                         Qt::ForegroundRole, Qt::BackgroundRole,
                         Qt::CheckStateRole, Qt::TextAlignmentRole,
                         Qt::FontRole,       ProjectListModel::ActionImagesRole};
    for (auto _ : state) {
        for (int row = first; row < first + rowsOnScreen; ++row) {
            for (int column = 0; column < ProjectListModel::ColumnCount; ++column) {
                const QModelIndex index = model.index(row, column, project);
                benchmark::DoNotOptimize(model.parent(index));
                for (int role : roles)
                    benchmark::DoNotOptimize(model.data(index, role));
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * rowsOnScreen);
}

void BM_IndexOfItem(benchmark::State &state) {
    Document &doc = document(int(state.range(0)));
    ProjectListModel model(doc.collection, doc.preferences, doc.currency);
    const auto project = model.projectAt(doc.largestProject(model));
    std::mt19937 random(7);
    std::uniform_int_distribution<qsizetype> pick(0, project->entries().size() - 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(model.indexOfItem(*project->entries()[pick(random)]));
}

void BM_RefreshRunning(benchmark::State &state) {
    Document &doc = document(int(state.range(0)));
    ProjectListModel model(doc.collection, doc.preferences, doc.currency);
    for (auto _ : state)
        model.refreshRunning();
}

// The list in a window of 1000 x 700 with every project expanded: opening it, and painting it
// at another scroll position.
void BM_OpenView(benchmark::State &state) {
    Document &doc = document(int(state.range(0)));
    SilentAlerts alerts;
    QImage image(1000, 700, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        ProjectListModel model(doc.collection, doc.preferences, doc.currency);
        ProjectListView view(alerts);
        view.setProjectListModel(&model);
        view.resize(1000, 700);
        view.viewport()->render(&image);
    }
}

void BM_ScrollAndPaint(benchmark::State &state) {
    Document &doc = document(int(state.range(0)));
    SilentAlerts alerts;
    ProjectListModel model(doc.collection, doc.preferences, doc.currency);
    ProjectListView view(alerts);
    view.setProjectListModel(&model);
    view.resize(1000, 700);
    QImage image(1000, 700, QImage::Format_ARGB32_Premultiplied);
    view.viewport()->render(&image);
    QScrollBar *bar = view.verticalScrollBar();
    std::mt19937 random(11);
    std::uniform_int_distribution<int> position(0, bar->maximum());
    for (auto _ : state) {
        bar->setValue(position(random));
        view.viewport()->render(&image);
    }
}

} // namespace

BENCHMARK(BM_BuildModel)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FollowChange)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AddAndUndoEntry)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DataOfRowsOnScreen)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_IndexOfItem)->Arg(10000)->Arg(100000);
BENCHMARK(BM_RefreshRunning)->Arg(10000)->Arg(100000);
BENCHMARK(BM_OpenView)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ScrollAndPaint)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
