#pragma once

#include "AttachmentList.h"
#include "KeyValueCoding.h"
#include "ProjectItem.h"

#include <functional>

class CurrencyFormatter;

// The unit of billing: a name, a wage, a rounding rule, an optional customer and one ordered list
// of timed entries and flat fees, from which it computes totals.
class Project : public KeyValueCoding {
public:
    Project();
    Project(const QString &name, const QString &description, float hourlyWage, int roundWhat,
            int roundTo, int roundType, int customer, const QString &tags);

    QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    QString description() const { return m_description; }
    void setDescription(const QString &description) { m_description = description; }
    float hourlyWage() const { return m_hourlyWage; }
    void setHourlyWage(float wage) { m_hourlyWage = wage; }
    const ItemList &entries() const { return m_entries; }
    // Takes the list as it is (the items' project is the caller's business).
    void setEntries(const ItemList &entries) { m_entries = entries; }
    // 0 nothing, 1 the clock times at timer start and stop, 2 the duration of each entry.
    int roundWhat() const { return m_roundWhat; }
    void setRoundWhat(int roundWhat) { m_roundWhat = roundWhat; }
    int roundTo() const { return m_roundTo; }
    void setRoundTo(int roundTo) { m_roundTo = roundTo; }
    int roundType() const { return m_roundType; }
    void setRoundType(int roundType) { m_roundType = roundType; }
    bool expanded() const { return m_expanded; }
    void setExpanded(bool expanded) { m_expanded = expanded; }
    // The customer's identifier; -1 for none.
    int customer() const { return m_customer; }
    void setCustomer(int customer) { m_customer = customer; }
    QString tags() const { return m_tags; }
    void setTags(const QString &tags) { m_tags = tags; }
    QStringList attachments() const { return m_attachments.paths(); }
    void setAttachments(const std::optional<QStringList> &attachments) {
        m_attachments.set(attachments);
    }
    void addAttachments(const QStringList &paths) { m_attachments.add(paths); }
    void removeAttachments(const QStringList &paths) { m_attachments.remove(paths); }
    // The shared money formatter; not owned. Without one, the environment's locale is used.
    void setCurrencyFormatter(const CurrencyFormatter *formatter) {
        m_currencyFormatter = formatter;
    }

    // Appends the item and makes this project its parent.
    void addEntry(const std::shared_ptr<ProjectItem> &item);
    void deleteEntry(const std::shared_ptr<ProjectItem> &item);
    void addFlatFeeEntry(const std::shared_ptr<ProjectItem> &item) { addEntry(item); }
    void deleteFlatFeeEntry(const std::shared_ptr<ProjectItem> &item) { deleteEntry(item); }

    // Sum over items that are not running or paused: effective durations (true) or gross times.
    int totalTime(bool effective) const;
    int totalDuration() const { return totalTime(true); }
    // Pause minutes inside the periods of the finished timed entries.
    int totalPauseTime() const;
    // The wage applied once to the summed minutes, then the flat fees added.
    float totalWages() const;
    // The wage applied entry by entry; with applyFilter, items the predicate reports as filtered
    // out are skipped. May differ from totalWages() in the last cent, by design.
    using ItemFilter = std::function<bool(const ProjectItem &)>;
    float totalWagesWithFilter(bool applyFilter, const ItemFilter &isEntryFiltered) const;

    QString formattedHourlyWage() const;
    QString formattedTotalWages() const;
    QString formattedTotalWagesWithFilter(bool applyFilter,
                                          const ItemFilter &isEntryFiltered) const;
    QString formattedTotalTime(bool effective) const;
    QString formattedTotalPauseTime() const;
    QString htmlDescription() const;

    // The moment a timer starts or stops at: when the project rounds clock times, its hours and
    // minutes rounded (seconds dropped; a result of 24:00 is the next midnight); otherwise as
    // given.
    QDateTime clockMoment(const QDateTime &moment) const;

    // A value holder for the project editor and undo: name, description, tags, wage and rounding.
    std::shared_ptr<Project> copy() const;
    // Projects are never put on the clipboard by value: both are empty.
    QString stringDescription() const { return {}; }
    QVariantMap dictionaryRepresentation() const { return {}; }

    // Key paths read by search criteria and reports ("name", "totalDuration", "totalWages", ...).
    QVariant valueForKey(QStringView key) const override;

private:
    const CurrencyFormatter &currencyFormatter() const;

    QString m_name;
    QString m_description;
    float m_hourlyWage = 0.0f;
    ItemList m_entries;
    int m_roundWhat = 0;
    int m_roundTo = 0;
    int m_roundType = 0;
    bool m_expanded = false;
    int m_customer = -1;
    QString m_tags;
    AttachmentList m_attachments;
    const CurrencyFormatter *m_currencyFormatter = nullptr;
};

using ProjectList = QList<std::shared_ptr<Project>>;
