#include "model/Clock.h"
#include "model/Entry.h"
#include "model/FlatFeeEntry.h"
#include "model/LocalTimeFormat.h"
#include "model/ProjectFile.h"
#include "model/ProjectXmlWriter.h"
#include "support/FileFailures.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <clocale>
#include <libxml/parser.h>

namespace {

QDateTime at(const char *text) {
    return QDateTime::fromString(QString::fromLatin1(text), QStringLiteral("dd.MM.yyyy HH:mm:ss"));
}

std::shared_ptr<Entry> periodEntry(const char *fromDate, const char *fromTime) {
    auto entry = std::make_shared<Entry>();
    entry->setHasPeriod(true);
    entry->setDate(QStringLiteral(""));
    entry->setFromDate(QString::fromLatin1(fromDate));
    entry->setFromTime(QString::fromLatin1(fromTime));
    return entry;
}

// One of everything the file can hold: finished, day, running and paused entries, pauses, flat
// fees, attachments, and texts that need escaping.
ProjectList sampleProjects() {
    auto website = std::make_shared<Project>(QStringLiteral("Website & <Shop>"),
                                             QStringLiteral("Line one\nLine two"), 45.5f, 2, 15, 0,
                                             3, QStringLiteral("web,client"));
    website->setExpanded(true);
    website->setAttachments(
        QStringList{QStringLiteral("/home/u/brief.pdf"), QStringLiteral("https://example.org/a")});

    auto finished = periodEntry("07.03.2008", "09:00");
    finished->setToDate(QStringLiteral("07.03.2008"));
    finished->setToTime(QStringLiteral("12:00"));
    finished->setTime(180);
    finished->setPauseEntries(
        {std::make_shared<PauseEntry>(at("07.03.2008 10:15:42"), at("07.03.2008 10:30:00"))});
    finished->setChecked(true);
    finished->setComment(QStringLiteral("Layout\r\nreview"));
    finished->setTags(QStringLiteral("design,review"));
    finished->setAttachments(QStringList{QStringLiteral("/tmp/mock.png")});
    website->addEntry(finished);

    auto day = std::make_shared<Entry>();
    day->setDate(QStringLiteral("08.03.2008"));
    day->setTime(90);
    day->setComment(QStringLiteral("Zeiterfassung – Größe 日本 😀"));
    website->addEntry(day);

    auto running = periodEntry("22.11.2026", "08:00");
    running->setIsWorking(true);
    running->setComment(QStringLiteral("\x01"
                                       "bell\x07 dropped\x1f"));
    website->addEntry(running);

    auto paused = periodEntry("22.11.2026", "07:00");
    paused->setIsWorking(true);
    paused->setPauseEntries(
        {std::make_shared<PauseEntry>(at("22.11.2026 07:30:00"), at("22.11.2026 07:45:00"))});
    paused->setPausedAt(at("22.11.2026 09:30:42"));
    website->addEntry(paused);

    auto fee = std::make_shared<FlatFeeEntry>();
    fee->setDate(QStringLiteral("01.02.2008"));
    fee->setAmount(12.5f);
    fee->setChecked(true);
    fee->setComment(QStringLiteral("Hosting"));
    fee->setTags(QStringLiteral(""));
    website->addEntry(fee);

    auto empty = std::make_shared<Project>(QStringLiteral("Empty"), QStringLiteral(""), 0.0f, 0, 0,
                                           0, -1, QStringLiteral(""));
    auto big = std::make_shared<Project>(QStringLiteral("Big wage"), QStringLiteral(""),
                                         10000000.0f, 1, 5, 2, 7, QStringLiteral("x"));
    return {website, empty, big};
}

QByteArray readFile(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

QByteArray golden() {
    return readFile(QStringLiteral(HOURFOLD_TEST_DATA "/current-layout.xml"));
}

void compareItems(const ProjectItem &read, const ProjectItem &written) {
    QCOMPARE(read.kind(), written.kind());
    QCOMPARE(read.date(), written.date());
    // Control characters other than tab, line feed and carriage return are dropped on writing.
    QString comment = written.comment();
    comment.removeIf([](QChar c) { return c < u' ' && c != u'\t' && c != u'\n' && c != u'\r'; });
    QCOMPARE(read.comment(), comment);
    QCOMPARE(read.tags(), written.tags());
    QCOMPARE(read.isChecked(), written.isChecked());
    QCOMPARE(read.attachments(), written.attachments());
    if (read.isFlatFee()) {
        QCOMPARE(static_cast<const FlatFeeEntry &>(read).amount(),
                 static_cast<const FlatFeeEntry &>(written).amount());
        return;
    }
    const auto &r = static_cast<const Entry &>(read);
    const auto &w = static_cast<const Entry &>(written);
    QCOMPARE(r.hasPeriod(), w.hasPeriod());
    QCOMPARE(r.isWorking(), w.isWorking());
    QCOMPARE(r.fromDate(), w.fromDate());
    QCOMPARE(r.fromTime(), w.fromTime());
    QCOMPARE(r.storedMinutes(), w.storedMinutes());
    if (!w.isWorking()) {
        QCOMPARE(r.toDate(), w.toDate());
        QCOMPARE(r.toTime(), w.toTime());
    }
    QCOMPARE(r.pauseEntries().size(), w.pauseEntries().size());
    for (int i = 0; i < w.pauseEntries().size(); ++i) {
        QCOMPARE(r.pauseEntries()[i]->from(), w.pauseEntries()[i]->from());
        QCOMPARE(r.pauseEntries()[i]->to(), w.pauseEntries()[i]->to());
    }
    QCOMPARE(r.time(), w.time());
    QCOMPARE(r.effectiveDuration(), w.effectiveDuration());
}

} // namespace

class TestProjectFile : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QStandardPaths::setTestModeEnabled(true);
        LocalTimeFormat::setFormat(QStringLiteral("%H:%M"), QStringLiteral("C"));
        Clock::setNow(at("22.11.2026 10:00:00"));
    }

    void writesTheCurrentLayout() {
        if (qEnvironmentVariableIsSet("HOURFOLD_WRITE_GOLDEN"))
            writeFile(QStringLiteral(HOURFOLD_TEST_DATA "/current-layout.xml"),
                      ProjectFile::makeXML(sampleProjects()));
        QCOMPARE(ProjectFile::makeXML(sampleProjects()), golden());
    }

    void numbersDoNotFollowTheLocale() {
        const char *previous = std::setlocale(LC_ALL, nullptr);
        const QByteArray saved(previous);
        QVERIFY(std::setlocale(LC_ALL, "de_DE.UTF-8"));
        const QByteArray written = ProjectFile::makeXML(sampleProjects());
        const ProjectFile::LoadResult read = ProjectFile::read(written);
        std::setlocale(LC_ALL, saved.constData());
        QCOMPARE(written, golden());
        QVERIFY(read.ok);
        QCOMPARE(read.projects[0]->hourlyWage(), 45.5f);
        QCOMPARE(static_cast<const FlatFeeEntry &>(*read.projects[0]->entries().last()).amount(),
                 12.5f);
    }

    void roundTripKeepsEveryField() {
        const ProjectList written = sampleProjects();
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("projects.xml"));
        QVERIFY(ProjectFile::save(path, written).ok);
        const ProjectFile::LoadResult read = ProjectFile::load(path);
        QVERIFY2(read.ok, qPrintable(read.error));
        QVERIFY(!read.recovered);
        QCOMPARE(read.projects.size(), written.size());
        for (int p = 0; p < written.size(); ++p) {
            const Project &r = *read.projects[p];
            const Project &w = *written[p];
            QCOMPARE(r.name(), w.name());
            QCOMPARE(r.description(), w.description());
            QCOMPARE(r.tags(), w.tags());
            QCOMPARE(r.hourlyWage(), w.hourlyWage());
            QCOMPARE(r.roundWhat(), w.roundWhat());
            QCOMPARE(r.roundTo(), w.roundTo());
            QCOMPARE(r.roundType(), w.roundType());
            QCOMPARE(r.expanded(), w.expanded());
            QCOMPARE(r.customer(), w.customer());
            QCOMPARE(r.attachments(), w.attachments());
            QCOMPARE(r.totalWages(), w.totalWages());
            QCOMPARE(r.entries().size(), w.entries().size());
            for (int i = 0; i < w.entries().size(); ++i) {
                compareItems(*r.entries()[i], *w.entries()[i]);
                QCOMPARE(r.entries()[i]->parent(), read.projects[p].get());
            }
        }
        QCOMPARE(ProjectFile::makeXML(read.projects), golden());
    }

    void timersSurviveAReadBack() {
        const ProjectFile::LoadResult read = ProjectFile::read(golden());
        QVERIFY(read.ok);
        const auto &running = static_cast<const Entry &>(*read.projects[0]->entries()[2]);
        QVERIFY(running.isWorking() && !running.isPaused());
        QCOMPARE(running.time(), 0); // the project rounds each entry: stored minutes count
        read.projects[0]->setRoundWhat(0);
        QCOMPARE(running.time(), 120);
        Clock::setNow(at("22.11.2026 10:30:00"));
        QCOMPARE(running.time(), 150);
        Clock::setNow(at("22.11.2026 10:00:00"));

        const auto &paused = static_cast<const Entry &>(*read.projects[0]->entries()[3]);
        QVERIFY(paused.isPaused());
        QCOMPARE(paused.pausedAt(), at("22.11.2026 09:30:00"));
        QCOMPARE(paused.pauseTime(), 15 + 30);
        const auto &finished = static_cast<const Entry &>(*read.projects[0]->entries()[0]);
        QCOMPARE(finished.pauseEntries()[0]->from(), at("07.03.2008 10:15:00"));
        QCOMPARE(finished.comment(), QStringLiteral("Layout\r\nreview"));
        const auto &cleaned = static_cast<const Entry &>(*read.projects[0]->entries()[2]);
        QCOMPARE(cleaned.comment(), QStringLiteral("bell dropped"));
    }

    void readsDefaultsOfOptionalElements_data() {
        QTest::addColumn<QByteArray>("rounding");
        QTest::addColumn<int>("what");
        QTest::addColumn<int>("roundTo");
        QTest::addColumn<int>("type");
        QTest::newRow("none") << QByteArray() << 0 << 0 << 0;
        QTest::newRow("step without what")
            << QByteArray("<rounding><roundto>15</roundto><type>1</type></rounding>") << 1 << 15
            << 1;
        QTest::newRow("zero step without what")
            << QByteArray("<rounding><roundto>0</roundto><type>2</type></rounding>") << 0 << 0 << 2;
        QTest::newRow("what given")
            << QByteArray("<rounding><what>2</what><roundto>10</roundto><type>0</type></rounding>")
            << 2 << 10 << 0;
    }

    void readsDefaultsOfOptionalElements() {
        QFETCH(QByteArray, rounding);
        QFETCH(int, what);
        QFETCH(int, roundTo);
        QFETCH(int, type);
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
        QCOMPARE(project.roundWhat(), what);
        QCOMPARE(project.roundTo(), roundTo);
        QCOMPARE(project.roundType(), type);
        QCOMPARE(project.description(), QStringLiteral(""));
        QCOMPARE(project.hourlyWage(), 0.0f);
        QCOMPARE(project.customer(), -1);
        QVERIFY(!project.expanded());
        // Timed entries first, then flat fees, each in file order.
        QCOMPARE(project.entries().size(), 3);
        QCOMPARE(project.entries()[0]->date(), QStringLiteral("01.02.2008"));
        QCOMPARE(static_cast<const Entry &>(*project.entries()[1]).storedMinutes(), 45);
        QVERIFY(project.entries()[2]->isFlatFee());
        QCOMPARE(project.entries()[2]->tags(), QStringLiteral(""));
        QVERIFY(!project.entries()[0]->isChecked());
    }

    void convertsTheOlderLayout() {
        const ProjectFile::LoadResult read =
            ProjectFile::load(QStringLiteral(HOURFOLD_TEST_DATA "/older-layout.xml"));
        QVERIFY2(read.ok, qPrintable(read.error));
        QVERIFY(read.converted);
        QVERIFY(!read.recovered);
        const Project &project = *read.projects[0];
        QCOMPARE(project.roundWhat(), 1);
        QCOMPARE(project.roundTo(), 15);
        const auto &typed = static_cast<const Entry &>(*project.entries()[0]);
        QVERIFY(!typed.hasPeriod());
        QCOMPARE(typed.date(), QStringLiteral("05.01.2007"));
        QCOMPARE(typed.storedMinutes(), 45);
        QVERIFY(typed.isChecked());
        const auto &timed = static_cast<const Entry &>(*project.entries()[1]);
        QVERIFY(timed.hasPeriod() && !timed.isWorking());
        QCOMPARE(timed.fromDate() + u' ' + timed.fromTime(), QStringLiteral("06.01.2007 09:00"));
        QCOMPARE(timed.toDate() + u' ' + timed.toTime(), QStringLiteral("06.01.2007 10:30"));
        QCOMPARE(timed.date(), QStringLiteral(""));
        const auto &open = static_cast<const Entry &>(*project.entries()[2]);
        QVERIFY(open.hasPeriod() && !open.isWorking());
        QCOMPARE(open.toDate(), QStringLiteral(""));
        QCOMPARE(open.toTime(), QStringLiteral(""));
        // The file on disk keeps its layout until the next save.
        QVERIFY(
            !readFile(QStringLiteral(HOURFOLD_TEST_DATA "/older-layout.xml")).contains("period"));
    }

    void refusesBrokenFiles_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("error");
        const QByteArray head = "<?xml version=\"1.0\"?>\n<!--1.5-->\n<projects>\n<project>\n";
        const QByteArray entry = "<entry>\n<day>01.02.2008</day>\n<time>30</time>\n";
        QTest::newRow("empty") << QByteArray() << QStringLiteral("The file is empty.");
        QTest::newRow("binary garbage")
            << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\xff\xfe", 18)
            << QStringLiteral("Start tag expected, '<' not found (line 1)");
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
        QTest::newRow("minutes not a number")
            << head + "<name>A</name>\n<entry>\n<day>01.02.2008</day>\n<time>12x</time>\n"
                      "<comment/></entry></project></projects>"
            << QStringLiteral("The element \"time\" of the entry at line 6 in project \"A\" is "
                              "not a whole number: \"12x\". (line 6)");
        QTest::newRow("wage with a comma")
            << head + "<name>A</name>\n<wage>45,5</wage></project></projects>"
            << QStringLiteral("The element \"wage\" of project \"A\" (line 4) is not a number: "
                              "\"45,5\". (line 4)");
        QTest::newRow("flat fee without amount")
            << head + "<name>A</name>\n<FlatFeeEntry><day>01.02.2008</day><comment/>"
                      "</FlatFeeEntry></project></projects>"
            << QStringLiteral("The element \"amount\" is missing in the flat fee at line 6 in "
                              "project \"A\". (line 6)");
        QTest::newRow("pause that is no moment")
            << head + "<name>A</name>\n<entry><period><from><date>01.02.2008</date>"
                      "<time>09:00</time></from><to><date>01.02.2008</date><time>10:00</time>"
                      "</to></period><time>60</time><pause><pauseentry><from>yesterday</from>"
                      "</pauseentry></pause><comment/></entry></project></projects>"
            << QStringLiteral("The element \"pauseentry/from\" of the entry at line 6 in project "
                              "\"A\" is not a moment: \"yesterday\". (line 6)");
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
        QFETCH(QString, error);
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("broken.xml"));
        writeFile(path, content);
        const ProjectFile::LoadResult read = ProjectFile::load(path);
        QVERIFY(!read.ok);
        QCOMPARE(read.error, error);
        QVERIFY(read.projects.isEmpty());
        // Nothing was written beside a file that could not be read.
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files),
                 QStringList{QStringLiteral("broken.xml")});
        QCOMPARE(readFile(path), content);
    }

    void repairsDamagedFiles_data() {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<int>("entries");
        QTest::addColumn<QString>("comment");
        QTest::addColumn<int>("leftOut");
        QTest::newRow("bare ampersand") << QByteArray("<comment>Layout&#13;\nreview</comment>")
                                        << QByteArray("<comment>R&D review</comment>") << 5
                                        << QStringLiteral("R&D review") << 0;
        QTest::newRow("mismatched tag") << QByteArray("</comment>\n            <tags>design")
                                        << QByteArray("</coment>\n            <tags>design") << 5
                                        << QStringLiteral("Layout\r\nreview") << 0;
        QTest::newRow("control character")
            << QByteArray("Layout&#13;") << QByteArray("Lay\x02out&#13;") << 5
            << QStringLiteral("Layout\r\nreview") << 0;
        QTest::newRow("cut off inside an entry")
            << QByteArray("<checked>0</checked>\n            <comment>Zeit") << QByteArray() << 1
            << QStringLiteral("Layout\r\nreview") << 1;
    }

    void repairsDamagedFiles() {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(int, entries);
        QFETCH(QString, comment);
        QFETCH(int, leftOut);
        QByteArray damaged = golden();
        const qsizetype where = damaged.indexOf(from);
        QVERIFY(where >= 0);
        if (to.isEmpty())
            damaged.truncate(where); // the end of the file is lost
        else
            damaged.replace(where, from.size(), to);

        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("damaged.xml"));
        writeFile(path, damaged);
        Clock::setNow(at("22.11.2026 10:00:05"));
        const ProjectFile::LoadResult read = ProjectFile::load(path);
        Clock::setNow(at("22.11.2026 10:00:00"));
        QVERIFY2(read.ok, qPrintable(read.error));
        QVERIFY(read.recovered);
        QVERIFY(!read.damage.isEmpty());
        QCOMPARE(read.itemsLeftOut, leftOut);
        QCOMPARE(read.projects[0]->entries().size(), entries);
        QCOMPARE(read.projects[0]->entries()[0]->comment(), comment);
        QCOMPARE(read.backupPath, path + QStringLiteral(".recovered-20261122-100005"));
        QCOMPARE(readFile(read.backupPath), damaged);
        QCOMPARE(readFile(path), damaged);
    }

    void keepsOneCopyOfEachDamagedOriginal() {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("p.xml"));
        const QByteArray first = golden().replace("Hosting", "R&D");
        writeFile(path, first);
        const QString copy = ProjectFile::load(path).backupPath;
        QCOMPARE(ProjectFile::load(path).backupPath, copy); // identical: no second copy

        const QByteArray second = golden().replace("Hosting", "A&B");
        writeFile(path, second);
        const QString other = ProjectFile::load(path).backupPath; // same second, other bytes
        QCOMPARE(other, copy + QStringLiteral("-2"));
        QCOMPARE(readFile(copy), first);
        QCOMPARE(readFile(other), second);
    }

    void failedWritesKeepTheOldFile_data() {
        QTest::addColumn<bool>("readOnlyFolder");
        QTest::addColumn<QString>("reason");
        QTest::newRow("read-only folder") << true << QStringLiteral("Permission denied");
        QTest::newRow("disk full") << false << QStringLiteral("File too large");
    }

    void failedWritesKeepTheOldFile() {
        QFETCH(bool, readOnlyFolder);
        QFETCH(QString, reason);
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("projects.xml"));
        const QByteArray old = "<?xml version=\"1.0\"?>\n<!--1.5-->\n<projects/>\n";
        writeFile(path, old);
        ProjectFile::SaveResult result;
        if (readOnlyFolder) {
            QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner);
            FileFailures::ObeyPermissions obey;
            result = ProjectFile::save(path, sampleProjects());
            QFile::setPermissions(folder.path(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        } else {
            FileFailures::LimitFileSize full(1024);
            result = ProjectFile::save(path, sampleProjects());
        }
        QVERIFY(!result.ok);
        QCOMPARE(result.error, QStringLiteral("Could not write \"%1\": %2").arg(path, reason));
        QCOMPARE(readFile(path), old);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QStringLiteral("projects.xml")});
    }

    void convertsInPlace() {
        const QByteArray older = "<projects><project><name>A</name><entry><day>01.02.2008</day>"
                                 "<from>09:00</from><to>10:00</to><time>60</time><comment/></entry>"
                                 "</project></projects>";
        xmlDocPtr document =
            xmlReadMemory(older.constData(), int(older.size()), nullptr, nullptr, 0);
        QVERIFY(ProjectFile::convertXMLDocToCurrentFormat(document));
        xmlChar *text = nullptr;
        int size = 0;
        xmlDocDumpMemory(document, &text, &size);
        const QByteArray converted(reinterpret_cast<const char *>(text), size);
        xmlFree(text);
        xmlFreeDoc(document);
        QCOMPARE(
            converted,
            QByteArray("<?xml version=\"1.0\"?>\n<!--1.5-->\n<projects><project><name>A</name>"
                       "<entry><day>01.02.2008</day><time>60</time><comment/><period><from>"
                       "<date>01.02.2008</date><time>09:00</time></from><to><date>01.02.2008"
                       "</date><time>10:00</time></to></period></entry></project></projects>\n"));
    }
};

QTEST_GUILESS_MAIN(TestProjectFile)
#include "tst_projectfile.moc"
