// The import dialogue: the source follows the chosen data, problems must be agreed to be left
// out before Import, a changed choice drops the preview, and Import is one undo step.

#include "import/ImportDialogue.h"
#include "model/ProjectCollection.h"
#include "platform/Preferences.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_importdialogue : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    QString writeData() {
        const QString folder = m_dir.filePath(u"timewarrior"_s);
        QDir().mkpath(folder + u"/data"_s);
        QFile file(folder + u"/data/2026-11.data"_s);
        if (file.open(QIODevice::WriteOnly))
            file.write("inc 20261101T080000Z - 20261101T093000Z # Alpha x\n"
                       "inc 20261101T100000Z - 20261101T090000Z # Alpha\n"
                       "inc 20261102T080000Z # Beta\n");
        return folder;
    }

private slots:
    void problemsMustBeLeftOutOnRequest() {
        ImportDialogueLogic logic;
        logic.setSource(ImportSources::Source::Toggl);
        QCOMPARE(logic.setPath(writeData()), ImportSources::Source::Timewarrior);
        QCOMPARE(logic.summary(), u"Choose the data to import, then Preview."_s);
        logic.readPreview({});
        QCOMPARE(logic.projectRows(),
                 (QList<QStringList>{{u"Alpha"_s, QString(), u"1"_s, u"01:30"_s, u"0"_s},
                                     {u"Beta"_s, QString(), u"1"_s, u"00:00"_s, u"1"_s}}));
        QCOMPARE(logic.problemLines(),
                 QStringList{u"2026-11.data, line 2: ends before it starts"_s});
        QCOMPARE(logic.summary(), u"2 projects, 2 entries, 01:30 hours. 1 problems: they are left "
                                  "out only when you agree."_s);
        QVERIFY(!logic.canImport());
        logic.setSkipProblems(true);
        QVERIFY(logic.canImport());
        logic.setProjectTagPattern(u"^x$"_s);
        QVERIFY(!logic.hasPreview());
    }

    // Driving the window: typing the folder picks the source, Import stays off until the
    // problems are left out, and the import is one undo step.
    void importThroughTheWindow() {
        Preferences preferences(m_dir.filePath(u"prefs.conf"_s));
        ProjectCollection collection(preferences);
        ImportDialogue dialogue({collection, nullptr, nullptr, {}, {}});
        dialogue.show();
        auto *path = dialogue.findChild<QLineEdit *>();
        path->setText(writeData());
        emit path->editingFinished();
        QCOMPARE(dialogue.findChild<QComboBox *>()->currentText(), u"Timewarrior"_s);
        dialogue.preview();
        auto *importButton = dialogue.findChild<QPushButton *>(u"importButton"_s);
        QVERIFY(!importButton->isEnabled());
        dialogue.findChild<QCheckBox *>()->setChecked(true);
        QVERIFY(importButton->isEnabled());
        importButton->click();
        QCOMPARE(collection.projectNames(), (QStringList{u"Alpha"_s, u"Beta"_s}));
        QCOMPARE(collection.numWorkingEntries(), 1);
        QCOMPARE(collection.undoStack()->undoText(), u"Import"_s);
        collection.undoStack()->undo();
        QVERIFY(collection.projectArray().isEmpty());
    }
};

QTEST_MAIN(tst_importdialogue)
#include "tst_importdialogue.moc"
