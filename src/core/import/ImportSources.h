#pragma once

#include "ImportReader.h"

#include <memory>

// The trackers Hourfold reads, their names on the command line and in the dialogue, which of
// them come as a folder, and which one a chosen file or folder is when that is obvious.
class ImportSources {
public:
    enum class Source { Timewarrior, Watson, Hamster, KTimeTracker, Toggl, Clockify };

    static const QList<Source> &all();
    // "timewarrior", "watson", "hamster", "ktimetracker", "toggl", "clockify".
    static QString key(Source source);
    static std::optional<Source> fromKey(const QString &key);
    // "Timewarrior", "Watson", "Hamster", "KTimeTracker", "Toggl (CSV)", "Clockify (CSV)".
    static QString title(Source source);
    // Timewarrior and Watson keep their data in a folder, which may be chosen instead of a file.
    static bool takesFolder(Source source);

    // A folder with "data/*.data" or "*.data" files is Timewarrior's, one with "frames" Watson's;
    // a file by its first bytes: SQLite is Hamster, an iCalendar KTimeTracker, a JSON array
    // Watson, an "inc" line Timewarrior, and a CSV header by its column names. None when it is
    // not obvious.
    static std::optional<Source> detect(const QString &path);

    // The reader; for Timewarrior with the tag that names the project: the first one, or with a
    // pattern the first tag that matches it.
    static std::unique_ptr<ImportReader> reader(Source source,
                                                const QString &projectTagPattern = {});
};
