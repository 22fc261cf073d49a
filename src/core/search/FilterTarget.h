#pragma once

#include "Filter.h"

// What choosing a filter acts on: the document's current filter and the quick-filter bar.
class FilterTarget {
public:
    virtual ~FilterTarget() = default;
    // Makes the filter the document's current one; none clears it.
    virtual void setCurrentFilter(const Filter::Pointer &filter) = 0;
    // Switches the quick-filter bar to "off".
    virtual void disableQuickFilters() = 0;
};
