// hourfold-gen ITEMS PROJECTS OUT.xml [SEED]: writes a generated project file for benchmarks.

#include "DocumentGenerator.h"
#include "model/ProjectFile.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <cstdio>

namespace {

int usage() {
    std::fprintf(stderr,
                 "usage: hourfold-gen ITEMS PROJECTS OUT.xml [SEED]\n"
                 "Writes ITEMS timed entries and flat fees spread over PROJECTS projects.\n");
    return 2;
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 4 || argc > 5)
        return usage();
    bool itemsOk = false;
    bool projectsOk = false;
    bool seedOk = true;
    const int items = QByteArray(argv[1]).toInt(&itemsOk);
    const int projectCount = QByteArray(argv[2]).toInt(&projectsOk);
    const QString path = QString::fromLocal8Bit(argv[3]);
    const uint seed =
        argc == 5 ? QByteArray(argv[4]).toUInt(&seedOk) : DocumentGenerator::defaultSeed;
    if (!itemsOk || !projectsOk || !seedOk || items < 0 || projectCount < 1)
        return usage();

    QElapsedTimer timer;
    timer.start();
    DocumentGenerator generator(seed);
    const ProjectList projects = generator.generate(items, projectCount);
    const ProjectFile::SaveResult saved = ProjectFile::save(path, projects);
    if (!saved.ok) {
        std::fprintf(stderr, "hourfold-gen: %s\n", qPrintable(saved.error));
        return 1;
    }
    std::printf("hourfold-gen: wrote %s: %d items in %d projects, %.1f MB, in %.1f s\n",
                qPrintable(path), items, projectCount, double(QFileInfo(path).size()) / 1e6,
                double(timer.elapsed()) / 1000.0);
    return 0;
}
