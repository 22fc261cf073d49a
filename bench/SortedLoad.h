#pragma once

#include "model/ProjectFile.h"

// Opening a document the way the program does: the file is read, then every project's items are
// put in the list's default order (by day, ascending).
class SortedLoad {
public:
    static ProjectFile::LoadResult load(const QString &path);
    static void sortByDay(const ProjectList &projects);
};
