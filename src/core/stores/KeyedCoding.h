#pragma once

#include <QMetaType>
#include <QString>
#include <QStringList>
#include <memory>

class KeyedArchiver;

// An object that writes itself into a keyed archive under its class name. Reading goes through
// a factory registered with the unarchiver under the same name.
class KeyedCoding {
public:
    virtual ~KeyedCoding() = default;
    virtual QString className() const = 0;
    virtual void encodeWithCoder(KeyedArchiver &coder) const = 0;
};

using KeyedObject = std::shared_ptr<KeyedCoding>;

Q_DECLARE_METATYPE(KeyedObject)
