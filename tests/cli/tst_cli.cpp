// Runs the real hourfold-cli on temporary project files, with a temporary home for its
// preferences and customers.

#include "model/Entry.h"
#include "model/FlatFeeEntry.h"
#include "model/ProjectFile.h"
#include "model/StoredForms.h"
#include "platform/Preferences.h"
#include "platform/ProjectFileLock.h"
#include "stores/Customer.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

struct Outcome {
    int exitCode = -1;
    QString out;
    QString err;
};

QByteArray readAll(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestCli : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void check_data();
    void check();
    void projectsText();
    void projectsJson();
    void entriesText();
    void entriesJson();
    void fileComesFromPreferences();
    void timerLifecycle();
    void startAndStopRoundToTheClock();
    void rejected_data();
    void rejected();
    void concurrentStartsAllKept();
    void waitsForTheDesktopProgramsLock();
    void help();

private:
    Outcome run(const QStringList &arguments) const;
    QProcessEnvironment environment() const;
    ProjectList reload() const;

    QTemporaryDir m_home;
    QString m_file;
};

QProcessEnvironment TestCli::environment() const {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(u"HOME"_s, m_home.path());
    env.insert(u"XDG_CONFIG_HOME"_s, m_home.filePath(u"config"_s));
    env.insert(u"XDG_DATA_HOME"_s, m_home.filePath(u"data"_s));
    env.insert(u"LANG"_s, u"en_US.UTF-8"_s);
    env.remove(u"LC_ALL"_s);
    env.remove(u"LC_MONETARY"_s);
    return env;
}

Outcome TestCli::run(const QStringList &arguments) const {
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(QStringLiteral(HOURFOLD_CLI_PATH), arguments);
    Outcome outcome;
    if (!process.waitForFinished(30000))
        return outcome;
    outcome.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    outcome.out = QString::fromUtf8(process.readAllStandardOutput());
    outcome.err = QString::fromUtf8(process.readAllStandardError());
    return outcome;
}

ProjectList TestCli::reload() const {
    const ProjectFile::LoadResult result = ProjectFile::load(m_file);
    return result.ok ? result.projects : ProjectList();
}

