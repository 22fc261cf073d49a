#include "KeyedArchiver.h"

#include "IndexSet.h"
#include "RangeValue.h"

#include <QColor>
#include <QDateTime>
#include <QHash>
#include <plist/plist.h>

namespace {

// Seconds between 1970-01-01 and 2001-01-01, the platform's date reference.
constexpr double referenceDateOffset = 978307200.0;

QStringList chainOf(const char *name, std::initializer_list<const char *> parents) {
    QStringList chain{QString::fromLatin1(name)};
    for (const char *parent : parents)
        chain.append(QString::fromLatin1(parent));
    chain.append(QStringLiteral("NSObject"));
    return chain;
}

plist_t newInteger(qint64 value) {
    // Integers are kept as their 64-bit pattern; negative values read back as signed.
    return plist_new_uint(quint64(value));
}

// Packs (location, length) pairs as the index set's range data: each number in groups of seven
// bits, low group first, the high bit set on every byte but a number's last.
QByteArray rangeData(const IndexSet &set) {
    QByteArray data;
    const auto put = [&data](quint64 value) {
        do {
            uchar byte = value & 0x7f;
            value >>= 7;
            if (value)
                byte |= 0x80;
            data.append(char(byte));
        } while (value);
    };
    for (const auto &[first, count] : set.ranges()) {
        put(first);
        put(count);
    }
    return data;
}

} // namespace

KeyedArchiver::KeyedArchiver()
    : m_objects(plist_new_array()) {
    plist_array_append_item(m_objects, plist_new_string("$null"));
}

KeyedArchiver::~KeyedArchiver() {
    plist_free(m_objects);
}

QByteArray KeyedArchiver::archivedData(const QVariant &root) {
    KeyedArchiver archiver;
    const quint64 rootUid = archiver.encodeValue(root);
    plist_t archive = plist_new_dict();
    plist_dict_set_item(archive, "$archiver", plist_new_string("NSKeyedArchiver"));
    plist_dict_set_item(archive, "$version", plist_new_uint(100000));
    plist_t top = plist_new_dict();
    plist_dict_set_item(top, "root", plist_new_uid(rootUid));
    plist_dict_set_item(archive, "$top", top);
    plist_dict_set_item(archive, "$objects", archiver.m_objects);
    archiver.m_objects = nullptr;

    char *xml = nullptr;
    uint32_t length = 0;
    plist_to_xml(archive, &xml, &length);
    const QByteArray bytes(xml, qsizetype(length));
    plist_to_xml_free(xml);
    plist_free(archive);
    return bytes;
}

QByteArray KeyedArchiver::archivedData(const KeyedCoding &root) {
    // A reference that does not own the object: it lives as long as the caller's.
    const KeyedObject alias(KeyedObject(), const_cast<KeyedCoding *>(&root));
    return archivedData(QVariant::fromValue(alias));
}

void KeyedArchiver::encodeObject(const QVariant &value, const QString &key) {
    const quint64 uid = encodeValue(value);
    plist_dict_set_item(m_current, key.toUtf8().constData(), plist_new_uid(uid));
}

void KeyedArchiver::encodeInt(qint64 value, const QString &key) {
    plist_dict_set_item(m_current, key.toUtf8().constData(), newInteger(value));
}

void KeyedArchiver::encodeBool(bool value, const QString &key) {
    plist_dict_set_item(m_current, key.toUtf8().constData(), plist_new_bool(value));
}

void KeyedArchiver::encodeDouble(double value, const QString &key) {
    plist_dict_set_item(m_current, key.toUtf8().constData(), plist_new_real(value));
}

quint64 KeyedArchiver::appendObject(plist_t object) {
    plist_array_append_item(m_objects, object);
    return plist_array_get_size(m_objects) - 1;
}

plist_t KeyedArchiver::classReference(const QStringList &chain) {
    auto it = m_classes.constFind(chain.first());
    if (it == m_classes.cend()) {
        plist_t description = plist_new_dict();
        plist_dict_set_item(description, "$classname",
                            plist_new_string(chain.first().toUtf8().constData()));
        plist_t classes = plist_new_array();
        for (const QString &name : chain)
            plist_array_append_item(classes, plist_new_string(name.toUtf8().constData()));
        plist_dict_set_item(description, "$classes", classes);
        it = m_classes.insert(chain.first(), appendObject(description));
    }
    return plist_new_uid(*it);
}

plist_t KeyedArchiver::newObject(const QStringList &chain) {
    plist_t object = plist_new_dict();
    plist_dict_set_item(object, "$class", classReference(chain));
    return object;
}

