#include "SearchController.h"

namespace {

constexpr qsizetype contextBefore = 12;
constexpr qsizetype contextAfter = 45;

} // namespace

SearchController::SearchController(ProjectsProvider projects, QObject *parent)
    : QObject(parent)
    , m_projects(std::move(projects)) {}

void SearchController::searchFor(const QString &text) {
    const QString lowerCased = text.toLower();
    if (!m_oldSearchString.isEmpty() && lowerCased.startsWith(m_oldSearchString))
        refineSearch(lowerCased);
    else
        searchForNewString(lowerCased);
    m_oldSearchString = lowerCased;
    emit resultsChanged();
}

void SearchController::searchForNewString(const QString &lowerCased) {
    m_searchResults.clear();
    if (lowerCased.isEmpty())
        return;
    for (const auto &project : m_projects()) {
        if (projectMatches(*project, lowerCased))
            m_searchResults.append({project, nullptr});
        for (const auto &entry : project->entries()) {
            if (contains(entry->comment(), lowerCased))
                m_searchResults.append({project, entry});
        }
    }
}

void SearchController::refineSearch(const QString &lowerCased) {
    m_searchResults.removeIf([&lowerCased](const Result &result) {
        return result.isProject() ? !projectMatches(*result.project, lowerCased)
                                  : !contains(result.entry->comment(), lowerCased);
    });
}

SearchController::Row SearchController::row(int index) const {
    if (!isRow(index)) {
        Q_ASSERT_X(false, "SearchController::row",
                   "Invalid parameter not satisfying: index >= 0 && index < rowCount()");
        return {};
    }
    const Result &result = m_searchResults[index];
    if (result.isProject()) {
        return {QStringLiteral("%1: %2").arg(result.project->name(), result.project->description()),
                true,
                {}};
    }
    const QString excerpt = trimString(result.entry->comment(), m_oldSearchString);
    return {excerpt, false, colorSearchString(m_oldSearchString, excerpt)};
}

SearchController::Result SearchController::result(int index) const {
    return isRow(index) ? m_searchResults[index] : Result();
}

QString SearchController::trimString(const QString &string, const QString &searchString) {
    const qsizetype found = string.indexOf(searchString, 0, Qt::CaseInsensitive);
    const qsizetype match = std::max<qsizetype>(found, 0);
    const qsizetype start = match > contextBefore ? match - contextBefore : 0;
    const qsizetype length = (found < 0 ? 0 : searchString.size()) + contextAfter;
    const QString prefix = start > 0 ? QStringLiteral("...") : QString();
    if (start + length >= string.size())
        return prefix + string.mid(start);
    return prefix + string.mid(start, length) + QStringLiteral("...");
}

QList<RangeValue> SearchController::colorSearchString(const QString &searchString,
                                                      const QString &string) {
    QList<RangeValue> ranges;
    if (searchString.isEmpty())
        return ranges;
    qsizetype from = 0;
    for (qsizetype at; (at = string.indexOf(searchString, from, Qt::CaseInsensitive)) >= 0;) {
        ranges.append({quint32(at), quint32(searchString.size())});
        from = at + searchString.size();
    }
    return ranges;
}
