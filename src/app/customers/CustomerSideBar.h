#pragma once

#include "model/Project.h"
#include "stores/Customer.h"

#include <QWidget>

class CustomerDropBox;
class CustomerSheetDialog;
class CustomerStorage;
class CustomerTableModel;
class Preferences;
class ProjectCollection;
class QMenu;
class QTableView;
class QToolButton;
class UserAlerts;

// The side bar beside the project list: the customer table (a check box in the customer's
// colour that shows or hides the customer's projects, and the name), buttons to add and remove a
// customer, and the drop box of the selected project's customer beneath.
//
// A click on a check box toggles it; a click on a name, or any change of the selection, shows
// the customer's details (customerSelected). A double click edits the customer; the context menu
// checks all, none, or all but the selected customer. Rows are dragged out as the customer's id
// (onto a project, to assign it); address cards dropped on the table become customers.
//
// Object names: customerTable, addCustomerButton, removeCustomerButton, dropBox, and the context
// menu's actions checkAll:, checkNone:, checkOthers:, uncheckOthers:, editCustomer:,
// deleteCustomer:.
class CustomerSideBar : public QWidget {
    Q_OBJECT

public:
    CustomerSideBar(CustomerStorage &storage, ProjectCollection &collection,
                    Preferences &preferences, UserAlerts &alerts, QWidget *parent = nullptr);

    QTableView *table() const { return m_table; }
    CustomerTableModel *model() const { return m_model; }
    CustomerDropBox *dropBox() const { return m_dropBox; }
    CustomerSheetDialog *sheet() const { return m_sheet; }

    // The selected customer and its row; null and -1 without a selection.
    Customer::Pointer selectedCustomer() const;
    int selectedCustomerIndex() const;
    // Selects the customer's row without showing its details; a customer that does not exist
    // leaves the selection as it is.
    void setCurrentCustomer(int customerID);
    // The selected project (or none): the drop box shows it, and its customer becomes current.
    void showProject(const Project *project);

    // User actions.
    void createCustomer();
    // Edits the selected customer; nothing without a selection.
    void editCustomer();
    // Deletes the selected customer ("Delete customer"); nothing without a selection.
    void deleteCustomer();
    void checkAll();
    void checkNone();
    void checkOthers();
    void uncheckOthers();

    // The context menu for a click at the point of the table's viewport: a click on a row
    // selects it; the items that need a selected customer are enabled only with one.
    QMenu *menuForEvent(const QPoint &point);

    // Collapsing the side bar, kept in the preference "isDropBoxHidden".
    bool isDropBoxHidden() const;
    void setDropBoxHidden(bool hidden);
    void hideDropBox() { setDropBoxHidden(true); }
    void showDropBox() { setDropBoxHidden(false); }
    void toggleDropBox() { setDropBoxHidden(!isDropBoxHidden()); }
    // Collapses the side bar when the preference says so (start-up).
    void restoreDropBoxState();

signals:
    // The user selected a customer, or clicked its name, or created or edited it: its details
    // are to be shown. Null when the selection became empty.
    void customerSelected(const Customer::Pointer &customer);
    // The side bar was collapsed or shown again.
    void dropBoxHiddenChanged(bool hidden);

private:
    void clicked(const QModelIndex &index);
    void selectionChanged();
    void rememberSelection();
    void restoreSelection();
    void selectQuietly(const QModelIndex &index);
    void updateButtons();
    QAction *addMenuAction(const QString &name, const QString &title,
                           void (CustomerSideBar::*slot)());

    CustomerStorage &m_storage;
    Preferences &m_preferences;
    CustomerTableModel *m_model;
    QTableView *m_table;
    QToolButton *m_addButton;
    QToolButton *m_removeButton;
    CustomerDropBox *m_dropBox;
    CustomerSheetDialog *m_sheet;
    QMenu *m_menu;
    QList<QAction *> m_selectionActions;
    // The customer selected before the table was read again.
    int m_selectedID = -1;
    bool m_quiet = false;
};
