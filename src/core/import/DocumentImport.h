#pragma once

#include "ImportPlan.h"

class CustomerStorage;
class ProjectCollection;
class TagStorage;

// Puts an import into the open document as one undo step named "Import": the new projects, the
// entries added to projects of the same name, and the customers made for them (undoing removes
// them again). The tags join the tag store's completions.
class DocumentImport {
public:
    // Customers and tags may be null (no customers are made then, no tags remembered).
    static ImportPlan apply(const ImportResult &result, ProjectCollection &collection,
                            CustomerStorage *customers, TagStorage *tags);
    // The customer with exactly this name in the store, added when there is none.
    static int customerNamed(CustomerStorage &customers, const QString &name);
};
