#include "mainwindow/ToolbarCustomizeDialog.h"

#include <QListWidget>
#include <QTest>

using namespace Qt::StringLiterals;

// Arranging the toolbar: only items whose commands exist are offered, separators and spaces may
// be added any number of times, and Restore Defaults keeps the default order of what exists.
class TestToolbarCustomizeDialog : public QObject {
    Q_OBJECT

private slots:
    void offersWhatExistsAndIsNotShown() {
        ToolbarCustomizeDialog dialog({u"Delete"_s, u"Edit"_s, u"Details"_s}, {u"Edit"_s});
        QCOMPARE(identifiers(dialog.availableList()),
                 (QStringList{u"Separator"_s, u"Space"_s, u"FlexibleSpace"_s, u"Delete"_s,
                              u"Details"_s}));
        QCOMPARE(dialog.items(), QStringList{u"Edit"_s});
    }

    void arranging() {
        ToolbarCustomizeDialog dialog({u"Delete"_s, u"Edit"_s, u"Details"_s}, {u"Edit"_s});
        select(dialog.availableList(), u"Details"_s);
        dialog.addSelected();
        select(dialog.availableList(), u"Separator"_s);
        dialog.toolbarList()->setCurrentRow(0);
        dialog.addSelected();
        QCOMPARE(dialog.items(), (QStringList{u"Edit"_s, u"Separator"_s, u"Details"_s}));
        // A separator stays on offer after it was added; Details is no longer offered.
        QVERIFY(identifiers(dialog.availableList()).contains(u"Separator"_s));
        QVERIFY(!identifiers(dialog.availableList()).contains(u"Details"_s));
        dialog.toolbarList()->setCurrentRow(2);
        dialog.moveSelected(-2);
        QCOMPARE(dialog.items(), (QStringList{u"Details"_s, u"Edit"_s, u"Separator"_s}));
        dialog.moveSelected(-1);
        QCOMPARE(dialog.items(), (QStringList{u"Details"_s, u"Edit"_s, u"Separator"_s}));
        dialog.toolbarList()->setCurrentRow(1);
        dialog.removeSelected();
        QCOMPARE(dialog.items(), (QStringList{u"Details"_s, u"Separator"_s}));
        QVERIFY(identifiers(dialog.availableList()).contains(u"Edit"_s));
        dialog.restoreDefaults();
        QCOMPARE(dialog.items(),
                 (QStringList{u"Delete"_s, u"Edit"_s, u"Separator"_s, u"Details"_s}));
    }

private:
    static QStringList identifiers(const QListWidget *list) {
        QStringList result;
        for (int row = 0; row < list->count(); ++row)
            result << list->item(row)->data(Qt::UserRole).toString();
        return result;
    }
    static void select(QListWidget *list, const QString &identifier) {
        list->setCurrentRow(int(identifiers(list).indexOf(identifier)));
    }
};

QTEST_MAIN(TestToolbarCustomizeDialog)
#include "tst_toolbarcustomizedialog.moc"
