#include "export/RTFExporter.h"
#include "export/RtfWriter.h"
#include "model/ProjectCollection.h"
#include "support/ExportSamples.h"
#include "support/Files.h"

#include <QRegularExpression>
#include <QTest>
#include <QTextDocument>

namespace {

const QString simpleStyle = QStringLiteral(HOURFOLD_RESOURCE_DIR "/Styles/Simple.hfstyle");
const QByteArray header = "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1\n"
                          "{\\fonttbl{\\f0\\fswiss Helvetica;}}\n";

// What a reader of the RTF sees: whether its groups nest properly, its control words in order
// and its text with the \uN? escapes decoded.
struct Parsed {
    bool balanced = true;
    QStringList controlWords;
    QString text;
};

Parsed parse(const QByteArray &rtf) {
    Parsed parsed;
    int depth = 0;
    static const QRegularExpression word(u"^\\\\([a-z]+)(-?\\d+)? ?"_s);
    const QString source = QString::fromLatin1(rtf);
    for (qsizetype i = 0; i < source.size();) {
        const QChar c = source[i];
        if (c == u'{' || c == u'}') {
            depth += c == u'{' ? 1 : -1;
            parsed.balanced = parsed.balanced && (depth > 0 || i == source.size() - 2);
            ++i;
        } else if (c == u'\\' && source.size() > i + 1 && !source[i + 1].isLetter()) {
            parsed.text += source[i + 1];
            i += 2;
        } else if (c == u'\\') {
            const auto match = word.match(QStringView(source).mid(i));
            parsed.controlWords.append(match.captured(1));
            if (match.captured(1) == u"u") {
                parsed.text += QChar(char16_t(match.captured(2).toShort()));
                ++i; // the fallback character
            }
            i += match.capturedLength();
        } else {
            if (c != u'\n')
                parsed.text += c;
            ++i;
        }
    }
    parsed.balanced = parsed.balanced && depth == 0;
    return parsed;
}

} // namespace

