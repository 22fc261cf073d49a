#include "filters/CriterionRow.h"

#include "filters/QueryEditorLogic.h"
#include "stores/CustomerStorage.h"

#include <QComboBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

constexpr int customerImageSize = 14;

} // namespace

CriterionRow::CriterionRow(MPSearchQuery::Pointer query, MPSearchCriterion::Pointer criterion,
                           const FilterDelegate &properties, const CustomerStorage &customers,
                           QWidget *parent)
    : QWidget(parent)
    , m_logic(std::move(query), std::move(criterion), properties)
    , m_customers(customers)
    , m_property(new QComboBox)
    , m_matchKind(new QComboBox) {
    setFixedHeight(QueryEditorLogic::rowHeight);
    m_property->setObjectName(u"propertyPopUp"_s);
    m_property->setAccessibleName(tr("Property"));
    m_property->addItems(m_logic.propertyTitles());
    m_property->setCurrentIndex(m_property->findText(m_logic.propertyTitle()));
    m_matchKind->setObjectName(u"matchKindPopUp"_s);
    m_matchKind->setAccessibleName(tr("Match kind"));
    for (int kind : m_logic.matchKinds())
        m_matchKind->addItem(MPSearchCriterion::displayNameForMatchType(kind), kind);
    m_matchKind->setCurrentIndex(m_matchKind->findData(m_logic.criterion()->matchKind()));

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 2, 0, 2);
    layout->addWidget(m_property);
    layout->addWidget(m_matchKind);
    buildValueControls();
    layout->addStretch();
    showValueVisibility();

    connect(m_property, &QComboBox::activated, this,
            [this](int index) { propertyChosen(m_property->itemText(index)); });
    connect(m_matchKind, &QComboBox::activated, this, [this](int index) {
        m_logic.chooseMatchKind(m_matchKind->itemData(index).toInt());
        showValueVisibility();
    });
}

void CriterionRow::buildValueControls() {
    auto *layout = static_cast<QHBoxLayout *>(this->layout());
    const auto addLabel = [&](const QString &text) {
        auto *label = new QLabel(text);
        layout->addWidget(label);
        m_valueControls.append(label);
    };
    switch (m_logic.dataType()) {
    case MPSearchCriterion::DateType: {
        auto *picker = new QDateEdit(m_logic.dateValue());
        picker->setObjectName(u"datePicker"_s);
        picker->setAccessibleName(tr("Day"));
        picker->setCalendarPopup(true);
        connect(picker, &QDateEdit::dateChanged, this,
                [this](QDate day) { m_logic.setDateValue(day); });
        layout->addWidget(picker);
        m_valueControls.append(picker);
        return;
    }
    case MPSearchCriterion::CustomerType: {
        auto *popUp = new QComboBox;
        popUp->setObjectName(u"customerPopUp"_s);
        popUp->setAccessibleName(tr("Customer"));
        popUp->setIconSize(QSize(customerImageSize, customerImageSize));
        for (const auto &customer : m_customers.customers()) {
            const QImage image = customer->customerImage();
            popUp->addItem(image.isNull() ? QIcon()
                                          : QIcon(QPixmap::fromImage(image.scaled(
                                                customerImageSize, customerImageSize,
                                                Qt::KeepAspectRatio, Qt::SmoothTransformation))),
                           customer->name(), customer->customerID());
        }
        const int chosen = popUp->findData(m_logic.customerValue());
        popUp->setCurrentIndex(chosen >= 0 ? chosen : 0);
        if (popUp->count() > 0)
            m_logic.setCustomerValue(popUp->currentData().toInt());
        connect(popUp, &QComboBox::activated, this, [this, popUp](int index) {
            m_logic.setCustomerValue(popUp->itemData(index).toInt());
        });
        layout->addWidget(popUp);
        m_valueControls.append(popUp);
        return;
    }
    default:
        break;
    }
    const QStringList texts = m_logic.valueTexts();
    const bool numbers = m_logic.dataType() != MPSearchCriterion::StringType &&
                         m_logic.dataType() != MPSearchCriterion::TagType;
    const bool range = m_logic.dataType() == MPSearchCriterion::RangeType;
    const bool duration = m_logic.dataType() == MPSearchCriterion::DurationType;
    const QStringList names = range      ? QStringList{tr("From"), tr("To")}
                              : duration ? QStringList{tr("Hours"), tr("Minutes")}
                                         : QStringList{tr("Value")};
    for (int i = 0; i < m_logic.textFieldCount(); ++i) {
        if (range)
            addLabel(i == 0 ? tr("from") : tr("to"));
        auto *field = new QLineEdit(texts.value(i));
        field->setObjectName(i == 0 ? u"valueField"_s : u"valueField2"_s);
        field->setAccessibleName(names.value(i));
        if (numbers) {
            field->setAlignment(Qt::AlignRight);
            field->setMaximumWidth(field->fontMetrics().horizontalAdvance(u"000000000"_s));
        } else {
            field->setMinimumWidth(field->fontMetrics().horizontalAdvance(u"0"_s) * 24);
        }
        connect(field, &QLineEdit::textEdited, this, &CriterionRow::storeTexts);
        layout->addWidget(field);
        m_valueControls.append(field);
        m_fields.append(field);
        if (duration)
            addLabel(i == 0 ? tr("hours") : tr("minutes"));
    }
}

void CriterionRow::storeTexts() {
    QStringList texts;
    for (QLineEdit *field : std::as_const(m_fields))
        texts.append(field->text());
    const std::optional<int> refused = m_logic.setValueTexts(texts);
    for (int i = 0; i < m_fields.size(); ++i) {
        const bool invalid = refused && *refused == i;
        m_fields[i]->setProperty("invalid", invalid);
        m_fields[i]->setStyleSheet(invalid ? u"QLineEdit { background: #f6d3d0; }"_s : QString());
    }
}

QLineEdit *CriterionRow::firstInvalidField() const {
    for (QLineEdit *field : m_fields) {
        if (field->property("invalid").toBool())
            return field;
    }
    return nullptr;
}

void CriterionRow::showValueVisibility() {
    for (QWidget *control : std::as_const(m_valueControls))
        control->setVisible(!m_logic.isValueHidden());
}

void CriterionRow::propertyChosen(const QString &title) {
    switch (m_logic.chooseProperty(title, firstCustomerId(m_customers))) {
    case CriterionRowLogic::PropertyChange::None:
        return;
    case CriterionRowLogic::PropertyChange::Kept: {
        const QStringList texts = m_logic.valueTexts();
        for (int i = 0; i < m_fields.size(); ++i)
            m_fields[i]->setText(texts.value(i));
        storeTexts();
        if (auto *picker = findChild<QDateEdit *>())
            picker->setDate(m_logic.dateValue());
        if (auto *popUp = findChild<QComboBox *>(u"customerPopUp"_s))
            popUp->setCurrentIndex(0);
        return;
    }
    case CriterionRowLogic::PropertyChange::Rebuilt:
        emit rebuildRequested(m_logic.criterion());
        return;
    }
}

int CriterionRow::firstCustomerId(const CustomerStorage &customers) {
    return customers.customers().isEmpty() ? 0 : customers.customers().first()->customerID();
}
