#include "IndexSet.h"

#include <algorithm>

IndexSet IndexSet::withIndex(quint64 index) {
    IndexSet set;
    set.addIndex(index);
    return set;
}

void IndexSet::addIndexesInRange(quint64 first, quint64 count) {
    if (count == 0)
        return;
    quint64 last = first + count - 1;
    if (last < first)
        last = std::numeric_limits<quint64>::max();
    QList<QPair<quint64, quint64>> merged;
    merged.reserve(m_ranges.size() + 1);
    bool placed = false;
    for (const auto &[start, length] : std::as_const(m_ranges)) {
        const quint64 end = start + length - 1;
        if (end + 1 < first && end != std::numeric_limits<quint64>::max()) {
            merged.append({start, length});
        } else if (last != std::numeric_limits<quint64>::max() && last + 1 < start) {
            if (!placed) {
                merged.append({first, last - first + 1});
                placed = true;
            }
            merged.append({start, length});
        } else {
            first = std::min(first, start);
            last = std::max(last, end);
        }
    }
    if (!placed)
        merged.append({first, last - first + 1});
    m_ranges = merged;
}

bool IndexSet::containsIndex(quint64 index) const {
    return std::any_of(m_ranges.cbegin(), m_ranges.cend(), [index](const auto &range) {
        return index >= range.first && index - range.first < range.second;
    });
}

quint64 IndexSet::count() const {
    quint64 total = 0;
    for (const auto &range : m_ranges)
        total += range.second;
    return total;
}
