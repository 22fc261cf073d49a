// The import command: its preview, that problems keep the file unchanged unless skipped, and what
// an import adds to the file and the customers.

#include "CliRun.h"

class TestCliImport : public QObject, protected CliRun {
    Q_OBJECT

    QString writeCsv() const {
        const QString path = m_home.filePath(u"toggl.csv"_s);
        writeFile(path, "User,Email,Client,Project,Task,Description,Billable,Start date,Start "
                        "time,End date,End time,Duration,Tags,Amount (EUR)\n"
                        "A,,ACME,Alpha,,x,No,2026-11-01,09:00:00,2026-11-01,10:00:00,01:00:00,,0\n"
                        "A,,Neu GmbH,Gamma,,y,No,2026-11-01,23:50:00,2026-11-02,00:10:00,00:20:00,"
                        "\"t 1, t2\",0\n"
                        "A,,,Gamma,,z,No,2026-11-03,10:00:00,2026-11-03,09:00:00,,,0\n");
        return path;
    }

private slots:
    void initTestCase() { setUpCase(); }
    void init() { setUp(); }

    void previewAndProblemsWriteNothing_data() {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("err");
        QTest::newRow("dry run") << QStringList{u"--dry-run"_s} << 0 << QString();
        QTest::newRow("problems not skipped")
            << QStringList() << 1
            << u"Nothing was imported: the source has 1 problem(s); give --skip-problems to "
               "import the rest\n"_s;
    }

    void previewAndProblemsWriteNothing() {
        QFETCH(QStringList, options);
        const QString csv = writeCsv();
        const QByteArray before = readFile(m_file);
        const Outcome outcome =
            onFile(QStringList{u"import"_s, u"--from"_s, u"toggl"_s, csv} + options);
        QTEST(outcome.exitCode, "exitCode");
        QTEST(outcome.err, "err");
        QCOMPARE(outcome.out, u"Import from Toggl (CSV): %1 into %2\n"
                              "Project  Customer  Entries  Hours  Running\n"
                              "Alpha    ACME      1        01:00  0\n"
                              "Gamma    Neu GmbH  1        00:20  0\n"
                              "Problems (left out):\n"
                              "  toggl.csv, line 4: ends before it starts\n"_s.arg(csv, m_file));
        QCOMPARE(readFile(m_file), before);
    }

    void importMergesAndMakesCustomers() {
        const Outcome outcome =
            onFile({u"import"_s, u"--from"_s, u"toggl"_s, writeCsv(), u"--skip-problems"_s});
        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(outcome.out.endsWith(u"Imported 2 entries into \"%1\"\n"_s.arg(m_file)));
        const ProjectList projects = reload();
        QCOMPARE(projects.size(), 3);
        QCOMPARE(projects[0]->totalDuration(), 90 + 90 + 60);
        QCOMPARE(projects[2]->name(), u"Gamma"_s);
        QCOMPARE(projects[2]->totalDuration(), 20);
        QCOMPARE(projects[2]->entries().value(0)->tags(), u"t 1,t2"_s);
        QCOMPARE(projects[2]->customer(), 8);
        QCOMPARE(Customer::unarchiveList(readFile(customersPath())).customers.size(), 3);
    }
};

QTEST_GUILESS_MAIN(TestCliImport)
#include "tst_cliimport.moc"
