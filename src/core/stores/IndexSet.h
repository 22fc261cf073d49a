#pragma once

#include <QList>
#include <QMetaType>
#include <QPair>

// A set of unsigned indexes kept as sorted, disjoint, non-adjacent ranges (first index, count), so
// that large spans cost nothing.
class IndexSet {
public:
    IndexSet() = default;
    static IndexSet withIndex(quint64 index);

    void addIndexesInRange(quint64 first, quint64 count);
    void addIndex(quint64 index) { addIndexesInRange(index, 1); }
    bool containsIndex(quint64 index) const;
    quint64 count() const;
    bool isEmpty() const { return m_ranges.isEmpty(); }
    // (first index, count) pairs in ascending order.
    const QList<QPair<quint64, quint64>> &ranges() const { return m_ranges; }

    bool operator==(const IndexSet &other) const { return m_ranges == other.m_ranges; }

private:
    QList<QPair<quint64, quint64>> m_ranges;
};

Q_DECLARE_METATYPE(IndexSet)
