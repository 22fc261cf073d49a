#pragma once

#include "../model/Project.h"
#include "../stores/RangeValue.h"

#include <QObject>
#include <functional>

// The search results table: the projects whose name or description and the entries whose
// description contain a text (ignoring case), each project followed by its matching entries.
// Typing on (a text that starts with the previous one) narrows the results found before instead
// of searching again. The table only shows the rows this makes.
class SearchController : public QObject {
    Q_OBJECT

public:
    using ProjectsProvider = std::function<ProjectList()>;

    // A project, or an entry (or flat fee) with the project it belongs to.
    struct Result {
        std::shared_ptr<Project> project;
        std::shared_ptr<ProjectItem> entry;
        bool isProject() const { return !entry; }
    };

    struct Row {
        QString text;
        bool bold = false;
        QList<RangeValue> redRanges; // positions in text
    };

    // The provider gives the document's projects in their order at the time of each search.
    explicit SearchController(ProjectsProvider projects, QObject *parent = nullptr);

    void searchFor(const QString &text);
    void searchForNewString(const QString &lowerCased);
    void refineSearch(const QString &lowerCased);
    QString oldSearchString() const { return m_oldSearchString; }

    const QList<Result> &searchResults() const { return m_searchResults; }
    int rowCount() const { return int(m_searchResults.size()); }
    // A project row is "name: description" in bold; an entry row is an excerpt of its
    // description with the search text in red. An index outside the results is a programming
    // error: it asserts in debug builds and gives an empty row otherwise.
    Row row(int index) const;
    // The result of a row, for selecting it in the project list; none outside the results.
    Result result(int index) const;

    // Up to 12 characters before the first match (ignoring case) and the match with 45 more,
    // marked with "..." where the description goes on.
    static QString trimString(const QString &string, const QString &searchString);
    // Every occurrence, ignoring case, each searched from the end of the one before.
    static QList<RangeValue> colorSearchString(const QString &searchString, const QString &string);

signals:
    void resultsChanged();

private:
    bool isRow(int index) const { return index >= 0 && index < m_searchResults.size(); }
    static bool contains(const QString &text, const QString &lowerCased) {
        return text.toLower().contains(lowerCased);
    }
    static bool projectMatches(const Project &project, const QString &lowerCased) {
        return contains(project.description(), lowerCased) || contains(project.name(), lowerCased);
    }

    ProjectsProvider m_projects;
    QList<Result> m_searchResults;
    QString m_oldSearchString;
};
