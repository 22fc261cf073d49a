#include "import/DocumentImport.h"
#include "import/ImportSources.h"
#include "model/ProjectCollection.h"
#include "platform/Preferences.h"
#include "stores/CustomerStorage.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;
using Files = QMap<QString, QByteArray>;

// Each source's sample holds, where the format allows, an interval across midnight, a running
// one, tags with blanks and quotes, non-ASCII names, a second project of the same name (another
// customer's), and bad input. The totals are worked out by hand from the sample's times.
class tst_importers : public QObject {
    Q_OBJECT

private:
    // Writes the files; a name ending in ".sqlite" is a database made from the SQL statements.
    static void write(const QTemporaryDir &dir, const Files &files) {
        for (auto it = files.cbegin(); it != files.cend(); ++it) {
            const QString path = dir.filePath(it.key());
            QDir().mkpath(QFileInfo(path).absolutePath());
            if (!it.key().endsWith(u".sqlite")) {
                QFile file(path);
                QVERIFY(file.open(QIODevice::WriteOnly));
                file.write(it.value());
                continue;
            }
            {
                QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"sample"_s);
                db.setDatabaseName(path);
                QVERIFY(db.open());
                QSqlQuery query(db);
                for (const QByteArray &statement : it.value().split(';'))
                    QVERIFY2(statement.trimmed().isEmpty() ||
                                 query.exec(QString::fromUtf8(statement)),
                             qPrintable(query.lastError().text()));
            }
            QSqlDatabase::removeDatabase(u"sample"_s);
        }
    }

    // "name minutes [running n]" per project, joined by " | ".
    static QString totals(const ProjectList &projects) {
        QStringList lines;
        for (const auto &project : projects) {
            int running = 0;
            for (const auto &item : project->entries())
                running += item->isWorking() ? 1 : 0;
            lines << project->name() + u' ' + QString::number(project->totalDuration()) +
                         (running ? u" running "_s + QString::number(running) : QString());
        }
        return lines.join(u" | "_s);
    }

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void readers_data();
    void readers();
    void detect_data();
    void detect();
    void cancelLeavesNothing();
    void importIsOneUndoStep();
};

