#include "stores/KeyedArchiver.h"
#include "stores/TagStorage.h"
#include "support/Files.h"
#include "support/PlistScript.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestTagStorage : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_tags = std::make_unique<TagStorage>(m_folder->filePath(u"tags.plist"_s));
    }

    void addingNames_data() {
        QTest::addColumn<QStringList>("added");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<QStringList>("completionsOfW");
        QTest::newRow("case matters")
            << QStringList{u"Work,work"_s, u"Work"_s} << QStringList{u"Work"_s, u"work"_s}
            << QStringList{u"Work"_s};
        QTest::newRow("list order")
            << QStringList{u"wW,Web,W,Work"_s} << QStringList{u"wW"_s, u"Web"_s, u"W"_s, u"Work"_s}
            << QStringList{u"Web"_s, u"W"_s, u"Work"_s};
        QTest::newRow("blanks kept") << QStringList{u" W,x,,x"_s}
                                     << QStringList{u" W"_s, u"x"_s, QString()} << QStringList();
        QTest::newRow("empty text")
            << QStringList{QString()} << QStringList{QString()} << QStringList();
    }
    void addingNames() {
        QFETCH(QStringList, added);
        QFETCH(QStringList, expected);
        QSignalSpy changed(m_tags.get(), &TagStorage::tagsChanged);
        for (const QString &text : added)
            m_tags->addTagsFromString(text);
        QCOMPARE(m_tags->tags(), expected);
        QTEST(m_tags->completionsForSubstring(u"W"_s), "completionsOfW");
        QCOMPARE(changed.count(), added.size());
        QCOMPARE(reloaded(), expected);
    }

    void endOfEditing_data() {
        QTest::addColumn<QString>("visible"); // project, timer, flat fee, tag editor
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("expected");
        const QStringList ab{u"a"_s, u"b"_s};
        QTest::newRow("project") << u"1111"_s << u"c,a"_s << ab + QStringList{u"c"_s};
        QTest::newRow("timer") << u"0111"_s << u"d"_s << ab + QStringList{u"d"_s};
        QTest::newRow("flat fee") << u"0011"_s << u"e"_s << ab + QStringList{u"e"_s};
        QTest::newRow("editor removes a") << u"0001"_s << u"b,x,b"_s << QStringList{u"b"_s, u"x"_s};
        QTest::newRow("editor emptied") << u"0001"_s << QString() << QStringList{QString()};
        QTest::newRow("none") << u"0000"_s << u"x"_s << ab + QStringList{QString()};
    }
    void endOfEditing() {
        QFETCH(QString, visible);
        QFETCH(QString, text);
        QFETCH(QStringList, expected);
        m_tags->setTagsFromString(u"a,b"_s);
        m_tags->controlTextDidEndEditing(
            TagStorage::firstVisiblePanel(visible[0] == u'1', visible[1] == u'1',
                                          visible[2] == u'1', visible[3] == u'1'),
            text);
        QCOMPARE(m_tags->tags(), expected);
        QCOMPARE(m_tags->editorFieldText(), expected.join(u','));
        QCOMPARE(reloaded(), expected);
    }

    void fileReadByPython() {
        m_tags->addTagsFromString(u"Work,Größe, b,"_s);
        QCOMPARE(runPlistScript(u"print(cls(root), [ref(u) for u in root['NS.objects']])"_s,
                                m_tags->tagsPath()),
                 u"NSMutableArray ['Work', 'Größe', ' b', '']\n"_s);
    }

    void damagedFileIsKept_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("archive"); // the reader itself logs what is no archive
        QTest::newRow("no property list") << QByteArray("tags") << false;
        QTest::newRow("no list") << KeyedArchiver::archivedData(u"Work"_s) << true;
        QTest::newRow("not only names")
            << KeyedArchiver::archivedData(QVariantList{u"a"_s, 1}) << true;
    }
    void damagedFileIsKept() {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, archive);
        m_tags->addTagsFromString(u"Work"_s);
        // The second damage gets a copy of its own; the same damage again makes none.
        for (const QString &copy : {u".damaged"_s, u".damaged-2"_s, u".damaged-2"_s}) {
            QVERIFY(writeFile(m_tags->tagsPath(), bytes + copy.toUtf8()));
            if (!archive)
                QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^rejected"_s));
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^cannot read .*tags.plist"_s));
            if (!QFile::exists(m_tags->tagsPath() + copy))
                QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^kept the damaged"_s));
            QVERIFY(!m_tags->loadTags());
            QCOMPARE(readFile(m_tags->tagsPath() + copy), bytes + copy.toUtf8());
        }
        QVERIFY(!QFile::exists(m_tags->tagsPath() + u".damaged-3"_s));
        QCOMPARE(m_tags->tags(), QStringList{u"Work"_s});
    }

    void missingFileAndFailedWrite() {
        TagStorage tags(m_folder->filePath(u"missing/tags.plist"_s));
        QVERIFY(tags.loadTags());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^cannot create a temporary"_s));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Could not write .*tags.plist"_s));
        tags.addTagsFromString(u"Work"_s);
        QCOMPARE(tags.tags(), QStringList{u"Work"_s});
    }

private:
    QStringList reloaded() const {
        TagStorage other(m_tags->tagsPath());
        other.loadTags();
        return other.tags();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<TagStorage> m_tags;
};

QTEST_GUILESS_MAIN(TestTagStorage)
#include "tst_tagstorage.moc"
