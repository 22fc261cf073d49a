// The command line's commands that change the document: timers, additions, customers, the
// conversion, the order of the items, the lock shared with the desktop program.

#include "CliRun.h"
#include "platform/ProjectFileLock.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>

class TestCliChanges : public QObject, protected CliRun {
    Q_OBJECT

private slots:
    void initTestCase() { setUpCase(); }
    void init() { setUp(); }

    // The window sorts every project's items after opening the file by the sorting preferences,
    // flat fees among the timed entries; the listing, the indexes and the files written here
    // follow the same order. The file stores a flat fee, a day entry, a period entry and a paused
    // one, in that order.
    void entryOrder_data() {
        QTest::addColumn<bool>("ascending");
        QTest::addColumn<bool>("olderLayout");
        QTest::addColumn<QString>("listed"); // at 10.03.2008 12:00; the comment ends each line
        QTest::addColumn<int>("pausedIndex");
        const QStringList lines{
            u"timed    06.03.2008 08:00 -                   00:30   99:30  [ ]    paused\n"_s,
            u"timed    07.03.2008 09:00 - 07.03.2008 10:00  01:00   00:00  [ ]    period\n"_s,
            u"timed    08.03.2008                           01:30   00:00  [ ]    day\n"_s,
            u"flatfee  09.03.2008                           $25.00  00:00  [ ]    fee\n"_s};
        const auto numbered = [](const QStringList &rows) {
            QString text;
            for (int i = 0; i < rows.size(); ++i)
                text += QString::number(i + 1) + u"  "_s + rows[i];
            return text;
        };
        QTest::newRow("ascending") << true << false << numbered(lines) << 1;
        QTest::newRow("descending")
            << false << false << numbered({lines[3], lines[2], lines[1], lines[0]}) << 4;
        QTest::newRow("older layout")
            << true << true
            << u"1  timed    07.03.2008 09:00 - 07.03.2008 10:00  01:00   00:00  [ ]    period\n"
               u"2  timed    08.03.2008                           01:30   00:00  [ ]    day\n"
               u"3  flatfee  09.03.2008                           $25.00  00:00  [ ]    fee\n"_s
            << 0;
    }
    void entryOrder() {
        QFETCH(bool, ascending);
        QFETCH(bool, olderLayout);
        QFETCH(QString, listed);
        QFETCH(int, pausedIndex);
        if (QStandardPaths::findExecutable(u"faketime"_s).isEmpty())
            QSKIP("faketime is not installed (scripts/bootstrap installs it)");
        if (olderLayout) {
            QVERIFY(writeFile(m_file, R"(<?xml version="1.0" encoding="UTF-8"?>
<projects><project><name>Order</name>
<FlatFeeEntry><day>09.03.2008</day><amount>25</amount><comment>fee</comment></FlatFeeEntry>
<entry><day>08.03.2008</day><from></from><time>90</time><comment>day</comment></entry>
<entry><day>07.03.2008</day><from>09:00</from><to>10:00</to><time>60</time>
<comment>period</comment></entry>
</project></projects>
)"));
        } else {
            auto paused = periodEntry(u"06.03.2008 08:00"_s);
            paused->setPausedAt(at(u"06.03.2008 08:30"_s));
            auto order = project(u"Order"_s, 0.0f);
            for (const auto &item :
                 ItemList{commented(flatFee(u"09.03.2008"_s, 25.0f), u"fee"_s),
                          commented(dayEntry(u"08.03.2008"_s, 90), u"day"_s),
                          commented(periodEntry(u"07.03.2008 09:00"_s, u"07.03.2008 10:00"_s),
                                    u"period"_s),
                          commented(paused, u"paused"_s)})
                order->addEntry(item);
            QVERIFY(ProjectFile::save(m_file, {order}).ok);
        }
        writePreferences({{u"sortAscending"_s, ascending}});
        const QString now = u"2008-03-10 12:00:00"_s;
        const Outcome outcome = onFile({u"entries"_s, u"Order"_s}, {}, now);
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(outcome.out, listed);
        // The converted file keeps the items in the listed order.
        const QString output = m_home.filePath(u"ordered.xml"_s);
        QCOMPARE(onFile({u"convert"_s, u"--output"_s, output}).exitCode, 0);
        QStringList written;
        static const QRegularExpression comment(u"<comment>([^<]*)</comment>"_s);
        for (const auto &match : comment.globalMatch(QString::fromUtf8(readFile(output))))
            written << match.captured(1);
        QStringList shown;
        for (const QString &line : listed.split(u'\n', Qt::SkipEmptyParts))
            shown << line.section(u' ', -1);
        QCOMPARE(written, shown);
        if (pausedIndex)
            QCOMPARE(onFile({u"stop"_s, u"Order"_s, QString::number(pausedIndex)}, {}, now).out,
                     u"Stopped entry %1 of \"Order\"\n"_s.arg(pausedIndex));
    }

    void timerLifecycle() {
        const auto running = [this] {
            return QJsonDocument::fromJson(onFile({u"--json"_s, u"running"_s}).out.toUtf8())
                .array();
        };
        QCOMPARE(running().size(), 0);
        QCOMPARE(onFile({u"start"_s, u"Beta"_s}).exitCode, 0);
        auto entry = firstOfBeta();
        QVERIFY(entry && entry->isWorking() && entry->hasPeriod());
        QCOMPARE(entry->fromDate(), StoredForms::dateText(QDate::currentDate()));
        const QJsonObject started = running().at(0).toObject();
        QCOMPARE(started[u"project"_s].toString(), u"Beta"_s);
        QCOMPARE(started[u"index"_s].toInt(), 1);
        QCOMPARE(started[u"paused"_s].toBool(), false);
        QCOMPARE(onFile({u"pause"_s, u"Beta"_s}).exitCode, 0);
        QVERIFY(firstOfBeta()->isPaused());
        QCOMPARE(running()[0].toObject()[u"paused"_s].toBool(), true);
        QCOMPARE(onFile({u"running"_s}).out, u"Beta  1  00:00  paused\n"_s);
        QCOMPARE(onFile({u"resume"_s, u"Beta"_s, u"1"_s}).exitCode, 0);
        entry = firstOfBeta();
        QVERIFY(!entry->isPaused() && entry->isWorking());
        QCOMPARE(entry->pauseEntries().size(), 1);
        QCOMPARE(onFile({u"stop"_s, u"Beta"_s}).exitCode, 0);
        entry = firstOfBeta();
        QVERIFY(!entry->isWorking() && !entry->toTime().isEmpty());
        QCOMPARE(entry->toDate(), StoredForms::dateText(QDate::currentDate()));
        QCOMPARE(running().size(), 0);
    }
    void startAndStopRoundToTheClock() {
        roundBeta(1, 60, 2); // clock times down to the full hour
        QCOMPARE(run({u"--file=%1"_s.arg(m_file), u"start"_s, u"Beta"_s}).exitCode, 0);
        QVERIFY2(firstOfBeta()->fromTime().endsWith(u":00"_s),
                 qPrintable(firstOfBeta()->fromTime()));
        QCOMPARE(onFile({u"stop"_s, u"Beta"_s, u"1"_s}).exitCode, 0);
        QVERIFY(!firstOfBeta()->isWorking());
        QVERIFY2(firstOfBeta()->toTime().endsWith(u":00"_s), qPrintable(firstOfBeta()->toTime()));
    }

    void addProject_data() {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<std::shared_ptr<Project>>("added");
        // The project sheet's preset: the "hourlyWage" preference (4.5 here), rounding off, step 5.
        QTest::newRow("preset") << QStringList()
                                << std::make_shared<Project>(u"alpha"_s, u""_s, 4.5f, 0, 5, 0, -1,
                                                             u""_s);
        QTest::newRow("every option")
            << u"--description|Two\nlines|--wage=12.4|--round-what|2|--round-to|15|--round-type|1|"
               u"--customer|ACME|--tags|x,y"_s.split(u'|')
            << std::make_shared<Project>(u"alpha"_s, u"Two\nlines"_s, 12.4f, 2, 15, 1, 7, u"x,y"_s);
    }
    void addProject() {
        QFETCH(QStringList, options);
        QFETCH(std::shared_ptr<Project>, added);
        writePreferences({{u"hourlyWage"_s, 4.5}});
        // A name that differs from a taken one only in case is a name of its own.
        const Outcome outcome = onFile(QStringList{u"add-project"_s, u"alpha"_s} + options);
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(outcome.out, u"Added project \"alpha\"\n"_s);
        const ProjectList projects = reload();
        QCOMPARE(projects.size(), 3);
        QCOMPARE(ProjectFile::makeXML({projects.last()}), ProjectFile::makeXML({added}));
        // JSON gives the wage in its shortest decimal form, not the float's binary expansion.
        const QString json = onFile({u"--json"_s, u"projects"_s}).out;
        const QString expected =
            u"\"hourlyWage\": "_s + StoredForms::floatText(added->hourlyWage());
        QVERIFY2(json.contains(expected + u','), qPrintable(json));
    }

    void addEntry_data() {
        QTest::addColumn<QString>("options");     // separated by '|'
        QTest::addColumn<bool>("roundEachEntry"); // up to a quarter of an hour
        QTest::addColumn<QString>("stored");      // day or from date, from time, to date, to time
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("effective");
        QTest::newRow("day and duration")
            << u"--day|06.03.2025|--duration|02:05"_s << false << u"06.03.2025"_s << 125 << 125;
        QTest::newRow("period over midnight")
            << u"--from|06.03.2025 23:30|--to|07.03.2025 01:15"_s << false
            << u"06.03.2025|23:30|07.03.2025|01:15"_s << 105 << 105;
        QTest::newRow("empty period") << u"--from=06.03.2025 09:00|--to=06.03.2025 09:00"_s << false
                                      << u"06.03.2025|09:00|06.03.2025|09:00"_s << 0 << 0;
        QTest::newRow("duration rounded by the project")
            << u"--day|06.03.2025|--duration|00:50"_s << true << u"06.03.2025"_s << 50 << 60;
        QTest::newRow("period rounded by the project")
            << u"--from|06.03.2025 09:00|--to|06.03.2025 09:31"_s << true
            << u"06.03.2025|09:00|06.03.2025|09:31"_s << 31 << 45;
    }
    void addEntry() {
        QFETCH(QString, options);
        QFETCH(bool, roundEachEntry);
        QFETCH(QString, stored);
        QFETCH(int, effective);
        if (roundEachEntry)
            roundBeta(2, 15, 1);
        const Outcome outcome = onFile(
            QStringList{u"add-entry"_s, u"Beta"_s, u"--comment"_s, u"note"_s, u"--tags"_s, u"t"_s} +
            options.split(u'|'));
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(outcome.out,
                 u"Added entry 1 of \"Beta\" (%1)\n"_s.arg(StoredForms::durationText(effective)));
        const auto entry = firstOfBeta();
        QVERIFY(entry);
        QCOMPARE(entry->hasPeriod(), stored.contains(u'|'));
        const QString texts = u"%1|%2|%3|%4"_s.arg(entry->fromDate(), entry->fromTime(),
                                                   entry->toDate(), entry->toTime());
        QCOMPARE(entry->hasPeriod() ? texts : entry->date(), stored);
        QVERIFY(!entry->isWorking());
        QTEST(entry->storedMinutes(), "minutes");
        QCOMPARE(entry->effectiveDuration(), effective);
        QCOMPARE(entry->comment() + entry->tags(), u"notet"_s);
    }

    void addFeeReadsTheAmountLocaleFree() {
        // German writes 120,50 €, yet the amount is typed with a decimal point.
        const Outcome outcome =
            onFile({u"add-fee"_s, u"Beta"_s, u"--day"_s, u"07.03.2025"_s, u"--amount"_s, u"120.5"_s,
                    u"--comment"_s, u"Hosting"_s, u"--tags"_s, u"h"_s},
                   {{u"LANG"_s, u"de_DE.UTF-8"_s}});
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(outcome.out, u"Added flat fee 1 of \"Beta\" (120,50\u00a0€)\n"_s);
        const auto fee =
            std::dynamic_pointer_cast<FlatFeeEntry>(reload().at(1)->entries().value(0));
        QVERIFY(fee);
        QCOMPARE(fee->amount(), 120.5f);
        QCOMPARE((QStringList{fee->date(), fee->comment(), fee->tags()}),
                 (QStringList{u"07.03.2025"_s, u"Hosting"_s, u"h"_s}));
    }

    void customers() {
        QCOMPARE(run({u"customers"_s}).out, u"ACME  7  shown\n"
                                            u"Zed   2  hidden\n"_s);
        const QString card = m_home.filePath(u"people.vcf"_s);
        QVERIFY(writeFile(card, "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Doe;Jane;;;\r\nFN:Jane Doe\r\n"
                                "END:VCARD\r\nBEGIN:VCARD\r\nVERSION:3.0\r\nORG:Harbour Ltd\r\n"
                                "END:VCARD\r\n"));
        const QList<std::pair<QStringList, QString>> steps{
            {{u"add"_s, u"Bobby Tables"_s}, u"Added customer \"Bobby Tables\" (id 8)\n"_s},
            {{u"hide"_s, u"ACME"_s}, u"The projects of \"ACME\" are hidden\n"_s},
            {{u"show"_s, u"Zed"_s}, u"The projects of \"Zed\" are shown\n"_s},
            {{u"import"_s, card},
             u"Added customer \"Harbour Ltd\" (id 10)\nAdded customer \"Jane Doe\" (id 9)\n"_s},
        };
        for (const auto &[arguments, printed] : steps) {
            const Outcome outcome = run(QStringList{u"customers"_s} + arguments);
            QCOMPARE(outcome.exitCode, 0);
            QCOMPARE(outcome.out, printed);
        }
        QCOMPARE(QJsonDocument::fromJson(run({u"--json"_s, u"customers"_s}).out.toUtf8()),
                 QJsonDocument::fromJson(R"([{"name": "ACME", "id": 7, "visible": false},
                     {"name": "Bobby Tables", "id": 8, "visible": true},
                     {"name": "Harbour Ltd", "id": 10, "visible": true},
                     {"name": "Jane Doe", "id": 9, "visible": true},
                     {"name": "Zed", "id": 2, "visible": true}])"));
    }

    void deletingACustomerTakesItOffItsProjects() {
        ProjectList projects = reload();
        projects[1]->setCustomer(2);
        QVERIFY(ProjectFile::save(m_file, projects).ok);
        const Outcome outcome = onFile({u"customers"_s, u"delete"_s, u"ACME"_s});
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(outcome.out,
                 u"Deleted customer \"ACME\"\nProject \"Alpha\" has no customer now\n"_s);
        projects = reload();
        QCOMPARE(projects[0]->customer(), -1);
        QCOMPARE(projects[1]->customer(), 2);
        const Customer::ListReading left = Customer::unarchiveList(readFile(customersPath()));
        QCOMPARE(left.customers.size(), 1);
        QCOMPARE(left.customers[0]->name(), u"Zed"_s);
    }

    void convert_data() {
        QTest::addColumn<bool>("inPlace");
        QTest::newRow("to another file") << false;
        QTest::newRow("in place") << true;
    }
    void convert() {
        QFETCH(bool, inPlace);
        const QString older = QStringLiteral(HOURFOLD_TEST_DATA "/older-layout.xml");
        QVERIFY(QFile::remove(m_file));
        QVERIFY(QFile::copy(older, m_file));
        const QString output = inPlace ? m_file : m_home.filePath(u"converted.xml"_s);
        QFile::remove(m_home.filePath(u"converted.xml"_s));
        const Outcome outcome = onFile({u"convert"_s, u"--output"_s, output});
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(outcome.out, u"Wrote \"%1\" in the current layout\n"_s.arg(output));
        const ProjectFile::LoadResult read = ProjectFile::load(older);
        QCOMPARE(readFile(output), ProjectFile::makeXML(read.projects));
        QVERIFY(!ProjectFile::load(output).converted);
        if (!inPlace)
            QCOMPARE(readFile(m_file), readFile(older));
    }

    // A change keeps a copy of the file as it was in the support folder's Backups, at most once
    // an hour; backups lists the copies with what they hold.
    void changesKeepBackups() {
        const QDir folder(m_home.filePath(u"data/Hourfold3/Backups"_s));
        QDir(folder).removeRecursively();
        const QByteArray before = readFile(m_file);
        QCOMPARE(onFile({u"start"_s, u"Beta"_s}).exitCode, 0);
        QCOMPARE(onFile({u"stop"_s, u"Beta"_s}).exitCode, 0);
        const QStringList copies = folder.entryList(QDir::Files);
        QCOMPARE(copies.size(), 1);
        QCOMPARE(readFile(folder.filePath(copies.first())), before);
        const Outcome listed = run({u"--json"_s, u"backups"_s});
        QCOMPARE(listed.exitCode, 0);
        const QJsonObject copy = QJsonDocument::fromJson(listed.out.toUtf8()).array()[0].toObject();
        QCOMPARE(copy.value(u"path"_s).toString(), folder.filePath(copies.first()));
        QCOMPARE(copy.value(u"document"_s).toString(), u"work"_s);
        QCOMPARE(copy.value(u"projects"_s).toInt(), 2);
        QCOMPARE(copy.value(u"entries"_s).toInt(), 3);
        QCOMPARE(copy.value(u"minutes"_s).toInt(), 180);
    }

    // While another program holds the lock (the desktop program saving, say), a command waits
    // for it, 10 seconds unless --wait says otherwise; commands started together all land, one
    // after the other.
    void waitsForTheLock_data() {
        QTest::addColumn<QStringList>("wait");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("heldMs"); // how long the lock stays taken; 0: not taken
        QTest::addColumn<bool>("lands");
        // Twenty saves in a row can outlast the default wait on a busy machine.
        QTest::newRow("20 commands at once")
            << QStringList{u"--wait"_s, u"60"_s} << 20 << 0 << true;
        QTest::newRow("a save of 7 seconds") << QStringList() << 1 << 7000 << true;
        QTest::newRow("--wait 0 gives up at once")
            << QStringList{u"--wait"_s, u"0"_s} << 1 << 5000 << false;
    }
    void waitsForTheLock() {
        QFETCH(QStringList, wait);
        QFETCH(int, count);
        QFETCH(int, heldMs);
        QFETCH(bool, lands);
        const QByteArray before = readFile(m_file);
        std::unique_ptr<ProjectFileLock> lock;
        if (heldMs) {
            lock = std::make_unique<ProjectFileLock>(m_file);
            QVERIFY(lock->lock());
        }
        std::vector<std::unique_ptr<QProcess>> processes;
        for (int i = 0; i < count; ++i) {
            auto process = std::make_unique<QProcess>();
            process->setProcessEnvironment(environment());
            process->start(QStringLiteral(HOURFOLD_CLI_PATH),
                           QStringList{u"--file"_s, m_file, u"add-entry"_s, u"Beta"_s, u"--day"_s,
                                       u"06.03.2025"_s, u"--duration"_s, u"00:%1"_s.arg(i + 10)} +
                               wait);
            processes.push_back(std::move(process));
        }
        QProcess &first = *processes.front();
        if (heldMs) {
            // The command ends while the lock is still taken only when it gives up.
            QCOMPARE(first.waitForFinished(heldMs), !lands);
            QCOMPARE(readFile(m_file), before);
        }
        if (!lands) {
            QCOMPARE(first.exitCode(), 2);
            QCOMPARE(QString::fromUtf8(first.readAllStandardError()),
                     u"Another program (%1, process %2) is working on \"%3\".\n"_s
                         .arg(QCoreApplication::applicationName())
                         .arg(QCoreApplication::applicationPid())
                         .arg(m_file));
            return;
        }
        lock.reset();
        for (const auto &process : processes) {
            QVERIFY(process->waitForFinished(60000));
            QVERIFY2(process->exitCode() == 0, process->readAllStandardError().constData());
        }
        const ProjectList projects = reload();
        QSet<int> minutes;
        for (const auto &item : projects.at(1)->entries())
            minutes.insert(item->effectiveDuration());
        QCOMPARE(minutes.size(), count);
    }
};

QTEST_GUILESS_MAIN(TestCliChanges)
#include "tst_clichanges.moc"
