#include "model/BackgroundWriter.h"
#include "platform/ContentHash.h"
#include "platform/ProjectFileLock.h"
#include "support/Files.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using Check = BackgroundWriter::Check;

namespace {
BackgroundWriter::Job job(const QString &path, QList<QByteArray> pieces, Check check = Check::None,
                          const FileIdentity &expected = {}) {
    return {path, std::move(pieces), check, expected};
}
} // namespace

class TestBackgroundWriter : public QObject {
    Q_OBJECT

private slots:
    // Jobs given while one is written are folded into the latest; results come in order.
    void writesTheLatestInOrder() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"projects.xml"_s);
        BackgroundWriter writer;
        auto lock = std::make_unique<ProjectFileLock>(path);
        QVERIFY(lock->lock());
        writer.submit(job(path, {"one"}));
        writer.submit(job(path, {"tw", "o"}));
        writer.submit(job(path, {"th", "re", "e"}));
        const quint64 last = writer.submit(job(path, {"fo", "ur"}));
        QVERIFY(!writer.isIdle());
        lock.reset();
        writer.waitForIdle();
        const QList<BackgroundWriter::Result> results = writer.takeResults();
        QVERIFY(!results.isEmpty() && results.size() <= 2);
        QCOMPARE(results.last().serial, last);
        QVERIFY(results.first().serial == 1 || results.size() == 1);
        QVERIFY(results.last().ok);
        QCOMPARE(readFile(path), "four");
        QVERIFY(!results.last().identity.differsFrom(path));
    }

    // Another program's change is never overwritten, also while the writer follows its own
    // writes; the user's choice to keep this version (the file as it is now) lets it through.
    void refusesAnotherProgramsChange() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"projects.xml"_s);
        BackgroundWriter writer;
        writer.submit(job(path, {"mine"}));
        writer.waitForIdle();
        QVERIFY(writer.takeResults().value(0).ok);
        QVERIFY(writeFile(path, "theirs!"));
        writer.submit(job(path, {"mine again"}, Check::LastWritten));
        writer.waitForIdle();
        const BackgroundWriter::Result refused = writer.takeResults().value(0);
        QVERIFY(!refused.ok);
        QCOMPARE(refused.error,
                 u"\"%1\" was changed by another program since it was opened or last saved. "
                 "Nothing was written: reload the file or save it under another name."_s.arg(path));
        QCOMPARE(readFile(path), "theirs!");
        writer.submit(job(path, {"kept"}, Check::Identity,
                          FileIdentity::of(path, ContentHash::of("theirs!"))));
        writer.waitForIdle();
        QVERIFY(writer.takeResults().value(0).ok);
        QCOMPARE(readFile(path), "kept");
    }

    // Quitting waits for what was handed over.
    void endsAfterTheLastWrite() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"projects.xml"_s);
        {
            BackgroundWriter writer;
            writer.submit(job(path, {"first"}));
            writer.submit(job(path, {"last"}));
        }
        QCOMPARE(readFile(path), "last");
    }
};

QTEST_GUILESS_MAIN(TestBackgroundWriter)
#include "tst_backgroundwriter.moc"
