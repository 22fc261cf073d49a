#include "QuickFilters.h"

#include "../platform/Preferences.h"
#include "FilterController.h"

#include <QCoreApplication>

QList<Filter::Pointer> QuickFilters::makeDefaultFilters() {
    const struct {
        const char *name;
        int matchKind;
    } kinds[] = {
        {"Today", MPSearchCriterion::IsToday},
        {"This month", MPSearchCriterion::IsThisMonth},
        {"This year", MPSearchCriterion::IsThisYear},
        {"This week", MPSearchCriterion::IsThisWeek},
    };
    QList<Filter::Pointer> filters;
    for (const auto &kind : kinds) {
        auto criterion =
            MPSearchCriterion::criterionWithDate(QDateTime(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC),
                                                 kind.matchKind, QStringLiteral("fromDateAsDate"));
        criterion->setName(QStringLiteral("From"));
        auto query = std::make_shared<MPSearchQuery>();
        query->addCriterion(criterion);
        auto filter = std::make_shared<Filter>();
        filter->setName(QString::fromLatin1(kind.name));
        filter->setIsProjectsQueryActive(false);
        filter->setEntryQuery(query);
        filters.append(filter);
    }
    return filters;
}

bool QuickFilters::load(const QString &path) {
    return Filter::readListFile(path, m_filters);
}

int QuickFilters::positionForIdentifier(QStringView identifier) {
    if (identifier == u"today")
        return 0;
    if (identifier == u"month")
        return 1;
    if (identifier == u"year")
        return 2;
    if (identifier == u"week")
        return 3;
    return -1;
}

Filter::Pointer QuickFilters::filterForIdentifier(QStringView identifier) const {
    const int position = positionForIdentifier(identifier);
    return position >= 0 && position < m_filters.size() ? m_filters[position] : nullptr;
}

void QuickFilters::choose(const QString &identifier, bool startingUp, FilterController &filters,
                          FilterTarget &target, Preferences &preferences) const {
    if (identifier != u"off") {
        filters.temporaryDisableFilter();
        target.setCurrentFilter(filterForIdentifier(identifier));
    } else if (!startingUp) {
        target.setCurrentFilter(nullptr);
    }
    preferences.setObject(identifier, u"quickfilter");
}
