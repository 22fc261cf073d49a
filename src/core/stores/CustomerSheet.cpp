#include "CustomerSheet.h"

#include "../platform/Preferences.h"
#include "../platform/UserAlerts.h"
#include "CustomerStorage.h"

#include <QCoreApplication>
#include <QUndoStack>

CustomerSheet::CustomerSheet(CustomerStorage &storage, Preferences &preferences, UserAlerts &alerts)
    : m_storage(storage)
    , m_preferences(preferences)
    , m_alerts(alerts) {}

void CustomerSheet::createCustomer() {
    m_mode = Mode::NewCustomer;
    m_customerID = -1;
    m_name.clear();
    const QColor color = m_preferences.colorForKey(u"projectColor");
    m_color = color.isValid() ? color : QColor(Qt::red);
    m_image = QImage();
    m_ABid.clear();
    m_nameWarningVisible = false;
}

bool CustomerSheet::editCustomer(int index) {
    const Customer::Pointer customer = m_storage.customerWithIndex(index);
    if (!customer)
        return false;
    m_mode = Mode::EditCustomer;
    m_customerID = customer->customerID();
    m_name = customer->name();
    m_color = customer->color();
    m_image = customer->customerImage();
    m_ABid = customer->ABid();
    m_nameWarningVisible = false;
    return true;
}

QString CustomerSheet::title() const {
    return m_mode == Mode::NewCustomer
               ? QCoreApplication::translate("CustomerSheet", "new customer")
               : QCoreApplication::translate("CustomerSheet", "edit customer");
}

QString CustomerSheet::acceptButtonTitle() const {
    return m_mode == Mode::NewCustomer ? QCoreApplication::translate("CustomerSheet", "Create")
                                       : QCoreApplication::translate("CustomerSheet", "Accept");
}

QString CustomerSheet::nameWarningText() {
    return QCoreApplication::translate("CustomerSheet",
                                       "A customer with this name already exists.");
}

bool CustomerSheet::accept() {
    if (m_mode == Mode::EditCustomer) {
        m_storage.changeCustomer(m_customerID, m_name, m_color, m_image);
        return true;
    }
    if (m_name.isEmpty()) {
        m_alerts.beep();
        m_alerts.runModal(
            {QCoreApplication::translate("CustomerSheet", "No customer name entered."),
             QCoreApplication::translate("CustomerSheet", "A customer must have a unique name."),
             UserAlerts::Style::Critical,
             {QCoreApplication::translate("CustomerSheet", "OK")}});
        return false;
    }
    if (m_storage.customerExists(m_name)) {
        m_alerts.beep();
        m_nameWarningVisible = true;
        return false;
    }
    auto customer = std::make_shared<Customer>();
    customer->setName(m_name);
    customer->setColor(m_color);
    customer->setCustomerImage(m_image);
    m_storage.undoStack()->beginMacro(
        QCoreApplication::translate("CustomerSheet", "Create customer"));
    m_customerID = m_storage.addCustomer(customer);
    m_storage.undoStack()->endMacro();
    return true;
}
