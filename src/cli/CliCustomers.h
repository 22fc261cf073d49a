#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

class CliConsole;
class CliDocument;
class CliFileAccess;
class Customer;
class CustomerStorage;
class Preferences;

// The customers command: lists customers.plist, or changes it through the customer store as the
// desktop program's customer list does. Changes are made under a lock beside customers.plist, so
// that two commands never interleave theirs; deleting a customer also takes it off the projects
// of the project file, under that file's lock.
class CliCustomers {
public:
    CliCustomers(CliConsole &console, Preferences &preferences, const QString &customersPath,
                 CliFileAccess &file);

    int run(const QStringList &args);

    // The customers of the customers.plist in stored order; none when it cannot be read.
    static QList<std::shared_ptr<Customer>> stored(const QString &customersPath);

private:
    int list();
    int add(const QString &name);
    int remove(const QString &name);
    int setVisible(const QString &name, bool visible);
    int import(const QString &vCardPath);
    // Runs the change on the loaded store under the store's lock; the lines are printed once the
    // change has been written.
    int changeStore(CliDocument &document,
                    const std::function<int(CustomerStorage &, QStringList &done)> &change);

    CliConsole &m_console;
    Preferences &m_preferences;
    QString m_path;
    CliFileAccess &m_file;
};
