#pragma once

#include "core/model/ModelFixtures.h"
#include "model/LocalTimeFormat.h"
#include "model/Project.h"
#include "platform/CurrencyFormatter.h"
#include "platform/LocaleFormat.h"
#include "stores/Customer.h"

#include <QImage>

// The documents the report golden files under tests/data/export were made from, for the exporter
// tests and the command-line tests that write the same reports.

inline std::shared_ptr<Project> project(const QString &name, float wage = 0.0f, int customer = -1) {
    return std::make_shared<Project>(name, u""_s, wage, 0, 0, 0, customer, u""_s);
}

inline Customer::Pointer customer(const QString &name, int id = -1, bool visible = true) {
    auto made = std::make_shared<Customer>();
    made->setName(name);
    made->setCustomerID(id);
    made->setVisible(visible);
    return made;
}

template <typename Item> Item commented(Item item, const QString &comment, bool checked = false) {
    item->setComment(comment);
    item->setChecked(checked);
    return item;
}

namespace ExportSamples {

// The moment (22.11.2026 10:07:30), clock format, date locale and dollars the reports were made
// with, and shared preferences with short dates in the list, while the object lives.
class Settings : public TemporaryPreferences {
public:
    Settings() {
        QStandardPaths::setTestModeEnabled(true);
        Clock::setNow(at(u"22.11.2026 10:07:30"_s));
        LocalTimeFormat::setFormat(u"%H:%M"_s, u"C"_s);
        LocaleFormat::setDateLocale(u"en_US"_s);
        (*this)->setObject(1, u"listDateFormat");
    }
    const CurrencyFormatter dollars{u"en_US"_s};
};

inline QString goldenPath(const QString &name) {
    return QStringLiteral(HOURFOLD_TEST_DATA "/export/") + name;
}

// 02.11.2026 09:00-10:30 with a pause 09:10-09:25.
inline std::shared_ptr<Entry> layoutWithAPause() {
    auto layout = periodEntry(u"02.11.2026 09:00"_s, u"02.11.2026 10:30"_s);
    layout->setPauseEntries(
        {std::make_shared<PauseEntry>(at(u"02.11.2026 09:10"_s), at(u"02.11.2026 09:25"_s))});
    return layout;
}

// Running since 22.11.2026 08:00 (the reports are made at 10:07:30) with a pause 09:00-09:20.
inline std::shared_ptr<Entry> runningSince8WithAPause() {
    auto running = periodEntry(u"22.11.2026 08:00"_s);
    running->setPauseEntries(
        {std::make_shared<PauseEntry>(at(u"22.11.2026 09:00"_s), at(u"22.11.2026 09:20"_s))});
    return commented(running, u"Ongoing"_s);
}

// The document of the CSV and text reports; the customer 2 of "Hidden" is to be hidden.
inline ProjectList textDocument() {
    auto website = project(u"Website"_s, 45.5f);
    website->setDescription(u"Relaunch of the site"_s);
    website->addEntry(commented(layoutWithAPause(), u"Layout"_s, true));
    website->addEntry(periodEntry(u"03.11.2026 22:00"_s, u"04.11.2026 01:15"_s));
    website->addEntry(commented(dayEntry(u"05.11.2026"_s, 45), u"Say \"hi\""_s, true));
    website->addEntry(commented(flatFee(u"06.11.2026"_s, 120.5f), u"Hosting"_s));
    website->addEntry(runningSince8WithAPause());
    website->addEntry(flatFee(u"07.11.2026"_s, 0.125f));
    auto hidden = project(u"Hidden"_s, 20.0f, 2);
    hidden->addEntry(dayEntry(u"09.11.2026"_s, 30));
    auto internal = project(u"Internal"_s, 0.0f);
    internal->addEntry(dayEntry(u"10.11.2026"_s, 60));
    return {website,  project(u"Empty"_s, 0.0f),    hidden,
            internal, project(u"Internal"_s, 0.0f), project(u"Café €"_s, 0.0f)};
}

// The document of the HTML reports, with the customers of htmlCustomers().
inline ProjectList htmlDocument() {
    auto website = project(u"Website"_s, 45.5f, 1);
    website->setDescription(u"Relaunch at %hourlywage%\nin two steps"_s);
    website->addEntry(
        commented(layoutWithAPause(), u"Layout for %projectname%\nfirst draft"_s, true));
    website->addEntry(periodEntry(u"03.11.2026 22:00"_s, u"04.11.2026 01:15"_s));
    website->addEntry(commented(dayEntry(u"05.11.2026"_s, 45), u"Call"_s));
    website->addEntry(commented(flatFee(u"06.11.2026"_s, 120.5f), u"Hosting"_s, true));
    website->addEntry(runningSince8WithAPause());
    auto internal = project(u"Internal"_s, 0.0f, 2);
    internal->addEntry(commented(dayEntry(u"10.11.2026"_s, 60), u"Planning"_s));
    return {website, internal, project(u"Other"_s, 10.0f)};
}

// Customer 1, "Acme & Co" with a blue picture of 4 x 2 pixels, and customer 2, "Plain Ltd".
inline QList<Customer::Pointer> htmlCustomers() {
    const QList<Customer::Pointer> customers{customer(u"Acme & Co"_s, 1),
                                             customer(u"Plain Ltd"_s, 2)};
    QImage logo(4, 2, QImage::Format_ARGB32);
    logo.fill(Qt::blue);
    customers.first()->setCustomerImage(logo);
    return customers;
}

} // namespace ExportSamples
