#include "platform/Preferences.h"
#include "platform/VersionMigration.h"
#include "support/Files.h"

#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestPreferences : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void typedValuesSurviveTheFile() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"p.conf"_s);
        {
            Preferences preferences(path);
            QSignalSpy changed(&preferences, &Preferences::valueChanged);
            preferences.setObject(false, u"crashProtection");
            preferences.setObject(QTime(9, 30), u"defaultTime");
            preferences.setColor(QColor::fromRgbF(0.1f, 0.2f, 0.3f, 0.5f), u"unfinishedEntryColor");
            preferences.setObject(1, u"firstDayOfWeek");
            // Storing the value there already, or the default, announces nothing.
            preferences.setObject(1, u"firstDayOfWeek");
            preferences.setObject(false, u"saveOnExit");
            QCOMPARE(changed.count(), 4);
            QCOMPARE(changed.first().first().toString(), u"crashProtection"_s);
            QVERIFY(preferences.synchronize());
        }
        Preferences reread(path);
        QSignalSpy changed(&reread, &Preferences::valueChanged);
        reread.setObject(false, u"crashProtection");
        QCOMPARE(changed.count(), 0);
        QCOMPARE(reread.integerForKey(u"crashProtection"), 0);
        QVERIFY(!reread.boolForKey(u"crashProtection"));
        QCOMPARE(reread.timeForKey(u"defaultTime"), QTime(9, 30));
        QCOMPARE(reread.colorForKey(u"unfinishedEntryColor"),
                 QColor::fromRgbF(0.1f, 0.2f, 0.3f, 0.5f));
        QCOMPARE(reread.integerForKey(u"firstDayOfWeek"), 1);
        reread.removeObjectForKey(u"firstDayOfWeek"); // the registered default stands in again
        QCOMPARE(reread.integerForKey(u"firstDayOfWeek"), 0);
    }

    void migratesThePreviousVersion_data() {
        QTest::addColumn<bool>("newPreferencesExist");
        QTest::addColumn<bool>("newFolderExists");
        QTest::newRow("nothing of this version") << false << false;
        QTest::newRow("this version's files are kept") << true << true;
    }
    void migratesThePreviousVersion() {
        QFETCH(bool, newPreferencesExist);
        QFETCH(bool, newFolderExists);
        QTemporaryDir home;
        const VersionMigration::Paths paths{home.filePath(u"config/Hourfold/Hourfold3.conf"_s),
                                            home.filePath(u"config/Hourfold/Hourfold.conf"_s),
                                            home.filePath(u"data/Hourfold3"_s),
                                            home.filePath(u"data/Hourfold"_s)};
        writeFile(paths.previousPreferences, "[General]\nlistDateFormat=1\n");
        writeFile(paths.previousSupportFolder + u"/customers.plist"_s, "old customers");
        writeFile(paths.previousSupportFolder + u"/Styles/Plain.hfstyle/report.html"_s, "<html/>");
        if (newPreferencesExist)
            writeFile(paths.preferences, "[General]\nlistDateFormat=4\n");
        if (newFolderExists)
            writeFile(paths.supportFolder + u"/tags.plist"_s, "new tags");
        QVERIFY(VersionMigration::migrate(paths));
        QCOMPARE(Preferences(paths.preferences).integerForKey(u"listDateFormat"),
                 newPreferencesExist ? 4 : 1);
        QCOMPARE(QFileInfo::exists(paths.supportFolder + u"/customers.plist"_s), !newFolderExists);
        QCOMPARE(readFile(paths.supportFolder + u"/Styles/Plain.hfstyle/report.html"_s),
                 newFolderExists ? QByteArray() : QByteArray("<html/>"));
        QVERIFY(QFileInfo::exists(paths.previousPreferences)); // nothing is moved away
        QVERIFY(VersionMigration::createSupportFolder(paths.supportFolder));
        QVERIFY(QFileInfo(paths.supportFolder).isDir());
    }
};

QTEST_GUILESS_MAIN(TestPreferences)
#include "tst_preferences.moc"
