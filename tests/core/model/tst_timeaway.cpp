#include "ModelFixtures.h"

#include "model/Project.h"
#include "model/ProjectCollection.h"
#include "model/TimeAway.h"

#include <QTest>

// Time away while timers ran: which timers it concerns, its message, and the two edits with
// their one undo step.
class TestTimeAway : public QObject {
    Q_OBJECT

    // Two running timers and one paused since 11:00, the clock at 14:00; away 12:03 to 13:40.
    struct Document {
        Document() {
            Clock::setNow(at(u"25.11.2026 14:00"_s));
            project->addEntry(first);
            project->addEntry(second);
            project->addEntry(paused);
            paused->setPausedAt(at(u"25.11.2026 11:00"_s));
            collection.addProject(project);
            collection.undoStack()->clear();
        }
        ~Document() { Clock::reset(); }

        QTemporaryDir folder;
        Preferences preferences{folder.filePath(u"p.conf"_s)};
        ProjectCollection collection{preferences};
        std::shared_ptr<Project> project =
            std::make_shared<Project>(u"Web shop"_s, u""_s, 80.0f, 0, 0, 0, -1, u""_s);
        std::shared_ptr<Entry> first = periodEntry(u"25.11.2026 09:00"_s);
        std::shared_ptr<Entry> second = periodEntry(u"25.11.2026 12:30"_s);
        std::shared_ptr<Entry> paused = periodEntry(u"25.11.2026 08:00"_s);
        TimeAway away{at(u"25.11.2026 12:03"_s), at(u"25.11.2026 13:40"_s)};
    };

private slots:
    void message_data() {
        QTest::addColumn<int>("timers");
        QTest::addColumn<QString>("message");
        QTest::newRow("two") << 2 << u"Away from 12:03 to 13:40 (1:37) while 2 timers ran"_s;
        QTest::newRow("one") << 1 << u"Away from 12:03 to 13:40 (1:37) while 1 timer ran"_s;
    }
    void message() {
        QFETCH(int, timers);
        QFETCH(QString, message);
        Document document;
        QCOMPARE(document.away.message(timers), message);
        // The timer paused before the absence did not run through it.
        QCOMPARE(document.away.entriesThatRan(document.collection),
                 (QList<std::shared_ptr<Entry>>{document.first, document.second}));
    }

    void countAsPause() {
        Document document;
        document.away.countAsPause(document.collection);
        QCOMPARE(document.first->pauseEntries().size(), 1);
        QCOMPARE(
            document.first->pauseEntries().first()->stringDescription(),
            PauseEntry(at(u"25.11.2026 12:03"_s), at(u"25.11.2026 13:40"_s)).stringDescription());
        // The second started during the absence: its pause starts with it.
        QCOMPARE(document.second->pauseTime(), 70);
        QCOMPARE(document.first->pauseTime(), 97);
        QVERIFY(document.paused->pauseEntries().isEmpty());
        QCOMPARE(document.collection.undoStack()->count(), 1);
        QCOMPARE(document.collection.undoStack()->undoText(), u"Time Away"_s);
        document.collection.undoStack()->undo();
        QCOMPARE(document.first->pauseTime(), 0);
        QCOMPARE(document.second->pauseTime(), 0);
        document.collection.undoStack()->redo();
        QCOMPARE(document.first->pauseTime() + document.second->pauseTime(), 167);
    }

    void stopTimers() {
        Document document;
        document.away.stopTimers(document.collection);
        QVERIFY(!document.first->isWorking());
        QCOMPARE(document.first->toTime(), u"12:03"_s);
        QCOMPARE(document.first->time(), 183);
        QCOMPARE(document.second->toTime(), u"12:30"_s);
        QVERIFY(document.paused->isWorking());
        QCOMPARE(document.collection.undoStack()->undoText(), u"Time Away"_s);
        document.collection.undoStack()->undo();
        QVERIFY(document.first->isWorking());
        QVERIFY(document.second->isWorking());
        QVERIFY(document.first->toTime().isEmpty());
        QCOMPARE(document.collection.workingEntries().size(), 3);
    }
};

QTEST_GUILESS_MAIN(TestTimeAway)
#include "tst_timeaway.moc"
