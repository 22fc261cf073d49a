#include "KeyedUnarchiver.h"

#include "../Logging.h"
#include "IndexSet.h"
#include "RangeValue.h"

#include <QColor>
#include <QDateTime>
#include <optional>
#include <plist/plist.h>

namespace {

constexpr double referenceDateOffset = 978307200.0;
constexpr int maximumDepth = 256;

struct ArchiveError {
    QString message;
};

[[noreturn]] void fail(const QString &message) {
    throw ArchiveError{message};
}

plist_type typeOf(plist_t node) {
    return node ? plist_get_node_type(node) : PLIST_NONE;
}

// By its length: a string may hold NUL characters, on which libplist's copying getter asserts.
QString stringOf(plist_t node) {
    if (typeOf(node) != PLIST_STRING)
        return {};
    uint64_t length = 0;
    const char *value = plist_get_string_ptr(node, &length);
    return QString::fromUtf8(value, qsizetype(length));
}

std::optional<quint64> unsignedOf(plist_t node) {
    if (typeOf(node) != PLIST_UINT)
        return std::nullopt;
    uint64_t value = 0;
    plist_get_uint_val(node, &value);
    return value;
}

std::optional<double> numberOf(plist_t node) {
    if (typeOf(node) == PLIST_REAL) {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    if (const auto value = unsignedOf(node))
        return double(qint64(*value));
    return std::nullopt;
}

// A UID node, or the {"CF$UID": n} dictionary that XML property lists use for one.
std::optional<quint64> uidOf(plist_t node) {
    if (typeOf(node) == PLIST_UID) {
        uint64_t value = 0;
        plist_get_uid_val(node, &value);
        return value;
    }
    if (typeOf(node) == PLIST_DICT && plist_dict_get_size(node) == 1)
        return unsignedOf(plist_dict_get_item(node, "CF$UID"));
    return std::nullopt;
}

QByteArray dataOf(plist_t node) {
    char *value = nullptr;
    uint64_t length = 0;
    plist_get_data_val(node, &value, &length);
    const QByteArray bytes(value, qsizetype(length));
    free(value);
    return bytes;
}

IndexSet indexSetFrom(plist_t node) {
    IndexSet set;
    const auto count = unsignedOf(plist_dict_get_item(node, "NSRangeCount")).value_or(0);
    if (count == 1) {
        set.addIndexesInRange(unsignedOf(plist_dict_get_item(node, "NSLocation")).value_or(0),
                              unsignedOf(plist_dict_get_item(node, "NSLength")).value_or(0));
        return set;
    }
    if (count == 0)
        return set;
    plist_t dataNode = plist_dict_get_item(node, "NSRangeData");
    if (typeOf(dataNode) != PLIST_DATA)
        fail(QStringLiteral("An index set of %1 ranges has no range data.").arg(count));
    const QByteArray data = dataOf(dataNode);
    QList<quint64> numbers;
    quint64 value = 0;
    int shift = 0;
    for (char c : data) {
        const uchar byte = uchar(c);
        if (shift > 63)
            fail(QStringLiteral("An index set holds a number that does not fit."));
        value |= quint64(byte & 0x7f) << shift;
        shift += 7;
        if (!(byte & 0x80)) {
            numbers.append(value);
            value = 0;
            shift = 0;
        }
    }
    if (shift != 0 || quint64(numbers.size()) != count * 2)
        fail(QStringLiteral("An index set claims %1 ranges but holds %2 numbers.")
                 .arg(count)
                 .arg(numbers.size()));
    for (qsizetype i = 0; i < numbers.size(); i += 2)
        set.addIndexesInRange(numbers[i], numbers[i + 1]);
    return set;
}

QColor colorFrom(plist_t node) {
    const QString components = QString::fromLatin1(dataOf(plist_dict_get_item(node, "NSRGB")));
    const QStringList parts = components.split(u' ', Qt::SkipEmptyParts);
    if (parts.size() < 3)
        return {};
    float values[4] = {0, 0, 0, 1};
    for (int i = 0; i < std::min<qsizetype>(4, parts.size()); ++i)
        values[i] = std::clamp(parts[i].trimmed().remove(QChar()).toFloat(), 0.0f, 1.0f);
    return QColor::fromRgbF(values[0], values[1], values[2], values[3]);
}

// Whether the class or its mutable variant is in the chain (archives name the immutable parent
// too, but a minimal one may not).
bool chainHas(const QStringList &chain, const char *name) {
    const QLatin1StringView base(name);
    return chain.contains(base) || chain.contains(QLatin1StringView("NSMutable") + base.mid(2));
}

} // namespace

KeyedUnarchiver::KeyedUnarchiver(plist_t objects, const ClassTable &classes)
    : m_objects(objects)
    , m_count(plist_array_get_size(objects))
    , m_classes(classes) {}

KeyedUnarchiver::Result KeyedUnarchiver::unarchive(const QByteArray &bytes,
                                                   const ClassTable &classes) {
    Result result;
    plist_t archive = nullptr;
    if (!bytes.isEmpty())
        plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &archive);
    try {
        if (!archive)
            fail(QStringLiteral("The data is not a property list."));
        if (typeOf(archive) != PLIST_DICT ||
            stringOf(plist_dict_get_item(archive, "$archiver")) != u"NSKeyedArchiver")
            fail(QStringLiteral("The property list is not a keyed archive."));
        plist_t objects = plist_dict_get_item(archive, "$objects");
        plist_t top = plist_dict_get_item(archive, "$top");
        if (typeOf(objects) != PLIST_ARRAY || typeOf(top) != PLIST_DICT)
            fail(QStringLiteral("The keyed archive has no objects or no top."));
        plist_t root = plist_dict_get_item(top, "root");
        if (!root)
            fail(QStringLiteral("The keyed archive has no root object."));
        KeyedUnarchiver unarchiver(objects, classes);
        result.root = unarchiver.decodeReference(root);
        result.ok = true;
    } catch (const ArchiveError &error) {
        result.error = error.message;
        qCWarning(lcStores).noquote() << "rejected a keyed archive:" << error.message;
    }
    if (archive)
        plist_free(archive);
    return result;
}