class TestRtf : public QObject {
    Q_OBJECT

private slots:
    void escapes_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("rtf");
        QTest::newRow("plain") << u"Plain text 1.5"_s << QByteArray("Plain text 1.5");
        QTest::newRow("special characters") << u"{a\\b}"_s << QByteArray("\\{a\\\\b\\}");
        QTest::newRow("Latin-1") << u"Café"_s << QByteArray("Caf\\u233?");
        QTest::newRow("euro") << u"5 €"_s << QByteArray("5 \\u8364?");
        QTest::newRow("above 32767 is negative") << u"\uFB01x"_s << QByteArray("\\u-1279?x");
        QTest::newRow("outside the BMP, two halves") << u"😀"_s << QByteArray("\\u-10179?\\u-8704?");
        QTest::newRow("breaks, tabs, fixed spaces")
            << u"a\u2028b\tc\u00A0d"_s << QByteArray("a\\line b\\tab c\\~d");
        QTest::newRow("controls and pictures dropped")
            << u"a\u0001\u007F\uFFFCb"_s << QByteArray("ab");
    }
    void escapes() {
        QFETCH(QString, text);
        QTEST(RtfWriter::escaped(text), "rtf");
    }

    void writesDocuments_data() {
        QTest::addColumn<QString>("html");
        QTest::addColumn<QByteArray>("colors");
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("paragraphs")
            << u"<p>One</p><p>Two</p>"_s << QByteArray()
            << QByteArray(
                   "\\pard\\plain\\sb180\\sa180 One\\par\n\\pard\\plain\\sb180\\sa180 Two\\par\n");
        QTest::newRow("bold, italics, underlined")
            << u"<p><b>b</b> <i>i</i> <u>u</u> <b><i>bi</i></b></p>"_s << QByteArray()
            << QByteArray(
                   "\\pard\\plain\\sb180\\sa180 {\\b b} {\\i i} {\\ul u} {\\b\\i bi}\\par\n");
        QTest::newRow("colours in the table")
            << u"<p><font color=\"red\">r</font><span style=\"color:#1f4e79\">b</span>"
               u"<font color=\"red\">r</font></p>"_s
            << QByteArray("\\red255\\green0\\blue0;\\red31\\green78\\blue121;")
            << QByteArray("\\pard\\plain\\sb180\\sa180 {\\cf1 r}{\\cf2 b}{\\cf1 r}\\par\n");
        QTest::newRow("line break and alignment")
            << u"<p align=\"right\">a<br/>b</p>"_s << QByteArray()
            << QByteArray("\\pard\\plain\\qr\\sb180\\sa180 a\\line b\\par\n");
        QTest::newRow("sizes") << u"<p><span style=\"font-size:10pt\">s</span></p>"_s
                               << QByteArray()
                               << QByteArray("\\pard\\plain\\sb180\\sa180 {\\fs20 s}\\par\n");
        QTest::newRow("table")
            << u"<table><tr><th>A</th><th>B</th></tr><tr><td>1</td><td>x<br/>y</td></tr></table>"_s
            << QByteArray()
            << QByteArray("\\pard\\plain \\par\n"
                          "\\trowd\\trgaph108\\cellx4680\\cellx9360\n"
                          "\\pard\\plain\\intbl\\qc {\\b A}\\cell\n"
                          "\\pard\\plain\\intbl\\qc {\\b B}\\cell\n\\row\n"
                          "\\trowd\\trgaph108\\cellx4680\\cellx9360\n"
                          "\\pard\\plain\\intbl 1\\cell\n"
                          "\\pard\\plain\\intbl x\\line y\\cell\n\\row\n"
                          "\\pard\\plain \\par\n");
        QTest::newRow("column span")
            << u"<table><tr><td colspan=\"2\">wide</td></tr><tr><td>a</td><td>b</td></tr></table>"_s
            << QByteArray()
            << QByteArray("\\pard\\plain \\par\n"
                          "\\trowd\\trgaph108\\cellx9360\n"
                          "\\pard\\plain\\intbl wide\\cell\n\\row\n"
                          "\\trowd\\trgaph108\\cellx4680\\cellx9360\n"
                          "\\pard\\plain\\intbl a\\cell\n"
                          "\\pard\\plain\\intbl b\\cell\n\\row\n"
                          "\\pard\\plain \\par\n");
    }
    void writesDocuments() {
        QFETCH(QString, html);
        QFETCH(QByteArray, colors);
        QFETCH(QByteArray, body);
        QTextDocument document;
        document.setHtml(html);
        QCOMPARE(RtfWriter::write(document),
                 QByteArray(header + "{\\colortbl;" + colors + "}\n" + body + "}\n"));
    }

    // A report through the style, and a failed write that is logged.
    void exportsReport() {
        QTemporaryDir folder;
        ProjectCollection collection(*m_settings);
        collection.setCurrencyFormatter(&m_settings.dollars);
        auto cafe = project(u"Café"_s, 50.0f);
        cafe->setDescription(u"Design {draft}"_s);
        cafe->addEntry(commented(dayEntry(u"05.11.2026"_s, 45), u"Logo\nsketches"_s, true));
        cafe->addEntry(periodEntry(u"22.11.2026 08:00"_s));
        collection.addProject(cafe);
        RTFExporter exporter(simpleStyle, nullptr);
        exporter.setProjectCollection(&collection);
        exporter.setScratchFolder(folder.filePath(u"scratch"_s));
        const QString path = folder.filePath(u"report.rtf"_s);
        QVERIFY(exporter.exportProjects({u"Café"_s}, {}, {}, path, false, u"UTF-8"_s).ok);
        const QByteArray rtf = readFile(path);
        QVERIFY(rtf.startsWith(QByteArray(header + "{\\colortbl;")));
        // The live duration of the running entry is red.
        QVERIFY(rtf.contains("\\red255\\green0\\blue0;"));
        for (const char byte : rtf)
            QVERIFY(uchar(byte) < 0x80);
        const Parsed parsed = parse(rtf);
        QVERIFY(parsed.balanced);
        for (const auto &word : {u"trowd"_s, u"cellx"_s, u"intbl"_s, u"cell"_s, u"row"_s, u"b"_s,
                                 u"i"_s, u"cf"_s, u"line"_s, u"par"_s})
            QVERIFY2(parsed.controlWords.contains(word), qPrintable(word));
        for (const auto &text : {u"Café"_s, u"Design {draft}"_s, u"Logosketches"_s, u"---"_s,
                                 u"$50.00"_s, u"November 22, 2026"_s})
            QVERIFY2(parsed.text.contains(text), qPrintable(text));
        QCOMPARE(QFileInfo(folder.filePath(u"scratch"_s)).permissions() & 0x0077, 0);
        QVERIFY(QFile::exists(folder.filePath(u"scratch/images/checked.png"_s)));
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(u"^cannot create a temporary file"_s));
        QTest::ignoreMessage(QtWarningMsg, "Error writing file");
        QVERIFY(!exporter
                     .exportProjects({}, {}, {}, folder.filePath(u"missing/report.rtf"_s), false,
                                     u"UTF-8"_s)
                     .ok);
    }

private:
    ExportSamples::Settings m_settings;
};

QTEST_MAIN(TestRtf)
#include "tst_rtf.moc"
