#include "CliListings.h"

#include "CliConsole.h"
#include "CliCustomers.h"
#include "CliExport.h"
#include "CliFileAccess.h"
#include "TextTable.h"
#include "model/Entry.h"
#include "model/FlatFeeEntry.h"
#include "model/StoredForms.h"
#include "platform/CurrencyFormatter.h"
#include "search/Filter.h"
#include "stores/Customer.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

// Money as JSON: the float's shortest decimal form (12.4, not 12.399999618530273), so that a
// reader does not lose a cent to the float's binary digits.
double jsonMoney(float value) {
    return StoredForms::floatText(value).toDouble();
}

QString whenText(const ProjectItem &item) {
    if (!item.hasPeriod() || !item.isEntry())
        return item.date();
    const auto &entry = static_cast<const Entry &>(item);
    QString text = entry.fromDate() + u' ' + entry.fromTime() + u" -"_s;
    if (!entry.toDate().isEmpty())
        text += u' ' + entry.toDate() + u' ' + entry.toTime();
    return text;
}

QString oneLine(QString text) {
    text.replace(u"\r\n"_s, u" "_s);
    text.replace(u'\n', u' ');
    text.replace(u'\r', u' ');
    return text;
}

} // namespace

CliListings::CliListings(CliConsole &console, const CurrencyFormatter &currency,
                         CliFileAccess &file, const QString &supportFolder)
    : m_console(console)
    , m_currency(currency)
    , m_file(file)
    , m_supportFolder(supportFolder) {}

QHash<int, QString> CliListings::customerNames() const {
    QHash<int, QString> names;
    for (const auto &customer : CliCustomers::stored(m_supportFolder + u"/customers.plist"_s))
        names.insert(customer->customerID(), customer->name());
    return names;
}

int CliListings::projects(const QStringList &args) {
    if (!m_console.takesNothing(u"projects"_s, args))
        return CliConsole::BadArguments;
    return m_file.read([this](CliDocument &document) {
        const QHash<int, QString> customers = customerNames();
        if (m_console.json()) {
            QJsonArray array;
            for (const auto &project : document.projects()) {
                const auto customer = customers.constFind(project->customer());
                array.append(QJsonObject{
                    {u"name"_s, project->name()},
                    {u"description"_s, project->description()},
                    {u"customer"_s,
                     customer == customers.cend() ? QJsonValue() : QJsonValue(*customer)},
                    {u"hourlyWage"_s, jsonMoney(project->hourlyWage())},
                    {u"totalDuration"_s, project->totalTime(true)},
                    {u"totalDurationGross"_s, project->totalTime(false)},
                    {u"totalWages"_s, jsonMoney(project->totalWages())},
                });
            }
            m_console.printJson(array);
            return int(CliConsole::Success);
        }
        TextTable table;
        for (const auto &project : document.projects())
            table.addRow({project->name(), StoredForms::durationText(project->totalTime(true)),
                          project->formattedTotalWages(), customers.value(project->customer())});
        table.print(m_console.out());
        return int(CliConsole::Success);
    });
}

