#pragma once

#include "support/Files.h"
#include "support/ScriptedUser.h"

#include "mainwindow/MainWindow.h"
#include "model/ProjectCollection.h"
#include "platform/CurrencyFormatter.h"
#include "platform/Preferences.h"
#include "search/Filter.h"
#include "search/FilterController.h"
#include "search/QuickFilters.h"
#include "stores/CustomerStorage.h"
#include "stores/TagStorage.h"

#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

// The main window as a run of the program makes it: preferences, document, customers and tags in
// a temporary folder, the user's answers scripted. Tests of the main window and of the windows it
// opens start from here.
class MainWindowFixture {
protected:
    // A fresh folder and preferences. Each window stands for a run of the program, which starts
    // with no saved filter chosen.
    void openFolder() {
        QStandardPaths::setTestModeEnabled(true);
        FilterController::forgetSelectedFilterName();
        m_folder = std::make_unique<QTemporaryDir>();
        m_preferences = std::make_unique<Preferences>(m_folder->filePath(u"p.conf"_s));
        Preferences::setShared(m_preferences.get());
        m_preferences->setObject(false, u"showInfo");
        m_user = ScriptedUser();
    }

    void startWindow(const QString &filtersPath, const QStringList &customerNames = {}) {
        m_collection = std::make_unique<ProjectCollection>(*m_preferences);
        m_collection->setCurrencyFormatter(&m_currency);
        m_customers = std::make_unique<CustomerStorage>(m_folder->filePath(u"customers.plist"_s),
                                                        *m_collection, *m_preferences);
        m_collection->setCustomerDirectory(m_customers.get());
        for (const QString &name : customerNames) {
            auto customer = std::make_shared<Customer>();
            customer->setName(name);
            m_customers->addCustomer(customer);
        }
        m_tags = std::make_unique<TagStorage>(m_folder->filePath(u"tags.plist"_s));
        const QString quickFilters = m_folder->filePath(u"quickfilters.plist"_s);
        QVERIFY(writeFile(quickFilters, Filter::archiveList(QuickFilters::makeDefaultFilters())));
        m_window = std::make_unique<MainWindow>(
            MainWindow::Services{*m_preferences, *m_collection, *m_customers, *m_tags, m_currency,
                                 m_user, m_user, m_user, filtersPath, quickFilters});
        m_window->show();
        m_window->startUp();
    }

    void closeWindow() {
        m_window.reset();
        m_customers.reset();
        m_tags.reset();
        m_collection.reset();
        Preferences::setShared(nullptr);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<ProjectCollection> m_collection;
    std::unique_ptr<CustomerStorage> m_customers;
    std::unique_ptr<TagStorage> m_tags;
    std::unique_ptr<MainWindow> m_window;
    CurrencyFormatter m_currency{u"en_US"_s};
    ScriptedUser m_user;
};
