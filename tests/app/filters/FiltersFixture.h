#pragma once

#include "core/model/ModelFixtures.h"
#include "support/Files.h"
#include "support/ScriptedUser.h"

#include "ProjectListModel.h"
#include "mainwindow/MainWindow.h"
#include "model/Entry.h"
#include "model/ProjectCollection.h"
#include "model/ProjectFile.h"
#include "platform/CurrencyFormatter.h"
#include "search/FilterController.h"
#include "search/QuickFilters.h"
#include "stores/CustomerStorage.h"
#include "stores/TagStorage.h"

#include <QTest>

// The main window on a document of two projects: "Web shop" (customer ACME, entries "Urgent
// call" of 90 minutes and "Design" of 30) and "App" (no customer, the entry "call back" of 45
// minutes), with the customers ACME (id 1) and Bolt (id 2). filters.plist lies where the
// command line finds it with XDG_DATA_HOME set to dataHome().
struct FiltersFixture {
    FiltersFixture() {
        QStandardPaths::setTestModeEnabled(true);
        Clock::setNow(QDateTime(QDate(2026, 11, 22), QTime(10, 0)));
        FilterController::forgetSelectedFilterName();
        Preferences::setShared(&preferences);
        preferences.setObject(false, u"showInfo");
        auto web =
            std::make_shared<Project>(u"Web shop"_s, u"Relaunch"_s, 80.0f, 0, 0, 0, 1, u""_s);
        web->addEntry(commented(dayEntry(u"20.11.2026"_s, 90), u"Urgent call"_s));
        web->addEntry(commented(dayEntry(u"21.11.2026"_s, 30), u"Design"_s));
        auto app = std::make_shared<Project>(u"App"_s, u""_s, 60.0f, 0, 0, 0, -1, u""_s);
        app->addEntry(commented(dayEntry(u"22.11.2026"_s, 45), u"call back"_s));
        QVERIFY(ProjectFile::save(file, {web, app}).ok);
        preferences.setObject(file, u"LastOpenFile");
        QDir().mkpath(folder.filePath(u"data/Hourfold3"_s));
    }
    ~FiltersFixture() {
        window.reset();
        Preferences::setShared(nullptr);
    }

    static std::shared_ptr<Entry> commented(std::shared_ptr<Entry> entry, const QString &text) {
        entry->setComment(text);
        return entry;
    }

    QString dataHome() const { return folder.filePath(u"data"_s); }
    QString filtersPath() const { return folder.filePath(u"data/Hourfold3/filters.plist"_s); }

    void startWindow() {
        collection.setCurrencyFormatter(&currency);
        collection.setCustomerDirectory(&customers);
        if (customers.customers().isEmpty()) {
            for (const QString &name : {u"ACME"_s, u"Bolt"_s}) {
                auto customer = std::make_shared<Customer>();
                customer->setName(name);
                customers.addCustomer(customer);
            }
        }
        const QString quickFilters = folder.filePath(u"quickfilters.plist"_s);
        QVERIFY(writeFile(quickFilters, Filter::archiveList(QuickFilters::makeDefaultFilters())));
        window = std::make_unique<MainWindow>(
            MainWindow::Services{preferences, collection, customers, tags, currency, user, user,
                                 user, filtersPath(), quickFilters});
        window->show();
        window->startUp();
    }

    // The names of the projects the list shows, in order.
    QStringList shownProjects() const {
        QStringList names;
        const ProjectListModel *model = window->listModel();
        for (int row = 0; row < model->rowCount(); ++row)
            names << model->projectAt(model->index(row, 0))->name();
        return names;
    }

    template <typename T> static T *control(QObject *parent, const QString &name) {
        T *widget = parent->findChild<T *>(name);
        if (!widget)
            qFatal("no control %s", qPrintable(name));
        return widget;
    }

    QTemporaryDir folder;
    QString file = folder.filePath(u"work.projects"_s);
    Preferences preferences{folder.filePath(u"p.conf"_s)};
    ProjectCollection collection{preferences};
    CustomerStorage customers{folder.filePath(u"customers.plist"_s), collection, preferences};
    TagStorage tags{folder.filePath(u"tags.plist"_s)};
    CurrencyFormatter currency{u"en_US"_s};
    ScriptedUser user;
    std::unique_ptr<MainWindow> window;
};
