#pragma once

#include "stores/CustomerSheet.h"

#include <QDialog>

class ImageWell;
class QLabel;
class QLineEdit;
class QPushButton;

// The customer sheet over the main window: creates a customer (createCustomer) or edits one
// (editCustomer). Window-modal; Return accepts, Escape cancels. The rules (the empty-name alert,
// the taken-name warning, undo of a creation) are CustomerSheet's; alerts and beeps go through
// the injected UserAlerts.
//
// Each control's object name is its field name: customerNameTextField, nameExistsTextBox,
// customerColor, imageView, removeImageButton, customerAcceptButton and cancelButton.
class CustomerSheetDialog : public QDialog {
    Q_OBJECT

public:
    CustomerSheetDialog(CustomerStorage &storage, Preferences &preferences, UserAlerts &alerts,
                        QWidget *parent);

    // Opens the sheet with empty fields.
    void createCustomer();
    // Opens the sheet filled from the customer at the index of the list; false (and no sheet)
    // without one.
    bool editCustomer(int index);

    const CustomerSheet &logic() const { return m_logic; }

    void accept() override;

signals:
    // A customer was created or changed.
    void customerSaved(int customerID);

private:
    void showFields();
    void showColor();
    void showImage();
    void chooseColor();

    CustomerSheet m_logic;
    QLineEdit *m_name;
    QLabel *m_nameWarning;
    QPushButton *m_color;
    ImageWell *m_image;
    QPushButton *m_removeImage;
    QPushButton *m_acceptButton;
};
