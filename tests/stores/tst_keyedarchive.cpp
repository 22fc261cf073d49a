#include "stores/IndexSet.h"
#include "stores/KeyedArchiver.h"
#include "stores/KeyedUnarchiver.h"
#include "stores/RangeValue.h"
#include "support/PlistScript.h"

#include <QColor>
#include <QDateTime>
#include <QTemporaryDir>
#include <QTest>
#include <plist/plist.h>

namespace {

IndexSet twoRanges() {
    IndexSet set;
    set.addIndexesInRange(3, 4);
    set.addIndexesInRange(200, 1);
    set.addIndexesInRange(1ull << 40, 2);
    return set;
}

QVariantMap everyKind() {
    return {
        {QStringLiteral("bool"), true},
        {QStringLiteral("int"), qint64(-42)},
        {QStringLiteral("big"), qint64(1) << 40},
        {QStringLiteral("real"), 2.5},
        {QStringLiteral("text"), QStringLiteral("Größe 日本 <&>")},
        {QStringLiteral("empty"), QStringLiteral("")},
        {QStringLiteral("data"), QByteArray("\0\x01\xff", 3)},
        {QStringLiteral("date"), QDateTime::fromMSecsSinceEpoch(1215000000500)},
        {QStringLiteral("list"), QVariantList{1, QStringLiteral("two"), QVariantList{}}},
        {QStringLiteral("map"), QVariantMap{{QStringLiteral("k"), 1}}},
        {QStringLiteral("range"), QVariant::fromValue(RangeValue{10, 10})},
        {QStringLiteral("one range"), QVariant::fromValue(IndexSet::withIndex(1))},
        {QStringLiteral("ranges"), QVariant::fromValue(twoRanges())},
        {QStringLiteral("color"), QColor::fromRgbF(1.0f, 0.5f, 0.25f, 1.0f)},
        {QStringLiteral("null"), QVariant()},
    };
}

QByteArray toBinary(const QByteArray &xml) {
    plist_t plist = nullptr;
    plist_from_xml(xml.constData(), uint32_t(xml.size()), &plist);
    char *binary = nullptr;
    uint32_t length = 0;
    plist_to_bin(plist, &binary, &length);
    const QByteArray bytes(binary, length);
    plist_to_bin_free(binary);
    plist_free(plist);
    return bytes;
}

// A minimal archive around the given objects (after "$null") with the root at UID 1.
QByteArray archiveWith(const QByteArray &objects, const QByteArray &root = "1") {
    return "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>"
           "<key>$archiver</key><string>NSKeyedArchiver</string>"
           "<key>$version</key><integer>100000</integer>"
           "<key>$top</key><dict><key>root</key><dict><key>CF$UID</key><integer>" +
           root +
           "</integer></dict></dict>"
           "<key>$objects</key><array><string>$null</string>" +
           objects + "</array></dict></plist>";
}

QByteArray uid(int n) {
    return "<dict><key>CF$UID</key><integer>" + QByteArray::number(n) + "</integer></dict>";
}

QByteArray classDescription(const char *name) {
    return QByteArray("<dict><key>$classname</key><string>") + name +
           "</string><key>$classes</key><array><string>" + name +
           "</string><string>NSObject</string></array></dict>";
}

} // namespace

