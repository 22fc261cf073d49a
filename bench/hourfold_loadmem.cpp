// hourfold-loadmem load|sax FILE: opens a project file once in a fresh process and reports the
// time taken and the process's peak and resident memory, which an in-process benchmark that
// repeats the work cannot tell apart.

#include "BareSaxPass.h"
#include "ProcessMemory.h"
#include "SortedLoad.h"

#include <QElapsedTimer>
#include <cstdio>
#include <cstring>

namespace {

int usage() {
    std::fprintf(stderr, "usage: hourfold-loadmem load|sax FILE\n"
                         "load: reads the project file and sorts every project by day\n"
                         "sax:  only runs libxml2's SAX2 parser over the file\n");
    return 2;
}

void report(const char *mode, const QElapsedTimer &timer, qint64 baseline, qint64 items) {
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    std::printf("mode=%s seconds=%.3f items=%lld baseline_kib=%lld peak_kib=%lld "
                "rss_after_kib=%lld\n",
                mode, seconds, items, baseline, ProcessMemory::peakKiB(),
                ProcessMemory::residentKiB());
}

int runLoad(const QString &path) {
    const qint64 baseline = ProcessMemory::residentKiB();
    QElapsedTimer timer;
    timer.start();
    const ProjectFile::LoadResult result = SortedLoad::load(path);
    if (!result.ok) {
        std::fprintf(stderr, "hourfold-loadmem: %s\n", qPrintable(result.error));
        return 1;
    }
    qint64 items = 0;
    for (const auto &project : result.projects)
        items += project->entries().size();
    // Reported while the document is still held, as the program holds it.
    report("load", timer, baseline, items);
    return 0;
}

int runSax(const QString &path) {
    const qint64 baseline = ProcessMemory::residentKiB();
    QElapsedTimer timer;
    timer.start();
    const BareSaxPass::Result result = BareSaxPass::run(path);
    if (!result.ok) {
        std::fprintf(stderr, "hourfold-loadmem: %s is not well-formed XML\n", qPrintable(path));
        return 1;
    }
    report("sax", timer, baseline, 0);
    return 0;
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 3)
        return usage();
    const QString path = QString::fromLocal8Bit(argv[2]);
    if (std::strcmp(argv[1], "load") == 0)
        return runLoad(path);
    if (std::strcmp(argv[1], "sax") == 0)
        return runSax(path);
    return usage();
}
