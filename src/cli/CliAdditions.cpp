#include "CliAdditions.h"

#include "CliConsole.h"
#include "CliCustomers.h"
#include "CliFileAccess.h"
#include "CliOptions.h"
#include "CliValues.h"
#include "model/Entry.h"
#include "model/FlatFeeEntry.h"
#include "model/StoredForms.h"
#include "platform/CurrencyFormatter.h"
#include "platform/Preferences.h"
#include "stores/Customer.h"

using namespace Qt::StringLiterals;

CliAdditions::CliAdditions(CliConsole &console, const Preferences &preferences,
                           const CurrencyFormatter &currency, CliFileAccess &file,
                           const QString &supportFolder)
    : m_console(console)
    , m_preferences(preferences)
    , m_currency(currency)
    , m_file(file)
    , m_supportFolder(supportFolder) {}

int CliAdditions::addProject(const QStringList &args) {
    CliOptions options({u"--description"_s, u"--wage"_s, u"--round-what"_s, u"--round-to"_s,
                        u"--round-type"_s, u"--customer"_s, u"--tags"_s});
    if (!options.parse(args))
        return m_console.fail(options.error());
    if (options.words().size() != 1)
        return m_console.fail(u"add-project needs exactly one NAME"_s);
    const QString name = options.words().constFirst();
    if (name.isEmpty())
        return m_console.fail(u"No project name entered. A project must have a unique name."_s);
    // The project sheet's preset: the default wage, rounding off with a step of 5 minutes.
    float wage = m_preferences.floatForKey(u"hourlyWage");
    if (options.has(u"--wage"_s)) {
        const std::optional<double> value = CliValues::number(options.value(u"--wage"_s));
        if (!value || *value < 0)
            return m_console.fail(
                u"\"%1\" is not a wage (a number such as 12.5)"_s.arg(options.value(u"--wage"_s)));
        wage = float(*value);
    }
    int rounding[3] = {0, 5, 0};
    const struct {
        QString option;
        int lowest;
        int highest;
    } roundingOptions[3] = {
        {u"--round-what"_s, 0, 2}, {u"--round-to"_s, 1, 60}, {u"--round-type"_s, 0, 2}};
    for (int i = 0; i < 3; ++i) {
        const auto &[option, lowest, highest] = roundingOptions[i];
        if (!options.has(option))
            continue;
        const std::optional<int> value = CliValues::integer(options.value(option), lowest, highest);
        if (!value)
            return m_console.fail(
                u"%1 takes a whole number from %2 to %3"_s.arg(option).arg(lowest).arg(highest));
        rounding[i] = *value;
    }
    int customer = -1;
    if (options.has(u"--customer"_s)) {
        const QString customerName = options.value(u"--customer"_s);
        for (const auto &stored : CliCustomers::stored(m_supportFolder + u"/customers.plist"_s)) {
            if (stored->name() == customerName) {
                customer = stored->customerID();
                break;
            }
        }
        if (customer == -1)
            return m_console.fail(u"Unknown customer \"%1\""_s.arg(customerName));
    }
    return m_file.change([&](CliDocument &document, QStringList &done) {
        if (document.projectNamed(name))
            return m_console.fail(u"A project named \"%1\" already exists."_s.arg(name));
        document.addProject(std::make_shared<Project>(name, options.value(u"--description"_s), wage,
                                                      rounding[0], rounding[1], rounding[2],
                                                      customer, options.value(u"--tags"_s)));
        done << u"Added project \"%1\""_s.arg(name);
        return int(CliConsole::Success);
    });
}

