#pragma once

#include <QDate>
#include <QDateTime>
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
    // The local calendar day of the moment behind the key; invalid where there is none. Objects
    // that keep the day itself answer without making a moment first.
    virtual QDate dayForKey(QStringView key) const {
        const QVariant value = valueForKey(key);
        if (value.typeId() != QMetaType::QDateTime)
            return {};
        const QDateTime moment = value.toDateTime();
        return moment.isValid() ? moment.toLocalTime().date() : QDate();
    }
};
