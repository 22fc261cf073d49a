#include "stores/IndexSet.h"
#include "stores/KeyedArchiver.h"
#include "stores/KeyedUnarchiver.h"
#include "stores/RangeValue.h"
#include "support/Files.h"
#include "support/PlistScript.h"

#include <QColor>
#include <QDateTime>
#include <QTemporaryDir>
#include <QTest>
#include <plist/plist.h>

using namespace Qt::StringLiterals;

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
        {u"bool"_s, true},
        {u"int"_s, qint64(-42)},
        {u"big"_s, qint64(1) << 40},
        {u"real"_s, 2.5},
        {u"text"_s, u"Größe 日本 <&>"_s},
        {u"empty"_s, u""_s},
        {u"data"_s, QByteArray("\0\x01\xff", 3)},
        {u"date"_s, QDateTime::fromMSecsSinceEpoch(1215000000500)},
        {u"list"_s, QVariantList{1, u"two"_s, QVariantList{}}},
        {u"map"_s, QVariantMap{{u"k"_s, 1}}},
        {u"range"_s, QVariant::fromValue(RangeValue{10, 10})},
        {u"one range"_s, QVariant::fromValue(IndexSet::withIndex(1))},
        {u"ranges"_s, QVariant::fromValue(twoRanges())},
        {u"color"_s, QColor::fromRgbF(1.0f, 0.5f, 0.25f, 1.0f)},
        {u"null"_s, QVariant()},
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

// An object whose class description is at the given UID.
QByteArray object(int classUid, const QByteArray &body) {
    return "<dict><key>$class</key>" + uid(classUid) + body + "</dict>";
}

// An archive of one object of the given class.
QByteArray oneObject(const char *className, const QByteArray &body) {
    return archiveWith(object(2, body) + classDescription(className));
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
        for (auto it = expected.cbegin(); it != expected.cend(); ++it)
            QCOMPARE(map.value(it.key()), it.value());
        QCOMPARE(map.keys(), expected.keys());
        // Binary property lists of the same archive read the same.
        const auto binary = KeyedUnarchiver::unarchive(toBinary(archive), {});
        QVERIFY2(binary.ok, qPrintable(binary.error));
        QCOMPARE(binary.root, read.root);
    }

    void layoutReadByAnotherReader() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"a.plist"_s);
        QVERIFY(writeFile(path, KeyedArchiver::archivedData(
                                    QVariantList{u"x"_s, QVariant::fromValue(RangeValue{1, 2})})));
        const QString script = uR"(
o = a['$objects']
print(a['$archiver'], a['$version'], o[0])
print(cls(root), ref(root['$class'])['$classes'])
items = [ref(u) for u in root['NS.objects']]
print(items[0], cls(items[1]), items[1]['NS.rangeval.location'],
      items[1]['NS.rangeval.length'], items[1]['NS.special'])
)"_s;
        QCOMPARE(runPlistScript(script, path),
                 u"NSKeyedArchiver 100000 $null\n"
                 u"NSMutableArray ['NSMutableArray', 'NSArray', 'NSObject']\n"
                 u"x NSValue 1 2 4\n"_s);
    }

    void readsPlatformEncodings() {
        // As the platform's archiver writes them: mutable strings and data wrapped, a range data
        // blob for an index set of two ranges, a device RGB colour without alpha.
        const QByteArray objects =
            object(2, "<key>NS.keys</key><array>" + uid(3) + uid(5) + uid(7) + uid(9) +
                          "</array><key>NS.objects</key><array>" + uid(4) + uid(6) + uid(8) +
                          uid(10) + "</array>") +
            classDescription("NSDictionary") + "<string>s</string>" +
            object(11, "<key>NS.string</key><string>wrapped</string>") + "<string>set</string>" +
            object(12, "<key>NSRangeCount</key><integer>2</integer>"
                       "<key>NSRangeData</key><data>AQKAAgM=</data>") +
            "<string>color</string>" +
            object(13, "<key>NSColorSpace</key><integer>2</integer>"
                       "<key>NSRGB</key><data>MSAwIDAA</data>") +
            "<string>when</string>" + object(14, "<key>NS.time</key><real>0</real>") +
            classDescription("NSMutableString") + classDescription("NSIndexSet") +
            classDescription("NSColor") + classDescription("NSDate");
        const auto read = KeyedUnarchiver::unarchive(archiveWith(objects), {});
        QVERIFY2(read.ok, qPrintable(read.error));
        IndexSet set;
        set.addIndexesInRange(1, 2);
        set.addIndexesInRange(256, 3);
        QCOMPARE(read.root, QVariant(QVariantMap{
                                {u"s"_s, u"wrapped"_s},
                                {u"set"_s, QVariant::fromValue(set)},
                                {u"color"_s, QColor(Qt::red)},
                                {u"when"_s, QDateTime(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC)}}));
    }

    void rejectsDamagedArchives_data() {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<QString>("error");
        const QByteArray good = KeyedArchiver::archivedData(QVariantList{1, 2});
        QTest::newRow("empty") << QByteArray() << u"The data is not a property list."_s;
        QTest::newRow("truncated")
            << good.left(good.size() / 2) << u"The data is not a property list."_s;
        QTest::newRow("other plist") << QByteArray("<plist version=\"1.0\"><array/></plist>")
                                     << u"The property list is not a keyed archive."_s;
        QTest::newRow("archiver name with a NUL")
            << QByteArray("<plist version=\"1.0\"><dict><key>$archiver</key><string>NSKeyed") +
                   '\0' + "Archiver</string></dict></plist>"
            << u"The property list is not a keyed archive."_s;
        QTest::newRow("root outside") << archiveWith("<string>a</string>", "9")
                                      << u"Reference 9 points outside the archive's 2 objects."_s;
        QTest::newRow("cycle") << oneObject("NSArray",
                                            "<key>NS.objects</key><array>" + uid(1) + "</array>")
                               << u"Object 1 refers to itself."_s;
        QTest::newRow("huge range count")
            << oneObject("NSIndexSet", "<key>NSRangeCount</key><integer>4000000000</integer>"
                                       "<key>NSRangeData</key><data>AQI=</data>")
            << u"An index set claims 4000000000 ranges but holds 2 numbers."_s;
        QTest::newRow("unpaired dictionary")
            << oneObject("NSDictionary", "<key>NS.keys</key><array>" + uid(0) +
                                             "</array><key>NS.objects</key><array/>")
            << u"The dictionary object 1 has keys and values that do not pair."_s;
        QTest::newRow("reference of the wrong kind")
            << oneObject("NSArray", "<key>NS.objects</key><array><string>x</string></array>")
            << u"An object reference is not a reference."_s;
        QTest::newRow("unknown class")
            << oneObject("NSWindow", {}) << u"Object 1 is of the unknown class \"NSWindow\"."_s;
        QTest::newRow("class missing")
            << archiveWith("<dict><key>a</key><integer>1</integer></dict>")
            << u"Object 1 has no class."_s;
    }
    void rejectsDamagedArchives() {
        QFETCH(QByteArray, archive);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"rejected"_s));
        const auto read = KeyedUnarchiver::unarchive(archive, {});
        QVERIFY(!read.ok);
        QTEST(read.error, "error");
    }

    // Inputs that once crashed the reader now read, or are rejected with a reason.
    void readsOnceFatalInputs_data() { addFuzzRegressionRows(u"keyedarchive"_s); }
    void readsOnceFatalInputs() {
        QFETCH(QByteArray, input);
        const auto read = KeyedUnarchiver::unarchive(input, {});
        QCOMPARE(read.error.isEmpty(), read.ok);
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
