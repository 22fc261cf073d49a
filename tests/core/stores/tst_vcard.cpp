#include "stores/VCardReader.h"

#include <QBuffer>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

// A picture of the given size in the given format, base64-encoded and cut into lines that each
// begin with the blank of a folded line.
QByteArray foldedPhoto(int width, const char *format, const QByteArray &lineBreak) {
    QImage image(width, 2, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    const QByteArray base64 = bytes.toBase64();
    QByteArray folded;
    for (qsizetype i = 0; i < base64.size(); i += 72)
        folded += lineBreak + ' ' + base64.mid(i, 72);
    return folded;
}

} // namespace

class TestVCard : public QObject {
    Q_OBJECT

private slots:
    void read_data() {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QStringList>("people"); // first|last|organization|uid|photo size
        QTest::addColumn<QStringList>("log");
        QTest::newRow("2.1 quoted-printable, base64 photo")
            << "BEGIN:VCARD\nVERSION:2.1\n"
               "N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:M=C3=BCller-L=C3=BCdenscheid;J=C3=BC=\n"
               "rgen;;;\n"
               "FN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:J=C3=BCrgen M=C3=BCller\n"
               "TEL;CELL;PREF:+49 170 1234567\n"
               "ORG;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:B=E4ckerei Schmidt;Verkauf\n"
               "PHOTO;ENCODING=BASE64;JPEG:" +
                   foldedPhoto(3, "JPG", "\n") + "\n\nEND:VCARD\n"
            << QStringList{u"Jürgen|Müller-Lüdenscheid|Bäckerei Schmidt||3x2"_s} << QStringList();
        QTest::newRow("3.0 folded, escaped, b photo")
            << "BEGIN:VCARD\r\nVERSION:3.0\r\nPRODID:-//Example//Contacts 1.0//EN\r\n"
               "N:O'Brien-Fitz\r\n\tgerald;Siobh\xC3\xA1n;;Dr.;\r\nFN:Dr. Siobh\xC3\xA1n "
               "O'Brien\r\n"
               "item1.ORG:Smith\\, Jones \\\\ Partners\\nLegal\\;Tax;Dept\r\n"
               "item1.X-LABEL:work\r\nNOTE:Met at the fair\\, 2026\r\n"
               "PHOTO;ENCODING=b;TYPE=JPEG:" +
                   foldedPhoto(4, "JPG", "\r\n") +
                   "\r\nUID:5A1D6F0E-77B1-4C2B-9D0C-3F2E1A4B5C6D\r\nEND:VCARD\r\n"
            << QStringList{u"Siobhán|O'Brien-Fitzgerald|Smith, Jones \\ Partners\nLegal;Tax|"
                           u"5A1D6F0E-77B1-4C2B-9D0C-3F2E1A4B5C6D|4x2"_s}
            << QStringList();
        QByteArray png = foldedPhoto(5, "PNG", "").replace(' ', "");
        QTest::newRow("4.0 without N, data photo")
            << "\xEF\xBB\xBF"
               "BEGIN:VCARD\r\nVERSION:4.0\r\nKIND:individual\r\n"
               "FN;ALTID=\"a:1\";LANGUAGE=en:Jane Doe\r\nEMAIL;TYPE=\"work,internet\":j@example.org"
               "\r\nPHOTO:data:image/png;base64," +
                   png + "\r\nUID:urn:uuid:4fbe8971-0bc3-424c-9c26-36c3e1eff6b1\r\nEND:VCARD\r\n"
            << QStringList{u"Jane Doe|||urn:uuid:4fbe8971-0bc3-424c-9c26-36c3e1eff6b1|5x2"_s}
            << QStringList();
        QTest::newRow("organisation only")
            << QByteArray("BEGIN:VCARD\nVERSION:3.0\nN:;;;;\nFN:Acme Corp\nORG:Acme Corp;Sales\n"
                          "PHOTO;VALUE=uri:https://example.com/logo.png\nEND:VCARD\n")
            << QStringList{u"||Acme Corp||0x0"_s} << QStringList();
        QTest::newRow("two cards")
            << QByteArray("begin:vcard\nversion:3.0\nn:Doe;John\nend:vcard\n"
                          "BEGIN:VCARD\nVERSION:3.0\nN:Roe;Rita\nEND:VCARD\n")
            << QStringList{u"John|Doe|||0x0"_s, u"Rita|Roe|||0x0"_s} << QStringList();
        QTest::newRow("garbage") << QByteArray("\0\xff\x10:;;\n\n=\nBEGIN:VCAR\n:x", 23)
                                 << QStringList() << QStringList();
        QTest::newRow("card without an end")
            << QByteArray("BEGIN:VCARD\nN:Doe;John\nBEGIN:VCARD\nN:Roe;Rita\n") << QStringList()
            << QStringList(2, u"an address card without an end is left out"_s);
        QTest::newRow("photo that is no picture")
            << QByteArray("BEGIN:VCARD\nFN:X\nPHOTO;ENCODING=b:AAAA\nEND:VCARD\n")
            << QStringList{u"X||||0x0"_s}
            << QStringList{u"the photo of an address card cannot be decoded and is left out"_s};
    }
    void read() {
        QFETCH(QByteArray, data);
        QFETCH(QStringList, log);
        for (const QString &line : log)
            QTest::ignoreMessage(QtWarningMsg, line.toUtf8().constData());
        QStringList read;
        for (const VCardReader::Person &person : VCardReader::read(data))
            read.append(QStringList{person.firstName, person.lastName, person.organization,
                                    person.uniqueId,
                                    u"%1x%2"_s.arg(person.image.width()).arg(person.image.height())}
                            .join(u'|'));
        QTEST(read, "people");
    }
};

QTEST_GUILESS_MAIN(TestVCard)
#include "tst_vcard.moc"
