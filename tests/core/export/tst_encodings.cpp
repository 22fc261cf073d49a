#include "export/TextEncodings.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestEncodings : public QObject {
    Q_OBJECT

private slots:
    void listIsSortedWithoutDuplicates() {
        const QStringList &names = TextEncodings::availableNames();
        QVERIFY(names.size() > 100);
        for (qsizetype i = 1; i < names.size(); ++i)
            QVERIFY2(names[i - 1].compare(names[i], Qt::CaseInsensitive) < 0,
                     qPrintable(names[i - 1] + u" before " + names[i]));
        for (const QString &name : {u"macintosh"_s, u"UTF-8"_s, u"ISO_8859-1:1987"_s,
                                    u"windows-1252"_s, u"UTF-16"_s, u"macos-6_2-10.4"_s})
            QVERIFY2(names.contains(name), qPrintable(name));
        QVERIFY(names.contains(TextEncodings::defaultName()));
    }

    void displayName_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("displayName");
        QTest::newRow("IANA name") << u"macintosh"_s << u"macintosh"_s;
        QTest::newRow("ICU name of Mac OS Roman") << u"macos-0_2-10.2"_s << u"macintosh"_s;
        QTest::newRow("alias of Mac OS Roman") << u"mac"_s << u"macintosh"_s;
        QTest::newRow("alias of Latin-1") << u"latin1"_s << u"ISO_8859-1:1987"_s;
        QTest::newRow("another alias of Latin-1") << u"csISOLatin1"_s << u"ISO_8859-1:1987"_s;
        QTest::newRow("no IANA name") << u"macos-6_2-10.4"_s << u"macos-6_2-10.4"_s;
        QTest::newRow("unknown") << u"klingon"_s << QString();
        QTest::newRow("empty is not the default converter") << QString() << QString();
    }
    void displayName() {
        QFETCH(QString, name);
        QTEST(TextEncodings::displayName(name), "displayName");
    }
};

QTEST_GUILESS_MAIN(TestEncodings)
#include "tst_encodings.moc"
