#pragma once

#include "search/FilterTarget.h"

#include <QObject>
#include <memory>

class FilterController;
class Preferences;
class ProjectCollection;
class ProjectController;
class QComboBox;
class QLineEdit;
class QuickFilterBar;
class QuickFilters;
class QWidget;

// What narrows the main window's list: the quick-filter bar, the saved filter pop-up and the
// search field, and at start the quick filter and the saved filter chosen in the last run.
class MainWindowFilters : public QObject, public FilterTarget {
    Q_OBJECT

public:
    struct Files {
        QString filters;      // filters.plist of the support folder
        QString quickFilters; // quickfilters.plist of the resources
    };

    MainWindowFilters(Preferences &preferences, ProjectCollection &collection,
                      const ProjectController &controller, const Files &files, QWidget *window);
    ~MainWindowFilters() override;

    QuickFilterBar *quickFilterBar() const { return m_quickFilterBar; }
    QComboBox *filterPopUp() const { return m_filterPopUp; }
    QLineEdit *searchField() const { return m_searchField; }
    FilterController &filterController() const { return *m_filters; }

    // At start: reads the saved and the quick filters and brings back the choices of the last run.
    void load();
    // Hides or shows the quick-filter bar; the choice is kept for the next start.
    void toggleQuickFilterBar();
    void focusSearchField();
    // Shows the saved filters and the chosen one in the pop-up.
    void fillFilterPopUp();

    void setCurrentFilter(const Filter::Pointer &filter) override;
    void disableQuickFilters() override;

signals:
    void quickFilterBarToggled(bool visible);
    // "Edit Filters..." was chosen in the pop-up.
    void editFiltersRequested();
    // A message for the status line.
    void statusMessage(const QString &message);

private:
    Preferences &m_preferences;
    ProjectCollection &m_collection;
    const ProjectController &m_controller;
    QString m_quickFiltersPath;
    std::unique_ptr<FilterController> m_filters;
    std::unique_ptr<QuickFilters> m_quickFilters;
    QuickFilterBar *m_quickFilterBar;
    QComboBox *m_filterPopUp;
    QLineEdit *m_searchField;
};
