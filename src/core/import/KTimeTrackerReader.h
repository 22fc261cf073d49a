#pragma once

#include "ImportReader.h"

// KTimeTracker's calendar (".ics"), read with libical: every to-do (VTODO) is a task, named
// "Parent / Child" when it hangs under another one (RELATED-TO); every event (VEVENT) related to
// a task is an interval of that task's project, from DTSTART to DTEND (or DURATION), running while
// it has neither. Moments in UTC, with a TZID or floating (local time) are all read; the event's
// DESCRIPTION and COMMENT lines become the comment, its CATEGORIES the tags.
class KTimeTrackerReader : public ImportReader {
public:
    ImportResult read(const QString &path, const Progress &progress = {}) const override;
};