void tst_importers::readers_data() {
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<Files>("files");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("totals");
    QTest::addColumn<QString>("midnightEntry"); // the first project's second entry
    QTest::addColumn<QStringList>("problems");

    const QByteArray timewarrior =
        "inc 20261101T080000Z - 20261101T093000Z # \xC3\x89"
        "criture \"tag with space\" # "
        "\"Kapitel 1\"\n"
        "inc 20261101T223000Z - 20261102T011500Z # \xC3\x89"
        "criture night\n"
        "inc 20261102T100000Z - 20261102T101500Z # \"Client \\\"A\\\"\" review\n"
        "inc 20261102T100500Z - 20261102T101000Z # \"Client \\\"A\\\"\" review\n"
        "inc 20261103T090000Z - 20261103T080000Z # \xC3\x89"
        "criture\n"
        "garbage line\n"
        "inc 20261103T120000Z # \xC3\x89"
        "criture\n"
        "inc 20261104T070000Z - 20261104T074500Z\n"
        "inc 20261104T080000Z - 20261104T081000Z # caf\xE9\n";
    const QStringList timewarriorProblems{
        u"2026-11.data, line 9: not UTF-8 text: the encoding is unknown"_s,
        u"2026-11.data, line 5: ends before it starts"_s,
        u"2026-11.data, line 6: unreadable line"_s,
        u"2026-11.data, line 4: overlaps 2026-11.data, line 3 with the same project, comment "
        "and tags; a duplicate"_s};
    QTest::newRow("timewarrior, first tag")
        << u"timewarrior"_s << QString() << Files{{u"tw/data/2026-11.data"_s, timewarrior}}
        << u"tw"_s << u"Écriture 255 running 1 | Client \"A\" 15 | Untagged 45"_s
        << u"165;(null);23:30;01.11.2026;02:15;02.11.2026;;0;1;night"_s << timewarriorProblems;
    QTest::newRow("timewarrior, pattern")
        << u"timewarrior"_s << u"^Cl"_s << Files{{u"tw/data/2026-11.data"_s, timewarrior}}
        << u"tw/data"_s << u"Untagged 300 running 1 | Client \"A\" 15"_s
        << u"165;(null);23:30;01.11.2026;02:15;02.11.2026;;0;1;Écriture,night"_s
        << timewarriorProblems;
    QTest::newRow("watson")
        << u"watson"_s << QString()
        << Files{{u"watson/frames"_s,
                  "[\n"
                  " [1793520000, 1793525400, \"\xC3\x89"
                  "criture\", \"a1\", [\"tag with space\", "
                  "\"say \\\"hi\\\"\"], 1793525400],\n"
                  " [1793572200, 1793582100, \"\xC3\x89"
                  "criture\", \"a2\", [], 1793582100],\n"
                  " [\"x\"],\n"
                  " [1793696400, 1793692800, \"Review\", \"a4\", [], 1793696400],\n"
                  " [1793613600, 1793614500, \"Review\", \"a5\", [], 1793614500],\n"
                  " [1793613900, 1793614200, \"Review\", \"a6\", [], 1793614200]\n"
                  "]\n"},
                 {u"watson/state"_s,
                  "{\"project\": \"Review\", \"start\": 1793707200, \"tags\": []}"}}
        << u"watson"_s << u"Écriture 255 | Review 15 running 1"_s
        << u"165;(null);23:30;01.11.2026;02:15;02.11.2026;;0;1;"_s
        << QStringList{u"frames, frame 3: unreadable frame"_s,
                       u"frames, frame 4: ends before it starts"_s,
                       u"frames, frame 6: overlaps frames, frame 5 with the same project, "
                       "comment and tags; a duplicate"_s};
    QTest::newRow("watson, broken JSON")
        << u"watson"_s << QString() << Files{{u"frames"_s, "[\n [1, 2, \"a\"],\n [3, \n"}}
        << u"frames"_s << QString() << QString()
        << QStringList{u"frames, line 4: unreadable: unterminated array"_s};

    const QByteArray hamsterSchema =
        "CREATE TABLE version (version INTEGER);"
        "CREATE TABLE categories (id INTEGER PRIMARY KEY, name TEXT, search_name TEXT);"
        "CREATE TABLE activities (id INTEGER PRIMARY KEY, name TEXT, category_id INTEGER, "
        "deleted INTEGER, search_name TEXT);"
        "CREATE TABLE tags (id INTEGER PRIMARY KEY, name TEXT, autocomplete BOOL);"
        "CREATE TABLE fact_tags (fact_id INTEGER, tag_id INTEGER);";
    QTest::newRow("hamster")
        << u"hamster"_s << QString()
        << Files{{u"hamster.sqlite"_s,
                  hamsterSchema +
                      "CREATE TABLE facts (id INTEGER PRIMARY KEY, activity_id INTEGER, start_time "
                      "TIMESTAMP, end_time TIMESTAMP, description TEXT);"
                      "INSERT INTO version VALUES (9);"
                      "INSERT INTO categories VALUES (1, 'M\xC3\xBCller GmbH', ''), (2, 'Acme', "
                      "'');"
                      "INSERT INTO activities VALUES (1, 'Design', 1, 0, ''), (2, 'Design', 2, 0, "
                      "''), (3, 'Caf\xC3\xA9', NULL, 0, '');"
                      "INSERT INTO facts VALUES (1, 1, '2026-11-01 09:00:00', '2026-11-01 "
                      "10:30:00', "
                      "'Entwurf'), (2, 1, '2026-11-01 23:30:00', '2026-11-02 02:15:00', ''), "
                      "(3, 2, '2026-11-02 11:00:00', '2026-11-02 11:15:00', ''), "
                      "(4, 2, '2026-11-03 10:00:00', '2026-11-03 09:00:00', ''), "
                      "(5, 3, '2026-11-03 13:00:00', NULL, 'l\xC3\xA4uft'), "
                      "(6, 3, 'gestern', '2026-11-03 09:00:00', '');"
                      "INSERT INTO tags VALUES (1, 'tag with space', 1), (2, 'say \"hi\"', 1);"
                      "INSERT INTO fact_tags VALUES (1, 1), (1, 2)"}}
        << u"hamster.sqlite"_s << u"Design 255 | Design (Acme) 15 | Café 0 running 1"_s
        << u"165;(null);23:30;01.11.2026;02:15;02.11.2026;;0;1;"_s
        << QStringList{u"fact 4: ends before it starts"_s,
                       u"fact 6: unreadable start or end time"_s};
    QTest::newRow("hamster, another version")
        << u"hamster"_s << QString()
        << Files{{u"old.sqlite"_s, hamsterSchema +
                                       "CREATE TABLE facts (id INTEGER PRIMARY KEY, activity_id "
                                       "INTEGER, start_time TIMESTAMP, end_time TIMESTAMP);"
                                       "INSERT INTO version VALUES (7)"}}
        << u"old.sqlite"_s << QString() << QString()
        << QStringList{u"error: \"old.sqlite\" is a Hamster database of version 7, which has no "
                       "column description in the table facts."_s};

    QTest::newRow("ktimetracker")
        << u"ktimetracker"_s << QString()
        << Files{{u"ktimetracker.ics"_s,
                  "BEGIN:VCALENDAR\r\nPRODID:-//Hand written//EN\r\nVERSION:2.0\r\n"
                  "BEGIN:VTODO\r\nUID:task-1\r\nSUMMARY:\xC3\x89"
                  "criture\r\nEND:VTODO\r\n"
                  "BEGIN:VTODO\r\nUID:task-2\r\nSUMMARY:Kapitel \"Zwei\"\r\nRELATED-TO:task-1\r\n"
                  "END:VTODO\r\n"
                  "BEGIN:VEVENT\r\nUID:ev-1\r\nDTSTART:20261101T080000Z\r\nDTEND:"
                  "20261101T093000Z\r\n"
                  "RELATED-TO:task-1\r\nDESCRIPTION:Kapitel 1\\, erster Teil\r\n"
                  "CATEGORIES:tag with space\r\nEND:VEVENT\r\n"
                  "BEGIN:VEVENT\r\nUID:ev-2\r\nDTSTART:20261101T233000\r\nDTEND:20261102T021500\r\n"
                  "RELATED-TO:task-1\r\nEND:VEVENT\r\n"
                  "BEGIN:VEVENT\r\nUID:ev-3\r\nDTSTART:20261103T090000Z\r\nDTEND:"
                  "20261103T080000Z\r\n"
                  "RELATED-TO:task-1\r\nEND:VEVENT\r\n"
                  "BEGIN:VEVENT\r\nUID:ev-4\r\nDTSTART:20261103T120000Z\r\nRELATED-TO:task-2\r\n"
                  "END:VEVENT\r\nEND:VCALENDAR\r\n"}}
        << u"ktimetracker.ics"_s << u"Écriture 255 | Écriture / Kapitel \"Zwei\" 0 running 1"_s
        << u"165;(null);23:30;01.11.2026;02:15;02.11.2026;;0;1;"_s
        << QStringList{u"ktimetracker.ics, line 27: ends before it starts"_s};

    QTest::newRow("toggl")
        << u"toggl"_s << QString()
        << Files{{u"toggl.csv"_s,
                  "User,Email,Client,Project,Task,Description,Billable,Start date,Start time,End "
                  "date,End time,Duration,Tags,Amount (EUR)\n"
                  "Ana,ana@example.org,M\xC3\xBCller GmbH,Design,,Entwurf,Yes,2026-11-01,09:00:00,"
                  "2026-11-01,10:30:00,01:30:00,\"tag with space, say \"\"hi\"\"\",120.00\n"
                  "Ana,ana@example.org,M\xC3\xBCller GmbH,Design,,\"Nacht, lang\",No,2026-11-01,"
                  "23:30:00,2026-11-02,02:15:00,02:45:00,,0.00\n"
                  "Ana,ana@example.org,Acme,Design,,Review,Yes,2026-11-02,11:00:00,2026-11-02,"
                  "11:15:00,00:15:00,,25.00\n"
                  "Ana,ana@example.org,Acme,Design,,Bad,No,2026-11-03,10:00:00,2026-11-03,"
                  "09:00:00,-01:00:00,,0.00\n"
                  "Ana,ana@example.org,,Caf\xC3\xA9,,\"unterminated\n"}}
        << u"toggl.csv"_s << u"Design 255 | Design (Acme) 15"_s
        << u"165;(null);23:30;01.11.2026;02:15;02.11.2026;Nacht, lang;0;1;"_s
        << QStringList{u"toggl.csv, line 5: ends before it starts"_s,
                       u"toggl.csv, line 6: unreadable line"_s};

    QTest::newRow("clockify")
        << u"clockify"_s << QString()
        << Files{{u"clockify.csv"_s,
                  "Project,Client,Description,Task,User,Group,Email,Tags,Billable,Start Date,"
                  "Start Time,End Date,End Time,Duration (h),Duration (decimal),Billable Rate "
                  "(USD),Billable Amount (USD)\r\n"
                  "Design,M\xC3\xBCller GmbH,Entwurf,,Ana,,ana@example.org,\"tag with space, say "
                  "\"\"hi\"\"\",Yes,11/01/2026,09:00:00 AM,11/01/2026,10:30:00 AM,01:30:00,1.50,"
                  "80.00,120.00\r\n"
                  "Design,M\xC3\xBCller GmbH,Nacht,,Ana,,ana@example.org,,Yes,11/01/2026,11:30:00 "
                  "PM,11/02/2026,02:15:00 AM,02:45:00,2.75,80.00,220.00\r\n"
                  "Design,Acme,Review,,Ana,,ana@example.org,,Yes,11/02/2026,11:00:00 AM,"
                  "11/02/2026,11:15:00 AM,00:15:00,0.25,100.00,25.00\r\n"
                  "Caf\xC3\xA9,,L\xC3\xA4uft,,Ana,,ana@example.org,,No,11/03/2026,01:00:00 PM,,,,,"
                  "0.00,0.00\r\n"}}
        << u"clockify.csv"_s << u"Design 255 | Design (Acme) 15 | Café 0 running 1"_s
        << u"165;(null);23:30;01.11.2026;02:15;02.11.2026;Nacht;0;1;"_s << QStringList();
}

