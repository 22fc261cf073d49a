#include "CustomerStorage.h"

#include "../Logging.h"
#include "../model/CustomerAssignments.h"
#include "../model/EntrySort.h"
#include "../model/UndoCommand.h"
#include "../platform/AtomicFile.h"
#include "../platform/Preferences.h"

#include <QFile>
#include <QSet>
#include <QUndoStack>

CustomerStorage::CustomerStorage(const QString &customersPath, CustomerAssignments &document,
                                 Preferences &preferences, QObject *parent)
    : QObject(parent)
    , m_customersPath(customersPath)
    , m_document(document)
    , m_preferences(preferences) {}

int CustomerStorage::compareCustomerNames(const QString &a, const QString &b) {
    return EntrySort::compareNumerically(a.toCaseFolded(), b.toCaseFolded());
}

Customer::Pointer CustomerStorage::customerWithIndex(int index) const {
    return index >= 0 && index < m_customers.size() ? m_customers[index] : nullptr;
}

Customer::Pointer CustomerStorage::customerWithName(const QString &name) const {
    for (const auto &customer : m_customers) {
        if (customer->name() == name)
            return customer;
    }
    return nullptr;
}

Customer::Pointer CustomerStorage::customerWithID(int customerID) const {
    for (const auto &customer : m_customers) {
        if (customer->customerID() == customerID)
            return customer;
    }
    return nullptr;
}

QUndoStack *CustomerStorage::undoStack() const {
    return m_document.undoStack();
}

std::optional<bool> CustomerStorage::isCustomerVisible(int customerId) const {
    const Customer::Pointer customer = customerWithID(customerId);
    return customer ? std::optional<bool>(customer->visible()) : std::nullopt;
}

CustomerStorage::Result CustomerStorage::loadCustomers() {
    m_customers.clear();
    QFile file(m_customersPath);
    Result result{true, {}};
    if (file.exists()) {
        QByteArray bytes;
        if (!file.open(QIODevice::ReadOnly)) {
            result = {false, file.errorString()};
        } else {
            bytes = file.readAll();
            const Customer::ListReading reading = Customer::unarchiveList(bytes);
            m_customers = reading.customers;
            if (!reading.problems.isEmpty())
                result = {false, reading.problems.join(u' ')};
        }
        if (!result.ok) {
            qCWarning(lcStores).noquote()
                << "cannot read" << m_customersPath << ":" << result.error;
            const QString copy = m_customersPath + u".damaged";
            if (!bytes.isEmpty() && AtomicFile::write(copy, bytes).ok)
                qCWarning(lcStores).noquote() << "kept the unreadable file as" << copy;
        }
    }
    giveMissingIds();
    sortCustomers();
    emit customersChanged();
    return result;
}

void CustomerStorage::giveMissingIds() {
    QSet<int> seen;
    for (const auto &customer : std::as_const(m_customers))
        m_lastCustomerID = std::max(m_lastCustomerID, customer->customerID());
    for (const auto &customer : std::as_const(m_customers)) {
        const int id = customer->customerID();
        if (id < 1 || seen.contains(id)) {
            customer->setCustomerID(++m_lastCustomerID);
            qCWarning(lcStores).noquote() << "the customer" << customer->name() << "had the id"
                                          << id << "and now has" << m_lastCustomerID;
        }
        seen.insert(customer->customerID());
    }
}

CustomerStorage::Result CustomerStorage::saveCustomers() {
    const AtomicFile::Result written =
        AtomicFile::write(m_customersPath, Customer::archiveList(m_customers));
    if (!written.ok)
        qCWarning(lcStores) << "Failed to save customers";
    return {written.ok, written.error};
}

void CustomerStorage::sortCustomers() {
    std::stable_sort(m_customers.begin(), m_customers.end(), [](const auto &a, const auto &b) {
        return compareCustomerNames(a->name(), b->name()) < 0;
    });
}

int CustomerStorage::addCustomer(const Customer::Pointer &customer) {
    if (customer->customerID() == -1)
        customer->setCustomerID(m_lastCustomerID + 1);
    const int id = customer->customerID();
    // The projects the customer had when an undo took it away, for a redo to give back.
    auto projects = std::make_shared<ProjectList>();
    undoStack()->push(new UndoCommand(
        tr("Delete customer"), [this, customer, projects] { restoreCustomer(customer, *projects); },
        [this, id, projects] { *projects = removeCustomer(id); }));
    return id;
}

