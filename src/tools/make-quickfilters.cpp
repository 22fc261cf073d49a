// Writes the quick filters resource at build time with the program's own archiver.

#include "platform/AtomicFile.h"
#include "search/Filter.h"
#include "search/QuickFilters.h"

#include <QCoreApplication>
#include <cstdio>

int main(int argc, char *argv[]) {
    QCoreApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s OUTPUT.plist\n", argv[0]);
        return 2;
    }
    const AtomicFile::Result written = AtomicFile::write(
        QString::fromLocal8Bit(argv[1]), Filter::archiveList(QuickFilters::makeDefaultFilters()));
    if (!written.ok) {
        std::fprintf(stderr, "%s\n", qPrintable(written.error));
        return 1;
    }
    return 0;
}
