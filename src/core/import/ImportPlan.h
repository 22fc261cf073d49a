#pragma once

#include "../model/Project.h"
#include "ImportResult.h"

#include <functional>

// The projects and entries an import makes of a result: a project per imported name, merged into
// the document's project of the same name when there is one, period entries with the start and
// end minutes in local time (a running interval a running timer), comments and tags. A new
// project whose intervals were all billed at one rate takes it as its wage; otherwise each billed
// amount is kept in the comment. Nothing here changes the document.
class ImportPlan {
public:
    // The id of the customer with this name, made when there is none.
    using CustomerIds = std::function<int(const QString &name)>;
    using Addition = std::pair<std::shared_ptr<Project>, ItemList>;

    static ImportPlan make(const ImportResult &result, const ProjectList &existing,
                           const CustomerIds &customerIds);

    ProjectList newProjects;   // holding their entries already
    QList<Addition> additions; // to the document's projects
    QStringList tags;
};