class TestKeyedArchive : public QObject {
    Q_OBJECT

private slots:
    void roundTripsEveryKind() {
        const QByteArray archive = KeyedArchiver::archivedData(everyKind());
        const auto read = KeyedUnarchiver::unarchive(archive, {});
        QVERIFY2(read.ok, qPrintable(read.error));
        const QVariantMap map = read.root.toMap();
        const QVariantMap expected = everyKind();
        QCOMPARE(map.keys(), expected.keys());
        for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
            const QVariant value = map.value(it.key());
            if (it.value().typeId() == qMetaTypeId<RangeValue>())
                QCOMPARE(value.value<RangeValue>(), it.value().value<RangeValue>());
            else if (it.value().typeId() == qMetaTypeId<IndexSet>())
                QCOMPARE(value.value<IndexSet>(), it.value().value<IndexSet>());
            else if (it.value().typeId() == QMetaType::QColor)
                QCOMPARE(value.value<QColor>().rgba64(), it.value().value<QColor>().rgba64());
            else if (it.value().typeId() == QMetaType::Double)
                QCOMPARE(value.toDouble(), it.value().toDouble());
            else if (it.value().typeId() == QMetaType::LongLong)
                QCOMPARE(value.toLongLong(), it.value().toLongLong());
            else
                QCOMPARE(value, it.value());
        }
        // Binary property lists of the same archive read the same.
        const auto binary = KeyedUnarchiver::unarchive(toBinary(archive), {});
        QVERIFY2(binary.ok, qPrintable(binary.error));
        QCOMPARE(binary.root.toMap().value(QStringLiteral("text")),
                 expected.value(QStringLiteral("text")));
        QCOMPARE(binary.root.toMap().value(QStringLiteral("ranges")).value<IndexSet>(),
                 twoRanges());
    }

    void layoutReadByAnotherReader() {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.plist"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(KeyedArchiver::archivedData(
            QVariantList{QStringLiteral("x"), QVariant::fromValue(RangeValue{1, 2})}));
        file.close();
        const QString script = QStringLiteral(R"(
o = a['$objects']
print(a['$archiver'], a['$version'], o[0])
print(cls(root), ref(root['$class'])['$classes'])
items = [ref(u) for u in root['NS.objects']]
print(items[0], cls(items[1]), items[1]['NS.rangeval.location'],
      items[1]['NS.rangeval.length'], items[1]['NS.special'])
)");
        QCOMPARE(runPlistScript(script, path),
                 QStringLiteral("NSKeyedArchiver 100000 $null\n"
                                "NSMutableArray ['NSMutableArray', 'NSArray', 'NSObject']\n"
                                "x NSValue 1 2 4\n"));
    }

    void readsPlatformEncodings() {
        // As the platform's archiver writes them: mutable strings and data wrapped, a range data
        // blob for an index set of two ranges, a device RGB colour without alpha.
        const QByteArray objects =
            "<dict><key>$class</key>" + uid(2) + "<key>NS.keys</key><array>" + uid(3) + uid(5) +
            uid(7) + uid(9) + "</array><key>NS.objects</key><array>" + uid(4) + uid(6) + uid(8) +
            uid(10) + "</array></dict>" + classDescription("NSDictionary") +
            "<string>s</string>"
            "<dict><key>$class</key>" +
            uid(11) +
            "<key>NS.string</key><string>wrapped</string></dict>"
            "<string>set</string>"
            "<dict><key>$class</key>" +
            uid(12) +
            "<key>NSRangeCount</key><integer>2</integer>"
            "<key>NSRangeData</key><data>AQKAAgM=</data></dict>"
            "<string>color</string>"
            "<dict><key>$class</key>" +
            uid(13) +
            "<key>NSColorSpace</key><integer>2</integer>"
            "<key>NSRGB</key><data>MSAwIDAA</data></dict>"
            "<string>when</string>"
            "<dict><key>$class</key>" +
            uid(14) + "<key>NS.time</key><real>0</real></dict>" +
            classDescription("NSMutableString") + classDescription("NSIndexSet") +
            classDescription("NSColor") + classDescription("NSDate");
        const auto read = KeyedUnarchiver::unarchive(archiveWith(objects), {});
        QVERIFY2(read.ok, qPrintable(read.error));
        const QVariantMap map = read.root.toMap();
        QCOMPARE(map.value(QStringLiteral("s")).toString(), QStringLiteral("wrapped"));
        IndexSet expected;
        expected.addIndexesInRange(1, 2);
        expected.addIndexesInRange(256, 3);
        QCOMPARE(map.value(QStringLiteral("set")).value<IndexSet>(), expected);
        QCOMPARE(map.value(QStringLiteral("color")).value<QColor>(), QColor(Qt::red));
        QCOMPARE(map.value(QStringLiteral("when")).toDateTime(),
                 QDateTime(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC));
    }

    void rejectsDamagedArchives_data() {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<QString>("error");
        const QByteArray good = KeyedArchiver::archivedData(QVariantList{1, 2});
        QTest::newRow("empty") << QByteArray()
                               << QStringLiteral("The data is not a property list.");
        QTest::newRow("truncated")
            << good.left(good.size() / 2) << QStringLiteral("The data is not a property list.");
        QTest::newRow("other plist") << QByteArray("<plist version=\"1.0\"><array/></plist>")
                                     << QStringLiteral("The property list is not a keyed archive.");
        QTest::newRow("root outside")
            << archiveWith("<string>a</string>", "9")
            << QStringLiteral("Reference 9 points outside the archive's 2 objects.");
        QTest::newRow("cycle") << archiveWith("<dict><key>$class</key>" + uid(2) +
                                              "<key>NS.objects</key><array>" + uid(1) +
                                              "</array></dict>" + classDescription("NSArray"))
                               << QStringLiteral("Object 1 refers to itself.");
        QTest::newRow("huge range count")
            << archiveWith("<dict><key>$class</key>" + uid(2) +
                           "<key>NSRangeCount</key><integer>4000000000</integer>"
                           "<key>NSRangeData</key><data>AQI=</data></dict>" +
                           classDescription("NSIndexSet"))
            << QStringLiteral("An index set claims 4000000000 ranges but holds 2 numbers.");
        QTest::newRow("unpaired dictionary")
            << archiveWith("<dict><key>$class</key>" + uid(2) + "<key>NS.keys</key><array>" +
                           uid(0) + "</array><key>NS.objects</key><array/></dict>" +
                           classDescription("NSDictionary"))
            << QStringLiteral("The dictionary object 1 has keys and values that do not pair.");
        QTest::newRow("reference of the wrong kind")
            << archiveWith("<dict><key>$class</key>" + uid(2) +
                           "<key>NS.objects</key><array><string>x</string></array></dict>" +
                           classDescription("NSArray"))
            << QStringLiteral("An object reference is not a reference.");
        QTest::newRow("unknown class")
            << archiveWith("<dict><key>$class</key>" + uid(2) + "</dict>" +
                           classDescription("NSWindow"))
            << QStringLiteral("Object 1 is of the unknown class \"NSWindow\".");
        QTest::newRow("class missing")
            << archiveWith("<dict><key>a</key><integer>1</integer></dict>")
            << QStringLiteral("Object 1 has no class.");
    }

    void rejectsDamagedArchives() {
        QFETCH(QByteArray, archive);
        QFETCH(QString, error);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("rejected")));
        const auto read = KeyedUnarchiver::unarchive(archive, {});
        QVERIFY(!read.ok);
        QCOMPARE(read.error, error);
    }

    void indexSetsMerge() {
        IndexSet set;
        set.addIndexesInRange(10, 5);
        set.addIndexesInRange(1, 2);
        set.addIndexesInRange(3, 7); // joins both
        QCOMPARE(set.ranges(), (QList<QPair<quint64, quint64>>{{1, 14}}));
        QVERIFY(set.containsIndex(14) && !set.containsIndex(15) && !set.containsIndex(0));
        set.addIndex(20);
        QCOMPARE(set.count(), quint64(15));
    }
};

QTEST_GUILESS_MAIN(TestKeyedArchive)
#include "tst_keyedarchive.moc"
