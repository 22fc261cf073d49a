#pragma once

#include <QDialog>

class CustomerStorage;
class FilterController;
class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLineEdit;
class QTabBar;
class QToolButton;
class QueryEditor;
class UserAlerts;

// The sheet that edits the saved filters, window-modal over the main window: the chooser of the
// filters with add and remove, the chosen filter's name, and two tabs, "Projects" and "Entries",
// each with a check box that puts its query in use and the query editor. Only the shown tab's
// editor takes room, so the sheet grows and shrinks by a row when the tabs are switched, its top
// edge staying in place. OK writes filters.plist, Cancel leaves it as it is; either way the
// chosen filter is applied again. FilterController holds the rules; this shows them.
//
// A value field that holds no number where one is wanted is refused (an alert, the field keeps
// the text and the focus) before the sheet closes or another filter is shown.
//
// Object names: sheetFilterPopup, addButton, removeButton, filterNameTextField, filterTabs,
// projectFilterActiveCheckbox, entryFilterActiveCheckbox, projectQueryEditor, entryQueryEditor.
class FilterSheet : public QDialog {
    Q_OBJECT

public:
    FilterSheet(FilterController &filters, const CustomerStorage &customers, UserAlerts &alerts,
                QWidget *parent);

    // Reads the file again and shows the sheet.
    void showSheet();
    QueryEditor *projectEditor() const { return m_projectEditor; }
    QueryEditor *entryEditor() const { return m_entryEditor; }

    void accept() override;
    void done(int result) override;

private:
    // Shows what the controller holds: the filters, the chosen one and its queries.
    void showFilters();
    // False, with the alert, while a value field holds no number.
    bool refuseInvalidField();
    void filterChosen(int index);

    FilterController &m_filters;
    UserAlerts &m_alerts;
    QComboBox *m_chooser;
    QToolButton *m_add;
    QToolButton *m_remove;
    QLineEdit *m_name;
    QTabBar *m_tabs;
    QCheckBox *m_projectActive;
    QCheckBox *m_entryActive;
    QueryEditor *m_projectEditor;
    QueryEditor *m_entryEditor;
    QWidget *m_projectPage;
    QWidget *m_entryPage;
};
