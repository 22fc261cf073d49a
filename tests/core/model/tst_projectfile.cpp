#include "core/model/ModelFixtures.h"

#include "model/LocalTimeFormat.h"
#include "model/ProjectFile.h"
#include "model/ProjectXmlWriter.h"
#include "support/FileFailures.h"
#include "support/Files.h"

#include <QTest>
#include <clocale>

namespace {

// One of everything the file can hold: finished, day, running and paused entries, pauses, flat
// fees, attachments, and texts that need escaping.
ProjectList sampleProjects() {
    auto website = std::make_shared<Project>(u"Website & <Shop>"_s, u"Line one\nLine two"_s, 45.5f,
                                             2, 15, 0, 3, u"web,client"_s);
    website->setExpanded(true);
    website->setAttachments(QStringList{u"/home/u/brief.pdf"_s, u"https://example.org/a"_s});

    auto finished = periodEntry(u"07.03.2008 09:00"_s, u"07.03.2008 12:00"_s);
    finished->setPauseEntries(
        {std::make_shared<PauseEntry>(at(u"07.03.2008 10:15:42"_s), at(u"07.03.2008 10:30"_s))});
    finished->setChecked(true);
    finished->setComment(u"Layout\r\nreview"_s);
    finished->setTags(u"design,review"_s);
    finished->setAttachments(QStringList{u"/tmp/mock.png"_s});

    auto day = dayEntry(u"08.03.2008"_s, 90);
    day->setComment(u"Zeiterfassung – Größe 日本 😀"_s);

    auto running = periodEntry(u"22.11.2026 08:00"_s);
    running->setComment(u"\x01"
                        u"bell\x07 dropped\x1f"_s);

    auto paused = periodEntry(u"22.11.2026 07:00"_s);
    paused->setPauseEntries(
        {std::make_shared<PauseEntry>(at(u"22.11.2026 07:30"_s), at(u"22.11.2026 07:45"_s))});
    paused->setPausedAt(at(u"22.11.2026 09:30:42"_s));

    auto fee = flatFee(u"01.02.2008"_s, 12.5f);
    fee->setChecked(true);
    fee->setComment(u"Hosting"_s);
    fee->setTags(u""_s);

    for (const auto &entry : {finished, running, paused})
        entry->setDate(u""_s);
    for (const auto &item : ItemList{finished, day, running, paused, fee})
        website->addEntry(item);
    auto empty = std::make_shared<Project>(u"Empty"_s, u""_s, 0.0f, 0, 0, 0, -1, u""_s);
    auto big = std::make_shared<Project>(u"Big wage"_s, u""_s, 10000000.0f, 1, 5, 2, 7, u"x"_s);
    return {website, empty, big};
}

QByteArray golden() {
    return readFile(QStringLiteral(HOURFOLD_TEST_DATA "/current-layout.xml"));
}

QString olderLayoutPath() {
    return QStringLiteral(HOURFOLD_TEST_DATA "/older-layout.xml");
}

// The bytes with the first occurrence of from replaced; empty when there is none.
QByteArray replacedOnce(QByteArray bytes, const QByteArray &from, const QByteArray &to) {
    const qsizetype where = bytes.indexOf(from);
    return where < 0 ? QByteArray() : bytes.replace(where, from.size(), to);
}

} // namespace

