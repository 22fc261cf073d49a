#pragma once

#include "search/SearchController.h"

#include <QWidget>

class ProjectCollection;
class ProjectListModel;
class ProjectListView;
class QLineEdit;
class QListView;

// The search results window: a field for the text and the projects and entries whose texts hold
// it (SearchController: typing on narrows the results found before). Double click or Enter on a
// result, or choosing it with the keys, selects that project or entry in the main list, opening
// its project first.
//
// Object names: resultsSearchField, resultsTable.
class SearchResultsWindow : public QWidget {
    Q_OBJECT

public:
    SearchResultsWindow(const ProjectCollection &collection, ProjectListView &list,
                        QWidget *parent);

    // Shows the window searching for the text.
    void searchFor(const QString &text);
    QListView *resultsTable() const { return m_table; }
    // Selects the result's row in the main list; false when the list does not show it.
    bool revealResult(int row);

private:
    SearchController m_search;
    ProjectListView &m_list;
    QLineEdit *m_field;
    QListView *m_table;
    bool m_placed = false;
};
