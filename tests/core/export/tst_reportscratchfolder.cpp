#include "export/ReportScratchFolder.h"
#include "platform/AtomicFile.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class TstReportScratchFolder : public QObject {
    Q_OBJECT

private slots:
    void recreatesAnEmptyPrivateFolder() {
        const QString folder = m_temp.filePath(u"hfexport-old"_s);
        QVERIFY(QDir().mkpath(folder + u"/images"_s));
        QVERIFY(AtomicFile::write(folder + u"/images/logo.png"_s, "old").ok);
        QVERIFY(AtomicFile::write(folder + u"/report.html"_s, "old").ok);
        QVERIFY(::chmod(QFile::encodeName(folder).constData(), 0777) == 0);
        const ReportScratchFolder::Result result = ReportScratchFolder::recreate(folder);
        QVERIFY2(result.ok, qPrintable(result.error));
        QVERIFY(QDir(folder).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
        struct stat status {};
        QCOMPARE(::lstat(QFile::encodeName(folder).constData(), &status), 0);
        QCOMPARE(status.st_mode & 07777, mode_t(0700));
        // A folder that does not exist yet is made too.
        const QString fresh = m_temp.filePath(u"hfexport-new"_s);
        QVERIFY(ReportScratchFolder::recreate(fresh).ok);
        QVERIFY(QFileInfo(fresh).isDir());
    }

    void refusesASymbolicLink() {
        const QString target = m_temp.filePath(u"elsewhere"_s);
        QVERIFY(QDir().mkpath(target));
        QVERIFY(AtomicFile::write(target + u"/precious.txt"_s, "keep").ok);
        const QString link = m_temp.filePath(u"hfexport-link"_s);
        QVERIFY(QFile::link(target, link));
        const ReportScratchFolder::Result result = ReportScratchFolder::recreate(link);
        QVERIFY(!result.ok);
        QVERIFY(result.error.contains(link));
        QVERIFY(QFileInfo(link).isSymLink());
        QVERIFY(QFileInfo::exists(target + u"/precious.txt"_s));
    }

    void refusesAFolderOfAnotherUser() {
        if (geteuid() != 0)
            QSKIP("Only root can give a folder to another user");
        const QString folder = m_temp.filePath(u"hfexport-other"_s);
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(AtomicFile::write(folder + u"/planted.html"_s, "x").ok);
        QVERIFY(::chown(QFile::encodeName(folder).constData(), 65534, 65534) == 0);
        QVERIFY(!ReportScratchFolder::recreate(folder).ok);
        QVERIFY(QFileInfo::exists(folder + u"/planted.html"_s));
    }

private:
    QTemporaryDir m_temp;
};

QTEST_GUILESS_MAIN(TstReportScratchFolder)
#include "tst_reportscratchfolder.moc"
