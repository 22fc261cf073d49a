#include "platform/AtomicFile.h"
#include "render/WebEngineReportRenderer.h"
#include "render/WebEngineSetup.h"

#include <QApplication>
#include <QPrinter>
#include <QProcess>
#include <QTcpServer>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QtTest>

using namespace Qt::StringLiterals;

class TstPdfRender : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QVERIFY(m_folder.isValid());
        QVERIFY(m_remote.listen(QHostAddress::LocalHost));
        writeReport();
        if (QTest::currentTestFailed())
            return;
        const ReportRenderer::PdfResult result = m_renderer.renderPdf(m_folder.path());
        QVERIFY2(result.ok, qPrintable(result.error));
        QVERIFY(result.pdf.startsWith("%PDF-"));
        m_pdfPath = m_folder.filePath(u"report.pdf"_s);
        QVERIFY(AtomicFile::write(m_pdfPath, result.pdf).ok);
        m_text = run(u"pdftotext"_s, {u"-layout"_s, m_pdfPath, u"-"_s});
        QVERIFY(!m_text.isEmpty());
    }

    // The report in print style, without running its script; local content may not reach
    // remote addresses, so the engine stops the style sheet and the picture before they get to
    // the interceptor.
    void pdfHoldsTheReportAlone() {
        for (const QString &text :
             {u"Website relaunch"_s, u"Bookkeeping"_s, u"Total 27:45"_s, u"PrintOnly"_s})
            QVERIFY2(m_text.contains(text), qPrintable(text));
        QVERIFY(!m_text.contains(u"ScreenOnly"_s));
        QVERIFY(!m_text.contains(u"ScriptRan"_s));
        QVERIFY(!m_remote.hasPendingConnections());
        QCOMPARE(m_renderer.blockedRequestCount(), 0);
    }

    void interceptorBlocksAllButLocalFiles() {
        // A page that may reach remote addresses: only the interceptor stands in the way.
        LocalOnlyRequestInterceptor interceptor;
        QWebEngineProfile profile;
        profile.setUrlRequestInterceptor(&interceptor);
        QWebEnginePage page(&profile);
        page.settings()->setAttribute(QWebEngineSettings::JavascriptEnabled, false);
        page.settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
        QSignalSpy loaded(&page, &QWebEnginePage::loadFinished);
        page.load(QUrl::fromLocalFile(m_folder.filePath(u"report.html"_s)));
        QVERIFY(loaded.wait(30000));
        QCOMPARE(interceptor.blockedCount(), 2); // the style sheet and the picture
        QVERIFY(!m_remote.hasPendingConnections());
    }

    void pagesHaveTheMarginsAndPaperSize() {
        const QString boxes = run(u"pdftotext"_s, {u"-bbox"_s, u"-l"_s, u"1"_s, m_pdfPath, u"-"_s});
        const QRectF paper =
            WebEngineReportRenderer::pageLayout(QLocale()).fullRect(QPageLayout::Point);
        const QRegularExpression page(u"<page width=\"([\\d.]+)\" height=\"([\\d.]+)\""_s);
        const QRegularExpressionMatch size = page.match(boxes);
        QVERIFY(size.hasMatch());
        QCOMPARE(qRound(size.captured(1).toDouble()), qRound(paper.width()));
        QCOMPARE(qRound(size.captured(2).toDouble()), qRound(paper.height()));
        const QRegularExpression word(QStringLiteral(
            "xMin=\"([\\d.]+)\" yMin=\"([\\d.]+)\" xMax=\"([\\d.]+)\" yMax=\"([\\d.]+)\""));
        QRectF text;
        for (auto it = word.globalMatch(boxes); it.hasNext();) {
            const QRegularExpressionMatch m = it.next();
            text |= QRectF(QPointF(m.captured(1).toDouble(), m.captured(2).toDouble()),
                           QPointF(m.captured(3).toDouble(), m.captured(4).toDouble()));
        }
        // Text starts at the left margin, a right-aligned line ends at the right one, the first
        // line sits just below the top margin and the full first page stops short of the bottom
        // one.
        QVERIFY2(qAbs(text.left() - 35) < 2, qPrintable(QString::number(text.left())));
        QVERIFY2(qAbs(text.right() - (paper.width() - 35)) < 2,
                 qPrintable(QString::number(text.right())));
        QVERIFY2(text.top() >= 45 && text.top() < 60, qPrintable(QString::number(text.top())));
        QVERIFY2(text.bottom() <= paper.height() - 35 && text.bottom() > paper.height() - 35 - 30,
                 qPrintable(QString::number(text.bottom())));
        const QString secondPage = run(u"pdftotext"_s, {u"-f"_s, u"2"_s, m_pdfPath, u"-"_s});
        QVERIFY(secondPage.contains(u"Total 27:45"_s));
    }

    void printingGoesToThePrinter() {
        // A printer writing into a PDF file stands for a real one.
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        const QString printed = m_folder.filePath(u"printed.pdf"_s);
        printer.setOutputFileName(printed);
        printer.setPageLayout(WebEngineReportRenderer::pageLayout(QLocale()));
        QVERIFY(m_renderer.printTo(m_folder.path(), printer));
        // The printer gets pictures of the same two pages, inked only inside the margins.
        QVERIFY(run(u"pdfinfo"_s, {printed}).contains(QRegularExpression(u"Pages: +2\\n"_s)));
        QImage firstPage;
        QVERIFY(firstPage.loadFromData(
            runBytes(u"pdftoppm"_s, {u"-png"_s, u"-r"_s, u"72"_s, u"-l"_s, u"1"_s, printed})));
        QRect inked;
        for (int y = 0; y < firstPage.height(); ++y)
            for (int x = 0; x < firstPage.width(); ++x)
                if (qGray(firstPage.pixel(x, y)) < 128)
                    inked |= QRect(x, y, 1, 1);
        QVERIFY2(inked.left() >= 33 && inked.left() < 40,
                 qPrintable(QString::number(inked.left())));
        QVERIFY2(inked.top() >= 43 && inked.top() < 60, qPrintable(QString::number(inked.top())));
        QVERIFY2(inked.right() <= firstPage.width() - 33,
                 qPrintable(QString::number(inked.right())));
    }

    void missingReportFails() {
        QTemporaryDir empty;
        const ReportRenderer::PdfResult result = m_renderer.renderPdf(empty.path());
        QVERIFY(!result.ok);
        QVERIFY(result.pdf.isEmpty());
        QVERIFY(result.error.contains(empty.path()));
    }