int CliListings::entries(const QStringList &args) {
    if (args.size() != 1)
        return m_console.fail(u"entries needs exactly one PROJECT"_s);
    return m_file.read([&](CliDocument &document) {
        const auto project = document.projectNamed(args.constFirst());
        if (!project)
            return m_console.fail(u"Unknown project \"%1\""_s.arg(args.constFirst()));
        QJsonArray array;
        TextTable table;
        int index = 0;
        for (const auto &item : project->entries()) {
            ++index;
            const Entry *entry = item->isEntry() ? static_cast<const Entry *>(item.get()) : nullptr;
            const FlatFeeEntry *fee =
                item->isFlatFee() ? static_cast<const FlatFeeEntry *>(item.get()) : nullptr;
            if (m_console.json()) {
                array.append(QJsonObject{
                    {u"index"_s, index},
                    {u"kind"_s, entry ? u"timed"_s : u"flatfee"_s},
                    {u"hasPeriod"_s, item->hasPeriod()},
                    {u"day"_s, item->date()},
                    {u"fromDate"_s, entry ? entry->fromDate() : QString()},
                    {u"fromTime"_s, entry ? entry->fromTime() : QString()},
                    {u"toDate"_s, entry ? entry->toDate() : QString()},
                    {u"toTime"_s, entry ? entry->toTime() : QString()},
                    {u"time"_s, item->time()},
                    {u"pauseTime"_s, item->pauseTime()},
                    {u"effectiveDuration"_s, item->effectiveDuration()},
                    {u"working"_s, item->isWorking()},
                    {u"paused"_s, item->isPaused()},
                    {u"checked"_s, item->isChecked()},
                    {u"comment"_s, item->comment()},
                    {u"tags"_s, item->tags()},
                    {u"amount"_s, fee ? QJsonValue(jsonMoney(fee->amount())) : QJsonValue()},
                });
                continue;
            }
            table.addRow({QString::number(index), entry ? u"timed"_s : u"flatfee"_s,
                          whenText(*item),
                          fee ? m_currency.format(fee->amount())
                              : StoredForms::durationText(item->effectiveDuration()),
                          StoredForms::durationText(item->pauseTime()),
                          item->isChecked() ? u"[x]"_s : u"[ ]"_s, oneLine(item->tags()),
                          oneLine(item->comment())});
        }
        if (m_console.json())
            m_console.printJson(array);
        else
            table.print(m_console.out());
        return int(CliConsole::Success);
    });
}

int CliListings::running(const QStringList &args) {
    if (!m_console.takesNothing(u"running"_s, args))
        return CliConsole::BadArguments;
    return m_file.read([this](CliDocument &document) {
        QJsonArray array;
        TextTable table;
        for (const auto &project : document.projects()) {
            int index = 0;
            for (const auto &item : project->entries()) {
                ++index;
                if (!item->isEntry() || !(item->isWorking() || item->isPaused()))
                    continue;
                if (m_console.json()) {
                    array.append(QJsonObject{{u"project"_s, project->name()},
                                             {u"index"_s, index},
                                             {u"minutes"_s, item->effectiveDuration()},
                                             {u"paused"_s, item->isPaused()}});
                } else {
                    table.addRow({project->name(), QString::number(index),
                                  StoredForms::durationText(item->effectiveDuration()),
                                  item->isPaused() ? u"paused"_s : u"running"_s});
                }
            }
        }
        if (m_console.json())
            m_console.printJson(array);
        else
            table.print(m_console.out());
        return int(CliConsole::Success);
    });
}

int CliListings::filters(const QStringList &args) {
    if (!m_console.takesNothing(u"filters"_s, args))
        return CliConsole::BadArguments;
    const QString path = m_supportFolder + u"/filters.plist"_s;
    QString error;
    const std::optional<QList<Filter::Pointer>> filters = CliExport::readSavedFilters(path, error);
    if (!filters)
        return m_console.fail(u"Cannot read \"%1\": %2"_s.arg(path, error), CliConsole::Unreadable);
    QJsonArray array;
    TextTable table;
    for (const auto &filter : *filters) {
        const bool projects = bool(filter->projectQuery());
        const bool entries = bool(filter->entryQuery());
        if (m_console.json()) {
            array.append(QJsonObject{{u"name"_s, filter->name()},
                                     {u"projectsQuery"_s, projects},
                                     {u"entriesQuery"_s, entries}});
            continue;
        }
        QStringList queries;
        if (projects)
            queries << u"projects"_s;
        if (entries)
            queries << u"entries"_s;
        table.addRow({filter->name(), queries.join(u", "_s)});
    }
    if (m_console.json())
        m_console.printJson(array);
    else
        table.print(m_console.out());
    return CliConsole::Success;
}