int CliAdditions::addEntry(const QStringList &args) {
    CliOptions options(
        {u"--day"_s, u"--duration"_s, u"--from"_s, u"--to"_s, u"--comment"_s, u"--tags"_s});
    if (!options.parse(args))
        return m_console.fail(options.error());
    if (options.words().size() != 1)
        return m_console.fail(u"add-entry needs exactly one PROJECT"_s);
    const bool byDay = options.has(u"--day"_s) && options.has(u"--duration"_s);
    const bool byPeriod = options.has(u"--from"_s) && options.has(u"--to"_s);
    if (byDay == byPeriod || (byDay && (options.has(u"--from"_s) || options.has(u"--to"_s))) ||
        (byPeriod && (options.has(u"--day"_s) || options.has(u"--duration"_s))))
        return m_console.fail(u"add-entry needs --day and --duration, or --from and --to"_s);
    auto entry = std::make_shared<Entry>();
    if (byDay) {
        const std::optional<QDate> day = CliValues::day(options.value(u"--day"_s));
        if (!day)
            return m_console.fail(
                u"\"%1\" is not a day (DD.MM.YYYY)"_s.arg(options.value(u"--day"_s)));
        const std::optional<int> minutes = CliValues::duration(options.value(u"--duration"_s));
        if (!minutes)
            return m_console.fail(
                u"\"%1\" is not a duration (HH:MM)"_s.arg(options.value(u"--duration"_s)));
        entry->setDate(StoredForms::dateText(*day));
        entry->setTime(*minutes);
    } else {
        std::optional<QDateTime> ends[2];
        const QString names[2] = {u"--from"_s, u"--to"_s};
        for (int i = 0; i < 2; ++i) {
            ends[i] = CliValues::moment(options.value(names[i]));
            if (!ends[i])
                return m_console.fail(
                    u"\"%1\" is not a moment (DD.MM.YYYY HH:MM)"_s.arg(options.value(names[i])));
        }
        const QDateTime &from = *ends[0];
        const QDateTime &to = *ends[1];
        // The entry sheet's texts for a period that ends before it starts.
        if (to < from)
            return m_console.fail(
                u"Date range error. The 'to' time must be after the 'from' time."_s);
        entry->setHasPeriod(true);
        entry->setFromDate(StoredForms::dateText(from.date()));
        entry->setFromTime(StoredForms::timeText(from.time()));
        entry->setToDate(StoredForms::dateText(to.date()));
        entry->setToTime(StoredForms::timeText(to.time()));
        entry->setTime(int(from.secsTo(to) / 60));
    }
    entry->setComment(options.value(u"--comment"_s));
    entry->setTags(options.value(u"--tags"_s));
    const auto addTo = [&](CliDocument &document, Project &project, QStringList &done) {
        const int index = document.addEntry(project, entry);
        done << u"Added entry %1 of \"%2\" (%3)"_s.arg(index).arg(
            project.name(), StoredForms::durationText(entry->effectiveDuration()));
        return int(CliConsole::Success);
    };
    return m_file.changeProject(options.words().constFirst(), addTo);
}

int CliAdditions::addFee(const QStringList &args) {
    CliOptions options({u"--day"_s, u"--amount"_s, u"--comment"_s, u"--tags"_s});
    if (!options.parse(args))
        return m_console.fail(options.error());
    if (options.words().size() != 1)
        return m_console.fail(u"add-fee needs exactly one PROJECT"_s);
    if (!options.has(u"--day"_s) || !options.has(u"--amount"_s))
        return m_console.fail(u"add-fee needs --day and --amount"_s);
    const std::optional<QDate> day = CliValues::day(options.value(u"--day"_s));
    if (!day)
        return m_console.fail(u"\"%1\" is not a day (DD.MM.YYYY)"_s.arg(options.value(u"--day"_s)));
    const std::optional<double> amount = CliValues::number(options.value(u"--amount"_s));
    if (!amount)
        return m_console.fail(u"\"%1\" is not an amount (a number such as 120.5)"_s.arg(
            options.value(u"--amount"_s)));
    auto fee = std::make_shared<FlatFeeEntry>();
    fee->setDate(StoredForms::dateText(*day));
    fee->setAmount(float(*amount));
    fee->setComment(options.value(u"--comment"_s));
    fee->setTags(options.value(u"--tags"_s));
    const auto addTo = [&](CliDocument &document, Project &project, QStringList &done) {
        const int index = document.addEntry(project, fee);
        done << u"Added flat fee %1 of \"%2\" (%3)"_s.arg(index).arg(
            project.name(), m_currency.format(fee->amount()));
        return int(CliConsole::Success);
    };
    return m_file.changeProject(options.words().constFirst(), addTo);
}
