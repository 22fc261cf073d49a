#pragma once

#include "FilterDelegate.h"

// The searchable properties of entries.
class FilterDelegateEntries : public FilterDelegate {
public:
    FilterDelegateEntries();
};