void TestCli::initTestCase() {
    QVERIFY(m_home.isValid());
    // This process reads the same preferences path as the child processes.
    const QProcessEnvironment env = environment();
    for (const QString &key : {u"HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s})
        qputenv(key.toUtf8().constData(), env.value(key).toUtf8());
    QVERIFY(QDir().mkpath(m_home.filePath(u"data/Hourfold3"_s)));
    auto customer = std::make_shared<Customer>();
    customer->setCustomerID(7);
    customer->setName(u"ACME"_s);
    QFile customers(m_home.filePath(u"data/Hourfold3/customers.plist"_s));
    QVERIFY(customers.open(QIODevice::WriteOnly));
    customers.write(Customer::archiveList({customer}));
    m_file = m_home.filePath(u"work.hourfold"_s);
}

void TestCli::init() {
    auto alpha =
        std::make_shared<Project>(u"Alpha"_s, u"Main work"_s, 60.0f, 0, 0, 0, 7, QString());
    auto day = std::make_shared<Entry>();
    day->setDate(u"03.03.2025"_s);
    day->setTime(90);
    day->setChecked(true);
    day->setTags(u"a,b"_s);
    day->setComment(u"first"_s);
    alpha->addEntry(day);
    auto period = std::make_shared<Entry>();
    period->setHasPeriod(true);
    period->setFromDate(u"04.03.2025"_s);
    period->setFromTime(u"09:00"_s);
    period->setToDate(u"04.03.2025"_s);
    period->setToTime(u"10:30"_s);
    period->setTime(90);
    period->setComment(u"line1\nline2"_s);
    alpha->addEntry(period);
    auto fee = std::make_shared<FlatFeeEntry>();
    fee->setDate(u"05.03.2025"_s);
    fee->setAmount(25.0f);
    alpha->addEntry(fee);
    auto beta = std::make_shared<Project>(u"Beta"_s, QString(), 0.0f, 0, 0, 0, -1, QString());
    QFile::remove(m_file);
    QVERIFY(ProjectFile::save(m_file, {alpha, beta}).ok);
}

void TestCli::check_data() {
    QTest::addColumn<QString>("damage");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<bool>("recoveredCopy");
    QTest::newRow("intact") << QString() << 0 << false;
    QTest::newRow("bare ampersand") << u"&"_s << 3 << true;
    QTest::newRow("missing file") << u"missing"_s << 2 << false;
    QTest::newRow("empty file") << u"empty"_s << 2 << false;
    QTest::newRow("not XML") << u"garbage"_s << 2 << false;
}

void TestCli::check() {
    QFETCH(QString, damage);
    QFETCH(int, exitCode);
    QFETCH(bool, recoveredCopy);
    QDir folder(m_home.path());
    for (const QString &old : folder.entryList({u"work.hourfold.recovered-*"_s}))
        QVERIFY(folder.remove(old));
    if (damage == u"missing") {
        QVERIFY(QFile::remove(m_file));
    } else if (!damage.isEmpty()) {
        QByteArray bytes = readAll(m_file);
        if (damage == u"&")
            bytes.replace(">first<", ">fir & st<");
        else if (damage == u"empty")
            bytes.clear();
        else
            bytes = "garbage \x01 not XML";
        QFile file(m_file);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }
    const Outcome outcome = run({u"--file"_s, m_file, u"check"_s});
    QCOMPARE(outcome.exitCode, exitCode);
    if (exitCode == 0 || exitCode == 3)
        QVERIFY2(outcome.out.endsWith(u": 2 projects, 2 timed entries, 1 flat fees, 0 running, "
                                      u"0 paused\n"_s),
                 qPrintable(outcome.out));
    else
        QCOMPARE(outcome.err.count(u'\n'), 1);
    QCOMPARE(!folder.entryList({u"work.hourfold.recovered-*"_s}).isEmpty(), recoveredCopy);
    if (exitCode == 3) {
        // Listings still work on what the forgiving parse read, and say so.
        const Outcome listed = run({u"--file"_s, m_file, u"projects"_s});
        QCOMPARE(listed.exitCode, 0);
        QVERIFY(listed.out.startsWith(u"Alpha "_s));
        QVERIFY2(listed.err.contains(u"forgiving"_s), qPrintable(listed.err));
    }
}

void TestCli::projectsText() {
    const Outcome outcome = run({u"--file"_s, m_file, u"projects"_s});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.out, u"Alpha  03:00  $205.00  ACME\n"
                          u"Beta   00:00  $0.00\n"_s);
}

void TestCli::projectsJson() {
    const Outcome outcome = run({u"--file"_s, m_file, u"--json"_s, u"projects"_s});
    QCOMPARE(outcome.exitCode, 0);
    const QJsonArray projects = QJsonDocument::fromJson(outcome.out.toUtf8()).array();
    QCOMPARE(projects.size(), 2);
    const QJsonObject alpha = projects[0].toObject();
    QCOMPARE(alpha[u"name"_s].toString(), u"Alpha"_s);
    QCOMPARE(alpha[u"description"_s].toString(), u"Main work"_s);
    QCOMPARE(alpha[u"customer"_s].toString(), u"ACME"_s);
    QCOMPARE(alpha[u"hourlyWage"_s].toDouble(), 60.0);
    QCOMPARE(alpha[u"totalDuration"_s].toInt(), 180);
    QCOMPARE(alpha[u"totalDurationGross"_s].toInt(), 180);
    QCOMPARE(alpha[u"totalWages"_s].toDouble(), 205.0);
    QVERIFY(projects[1].toObject()[u"customer"_s].isNull());
}

void TestCli::entriesText() {
    const Outcome outcome = run({u"--file"_s, m_file, u"entries"_s, u"Alpha"_s});
    QCOMPARE(outcome.exitCode, 0);
    const QStringList expected = {
        u"1  timed    03.03.2025                           01:30   00:00  [x]  a,b  first"_s,
        u"2  timed    04.03.2025 09:00 - 04.03.2025 10:30  01:30   00:00  [ ]       line1 line2"_s,
        u"3  flatfee  05.03.2025                           $25.00  00:00  [ ]"_s,
    };
    QCOMPARE(outcome.out.split(u'\n', Qt::SkipEmptyParts), expected);
}

void TestCli::entriesJson() {
    const Outcome outcome = run({u"--json"_s, u"--file"_s, m_file, u"entries"_s, u"Alpha"_s});
    QCOMPARE(outcome.exitCode, 0);
    const QJsonArray entries = QJsonDocument::fromJson(outcome.out.toUtf8()).array();
    QCOMPARE(entries.size(), 3);
    const QJsonObject day = entries[0].toObject();
    QCOMPARE(day[u"index"_s].toInt(), 1);
    QCOMPARE(day[u"kind"_s].toString(), u"timed"_s);
    QCOMPARE(day[u"hasPeriod"_s].toBool(), false);
    QCOMPARE(day[u"day"_s].toString(), u"03.03.2025"_s);
    QCOMPARE(day[u"checked"_s].toBool(), true);
    QCOMPARE(day[u"tags"_s].toString(), u"a,b"_s);
    QVERIFY(day[u"amount"_s].isNull());
    const QJsonObject period = entries[1].toObject();
    QCOMPARE(period[u"hasPeriod"_s].toBool(), true);
    QCOMPARE(period[u"fromDate"_s].toString(), u"04.03.2025"_s);
    QCOMPARE(period[u"fromTime"_s].toString(), u"09:00"_s);
    QCOMPARE(period[u"toTime"_s].toString(), u"10:30"_s);
    QCOMPARE(period[u"effectiveDuration"_s].toInt(), 90);
    QCOMPARE(period[u"working"_s].toBool(), false);
    QCOMPARE(period[u"comment"_s].toString(), u"line1\nline2"_s);
    const QJsonObject fee = entries[2].toObject();
    QCOMPARE(fee[u"kind"_s].toString(), u"flatfee"_s);
    QCOMPARE(fee[u"amount"_s].toDouble(), 25.0);
}

void TestCli::fileComesFromPreferences() {
    const QString prefsPath = Preferences::defaultFilePath();
    {
        Preferences preferences(prefsPath);
        preferences.setObject(m_file, u"LastOpenFile");
        QVERIFY(preferences.synchronize());
    }
    const QByteArray before = readAll(prefsPath);
    QVERIFY(!before.isEmpty());
    const Outcome listed = run({u"projects"_s});
    QCOMPARE(listed.exitCode, 0);
    QVERIFY(listed.out.startsWith(u"Alpha "_s));
    QCOMPARE(run({u"start"_s, u"Beta"_s}).exitCode, 0);
    QCOMPARE(reload().at(1)->entries().size(), 1);
    QCOMPARE(readAll(prefsPath), before);
    QVERIFY(QFile::remove(prefsPath));
}

void TestCli::timerLifecycle() {
    const auto runningJson = [this] {
        const Outcome outcome = run({u"--file"_s, m_file, u"--json"_s, u"running"_s});
        return QJsonDocument::fromJson(outcome.out.toUtf8()).array();
    };
    QCOMPARE(runningJson().size(), 0);
    const Outcome started = run({u"--file"_s, m_file, u"start"_s, u"Beta"_s});
    QCOMPARE(started.exitCode, 0);
    auto entry = std::dynamic_pointer_cast<Entry>(reload().at(1)->entries().value(0));
    QVERIFY(entry);
    QVERIFY(entry->isWorking());
    QVERIFY(entry->hasPeriod());
    QCOMPARE(entry->fromDate(), StoredForms::dateText(QDate::currentDate()));

    QJsonArray running = runningJson();
    QCOMPARE(running.size(), 1);
    QCOMPARE(running[0].toObject()[u"project"_s].toString(), u"Beta"_s);
    QCOMPARE(running[0].toObject()[u"index"_s].toInt(), 1);
    QCOMPARE(running[0].toObject()[u"paused"_s].toBool(), false);

    QCOMPARE(run({u"--file"_s, m_file, u"pause"_s, u"Beta"_s}).exitCode, 0);
    QVERIFY(reload().at(1)->entries().value(0)->isPaused());
    QCOMPARE(runningJson()[0].toObject()[u"paused"_s].toBool(), true);
    const Outcome text = run({u"--file"_s, m_file, u"running"_s});
    QCOMPARE(text.out, u"Beta  1  00:00  paused\n"_s);

    QCOMPARE(run({u"--file"_s, m_file, u"resume"_s, u"Beta"_s, u"1"_s}).exitCode, 0);
    entry = std::dynamic_pointer_cast<Entry>(reload().at(1)->entries().value(0));
    QVERIFY(!entry->isPaused());
    QVERIFY(entry->isWorking());
    QCOMPARE(entry->pauseEntries().size(), 1);

    QCOMPARE(run({u"--file"_s, m_file, u"stop"_s, u"Beta"_s}).exitCode, 0);
    entry = std::dynamic_pointer_cast<Entry>(reload().at(1)->entries().value(0));
    QVERIFY(!entry->isWorking());
    QCOMPARE(entry->toDate(), StoredForms::dateText(QDate::currentDate()));
    QVERIFY(!entry->toTime().isEmpty());
    QCOMPARE(runningJson().size(), 0);
}

void TestCli::startAndStopRoundToTheClock() {
    ProjectList projects = reload();
    projects[1]->setRoundWhat(1);
    projects[1]->setRoundTo(60);
    projects[1]->setRoundType(2); // down to the full hour
    QVERIFY(ProjectFile::save(m_file, projects).ok);
    QCOMPARE(run({u"--file=%1"_s.arg(m_file), u"start"_s, u"Beta"_s}).exitCode, 0);
    auto entry = std::dynamic_pointer_cast<Entry>(reload().at(1)->entries().value(0));
    QVERIFY(entry);
    QVERIFY2(entry->fromTime().endsWith(u":00"_s), qPrintable(entry->fromTime()));
    QCOMPARE(run({u"--file"_s, m_file, u"stop"_s, u"Beta"_s, u"1"_s}).exitCode, 0);
    entry = std::dynamic_pointer_cast<Entry>(reload().at(1)->entries().value(0));
    QVERIFY(!entry->isWorking());
    QVERIFY2(entry->toTime().endsWith(u":00"_s), qPrintable(entry->toTime()));
}

void TestCli::rejected_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("named");
    QTest::newRow("entries unknown") << QStringList{u"entries"_s, u"Nope"_s} << u"Nope"_s;
    QTest::newRow("start unknown") << QStringList{u"start"_s, u"Nope"_s} << u"Nope"_s;
    QTest::newRow("pause unknown") << QStringList{u"pause"_s, u"Nope"_s} << u"Nope"_s;
    QTest::newRow("stop unknown") << QStringList{u"stop"_s, u"Nope"_s, u"1"_s} << u"Nope"_s;
    QTest::newRow("index too large") << QStringList{u"stop"_s, u"Alpha"_s, u"9"_s} << u"9"_s;
    QTest::newRow("index not a number")
        << QStringList{u"pause"_s, u"Alpha"_s, u"x"_s} << u"\"x\""_s;
    QTest::newRow("entry not running")
        << QStringList{u"stop"_s, u"Alpha"_s, u"2"_s} << u"Entry 2"_s;
    QTest::newRow("nothing to resume") << QStringList{u"resume"_s, u"Alpha"_s} << u"Alpha"_s;
    QTest::newRow("start without project") << QStringList{u"start"_s} << u"start"_s;
    QTest::newRow("extra argument") << QStringList{u"projects"_s, u"Alpha"_s} << u"projects"_s;
    QTest::newRow("unknown command") << QStringList{u"frobnicate"_s} << u"frobnicate"_s;
    QTest::newRow("unknown option") << QStringList{u"--verbose"_s, u"check"_s} << u"--verbose"_s;
}

