#pragma once

#include "core/model/ModelFixtures.h"
#include "support/FakeCustomers.h"
#include "support/RecordingAlerts.h"

#include "ProjectListModel.h"
#include "model/ProjectCollection.h"
#include "platform/CurrencyFormatter.h"

#include <QUndoStack>

// A small document as the list shows it, at 22.11.2026 10:07:30:
//
//   Web (customer 1, "Site relaunch")
//     0  02.11.2026 09:00-10:00, pause 09:10-09:25, checked, "Urgent call"   00:45
//     1  day entry 03.11.2026, 30 minutes, attachment, "Review"               00:30
//     2  paused since 10:00, started 22.11.2026 08:00                        02:00
//     3  running since 22.11.2026 09:00, pause 09:30-09:40                   00:57
//   App
//     0  flat fee 05.11.2026, 100.00, attachment, "Hosting"
//     1  flat fee 06.11.2026, 12.50
//   Internal (customer 2)
//     0  day entry 07.11.2026, 60 minutes, "Backup"
struct ProjectListFixture {
    ProjectListFixture() {
        QStandardPaths::setTestModeEnabled(true);
        Clock::setNow(at(u"22.11.2026 10:07:30"_s));
        Preferences::setShared(&preferences);
        preferences.setColor(QColor(200, 100, 100), u"projectColor");
        preferences.setColor(QColor(250, 250, 150), u"unfinishedEntryColor");
        customers.visible = {{1, true}, {2, true}};
        collection.setCustomerDirectory(&customers);
        collection.setCurrencyFormatter(&currency);
        web = std::make_shared<Project>(u"Web"_s, u"Site relaunch"_s, 60.0f, 0, 0, 0, 1, u""_s);
        auto call = periodEntry(u"02.11.2026 09:00"_s, u"02.11.2026 10:00"_s);
        call->setComment(u"Urgent call"_s);
        call->setChecked(true);
        call->setPauseEntries(
            {std::make_shared<PauseEntry>(at(u"02.11.2026 09:10"_s), at(u"02.11.2026 09:25"_s))});
        web->addEntry(call);
        auto review = dayEntry(u"03.11.2026"_s, 30);
        review->setComment(u"Review"_s);
        review->addAttachments({u"/tmp/brief.pdf"_s});
        web->addEntry(review);
        auto paused = periodEntry(u"22.11.2026 08:00"_s);
        paused->setPausedAt(at(u"22.11.2026 10:00"_s));
        web->addEntry(paused);
        auto running = periodEntry(u"22.11.2026 09:00"_s);
        running->setPauseEntries(
            {std::make_shared<PauseEntry>(at(u"22.11.2026 09:30"_s), at(u"22.11.2026 09:40"_s))});
        web->addEntry(running);
        app = std::make_shared<Project>(u"App"_s, u""_s, 30.0f, 0, 0, 0, -1, u""_s);
        auto hosting = flatFee(u"05.11.2026"_s, 100.0f);
        hosting->setComment(u"Hosting"_s);
        hosting->addAttachments({u"/tmp/invoice.pdf"_s});
        app->addEntry(hosting);
        app->addEntry(flatFee(u"06.11.2026"_s, 12.5f));
        internal = std::make_shared<Project>(u"Internal"_s, u""_s, 0.0f, 0, 0, 0, 2, u""_s);
        auto backup = dayEntry(u"07.11.2026"_s, 60);
        backup->setComment(u"Backup"_s);
        internal->addEntry(backup);
        for (const auto &project : {web, app, internal})
            collection.addProject(project);
        collection.undoStack()->clear();
        collection.setDataChanged(false);
    }
    ~ProjectListFixture() {
        Preferences::setShared(nullptr);
        Clock::reset();
    }

    std::shared_ptr<ProjectItem> item(const std::shared_ptr<Project> &project, int row) const {
        return project->entries()[row];
    }

    QTemporaryDir folder;
    Preferences preferences{folder.filePath(u"Hourfold3.conf"_s)};
    CurrencyFormatter currency{u"en_US"_s};
    FakeCustomers customers;
    ProjectCollection collection{preferences};
    std::shared_ptr<Project> web;
    std::shared_ptr<Project> app;
    std::shared_ptr<Project> internal;
};

// What the clipboard and drags carry for an item: its dictionary, a text or moment that is not
// set as no value.
inline QVariantMap archivedDictionary(const ProjectItem &item) {
    QVariantMap values = item.dictionaryRepresentation();
    for (auto it = values.begin(); it != values.end(); ++it) {
        if ((it->typeId() == QMetaType::QDateTime && !it->toDateTime().isValid()) ||
            (it->typeId() == QMetaType::QString && it->toString().isNull()))
            *it = QVariant();
    }
    return values;
}

// A light palette with plain colours, so that expected colours can be written down.
inline QPalette plainPalette(bool dark = false) {
    QPalette palette;
    const QColor base = dark ? QColor(30, 30, 30) : QColor(Qt::white);
    const QColor text = dark ? QColor(230, 230, 230) : QColor(Qt::black);
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::Base, base);
        palette.setColor(group, QPalette::AlternateBase, base);
        palette.setColor(group, QPalette::Window, base);
        palette.setColor(group, QPalette::Text, text);
    }
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(128, 128, 128));
    return palette;
}
