#pragma once

#include "search/FilterDelegate.h"
#include "search/MPSearchQuery.h"

#include <QDate>
#include <optional>

// The rules of one row of the query editor, without its controls: the property and match kind
// it shows, what choosing another property does to the criterion, and how the texts of the value
// fields become the comparison value. The row edits the criterion of the query in place.
//
// Value fields by data type: Integer, Float, String, Tag and Object one text; Range "from" and
// "to" (stored as location from and length max(0, to - from)); Duration hours and minutes
// (stored as hours × 60 + minutes); Date a day; Customer a customer id; Boolean none.
class CriterionRowLogic {
public:
    enum class PropertyChange { None, Kept, Rebuilt };

    CriterionRowLogic(MPSearchQuery::Pointer query, MPSearchCriterion::Pointer criterion,
                      const FilterDelegate &properties);

    MPSearchCriterion::Pointer criterion() const { return m_criterion; }
    int dataType() const { return m_criterion->dataType(); }
    QStringList propertyTitles() const { return m_properties.searchableProperties(); }
    // The title of the criterion's property: its name, or for a name that is no title (a
    // criterion made elsewhere) the title of its identifier's property.
    QString propertyTitle() const;
    QList<int> matchKinds() const { return MPSearchCriterion::matchKindsForType(dataType()); }

    // Choosing another property: one of the same type keeps the match kind and resets the value;
    // one of another type puts a new criterion with the type's first match kind in the query at
    // the same place, and the row is to be built anew. A customer value starts as the id given.
    PropertyChange chooseProperty(const QString &title, int firstCustomerId);
    void chooseMatchKind(int matchKind) { m_criterion->setMatchKind(matchKind); }
    // "is today", "is this month", "is this year" and "is this week" compare with no value.
    bool isValueHidden() const;

    // How many text fields the row's type has (0 for Date, Customer and Boolean).
    int textFieldCount() const;
    // The comparison value as the texts of the fields.
    QStringList valueTexts() const;
    // Stores the texts as the comparison value; when a field does not hold a number where one is
    // wanted, nothing is stored and the index of that field comes back.
    std::optional<int> setValueTexts(const QStringList &texts);
    QDate dateValue() const { return m_criterion->objectValue().toDateTime().date(); }
    void setDateValue(QDate day);
    int customerValue() const { return m_criterion->objectValue().toInt(); }
    void setCustomerValue(int customerId) { m_criterion->setCustomerValue(customerId); }

    // A whole number or a decimal number in the user's notation (or the C one); letters refuse.
    static std::optional<int> parseInteger(const QString &text);
    static std::optional<float> parseFloat(const QString &text);

    // A criterion on the title's property of the table, named with the title, with the type's
    // first match kind and default value (a customer value: the id given); none for no property.
    static MPSearchCriterion::Pointer criterionForProperty(const FilterDelegate &properties,
                                                           const QString &title,
                                                           int firstCustomerId);

private:
    MPSearchQuery::Pointer m_query;
    MPSearchCriterion::Pointer m_criterion;
    const FilterDelegate &m_properties;
};
