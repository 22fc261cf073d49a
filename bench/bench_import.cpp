// Importing Timewarrior's data: 100,000 intervals in twelve monthly files, read, turned into
// projects and entries and put into a document as one undo step (target: under 2 s).

#include "import/DocumentImport.h"
#include "import/ImportSources.h"
#include "model/ProjectCollection.h"
#include "platform/Preferences.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int intervalCount = 100000;

// Intervals of 5 to 124 minutes, one after another over a year, in 40 projects with two tags
// and an annotation each; every thousandth one crosses midnight.
void writeData(const QString &folder) {
    QDir().mkpath(folder);
    qint64 start = 1767225600; // 2026-01-01T00:00:00Z
    QByteArray months[12];
    for (int i = 0; i < intervalCount; ++i) {
        const qint64 end = start + (5 + i % 120) * 60;
        const QDateTime from = QDateTime::fromSecsSinceEpoch(start, Qt::UTC);
        const QDateTime to = QDateTime::fromSecsSinceEpoch(end, Qt::UTC);
        const int month = qMin(from.date().month(), 12) - 1;
        months[month] += "inc " + from.toString(u"yyyyMMdd'T'HHmmss'Z'"_s).toLatin1() + " - " +
                         to.toString(u"yyyyMMdd'T'HHmmss'Z'"_s).toLatin1() + " # project" +
                         QByteArray::number(i % 40) + " \"tag with space\" t" +
                         QByteArray::number(i % 7) + " # \"Task " + QByteArray::number(i) + "\"\n";
        start = end + (i % 1000 == 999 ? 6 * 3600 : 60);
    }
    for (int m = 0; m < 12; ++m) {
        QFile file(folder + u"/2026-%1.data"_s.arg(m + 1, 2, 10, QLatin1Char('0')));
        if (file.open(QIODevice::WriteOnly))
            file.write(months[m]);
    }
}

void BM_TimewarriorImport(benchmark::State &state, const QString &folder) {
    QTemporaryDir scratch;
    for (auto _ : state) {
        Preferences preferences(scratch.filePath(u"prefs.conf"_s));
        ProjectCollection collection(preferences);
        const ImportResult result =
            ImportSources::reader(ImportSources::Source::Timewarrior)->read(folder);
        DocumentImport::apply(result, collection, nullptr, nullptr);
        if (result.entries.size() != intervalCount)
            state.SkipWithError("not every interval was imported");
        benchmark::DoNotOptimize(collection.projectArray().size());
    }
}

} // namespace

int main(int argc, char **argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir data;
    const QString folder = data.filePath(u"data"_s);
    writeData(folder);
    benchmark::RegisterBenchmark("timewarrior_import_100000", BM_TimewarriorImport, folder)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
