#include "filters/FilterSheet.h"

#include "common/SignButtons.h"
#include "filters/QueryEditor.h"
#include "platform/UserAlerts.h"
#include "search/FilterController.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QWidget *page(QCheckBox *active, QueryEditor *editor) {
    auto *widget = new QWidget;
    auto *layout = new QVBoxLayout(widget);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(active);
    layout->addWidget(editor);
    QObject::connect(active, &QCheckBox::toggled, editor, &QWidget::setEnabled);
    return widget;
}

} // namespace

FilterSheet::FilterSheet(FilterController &filters, const CustomerStorage &customers,
                         UserAlerts &alerts, QWidget *parent)
    : QDialog(parent)
    , m_filters(filters)
    , m_alerts(alerts)
    , m_chooser(new QComboBox)
    , m_add(new QToolButton)
    , m_remove(new QToolButton)
    , m_name(new QLineEdit)
    , m_tabs(new QTabBar)
    , m_projectActive(new QCheckBox(tr("Filter &projects with this query")))
    , m_entryActive(new QCheckBox(tr("Filter &entries with this query")))
    , m_projectEditor(new QueryEditor(m_filters.projectProperties(), customers))
    , m_entryEditor(new QueryEditor(m_filters.entryProperties(), customers))
    , m_projectPage(page(m_projectActive, m_projectEditor))
    , m_entryPage(page(m_entryActive, m_entryEditor)) {
    setWindowModality(Qt::WindowModal);
    setWindowTitle(tr("Edit Filters"));
    m_chooser->setObjectName(u"sheetFilterPopup"_s);
    m_chooser->setMinimumContentsLength(20);
    m_chooser->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    SignButtons::makeAdd(m_add, u"addButton"_s, tr("Add filter"));
    SignButtons::makeRemove(m_remove, u"removeButton"_s, tr("Remove filter"));
    m_name->setObjectName(u"filterNameTextField"_s);
    m_tabs->setObjectName(u"filterTabs"_s);
    m_tabs->addTab(tr("Projects"));
    m_tabs->addTab(tr("Entries"));
    m_projectActive->setObjectName(u"projectFilterActiveCheckbox"_s);
    m_entryActive->setObjectName(u"entryFilterActiveCheckbox"_s);
    m_projectEditor->setObjectName(u"projectQueryEditor"_s);
    m_entryEditor->setObjectName(u"entryQueryEditor"_s);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);

    auto *chooserRow = new QHBoxLayout;
    chooserRow->addWidget(m_chooser, 1);
    chooserRow->addWidget(m_remove);
    chooserRow->addWidget(m_add);
    auto *form = new QFormLayout;
    auto *chooserLabel = new QLabel(tr("&Filter:"));
    chooserLabel->setBuddy(m_chooser);
    form->addRow(chooserLabel, chooserRow);
    form->addRow(tr("&Name:"), m_name);
    auto *layout = new QVBoxLayout(this);
    // The sheet is as tall as what it shows: the hidden tab's editor takes no room.
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addLayout(form);
    layout->addWidget(m_tabs);
    layout->addWidget(m_projectPage);
    layout->addWidget(m_entryPage);
    layout->addWidget(buttons);
    m_entryPage->hide();

    connect(m_chooser, &QComboBox::activated, this, &FilterSheet::filterChosen);
    connect(m_add, &QToolButton::clicked, this, [this] {
        if (!refuseInvalidField())
            return;
        m_filters.add();
        showFilters();
        m_name->setFocus();
        m_name->selectAll();
    });
    connect(m_remove, &QToolButton::clicked, this, [this] {
        m_filters.remove(m_filters.sheetSelection());
        showFilters();
    });
    connect(m_name, &QLineEdit::textEdited, this, [this](const QString &text) {
        const int index = m_filters.sheetSelection();
        if (index < 0 || index >= m_filters.filters().size())
            return;
        m_filters.filters()[index]->setName(text);
        m_chooser->setItemText(index, FilterController::titleOf(*m_filters.filters()[index]));
    });
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int tab) {
        m_filters.selectTab(tab == 0 ? FilterController::Tab::Projects
                                     : FilterController::Tab::Entries);
        showFilters();
    });
    connect(m_projectActive, &QCheckBox::clicked, this, [this](bool on) {
        m_filters.setProjectFilterActive(on);
        showFilters();
    });
    connect(m_entryActive, &QCheckBox::clicked, this, [this](bool on) {
        m_filters.setEntryFilterActive(on);
        showFilters();
    });
    connect(buttons, &QDialogButtonBox::accepted, this, &FilterSheet::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &FilterSheet::reject);
}

void FilterSheet::showSheet() {
    m_filters.showSheet();
    showFilters();
    open();
}

void FilterSheet::showFilters() {
    const QList<Filter::Pointer> &filters = m_filters.filters();
    const int index = m_filters.sheetSelection();
    const bool chosen = index >= 0 && index < filters.size();
    m_chooser->clear();
    for (const auto &filter : filters)
        m_chooser->addItem(FilterController::titleOf(*filter));
    m_chooser->setCurrentIndex(chosen ? index : -1);
    if (m_name->text() != (chosen ? filters[index]->name() : QString()))
        m_name->setText(chosen ? filters[index]->name() : QString());
    const bool projects = m_filters.currentTab() == FilterController::Tab::Projects;
    {
        const QSignalBlocker blocker(m_tabs);
        m_tabs->setCurrentIndex(projects ? 0 : 1);
    }
    m_projectPage->setVisible(projects);
    m_entryPage->setVisible(!projects);
    m_projectActive->setChecked(chosen && filters[index]->isProjectsQueryActive());
    m_entryActive->setChecked(chosen && filters[index]->isEntriesQueryActive());
    for (QWidget *control : {static_cast<QWidget *>(m_remove), static_cast<QWidget *>(m_name),
                             static_cast<QWidget *>(m_tabs), m_projectPage, m_entryPage})
        control->setEnabled(chosen);
    m_projectEditor->setEnabled(chosen && m_projectActive->isChecked());
    m_entryEditor->setEnabled(chosen && m_entryActive->isChecked());
    if (m_projectEditor->query() != m_filters.projectEditorQuery())
        m_projectEditor->setSearchQuery(m_filters.projectEditorQuery());
    if (m_entryEditor->query() != m_filters.entryEditorQuery())
        m_entryEditor->setSearchQuery(m_filters.entryEditorQuery());
}

bool FilterSheet::refuseInvalidField() {
    QLineEdit *field = m_projectEditor->firstInvalidField();
    if (!field)
        field = m_entryEditor->firstInvalidField();
    if (!field)
        return true;
    m_alerts.runModal({tr("“%1” is not a number.").arg(field->text()),
                       tr("Please enter a number in this field."),
                       UserAlerts::Style::Critical,
                       {tr("OK")}});
    m_tabs->setCurrentIndex(m_projectEditor->isAncestorOf(field) ? 0 : 1);
    field->setFocus();
    field->selectAll();
    return false;
}

void FilterSheet::filterChosen(int index) {
    if (!refuseInvalidField()) {
        m_chooser->setCurrentIndex(m_filters.sheetSelection());
        return;
    }
    m_filters.filterSelected(index);
    showFilters();
}

void FilterSheet::accept() {
    if (refuseInvalidField())
        QDialog::accept();
}

void FilterSheet::done(int result) {
    m_filters.sheetDidEnd(result == Accepted ? 0 : 1);
    QDialog::done(result);
}
