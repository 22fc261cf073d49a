#include "mainwindow/SingleInstance.h"

#include <QDBusConnection>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

// A second launch of the program hands its files to the copy that runs and ends. The test is
// the running copy; the second launch is the real program on the test's private session bus.
class TestSingleInstance : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        if (!QDBusConnection::sessionBus().isConnected())
            QSKIP("no session bus (the test runs under dbus-run-session)");
        QVERIFY(m_running.claim());
    }

    void secondLaunchHandsOverItsFiles_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QStringList>("handedOver");
        QTest::newRow("a file, made absolute")
            << QStringList{u"week.projects"_s}
            << QStringList{m_folder.filePath(u"week.projects"_s)};
        QTest::newRow("no file: just come to the front") << QStringList{} << QStringList{};
    }
    void secondLaunchHandsOverItsFiles() {
        QFETCH(QStringList, arguments);
        QSignalSpy requests(&m_running, &SingleInstance::openRequested);
        QProcess second;
        second.setWorkingDirectory(m_folder.path());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, m_folder.path());
        environment.insert(u"XDG_CONFIG_HOME"_s, m_folder.filePath(u"config"_s));
        environment.insert(u"XDG_DATA_HOME"_s, m_folder.filePath(u"data"_s));
        second.setProcessEnvironment(environment);
        second.start(QStringLiteral(HOURFOLD_PATH), arguments);
        QTRY_COMPARE_WITH_TIMEOUT(requests.size(), 1, 20000);
        QTRY_COMPARE_WITH_TIMEOUT(second.state(), QProcess::NotRunning, 20000);
        QCOMPARE(second.exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.exitCode(), 0);
        QTEST(requests.constFirst().constFirst().toStringList(), "handedOver");
        // The second launch wrote nothing of its own.
        QVERIFY(!QFileInfo::exists(m_folder.filePath(u"config/Hourfold/Hourfold3.conf"_s)));
    }

private:
    SingleInstance m_running;
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestSingleInstance)
#include "tst_singleinstance.moc"
