#pragma once

#include "../model/CustomerDirectory.h"
#include "../model/Project.h"
#include "Customer.h"
#include "VCardReader.h"

#include <QObject>

class CustomerAssignments;
class Preferences;
class QUndoStack;

// The customers every project file shares, kept in "customers.plist" in the support folder and
// always sorted by name. Hands out the ids projects refer to (from 1 upward, never twice while
// the program runs), records adding and deleting on the document's undo stack, and decides which
// customers' projects are shown. Every change is written to the file at once.
//
// The undo commands it pushes refer to it: it lives as long as the document's undo stack.
class CustomerStorage : public QObject, public CustomerDirectory {
    Q_OBJECT

public:
    struct Result {
        bool ok = false;
        QString error;
    };

    CustomerStorage(const QString &customersPath, CustomerAssignments &document,
                    Preferences &preferences, QObject *parent = nullptr);

    // Ignores case; runs of digits compare by value ("Client 9" before "Client 10").
    static int compareCustomerNames(const QString &a, const QString &b);

    QString customersPath() const { return m_customersPath; }
    const QList<Customer::Pointer> &customers() const { return m_customers; }
    int count() const { return int(m_customers.size()); }
    // Null outside the list.
    Customer::Pointer customerWithIndex(int index) const;
    // The first customer with exactly this name; null for none.
    Customer::Pointer customerWithName(const QString &name) const;
    Customer::Pointer customerWithID(int customerID) const;
    bool customerExists(const QString &name) const { return bool(customerWithName(name)); }
    // The highest id handed out or loaded.
    int lastCustomerID() const { return m_lastCustomerID; }
    QUndoStack *undoStack() const;

    std::optional<bool> isCustomerVisible(int customerId) const override;

    // Replaces the list by the file's (none without a file) and raises lastCustomerID to the
    // highest id in it. Customers without a usable id get new ones. A file that cannot be read
    // wholly is copied beside itself as "customers.plist.damaged" before it is ever overwritten.
    Result loadCustomers();
    // Writes the list atomically; a failure is logged as "Failed to save customers".
    Result saveCustomers();
    void sortCustomers();

    // Adds the customer, giving it the next id when it has none (-1), and returns its id. Undoing
    // deletes it again ("Delete customer").
    int addCustomer(const Customer::Pointer &customer);
    // Removes the customer and clears it from its projects ("Delete customer"); undoing restores
    // both. Without such a customer the list is only saved.
    void deleteCustomerWithID(int customerID);
    // Puts a customer back with its own id and assigns it to exactly these projects (what undoing
    // a deletion does; not itself recorded).
    void restoreCustomer(const Customer::Pointer &customer, const ProjectList &projects);
    // New values from the edit sheet; not undoable.
    void changeCustomer(int customerID, const QString &name, const QColor &color,
                        const QImage &image);
    // A new picture for the customer (a null image for none), saved at once; undoing brings the
    // previous one back ("Customer image").
    void changeCustomerImage(int customerID, const QImage &image);

    // A customer made from an address-book card: "first last" (either alone), else the
    // organisation; the "projectColor" preference (red without one). Added with addCustomer().
    int addCustomerFromABPerson(const VCardReader::Person &person);
    // A customer for every card in the vCard data, as one undo step; the first one's id, or -1
    // when the data holds no card.
    int addCustomersFromVCard(const QByteArray &data);

    // The check boxes of the customer table. The selected customer is given by its index (-1 for
    // none) and keeps its state in checkOthers() and uncheckOthers().
    void toggleVisible(int index);
    void checkAll() { setVisibleExcept(true, -1); }
    void checkNone() { setVisibleExcept(false, -1); }
    void checkOthers(int selectedIndex) { setVisibleExcept(true, selectedIndex); }
    void uncheckOthers(int selectedIndex) { setVisibleExcept(false, selectedIndex); }
    // Recomputes the shown projects and saves.
    void update();

signals:
    // Customers were added, removed, renamed or reloaded: the list is to be read again.
    void customersChanged();
    // One customer's check box or picture changed.
    void customerChanged(int customerID);

private:
    ProjectList removeCustomer(int customerID);
    void setCustomerImage(const Customer::Pointer &customer, const QImage &image);
    void setVisibleExcept(bool visible, int exceptIndex);
    void giveMissingIds();

    QString m_customersPath;
    CustomerAssignments &m_document;
    Preferences &m_preferences;
    QList<Customer::Pointer> m_customers;
    int m_lastCustomerID = 0;
};