quint64 KeyedArchiver::encodeValue(const QVariant &value) {
    if (!value.isValid() || value.isNull())
        return 0;
    const int type = value.typeId();
    switch (type) {
    case QMetaType::Bool:
        return appendObject(plist_new_bool(value.toBool()));
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::Long:
        return appendObject(newInteger(value.toLongLong()));
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::UShort:
    case QMetaType::ULong:
        return appendObject(plist_new_uint(value.toULongLong()));
    case QMetaType::Float:
    case QMetaType::Double:
        return appendObject(plist_new_real(value.toDouble()));
    case QMetaType::QString:
        return appendObject(plist_new_string(value.toString().toUtf8().constData()));
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        return appendObject(plist_new_data(bytes.constData(), quint64(bytes.size())));
    }
    case QMetaType::QDateTime: {
        plist_t date = newObject(chainOf("NSDate", {}));
        const double seconds =
            double(value.toDateTime().toMSecsSinceEpoch()) / 1000.0 - referenceDateOffset;
        plist_dict_set_item(date, "NS.time", plist_new_real(seconds));
        return appendObject(date);
    }
    case QMetaType::QVariantList:
    case QMetaType::QStringList: {
        // Elements first, then the array: each element's number is known when it is referenced.
        const QVariantList list = value.toList();
        QList<quint64> uids;
        uids.reserve(list.size());
        for (const QVariant &element : list)
            uids.append(encodeValue(element));
        plist_t array = newObject(chainOf("NSMutableArray", {"NSArray"}));
        plist_t objects = plist_new_array();
        for (quint64 uid : std::as_const(uids))
            plist_array_append_item(objects, plist_new_uid(uid));
        plist_dict_set_item(array, "NS.objects", objects);
        return appendObject(array);
    }
    case QMetaType::QVariantMap: {
        const QVariantMap map = value.toMap();
        QList<quint64> keys;
        QList<quint64> values;
        for (auto it = map.cbegin(); it != map.cend(); ++it) {
            keys.append(encodeValue(it.key()));
            values.append(encodeValue(it.value()));
        }
        plist_t dictionary = newObject(chainOf("NSMutableDictionary", {"NSDictionary"}));
        plist_t keyArray = plist_new_array();
        plist_t valueArray = plist_new_array();
        for (int i = 0; i < keys.size(); ++i) {
            plist_array_append_item(keyArray, plist_new_uid(keys[i]));
            plist_array_append_item(valueArray, plist_new_uid(values[i]));
        }
        plist_dict_set_item(dictionary, "NS.keys", keyArray);
        plist_dict_set_item(dictionary, "NS.objects", valueArray);
        return appendObject(dictionary);
    }
    case QMetaType::QColor: {
        float r = 0, g = 0, b = 0, a = 0;
        value.value<QColor>().getRgbF(&r, &g, &b, &a);
        const QByteArray rgb = QString(QString::number(r) + u' ' + QString::number(g) + u' ' +
                                       QString::number(b) + u' ' + QString::number(a))
                                   .toLatin1();
        plist_t color = newObject(chainOf("NSColor", {}));
        plist_dict_set_item(color, "NSColorSpace", plist_new_uint(1));
        plist_dict_set_item(color, "NSRGB", plist_new_data(rgb.constData(), quint64(rgb.size())));
        return appendObject(color);
    }
    default:
        break;
    }
    if (type == qMetaTypeId<RangeValue>()) {
        const auto range = value.value<RangeValue>();
        plist_t object = newObject(chainOf("NSValue", {}));
        plist_dict_set_item(object, "NS.rangeval.location", plist_new_uint(range.location));
        plist_dict_set_item(object, "NS.rangeval.length", plist_new_uint(range.length));
        plist_dict_set_item(object, "NS.special", plist_new_uint(4));
        return appendObject(object);
    }
    if (type == qMetaTypeId<IndexSet>()) {
        const auto set = value.value<IndexSet>();
        plist_t object = newObject(chainOf("NSMutableIndexSet", {"NSIndexSet"}));
        plist_dict_set_item(object, "NSRangeCount", plist_new_uint(quint64(set.ranges().size())));
        if (set.ranges().size() == 1) {
            plist_dict_set_item(object, "NSLocation", plist_new_uint(set.ranges()[0].first));
            plist_dict_set_item(object, "NSLength", plist_new_uint(set.ranges()[0].second));
        } else if (set.ranges().size() > 1) {
            const QByteArray data = rangeData(set);
            plist_dict_set_item(object, "NSRangeData",
                                plist_new_data(data.constData(), quint64(data.size())));
        }
        return appendObject(object);
    }
    if (type == qMetaTypeId<KeyedObject>()) {
        const KeyedObject object = value.value<KeyedObject>();
        if (!object)
            return 0;
        // The object's values are encoded before the object itself is appended.
        plist_t saved = m_current;
        m_current = plist_new_dict();
        object->encodeWithCoder(*this);
        plist_t encoded = m_current;
        m_current = saved;
        plist_dict_set_item(encoded, "$class",
                            classReference({object->className(), QStringLiteral("NSObject")}));
        return appendObject(encoded);
    }
    // Anything else is written as its text.
    return appendObject(plist_new_string(value.toString().toUtf8().constData()));
}
