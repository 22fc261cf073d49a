#pragma once

#include "KeyedCoding.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QVariant>
#include <functional>

typedef void *plist_t;

// Reads a keyed archive (XML or binary property list) back into the values KeyedArchiver writes,
// including archives written by the platform's own keyed archiver. Objects of other classes are
// made by factories registered by class name. A damaged or foreign archive (not a property list,
// wrong kinds, references outside the archive, cycles, counts that do not add up) is rejected
// with a reason; nothing is trusted.
class KeyedUnarchiver {
public:
    using Factory = std::function<KeyedObject(KeyedUnarchiver &)>;
    using ClassTable = QHash<QString, Factory>;

    struct Result {
        bool ok = false;
        QString error;
        QVariant root;
    };

    static Result unarchive(const QByteArray &bytes, const ClassTable &classes);

    // For factories: values of the object being read. A missing key reads as invalid, 0 or false;
    // a value of another kind reads the same way.
    QVariant decodeObject(const QString &key);
    qint64 decodeInt(const QString &key) const;
    bool decodeBool(const QString &key) const;
    double decodeDouble(const QString &key) const;
    bool containsValue(const QString &key) const;

private:
    KeyedUnarchiver(plist_t objects, const ClassTable &classes);

    QVariant decodeReference(plist_t reference);
    QVariant decodeUid(quint64 uid);
    QVariant decodeNode(quint64 uid, plist_t node);
    QVariant decodeInstance(quint64 uid, plist_t node);
    plist_t valueNode(const QString &key) const;

    plist_t m_objects;
    quint32 m_count;
    const ClassTable &m_classes;
    plist_t m_current = nullptr;
    QSet<quint64> m_inProgress;
    QHash<quint64, QVariant> m_decoded;
    int m_depth = 0;
};