void TestCli::rejected() {
    QFETCH(QStringList, arguments);
    QFETCH(QString, named);
    const QByteArray before = readAll(m_file);
    const Outcome outcome = run(QStringList{u"--file"_s, m_file} + arguments);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.err.count(u'\n'), 1);
    QVERIFY2(outcome.err.contains(named), qPrintable(outcome.err));
    QVERIFY(outcome.out.isEmpty());
    QCOMPARE(readAll(m_file), before);
}

void TestCli::concurrentStartsAllKept() {
    constexpr int count = 6;
    std::vector<std::unique_ptr<QProcess>> processes;
    for (int i = 0; i < count; ++i) {
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment());
        process->start(QStringLiteral(HOURFOLD_CLI_PATH),
                       {u"--file"_s, m_file, u"start"_s, i % 2 ? u"Alpha"_s : u"Beta"_s});
        processes.push_back(std::move(process));
    }
    for (const auto &process : processes) {
        QVERIFY(process->waitForFinished(30000));
        QCOMPARE(process->exitCode(), 0);
    }
    const ProjectList projects = reload();
    QCOMPARE(projects.size(), 2);
    QCOMPARE(projects[0]->entries().size(), 3 + count / 2);
    QCOMPARE(projects[1]->entries().size(), count / 2);
}

