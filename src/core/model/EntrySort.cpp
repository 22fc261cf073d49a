#include "EntrySort.h"

#include "Entry.h"
#include "FlatFeeEntry.h"
#include "StoredForms.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace {

template <typename T> int threeWay(const T &a, const T &b) {
    return a < b ? -1 : (b < a ? 1 : 0);
}

int directed(int result, bool ascending) {
    return ascending ? result : -result;
}

// What the day order compares, read once per item: the comparisons of a sort then walk one
// compact array instead of items spread over the heap. The end time and the effective duration
// only break ties, so they are read from the item the first time a comparison needs them.
class DayKey {
public:
    DayKey(const ProjectItem &item, qsizetype index)
        : m_item(&item)
        , m_index(index)
        , m_day(item.sortDay())
        , m_hasPeriod(item.hasPeriod())
        , m_isEntry(item.isEntry()) {
        if (m_hasPeriod) {
            const auto &entry = static_cast<const Entry &>(item);
            m_fromMinutes = entry.sortFromMinutes();
            m_isWorking = entry.isWorking();
        }
    }

    qsizetype index() const { return m_index; }

    // EntrySort::compareEntriesDay() in ascending order, on the keys.
    static int compare(const DayKey &a, const DayKey &b) {
        int result = threeWay(a.m_day, b.m_day);
        if (result == 0) {
            if (a.m_hasPeriod && b.m_hasPeriod) {
                result = threeWay(a.m_fromMinutes, b.m_fromMinutes);
                if (result == 0) {
                    if (a.m_isWorking != b.m_isWorking)
                        result = a.m_isWorking ? 1 : -1;
                    else if (!a.m_isWorking)
                        result = threeWay(a.toMinutes(), b.toMinutes());
                }
            } else if (a.m_isEntry && b.m_isEntry) {
                result = threeWay(a.effectiveDuration(), b.effectiveDuration());
            }
        }
        return result;
    }

private:
    int toMinutes() const {
        if (!m_toMinutes)
            m_toMinutes = StoredForms::parseTime(static_cast<const Entry &>(*m_item).toTime());
        return *m_toMinutes;
    }
    int effectiveDuration() const {
        if (!m_effectiveDuration)
            m_effectiveDuration = m_item->effectiveDuration();
        return *m_effectiveDuration;
    }

    const ProjectItem *m_item;
    qsizetype m_index;
    qint64 m_day;
    int m_fromMinutes = 0;
    bool m_hasPeriod;
    bool m_isEntry;
    bool m_isWorking = false;
    mutable std::optional<int> m_toMinutes;
    mutable std::optional<int> m_effectiveDuration;
};

// The same stable sort as over the items themselves, so items that compare equal, or in no
// consistent order, end up exactly where the item-by-item sort puts them.
void sortByDay(ItemList &items, bool ascending) {
    std::vector<DayKey> keys;
    keys.reserve(size_t(items.size()));
    for (qsizetype i = 0; i < items.size(); ++i)
        keys.emplace_back(*items.at(i), i);
    std::stable_sort(keys.begin(), keys.end(), [ascending](const DayKey &a, const DayKey &b) {
        return directed(DayKey::compare(a, b), ascending) < 0;
    });
    ItemList sorted;
    sorted.reserve(items.size());
    for (const DayKey &key : keys)
        sorted.append(std::move(items[key.index()]));
    items = std::move(sorted);
}

} // namespace

bool EntrySort::isSortColumn(QStringView column) {
    return column == u"Day_Col" || column == u"Description_Col" || column == u"Action_Col" ||
           column == u"Duration_Col";
}

int EntrySort::compareEntriesDay(const ProjectItem &a, const ProjectItem &b, bool ascending) {
    int result = threeWay(a.sortDay(), b.sortDay());
    if (result == 0) {
        if (a.hasPeriod() && b.hasPeriod()) {
            const auto &ea = static_cast<const Entry &>(a);
            const auto &eb = static_cast<const Entry &>(b);
            result = threeWay(ea.sortFromMinutes(), eb.sortFromMinutes());
            if (result == 0) {
                if (ea.isWorking() != eb.isWorking())
                    result = ea.isWorking() ? 1 : -1;
                else if (!ea.isWorking())
                    result = threeWay(StoredForms::parseTime(ea.toTime()),
                                      StoredForms::parseTime(eb.toTime()));
            }
        } else if (a.isEntry() && b.isEntry()) {
            result = threeWay(a.effectiveDuration(), b.effectiveDuration());
        }
    }
    return directed(result, ascending);
}

int EntrySort::compareEntriesDescription(const ProjectItem &a, const ProjectItem &b,
                                         bool ascending) {
    return directed(compareNumerically(a.comment(), b.comment()), ascending);
}

int EntrySort::compareEntriesAction(const ProjectItem &a, const ProjectItem &b, bool ascending) {
    return directed(threeWay(int(a.isWorking()), int(b.isWorking())), ascending);
}

int EntrySort::compareEntriesDuration(const ProjectItem &a, const ProjectItem &b, bool ascending) {
    int result = 0;
    if (a.isEntry() && b.isEntry())
        result = threeWay(a.effectiveDuration(), b.effectiveDuration());
    else if (a.isFlatFee() && b.isFlatFee())
        result = threeWay(static_cast<const FlatFeeEntry &>(a).amount(),
                          static_cast<const FlatFeeEntry &>(b).amount());
    else
        result = a.isEntry() ? -1 : 1;
    return directed(result, ascending);
}

int EntrySort::compareNumerically(QStringView a, QStringView b) {
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    qsizetype i = 0;
    qsizetype j = 0;
    while (i < a.size() && j < b.size()) {
        if (isDigit(a[i]) && isDigit(b[j])) {
            qsizetype ei = i;
            qsizetype ej = j;
            while (ei < a.size() && isDigit(a[ei]))
                ++ei;
            while (ej < b.size() && isDigit(b[ej]))
                ++ej;
            // Compare the runs by value: without leading zeros, the longer run is larger.
            qsizetype si = i;
            qsizetype sj = j;
            while (si + 1 < ei && a[si] == u'0')
                ++si;
            while (sj + 1 < ej && b[sj] == u'0')
                ++sj;
            if (ei - si != ej - sj)
                return ei - si < ej - sj ? -1 : 1;
            for (; si < ei; ++si, ++sj) {
                if (a[si] != b[sj])
                    return a[si] < b[sj] ? -1 : 1;
            }
            i = ei;
            j = ej;
            continue;
        }
        if (a[i] != b[j])
            return a[i] < b[j] ? -1 : 1;
        ++i;
        ++j;
    }
    return threeWay(a.size() - i, b.size() - j);
}

void EntrySort::sortEntries(ItemList &items, QStringView column, bool ascending) {
    if (column == u"Day_Col") {
        sortByDay(items, ascending);
        return;
    }
    int (*compare)(const ProjectItem &, const ProjectItem &, bool) = nullptr;
    if (column == u"Description_Col")
        compare = &compareEntriesDescription;
    else if (column == u"Action_Col")
        compare = &compareEntriesAction;
    else if (column == u"Duration_Col")
        compare = &compareEntriesDuration;
    else
        return;
    std::stable_sort(items.begin(), items.end(),
                     [compare, ascending](const auto &a, const auto &b) {
                         return compare(*a, *b, ascending) < 0;
                     });
}
