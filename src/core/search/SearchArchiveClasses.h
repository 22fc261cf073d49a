#pragma once

#include "../stores/KeyedUnarchiver.h"

// The classes that saved filters, quick filters and query copies are archived with: "Filter",
// "MPSearchQuery" and "MPSearchCriterion".
class SearchArchiveClasses {
public:
    static const KeyedUnarchiver::ClassTable &table();
};
