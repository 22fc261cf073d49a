#pragma once

#include "model/KeyValueCoding.h"

#include <QVariantMap>

// An object whose properties are whatever the test puts in.
class KeyedObjectStub : public KeyValueCoding {
public:
    explicit KeyedObjectStub(QVariantMap values = {})
        : m_values(std::move(values)) {}
    QVariant valueForKey(QStringView key) const override { return m_values.value(key.toString()); }

private:
    QVariantMap m_values;
};