void TestCli::waitsForTheDesktopProgramsLock() {
    const QByteArray before = readAll(m_file);
    auto lock = std::make_unique<ProjectFileLock>(m_file);
    QVERIFY(lock->lock());
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(QStringLiteral(HOURFOLD_CLI_PATH), {u"--file"_s, m_file, u"start"_s, u"Beta"_s});
    QVERIFY(process.waitForStarted());
    QVERIFY(!process.waitForFinished(700));
    QCOMPARE(readAll(m_file), before);
    lock.reset();
    QVERIFY(process.waitForFinished(30000));
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(reload().at(1)->entries().size(), 1);
}

void TestCli::help() {
    const Outcome general = run({u"--help"_s});
    QCOMPARE(general.exitCode, 0);
    for (const QString &command : {u"check"_s, u"projects"_s, u"entries"_s, u"running"_s,
                                   u"start"_s, u"pause"_s, u"resume"_s, u"stop"_s}) {
        QVERIFY2(general.out.contains(u"  "_s + command + u' '), qPrintable(command));
        const Outcome one = run({command, u"--help"_s});
        QCOMPARE(one.exitCode, 0);
        QVERIFY(one.out.startsWith(u"Usage: hourfold-cli"_s));
        QVERIFY(one.out.contains(command));
    }
}

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
