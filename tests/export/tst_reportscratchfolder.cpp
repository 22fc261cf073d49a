#include "export/ReportScratchFolder.h"
#include "platform/AtomicFile.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

class TstReportScratchFolder : public QObject {
    Q_OBJECT

private slots:
    void recreatesAnEmptyPrivateFolder();
    void refusesASymbolicLink();
    void refusesAFolderOfAnotherUser();

private:
    QTemporaryDir m_temp;
};

void TstReportScratchFolder::recreatesAnEmptyPrivateFolder() {
    const QString folder = m_temp.filePath(QStringLiteral("hfexport-old"));
    QVERIFY(QDir().mkpath(folder + QStringLiteral("/images")));
    QVERIFY(AtomicFile::write(folder + QStringLiteral("/images/logo.png"), "old").ok);
    QVERIFY(AtomicFile::write(folder + QStringLiteral("/report.html"), "old").ok);
    QVERIFY(::chmod(QFile::encodeName(folder).constData(), 0777) == 0);

    const ReportScratchFolder::Result result = ReportScratchFolder::recreate(folder);
    QVERIFY2(result.ok, qPrintable(result.error));
    QVERIFY(QDir(folder).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    struct stat status {};
    QCOMPARE(::lstat(QFile::encodeName(folder).constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777, mode_t(0700));

    // A folder that does not exist yet is made too.
    const QString fresh = m_temp.filePath(QStringLiteral("hfexport-new"));
    QVERIFY(ReportScratchFolder::recreate(fresh).ok);
    QVERIFY(QFileInfo(fresh).isDir());
}

void TstReportScratchFolder::refusesASymbolicLink() {
    const QString target = m_temp.filePath(QStringLiteral("elsewhere"));
    QVERIFY(QDir().mkpath(target));
    QVERIFY(AtomicFile::write(target + QStringLiteral("/precious.txt"), "keep").ok);
    const QString link = m_temp.filePath(QStringLiteral("hfexport-link"));
    QVERIFY(QFile::link(target, link));

    const ReportScratchFolder::Result result = ReportScratchFolder::recreate(link);
    QVERIFY(!result.ok);
    QVERIFY(result.error.contains(link));
    QVERIFY(QFileInfo(link).isSymLink());
    QVERIFY(QFileInfo::exists(target + QStringLiteral("/precious.txt")));
}

void TstReportScratchFolder::refusesAFolderOfAnotherUser() {
    if (geteuid() != 0)
        QSKIP("Only root can give a folder to another user");
    const QString folder = m_temp.filePath(QStringLiteral("hfexport-other"));
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(AtomicFile::write(folder + QStringLiteral("/planted.html"), "x").ok);
    QVERIFY(::chown(QFile::encodeName(folder).constData(), 65534, 65534) == 0);

    QVERIFY(!ReportScratchFolder::recreate(folder).ok);
    QVERIFY(QFileInfo::exists(folder + QStringLiteral("/planted.html")));
}

QTEST_GUILESS_MAIN(TstReportScratchFolder)
#include "tst_reportscratchfolder.moc"
