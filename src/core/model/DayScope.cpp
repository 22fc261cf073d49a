#include "DayScope.h"

#include "../platform/Preferences.h"
#include "Clock.h"

#include <optional>

namespace {

struct Pinned {
    QDate today;
    int firstDayOfWeek = 0;
};

std::optional<Pinned> &pinned() {
    static std::optional<Pinned> value;
    return value;
}

int firstDayOfWeekPreference() {
    return Preferences::shared().integerForKey(u"firstDayOfWeek");
}

} // namespace

DayScope::DayScope() {
    if (pinned())
        return;
    m_outermost = true;
    pinned() = Pinned{Clock::now().date(), firstDayOfWeekPreference()};
}

DayScope::~DayScope() {
    if (m_outermost)
        pinned().reset();
}

QDate DayScope::today() {
    return pinned() ? pinned()->today : Clock::now().date();
}

int DayScope::firstDayOfWeek() {
    return pinned() ? pinned()->firstDayOfWeek : firstDayOfWeekPreference();
}

bool DayScope::isInThisWeek(QDate day) {
    const QDate now = today();
    // Qt counts Monday 1 .. Sunday 7; the preference counts Sunday 0 .. Saturday 6.
    int back = now.dayOfWeek() % 7 - firstDayOfWeek();
    if (back < 0)
        back += 7;
    const QDate start = now.addDays(-back);
    return day.isValid() && day >= start && day <= start.addDays(6);
}
