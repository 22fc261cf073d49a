#pragma once

#include "ImportReader.h"

// Hamster's SQLite database, read through Qt SQL without changing it: every fact (start_time,
// end_time in local time, none while it runs; description) becomes an interval of the project
// named after its activity, the activity's category becomes the customer, and the names linked
// through fact_tags become tags. A database without those tables and columns is of another
// version and is refused with a message that says so.
class HamsterReader : public ImportReader {
public:
    ImportResult read(const QString &path, const Progress &progress = {}) const override;
};
