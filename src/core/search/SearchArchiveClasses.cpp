#include "SearchArchiveClasses.h"

#include "Filter.h"
#include "MPSearchCriterion.h"
#include "MPSearchQuery.h"

const KeyedUnarchiver::ClassTable &SearchArchiveClasses::table() {
    static const KeyedUnarchiver::ClassTable classes{
        {QStringLiteral("Filter"), &Filter::initWithCoder},
        {QStringLiteral("MPSearchQuery"), &MPSearchQuery::initWithCoder},
        {QStringLiteral("MPSearchCriterion"), &MPSearchCriterion::initWithCoder},
    };
    return classes;
}
