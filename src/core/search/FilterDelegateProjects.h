#pragma once

#include "FilterDelegate.h"

// The searchable properties of projects.
class FilterDelegateProjects : public FilterDelegate {
public:
    FilterDelegateProjects();
};
