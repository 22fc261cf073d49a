// The command line's reading commands, its options, help and completion, on a real process.

#include "CliRun.h"
#include "search/Filter.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStandardPaths>

class TestCli : public QObject, protected CliRun {
    Q_OBJECT

private slots:
    void initTestCase() { setUpCase(); }
    void init() { setUp(); }

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
        QTest::addColumn<QString>("options"); // the row's name is the golden file's
        const QString csv = u"--format csv --projects Website,Empty"_s;
        const QString filtered = u" --projects Website,Hidden --search Layout"_s;
        const QString html = u"--format html --projects Website,Internal --style Simple "_s;
        QTest::newRow("all-on-lf.csv") << csv;
        QTest::newRow("all-off-crlf.csv")
            << csv + u" --project-fields= --entry-fields= --line-ending crlf"_s;
        QTest::newRow("entry-period-cr.csv")
            << csv + u" --project-fields= --entry-fields period --line-ending=cr"_s;
        QTest::newRow("project-hourly-wages-lf.csv")
            << csv + u" --project-fields hourly-wages --entry-fields="_s;
        QTest::newRow("filter-applied.csv") << u"--format csv --apply-filter"_s + filtered;
        QTest::newRow("filter-applied.txt") << u"--format txt --apply-filter"_s + filtered;
        // The search text is set but the filter not applied: the wages still follow it.
        QTest::newRow("filter-ignored.csv") << u"--format csv"_s + filtered;
        QTest::newRow("simple-report.html") << html + u"--search Layout"_s;
        QTest::newRow("simple-filtered.html") << html + u"--apply-filter --search Layout"_s;
    }
    void exportMatchesGolden() {
        QFETCH(QString, options);
        const QString golden = QString::fromUtf8(QTest::currentDataTag());
        const bool html = golden.endsWith(u".html"_s);
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
        const Outcome outcome =
            onFile(QStringList{u"export"_s, u"--output"_s, output} + options.split(u' '),
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
        for (int day : {21, 22, 23})
            week->addEntry(dayEntry(u"%1.11.2026"_s.arg(day), (day - 20) * 15));
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

    void rejected_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("named");
        // The arguments are separated by '|'.
        const auto row = [](const char *name, const QString &arguments, const QString &named) {
            QTest::newRow(name) << arguments.split(u'|') << named;
        };
        row("entries unknown", u"entries|Nope"_s, u"Nope"_s);
        row("start unknown", u"start|Nope"_s, u"Nope"_s);
        row("pause unknown", u"pause|Nope"_s, u"Nope"_s);
        row("stop unknown", u"stop|Nope|1"_s, u"Nope"_s);
        row("index too large", u"stop|Alpha|9"_s, u"9"_s);
        row("index not a number", u"pause|Alpha|x"_s, u"\"x\""_s);
        row("entry not running", u"stop|Alpha|2"_s, u"Entry 2"_s);
        row("nothing to resume", u"resume|Alpha"_s, u"Alpha"_s);
        row("start without project", u"start"_s, u"start"_s);
        row("extra argument", u"projects|Alpha"_s, u"projects"_s);
        row("unknown command", u"frobnicate"_s, u"frobnicate"_s);
        row("unknown option", u"--verbose|check"_s, u"--verbose"_s);
        row("wait not a number", u"projects|--wait|soon"_s, u"--wait"_s);
        row("project name taken", u"add-project|Alpha"_s,
            u"A project named \"Alpha\" already exists.\n"_s);
        row("project without name", u"add-project|"_s, u"No project name entered."_s);
        row("unknown customer", u"add-project|New|--customer|Nobody"_s,
            u"Unknown customer \"Nobody\""_s);
        row("wage with a comma", u"add-project|New|--wage|12,5"_s, u"12,5"_s);
        row("rounding out of range", u"add-project|New|--round-what=3"_s, u"--round-what"_s);
        row("option twice", u"add-project|New|--tags|a|--tags|b"_s, u"--tags"_s);
        row("option without value", u"add-project|New|--wage"_s, u"--wage"_s);
        row("reversed period", u"add-entry|Alpha|--from|06.03.2025 10:00|--to|06.03.2025 09:59"_s,
            u"Date range error. The 'to' time must be after the 'from' time.\n"_s);
        row("day and period mixed",
            u"add-entry|Alpha|--day|06.03.2025|--duration|1:00|--from|06.03.2025 10:00"_s,
            u"--day and --duration, or --from and --to"_s);
        row("no such day", u"add-entry|Alpha|--day|30.02.2025|--duration|1:00"_s, u"30.02.2025"_s);
        row("minutes past 59", u"add-entry|Alpha|--day|03.03.2025|--duration|1:75"_s, u"1:75"_s);
        row("entry in unknown project", u"add-entry|Nope|--day|03.03.2025|--duration|1:00"_s,
            u"Nope"_s);
        row("amount with a comma", u"add-fee|Alpha|--day|03.03.2025|--amount|12,5"_s, u"12,5"_s);
        row("amount not finite", u"add-fee|Alpha|--day|03.03.2025|--amount|inf"_s, u"inf"_s);
        row("amount missing", u"add-fee|Alpha|--day|03.03.2025"_s, u"--amount"_s);
        row("customer name taken", u"customers|add|ACME"_s,
            u"A customer named \"ACME\" already exists.\n"_s);
        row("delete unknown customer", u"customers|delete|Nobody"_s, u"Nobody"_s);
        row("unknown customers action", u"customers|rename|ACME"_s, u"rename"_s);
        row("vCard without a card", u"customers|import|" HOURFOLD_TEST_DATA "/older-layout.xml"_s,
            u"no address card"_s);
        const QString csv = u"export|--format|csv|--output|OUT|"_s;
        row("export without format", u"export|--output|OUT"_s, u"--format"_s);
        row("export unknown project", csv + u"--projects|Alpha,Nope"_s, u"\"Nope\""_s);
        row("export unknown field", csv + u"--entry-fields|day,colour"_s, u"\"colour\""_s);
        row("export unknown encoding", csv + u"--encoding|klingon"_s,
            u"There is no text encoding named \"klingon\".\n"_s);
        row("export unknown quick filter", csv + u"--apply-filter|--quick|fortnight"_s,
            u"fortnight"_s);
        row("export unknown saved filter", csv + u"--apply-filter|--filter|Gone"_s, u"\"Gone\""_s);
        row("export unknown style", csv + u"--style|Baroque"_s, u"Baroque"_s);
        row("export line ending", csv + u"--line-ending|lfcr"_s, u"--line-ending"_s);
        row("convert without output", u"convert"_s, u"--output"_s);
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

    void help() {
        const Outcome general = run({u"--help"_s});
        QCOMPARE(general.exitCode, 0);
        for (const QString &command :
             {u"check"_s, u"projects"_s, u"entries"_s, u"running"_s, u"start"_s, u"pause"_s,
              u"resume"_s, u"stop"_s, u"add-project"_s, u"add-entry"_s, u"add-fee"_s,
              u"customers"_s, u"filters"_s, u"export"_s, u"convert"_s, u"backups"_s, u"import"_s}) {
            QVERIFY2(general.out.contains(u"  "_s + command + u' '), qPrintable(command));
            const Outcome one = run({command, u"--help"_s});
            QCOMPARE(one.exitCode, 0);
            QVERIFY(one.out.startsWith(u"Usage: hourfold-cli"_s));
            QVERIFY(one.out.contains(u' ' + command + u' ') ||
                    one.out.contains(u' ' + command + u'\n'));
        }
    }

    void completion_data() {
        QTest::addColumn<QString>("words"); // after the program's name; the last is completed
        QTest::addColumn<QString>("offered");
        QTest::newRow("commands") << u"st"_s << u"start stop"_s;
        QTest::newRow("global options") << u"--j"_s << u"--json"_s;
        QTest::newRow("project names") << u"--file FILE start "_s << u"Alpha Beta"_s;
        QTest::newRow("project name begun") << u"--file=FILE entries B"_s << u"Beta"_s;
        QTest::newRow("options of a command") << u"add-fee Alpha --a"_s << u"--amount"_s;
        QTest::newRow("values of an option") << u"export --format p"_s << u"pdf"_s;
        QTest::newRow("customers actions") << u"customers h"_s << u"hide"_s;
        QTest::newRow("project names after global options")
            << u"--wait 5 start --json --file FILE "_s << u"Alpha Beta"_s;
    }
    void completion() {
        QFETCH(QString, words);
        QFETCH(QString, offered);
        const QStringList wordList = words.split(u' ');
        QStringList quoted{u"hourfold-cli"_s};
        for (const QString &word : wordList)
            quoted << u"'"_s + QString(word).replace(u"FILE"_s, m_file) + u"'"_s;
        const QString script = u"source '" HOURFOLD_COMPLETION_PATH "'\n"
                               u"COMP_WORDS=(%1)\nCOMP_CWORD=%2\n_hourfold_cli\n"
                               u"printf '%s\\n' \"${COMPREPLY[@]}\"\n"_s.arg(quoted.join(u' '))
                                   .arg(wordList.size());
        QProcess bash;
        bash.setProcessEnvironment(environment());
        bash.start(u"bash"_s, {u"--norc"_s, u"-c"_s, script});
        QVERIFY(bash.waitForFinished(30000));
        QCOMPARE(bash.exitCode(), 0);
        QCOMPARE(QString::fromUtf8(bash.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts),
                 offered.split(u' '));
    }
};

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