void CustomerStorage::deleteCustomerWithID(int customerID) {
    const Customer::Pointer customer = customerWithID(customerID);
    if (!customer) {
        saveCustomers();
        return;
    }
    auto projects = std::make_shared<ProjectList>();
    undoStack()->push(new UndoCommand(
        tr("Delete customer"),
        [this, customerID, projects] { *projects = removeCustomer(customerID); },
        [this, customer, projects] { restoreCustomer(customer, *projects); }));
}

void CustomerStorage::restoreCustomer(const Customer::Pointer &customer,
                                      const ProjectList &projects) {
    m_lastCustomerID = std::max(m_lastCustomerID, customer->customerID());
    m_customers.append(customer);
    sortCustomers();
    if (!projects.isEmpty())
        m_document.assignCustomerToProjects(customer->customerID(), projects);
    m_document.updateVisibleProjects();
    emit customersChanged();
    saveCustomers();
}

ProjectList CustomerStorage::removeCustomer(int customerID) {
    m_customers.removeIf([customerID](const auto &c) { return c->customerID() == customerID; });
    const ProjectList projects = m_document.removeCustomerFromProjects(customerID);
    m_document.updateVisibleProjects();
    emit customersChanged();
    saveCustomers();
    return projects;
}

void CustomerStorage::changeCustomer(int customerID, const QString &name, const QColor &color,
                                     const QImage &image) {
    const Customer::Pointer customer = customerWithID(customerID);
    if (!customer)
        return;
    customer->setName(name);
    customer->setColor(color);
    customer->setCustomerImage(image);
    sortCustomers();
    emit customersChanged();
    saveCustomers();
}

void CustomerStorage::changeCustomerImage(int customerID, const QImage &image) {
    const Customer::Pointer customer = customerWithID(customerID);
    if (!customer)
        return;
    const QImage before = customer->customerImage();
    undoStack()->push(new UndoCommand(
        tr("Customer image"), [this, customer, image] { setCustomerImage(customer, image); },
        [this, customer, before] { setCustomerImage(customer, before); }));
}

void CustomerStorage::setCustomerImage(const Customer::Pointer &customer, const QImage &image) {
    customer->setCustomerImage(image);
    emit customerChanged(customer->customerID());
    saveCustomers();
}

int CustomerStorage::addCustomerFromABPerson(const VCardReader::Person &person) {
    auto customer = std::make_shared<Customer>();
    QStringList names{person.firstName, person.lastName};
    names.removeAll(QString());
    const QString name = names.join(u' ');
    customer->setName(name.isEmpty() ? person.organization : name);
    customer->setCustomerImage(person.image);
    const QColor color = m_preferences.colorForKey(u"projectColor");
    if (color.isValid())
        customer->setColor(color);
    customer->setABid(person.uniqueId);
    return addCustomer(customer);
}

int CustomerStorage::addCustomersFromVCard(const QByteArray &data) {
    const QList<VCardReader::Person> people = VCardReader::read(data);
    if (people.isEmpty()) {
        qCWarning(lcStores) << "the dropped data holds no address card";
        return -1;
    }
    undoStack()->beginMacro(tr("Delete customer"));
    const int first = addCustomerFromABPerson(people.first());
    for (qsizetype i = 1; i < people.size(); ++i)
        addCustomerFromABPerson(people[i]);
    undoStack()->endMacro();
    return first;
}

void CustomerStorage::toggleVisible(int index) {
    const Customer::Pointer customer = customerWithIndex(index);
    if (!customer)
        return;
    customer->setVisible(!customer->visible());
    emit customerChanged(customer->customerID());
    update();
}

void CustomerStorage::setVisibleExcept(bool visible, int exceptIndex) {
    for (int i = 0; i < m_customers.size(); ++i) {
        if (i != exceptIndex && m_customers[i]->visible() != visible) {
            m_customers[i]->setVisible(visible);
            emit customerChanged(m_customers[i]->customerID());
        }
    }
    update();
}

void CustomerStorage::update() {
    m_document.updateVisibleProjects();
    saveCustomers();
}
