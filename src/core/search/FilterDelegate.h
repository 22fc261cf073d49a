#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <memory>

class MPSearchQuery;

// A table of searchable properties: display title (looked up as a localisable key), the key read
// from the object, and the data type of its criterion. Lookups go by title, so titles are unique
// within a table.
class FilterDelegate {
public:
    struct Property {
        const char *title;
        const char *key;
        int dataType;
    };

    virtual ~FilterDelegate() = default;

    QStringList searchableProperties() const;
    // -1 when no title equals the argument.
    int dataTypeForProperty(const QString &title) const;
    // No text when no title equals the argument.
    QString identifierForProperty(const QString &title) const;

    // A query as the editor proposes it: one criterion on the table's first property, with the
    // first match kind and the default value of its type, named with the property's title.
    std::shared_ptr<MPSearchQuery> newQuery() const;

protected:
    explicit FilterDelegate(QList<Property> properties);

private:
    const Property *find(const QString &title) const;
    static QString localized(const char *title);

    QList<Property> m_properties;
};
