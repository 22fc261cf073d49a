#include "export/ExportProjectSheet.h"

#include "export/ExportController.h"
#include "stores/CustomerStorage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

ExportProjectSheet::ExportProjectSheet(ExportController &controller,
                                       const CustomerStorage *customers, QWidget *parent)
    : QDialog(parent)
    , m_controller(controller)
    , m_customers(customers)
    , m_customerList(new QComboBox(this))
    , m_projects(new QListWidget(this))
    , m_applyFilter(new QCheckBox(tr("Apply current &filter"), this))
    , m_fields(new QWidget(this)) {
    setWindowTitle(tr("Export"));
    setWindowModality(Qt::WindowModal);
    m_customerList->setObjectName(u"customers"_s);
    m_customerList->setIconSize(QSize(16, 16));
    connect(m_customerList, &QComboBox::activated, this, &ExportProjectSheet::customerChosen);
    m_projects->setObjectName(u"projects"_s);
    m_projects->setAccessibleName(tr("Projects"));
    connect(m_projects, &QListWidget::itemChanged, this, [this](QListWidgetItem *item) {
        m_controller.setChecked(m_projects->row(item), item->checkState() == Qt::Checked);
    });
    m_applyFilter->setObjectName(u"applyFilter"_s);

    auto *selection = new QHBoxLayout;
    const auto addSelectionButton = [&](const QString &title, const QString &name,
                                        void (ExportController::*change)()) {
        auto *button = new QPushButton(title, this);
        button->setObjectName(name);
        connect(button, &QPushButton::clicked, this, [this, change] {
            (m_controller.*change)();
            fillProjects();
        });
        selection->addWidget(button);
    };
    addSelectionButton(tr("Select &All"), u"selectAll"_s, &ExportController::selectAll);
    addSelectionButton(tr("Select &None"), u"selectNone"_s, &ExportController::selectNone);
    addSelectionButton(tr("&Invert"), u"invert"_s, &ExportController::invertSelection);
    selection->addStretch();
    selection->addWidget(m_applyFilter);

    auto *fields = new QHBoxLayout(m_fields);
    fields->setContentsMargins(0, 0, 0, 0);
    fields->addWidget(fieldBox(tr("Project fields"),
                               {tr("Name"), tr("Description"), tr("Total duration"),
                                tr("Hourly wages"), tr("Total wages")},
                               m_projectFields));
    fields->addWidget(fieldBox(
        tr("Entry fields"),
        {tr("Day"), tr("Period"), tr("Duration"), tr("Description"), tr("State")}, m_entryFields));

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    QPushButton *exportButton = buttons->addButton(tr("Export"), QDialogButtonBox::AcceptRole);
    exportButton->setObjectName(u"export"_s);
    exportButton->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &ExportProjectSheet::exportChosen);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *customerRow = new QFormLayout;
    customerRow->addRow(tr("&Customer:"), m_customerList);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(customerRow);
    layout->addWidget(m_projects);
    layout->addLayout(selection);
    layout->addWidget(m_fields);
    layout->addWidget(buttons);
    resize(520, 480);
}

QGroupBox *ExportProjectSheet::fieldBox(const QString &title, const QStringList &names,
                                        QList<QCheckBox *> &boxes) {
    auto *box = new QGroupBox(title, m_fields);
    auto *column = new QVBoxLayout(box);
    for (const QString &name : names) {
        auto *check = new QCheckBox(name, box);
        check->setObjectName(
            u"%1%2"_s.arg(&boxes == &m_projectFields ? u"project" : u"entry").arg(boxes.size()));
        check->setChecked(true);
        column->addWidget(check);
        boxes.append(check);
    }
    return box;
}

void ExportProjectSheet::showChoices() {
    m_customerList->clear();
    for (const ExportController::CustomerChoice &choice : m_controller.customerChoices()) {
        if (choice.separator) {
            m_customerList->insertSeparator(m_customerList->count());
            continue;
        }
        const Customer::Pointer customer =
            m_customers && choice.tag > 0 ? m_customers->customerWithID(choice.tag) : nullptr;
        const QImage image = customer ? customer->customerImage() : QImage();
        m_customerList->addItem(image.isNull() ? QIcon() : QIcon(QPixmap::fromImage(image)),
                                choice.title, choice.tag);
    }
    m_controller.setCustomer(ExportController::allProjectsTag);
    m_applyFilter->setChecked(m_controller.applyFilter());
    m_fields->setVisible(ExportController::showsFieldChoices(m_controller.format()));
    fillProjects();
}

void ExportProjectSheet::customerChosen(int index) {
    m_controller.setCustomer(m_customerList->itemData(index).toInt());
    fillProjects();
}

void ExportProjectSheet::fillProjects() {
    const QSignalBlocker quiet(m_projects);
    m_projects->clear();
    const QStringList &names = m_controller.projectNames();
    for (qsizetype row = 0; row < names.size(); ++row) {
        auto *item = new QListWidgetItem(names[row], m_projects);
        item->setCheckState(m_controller.checkStates()[row] ? Qt::Checked : Qt::Unchecked);
    }
}

void ExportProjectSheet::exportChosen() {
    const auto states = [](const QList<QCheckBox *> &boxes) {
        QList<bool> chosen;
        for (const QCheckBox *box : boxes)
            chosen.append(box->isChecked());
        return chosen;
    };
    m_controller.setProjectFields(states(m_projectFields));
    m_controller.setEntryFields(states(m_entryFields));
    m_controller.setApplyFilter(m_applyFilter->isChecked());
    if (m_controller.canExport())
        accept();
}
