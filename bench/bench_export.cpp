#include "export/CSVExporter.h"
#include "export/HTMLExporter.h"

#include "model/Clock.h"
#include "model/ProjectCollection.h"
#include "model/StoredForms.h"
#include "platform/Preferences.h"
#include <QDir>

#include <QStandardPaths>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int projectCount = 20;
constexpr int entriesPerProject = 5000;

// 100,000 items over three years: mostly finished period entries, every tenth a day entry,
// every twentieth a flat fee.
std::shared_ptr<Project> makeProject(int number) {
    auto project = std::make_shared<Project>(u"Project %1"_s.arg(number), u"Client work"_s, 52.5f,
                                             0, 0, 0, -1, u""_s);
    const QDate first(2023, 1, 2);
    for (int i = 0; i < entriesPerProject; ++i) {
        const QString day = StoredForms::dateText(first.addDays(i % 1095));
        const QString comment = u"Task %1"_s.arg(i);
        if (i % 20 == 19) {
            auto fee = std::make_shared<FlatFeeEntry>();
            fee->setDate(day);
            fee->setAmount(float(i % 300) + 0.5f);
            fee->setComment(comment);
            project->addEntry(fee);
            continue;
        }
        auto entry = std::make_shared<Entry>();
        entry->setComment(comment);
        entry->setChecked(i % 3 == 0);
        if (i % 10 == 9) {
            entry->setDate(day);
            entry->setTime(30 + i % 90);
        } else {
            const int from = 8 * 60 + i % 300;
            entry->setHasPeriod(true);
            entry->setFromDate(day);
            entry->setFromTime(StoredForms::timeText(from / 60, from % 60));
            entry->setToDate(day);
            entry->setToTime(StoredForms::timeText((from + 95) / 60, (from + 95) % 60));
            entry->setTime(95);
        }
        project->addEntry(entry);
    }
    return project;
}

struct Fixture {
    Fixture() {
        QStandardPaths::setTestModeEnabled(true);
        Clock::setNow(QDateTime(QDate(2026, 1, 15), QTime(12, 0)));
        Preferences::setShared(&preferences);
        for (int i = 0; i < projectCount; ++i) {
            auto project = makeProject(i);
            names.append(project->name());
            collection.addProject(project);
        }
    }
    ~Fixture() { Preferences::setShared(nullptr); }

    QTemporaryDir folder;
    Preferences preferences{folder.filePath(u"Hourfold3.conf"_s)};
    ProjectCollection collection{preferences};
    QStringList names;
    const QList<bool> allFields{true, true, true, true, true};
};

Fixture &fixture() {
    static Fixture instance;
    return instance;
}

void exportWith(benchmark::State &state, Exporter &exporter, const QString &file) {
    Fixture &f = fixture();
    exporter.setProjectCollection(&f.collection);
    const QString path = f.folder.filePath(file);
    for (auto _ : state) {
        if (!exporter.exportProjects(f.names, f.allFields, f.allFields, path, false, u"macintosh"_s)
                 .ok)
            state.SkipWithError("export failed");
    }
    state.SetItemsProcessed(state.iterations() * projectCount * entriesPerProject);
}

void BM_CsvExport100k(benchmark::State &state) {
    CSVExporter exporter;
    exportWith(state, exporter, u"out.csv"_s);
}

void BM_TextExport100k(benchmark::State &state) {
    Exporter exporter;
    exportWith(state, exporter, u"out.txt"_s);
}

void BM_HtmlExport100k(benchmark::State &state) {
    // The target is a folder: report.html and the style's sheets are written into it.
    HTMLExporter exporter(QStringLiteral(HOURFOLD_RESOURCE_DIR "/Styles/Simple.hfstyle"), nullptr);
    QDir(fixture().folder.path()).mkpath(u"html"_s);
    exportWith(state, exporter, u"html"_s);
}

} // namespace

BENCHMARK(BM_CsvExport100k)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HtmlExport100k)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TextExport100k)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
