#include "FilterDelegateProjects.h"

#include "MPSearchCriterion.h"

FilterDelegateProjects::FilterDelegateProjects()
    : FilterDelegate({
          {"Name", "name", MPSearchCriterion::StringType},
          {"Description", "description", MPSearchCriterion::StringType},
          {"Hourly wages", "hourlyWage", MPSearchCriterion::FloatType},
          {"Total wages", "totalWages", MPSearchCriterion::FloatType},
          {"Total duration", "totalDuration", MPSearchCriterion::DurationType},
          {"Customer", "customer", MPSearchCriterion::CustomerType},
          {"Tags", "tags", MPSearchCriterion::TagType},
      }) {}