void tst_importers::readers() {
    QFETCH(QString, source);
    QFETCH(QString, pattern);
    QFETCH(Files, files);
    QFETCH(QString, chosen);
    QTemporaryDir dir;
    write(dir, files);
    const auto reader = ImportSources::reader(*ImportSources::fromKey(source), pattern);
    const ImportResult result = reader->read(dir.filePath(chosen));
    QStringList problems;
    if (!result.error.isEmpty())
        problems << u"error: "_s + result.error;
    for (const ImportProblem &problem : result.problems)
        problems << problem.where + u": "_s + problem.text;
    QTEST(problems, "problems");
    const ImportPlan plan = ImportPlan::make(result, {}, [](const QString &) { return 7; });
    QTEST(totals(plan.newProjects), "totals");
    QFETCH(QString, midnightEntry);
    if (!midnightEntry.isEmpty())
        QCOMPARE(plan.newProjects.value(0)->entries().value(1)->stringDescription(), midnightEntry);
}

void tst_importers::detect_data() {
    QTest::addColumn<Files>("files");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("source");
    QTest::newRow("timewarrior folder")
        << Files{{u"tw/data/2026-11.data"_s, ""}} << u"tw"_s << u"timewarrior"_s;
    QTest::newRow("watson folder") << Files{{u"w/frames"_s, "[]"}} << u"w"_s << u"watson"_s;
    QTest::newRow("ics") << Files{{u"a.ics"_s, "BEGIN:VCALENDAR\r\n"}} << u"a.ics"_s
                         << u"ktimetracker"_s;
    QTest::newRow("toggl") << Files{{u"t.csv"_s,
                                     "User,Email,Client,Project,Start date,Start time\n"}}
                           << u"t.csv"_s << u"toggl"_s;
    QTest::newRow("clockify") << Files{{u"c.csv"_s, "Project,Client,Start Date,Start Time\n"}}
                              << u"c.csv"_s << u"clockify"_s;
    QTest::newRow("other CSV") << Files{{u"o.csv"_s, "a,b\n"}} << u"o.csv"_s << QString();
}

