#include "CliCustomers.h"

#include "CliConsole.h"
#include "CliFileAccess.h"
#include "TextTable.h"
#include "platform/Preferences.h"
#include "platform/ProjectFileLock.h"
#include "stores/CustomerStorage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

QByteArray fileBytes(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

CliCustomers::CliCustomers(CliConsole &console, Preferences &preferences,
                           const QString &customersPath, CliFileAccess &file)
    : m_console(console)
    , m_preferences(preferences)
    , m_path(customersPath)
    , m_file(file) {}

QList<Customer::Pointer> CliCustomers::stored(const QString &customersPath) {
    QFile file(customersPath);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return Customer::unarchiveList(file.readAll()).customers;
}

int CliCustomers::run(const QStringList &args) {
    if (args.isEmpty())
        return list();
    const QString action = args.constFirst();
    static const QStringList actions{u"add"_s, u"delete"_s, u"hide"_s, u"show"_s, u"import"_s};
    if (!actions.contains(action))
        return m_console.fail(u"Unknown customers action \"%1\"; see hourfold-cli customers "
                              u"--help"_s.arg(action));
    if (args.size() != 2)
        return m_console.fail(u"customers %1 needs exactly one %2"_s.arg(
            action, action == u"import" ? u"VCARD_FILE"_s : u"NAME"_s));
    const QString name = args[1];
    if (action == u"add")
        return add(name);
    if (action == u"delete")
        return remove(name);
    if (action == u"import")
        return import(name);
    return setVisible(name, action == u"show");
}

int CliCustomers::list() {
    CliDocument none{QString()};
    CustomerStorage storage(m_path, none, m_preferences);
    const CustomerStorage::Result loaded = storage.loadCustomers();
    if (!loaded.ok)
        m_console.warn(u"Warning: cannot read all of \"%1\": %2"_s.arg(m_path, loaded.error));
    QJsonArray array;
    TextTable table;
    for (const auto &customer : storage.customers()) {
        if (m_console.json())
            array.append(QJsonObject{{u"name"_s, customer->name()},
                                     {u"id"_s, customer->customerID()},
                                     {u"visible"_s, customer->visible()}});
        else
            table.addRow({customer->name(), QString::number(customer->customerID()),
                          customer->visible() ? u"shown"_s : u"hidden"_s});
    }
    if (m_console.json())
        m_console.printJson(array);
    else
        table.print(m_console.out());
    return CliConsole::Success;
}

int CliCustomers::changeStore(CliDocument &document,
                              const std::function<int(CustomerStorage &, QStringList &)> &change) {
    if (!QDir().mkpath(QFileInfo(m_path).absolutePath()))
        return m_console.fail(u"Cannot create the folder of \"%1\""_s.arg(m_path),
                              CliConsole::Unreadable);
    ProjectFileLock lock(m_path);
    if (!m_file.lock(lock))
        return CliConsole::Unreadable;
    CustomerStorage storage(m_path, document, m_preferences);
    const CustomerStorage::Result loaded = storage.loadCustomers();
    if (!loaded.ok)
        return m_console.fail(u"Cannot read \"%1\": %2"_s.arg(m_path, loaded.error),
                              CliConsole::Unreadable);
    const QByteArray unchanged = Customer::archiveList(storage.customers());
    QStringList done;
    const int result = change(storage, done);
    if (result != CliConsole::Success)
        return result;
    // The store writes every change at once; what is on disk tells whether that worked.
    const QByteArray expected = Customer::archiveList(storage.customers());
    if (expected != unchanged && fileBytes(m_path) != expected)
        return m_console.fail(u"Cannot write \"%1\""_s.arg(m_path), CliConsole::Unreadable);
    for (const QString &line : std::as_const(done))
        m_console.out() << line << '\n';
    return CliConsole::Success;
}

int CliCustomers::add(const QString &name) {
    if (name.isEmpty())
        return m_console.fail(u"A customer needs a name"_s);
    CliDocument none{QString()};
    return changeStore(none, [&](CustomerStorage &storage, QStringList &done) {
        if (storage.customerExists(name))
            return m_console.fail(u"A customer named \"%1\" already exists."_s.arg(name));
        auto customer = std::make_shared<Customer>();
        customer->setName(name);
        const QColor color = m_preferences.colorForKey(u"projectColor");
        if (color.isValid())
            customer->setColor(color);
        const int id = storage.addCustomer(customer);
        done << u"Added customer \"%1\" (id %2)"_s.arg(name).arg(id);
        return int(CliConsole::Success);
    });
}

int CliCustomers::remove(const QString &name) {
    const auto deleteFrom = [&](CliDocument &document, QStringList &done) {
        return changeStore(document, [&](CustomerStorage &storage, QStringList &storeDone) {
            const Customer::Pointer customer = storage.customerWithName(name);
            if (!customer)
                return m_console.fail(u"Unknown customer \"%1\""_s.arg(name));
            const int id = customer->customerID();
            QStringList before;
            for (const auto &project : document.projects()) {
                if (project->customer() == id)
                    before << project->name();
            }
            storage.deleteCustomerWithID(id);
            storeDone << u"Deleted customer \"%1\""_s.arg(name);
            for (const QString &project : std::as_const(before))
                done << u"Project \"%1\" has no customer now"_s.arg(project);
            return int(CliConsole::Success);
        });
    };
    // Without a project file only the store changes; with one, the desktop program's deletion
    // takes the customer off its projects too.
    if (!m_file.hasPath()) {
        CliDocument none{QString()};
        QStringList done;
        return deleteFrom(none, done);
    }
    return m_file.change(deleteFrom);
}

int CliCustomers::setVisible(const QString &name, bool visible) {
    CliDocument none{QString()};
    return changeStore(none, [&](CustomerStorage &storage, QStringList &done) {
        const Customer::Pointer customer = storage.customerWithName(name);
        if (!customer)
            return m_console.fail(u"Unknown customer \"%1\""_s.arg(name));
        if (customer->visible() != visible)
            storage.toggleVisible(int(storage.customers().indexOf(customer)));
        done << (visible ? u"The projects of \"%1\" are shown"_s
                         : u"The projects of \"%1\" are hidden"_s)
                    .arg(name);
        return int(CliConsole::Success);
    });
}

int CliCustomers::import(const QString &vCardPath) {
    QFile file(vCardPath);
    if (!file.open(QIODevice::ReadOnly))
        return m_console.fail(u"Cannot read \"%1\": %2"_s.arg(vCardPath, file.errorString()));
    const QByteArray data = file.readAll();
    CliDocument none{QString()};
    return changeStore(none, [&](CustomerStorage &storage, QStringList &done) {
        QSet<int> known;
        for (const auto &customer : storage.customers())
            known.insert(customer->customerID());
        if (storage.addCustomersFromVCard(data) == -1)
            return m_console.fail(u"\"%1\" holds no address card"_s.arg(vCardPath));
        for (const auto &customer : storage.customers()) {
            if (!known.contains(customer->customerID()))
                done << u"Added customer \"%1\" (id %2)"_s.arg(customer->name())
                            .arg(customer->customerID());
        }
        return int(CliConsole::Success);
    });
}
