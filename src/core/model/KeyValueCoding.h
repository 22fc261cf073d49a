#pragma once

#include <QStringView>
#include <QVariant>

// Objects whose properties can be read by name: the key paths that search criteria, reports and
// the details pane use ("effectiveDuration", "fromDateAsDate", "totalWages", ...).
class KeyValueCoding {
public:
    virtual ~KeyValueCoding() = default;
    // The value behind the key; invalid for a key the object does not have, or where it has no
    // value (an unfinished entry's end, for example).
    virtual QVariant valueForKey(QStringView key) const = 0;
};
