#pragma once

#include "filters/CriterionRowLogic.h"

#include <QWidget>

class CustomerStorage;
class QComboBox;
class QDateEdit;
class QLineEdit;

// One row of the query editor, 32 points high: the property menu, the match-kind menu and the
// value controls of the criterion's type (see CriterionRowLogic), which it edits in place. A
// field whose text is no number stays as typed, marked, and keeps the criterion's old value;
// firstInvalidField() names it for the sheet's refusal.
//
// Object names: propertyPopUp, matchKindPopUp, valueField (the first text field), valueField2
// (the second: "to" of a range, the minutes of a duration), datePicker, customerPopUp.
class CriterionRow : public QWidget {
    Q_OBJECT

public:
    CriterionRow(MPSearchQuery::Pointer query, MPSearchCriterion::Pointer criterion,
                 const FilterDelegate &properties, const CustomerStorage &customers,
                 QWidget *parent = nullptr);

    const CriterionRowLogic &logic() const { return m_logic; }
    QLineEdit *firstInvalidField() const;
    // The id of the first customer of the list; 0 without customers.
    static int firstCustomerId(const CustomerStorage &customers);

signals:
    // The property chosen has another type: the row is to be replaced by one for the new criterion.
    void rebuildRequested(const MPSearchCriterion::Pointer &criterion);

private:
    void buildValueControls();
    void propertyChosen(const QString &title);
    void storeTexts();
    void showValueVisibility();

    CriterionRowLogic m_logic;
    const CustomerStorage &m_customers;
    QComboBox *m_property;
    QComboBox *m_matchKind;
    QList<QLineEdit *> m_fields;
    QList<QWidget *> m_valueControls;
};
