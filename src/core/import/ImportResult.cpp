#include "ImportResult.h"

#include <QCoreApplication>
#include <QSet>
#include <algorithm>
#include <limits>
#include <numeric>

ImportResult ImportResult::failed(const QString &error) {
    ImportResult result;
    result.error = error;
    return result;
}

ImportResult ImportResult::wasCancelled() {
    ImportResult result;
    result.cancelled = true;
    return result;
}

QString ImportResult::where(const QString &file, int line) const {
    const QString place = placeWord + u' ' + QString::number(line);
    return file.isEmpty() ? place : file + u", " + place;
}

void ImportResult::addProblem(const QString &file, int line, const QString &text) {
    problems.append({where(file, line), text});
}

void ImportResult::finish() {
    // Names: the first customer to use a name keeps it, a later one gets its own.
    QHash<QString, QString> ownerOfName;
    QHash<QPair<QString, QString>, QString> names;
    for (ImportedEntry &entry : entries) {
        const QPair<QString, QString> key{entry.project, entry.customer};
        auto found = names.constFind(key);
        if (found == names.cend()) {
            QString name = entry.project;
            if (ownerOfName.contains(name)) {
                name = entry.customer.isEmpty() ? name : name + u" (" + entry.customer + u')';
                for (int n = 2; ownerOfName.contains(name); ++n)
                    name = entry.project + u" (" + QString::number(n) + u')';
            }
            ownerOfName.insert(name, entry.customer);
            found = names.insert(key, name);
        }
        entry.project = *found;
    }

    // Duplicates: by project, in order of start, an interval that begins before an equal one
    // ends.
    QList<qsizetype> order(entries.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [this](qsizetype a, qsizetype b) {
        const ImportedEntry &x = entries[a];
        const ImportedEntry &y = entries[b];
        return x.project != y.project ? x.project < y.project : x.start < y.start;
    });
    QSet<qsizetype> duplicates;
    for (qsizetype i = 0; i < order.size(); ++i) {
        const ImportedEntry &first = entries[order[i]];
        const qint64 firstEnd = first.end.value_or(std::numeric_limits<qint64>::max());
        for (qsizetype j = i + 1; j < order.size(); ++j) {
            const ImportedEntry &other = entries[order[j]];
            if (other.project != first.project || other.start >= firstEnd)
                break;
            if (duplicates.contains(order[j]) || other.comment != first.comment ||
                other.tags != first.tags)
                continue;
            duplicates.insert(order[j]);
            addProblem(other.file, other.line,
                       QCoreApplication::translate("ImportResult",
                                                   "overlaps %1 with the same project, comment and "
                                                   "tags; a duplicate")
                           .arg(where(first.file, first.line)));
        }
    }
    if (duplicates.isEmpty())
        return;
    QList<ImportedEntry> kept;
    kept.reserve(entries.size() - duplicates.size());
    for (qsizetype i = 0; i < entries.size(); ++i) {
        if (!duplicates.contains(i))
            kept.append(std::move(entries[i]));
    }
    entries = std::move(kept);
}

QList<ImportResult::ProjectSummary> ImportResult::projects() const {
    QList<ProjectSummary> summaries;
    QHash<QString, qsizetype> index;
    for (const ImportedEntry &entry : entries) {
        auto found = index.constFind(entry.project);
        if (found == index.cend()) {
            found = index.insert(entry.project, summaries.size());
            summaries.append({entry.project, entry.customer});
        }
        ProjectSummary &summary = summaries[*found];
        ++summary.entries;
        summary.minutes += entry.minutes();
        summary.running += entry.isRunning() ? 1 : 0;
    }
    return summaries;
}

QStringList ImportResult::tags() const {
    QStringList names;
    QSet<QString> seen;
    for (const ImportedEntry &entry : entries) {
        for (const QString &tag : entry.tags) {
            if (!seen.contains(tag)) {
                seen.insert(tag);
                names.append(tag);
            }
        }
    }
    return names;
}
