#include "core/model/ModelFixtures.h"
#include "mainwindow/CommandValidation.h"
#include "mainwindow/ToolbarItems.h"
#include "model/Project.h"

#include <QTest>

// The toolbar's arrangement and the enabling rules of its items and the menu commands.
class TestToolbarItems : public QObject {
    Q_OBJECT

private slots:
    void defaultSet() {
        QCOMPARE(ToolbarItems::defaultItemIdentifiers(),
                 (QStringList{u"AddProject"_s, u"AddEntry"_s, u"AddFlatFeeEntry"_s, u"Delete"_s,
                              u"Edit"_s, u"Attachments"_s, u"Separator"_s, u"Filters"_s,
                              u"Search"_s, u"MiniWindow"_s, u"Separator"_s, u"Details"_s}));
        QCOMPARE(ToolbarItems::item(u"Stop"_s)->action, u"actionButtonClicked:"_s);
    }

    void versionNumber_data() {
        QTest::addColumn<QString>("version");
        QTest::addColumn<int>("number");
        QTest::newRow("two parts") << u"2.3"_s << 230;
        QTest::newRow("three parts") << u"3.1.2"_s << 312;
        QTest::newRow("none") << u""_s << -1;
    }
    void versionNumber() {
        QFETCH(QString, version);
        QTEST(ToolbarItems::versionNumber(version), "number");
    }

    void migrate_data() {
        QTest::addColumn<QStringList>("saved");
        QTest::addColumn<QString>("lastVersion");
        QTest::addColumn<QStringList>("expected");
        const QStringList custom{u"Edit"_s, u"Delete"_s, u"Details"_s};
        const QStringList defaults = ToolbarItems::defaultItemIdentifiers();
        QTest::newRow("never ran") << custom << u""_s << custom;
        QTest::newRow("2.2: reset, nothing inserted first") << custom << u"2.2"_s << defaults;
        QTest::newRow("2.3: inserted, then reset") << custom << u"2.3"_s << defaults;
        QTest::newRow("3.0.9: reset") << custom << u"3.0.9"_s << defaults;
        QTest::newRow("3.1.0: inserted after Edit")
            << custom << u"3.1.0"_s
            << QStringList{u"Edit"_s, u"Attachments"_s, u"Delete"_s, u"Details"_s};
        QTest::newRow("3.1.0 without Edit: at the end")
            << QStringList{u"Delete"_s} << u"3.1.0"_s << QStringList{u"Delete"_s, u"Attachments"_s};
        const QStringList withAttachments{u"Attachments"_s, u"Edit"_s};
        QTest::newRow("3.2: already there") << withAttachments << u"3.2"_s << withAttachments;
    }
    void migrate() {
        QFETCH(QStringList, saved);
        QFETCH(QString, lastVersion);
        QTEST(ToolbarItems::migrate(saved, lastVersion), "expected");
    }

    // The version written at quit is read at the next start: a customised toolbar stays (one
    // without "Attachments" gets it back, as from every version since 2.3).
    void theRunningVersionKeepsACustomisedToolbar() {
        const QStringList custom{u"Edit"_s, u"Attachments"_s, u"Delete"_s};
        QCOMPARE(ToolbarItems::migrate(custom, QStringLiteral(HOURFOLD_VERSION)), custom);
    }

    void validatedDropsUnknownAndRepeatedItems() {
        QCOMPARE(ToolbarItems::validated({u"Edit"_s, u"Bogus"_s, u"Separator"_s, u"Edit"_s,
                                          u"Separator"_s, u"Space"_s}),
                 (QStringList{u"Edit"_s, u"Separator"_s, u"Separator"_s, u"Space"_s}));
        QCOMPARE(ToolbarItems::indexOfItem(u"Edit"_s, {u"Delete"_s, u"Edit"_s}), 1);
        QCOMPARE(ToolbarItems::indexOfItem(u"Stop"_s, {u"Delete"_s, u"Edit"_s}), 2);
    }

    void validation_data() {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("row");
        // Document changed, untitled; toolbar item enabled, menu item enabled.
        QTest::addColumn<QString>("flags");
        const auto row = [](const char *name, const QString &action, const QString &row,
                            const QString &flags) {
            QTest::newRow(name) << action << row << flags;
        };
        row("delete without row", u"delete:"_s, u"none"_s, u"1000"_s);
        row("edit on a fee", u"edit:"_s, u"fee"_s, u"0011"_s);
        row("save unchanged", u"save:"_s, u"none"_s, u"0000"_s);
        row("save changed", u"save:"_s, u"none"_s, u"1111"_s);
        row("pause project", u"pause:"_s, u"project"_s, u"0011"_s);
        row("pause running", u"pause:"_s, u"running"_s, u"0011"_s);
        row("pause paused", u"pause:"_s, u"paused"_s, u"0000"_s);
        row("pause fee", u"pause:"_s, u"fee"_s, u"0000"_s);
        row("resume paused", u"resume:"_s, u"paused"_s, u"0011"_s);
        row("resume finished period", u"resume:"_s, u"finished"_s, u"0011"_s);
        row("resume running", u"resume:"_s, u"running"_s, u"0000"_s);
        row("resume day entry", u"resume:"_s, u"day"_s, u"0000"_s);
        row("stop running", u"actionButtonClicked:"_s, u"running"_s, u"0011"_s);
        row("stop paused", u"actionButtonClicked:"_s, u"paused"_s, u"0011"_s);
        row("stop finished", u"actionButtonClicked:"_s, u"finished"_s, u"0000"_s);
        row("stop project", u"actionButtonClicked:"_s, u"project"_s, u"0000"_s);
        row("revert changed, named", u"revert:"_s, u"none"_s, u"1011"_s);
        row("revert changed, untitled", u"revert:"_s, u"none"_s, u"1110"_s);
        row("revert unchanged", u"revert:"_s, u"none"_s, u"0010"_s);
        row("anything else", u"load:"_s, u"none"_s, u"0111"_s);
    }
    void validation() {
        QFETCH(QString, action);
        QFETCH(QString, row);
        QFETCH(QString, flags);
        Project project(u"P"_s, u""_s, 0, 0, 0, 0, -1, u""_s);
        auto running = periodEntry(u"22.11.2026 09:00"_s);
        auto paused = periodEntry(u"22.11.2026 09:00"_s);
        paused->setPausedAt(at(u"22.11.2026 09:30"_s));
        auto finished = periodEntry(u"22.11.2026 09:00"_s, u"22.11.2026 10:00"_s);
        auto day = dayEntry(u"22.11.2026"_s, 30);
        auto fee = flatFee(u"22.11.2026"_s, 10.0f);
        const QHash<QString, const ProjectItem *> items{{u"running"_s, running.get()},
                                                        {u"paused"_s, paused.get()},
                                                        {u"finished"_s, finished.get()},
                                                        {u"day"_s, day.get()},
                                                        {u"fee"_s, fee.get()}};
        CommandValidation::Selection selection;
        if (row != u"none") {
            selection.project = &project;
            selection.item = items.value(row);
        }
        const CommandValidation::DocumentState document{flags[0] == u'1', flags[1] == u'1'};
        QCOMPARE(CommandValidation::validateToolbarItem(action, selection, document),
                 flags[2] == u'1');
        QCOMPARE(CommandValidation::validateMenuItem(action, selection, document),
                 flags[3] == u'1');
    }
};

QTEST_GUILESS_MAIN(TestToolbarItems)
#include "tst_toolbaritems.moc"
