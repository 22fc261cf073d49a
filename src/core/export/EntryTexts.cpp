#include "EntryTexts.h"

#include "../model/Entry.h"

template <typename Format>
QString EntryTexts::cached(QHash<QString, QString> &cache, const QString &stored, Format format) {
    auto it = cache.constFind(stored);
    if (it == cache.cend())
        it = cache.insert(stored, format());
    return *it;
}

// Days, start dates and end dates are all stored "dd.MM.yyyy" and shown in the list's date style;
// both clock times are stored "HH:mm" and shown in the local time format.
QString EntryTexts::day(const ProjectItem &item) {
    return cached(m_dates, item.date(), [&item] { return item.formattedDay(); });
}

QString EntryTexts::fromDate(const Entry &entry) {
    return cached(m_dates, entry.fromDate(), [&entry] { return entry.formattedFromDate(); });
}

QString EntryTexts::toDate(const Entry &entry) {
    return cached(m_dates, entry.toDate(), [&entry] { return entry.formattedToDate(); });
}

QString EntryTexts::fromTime(const Entry &entry) {
    return cached(m_times, entry.fromTime(), [&entry] { return entry.formattedFromTime(); });
}

QString EntryTexts::toTime(const Entry &entry) {
    return cached(m_times, entry.toTime(), [&entry] { return entry.formattedToTime(); });
}

QString EntryTexts::mediumFromDate(const Entry &entry) {
    return cached(m_mediumDates, entry.fromDate(),
                  [&entry] { return entry.formattedFromDate(true); });
}

QString EntryTexts::mediumToDate(const Entry &entry) {
    return cached(m_mediumDates, entry.toDate(), [&entry] { return entry.formattedToDate(true); });
}
