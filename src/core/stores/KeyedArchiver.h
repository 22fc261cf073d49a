#pragma once

#include "KeyedCoding.h"

#include <QByteArray>
#include <QHash>
#include <QVariant>

typedef void *plist_t;

// Writes an object graph as a keyed archive: the property-list layout of the platform's keyed
// archiver ("$archiver", "$version", "$top" with "root", "$objects" referenced by UID, "$classes"
// chains), as an XML property list.
//
// Values: invalid (null), bool, integers, float/double, QString, QByteArray, QDateTime,
// QVariantList, QVariantMap (string keys), RangeValue, IndexSet, QColor, and KeyedObject for
// objects that encode themselves.
class KeyedArchiver {
public:
    static QByteArray archivedData(const QVariant &root);
    static QByteArray archivedData(const KeyedCoding &root);

    // For encodeWithCoder(): values of the object being written.
    void encodeObject(const QVariant &value, const QString &key);
    void encodeInt(qint64 value, const QString &key);
    void encodeBool(bool value, const QString &key);
    void encodeDouble(double value, const QString &key);

private:
    KeyedArchiver();
    ~KeyedArchiver();

    quint64 encodeValue(const QVariant &value);
    quint64 appendObject(plist_t object);
    plist_t classReference(const QStringList &chain);
    plist_t newObject(const QStringList &chain);

    plist_t m_objects;
    plist_t m_current = nullptr;
    QHash<QString, quint64> m_classes;
};
