#pragma once

#include "core/model/ModelFixtures.h"
#include "support/ScriptedUser.h"

#include "model/ProjectCollection.h"
#include "platform/CurrencyFormatter.h"
#include "stores/CustomerStorage.h"
#include "stores/TagStorage.h"

#include <QTest>
#include <QWidget>

// What the sheets work on: a document with the projects "Alpha" (wage 50, no rounding, customer
// ACME, tags "web") and "Beta" (wage 60, durations rounded up to 15 minutes, no customer), the
// customers ACME (id 1) and Bolt (id 2), the tags "Work", "work" and "Web", and a main window.
// The undo history starts empty.
struct SheetFixture {
    SheetFixture()
        : preferences(folder.filePath(u"p.conf"_s))
        , collection(preferences)
        , customers(folder.filePath(u"customers.plist"_s), collection, preferences)
        , tags(folder.filePath(u"tags.plist"_s))
        , currency(u"en_US"_s) {
        QStandardPaths::setTestModeEnabled(true);
        Preferences::setShared(&preferences);
        collection.setCustomerDirectory(&customers);
        for (const QString &name : {u"ACME"_s, u"Bolt"_s}) {
            auto customer = std::make_shared<Customer>();
            customer->setName(name);
            customers.addCustomer(customer);
        }
        tags.addTagsFromString(u"Work,work,Web"_s);
        alpha = std::make_shared<Project>(u"Alpha"_s, u"site"_s, 50.0f, 0, 0, 0, 1, u"web"_s);
        beta = std::make_shared<Project>(u"Beta"_s, u""_s, 60.0f, 2, 15, 1, -1, u""_s);
        collection.addProject(alpha);
        collection.addProject(beta);
        collection.undoStack()->clear();
        window.resize(800, 600);
        window.show();
    }
    ~SheetFixture() { Preferences::setShared(nullptr); }

    template <typename T> static T *control(QWidget &sheet, const QString &name) {
        T *widget = sheet.findChild<T *>(name);
        if (!widget)
            qFatal("no control %s", qPrintable(name));
        return widget;
    }

    // Replaces the text of a field as the user would: select all, type.
    static void type(QWidget *field, const QString &text) {
        field->setFocus();
        QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
        if (text.isEmpty())
            QTest::keyClick(field, Qt::Key_Delete);
        else
            QTest::keyClicks(field, text);
    }

    QTemporaryDir folder;
    Preferences preferences;
    ProjectCollection collection;
    CustomerStorage customers;
    TagStorage tags;
    ScriptedUser user;
    CurrencyFormatter currency;
    QWidget window;
    std::shared_ptr<Project> alpha;
    std::shared_ptr<Project> beta;
};
