// Project file bytes through the reader the program opens files with: the strict parse, the older
// layout's conversion, and on malformed XML the repair and the forgiving parse. Whatever reads
// must also survive a save: the file written from it reads back strictly, to the same bytes.

#include "FuzzSetup.h"
#include "model/ProjectFile.h"

#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    FuzzSetup::prepare();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    const ProjectFile::LoadResult read = ProjectFile::read(bytes);
    if (!read.ok)
        return 0;
    const QByteArray saved = ProjectFile::makeXML(read.projects);
    const ProjectFile::LoadResult reread = ProjectFile::read(saved);
    if (!reread.ok || reread.recovered || ProjectFile::makeXML(reread.projects) != saved)
        std::abort();
    return 0;
}
