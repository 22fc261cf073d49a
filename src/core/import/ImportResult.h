#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

// One interval read from another tracker: moments as seconds since the epoch (so that durations
// across midnight and daylight-saving changes are plain differences), an end only once it has
// stopped, and where in the source it was found.
struct ImportedEntry {
    QString project;
    QString customer; // empty for none
    QString comment;
    QStringList tags;
    qint64 start = 0;
    std::optional<qint64> end; // none while it runs
    double amount = 0;         // billable amount the source worked out; 0 for none
    QString currency;
    double rate = 0; // hourly rate the source billed at; 0 when it gives none
    QString file;
    int line = 0;

    bool isRunning() const { return !end.has_value(); }
    // Whole minutes between the start and end minutes (seconds dropped from both); 0 while running.
    int minutes() const { return end ? int(*end / 60 - start / 60) : 0; }
};

// Something in the source that is not imported: where it is and why.
struct ImportProblem {
    QString where;
    QString text;
};

// What one reader found in its source: the intervals to import and the problems, each listed with
// its line or row. A cancelled or failed read carries no intervals at all, never a part of them.
class ImportResult {
public:
    struct ProjectSummary {
        QString name;
        QString customer;
        int entries = 0;
        int minutes = 0; // finished intervals only
        int running = 0;
    };

    QList<ImportedEntry> entries;
    QList<ImportProblem> problems;
    // Why nothing could be read at all (a missing file, a database of an unknown kind); empty
    // when the source was read.
    QString error;
    bool cancelled = false;
    // The word for a place in the source: "line", "row", "frame".
    QString placeWord = QStringLiteral("line");

    QString where(const QString &file, int line) const;
    void addProblem(const QString &file, int line, const QString &text);
    // A result that says only why it failed, or that it was cancelled.
    static ImportResult failed(const QString &error);
    static ImportResult wasCancelled();

    // What every reader does last: lists an interval that overlaps an earlier one of the same
    // project with the same comment and tags as a duplicate and leaves it out, and gives a project
    // whose name another customer's project has already taken the customer's name in brackets.
    void finish();
    // Projects in the order they first appear, with their totals.
    QList<ProjectSummary> projects() const;
    QStringList tags() const;
};
