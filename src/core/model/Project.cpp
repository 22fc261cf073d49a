#include "Project.h"

#include "../platform/CurrencyFormatter.h"
#include "Entry.h"
#include "FlatFeeEntry.h"
#include "HelpFunctions.h"
#include "StoredForms.h"

#include <QVarLengthArray>

Project::Project()
    : Project(QString(), QString(), 0.0f, 0, 0, 0, -1, QStringLiteral("")) {}

Project::Project(const QString &name, const QString &description, float hourlyWage, int roundWhat,
                 int roundTo, int roundType, int customer, const QString &tags)
    : m_name(name)
    , m_description(description)
    , m_hourlyWage(hourlyWage)
    , m_roundWhat(roundWhat)
    , m_roundTo(roundTo)
    , m_roundType(roundType)
    , m_customer(customer)
    , m_tags(tags) {}

void Project::addEntry(const std::shared_ptr<ProjectItem> &item) {
    item->setParent(this);
    m_entries.append(item);
}

void Project::deleteEntry(const std::shared_ptr<ProjectItem> &item) {
    m_entries.removeAll(item);
}

int Project::totalTime(bool effective) const {
    int total = 0;
    for (const auto &item : m_entries) {
        if (item->isWorking())
            continue;
        total += effective ? item->effectiveDuration() : item->time();
    }
    return total;
}

int Project::totalPauseTime() const {
    int total = 0;
    for (const auto &item : m_entries) {
        if (item->isEntry() && !item->isWorking())
            total += static_cast<const Entry &>(*item).netPauseTime();
    }
    return total;
}

float Project::totalWages() const {
    // One walk over the items: the minutes of the finished ones, and the flat fees, which are
    // added after the wage in list order (so the float sum is the same as adding them one by one).
    int minutes = 0;
    QVarLengthArray<float, 16> fees;
    for (const auto &item : m_entries) {
        if (item->isFlatFee())
            fees.append(static_cast<const FlatFeeEntry &>(*item).amount());
        else if (!item->isWorking())
            minutes += item->effectiveDuration();
    }
    float wages = float(double(minutes) / 60.0 * double(m_hourlyWage));
    for (float amount : fees)
        wages += amount;
    return wages;
}

float Project::totalWagesWithFilter(bool applyFilter, const ItemFilter &isEntryFiltered) const {
    float wages = 0.0f;
    for (const auto &item : m_entries) {
        if (applyFilter && isEntryFiltered && isEntryFiltered(*item))
            continue;
        if (item->isFlatFee())
            wages += static_cast<const FlatFeeEntry &>(*item).amount();
        else if (!item->isWorking())
            wages = float(double(wages) +
                          double(item->effectiveDuration()) / 60.0 * double(m_hourlyWage));
    }
    return wages;
}

const CurrencyFormatter &Project::currencyFormatter() const {
    return m_currencyFormatter ? *m_currencyFormatter : CurrencyFormatter::fallback();
}

QString Project::formattedHourlyWage() const {
    return currencyFormatter().format(m_hourlyWage);
}

QString Project::formattedTotalWages() const {
    return currencyFormatter().format(totalWages());
}

QString Project::formattedTotalWagesWithFilter(bool applyFilter,
                                               const ItemFilter &isEntryFiltered) const {
    return currencyFormatter().format(totalWagesWithFilter(applyFilter, isEntryFiltered));
}

QString Project::formattedTotalTime(bool effective) const {
    return StoredForms::durationText(totalTime(effective));
}

QString Project::formattedTotalPauseTime() const {
    return StoredForms::durationText(totalPauseTime());
}

QString Project::htmlDescription() const {
    QString html = m_description;
    html.replace(u'\n', QStringLiteral("<br/>"));
    return html;
}

std::shared_ptr<Project> Project::copy() const {
    return std::make_shared<Project>(m_name, m_description, m_hourlyWage, m_roundWhat, m_roundTo,
                                     m_roundType, -1, m_tags);
}

QVariant Project::valueForKey(QStringView key) const {
    if (key == u"name")
        return m_name;
    if (key == u"description")
        return m_description;
    if (key == u"hourlyWage")
        return m_hourlyWage;
    if (key == u"totalDuration")
        return totalDuration();
    if (key == u"totalWages")
        return totalWages();
    if (key == u"customer")
        return m_customer;
    if (key == u"tags")
        return m_tags;
    return {};
}

QDateTime Project::clockMoment(const QDateTime &moment) const {
    if (m_roundWhat != 1 || m_roundTo <= 0)
        return moment;
    const QTime t = moment.time();
    const HFTime rounded = HelpFunctions::roundTime(HFTime{quint32(t.hour()), quint32(t.minute())},
                                                    m_roundType, m_roundTo);
    // The rounded clock time may run past the end of the day (23:53 to 24:00); it is a clock time
    // all the same, not a number of seconds since midnight.
    const int minutes = HelpFunctions::calculateDurationFromTime(rounded);
    const int minutesPerDay = 24 * 60;
    return HelpFunctions::localMoment(moment.date().addDays(minutes / minutesPerDay),
                                      QTime(minutes % minutesPerDay / 60, minutes % 60));
}
