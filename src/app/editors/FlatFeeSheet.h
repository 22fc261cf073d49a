#pragma once

#include "editors/FlatFeeSheetLogic.h"

#include <QDialog>

class CurrencyFormatter;
class QDateEdit;
class QLineEdit;
class QPushButton;
class SheetTextEdit;
class TagStorage;

// The flat-fee sheet over the main window: books a new fee in a project (newFlatFee) or edits one
// (editFlatFee). Window-modal; Return accepts, Escape cancels; accepting has no checks.
//
// Each control's object name is its field name: flatFeeDayDatePicker, flatFeeAmountTextField,
// flatFeeAmountCurrency, flatFeeDescriptionTextBox, flatFeeTokenField, flatFeeEntryAcceptButton
// and cancelButton.
class FlatFeeSheet : public QDialog {
    Q_OBJECT

public:
    FlatFeeSheet(ProjectCollection &collection, TagStorage &tags, const CurrencyFormatter &currency,
                 QWidget *parent);

    // Opens the sheet for a new fee in the project, the amount field focused. Nothing happens
    // without a project.
    void newFlatFee(const std::shared_ptr<Project> &project);
    // Opens the sheet filled from the fee; nothing happens without one.
    void editFlatFee(const std::shared_ptr<FlatFeeEntry> &fee);

    const FlatFeeSheetLogic &logic() const { return m_logic; }

    void accept() override;

signals:
    // A fee was booked (created true) or changed; the window expands its project after a
    // booking, selects the fee and shows its details.
    void flatFeeSaved(const std::shared_ptr<FlatFeeEntry> &fee, bool created);

private:
    // Shows the logic's fields with the keyboard focus in the field.
    void openSheet(QWidget *focus);

    FlatFeeSheetLogic m_logic;
    QDateEdit *m_day;
    QLineEdit *m_amount;
    SheetTextEdit *m_comment;
    QLineEdit *m_tags;
    QPushButton *m_acceptButton;
};
