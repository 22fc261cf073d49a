// hourfold-sax FILE: only libxml2's SAX2 parser over the file, as a process of its own, so that
// hourfold-cli's check can be timed against the floor as whole processes.

#include "BareSaxPass.h"

#include <cstdio>

int main(int argc, char **argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: hourfold-sax FILE\n");
        return 2;
    }
    return BareSaxPass::run(QString::fromLocal8Bit(argv[1])).ok ? 0 : 1;
}
