#pragma once

#include "editors/ProjectSheetLogic.h"

#include <QDialog>

class CurrencyFormatter;
class QButtonGroup;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class SheetTextEdit;
class TagStorage;

// The project sheet over the main window: creates a project (newProject) or edits one
// (editProject). Window-modal; Return accepts, Escape cancels. A new project's name is checked
// before the sheet closes; an edit's name after it closed, and a clash then drops the edit (see
// ProjectSheetLogic). Alerts and beeps go through the injected UserAlerts.
//
// Each control's object name is its field name: projectNameTextBox, nameExistsTextBox,
// descriptionTextBox, wageTextBox, projectHourlyRateCurrency, roundWhatPopUp, roundingPopUp,
// roundingMatrix (radio buttons roundingMatrix0 to roundingMatrix2), customerName,
// removeCustomerButton, projectTokenField, projectAcceptButton and cancelButton.
class ProjectSheet : public QDialog {
    Q_OBJECT

public:
    ProjectSheet(ProjectCollection &collection, CustomerStorage &customers, TagStorage &tags,
                 Preferences &preferences, const CurrencyFormatter &currency, UserAlerts &alerts,
                 QWidget *parent);

    // Opens the sheet for a new project, with the customer at that index of the customer list
    // (-1: none).
    void newProject(int selectedCustomerIndex);
    // Opens the sheet filled from the project; nothing happens without one.
    void editProject(const std::shared_ptr<Project> &project);

    const ProjectSheetLogic &logic() const { return m_logic; }

    void accept() override;

signals:
    // A project was added or changed; the window selects it and shows its details.
    void projectSaved(const std::shared_ptr<Project> &project);

private:
    // Shows the logic's fields in the controls.
    void showFields();
    void showRounding();
    void openSheet();

    ProjectSheetLogic m_logic;
    QLineEdit *m_name;
    QLabel *m_nameWarning;
    SheetTextEdit *m_description;
    QLineEdit *m_wage;
    QComboBox *m_roundWhat;
    QComboBox *m_roundTo;
    QButtonGroup *m_roundType;
    QComboBox *m_customer;
    QPushButton *m_removeCustomer;
    QLineEdit *m_tags;
    QPushButton *m_acceptButton;
};
