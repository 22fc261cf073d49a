#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <memory>

class CustomerStorage;
class Preferences;
class Project;
class ProjectCollection;
class UserAlerts;

// The logic of the sheet that creates a project or edits one: its fields, the rounding controls
// and their enabling, the checks when it is accepted and what ending it changes in the document.
// The window shows the fields, calls doneCreateProject() for the accept button, closes when that
// says so and then calls sheetDidEnd(); cancelling changes nothing.
class ProjectSheetLogic {
public:
    enum class Mode { NewProject, EditProject };

    // An item of a pop-up: the value it stands for and its title.
    struct Choice {
        int tag;
        QString title;
    };

    // The step the step pop-up proposes whenever rounding is switched on.
    static constexpr int defaultRoundTo = 5;

    ProjectSheetLogic(ProjectCollection &collection, CustomerStorage &customers,
                      Preferences &preferences, UserAlerts &alerts);

    // Empty fields, the "hourlyWage" preference, no rounding (step 5, disabled) and the customer
    // at that index of the customer list (none for -1). The rounding direction stays as it was.
    void newProject(int selectedCustomerIndex);
    // The project's values; false (the sheet does not open) without a project.
    bool editProject(const std::shared_ptr<Project> &project);

    Mode mode() const { return m_mode; }
    // "new project" or "edit project".
    QString title() const;
    // "Create" or "Accept".
    QString acceptButtonTitle() const;
    bool isNameWarningVisible() const { return m_nameWarningVisible; }
    // The text of the warning line.
    static QString nameWarningText();
    std::shared_ptr<Project> editedProject() const { return m_project; }

    QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    QString description() const { return m_description; }
    void setDescription(const QString &description) { m_description = description; }
    // The wage as typed; text that is not a number is a wage of 0.
    QString wageText() const { return m_wageText; }
    void setWageText(const QString &text) { m_wageText = text; }
    float wage() const;
    QString tags() const { return m_tags; }
    void setTags(const QString &tags) { m_tags = tags; }

    // The customer's name; empty for none.
    QString customerName() const { return m_customerName; }
    void setCustomerName(const QString &name) { m_customerName = name; }
    bool isRemoveCustomerEnabled() const { return !m_customerName.isEmpty(); }
    void removeCustomer() { m_customerName.clear(); }
    // The names offered in the customer field, in the customer list's order.
    QStringList customerNames() const;

    // What is rounded (0 nothing, 1 clock times, 2 durations). Choosing more than nothing
    // enables the step and the direction and proposes the default step.
    static QList<Choice> roundWhatChoices();
    int roundWhat() const { return m_roundWhat; }
    void roundWhatSelected(int tag);
    bool isRoundingEnabled() const { return m_roundWhat > 0; }
    // The steps in minutes; a project's own step that is not among them is offered too, so
    // that editing keeps it.
    QList<Choice> roundToChoices() const;
    int roundTo() const { return m_roundTo; }
    void roundingSelected(int tag) { m_roundTo = tag; }
    // The direction rows; the row number is the value (0 nearest, 1 up, 2 down).
    static QStringList roundTypeRows();
    int roundType() const { return m_roundType; }
    void roundingTypeChanged(int row) { m_roundType = row; }

    // The accept button. A new project needs a name (else a critical alert) that no project has
    // (else the warning line), each refusal with a beep. An edit is not checked here. True when
    // the sheet closes.
    bool doneCreateProject();
    // After the sheet closed: adds the new project ("Add Project") or changes the edited one
    // ("Edit Project") and returns it. An edit that gives the project another project's name
    // sets the warning line and is dropped (null): the sheet is already gone, deliberately.
    std::shared_ptr<Project> sheetDidEnd();

    // A project holding the fields: what is added, or handed over as the new values.
    std::shared_ptr<Project> valuesFromFields() const;

private:
    ProjectCollection &m_collection;
    CustomerStorage &m_customers;
    Preferences &m_preferences;
    UserAlerts &m_alerts;
    Mode m_mode = Mode::NewProject;
    std::shared_ptr<Project> m_project;
    QString m_name;
    QString m_description;
    QString m_wageText;
    QString m_tags;
    QString m_customerName;
    int m_roundWhat = 0;
    int m_roundTo = defaultRoundTo;
    int m_roundType = 0;
    bool m_nameWarningVisible = false;
};