QVariant KeyedUnarchiver::decodeReference(plist_t reference) {
    const auto uid = uidOf(reference);
    if (!uid)
        fail(QStringLiteral("An object reference is not a reference."));
    return decodeUid(*uid);
}

QVariant KeyedUnarchiver::decodeUid(quint64 uid) {
    if (uid >= m_count)
        fail(QStringLiteral("Reference %1 points outside the archive's %2 objects.")
                 .arg(uid)
                 .arg(m_count));
    if (uid == 0)
        return {};
    const auto done = m_decoded.constFind(uid);
    if (done != m_decoded.cend())
        return *done;
    if (m_inProgress.contains(uid))
        fail(QStringLiteral("Object %1 refers to itself.").arg(uid));
    if (m_depth >= maximumDepth)
        fail(QStringLiteral("The objects are nested more than %1 deep.").arg(maximumDepth));
    m_inProgress.insert(uid);
    ++m_depth;
    const QVariant value = decodeNode(uid, plist_array_get_item(m_objects, uint32_t(uid)));
    --m_depth;
    m_inProgress.remove(uid);
    m_decoded.insert(uid, value);
    return value;
}

QVariant KeyedUnarchiver::decodeNode(quint64 uid, plist_t node) {
    switch (typeOf(node)) {
    case PLIST_STRING:
        return stringOf(node);
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return bool(value);
    }
    case PLIST_UINT:
        return qint64(*unsignedOf(node));
    case PLIST_REAL:
        return *numberOf(node);
    case PLIST_DATA:
        return dataOf(node);
    case PLIST_DATE: {
        int32_t seconds = 0;
        int32_t micro = 0;
        plist_get_date_val(node, &seconds, &micro);
        return QDateTime::fromMSecsSinceEpoch(
            qint64((double(seconds) + referenceDateOffset) * 1000.0 + micro / 1000));
    }
    case PLIST_DICT:
        return decodeInstance(uid, node);
    default:
        fail(QStringLiteral("Object %1 is of a kind a keyed archive does not hold.").arg(uid));
    }
}

