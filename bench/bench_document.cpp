// bench_document [benchmark options] FILE: times what the window thread spends on the open
// document: one change with crash protection on (the change, the list's update and handing the
// file to be written), the time until that change is on disk (written, flushed and renamed), one
// keystroke in the search field while a word is typed, and switching between quick filters.

#include "model/ProjectCollection.h"
#include "platform/Preferences.h"
#include "search/QuickFilters.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>

namespace {

// One document, loaded once from a copy of the file beside it, with crash protection on.
struct Document {
    explicit Document(const QString &path)
        : folder(QFileInfo(path).absolutePath() + QStringLiteral("/document-XXXXXX"))
        , preferences(folder.filePath(QStringLiteral("settings.conf")))
        , collection(preferences) {
        file = folder.filePath(QStringLiteral("projects.xml"));
        QFile::copy(path, file);
        preferences.setObject(true, u"crashProtection");
        ok = collection.loadCollection(file).ok;
        // The turns in which the program, idle after opening, prepares the file's text.
        for (qsizetype i = 0; i <= collection.projectArray().size(); ++i)
            QCoreApplication::processEvents();
    }

    QTemporaryDir folder;
    Preferences preferences;
    ProjectCollection collection;
    QString file;
    bool ok = false;
};

Document &document(const QString &path) {
    static std::unique_ptr<Document> loaded;
    if (!loaded)
        loaded = std::make_unique<Document>(path);
    return *loaded;
}

// An entry of the largest project, whose comment the change edits.
std::shared_ptr<Entry> someEntry(ProjectCollection &collection) {
    std::shared_ptr<Project> largest;
    for (const auto &project : collection.projectArray()) {
        if (!largest || project->entries().size() > largest->entries().size())
            largest = project;
    }
    for (const auto &item : largest->entries()) {
        if (item->isEntry() && !item->isWorking())
            return std::static_pointer_cast<Entry>(item);
    }
    return nullptr;
}

void edit(ProjectCollection &collection, const std::shared_ptr<Entry> &entry, int n) {
    auto values = entry->copy();
    values->setComment(QStringLiteral("Edited %1").arg(n));
    collection.editEntry(entry, *values, false);
}

// Runs the event loop until the document has been written (or could not be).
void waitUntilWritten(ProjectCollection &collection) {
    QEventLoop loop;
    QObject::connect(&collection, &ProjectCollection::saved, &loop, &QEventLoop::quit);
    QObject::connect(&collection, &ProjectCollection::saveFailed, &loop, &QEventLoop::quit);
    if (collection.dataChanged())
        loop.exec();
}

// One change after another; the time of each ends when the window thread is free again or, with
// untilOnDisk, when the change is on disk.
void runChanges(benchmark::State &state, const QString &path, bool untilOnDisk) {
    Document &doc = document(path);
    const auto entry = someEntry(doc.collection);
    int n = 0;
    for (auto _ : state) {
        edit(doc.collection, entry, ++n);
        // The end of the event-loop turn, where the change is handed over to be written.
        QCoreApplication::processEvents();
        if (!untilOnDisk)
            state.PauseTiming();
        waitUntilWritten(doc.collection);
        if (!untilOnDisk)
            state.ResumeTiming();
        if (doc.collection.dataChanged()) {
            state.SkipWithError("the change was not written");
            break;
        }
    }
}

void benchChange(benchmark::State &state, const QString &path) {
    runChanges(state, path, false);
}

void benchDurable(benchmark::State &state, const QString &path) {
    runChanges(state, path, true);
}

// One keystroke while "meeting" is typed letter by letter: the time of the seven updates of the
// shown entries, divided by seven.
void benchSearchKeystroke(benchmark::State &state, const QString &path) {
    Document &doc = document(path);
    const QString word = QStringLiteral("meeting");
    for (auto _ : state) {
        for (qsizetype length = 1; length <= word.size(); ++length)
            doc.collection.setSearchText(word.left(length));
        state.PauseTiming();
        doc.collection.setSearchText({});
        state.ResumeTiming();
    }
}

// Switching the quick filter five times: today, month, year, week, off.
void benchQuickFilter(benchmark::State &state, const QString &path) {
    Document &doc = document(path);
    QList<Filter::Pointer> filters = QuickFilters::makeDefaultFilters();
    filters.append(nullptr);
    for (auto _ : state) {
        for (const auto &filter : filters)
            doc.collection.setCurrentFilter(filter);
    }
}

void add(const char *name, void (*function)(benchmark::State &, const QString &),
         const QString &path) {
    benchmark::RegisterBenchmark(name, function, path)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

} // namespace

int main(int argc, char **argv) {
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_document [benchmark options] FILE\n");
        return 2;
    }
    const QString path = QFileInfo(QString::fromLocal8Bit(argv[1])).absoluteFilePath();
    if (!document(path).ok) {
        std::fprintf(stderr, "bench_document: cannot read %s\n", argv[1]);
        return 1;
    }
    add("change", &benchChange, path);
    add("durable", &benchDurable, path);
    add("search_keystroke", &benchSearchKeystroke, path);
    add("quick_filter", &benchQuickFilter, path);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
