#include "editors/ProjectSheetLogic.h"

#include "editors/AmountText.h"
#include "model/ProjectCollection.h"
#include "platform/Preferences.h"
#include "platform/UserAlerts.h"
#include "stores/CustomerStorage.h"

#include <QCoreApplication>
#include <algorithm>

namespace {

QString tr(const char *text) {
    return QCoreApplication::translate("ProjectSheet", text);
}

const QList<int> standardSteps = {1, 5, 6, 10, 15, 20, 30, 60};

} // namespace

ProjectSheetLogic::ProjectSheetLogic(ProjectCollection &collection, CustomerStorage &customers,
                                     Preferences &preferences, UserAlerts &alerts)
    : m_collection(collection)
    , m_customers(customers)
    , m_preferences(preferences)
    , m_alerts(alerts) {}

void ProjectSheetLogic::newProject(int selectedCustomerIndex) {
    m_mode = Mode::NewProject;
    m_project.reset();
    m_name.clear();
    m_description.clear();
    m_tags.clear();
    m_nameWarningVisible = false;
    m_wageText = AmountText::text(m_preferences.floatForKey(u"hourlyWage"));
    m_roundWhat = 0;
    m_roundTo = defaultRoundTo;
    const Customer::Pointer customer = m_customers.customerWithIndex(selectedCustomerIndex);
    m_customerName = customer ? customer->name() : QString();
}

bool ProjectSheetLogic::editProject(const std::shared_ptr<Project> &project) {
    if (!project)
        return false;
    m_mode = Mode::EditProject;
    m_project = project;
    m_name = project->name();
    m_description = project->description();
    m_wageText = AmountText::text(project->hourlyWage());
    m_tags = project->tags();
    roundWhatSelected(project->roundWhat());
    // A step of no minutes cannot be chosen; the pop-up then shows the default step.
    if (project->roundTo() > 0)
        roundingSelected(project->roundTo());
    roundingTypeChanged(project->roundType());
    m_nameWarningVisible = false;
    const Customer::Pointer customer =
        project->customer() != -1 ? m_customers.customerWithID(project->customer()) : nullptr;
    m_customerName = customer ? customer->name() : QString();
    return true;
}

QString ProjectSheetLogic::title() const {
    return m_mode == Mode::NewProject ? tr("new project") : tr("edit project");
}

QString ProjectSheetLogic::acceptButtonTitle() const {
    return m_mode == Mode::NewProject ? tr("Create") : tr("Accept");
}

QString ProjectSheetLogic::nameWarningText() {
    return tr("A project with this name already exists.");
}

float ProjectSheetLogic::wage() const {
    return AmountText::value(m_wageText);
}

QStringList ProjectSheetLogic::customerNames() const {
    QStringList names;
    for (const Customer::Pointer &customer : m_customers.customers())
        names << customer->name();
    return names;
}

QList<ProjectSheetLogic::Choice> ProjectSheetLogic::roundWhatChoices() {
    return {
        {0, tr("No rounding")}, {1, tr("Start and stop times")}, {2, tr("Duration of each entry")}};
}

void ProjectSheetLogic::roundWhatSelected(int tag) {
    m_roundWhat = tag;
    if (tag > 0)
        m_roundTo = defaultRoundTo;
}

QList<ProjectSheetLogic::Choice> ProjectSheetLogic::roundToChoices() const {
    QList<int> steps = standardSteps;
    if (m_roundTo > 0 && !steps.contains(m_roundTo)) {
        steps << m_roundTo;
        std::sort(steps.begin(), steps.end());
    }
    QList<Choice> choices;
    for (int step : steps)
        choices.append({step, step == 1 ? tr("1 minute") : tr("%1 minutes").arg(step)});
    return choices;
}

QStringList ProjectSheetLogic::roundTypeRows() {
    return {tr("To the nearest step"), tr("Up"), tr("Down")};
}

bool ProjectSheetLogic::doneCreateProject() {
    if (m_mode == Mode::NewProject) {
        if (m_name.isEmpty()) {
            m_alerts.beep();
            m_alerts.runModal({tr("No project name entered."),
                               tr("A project must have a unique name."),
                               UserAlerts::Style::Critical,
                               {tr("OK")}});
            return false;
        }
        if (m_collection.projectExists(m_name)) {
            m_alerts.beep();
            m_nameWarningVisible = true;
            return false;
        }
    }
    return true;
}

std::shared_ptr<Project> ProjectSheetLogic::valuesFromFields() const {
    const Customer::Pointer customer = m_customers.customerWithName(m_customerName);
    return std::make_shared<Project>(m_name, m_description, wage(), m_roundWhat, m_roundTo,
                                     m_roundType, customer ? customer->customerID() : -1, m_tags);
}

std::shared_ptr<Project> ProjectSheetLogic::sheetDidEnd() {
    const std::shared_ptr<Project> values = valuesFromFields();
    if (m_mode == Mode::NewProject) {
        m_collection.addProject(values);
        return values;
    }
    if (m_collection.projectExists(m_name) && m_name != m_project->name()) {
        m_nameWarningVisible = true;
        return nullptr;
    }
    m_collection.editProject(m_project, *values);
    return m_project;
}