void tst_importers::detect() {
    QFETCH(Files, files);
    QFETCH(QString, chosen);
    QTemporaryDir dir;
    write(dir, files);
    const auto source = ImportSources::detect(dir.filePath(chosen));
    QTEST(source ? ImportSources::key(*source) : QString(), "source");
}

void tst_importers::cancelLeavesNothing() {
    QTemporaryDir dir;
    QByteArray lines;
    for (int i = 0; i < 2500; ++i)
        lines += "inc 20261101T080000Z - 20261101T090000Z # a\n";
    write(dir, {{u"x.data"_s, lines}});
    int asked = 0;
    const ImportResult result =
        ImportSources::reader(ImportSources::Source::Timewarrior)
            ->read(dir.filePath(u"x.data"_s), [&](qint64, qint64) { return ++asked < 2; });
    QVERIFY(result.cancelled);
    QVERIFY(result.entries.isEmpty());
    QCOMPARE(asked, 2);
}

// Into an open document: the project of the same name takes the new entries, the others are
// made with their customer, and one undo takes all of it back.
void tst_importers::importIsOneUndoStep() {
    QTemporaryDir dir;
    write(dir, {{u"t.csv"_s,
                 "User,Email,Client,Project,Task,Description,Billable,Start date,Start time,End "
                 "date,End time,Duration,Tags,Amount (EUR)\n"
                 "A,,Acme,Alpha,,x,Yes,2026-11-01,09:00:00,2026-11-01,10:00:00,01:00:00,,50.00\n"
                 "A,,Acme,Beta,,y,No,2026-11-01,10:00:00,2026-11-01,10:20:00,00:20:00,t1,0\n"}});
    const ImportResult result =
        ImportSources::reader(ImportSources::Source::Toggl)->read(dir.filePath(u"t.csv"_s));
    Preferences preferences(dir.filePath(u"prefs.conf"_s));
    ProjectCollection collection(preferences);
    auto alpha = std::make_shared<Project>(u"Alpha"_s, QString(), 50.0f, 0, 0, 0, -1, QString());
    collection.addProject(alpha);
    CustomerStorage customers(dir.filePath(u"customers.plist"_s), collection, preferences);
    DocumentImport::apply(result, collection, &customers, nullptr);
    QCOMPARE(collection.undoStack()->undoText(), u"Import"_s);
    QCOMPARE(totals(collection.projectArray()), u"Alpha 60 | Beta 20"_s);
    QCOMPARE(alpha->entries().value(0)->comment(), u"x\nBillable amount: 50.00 EUR"_s);
    QCOMPARE(collection.projectWithName(u"Beta"_s)->customer(),
             customers.customerWithName(u"Acme"_s)->customerID());
    collection.undoStack()->undo();
    QCOMPARE(totals(collection.projectArray()), u"Alpha 0"_s);
    QCOMPARE(customers.count(), 0);
    collection.undoStack()->redo();
    QCOMPARE(totals(collection.projectArray()), u"Alpha 60 | Beta 20"_s);
}

QTEST_GUILESS_MAIN(tst_importers)
#include "tst_importers.moc"
