#include "customers/CustomerSideBar.h"

#include "common/SignButtons.h"
#include "customers/CustomerDropBox.h"
#include "customers/CustomerSheetDialog.h"
#include "customers/CustomerTableModel.h"
#include "platform/Preferences.h"
#include "stores/CustomerStorage.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

CustomerSideBar::CustomerSideBar(CustomerStorage &storage, ProjectCollection &collection,
                                 Preferences &preferences, UserAlerts &alerts, QWidget *parent)
    : QWidget(parent)
    , m_storage(storage)
    , m_preferences(preferences)
    , m_model(new CustomerTableModel(storage, this))
    , m_table(new QTableView)
    , m_addButton(new QToolButton)
    , m_removeButton(new QToolButton)
    , m_dropBox(new CustomerDropBox(storage, collection))
    , m_sheet(new CustomerSheetDialog(storage, preferences, alerts, this))
    , m_menu(new QMenu(this)) {
    setObjectName(u"CustomerSideBar"_s);

    m_table->setObjectName(u"customerTable"_s);
    m_table->setModel(m_model);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setShowGrid(false);
    m_table->setWordWrap(false);
    m_table->setIconSize(QSize(CustomerTableModel::checkBoxSize, CustomerTableModel::checkBoxSize));
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(
        qMax(fontMetrics().height(), CustomerTableModel::checkBoxSize) + 6);
    QHeaderView *header = m_table->horizontalHeader();
    header->setSectionsClickable(false);
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setMinimumSectionSize(CustomerTableModel::checkBoxSize + 8);
    header->setSectionResizeMode(CustomerTableModel::IconColumn, QHeaderView::Fixed);
    header->resizeSection(CustomerTableModel::IconColumn, CustomerTableModel::checkBoxSize + 8);
    header->setSectionResizeMode(CustomerTableModel::NameColumn, QHeaderView::Stretch);
    // The table's background is the second of the alternating row colours.
    QPalette palette = m_table->palette();
    palette.setColor(QPalette::Base, palette.color(QPalette::AlternateBase));
    m_table->setPalette(palette);
    m_table->setDragEnabled(true);
    m_table->setAcceptDrops(true);
    m_table->setDragDropMode(QAbstractItemView::DragDrop);
    m_table->setDefaultDropAction(Qt::CopyAction);
    m_table->setDropIndicatorShown(false);
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);

    SignButtons::makeAdd(m_addButton, u"addCustomerButton"_s, tr("New Customer"));
    SignButtons::makeRemove(m_removeButton, u"removeCustomerButton"_s, tr("Delete Customer"));
    for (QToolButton *button : {m_addButton, m_removeButton}) {
        button->setAutoRaise(true);
        button->setFixedSize(24, 22);
    }
    m_dropBox->setObjectName(u"dropBox"_s);

    addMenuAction(u"checkAll:"_s, tr("Check All"), &CustomerSideBar::checkAll);
    addMenuAction(u"checkNone:"_s, tr("Check None"), &CustomerSideBar::checkNone);
    m_selectionActions << addMenuAction(u"checkOthers:"_s, tr("Check Others"),
                                        &CustomerSideBar::checkOthers)
                       << addMenuAction(u"uncheckOthers:"_s, tr("Uncheck Others"),
                                        &CustomerSideBar::uncheckOthers);
    m_menu->addSeparator();
    m_selectionActions << addMenuAction(u"editCustomer:"_s, tr("Edit Customer…"),
                                        &CustomerSideBar::editCustomer)
                       << addMenuAction(u"deleteCustomer:"_s, tr("Delete Customer"),
                                        &CustomerSideBar::deleteCustomer);

    auto *buttons = new QHBoxLayout;
    buttons->setContentsMargins(2, 0, 2, 0);
    buttons->setSpacing(0);
    buttons->addWidget(m_addButton);
    buttons->addWidget(m_removeButton);
    buttons->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_table, 1);
    layout->addLayout(buttons);
    layout->addWidget(m_dropBox);

    connect(m_table, &QTableView::clicked, this, &CustomerSideBar::clicked);
    connect(m_table, &QTableView::doubleClicked, this, [this](const QModelIndex &index) {
        if (index.isValid())
            editCustomer();
    });
    connect(m_table, &QWidget::customContextMenuRequested, this, [this](const QPoint &point) {
        menuForEvent(point)->popup(m_table->viewport()->mapToGlobal(point));
    });
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CustomerSideBar::selectionChanged);
    connect(m_model, &QAbstractItemModel::modelAboutToBeReset, this,
            &CustomerSideBar::rememberSelection);
    connect(m_model, &QAbstractItemModel::modelReset, this, &CustomerSideBar::restoreSelection);
    connect(m_model, &CustomerTableModel::customersDropped, this,
            &CustomerSideBar::setCurrentCustomer);
    connect(m_addButton, &QToolButton::clicked, this, &CustomerSideBar::createCustomer);
    connect(m_removeButton, &QToolButton::clicked, this, &CustomerSideBar::deleteCustomer);
    connect(m_sheet, &CustomerSheetDialog::customerSaved, this, [this](int customerID) {
        setCurrentCustomer(customerID);
        emit customerSelected(m_storage.customerWithID(customerID));
    });
    updateButtons();
}

