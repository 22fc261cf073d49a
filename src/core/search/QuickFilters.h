#pragma once

#include "Filter.h"

class FilterController;
class FilterTarget;
class Preferences;

// The four fixed filters of the quick-filter bar: today, this month, this year and this week, in
// that order, read from the application resource "quickfilters.plist".
class QuickFilters {
public:
    // The filters the resource is made of: an entry query with one date criterion on the start
    // day ("is today", "is this month", "is this year", "is this week").
    static QList<Filter::Pointer> makeDefaultFilters();

    // Reads the resource when it exists; false (and logged) when it cannot be read.
    bool load(const QString &path);
    const QList<Filter::Pointer> &filters() const { return m_filters; }

    // The list position of a bar item: "today" 0, "month" 1, "year" 2, "week" 3; -1 otherwise.
    static int positionForIdentifier(QStringView identifier);
    Filter::Pointer filterForIdentifier(QStringView identifier) const;

    // The bar's action: any item but "off" sets the saved filter aside and makes its quick filter
    // current (an unknown one clears it); "off" clears it, except during start-up. The choice is
    // stored in the "quickfilter" preference.
    void choose(const QString &identifier, bool startingUp, FilterController &filters,
                FilterTarget &target, Preferences &preferences) const;

private:
    QList<Filter::Pointer> m_filters;
};
