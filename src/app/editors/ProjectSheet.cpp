#include "editors/ProjectSheet.h"

#include "common/TagCompleter.h"
#include "editors/SheetTextEdit.h"
#include "model/Project.h"
#include "platform/CurrencyFormatter.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

ProjectSheet::ProjectSheet(ProjectCollection &collection, CustomerStorage &customers,
                           TagStorage &tags, Preferences &preferences,
                           const CurrencyFormatter &currency, UserAlerts &alerts, QWidget *parent)
    : QDialog(parent)
    , m_logic(collection, customers, preferences, alerts)
    , m_name(new QLineEdit)
    , m_nameWarning(new QLabel(ProjectSheetLogic::nameWarningText()))
    , m_description(new SheetTextEdit)
    , m_wage(new QLineEdit)
    , m_roundWhat(new QComboBox)
    , m_roundTo(new QComboBox)
    , m_roundType(new QButtonGroup(this))
    , m_customer(new QComboBox)
    , m_removeCustomer(new QPushButton(tr("Remove")))
    , m_tags(new QLineEdit)
    , m_acceptButton(new QPushButton) {
    setWindowModality(Qt::WindowModal);

    m_name->setObjectName(u"projectNameTextBox"_s);
    m_nameWarning->setObjectName(u"nameExistsTextBox"_s);
    m_nameWarning->setStyleSheet(u"color: #c00000;"_s);
    // The line keeps its place while hidden, so the sheet does not jump when it appears.
    QSizePolicy warningPolicy = m_nameWarning->sizePolicy();
    warningPolicy.setRetainSizeWhenHidden(true);
    m_nameWarning->setSizePolicy(warningPolicy);
    m_description->setObjectName(u"descriptionTextBox"_s);
    m_wage->setObjectName(u"wageTextBox"_s);
    m_wage->setAlignment(Qt::AlignRight);
    m_wage->setMaximumWidth(m_wage->fontMetrics().horizontalAdvance(u"0000000000.00"_s) + 16);
    m_roundWhat->setObjectName(u"roundWhatPopUp"_s);
    for (const auto &choice : ProjectSheetLogic::roundWhatChoices())
        m_roundWhat->addItem(choice.title, choice.tag);
    m_roundTo->setObjectName(u"roundingPopUp"_s);
    m_customer->setObjectName(u"customerName"_s);
    m_customer->setEditable(true);
    m_customer->setInsertPolicy(QComboBox::NoInsert);
    m_customer->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_customer->setMinimumContentsLength(16);
    m_removeCustomer->setObjectName(u"removeCustomerButton"_s);
    m_removeCustomer->setAutoDefault(false);
    m_tags->setObjectName(u"projectTokenField"_s);
    new TagCompleter(m_tags, tags, TagStorage::Panel::Project);
    m_acceptButton->setObjectName(u"projectAcceptButton"_s);

    auto *form = new QFormLayout;
    auto *nameColumn = new QVBoxLayout;
    nameColumn->addWidget(m_name);
    nameColumn->addWidget(m_nameWarning);
    form->addRow(tr("Name:"), nameColumn);
    form->addRow(tr("Description:"), m_description);
    auto *wageRow = new QHBoxLayout;
    wageRow->addWidget(m_wage);
    auto *symbol = new QLabel(QLocale(currency.localeName()).currencySymbol());
    symbol->setObjectName(u"projectHourlyRateCurrency"_s);
    wageRow->addWidget(symbol);
    wageRow->addStretch();
    form->addRow(tr("Hourly wage:"), wageRow);
    auto *customerRow = new QHBoxLayout;
    customerRow->addWidget(m_customer, 1);
    customerRow->addWidget(m_removeCustomer);
    form->addRow(tr("Customer:"), customerRow);
    form->addRow(tr("Tags:"), m_tags);

    auto *rounding = new QGroupBox(tr("Rounding"));
    auto *roundingForm = new QFormLayout(rounding);
    roundingForm->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    roundingForm->addRow(tr("Round:"), m_roundWhat);
    roundingForm->addRow(tr("Step:"), m_roundTo);
    auto *matrix = new QWidget;
    matrix->setObjectName(u"roundingMatrix"_s);
    auto *matrixLayout = new QVBoxLayout(matrix);
    matrixLayout->setContentsMargins(0, 0, 0, 0);
    const QStringList rows = ProjectSheetLogic::roundTypeRows();
    for (int row = 0; row < rows.size(); ++row) {
        auto *button = new QRadioButton(rows.at(row));
        button->setObjectName(u"roundingMatrix%1"_s.arg(row));
        m_roundType->addButton(button, row);
        matrixLayout->addWidget(button);
    }
    roundingForm->addRow(tr("Direction:"), matrix);

    auto *buttons = new QDialogButtonBox;
    auto *cancel = buttons->addButton(QDialogButtonBox::Cancel);
    cancel->setObjectName(u"cancelButton"_s);
    buttons->addButton(m_acceptButton, QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &ProjectSheet::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ProjectSheet::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(rounding);
    layout->addWidget(buttons);
    // Only a button inside the dialog can be its default one.
    m_acceptButton->setDefault(true);

    connect(m_name, &QLineEdit::textChanged, this,
            [this](const QString &text) { m_logic.setName(text); });
    connect(m_description, &QPlainTextEdit::textChanged, this,
            [this] { m_logic.setDescription(m_description->toPlainText()); });
    connect(m_wage, &QLineEdit::textChanged, this,
            [this](const QString &text) { m_logic.setWageText(text); });
    connect(m_tags, &QLineEdit::textChanged, this,
            [this](const QString &text) { m_logic.setTags(text); });
    connect(m_customer, &QComboBox::editTextChanged, this, [this](const QString &text) {
        m_logic.setCustomerName(text);
        m_removeCustomer->setEnabled(m_logic.isRemoveCustomerEnabled());
    });
    connect(m_removeCustomer, &QPushButton::clicked, this, [this] {
        m_logic.removeCustomer();
        m_customer->setCurrentIndex(-1);
        m_customer->clearEditText();
    });
    connect(m_roundWhat, &QComboBox::activated, this, [this](int index) {
        m_logic.roundWhatSelected(m_roundWhat->itemData(index).toInt());
        showRounding();
    });
    connect(m_roundTo, &QComboBox::activated, this,
            [this](int index) { m_logic.roundingSelected(m_roundTo->itemData(index).toInt()); });
    connect(m_roundType, &QButtonGroup::idClicked, this,
            [this](int row) { m_logic.roundingTypeChanged(row); });
}

void ProjectSheet::newProject(int selectedCustomerIndex) {
    m_logic.newProject(selectedCustomerIndex);
    openSheet();
}

void ProjectSheet::editProject(const std::shared_ptr<Project> &project) {
    if (!m_logic.editProject(project))
        return;
    openSheet();
}

void ProjectSheet::openSheet() {
    showFields();
    m_name->setFocus();
    open();
}

void ProjectSheet::showFields() {
    // Filling the customer list would otherwise pass each name to the logic on the way.
    const QList<QObject *> fields = {m_name, m_description, m_wage, m_customer, m_tags};
    for (QObject *field : fields)
        field->blockSignals(true);
    setWindowTitle(m_logic.title());
    m_acceptButton->setText(m_logic.acceptButtonTitle());
    m_nameWarning->setVisible(m_logic.isNameWarningVisible());
    m_name->setText(m_logic.name());
    m_description->setPlainText(m_logic.description());
    m_wage->setText(m_logic.wageText());
    m_tags->setText(m_logic.tags());
    m_customer->clear();
    m_customer->addItems(m_logic.customerNames());
    m_customer->setCurrentIndex(m_customer->findText(m_logic.customerName()));
    m_customer->setEditText(m_logic.customerName());
    m_removeCustomer->setEnabled(m_logic.isRemoveCustomerEnabled());
    for (QObject *field : fields)
        field->blockSignals(false);
    showRounding();
}

void ProjectSheet::showRounding() {
    m_roundWhat->setCurrentIndex(m_roundWhat->findData(m_logic.roundWhat()));
    m_roundTo->clear();
    for (const auto &choice : m_logic.roundToChoices())
        m_roundTo->addItem(choice.title, choice.tag);
    m_roundTo->setCurrentIndex(m_roundTo->findData(m_logic.roundTo()));
    if (QAbstractButton *row = m_roundType->button(m_logic.roundType())) {
        row->setChecked(true);
    } else {
        // A direction from a file that no row stands for: no row is checked, the value stays.
        m_roundType->setExclusive(false);
        for (QAbstractButton *button : m_roundType->buttons())
            button->setChecked(false);
        m_roundType->setExclusive(true);
    }
    const bool enabled = m_logic.isRoundingEnabled();
    m_roundTo->setEnabled(enabled);
    for (QAbstractButton *button : m_roundType->buttons())
        button->setEnabled(enabled);
}

void ProjectSheet::accept() {
    if (!m_logic.doneCreateProject()) {
        m_nameWarning->setVisible(m_logic.isNameWarningVisible());
        return;
    }
    QDialog::accept();
    const std::shared_ptr<Project> project = m_logic.sheetDidEnd();
    m_nameWarning->setVisible(m_logic.isNameWarningVisible());
    if (project)
        emit projectSaved(project);
}
