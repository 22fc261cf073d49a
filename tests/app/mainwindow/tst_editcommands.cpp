#include "app/SheetFixture.h"

#include "editors/FlatFeeSheet.h"
#include "editors/ProjectSheet.h"
#include "mainwindow/EditCommands.h"

// Which row of the fixture's document a case is about.
enum class Row { None, Project, Entry, FlatFee };
Q_DECLARE_METATYPE(Row)

class TestEditCommands : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_fixture = std::make_unique<SheetFixture>();
        m_entry = dayEntry(u"02.02.2008"_s, 30);
        m_fee = flatFee(u"01.02.2008"_s, 10.0f);
        m_fixture->alpha->addEntry(m_entry);
        m_fixture->alpha->addEntry(m_fee);
        m_projectSheet = std::make_unique<ProjectSheet>(
            m_fixture->collection, m_fixture->customers, m_fixture->tags, m_fixture->preferences,
            m_fixture->currency, m_fixture->user, &m_fixture->window);
        m_flatFeeSheet = std::make_unique<FlatFeeSheet>(m_fixture->collection, m_fixture->tags,
                                                        m_fixture->currency, &m_fixture->window);
        m_editedEntries.clear();
        m_commands = std::make_unique<EditCommands>(
            m_fixture->collection,
            EditCommands::Editors{
                [this](const auto &project) { m_projectSheet->editProject(project); },
                [this](const auto &entry) { m_editedEntries << entry; },
                [this](const auto &fee) { m_flatFeeSheet->editFlatFee(fee); }});
    }

    void cleanup() {
        m_commands.reset();
        m_flatFeeSheet.reset();
        m_projectSheet.reset();
        m_fixture.reset();
    }

    void editOpensTheSheetOfTheRow_data() {
        QTest::addColumn<Row>("row");
        QTest::addColumn<QString>("open");
        QTest::newRow("project") << Row::Project << u"edit project"_s;
        QTest::newRow("timed entry") << Row::Entry << u"entry sheet"_s;
        QTest::newRow("flat fee") << Row::FlatFee << u"edit entry"_s;
        QTest::newRow("nothing selected") << Row::None << QString();
    }
    void editOpensTheSheetOfTheRow() {
        QFETCH(Row, row);
        QFETCH(QString, open);
        QCOMPARE(m_commands->edit(projectOf(row), itemOf(row)), row != Row::None);
        QStringList opened;
        for (const QDialog *sheet : {static_cast<QDialog *>(m_projectSheet.get()),
                                     static_cast<QDialog *>(m_flatFeeSheet.get())})
            if (sheet->isVisible())
                opened << sheet->windowTitle();
        for (const auto &entry : std::as_const(m_editedEntries))
            if (entry == m_entry)
                opened << u"entry sheet"_s;
        QCOMPARE(opened, open.isNull() ? QStringList() : QStringList{open});
    }

    // What a deletion does to the document, and its undo, is the document's (tested with it):
    // here, that the row's kind picks the deletion, without asking.
    void deleteAsksNothing_data() {
        QTest::addColumn<Row>("row");
        QTest::addColumn<QString>("actionName");
        QTest::addColumn<QStringList>("projects");
        QTest::addColumn<int>("alphaItems");
        QTest::newRow("project") << Row::Project << u"Delete Project"_s << QStringList{u"Beta"_s}
                                 << 2;
        QTest::newRow("timed entry")
            << Row::Entry << u"Delete Entry"_s << QStringList{u"Alpha"_s, u"Beta"_s} << 1;
        QTest::newRow("flat fee") << Row::FlatFee << u"Delete Entry"_s
                                  << QStringList{u"Alpha"_s, u"Beta"_s} << 1;
    }
    void deleteAsksNothing() {
        QFETCH(Row, row);
        // The list names the project the row is shown under; an item leaves its own project.
        QVERIFY(m_commands->deleteSelection(m_fixture->alpha, itemOf(row)));
        QCOMPARE(m_fixture->user.alerts.size(), 0);
        QTEST(m_fixture->collection.projectNames(), "projects");
        QTEST(int(m_fixture->alpha->entries().size()), "alphaItems");
        QVERIFY(!m_fixture->alpha->entries().contains(itemOf(row)) || row == Row::Project);
        QTEST(m_fixture->collection.undoStack()->undoText(), "actionName");
    }

private:
    std::shared_ptr<Project> projectOf(Row row) const {
        return row == Row::None ? nullptr : m_fixture->alpha;
    }
    std::shared_ptr<ProjectItem> itemOf(Row row) const {
        if (row == Row::Entry)
            return m_entry;
        if (row == Row::FlatFee)
            return m_fee;
        return nullptr;
    }

    std::unique_ptr<SheetFixture> m_fixture;
    std::shared_ptr<Entry> m_entry;
    std::shared_ptr<FlatFeeEntry> m_fee;
    std::unique_ptr<ProjectSheet> m_projectSheet;
    std::unique_ptr<FlatFeeSheet> m_flatFeeSheet;
    QList<std::shared_ptr<Entry>> m_editedEntries;
    std::unique_ptr<EditCommands> m_commands;
};

QTEST_MAIN(TestEditCommands)
#include "tst_editcommands.moc"
