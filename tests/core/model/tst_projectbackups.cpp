#include "model/Clock.h"
#include "model/ProjectBackups.h"
#include "support/Files.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Project file bytes with this many entries, padded to at least this many bytes.
QByteArray fileOf(int entries, int size = 0) {
    QByteArray bytes = "<projects><project><name>P</name>";
    for (int i = 0; i < entries; ++i)
        bytes += i % 2 ? "<entry><time>30</time></entry>" : "<FlatFeeEntry amount=\"1\"/>";
    bytes += "</project></projects>";
    if (bytes.size() < size)
        bytes += QByteArray(size - bytes.size(), ' ');
    return bytes;
}

const QDateTime start(QDate(2026, 11, 2), QTime(9, 0), Qt::UTC);

} // namespace

class TestProjectBackups : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { Clock::reset(); }

    // A copy of the file on disk is kept when the last one is an hour old, or at once when the
    // save shrinks the file below half or drops more than a tenth of its entries.
    void copiesWhenDue_data() {
        QTest::addColumn<int>("minutesLater"); // after the first copy
        QTest::addColumn<int>("entries");      // of the next save; the file has 20 in 2000 bytes
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("copied");
        QTest::newRow("within the hour") << 59 << 20 << 2000 << false;
        QTest::newRow("an hour later") << 60 << 20 << 2000 << true;
        QTest::newRow("half the size") << 5 << 20 << 1000 << false;
        QTest::newRow("below half the size") << 5 << 20 << 999 << true;
        QTest::newRow("a tenth of the entries dropped") << 5 << 18 << 2000 << false;
        QTest::newRow("more than a tenth dropped") << 5 << 17 << 2000 << true;
    }
    void copiesWhenDue() {
        QFETCH(int, minutesLater);
        QFETCH(int, entries);
        QFETCH(int, size);
        QTemporaryDir home;
        const QString file = home.filePath(u"My Work.projects"_s);
        ProjectBackups backups(home.filePath(u"Backups"_s));
        QVERIFY(writeFile(file, fileOf(20, 2000)));
        Clock::setNow(start);
        QVERIFY(backups.beforeReplacing(home.filePath(u"new.projects"_s), {fileOf(1)}).isEmpty());
        const QString first = backups.beforeReplacing(file, {fileOf(20, 2000)});
        QCOMPARE(readFile(first), fileOf(20, 2000));
        QVERIFY(QFileInfo(first).fileName().startsWith(u"2026-11-02T090000.000Z My Work ("_s));
        Clock::advance(minutesLater * 60);
        const QString next = backups.beforeReplacing(file, {fileOf(entries, size)});
        QTEST(!next.isEmpty(), "copied");
        QCOMPARE(backups.copies().size(), next.isEmpty() ? 1 : 2);
        if (!next.isEmpty())
            QCOMPARE(readFile(next), fileOf(20, 2000));
        QCOMPARE(backups.copies().first().documentName, u"My Work"_s);
    }

    // Every copy of the 24 most recent hours that have one, the newest of each of the 30 most
    // recent days and of the 12 most recent months are kept; documents are pruned on their own.
    void rotation_data() {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("stepMinutes");
        QTest::addColumn<int>("kept");
        QTest::newRow("an hour apart, three days") << 72 << 60 << 24 + 2;
        QTest::newRow("20 minutes apart, two hours") << 6 << 20 << 6;
        QTest::newRow("a day apart, 60 days") << 60 << 24 * 60 << 30 + 1;
        QTest::newRow("a week apart, two years") << 104 << 7 * 24 * 60 << 30 + 5;
    }
    void rotation() {
        QFETCH(int, count);
        QFETCH(int, stepMinutes);
        QList<ProjectBackups::Copy> copies;
        for (int i = 0; i < count; ++i)
            copies.append(
                {u"a%1"_s.arg(i), u"A"_s, u"0000000a"_s, start.addSecs(i * stepMinutes * 60)});
        const QList<ProjectBackups::Copy> gone = ProjectBackups::toPrune(copies);
        QTEST(int(count - gone.size()), "kept");
        for (const auto &copy : gone)
            QVERIFY(copy.made <= copies.last().made.addDays(-1));
    }

    // The pruning runs on the document saved, and the folder is listed newest first.
    void pruningKeepsOtherDocuments() {
        QTemporaryDir home;
        ProjectBackups backups(home.path());
        const QString a = home.filePath(u"a/Work.projects"_s);
        const QString b = home.filePath(u"b/Work.projects"_s);
        QVERIFY(writeFile(a, fileOf(2)) && writeFile(b, fileOf(2)));
        Clock::setNow(start);
        QVERIFY(!backups.beforeReplacing(b, {fileOf(2)}).isEmpty());
        for (int day = 0; day < 32; ++day) {
            Clock::setNow(start.addDays(day + 1));
            QVERIFY(!backups.beforeReplacing(a, {fileOf(2)}).isEmpty());
        }
        const QList<ProjectBackups::Copy> copies = backups.copies();
        QCOMPARE(copies.size(), 30 + 1);
        QCOMPARE(copies.first().made, start.addDays(32));
        QCOMPARE(copies.last().made, start);
        QVERIFY(copies.first().documentKey != copies.last().documentKey);
    }
};

QTEST_GUILESS_MAIN(TestProjectBackups)
#include "tst_projectbackups.moc"
