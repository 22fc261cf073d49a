#include "platform/RecentDocuments.h"
#include "support/Files.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString mimeType = u"application/x-hourfold-projects"_s;

} // namespace

class TestRecentDocuments : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QCoreApplication::setApplicationName(u"Hourfold"_s); }

    void aNewListHoldsTheFile() {
        QTemporaryDir folder;
        const QString file = folder.filePath(u"a.projects"_s);
        QVERIFY(writeFile(file, "x"));
        RecentDocuments recent(folder.filePath(u"recently-used.xbel"_s));
        QVERIFY(recent.add(file, mimeType, QDateTime(QDate(2026, 11, 22), QTime(7, 0), Qt::UTC)));
        QCOMPARE(recent.files(mimeType, 10), QStringList{file});
        const QByteArray written = readFile(folder.filePath(u"recently-used.xbel"_s));
        QVERIFY(written.contains("visited=\"2026-11-22T07:00:00.000000Z\""));
        QVERIFY(written.contains("<bookmark:application name=\"Hourfold\" exec=\"'hourfold "
                                 "%u'\" modified=\"2026-11-22T07:00:00.000000Z\" count=\"1\"/>"));
    }

    void othersBookmarksAreKeptAndOursCounted() {
        QTemporaryDir folder;
        const QString file = folder.filePath(u"b.projects"_s);
        const QString other = folder.filePath(u"c.projects"_s);
        QVERIFY(writeFile(file, "x"));
        QVERIFY(writeFile(other, "x"));
        const QString list = folder.filePath(u"recently-used.xbel"_s);
        // A list as another program leaves it: a bookmark of its own and one for a file of ours.
        QByteArray content = readFile(QStringLiteral(HOURFOLD_TEST_DATA "/recently-used.xbel"));
        content.replace("HREF", QUrl::fromLocalFile(file).toEncoded());
        QVERIFY(writeFile(list, content));
        RecentDocuments recent(list);
        QVERIFY(recent.add(other, mimeType, QDateTime(QDate(2026, 3, 1), QTime(9, 0), Qt::UTC)));
        QVERIFY(recent.add(file, mimeType, QDateTime(QDate(2026, 3, 2), QTime(9, 0), Qt::UTC)));
        QCOMPARE(recent.files(mimeType, 10), (QStringList{file, other}));
        QCOMPARE(recent.files(mimeType, 1), QStringList{file});
        const QByteArray written = readFile(list);
        QVERIFY(written.contains("<bookmark:application name=\"Editor\" exec=\"'editor %u'\" "
                                 "modified=\"2026-01-01T10:00:00.000000Z\" count=\"4\"/>"));
        QVERIFY(written.contains("added=\"2026-02-02T10:00:00.000000Z\""));
        QVERIFY(written.contains("count=\"3\""));
        QCOMPARE(written.count("<bookmark href"), 3);
    }

    void aDamagedListIsLeftAlone() {
        QTemporaryDir folder;
        const QString list = folder.filePath(u"recently-used.xbel"_s);
        QVERIFY(writeFile(list, "<xbel><bookmark"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^not touching"_s));
        QVERIFY(!RecentDocuments(list).add(folder.filePath(u"a.projects"_s), mimeType,
                                           QDateTime::currentDateTimeUtc()));
        QCOMPARE(readFile(list), QByteArray("<xbel><bookmark"));
    }
};

QTEST_GUILESS_MAIN(TestRecentDocuments)
#include "tst_recentdocuments.moc"
