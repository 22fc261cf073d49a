#pragma once

#include <QColor>
#include <QImage>
#include <QString>

class CustomerStorage;
class Preferences;
class UserAlerts;

// The logic of the sheet that creates a customer or edits one: the texts it shows, its fields,
// the checks when it is accepted and what accepting changes. The window shows the fields and
// calls accept() for the accept button; closing it otherwise changes nothing.
class CustomerSheet {
public:
    enum class Mode { NewCustomer, EditCustomer };

    CustomerSheet(CustomerStorage &storage, Preferences &preferences, UserAlerts &alerts);

    // Empty fields, the default project colour ("projectColor"; red without one).
    void createCustomer();
    // The fields of the customer at the index; false (the sheet does not open) without one.
    bool editCustomer(int index);

    Mode mode() const { return m_mode; }
    // The customer being edited, or the one created by the last accept(); -1 before either.
    int customerID() const { return m_customerID; }
    // "new customer" or "edit customer".
    QString title() const;
    // "Create" or "Accept".
    QString acceptButtonTitle() const;
    // The line that tells a name is taken, and its text.
    static QString nameWarningText();
    bool isNameWarningVisible() const { return m_nameWarningVisible; }
    bool isRemoveImageEnabled() const { return !m_image.isNull(); }
    bool isOpenInAddressBookVisible() const { return !m_ABid.isEmpty(); }

    QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    QColor color() const { return m_color; }
    void setColor(const QColor &color) { m_color = color; }
    QImage image() const { return m_image; }
    void setImage(const QImage &image) { m_image = image; }
    void removeImage() { m_image = QImage(); }

    // A new customer needs a name (else an alert) that no customer has yet (else the warning
    // line), each refusal with a beep; it is then added as one undo step "Create customer". An
    // edited customer takes the fields as they are, unchecked and not undoable. True when the
    // sheet closes.
    bool accept();

private:
    CustomerStorage &m_storage;
    Preferences &m_preferences;
    UserAlerts &m_alerts;
    Mode m_mode = Mode::NewCustomer;
    int m_customerID = -1;
    QString m_name;
    QColor m_color;
    QImage m_image;
    QString m_ABid;
    bool m_nameWarningVisible = false;
};
