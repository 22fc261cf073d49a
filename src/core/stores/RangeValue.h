#pragma once

#include <QMetaType>
#include <QtGlobal>

// A range of unsigned positions: location and length. The not-found marker is location
// 0x7fffffff with length 0.
struct RangeValue {
    quint32 location = 0;
    quint32 length = 0;

    static constexpr quint32 notFound = 0x7fffffff;
    bool isNotFound() const { return location == notFound; }
    bool operator==(const RangeValue &other) const = default;
};

Q_DECLARE_METATYPE(RangeValue)
