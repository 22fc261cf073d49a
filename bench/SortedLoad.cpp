#include "SortedLoad.h"

#include "model/EntrySort.h"

ProjectFile::LoadResult SortedLoad::load(const QString &path) {
    ProjectFile::LoadResult result = ProjectFile::load(path);
    if (result.ok)
        sortByDay(result.projects);
    return result;
}

void SortedLoad::sortByDay(const ProjectList &projects) {
    for (const auto &project : projects) {
        ItemList items = project->entries();
        EntrySort::sortEntries(items, u"Day_Col", true);
        project->setEntries(items);
    }
}
