#include "Clock.h"

#include <optional>

namespace {
std::optional<qint64> &fixedMsecs() {
    static std::optional<qint64> value;
    return value;
}
} // namespace

QDateTime Clock::now() {
    if (fixedMsecs())
        return QDateTime::fromMSecsSinceEpoch(*fixedMsecs());
    return QDateTime::currentDateTime();
}

QDateTime Clock::nowToTheSecond() {
    return QDateTime::fromSecsSinceEpoch(nowSecsSinceEpoch());
}

qint64 Clock::nowSecsSinceEpoch() {
    if (fixedMsecs())
        return *fixedMsecs() / 1000;
    return QDateTime::currentSecsSinceEpoch();
}

void Clock::setNow(const QDateTime &fixed) {
    fixedMsecs() = fixed.toMSecsSinceEpoch();
}

void Clock::advance(qint64 seconds) {
    fixedMsecs() =
        (fixedMsecs() ? *fixedMsecs() : QDateTime::currentMSecsSinceEpoch()) + seconds * 1000;
}

void Clock::reset() {
    fixedMsecs().reset();
}
