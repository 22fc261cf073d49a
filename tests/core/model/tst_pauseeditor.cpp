#include "core/model/ModelFixtures.h"

#include "model/PauseEditor.h"
#include "platform/LocaleFormat.h"

#include <QTest>
#include <QUndoStack>

namespace {

QDateTime at(int hour, int minute, int second = 0) {
    return QDateTime(QDate(2026, 11, 2), QTime(hour, minute, second));
}

} // namespace

class TestPauseEditor : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QStandardPaths::setTestModeEnabled(true);
        LocaleFormat::setDateLocale(u"en_US"_s);
        Clock::setNow(at(11, 0));
    }

    void init() {
        m_stack.clear();
        m_changes = 0;
        m_editor = std::make_unique<PauseEditor>(m_stack, [this] { ++m_changes; });
        m_entry = periodEntry(at(9, 0), at(12, 0));
        m_editor->setCurrentEntry(m_entry);
    }

    void addingAndDeletingAreUndoable() {
        QCOMPARE(m_changes, 0); // showing an entry changes nothing
        QCOMPARE(m_editor->addPauseEntry(), 0);
        QCOMPARE(m_stack.undoText(), u"Add pause entry"_s);
        QCOMPARE(m_editor->totalText(0), u"00:00"_s);
        QVERIFY(!m_editor->hasConflicts());
        QCOMPARE(m_editor->pauseAt(0)->from(), at(9, 0));
        m_editor->addPauseEntry();
        const auto first = m_editor->pauseAt(0);
        m_editor->deletePauseEntry(0);
        QCOMPARE(m_stack.undoText(), u"Delete pause entry"_s);
        QCOMPARE(m_editor->rowCount(), 1);
        m_stack.undo();
        QCOMPARE(m_editor->pauseAt(0), first); // back at its old row
        QCOMPARE(m_changes, 4);
        // The steps outlive the editor.
        m_editor.reset();
        m_stack.undo();
        QCOMPARE(m_entry->pauseEntries().size(), 1);
    }

    // The bounds are the clamping rules' (tested with them): here, that both ends use them.
    void clampsChangedMoments_data() {
        QTest::addColumn<bool>("running");
        QTest::addColumn<bool>("changeStart");
        QTest::addColumn<QDateTime>("typed");
        QTest::addColumn<QDateTime>("stored");
        QTest::addColumn<bool>("beep");
        QTest::newRow("start before the entry") << false << true << at(8, 30) << at(9, 0) << true;
        QTest::newRow("start inside") << false << true << at(9, 30, 42) << at(9, 30) << false;
        QTest::newRow("end after now while running")
            << true << false << at(11, 30) << at(11, 0) << true;
    }
    void clampsChangedMoments() {
        QFETCH(bool, running);
        QFETCH(bool, changeStart);
        QFETCH(QDateTime, typed);
        if (running) {
            m_entry = periodEntry(at(9, 0));
            m_editor->setCurrentEntry(m_entry);
        }
        m_editor->addPauseEntry();
        const bool beeped =
            changeStart ? m_editor->setFromInRow(0, typed) : m_editor->setToInRow(0, typed);
        QTEST(beeped, "beep");
        QTEST(changeStart ? m_editor->pauseAt(0)->from() : m_editor->pauseAt(0)->to(), "stored");
        QCOMPARE(m_stack.undoText(), u"Edit pause entry"_s);
        m_stack.undo();
        QCOMPARE(m_editor->pauseAt(0)->from(), at(9, 0));
    }

    void conflictsDecideClosing() {
        m_editor->add(std::make_shared<PauseEntry>(at(10, 0), at(10, 31)), -1);
        m_editor->add(std::make_shared<PauseEntry>(at(10, 30), at(11, 0)), -1);
        m_editor->add(std::make_shared<PauseEntry>(at(11, 30), at(11, 0)), -1);
        QVERIFY(m_editor->showsConflictIcon(0) && m_editor->showsConflictIcon(2));
        QVERIFY(m_editor->isRowRed(1, 0));
        QVERIFY(!m_editor->isRowRed(2, 0));
        QCOMPARE(m_editor->totalText(2), u"00:-30"_s);
        QCOMPARE(m_editor->closingCheck(false), PauseEditor::Closing::Beep);
        QCOMPARE(m_editor->closingCheck(true), PauseEditor::Closing::ConflictAlert);
        QCOMPARE(PauseEditor::conflictMessage(), u"Conflicts in pause entries."_s);
        QCOMPARE(PauseEditor::conflictInformativeText(), u"There are overlapping pause entries."_s);
        m_editor->setTo(m_editor->pauseAt(0), at(10, 30));
        m_editor->deletePauseEntry(2);
        QCOMPARE(m_editor->closingCheck(true), PauseEditor::Closing::Close);
    }

    void columnTexts() {
        m_editor->add(std::make_shared<PauseEntry>(at(9, 5), at(10, 20)), -1);
        // Short date, medium time without its seconds; the locale puts a narrow no-break space
        // before AM.
        QCOMPARE(m_editor->fromText(0), u"11/2/26, 9:05\u202fAM"_s);
        QCOMPARE(m_editor->totalText(0), u"01:15"_s);
        QCOMPARE(LocaleFormat::parsePauseMoment(m_editor->toText(0)), at(10, 20));
        QVERIFY(!LocaleFormat::parsePauseMoment(u"tomorrow"_s).isValid());
    }

private:
    QUndoStack m_stack;
    int m_changes = 0;
    std::unique_ptr<PauseEditor> m_editor;
    std::shared_ptr<Entry> m_entry;
};

QTEST_GUILESS_MAIN(TestPauseEditor)
#include "tst_pauseeditor.moc"