QAction *CustomerSideBar::addMenuAction(const QString &name, const QString &title,
                                        void (CustomerSideBar::*slot)()) {
    QAction *action = m_menu->addAction(title, this, slot);
    action->setObjectName(name);
    return action;
}

Customer::Pointer CustomerSideBar::selectedCustomer() const {
    return m_storage.customerWithIndex(selectedCustomerIndex());
}

int CustomerSideBar::selectedCustomerIndex() const {
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void CustomerSideBar::setCurrentCustomer(int customerID) {
    const QModelIndex index = m_model->indexOfCustomer(customerID);
    if (index.isValid())
        selectQuietly(index);
}

void CustomerSideBar::showProject(const Project *project) {
    m_dropBox->showProject(project);
    if (project)
        setCurrentCustomer(project->customer());
}

void CustomerSideBar::selectQuietly(const QModelIndex &index) {
    m_quiet = true;
    m_table->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                          QItemSelectionModel::Rows);
    m_quiet = false;
    m_table->scrollTo(index);
    updateButtons();
}

void CustomerSideBar::clicked(const QModelIndex &index) {
    if (index.column() == CustomerTableModel::IconColumn)
        m_storage.toggleVisible(index.row());
    else
        emit customerSelected(m_model->customerAt(index));
}

void CustomerSideBar::selectionChanged() {
    updateButtons();
    if (!m_quiet)
        emit customerSelected(selectedCustomer());
}

void CustomerSideBar::rememberSelection() {
    const Customer::Pointer customer = selectedCustomer();
    m_selectedID = customer ? customer->customerID() : -1;
}

void CustomerSideBar::restoreSelection() {
    setCurrentCustomer(m_selectedID);
    updateButtons();
}

void CustomerSideBar::updateButtons() {
    m_removeButton->setEnabled(selectedCustomerIndex() >= 0);
}

void CustomerSideBar::createCustomer() {
    m_sheet->createCustomer();
}

void CustomerSideBar::editCustomer() {
    m_sheet->editCustomer(selectedCustomerIndex());
}

void CustomerSideBar::deleteCustomer() {
    if (const Customer::Pointer customer = selectedCustomer())
        m_storage.deleteCustomerWithID(customer->customerID());
}

void CustomerSideBar::checkAll() {
    m_storage.checkAll();
}

void CustomerSideBar::checkNone() {
    m_storage.checkNone();
}

void CustomerSideBar::checkOthers() {
    m_storage.checkOthers(selectedCustomerIndex());
}

void CustomerSideBar::uncheckOthers() {
    m_storage.uncheckOthers(selectedCustomerIndex());
}

QMenu *CustomerSideBar::menuForEvent(const QPoint &point) {
    const QModelIndex index = m_table->indexAt(point);
    if (index.isValid())
        m_table->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                              QItemSelectionModel::Rows);
    else
        m_table->clearSelection();
    const bool selected = selectedCustomerIndex() >= 0;
    for (QAction *action : std::as_const(m_selectionActions))
        action->setEnabled(selected);
    return m_menu;
}

bool CustomerSideBar::isDropBoxHidden() const {
    // Before the window is first shown every widget counts as hidden; what matters is whether
    // the side bar would show with its window.
    return parentWidget() ? !isVisibleTo(parentWidget()) : !isVisible();
}

void CustomerSideBar::setDropBoxHidden(bool hidden) {
    setVisible(!hidden);
    m_preferences.setObject(hidden, u"isDropBoxHidden");
    emit dropBoxHiddenChanged(hidden);
}

void CustomerSideBar::restoreDropBoxState() {
    if (!m_preferences.boolForKey(u"isDropBoxHidden"))
        return;
    hide();
    emit dropBoxHiddenChanged(true);
}
