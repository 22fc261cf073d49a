#pragma once

#include <QHash>
#include <QString>

class Entry;
class ProjectItem;

// The display texts of the days and clock times of entries, each stored text formatted once.
// A large report repeats the same days and times thousands of times, and formatting them through
// ICU and the C library would otherwise take most of its time. Lives for one export, so that it
// follows the locale and preferences of the moment.
class EntryTexts {
public:
    QString day(const ProjectItem &item);
    QString fromDate(const Entry &entry);
    QString toDate(const Entry &entry);
    QString fromTime(const Entry &entry);
    QString toTime(const Entry &entry);
    // Start and end dates always in the medium date style (the HTML reports).
    QString mediumFromDate(const Entry &entry);
    QString mediumToDate(const Entry &entry);

private:
    template <typename Format>
    static QString cached(QHash<QString, QString> &cache, const QString &stored, Format format);

    QHash<QString, QString> m_dates;
    QHash<QString, QString> m_times;
    QHash<QString, QString> m_mediumDates;
};
