// Runs the real hourfold-cli on temporary project files, with a temporary home for its
// preferences and customers.

#include "model/ProjectFile.h"
#include "platform/ProjectFileLock.h"
#include "search/Filter.h"
#include "support/ExportSamples.h"
#include "support/Files.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>
#include <QtTest>

namespace {

struct Outcome {
    int exitCode = -1;
    QString out;
    QString err;
};

// Environment variables to set for one run; an empty value removes the variable.
using Environment = QHash<QString, QString>;

} // namespace

class TestCli : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QVERIFY(m_home.isValid());
        // This process reads the same preferences path as the child processes.
        const QProcessEnvironment env = environment();
        for (const QString &key : {u"HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s})
            qputenv(key.toUtf8().constData(), env.value(key).toUtf8());
        m_file = m_home.filePath(u"work.hourfold"_s);
    }

    void init() {
        // Customer 2 is hidden; no project of this document has it.
        writeCustomers({customer(u"ACME"_s, 7), customer(u"Zed"_s, 2, false)});
        QFile::remove(Preferences::defaultFilePath());
        QFile::remove(m_home.filePath(u"data/Hourfold3/filters.plist"_s));
        auto day = commented(dayEntry(u"03.03.2025"_s, 90), u"first"_s, true);
        day->setTags(u"a,b"_s);
        auto alpha = project(u"Alpha"_s, 60.0f, 7);
        alpha->setDescription(u"Main work"_s);
        for (const auto &item :
             ItemList{day,
                      commented(periodEntry(u"04.03.2025 09:00"_s, u"04.03.2025 10:30"_s),
                                u"line1\nline2"_s),
                      flatFee(u"05.03.2025"_s, 25.0f)})
            alpha->addEntry(item);
        QFile::remove(m_file);
        QVERIFY(ProjectFile::save(m_file, {alpha, project(u"Beta"_s)}).ok);
    }

    void check_data() {
        QTest::addColumn<QString>("damage");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<bool>("recoveredCopy");
        QTest::addColumn<QString>("warning"); // what later commands say about the file
        QTest::newRow("intact") << QString() << 0 << false << QString();
        QTest::newRow("bare ampersand") << u"&"_s << 3 << true << u"forgiving parse"_s;
        QTest::newRow("unreadable wage") << u"wage"_s << 3 << true << u"left empty"_s;
        QTest::newRow("missing file") << u"missing"_s << 2 << false << QString();
        QTest::newRow("empty file") << u"empty"_s << 2 << false << QString();
        QTest::newRow("not XML") << u"garbage"_s << 2 << false << QString();
    }

    void check() {
        QFETCH(QString, damage);
        QFETCH(int, exitCode);
        QDir folder(m_home.path());
        for (const QString &old : folder.entryList({u"work.hourfold.recovered-*"_s}))
            QVERIFY(folder.remove(old));
        if (damage == u"missing") {
            QVERIFY(QFile::remove(m_file));
        } else if (!damage.isEmpty()) {
            static const QRegularExpression wage(u"<wage>[^<]*</wage>"_s);
            const QByteArray bytes =
                damage == u"&"      ? readFile(m_file).replace(">first<", ">fir & st<")
                : damage == u"wage" ? QString::fromUtf8(readFile(m_file))
                                          .replace(wage, u"<wage>45.50 EUR</wage>"_s)
                                          .toUtf8()
                : damage == u"empty" ? QByteArray()
                                     : "garbage \x01 not XML";
            QVERIFY(writeFile(m_file, bytes));
        }
        const Outcome outcome = onFile({u"check"_s});
        QCOMPARE(outcome.exitCode, exitCode);
        if (exitCode == 0 || exitCode == 3)
            QVERIFY2(outcome.out.endsWith(u": 2 projects, 2 timed entries, 1 flat fees, 0 running, "
                                          u"0 paused\n"_s),
                     qPrintable(outcome.out));
        else
            QCOMPARE(outcome.err.count(u'\n'), 1);
        QTEST(!folder.entryList({u"work.hourfold.recovered-*"_s}).isEmpty(), "recoveredCopy");
        if (exitCode == 3) {
            // Listings still work on what could be read, and say what could not.
            const Outcome listed = onFile({u"projects"_s});
            QCOMPARE(listed.exitCode, 0);
            QVERIFY(listed.out.startsWith(u"Alpha "_s));
            QFETCH(QString, warning);
            QVERIFY2(listed.err.contains(warning), qPrintable(listed.err));
        }
    }

    // JSON output is compared as JSON: every field, whatever the layout.
    void listings_data() {
        QTest::addColumn<QStringList>("arguments"); // after --file FILE unless they name FILE
        QTest::addColumn<QString>("printed");
        const QString projectsJson = uR"([
    {"name": "Alpha", "description": "Main work", "customer": "ACME", "hourlyWage": 60,
     "totalDuration": 180, "totalDurationGross": 180, "totalWages": 205},
    {"name": "Beta", "description": "", "customer": null, "hourlyWage": 0, "totalDuration": 0,
     "totalDurationGross": 0, "totalWages": 0}])"_s;
        const QString entries =
            u"1  timed    03.03.2025                           01:30   00:00  [x]  a,b  first\n"
            u"2  timed    04.03.2025 09:00 - 04.03.2025 10:30  01:30   00:00  [ ]       line1 "
            u"line2\n"
            u"3  flatfee  05.03.2025                           $25.00  00:00  [ ]\n"_s;
        QTest::newRow("projects") << QStringList{u"projects"_s}
                                  << u"Alpha  03:00  $205.00  ACME\n"
                                     u"Beta   00:00  $0.00\n"_s;
        QTest::newRow("projects as JSON")
            << QStringList{u"--json"_s, u"projects"_s} << projectsJson;
        QTest::newRow("entries") << QStringList{u"entries"_s, u"Alpha"_s} << entries;
        QTest::newRow("entries as JSON")
            << QStringList{u"--json"_s, u"entries"_s, u"Alpha"_s} << uR"([
    {"index": 1, "kind": "timed", "hasPeriod": false, "day": "03.03.2025", "fromDate": "",
     "fromTime": "", "toDate": "", "toTime": "", "time": 90, "effectiveDuration": 90, "pauseTime": 0,
     "working": false, "paused": false, "checked": true, "tags": "a,b", "comment": "first",
     "amount": null},
    {"index": 2, "kind": "timed", "hasPeriod": true, "day": "", "fromDate": "04.03.2025",
     "fromTime": "09:00", "toDate": "04.03.2025", "toTime": "10:30", "time": 90,
     "effectiveDuration": 90, "pauseTime": 0, "working": false, "paused": false, "checked": false,
     "tags": "", "comment": "line1\nline2", "amount": null},
    {"index": 3, "kind": "flatfee", "hasPeriod": false, "day": "05.03.2025", "fromDate": "",
     "fromTime": "", "toDate": "", "toTime": "", "time": 0, "effectiveDuration": 0, "pauseTime": 0,
     "working": false, "paused": false, "checked": false, "tags": "", "comment": "", "amount": 25}])"_s;
        // The global options stand after the command and among its arguments as well.
        QTest::newRow("projects --json") << QStringList{u"projects"_s, u"--json"_s} << projectsJson;
        QTest::newRow("entries with --file and --wait after the project")
            << QStringList{u"entries"_s, u"Alpha"_s, u"--file"_s, u"FILE"_s, u"--wait=0"_s}
            << entries;
    }

    void listings() {
        QFETCH(QStringList, arguments);
        QFETCH(QString, printed);
        if (!arguments.contains(u"FILE"_s))
            arguments = QStringList{u"--file"_s, u"FILE"_s} + arguments;
        arguments.replaceInStrings(u"FILE"_s, m_file);
        const Outcome outcome = run(arguments);
        QCOMPARE(outcome.exitCode, 0);
        if (arguments.contains(u"--json"_s))
            QCOMPARE(QJsonDocument::fromJson(outcome.out.toUtf8()),
                     QJsonDocument::fromJson(printed.toUtf8()));
        else
            QCOMPARE(outcome.out, printed);
    }

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

    void fileComesFromPreferences() {
        const QString prefsPath = Preferences::defaultFilePath();
        writePreferences({{u"LastOpenFile"_s, m_file}});
        const QByteArray before = readFile(prefsPath);
        QVERIFY(!before.isEmpty());
        const Outcome listed = run({u"projects"_s});
        QCOMPARE(listed.exitCode, 0);
        QVERIFY(listed.out.startsWith(u"Alpha "_s));
        QCOMPARE(run({u"start"_s, u"Beta"_s}).exitCode, 0);
        QCOMPARE(reload().at(1)->entries().size(), 1);
        QCOMPARE(readFile(prefsPath), before);
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
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<bool>("roundEachEntry"); // up to a quarter of an hour
        QTest::addColumn<QStringList>("stored");  // day or from date, from time, to date, to time
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("effective");
        QTest::newRow("day and duration")
            << QStringList{u"--day"_s, u"06.03.2025"_s, u"--duration"_s, u"02:05"_s} << false
            << QStringList{u"06.03.2025"_s} << 125 << 125;
        QTest::newRow("period over midnight")
            << QStringList{u"--from"_s, u"06.03.2025 23:30"_s, u"--to"_s, u"07.03.2025 01:15"_s}
            << false << QStringList{u"06.03.2025"_s, u"23:30"_s, u"07.03.2025"_s, u"01:15"_s} << 105
            << 105;
        QTest::newRow("empty period")
            << QStringList{u"--from=06.03.2025 09:00"_s, u"--to=06.03.2025 09:00"_s} << false
            << QStringList{u"06.03.2025"_s, u"09:00"_s, u"06.03.2025"_s, u"09:00"_s} << 0 << 0;
        QTest::newRow("duration rounded by the project")
            << QStringList{u"--day"_s, u"06.03.2025"_s, u"--duration"_s, u"00:50"_s} << true
            << QStringList{u"06.03.2025"_s} << 50 << 60;
        QTest::newRow("period rounded by the project")
            << QStringList{u"--from"_s, u"06.03.2025 09:00"_s, u"--to"_s, u"06.03.2025 09:31"_s}
            << true << QStringList{u"06.03.2025"_s, u"09:00"_s, u"06.03.2025"_s, u"09:31"_s} << 31
            << 45;
    }

    void addEntry() {
        QFETCH(QStringList, options);
        QFETCH(bool, roundEachEntry);
        QFETCH(QStringList, stored);
        QFETCH(int, effective);
        if (roundEachEntry)
            roundBeta(2, 15, 1);
        const Outcome outcome = onFile(
            QStringList{u"add-entry"_s, u"Beta"_s, u"--comment"_s, u"note"_s, u"--tags"_s, u"t"_s} +
            options);
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(outcome.out,
                 u"Added entry 1 of \"Beta\" (%1)\n"_s.arg(StoredForms::durationText(effective)));
        const auto entry = firstOfBeta();
        QVERIFY(entry);
        QCOMPARE(entry->hasPeriod(), stored.size() == 4);
        const QStringList texts = entry->hasPeriod()
                                      ? QStringList{entry->fromDate(), entry->fromTime(),
                                                    entry->toDate(), entry->toTime()}
                                      : QStringList{entry->date()};
        QCOMPARE(texts, stored);
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

    void filters() {
        auto both = std::make_shared<Filter>();
        both->setName(u"Billable"_s);
        both->setProjectQuery(std::make_shared<MPSearchQuery>());
        both->setEntryQuery(std::make_shared<MPSearchQuery>());
        auto entries = std::make_shared<Filter>();
        entries->setName(u"Unchecked"_s);
        entries->setEntryQuery(std::make_shared<MPSearchQuery>());
        QVERIFY(writeFile(m_home.filePath(u"data/Hourfold3/filters.plist"_s),
                          Filter::archiveList({both, entries})));
        const Outcome text = run({u"filters"_s});
        QCOMPARE(text.exitCode, 0);
        QCOMPARE(text.out, u"Billable   projects, entries\n"
                           u"Unchecked  entries\n"_s);
        const QJsonArray json =
            QJsonDocument::fromJson(run({u"--json"_s, u"filters"_s}).out.toUtf8()).array();
        QCOMPARE(json.size(), 2);
        QCOMPARE(json[1].toObject(), (QJsonObject{{u"name"_s, u"Unchecked"_s},
                                                  {u"projectsQuery"_s, false},
                                                  {u"entriesQuery"_s, true}}));
    }

    // The project file keeps a project's timed entries before its flat fees, so only reports that
    // do not interleave the two (CSV, and text of timed entries alone) can come from the same
    // document.
    void exportMatchesGolden_data() {
        QTest::addColumn<bool>("html");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("golden");
        const QStringList sample{u"--projects"_s, u"Website,Empty"_s};
        const QStringList csv{u"--format"_s, u"csv"_s};
        const QStringList txt{u"--format"_s, u"txt"_s};
        const QStringList none{u"--project-fields="_s, u"--entry-fields="_s};
        QTest::newRow("all-on-lf.csv") << false << csv + sample << u"all-on-lf.csv"_s;
        QTest::newRow("all-off-crlf.csv")
            << false << csv + sample + none + QStringList{u"--line-ending"_s, u"crlf"_s}
            << u"all-off-crlf.csv"_s;
        QTest::newRow("entry-period-cr.csv")
            << false
            << csv + sample +
                   QStringList{u"--project-fields="_s, u"--entry-fields"_s, u"period"_s,
                               u"--line-ending=cr"_s}
            << u"entry-period-cr.csv"_s;
        QTest::newRow("project-hourly-wages-lf.csv")
            << false
            << csv + sample +
                   QStringList{u"--project-fields"_s, u"hourly-wages"_s, u"--entry-fields="_s}
            << u"project-hourly-wages-lf.csv"_s;
        const QStringList filtered{u"--projects"_s, u"Website,Hidden"_s};
        const QStringList applied{u"--apply-filter"_s, u"--search"_s, u"Layout"_s};
        QTest::newRow("filter-applied.csv")
            << false << csv + filtered + applied << u"filter-applied.csv"_s;
        QTest::newRow("filter-applied.txt")
            << false << txt + filtered + applied << u"filter-applied.txt"_s;
        // The search text is set but the filter not applied: the wages still follow it.
        QTest::newRow("filter-ignored.csv")
            << false << csv + filtered + QStringList{u"--search"_s, u"Layout"_s}
            << u"filter-ignored.csv"_s;
        const QStringList html{u"--format"_s,         u"html"_s,    u"--projects"_s,
                               u"Website,Internal"_s, u"--style"_s, u"Simple"_s};
        QTest::newRow("simple-report.html")
            << true << html + QStringList{u"--search"_s, u"Layout"_s} << u"simple-report.html"_s;
        QTest::newRow("simple-filtered.html")
            << true << html + applied << u"simple-filtered.html"_s;
    }

    void exportMatchesGolden() {
        QFETCH(bool, html);
        QFETCH(QStringList, options);
        QFETCH(QString, golden);
        if (QStandardPaths::findExecutable(u"faketime"_s).isEmpty())
            QSKIP("faketime is not installed (scripts/bootstrap installs it)");
        if (html)
            writeCustomers(ExportSamples::htmlCustomers());
        QVERIFY(ProjectFile::save(m_file, html ? ExportSamples::htmlDocument()
                                               : ExportSamples::textDocument())
                    .ok);
        // The golden files keep the items in the order given (no sorting column is chosen), with
        // short dates in the list.
        writePreferences({{u"listDateFormat"_s, 1}, {u"sortingColumn"_s, u"none"_s}});
        const QString output = m_home.filePath(html ? u"report"_s : u"report.out"_s);
        const Outcome outcome = onFile(QStringList{u"export"_s, u"--output"_s, output} + options,
                                       {{u"LC_TIME"_s, u"C"_s}}, u"2026-11-22 10:07:30"_s);
        QCOMPARE(outcome.err, QString());
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(outcome.out, u"Wrote \"%1\"\n"_s.arg(output));
        const QByteArray written = readFile(html ? output + u"/report.html"_s : output);
        QCOMPARE(written, readFile(ExportSamples::goldenPath(golden)));
        if (html)
            QVERIFY(QFile::exists(output + u"/images/customer1.jpg"_s));
    }

    void exportFollowsPreferencesAndLocale_data() {
        QTest::addColumn<QString>("language");
        QTest::addColumn<int>("dateStyle");
        QTest::addColumn<int>("firstDayOfWeek");
        QTest::addColumn<QString>("expected");
        // No project fields; then the timed entries and the (empty) flat fees with their headings.
        const QString fees = u"\nDay,Amount\n\n\n"_s;
        QTest::newRow("week from Sunday, short US dates")
            << u"en_US.UTF-8"_s << 1 << 0
            << u"\n\nDay,Duration\n11/22/26,00:30\n11/23/26,00:45\n"_s + fees;
        QTest::newRow("week from Monday, short US dates")
            << u"en_US.UTF-8"_s << 1 << 1 << u"\n\nDay,Duration\n11/23/26,00:45\n"_s + fees;
        QTest::newRow("week from Monday, long German dates")
            << u"de_DE.UTF-8"_s << 3 << 1
            << u"\n\nDay,Duration\n23. November 2026,00:45\n"_s + fees;
    }

    void exportFollowsPreferencesAndLocale() {
        QFETCH(QString, language);
        QFETCH(int, dateStyle);
        QFETCH(int, firstDayOfWeek);
        if (QStandardPaths::findExecutable(u"faketime"_s).isEmpty())
            QSKIP("faketime is not installed (scripts/bootstrap installs it)");
        auto week = project(u"Week"_s, 0.0f);
        // Saturday of the week before, Sunday and Monday; "now" is Tuesday 24 November 2026.
        week->addEntry(dayEntry(u"21.11.2026"_s, 15));
        week->addEntry(dayEntry(u"22.11.2026"_s, 30));
        week->addEntry(dayEntry(u"23.11.2026"_s, 45));
        QVERIFY(ProjectFile::save(m_file, {week}).ok);
        writePreferences({{u"listDateFormat"_s, dateStyle}, {u"firstDayOfWeek"_s, firstDayOfWeek}});
        const QString output = m_home.filePath(u"week.csv"_s);
        const Outcome outcome = onFile(
            {u"export"_s, u"--format"_s, u"csv"_s, u"--output"_s, output, u"--project-fields="_s,
             u"--entry-fields"_s, u"day,duration"_s, u"--apply-filter"_s, u"--quick"_s, u"week"_s},
            {{u"LANG"_s, language}}, u"2026-11-24 12:00:00"_s);
        QCOMPARE(outcome.exitCode, 0);
        QTEST(QString::fromUtf8(readFile(output)), "expected");
    }

    void exportWithoutDisplay_data() {
        QTest::addColumn<QString>("format");
        QTest::newRow("pdf") << u"pdf"_s;
        QTest::newRow("rtf") << u"rtf"_s;
    }

    void exportWithoutDisplay() {
        QFETCH(QString, format);
        const QString output = m_home.filePath(u"report."_s + format);
        const Outcome outcome = onFile({u"export"_s, u"--format"_s, format, u"--output"_s, output,
                                        u"--projects"_s, u"Alpha"_s},
                                       {{u"DISPLAY"_s, QString()},
                                        {u"WAYLAND_DISPLAY"_s, QString()},
                                        {u"QT_QPA_PLATFORM"_s, QString()}});
        QCOMPARE(outcome.exitCode, 0);
        const QByteArray written = readFile(output);
        if (format == u"rtf") {
            QVERIFY(written.startsWith("{\\rtf1"));
            QVERIFY(written.contains("Alpha"));
            QVERIFY(!written.contains("Beta"));
            return;
        }
        QVERIFY(written.startsWith("%PDF-"));
        QProcess text;
        text.start(u"pdftotext"_s, {output, u"-"_s});
        QVERIFY(text.waitForFinished(30000));
        const QString shown = QString::fromUtf8(text.readAllStandardOutput());
        QVERIFY2(shown.contains(u"Alpha"_s) && shown.contains(u"first"_s), qPrintable(shown));
        QVERIFY(!shown.contains(u"Beta"_s));
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

    void rejected_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("named");
        const auto row = [](const char *name, const QStringList &arguments, const QString &named) {
            QTest::newRow(name) << arguments << named;
        };
        row("entries unknown", {u"entries"_s, u"Nope"_s}, u"Nope"_s);
        row("start unknown", {u"start"_s, u"Nope"_s}, u"Nope"_s);
        row("pause unknown", {u"pause"_s, u"Nope"_s}, u"Nope"_s);
        row("stop unknown", {u"stop"_s, u"Nope"_s, u"1"_s}, u"Nope"_s);
        row("index too large", {u"stop"_s, u"Alpha"_s, u"9"_s}, u"9"_s);
        row("index not a number", {u"pause"_s, u"Alpha"_s, u"x"_s}, u"\"x\""_s);
        row("entry not running", {u"stop"_s, u"Alpha"_s, u"2"_s}, u"Entry 2"_s);
        row("nothing to resume", {u"resume"_s, u"Alpha"_s}, u"Alpha"_s);
        row("start without project", {u"start"_s}, u"start"_s);
        row("extra argument", {u"projects"_s, u"Alpha"_s}, u"projects"_s);
        row("unknown command", {u"frobnicate"_s}, u"frobnicate"_s);
        row("unknown option", {u"--verbose"_s, u"check"_s}, u"--verbose"_s);
        row("wait not a number", {u"projects"_s, u"--wait"_s, u"soon"_s}, u"--wait"_s);

        row("project name taken", {u"add-project"_s, u"Alpha"_s},
            u"A project named \"Alpha\" already exists.\n"_s);
        row("project without name", {u"add-project"_s, u""_s}, u"No project name entered."_s);
        row("unknown customer", {u"add-project"_s, u"New"_s, u"--customer"_s, u"Nobody"_s},
            u"Unknown customer \"Nobody\""_s);
        row("wage with a comma", {u"add-project"_s, u"New"_s, u"--wage"_s, u"12,5"_s}, u"12,5"_s);
        row("rounding out of range", {u"add-project"_s, u"New"_s, u"--round-what=3"_s},
            u"--round-what"_s);
        row("option twice", {u"add-project"_s, u"New"_s, u"--tags"_s, u"a"_s, u"--tags"_s, u"b"_s},
            u"--tags"_s);
        row("option without value", {u"add-project"_s, u"New"_s, u"--wage"_s}, u"--wage"_s);
        row("reversed period",
            {u"add-entry"_s, u"Alpha"_s, u"--from"_s, u"06.03.2025 10:00"_s, u"--to"_s,
             u"06.03.2025 09:59"_s},
            u"Date range error. The 'to' time must be after the 'from' time.\n"_s);
        row("day and period mixed",
            {u"add-entry"_s, u"Alpha"_s, u"--day"_s, u"06.03.2025"_s, u"--duration"_s, u"1:00"_s,
             u"--from"_s, u"06.03.2025 10:00"_s},
            u"--day and --duration, or --from and --to"_s);
        row("no such day",
            {u"add-entry"_s, u"Alpha"_s, u"--day"_s, u"30.02.2025"_s, u"--duration"_s, u"1:00"_s},
            u"30.02.2025"_s);
        row("minutes past 59",
            {u"add-entry"_s, u"Alpha"_s, u"--day"_s, u"03.03.2025"_s, u"--duration"_s, u"1:75"_s},
            u"1:75"_s);
        row("entry in unknown project",
            {u"add-entry"_s, u"Nope"_s, u"--day"_s, u"03.03.2025"_s, u"--duration"_s, u"1:00"_s},
            u"Nope"_s);
        const QStringList fee{u"add-fee"_s, u"Alpha"_s, u"--day"_s, u"03.03.2025"_s, u"--amount"_s};
        row("amount with a comma", fee + QStringList{u"12,5"_s}, u"12,5"_s);
        row("amount not finite", fee + QStringList{u"inf"_s}, u"inf"_s);
        row("amount missing", {u"add-fee"_s, u"Alpha"_s, u"--day"_s, u"03.03.2025"_s},
            u"--amount"_s);
        row("customer name taken", {u"customers"_s, u"add"_s, u"ACME"_s},
            u"A customer named \"ACME\" already exists.\n"_s);
        row("delete unknown customer", {u"customers"_s, u"delete"_s, u"Nobody"_s}, u"Nobody"_s);
        row("unknown customers action", {u"customers"_s, u"rename"_s, u"ACME"_s}, u"rename"_s);
        row("vCard without a card",
            {u"customers"_s, u"import"_s, QStringLiteral(HOURFOLD_TEST_DATA "/older-layout.xml")},
            u"no address card"_s);

        const QStringList csv{u"export"_s, u"--format"_s, u"csv"_s, u"--output"_s, u"OUT"_s};
        row("export without format", {u"export"_s, u"--output"_s, u"OUT"_s}, u"--format"_s);
        row("export unknown project", csv + QStringList{u"--projects"_s, u"Alpha,Nope"_s},
            u"\"Nope\""_s);
        row("export unknown field", csv + QStringList{u"--entry-fields"_s, u"day,colour"_s},
            u"\"colour\""_s);
        row("export unknown encoding", csv + QStringList{u"--encoding"_s, u"klingon"_s},
            u"There is no text encoding named \"klingon\".\n"_s);
        row("export unknown quick filter",
            csv + QStringList{u"--apply-filter"_s, u"--quick"_s, u"fortnight"_s}, u"fortnight"_s);
        row("export unknown saved filter",
            csv + QStringList{u"--apply-filter"_s, u"--filter"_s, u"Gone"_s}, u"\"Gone\""_s);
        row("export unknown style", csv + QStringList{u"--style"_s, u"Baroque"_s}, u"Baroque"_s);
        row("export line ending", csv + QStringList{u"--line-ending"_s, u"lfcr"_s},
            u"--line-ending"_s);
        row("convert without output", {u"convert"_s}, u"--output"_s);
    }

    void rejected() {
        QFETCH(QStringList, arguments);
        QFETCH(QString, named);
        const QString output = m_home.filePath(u"refused.out"_s);
        arguments.replaceInStrings(u"OUT"_s, output);
        const QByteArray before = readFile(m_file);
        const QByteArray customersBefore = readFile(customersPath());
        const Outcome outcome = onFile(arguments);
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(outcome.err.count(u'\n'), 1);
        QVERIFY2(outcome.err.contains(named), qPrintable(outcome.err));
        QVERIFY(outcome.out.isEmpty());
        QCOMPARE(readFile(m_file), before);
        QCOMPARE(readFile(customersPath()), customersBefore);
        QVERIFY(!QFile::exists(output));
    }

    // While another program holds the lock (the desktop program saving, say), a command waits
    // for it, 10 seconds unless --wait says otherwise; commands started together all land, one
    // after the other.
    void waitsForTheLock_data() {
        QTest::addColumn<QStringList>("wait");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("heldMs"); // how long the lock stays taken; 0: not taken
        QTest::addColumn<bool>("lands");
        QTest::newRow("20 commands at once") << QStringList() << 20 << 0 << true;
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

    void help() {
        const Outcome general = run({u"--help"_s});
        QCOMPARE(general.exitCode, 0);
        for (const QString &command :
             {u"check"_s, u"projects"_s, u"entries"_s, u"running"_s, u"start"_s, u"pause"_s,
              u"resume"_s, u"stop"_s, u"add-project"_s, u"add-entry"_s, u"add-fee"_s,
              u"customers"_s, u"filters"_s, u"export"_s, u"convert"_s}) {
            QVERIFY2(general.out.contains(u"  "_s + command + u' '), qPrintable(command));
            const Outcome one = run({command, u"--help"_s});
            QCOMPARE(one.exitCode, 0);
            QVERIFY(one.out.startsWith(u"Usage: hourfold-cli"_s));
            QVERIFY(one.out.contains(u' ' + command + u' ') ||
                    one.out.contains(u' ' + command + u'\n'));
        }
    }

    void completion_data() {
        QTest::addColumn<QStringList>("words"); // after the program's name; the last is completed
        QTest::addColumn<QStringList>("offered");
        QTest::newRow("commands") << QStringList{u"st"_s} << QStringList{u"start"_s, u"stop"_s};
        QTest::newRow("global options") << QStringList{u"--j"_s} << QStringList{u"--json"_s};
        QTest::newRow("project names") << QStringList{u"--file"_s, u"FILE"_s, u"start"_s, u""_s}
                                       << QStringList{u"Alpha"_s, u"Beta"_s};
        QTest::newRow("project name begun")
            << QStringList{u"--file=FILE"_s, u"entries"_s, u"B"_s} << QStringList{u"Beta"_s};
        QTest::newRow("options of a command")
            << QStringList{u"add-fee"_s, u"Alpha"_s, u"--a"_s} << QStringList{u"--amount"_s};
        QTest::newRow("values of an option")
            << QStringList{u"export"_s, u"--format"_s, u"p"_s} << QStringList{u"pdf"_s};
        QTest::newRow("customers actions")
            << QStringList{u"customers"_s, u"h"_s} << QStringList{u"hide"_s};
        QTest::newRow("project names after global options")
            << QStringList{u"--wait"_s, u"5"_s,    u"start"_s, u"--json"_s,
                           u"--file"_s, u"FILE"_s, u""_s}
            << QStringList{u"Alpha"_s, u"Beta"_s};
    }

    void completion() {
        QFETCH(QStringList, words);
        QFETCH(QStringList, offered);
        words.replaceInStrings(u"FILE"_s, m_file);
        QStringList quoted{u"hourfold-cli"_s};
        for (const QString &word : std::as_const(words))
            quoted << u"'"_s + word + u"'"_s;
        const QString script = u"source '" HOURFOLD_COMPLETION_PATH "'\n"
                               u"COMP_WORDS=(%1)\nCOMP_CWORD=%2\n_hourfold_cli\n"
                               u"printf '%s\\n' \"${COMPREPLY[@]}\"\n"_s.arg(quoted.join(u' '))
                                   .arg(words.size());
        QProcess bash;
        bash.setProcessEnvironment(environment());
        bash.start(u"bash"_s, {u"--norc"_s, u"-c"_s, script});
        QVERIFY(bash.waitForFinished(30000));
        QCOMPARE(bash.exitCode(), 0);
        QCOMPARE(QString::fromUtf8(bash.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts),
                 offered);
    }

private:
    // With a moment ("2026-11-22 10:07:30"), the program runs under faketime at that moment.
    Outcome run(const QStringList &arguments, const Environment &changes = {},
                const QString &moment = {}) const {
        QProcess process;
        process.setProcessEnvironment(environment(changes));
        if (moment.isEmpty())
            process.start(QStringLiteral(HOURFOLD_CLI_PATH), arguments);
        else
            process.start(u"faketime"_s,
                          QStringList{moment, QStringLiteral(HOURFOLD_CLI_PATH)} + arguments);
        Outcome outcome;
        if (!process.waitForFinished(30000))
            return outcome;
        outcome.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
        outcome.out = QString::fromUtf8(process.readAllStandardOutput());
        outcome.err = QString::fromUtf8(process.readAllStandardError());
        return outcome;
    }

    Outcome onFile(const QStringList &arguments, const Environment &changes = {},
                   const QString &moment = {}) const {
        return run(QStringList{u"--file"_s, m_file} + arguments, changes, moment);
    }

    QProcessEnvironment environment(const Environment &changes = {}) const {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(u"HOME"_s, m_home.path());
        env.insert(u"XDG_CONFIG_HOME"_s, m_home.filePath(u"config"_s));
        env.insert(u"XDG_DATA_HOME"_s, m_home.filePath(u"data"_s));
        env.insert(u"LANG"_s, u"en_US.UTF-8"_s);
        for (const char *name : {"LC_ALL", "LC_MONETARY", "LC_TIME", "LANGUAGE"})
            env.remove(QString::fromLatin1(name));
        env.insert(u"PATH"_s, QFileInfo(QStringLiteral(HOURFOLD_CLI_PATH)).absolutePath() + u':' +
                                  env.value(u"PATH"_s));
        for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
            if (it.value().isEmpty())
                env.remove(it.key());
            else
                env.insert(it.key(), it.value());
        }
        return env;
    }

    ProjectList reload() const {
        const ProjectFile::LoadResult result = ProjectFile::load(m_file);
        return result.ok ? result.projects : ProjectList();
    }

    std::shared_ptr<Entry> firstOfBeta() const {
        return std::dynamic_pointer_cast<Entry>(reload().at(1)->entries().value(0));
    }

    // Beta rounds as given from now on.
    void roundBeta(int what, int to, int type) const {
        ProjectList projects = reload();
        projects[1]->setRoundWhat(what);
        projects[1]->setRoundTo(to);
        projects[1]->setRoundType(type);
        QVERIFY(ProjectFile::save(m_file, projects).ok);
    }

    void writeCustomers(const QList<Customer::Pointer> &customers) const {
        QVERIFY(writeFile(customersPath(), Customer::archiveList(customers)));
    }

    void writePreferences(const QVariantMap &values) const {
        Preferences preferences(Preferences::defaultFilePath());
        for (auto it = values.cbegin(); it != values.cend(); ++it)
            preferences.setObject(it.value(), it.key());
        QVERIFY(preferences.synchronize());
    }

    QString customersPath() const { return m_home.filePath(u"data/Hourfold3/customers.plist"_s); }

    QTemporaryDir m_home;
    QString m_file;
};

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
