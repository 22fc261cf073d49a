#include "FilterDelegateEntries.h"

#include "MPSearchCriterion.h"

FilterDelegateEntries::FilterDelegateEntries()
    : FilterDelegate({
          {"Duration", "effectiveDuration", MPSearchCriterion::DurationType},
          {"From", "fromDateAsDate", MPSearchCriterion::DateType},
          {"To", "toDateAsDate", MPSearchCriterion::DateType},
          {"Pause Duration", "pauseTime", MPSearchCriterion::DurationType},
          {"Is Finished", "isFinished", MPSearchCriterion::BooleanType},
          {"Is Paused", "isPaused", MPSearchCriterion::BooleanType},
          {"Description", "comment", MPSearchCriterion::StringType},
          {"Is Checked", "isChecked", MPSearchCriterion::BooleanType},
          {"Tags", "tags", MPSearchCriterion::TagType},
      }) {}
