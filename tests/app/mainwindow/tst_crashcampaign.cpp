#include "model/Entry.h"
#include "model/Project.h"
#include "model/ProjectFile.h"
#include "platform/ProjectFileLock.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;

// The desktop program is killed (SIGKILL) again and again while it changes and saves a document:
// the file on disk must always be one whole version, read by the strict parse, never smaller or
// with fewer items than the last one seen, and the lock must be free once the program is gone.
// HOURFOLD_SOAK_ROUNDS sets the number of rounds (50 by default; "make soak" runs 1,000).
class TestCrashCampaign : public QObject {
    Q_OBJECT

private slots:
    void killedAtRandomMoments() {
        const int rounds = qEnvironmentVariableIsSet("HOURFOLD_SOAK_ROUNDS")
                               ? qEnvironmentVariableIntValue("HOURFOLD_SOAK_ROUNDS")
                               : 50;
        const quint32 seed = QRandomGenerator::global()->generate();
        qInfo("%d rounds, seed %u", rounds, seed);
        QRandomGenerator random(seed);
        QTemporaryDir home;
        const QString file = home.filePath(u"work.projects"_s);
        // A file of some size, so that a kill often lands while it is being written.
        auto project = std::make_shared<Project>(u"Soak"_s, u""_s, 60.0f, 0, 0, 0, -1, u""_s);
        for (int i = 0; i < 3000; ++i) {
            auto entry = std::make_shared<Entry>();
            entry->setDate(u"24.11.2026"_s);
            entry->setTime(i);
            project->addEntry(entry);
        }
        QVERIFY(ProjectFile::save(file, {project}).ok);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(u"HOME"_s, home.path());
        env.insert(u"XDG_CONFIG_HOME"_s, home.filePath(u"config"_s));
        env.insert(u"XDG_DATA_HOME"_s, home.filePath(u"data"_s));
        env.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        qint64 lastSize = QFileInfo(file).size();
        qsizetype lastItems = 3000;
        int killedAfterSaves = 0;
        for (int round = 0; round < rounds; ++round) {
            QProcess driver;
            driver.setProcessEnvironment(env);
            driver.start(QStringLiteral(HOURFOLD_SOAK_DRIVER), {file, home.filePath(u"p.conf"_s)});
            QVERIFY(driver.waitForStarted());
            // Wait for a few saves (none in a quarter of the rounds), then kill at a random
            // moment of the next write.
            const int saves = int(random.bounded(4));
            for (int seen = 0; seen < saves;) {
                QVERIFY2(driver.waitForReadyRead(30000), driver.readAllStandardError().constData());
                while (driver.canReadLine() && driver.readLine().startsWith("saved"))
                    ++seen;
            }
            QThread::usleep(random.bounded(20000));
            driver.kill();
            QVERIFY(driver.waitForFinished(30000));
            killedAfterSaves += saves > 0;

            const ProjectFile::LoadResult read = ProjectFile::load(file);
            QVERIFY2(read.ok && !read.recovered,
                     qPrintable(u"round %1: %2"_s.arg(round).arg(read.error)));
            const qsizetype items = read.projects.first()->entries().size();
            const qint64 size = QFileInfo(file).size();
            QVERIFY2(items >= lastItems && size >= lastSize,
                     qPrintable(u"round %1: %2 items in %3 bytes after %4 in %5"_s.arg(round)
                                    .arg(items)
                                    .arg(size)
                                    .arg(lastItems)
                                    .arg(lastSize)));
            lastItems = items;
            lastSize = size;
            ProjectFileLock lock(file);
            // A kill between making the lock file and naming its owner in it leaves it empty for
            // the moment the lock takes to tell it has no owner.
            QVERIFY2(lock.lock(3000), qPrintable(lock.errorString()));
        }
        QVERIFY(lastItems > 3000);
        qInfo("%lld items after %d rounds, %d of them killed after saves",
              static_cast<long long>(lastItems), rounds, killedAfterSaves);
    }
};

QTEST_GUILESS_MAIN(TestCrashCampaign)
#include "tst_crashcampaign.moc"