private:
    static QByteArray runBytes(const QString &program, const QStringList &arguments) {
        QProcess process;
        process.start(program, arguments);
        if (!process.waitForFinished(30000) || process.exitCode() != 0)
            return {};
        return process.readAllStandardOutput();
    }

    static QString run(const QString &program, const QStringList &arguments) {
        return QString::fromUtf8(runBytes(program, arguments));
    }

    void writeReport() {
        const QString remote = u"http://127.0.0.1:%1"_s.arg(m_remote.serverPort());
        QString rows;
        for (int i = 1; i <= 60; ++i)
            rows += u"<p>Entry %1 of Bookkeeping: 00:15</p>\n"_s.arg(i);
        const QString html =
            QStringLiteral("<!DOCTYPE html><html><head><meta charset=\"utf-8\">"
                           "<style>body { margin: 0; font: 12pt sans-serif } p { margin: 0 0 4pt }"
                           " .print { display: none }</style>"
                           "<link rel=\"stylesheet\" href=\"print.css\" media=\"print\">"
                           "<link rel=\"stylesheet\" href=\"%1/remote.css\">"
                           "</head><body>"
                           "<p class=\"screen\">ScreenOnly</p><p class=\"print\">PrintOnly</p>"
                           "<h1>Website relaunch</h1><p>12:30</p>"
                           "<p style=\"text-align: right\">RightEdge</p>"
                           "<script>document.write('ScriptRan');</script>"
                           "<img src=\"%1/x.png\" alt=\"\">"
                           "<h1>Bookkeeping</h1>%2<p>Total 27:45</p>"
                           "</body></html>")
                .arg(remote, rows);
        QVERIFY(AtomicFile::write(m_folder.filePath(u"report.html"_s), html.toUtf8()).ok);
        QVERIFY(AtomicFile::write(m_folder.filePath(u"print.css"_s),
                                  ".screen { display: none } .print { display: block }")
                    .ok);
    }

    QTemporaryDir m_folder;
    QTcpServer m_remote; // stands for a web server the report must never reach
    WebEngineReportRenderer m_renderer;
    QString m_pdfPath;
    QString m_text;
};

int main(int argc, char *argv[]) {
    // Chromium reads its settings when it starts, so they are set before the application exists.
    WebEngineSetup::prepareProcess();
    QApplication app(argc, argv);
    TstPdfRender test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_pdfrender.moc"