QVariant KeyedUnarchiver::decodeInstance(quint64 uid, plist_t node) {
    const auto classUid = uidOf(plist_dict_get_item(node, "$class"));
    if (!classUid || *classUid >= m_count)
        fail(QStringLiteral("Object %1 has no class.").arg(uid));
    plist_t description = plist_array_get_item(m_objects, uint32_t(*classUid));
    if (typeOf(description) != PLIST_DICT)
        fail(QStringLiteral("The class of object %1 is not described.").arg(uid));
    QStringList chain{stringOf(plist_dict_get_item(description, "$classname"))};
    plist_t classes = plist_dict_get_item(description, "$classes");
    for (uint32_t i = 0; typeOf(classes) == PLIST_ARRAY && i < plist_array_get_size(classes); ++i)
        chain.append(stringOf(plist_array_get_item(classes, i)));

    for (const QString &name : std::as_const(chain)) {
        const auto factory = m_classes.constFind(name);
        if (factory == m_classes.cend())
            continue;
        plist_t saved = m_current;
        m_current = node;
        const KeyedObject object = (*factory)(*this);
        m_current = saved;
        return QVariant::fromValue(object);
    }
    if (chainHas(chain, "NSString")) {
        plist_t text = plist_dict_get_item(node, "NS.string");
        if (typeOf(text) == PLIST_STRING)
            return stringOf(text);
        if (typeOf(text) == PLIST_DATA)
            return QString::fromUtf8(dataOf(text));
        fail(QStringLiteral("The string object %1 holds no text.").arg(uid));
    }
    if (chainHas(chain, "NSData")) {
        plist_t data = plist_dict_get_item(node, "NS.data");
        if (typeOf(data) != PLIST_DATA)
            fail(QStringLiteral("The data object %1 holds no data.").arg(uid));
        return dataOf(data);
    }
    if (chainHas(chain, "NSArray") || chainHas(chain, "NSSet")) {
        plist_t objects = plist_dict_get_item(node, "NS.objects");
        if (typeOf(objects) != PLIST_ARRAY)
            fail(QStringLiteral("The list object %1 holds no list.").arg(uid));
        QVariantList list;
        const uint32_t size = plist_array_get_size(objects);
        list.reserve(qsizetype(std::min<uint32_t>(size, m_count)));
        for (uint32_t i = 0; i < size; ++i)
            list.append(decodeReference(plist_array_get_item(objects, i)));
        return list;
    }
    if (chainHas(chain, "NSDictionary")) {
        plist_t keys = plist_dict_get_item(node, "NS.keys");
        plist_t objects = plist_dict_get_item(node, "NS.objects");
        if (typeOf(keys) != PLIST_ARRAY || typeOf(objects) != PLIST_ARRAY ||
            plist_array_get_size(keys) != plist_array_get_size(objects))
            fail(QStringLiteral("The dictionary object %1 has keys and values that do not pair.")
                     .arg(uid));
        QVariantMap map;
        for (uint32_t i = 0; i < plist_array_get_size(keys); ++i) {
            const QVariant key = decodeReference(plist_array_get_item(keys, i));
            if (key.typeId() != QMetaType::QString)
                fail(QStringLiteral("The dictionary object %1 has a key that is not text.")
                         .arg(uid));
            map.insert(key.toString(), decodeReference(plist_array_get_item(objects, i)));
        }
        return map;
    }
    if (chainHas(chain, "NSDate")) {
        const auto seconds = numberOf(plist_dict_get_item(node, "NS.time"));
        if (!seconds)
            fail(QStringLiteral("The date object %1 holds no time.").arg(uid));
        return QDateTime::fromMSecsSinceEpoch(qint64((*seconds + referenceDateOffset) * 1000.0));
    }
    if (chainHas(chain, "NSValue")) {
        if (unsignedOf(plist_dict_get_item(node, "NS.special")).value_or(0) == 4) {
            RangeValue range;
            range.location =
                quint32(unsignedOf(plist_dict_get_item(node, "NS.rangeval.location")).value_or(0));
            range.length =
                quint32(unsignedOf(plist_dict_get_item(node, "NS.rangeval.length")).value_or(0));
            return QVariant::fromValue(range);
        }
        qCInfo(lcStores) << "a value object of an unknown kind was left out";
        return {};
    }
    if (chainHas(chain, "NSIndexSet"))
        return QVariant::fromValue(indexSetFrom(node));
    if (chainHas(chain, "NSColor"))
        return colorFrom(node);
    fail(QStringLiteral("Object %1 is of the unknown class \"%2\".").arg(uid).arg(chain.first()));
}

plist_t KeyedUnarchiver::valueNode(const QString &key) const {
    return m_current ? plist_dict_get_item(m_current, key.toUtf8().constData()) : nullptr;
}

QVariant KeyedUnarchiver::decodeObject(const QString &key) {
    plist_t node = valueNode(key);
    if (!node)
        return {};
    return decodeReference(node);
}

qint64 KeyedUnarchiver::decodeInt(const QString &key) const {
    const auto value = numberOf(valueNode(key));
    return value ? qint64(*value) : 0;
}

bool KeyedUnarchiver::decodeBool(const QString &key) const {
    plist_t node = valueNode(key);
    if (typeOf(node) == PLIST_BOOLEAN) {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    return numberOf(node).value_or(0) != 0;
}

double KeyedUnarchiver::decodeDouble(const QString &key) const {
    return numberOf(valueNode(key)).value_or(0.0);
}

bool KeyedUnarchiver::containsValue(const QString &key) const {
    return valueNode(key) != nullptr;
}