class TestProjectFile : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QStandardPaths::setTestModeEnabled(true);
        LocalTimeFormat::setFormat(u"%H:%M"_s, u"C"_s);
        Clock::setNow(at(u"22.11.2026 10:00"_s));
    }
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"projects.xml"_s);
    }

    // Written in any C locale, numbers stay locale-free and read back the same.
    void writesTheCurrentLayout_data() {
        QTest::addColumn<QByteArray>("cLocale");
        QTest::newRow("C") << QByteArray("C");
        QTest::newRow("German") << QByteArray("de_DE.UTF-8");
    }
    void writesTheCurrentLayout() {
        QFETCH(QByteArray, cLocale);
        const QByteArray saved(std::setlocale(LC_ALL, nullptr));
        QVERIFY(std::setlocale(LC_ALL, cLocale.constData()));
        const QByteArray written = ProjectFile::makeXML(sampleProjects());
        const ProjectFile::LoadResult read = ProjectFile::read(written);
        std::setlocale(LC_ALL, saved.constData());
        if (qEnvironmentVariableIsSet("HOURFOLD_WRITE_GOLDEN"))
            writeFile(QStringLiteral(HOURFOLD_TEST_DATA "/current-layout.xml"), written);
        QCOMPARE(written, golden());
        QVERIFY(read.ok);
        QCOMPARE(read.projects[0]->hourlyWage(), 45.5f);
        QCOMPARE(static_cast<const FlatFeeEntry &>(*read.projects[0]->entries().last()).amount(),
                 12.5f);
    }

    // Every field read back is written again as it was: the golden file holds them all.
    void roundTripKeepsEveryField() {
        QVERIFY(ProjectFile::save(m_path, sampleProjects()).ok);
        const ProjectFile::LoadResult read = ProjectFile::load(m_path);
        QVERIFY2(read.ok, qPrintable(read.error));
        QVERIFY(!read.recovered);
        QCOMPARE(ProjectFile::makeXML(read.projects), golden());
        for (const auto &project : read.projects)
            for (const auto &item : project->entries())
                QCOMPARE(item->parent(), project.get());
    }

    void timersSurviveAReadBack() {
        const ProjectFile::LoadResult read = ProjectFile::read(golden());
        QVERIFY(read.ok);
        const auto &running = static_cast<const Entry &>(*read.projects[0]->entries()[2]);
        QVERIFY(running.isWorking() && !running.isPaused());
        QCOMPARE(running.comment(), u"bell dropped"_s);
        QCOMPARE(running.time(), 0); // the project rounds each entry: stored minutes count
        read.projects[0]->setRoundWhat(0);
        QCOMPARE(running.time(), 120);
        Clock::setNow(at(u"22.11.2026 10:30"_s));
        QCOMPARE(running.time(), 150);
        Clock::setNow(at(u"22.11.2026 10:00"_s));
        const auto &paused = static_cast<const Entry &>(*read.projects[0]->entries()[3]);
        QVERIFY(paused.isPaused());
        QCOMPARE(paused.pausedAt(), at(u"22.11.2026 09:30"_s));
        QCOMPARE(paused.pauseTime(), 15 + 30);
        const auto &finished = static_cast<const Entry &>(*read.projects[0]->entries()[0]);
        QCOMPARE(finished.pauseEntries()[0]->from(), at(u"07.03.2008 10:15"_s));
        QCOMPARE(finished.comment(), u"Layout\r\nreview"_s);
    }

    void readsDefaultsOfOptionalElements_data() {
        QTest::addColumn<QByteArray>("rounding");
        QTest::addColumn<QString>("rule"); // what/step/type
        QTest::newRow("none") << QByteArray() << u"0/0/0"_s;
        QTest::newRow("step without what")
            << QByteArray("<rounding><roundto>15</roundto><type>1</type></rounding>")
            << u"1/15/1"_s;
        QTest::newRow("zero step without what")
            << QByteArray("<rounding><roundto>0</roundto><type>2</type></rounding>") << u"0/0/2"_s;
        QTest::newRow("what given")
            << QByteArray("<rounding><what>2</what><roundto>10</roundto><type>0</type></rounding>")
            << u"2/10/0"_s;
    }
    void readsDefaultsOfOptionalElements() {
        QFETCH(QByteArray, rounding);
        const QByteArray file =
            "<?xml version=\"1.0\"?><!--1.5--><projects><project><name>P</name>" + rounding +
            "<entry><day>01.02.2008</day><time>30</time><comment>c</comment></entry>"
            "<FlatFeeEntry><day>02.02.2008</day><amount>2.5</amount><comment/></FlatFeeEntry>"
            "<entry><period><from><date>03.02.2008</date><time>09:00</time></from>"
            "<to><date>03.02.2008</date><time>09:45</time></to></period><time>45</time>"
            "<comment/></entry></project></projects>";
        const ProjectFile::LoadResult read = ProjectFile::read(file);
        QVERIFY2(read.ok, qPrintable(read.error));
        const Project &project = *read.projects[0];
        QTEST(
            u"%1/%2/%3"_s.arg(project.roundWhat()).arg(project.roundTo()).arg(project.roundType()),
            "rule");
        QCOMPARE(project.description(), u""_s);
        QCOMPARE(project.hourlyWage(), 0.0f);
        QCOMPARE(project.customer(), -1);
        QVERIFY(!project.expanded());
        // Timed entries first, then flat fees, each in file order.
        QCOMPARE(project.entries().size(), 3);
        QCOMPARE(project.entries()[0]->date(), u"01.02.2008"_s);
        QCOMPARE(static_cast<const Entry &>(*project.entries()[1]).storedMinutes(), 45);
        QVERIFY(project.entries()[2]->isFlatFee());
        QCOMPARE(project.entries()[2]->tags(), u""_s);
        QVERIFY(!project.entries()[0]->isChecked());
    }

    void convertsTheOlderLayout() {
        const ProjectFile::LoadResult read = ProjectFile::load(olderLayoutPath());
        QVERIFY2(read.ok, qPrintable(read.error));
        QVERIFY(read.converted);
        QVERIFY(!read.recovered);
        const Project &project = *read.projects[0];
        QCOMPARE(project.roundWhat(), 1);
        QVERIFY(project.entries()[0]->isChecked());
        // An empty start makes a day entry; a start without an end, a period entry that is not
        // running.
        QStringList entries;
        for (const auto &entry : project.entries())
            entries.append(entry->stringDescription());
        QCOMPARE(entries, (QStringList{u"45;05.01.2007;(null);(null);(null);(null);typed;0;0;"_s,
                                       u"90;;09:00;06.01.2007;10:30;06.01.2007;timed;0;1;"_s,
                                       u"0;;09:00;07.01.2007;;;open;0;1;"_s}));
        // The file on disk keeps its layout until the next save.
        QVERIFY(!readFile(olderLayoutPath()).contains("period"));
    }

    void refusesBrokenFiles_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("error");
        const QByteArray head = "<?xml version=\"1.0\"?>\n<!--1.5-->\n<projects>\n<project>\n";
        const QByteArray entry = "<entry>\n<day>01.02.2008</day>\n<time>30</time>\n";
        QTest::newRow("empty") << QByteArray() << u"The file is empty."_s;
        QTest::newRow("binary garbage") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\xff\xfe", 18)
                                        << u"Start tag expected, '<' not found (line 1)"_s;
        QTest::newRow("project without name")
            << head + "<wage>5</wage>\n</project>\n</projects>"
            << QStringLiteral("The element \"name\" is missing in project 1 (line 4). (line 4)");
        QTest::newRow("entry without comment")
            << head + "<name>A</name>\n" + entry + "</entry>\n</project>\n</projects>"
            << QStringLiteral("The element \"comment\" is missing in the entry at line 6 in "
                              "project \"A\". (line 6)");
        QTest::newRow("period without start")
            << head + "<name>A</name>\n<entry><period><to><date/><time/></to></period>"
                      "<time>1</time><comment/></entry></project></projects>"
            << QStringLiteral("The element \"period/from/date\" is missing in the entry at line 6 "
                              "in project \"A\". (line 6)");
        QTest::newRow("flat fee without amount")
            << head + "<name>A</name>\n<FlatFeeEntry><day>01.02.2008</day><comment/>"
                      "</FlatFeeEntry></project></projects>"
            << QStringLiteral("The element \"amount\" is missing in the flat fee at line 6 in "
                              "project \"A\". (line 6)");
        QTest::newRow("other root")
            << QByteArray("<?xml version=\"1.0\"?><!--1.5--><html><body/></html>")
            << QStringLiteral("The root element is \"html\", not \"projects\". (line 1)");
        QTest::newRow("older layout without day")
            << QByteArray("<projects><project><name>A</name>\n<entry><from>09:00</from>"
                          "<time>1</time><comment/></entry></project></projects>")
            << QStringLiteral("The element \"day\" is missing in the entry at line 2.");
    }
    void refusesBrokenFiles() {
        QFETCH(QByteArray, content);
        QVERIFY(writeFile(m_path, content));
        const ProjectFile::LoadResult read = ProjectFile::load(m_path);
        QVERIFY(!read.ok);
        QTEST(read.error, "error");
        QVERIFY(read.projects.isEmpty());
        // Nothing was written beside a file that could not be read.
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{u"projects.xml"_s});
        QCOMPARE(readFile(m_path), content);
    }

    // Inputs that once crashed the reader now read to projects that save and read back the same,
    // or to a message and nothing else.
    void readsOnceFatalInputs_data() { addFuzzRegressionRows(u"projectfile"_s); }
    void readsOnceFatalInputs() {
        QFETCH(QByteArray, input);
        const ProjectFile::LoadResult read = ProjectFile::read(input);
        if (!read.ok) {
            QVERIFY(!read.error.isEmpty());
            QVERIFY(read.projects.isEmpty());
            return;
        }
        const QByteArray saved = ProjectFile::makeXML(read.projects);
        const ProjectFile::LoadResult reread = ProjectFile::read(saved);
        QVERIFY(reread.ok && !reread.recovered);
        QCOMPARE(ProjectFile::makeXML(reread.projects), saved);
    }

    void repairsDamagedFiles_data() {
        QTest::addColumn<bool>("older");
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<int>("entries");
        QTest::addColumn<QString>("comment");
        QTest::addColumn<int>("leftOut");
        QTest::newRow("bare ampersand")
            << false << QByteArray("<comment>Layout&#13;\nreview</comment>")
            << QByteArray("<comment>R&D review</comment>") << 5 << u"R&D review"_s << 0;
        QTest::newRow("mismatched tag")
            << false << QByteArray("</comment>\n            <tags>design")
            << QByteArray("</coment>\n            <tags>design") << 5 << u"Layout\r\nreview"_s << 0;
        QTest::newRow("control character")
            << false << QByteArray("Layout&#13;") << QByteArray("Lay\x02out&#13;") << 5
            << u"Layout\r\nreview"_s << 0;
        QTest::newRow("cut off inside an entry")
            << false << QByteArray("<checked>0</checked>\n            <comment>Zeit")
            << QByteArray() << 1 << u"Layout\r\nreview"_s << 1;
        QTest::newRow("older layout, bare ampersand")
            << true << QByteArray("<comment>typed</comment>")
            << QByteArray("<comment>R&D typed</comment>") << 3 << u"R&D typed"_s << 0;
    }
    void repairsDamagedFiles() {
        QFETCH(bool, older);
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QByteArray damaged = older ? readFile(olderLayoutPath()) : golden();
        const qsizetype where = damaged.indexOf(from);
        QVERIFY(where >= 0);
        if (to.isEmpty())
            damaged.truncate(where); // the end of the file is lost
        else
            damaged.replace(where, from.size(), to);
        QVERIFY(writeFile(m_path, damaged));
        Clock::setNow(at(u"22.11.2026 10:00:05"_s));
        const ProjectFile::LoadResult read = ProjectFile::load(m_path);
        Clock::setNow(at(u"22.11.2026 10:00:00"_s));
        QVERIFY2(read.ok, qPrintable(read.error));
        QVERIFY(read.recovered);
        QCOMPARE(read.converted, older);
        QVERIFY(!read.damage.isEmpty());
        QTEST(read.itemsLeftOut, "leftOut");
        QTEST(int(read.projects[0]->entries().size()), "entries");
        QTEST(read.projects[0]->entries()[0]->comment(), "comment");
        QCOMPARE(read.backupPath, m_path + u".recovered-20261122-100005"_s);
        QCOMPARE(readFile(read.backupPath), damaged);
        QCOMPARE(readFile(m_path), damaged);
    }

    void keepsOneCopyOfEachDamagedOriginal() {
        const QByteArray first = golden().replace("Hosting", "R&D");
        QVERIFY(writeFile(m_path, first));
        const QString copy = ProjectFile::load(m_path).backupPath;
        QCOMPARE(ProjectFile::load(m_path).backupPath, copy); // identical: no second copy
        const QByteArray second = golden().replace("Hosting", "A&B");
        QVERIFY(writeFile(m_path, second));
        const QString other = ProjectFile::load(m_path).backupPath; // same second, other bytes
        QCOMPARE(other, copy + u"-2"_s);
        QCOMPARE(readFile(copy), first);
        QCOMPARE(readFile(other), second);
    }

    // A value that is not one is left empty and reported; the rest of the file reads as it was,
    // and the original is kept beside the file.
    void leavesUnreadableValuesEmpty_data() {
        QTest::addColumn<bool>("older");
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<QByteArray>("written"); // in the file written from the intact one
        QTest::addColumn<QByteArray>("rewritten");
        QTest::addColumn<QString>("report");
        const QString website = u"project \"Website & <Shop>\""_s;
        QTest::newRow("working")
            << false << QByteArray("<working>1</working>") << QByteArray("<working>yes</working>")
            << QByteArray("<working>1</working>") << QByteArray("<working>0</working>")
            << u"The element \"working\" of the entry at line 58 in %1 is not a whole number: "
               u"\"yes\"."_s.arg(website);
        QTest::newRow("wage") << false << QByteArray("<wage>45.5</wage>")
                              << QByteArray("<wage>45.50 EUR</wage>")
                              << QByteArray("<wage>45.5</wage>") << QByteArray("<wage>0</wage>")
                              << u"The element \"wage\" of %1 (line 4) is not a number: "
                                 u"\"45.50 EUR\"."_s.arg(website);
        QTest::newRow("minutes") << false << QByteArray("<time>90</time>")
                                 << QByteArray("<time>12x</time>") << QByteArray("<time>90</time>")
                                 << QByteArray("<time>0</time>")
                                 << u"The element \"time\" of the entry at line 48 in %1 is not a "
                                    u"whole number: \"12x\"."_s.arg(website);
        QTest::newRow("pause moment")
            << false << QByteArray("<from>2008-03-07 10:15:00 +0100</from>")
            << QByteArray("<from>yesterday</from>")
            << QByteArray("<from>2008-03-07 10:15:00 +0100</from>") << QByteArray("<from/>")
            << u"The element \"pauseentry/from\" of the entry at line 21 in %1 is not a moment: "
               u"\"yesterday\"."_s.arg(website);
        QTest::newRow("moment the timer was paused")
            << false << QByteArray("<date>22.11.2026</date>\n                <time>09:30")
            << QByteArray("<date>yesterday</date>\n                <time>09:30")
            << QByteArray("            <pausedAt>\n                <date>22.11.2026</date>\n"
                          "                <time>09:30</time>\n            </pausedAt>\n")
            << QByteArray()
            << u"The pause moment of the entry at line 77 in %1 is not a date and time: "
               u"\"yesterday 09:30\"."_s.arg(website);
        QTest::newRow("older layout, working")
            << true << QByteArray("<time>45</time>")
            << QByteArray("<working>yes</working><time>45</time>")
            << QByteArray("<working>0</working>") << QByteArray("<working>0</working>")
            << u"The element \"working\" of the entry at line 10 in project \"Legacy\" is not a "
               u"whole number: \"yes\"."_s;
        QTest::newRow("older layout, wage")
            << true << QByteArray("<wage>30</wage>") << QByteArray("<wage>45.50 EUR</wage>")
            << QByteArray("<wage>30</wage>") << QByteArray("<wage>0</wage>")
            << u"The element \"wage\" of project \"Legacy\" (line 3) is not a number: "
               u"\"45.50 EUR\"."_s;
        QTest::newRow("older layout, pause moment")
            << true << QByteArray("<time>90</time>")
            << QByteArray("<time>90</time><pause><pauseentry><from>yesterday</from>"
                          "<to>2007-01-06 10:00:00 +0100</to></pauseentry></pause>")
            << QByteArray("<time>90</time>\n            <pause/>")
            << QByteArray(
                   "<time>90</time>\n            <pause>\n                <pauseentry>\n"
                   "                    <from/>\n                    <to>2007-01-06 "
                   "10:00:00 +0100</to>\n                </pauseentry>\n            </pause>")
            << u"The element \"pauseentry/from\" of the entry at line 17 in project \"Legacy\" "
               u"is not a moment: \"yesterday\"."_s;
    }
    void leavesUnreadableValuesEmpty() {
        QFETCH(bool, older);
        QFETCH(QByteArray, written);
        QFETCH(QByteArray, rewritten);
        QFETCH(QString, report);
        const QByteArray intact = older ? readFile(olderLayoutPath()) : golden();
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        const QByteArray damaged = replacedOnce(intact, from, to);
        const QByteArray expected = replacedOnce(
            ProjectFile::makeXML(ProjectFile::read(intact).projects), written, rewritten);
        QVERIFY(!damaged.isEmpty() && !expected.isEmpty());
        QVERIFY(writeFile(m_path, damaged));
        QTest::ignoreMessage(
            QtWarningMsg, qPrintable(u"a value in %1 could not be read and is left empty: %2"_s.arg(
                              m_path, report)));
        Clock::setNow(at(u"22.11.2026 10:00:05"_s));
        const ProjectFile::LoadResult read = ProjectFile::load(m_path);
        Clock::setNow(at(u"22.11.2026 10:00:00"_s));
        QVERIFY2(read.ok, qPrintable(read.error));
        QVERIFY(!read.recovered);
        QCOMPARE(read.unreadable, QStringList{report});
        QCOMPARE(ProjectFile::makeXML(read.projects), expected);
        QCOMPARE(read.backupPath, m_path + u".recovered-20261122-100005"_s);
        QCOMPARE(readFile(read.backupPath), damaged);
    }

    void failedWritesKeepTheOldFile_data() {
        QTest::addColumn<bool>("readOnlyFolder");
        QTest::addColumn<QString>("reason");
        QTest::newRow("read-only folder") << true << u"Permission denied"_s;
        QTest::newRow("disk full") << false << u"File too large"_s;
    }
    void failedWritesKeepTheOldFile() {
        QFETCH(bool, readOnlyFolder);
        QFETCH(QString, reason);
        const QByteArray old = "<?xml version=\"1.0\"?>\n<!--1.5-->\n<projects/>\n";
        QVERIFY(writeFile(m_path, old));
        ProjectFile::SaveResult result;
        if (readOnlyFolder) {
            QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::ExeOwner);
            FileFailures::ObeyPermissions obey;
            result = ProjectFile::save(m_path, sampleProjects());
            QFile::setPermissions(m_folder->path(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        } else {
            FileFailures::LimitFileSize full(1024);
            result = ProjectFile::save(m_path, sampleProjects());
        }
        QVERIFY(!result.ok);
        QCOMPARE(result.error, QStringLiteral("Could not write \"%1\": %2").arg(m_path, reason));
        QCOMPARE(readFile(m_path), old);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{u"projects.xml"_s});
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path; // a file in a new folder for each test
};

QTEST_GUILESS_MAIN(TestProjectFile)
#include "tst_projectfile.moc"
