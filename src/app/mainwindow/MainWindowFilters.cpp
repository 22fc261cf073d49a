#include "mainwindow/MainWindowFilters.h"

#include "mainwindow/ProjectController.h"
#include "mainwindow/QuickFilterBar.h"
#include "model/ProjectCollection.h"
#include "platform/Folders.h"
#include "platform/Preferences.h"
#include "search/FilterController.h"
#include "search/QuickFilters.h"

#include <QComboBox>
#include <QLineEdit>

using namespace Qt::StringLiterals;

MainWindowFilters::MainWindowFilters(Preferences &preferences, ProjectCollection &collection,
                                     const ProjectController &controller, const Files &files,
                                     QWidget *window)
    : QObject(window)
    , m_preferences(preferences)
    , m_collection(collection)
    , m_controller(controller)
    , m_quickFiltersPath(files.quickFilters)
    , m_filters(std::make_unique<FilterController>(files.filters, preferences, *this))
    , m_quickFilters(std::make_unique<QuickFilters>())
    , m_quickFilterBar(new QuickFilterBar(window))
    , m_filterPopUp(new QComboBox(window))
    , m_searchField(new QLineEdit(window)) {
    m_filterPopUp->setObjectName(u"FilterPopUp"_s);
    m_filterPopUp->setToolTip(tr("Saved filter"));
    m_filterPopUp->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_filterPopUp->setMinimumContentsLength(12);
    connect(m_filterPopUp, &QComboBox::activated, this, [this](int index) {
        const bool edit = m_filters->filterAction(m_filterPopUp->itemData(index).toInt());
        fillFilterPopUp();
        if (edit)
            emit editFiltersRequested();
    });
    m_searchField->setObjectName(u"SearchField"_s);
    m_searchField->setPlaceholderText(tr("Search"));
    m_searchField->setClearButtonEnabled(true);
    m_searchField->setMinimumWidth(180);
    m_searchField->setMaximumWidth(260);
    connect(m_searchField, &QLineEdit::textChanged, this,
            [this](const QString &text) { m_collection.setSearchText(text); });
    connect(m_quickFilterBar, &QuickFilterBar::selectionChanged, this,
            [this](const QString &identifier) {
                m_quickFilters->choose(identifier, m_controller.isStartingUp(), *m_filters, *this,
                                       m_preferences);
                fillFilterPopUp();
            });
    fillFilterPopUp();
}

MainWindowFilters::~MainWindowFilters() = default;

void MainWindowFilters::load() {
    m_quickFilters->load(m_quickFiltersPath);
    // Read before the saved filter comes back: bringing it back turns the quick filters off, and
    // the quick filter chosen last sets it aside again.
    const QString chosen = m_preferences.stringForKey(u"quickfilter");
    m_filters->awake();
    // Told once; the file stays as it is until the filters are saved from the sheet.
    if (!m_filters->loadError().isEmpty())
        emit statusMessage(
            tr("The saved filters could not be read from %1 (%2); the file is "
               "left as it is until you save filters.")
                .arg(Folders::withTilde(m_filters->filtersPath()), m_filters->loadError()));
    const QString identifier = chosen.isEmpty() ? u"off"_s : chosen;
    m_quickFilterBar->setSelected(identifier);
    m_quickFilters->choose(identifier, true, *m_filters, *this, m_preferences);
    fillFilterPopUp();
    m_quickFilterBar->setVisible(!m_preferences.boolForKey(u"isQuickFiltersHidden"));
    emit quickFilterBarToggled(m_quickFilterBar->isVisible());
}

void MainWindowFilters::toggleQuickFilterBar() {
    const bool hide = m_quickFilterBar->isVisible();
    m_quickFilterBar->setVisible(!hide);
    m_preferences.setObject(hide, u"isQuickFiltersHidden");
    emit quickFilterBarToggled(!hide);
}

void MainWindowFilters::focusSearchField() {
    m_searchField->setFocus();
    m_searchField->selectAll();
}

void MainWindowFilters::fillFilterPopUp() {
    m_filterPopUp->clear();
    for (const FilterController::MenuItem &item : m_filters->menuItems()) {
        if (item.tag == FilterController::SeparatorTag) {
            if (m_filters->filters().size() > 0)
                m_filterPopUp->insertSeparator(m_filterPopUp->count());
            continue;
        }
        m_filterPopUp->addItem(item.title, item.tag);
    }
    m_filterPopUp->setCurrentIndex(qMax(0, m_filterPopUp->findData(m_filters->selectedTag())));
}

void MainWindowFilters::setCurrentFilter(const Filter::Pointer &filter) {
    m_collection.setCurrentFilter(filter);
}

void MainWindowFilters::disableQuickFilters() {
    m_quickFilterBar->setSelected(u"off"_s);
    m_preferences.setObject(u"off"_s, u"quickfilter");
}
