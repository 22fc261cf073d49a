// bench_projectfile [benchmark options] FILE...: times opening, saving and totalling each given
// project file, next to a bare libxml2 SAX2 pass over the same file. Run one file per process for
// figures of a freshly opened document (scripts/run-bench does).

#include "BareSaxPass.h"
#include "SortedLoad.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>

namespace {

// The document of the file benchmarked last, loaded once for the save and totals runs.
const ProjectList &loadedDocument(const QString &path) {
    static QString cachedPath;
    static ProjectList cached;
    if (cachedPath != path) {
        cached.clear();
        cached = SortedLoad::load(path).projects;
        cachedPath = path;
    }
    return cached;
}

qint64 itemCount(const ProjectList &projects) {
    qint64 count = 0;
    for (const auto &project : projects)
        count += project->entries().size();
    return count;
}

void benchLoad(benchmark::State &state, const QString &path) {
    qint64 items = 0;
    for (auto _ : state) {
        ProjectFile::LoadResult result = SortedLoad::load(path);
        if (!result.ok) {
            state.SkipWithError(qPrintable(result.error));
            break;
        }
        // Freeing the document is not part of opening it.
        state.PauseTiming();
        items = itemCount(result.projects);
        result.projects.clear();
        state.ResumeTiming();
    }
    state.counters["items"] = double(items);
    state.SetBytesProcessed(state.iterations() * QFileInfo(path).size());
}

void benchBareSax(benchmark::State &state, const QString &path) {
    for (auto _ : state) {
        const BareSaxPass::Result result = BareSaxPass::run(path);
        if (!result.ok) {
            state.SkipWithError("not well-formed XML");
            break;
        }
        benchmark::DoNotOptimize(result.elements);
    }
    state.SetBytesProcessed(state.iterations() * QFileInfo(path).size());
}

void benchMakeXml(benchmark::State &state, const QString &path) {
    const ProjectList &projects = loadedDocument(path);
    for (auto _ : state) {
        const QByteArray bytes = ProjectFile::makeXML(projects);
        benchmark::DoNotOptimize(bytes.constData());
    }
}

void benchSave(benchmark::State &state, const QString &path) {
    const ProjectList &projects = loadedDocument(path);
    // Beside the data, so that the flush reaches the same disk a real project file is on.
    QTemporaryDir folder(QFileInfo(path).absolutePath() + QStringLiteral("/save-XXXXXX"));
    const QString target = folder.filePath(QStringLiteral("projects.xml"));
    for (auto _ : state) {
        const ProjectFile::SaveResult result = ProjectFile::save(target, projects);
        if (!result.ok) {
            state.SkipWithError(qPrintable(result.error));
            break;
        }
    }
}

void benchTotals(benchmark::State &state, const QString &path) {
    const ProjectList &projects = loadedDocument(path);
    for (auto _ : state) {
        qint64 minutes = 0;
        double wages = 0.0;
        for (const auto &project : projects) {
            minutes += project->totalDuration();
            wages += double(project->totalWages());
        }
        benchmark::DoNotOptimize(minutes);
        benchmark::DoNotOptimize(wages);
    }
    state.counters["projects"] = double(projects.size());
}

void add(const QString &name, void (*function)(benchmark::State &, const QString &),
         const QString &path, benchmark::TimeUnit unit) {
    benchmark::RegisterBenchmark(name.toUtf8().constData(), function, path)
        ->Unit(unit)
        ->UseRealTime();
}

} // namespace

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_projectfile [benchmark options] FILE...\n");
        return 2;
    }
    for (int i = 1; i < argc; ++i) {
        const QFileInfo file(QString::fromLocal8Bit(argv[i]));
        if (!file.isFile()) {
            std::fprintf(stderr, "bench_projectfile: %s is not a file\n", argv[i]);
            return 2;
        }
        const QString path = file.absoluteFilePath();
        const QString label = file.completeBaseName();
        // Totals and saving first, on the document as it lies in memory right after opening it,
        // before the load runs have churned the heap.
        add(QStringLiteral("totals/") + label, &benchTotals, path, benchmark::kMillisecond);
        add(QStringLiteral("make_xml/") + label, &benchMakeXml, path, benchmark::kMillisecond);
        add(QStringLiteral("save/") + label, &benchSave, path, benchmark::kMillisecond);
        add(QStringLiteral("load/") + label, &benchLoad, path, benchmark::kMillisecond);
        add(QStringLiteral("bare_sax/") + label, &benchBareSax, path, benchmark::kMillisecond);
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
