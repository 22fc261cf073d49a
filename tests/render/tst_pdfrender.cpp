#include "export/PDFExporter.h"
#include "model/Entry.h"
#include "model/ProjectCollection.h"
#include "platform/AtomicFile.h"
#include "platform/Preferences.h"
#include "render/WebEngineReportRenderer.h"
#include "render/WebEngineSetup.h"

#include <QApplication>
#include <QLocale>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QtTest>

class TstPdfRender : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void pdfHoldsTheReportInPrintStyle();
    void scriptsDoNotRun();
    void remoteRequestsAreNotMade();
    void interceptorBlocksAllButLocalFiles();
    void pagesHaveTheMarginsAndPaperSize();
    void printingGoesToThePrinter();
    void missingReportFails();
    void exportsAStyledReport();

private:
    static QByteArray runBytes(const QString &program, const QStringList &arguments);
    static QString run(const QString &program, const QStringList &arguments) {
        return QString::fromUtf8(runBytes(program, arguments));
    }
    void writeReport();

    QTemporaryDir m_folder;
    QTcpServer m_remote; // stands for a web server the report must never reach
    WebEngineReportRenderer m_renderer;
    QString m_pdfPath;
    QString m_text;
};

QByteArray TstPdfRender::runBytes(const QString &program, const QStringList &arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(30000) || process.exitCode() != 0)
        return {};
    return process.readAllStandardOutput();
}

void TstPdfRender::writeReport() {
    const QString remote = QStringLiteral("http://127.0.0.1:%1").arg(m_remote.serverPort());
    QString rows;
    for (int i = 1; i <= 60; ++i)
        rows += QStringLiteral("<p>Entry %1 of Bookkeeping: 00:15</p>\n").arg(i);
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
    QVERIFY(AtomicFile::write(m_folder.filePath(QStringLiteral("report.html")), html.toUtf8()).ok);
    QVERIFY(AtomicFile::write(m_folder.filePath(QStringLiteral("print.css")),
                              ".screen { display: none } .print { display: block }")
                .ok);
}

void TstPdfRender::initTestCase() {
    QVERIFY(m_folder.isValid());
    QVERIFY(m_remote.listen(QHostAddress::LocalHost));
    writeReport();
    if (QTest::currentTestFailed())
        return;
    const ReportRenderer::PdfResult result = m_renderer.renderPdf(m_folder.path());
    QVERIFY2(result.ok, qPrintable(result.error));
    QVERIFY(result.pdf.startsWith("%PDF-"));
    m_pdfPath = m_folder.filePath(QStringLiteral("report.pdf"));
    QVERIFY(AtomicFile::write(m_pdfPath, result.pdf).ok);
    m_text = run(QStringLiteral("pdftotext"),
                 {QStringLiteral("-layout"), m_pdfPath, QStringLiteral("-")});
    QVERIFY(!m_text.isEmpty());
}

void TstPdfRender::pdfHoldsTheReportInPrintStyle() {
    QVERIFY(m_text.contains(QStringLiteral("Website relaunch")));
    QVERIFY(m_text.contains(QStringLiteral("Bookkeeping")));
    QVERIFY(m_text.contains(QStringLiteral("Total 27:45")));
    QVERIFY(m_text.contains(QStringLiteral("PrintOnly")));
    QVERIFY(!m_text.contains(QStringLiteral("ScreenOnly")));
}

void TstPdfRender::scriptsDoNotRun() {
    QVERIFY(!m_text.contains(QStringLiteral("ScriptRan")));
}

void TstPdfRender::remoteRequestsAreNotMade() {
    // Local content may not reach remote addresses, so the engine stops the style sheet and the
    // picture before they get to the interceptor.
    QVERIFY(!m_remote.hasPendingConnections());
    QCOMPARE(m_renderer.blockedRequestCount(), 0);
}

void TstPdfRender::interceptorBlocksAllButLocalFiles() {
    // A page that may reach remote addresses: only the interceptor stands in the way.
    LocalOnlyRequestInterceptor interceptor;
    QWebEngineProfile profile;
    profile.setUrlRequestInterceptor(&interceptor);
    QWebEnginePage page(&profile);
    page.settings()->setAttribute(QWebEngineSettings::JavascriptEnabled, false);
    page.settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
    QSignalSpy loaded(&page, &QWebEnginePage::loadFinished);
    page.load(QUrl::fromLocalFile(m_folder.filePath(QStringLiteral("report.html"))));
    QVERIFY(loaded.wait(30000));
    QCOMPARE(interceptor.blockedCount(), 2); // the style sheet and the picture
    QVERIFY(!m_remote.hasPendingConnections());
}

void TstPdfRender::pagesHaveTheMarginsAndPaperSize() {
    const QString boxes =
        run(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), QStringLiteral("-l"),
                                          QStringLiteral("1"), m_pdfPath, QStringLiteral("-")});
    const QRectF paper =
        WebEngineReportRenderer::pageLayout(QLocale()).fullRect(QPageLayout::Point);
    const QRegularExpression page(QStringLiteral("<page width=\"([\\d.]+)\" height=\"([\\d.]+)\""));
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
    // Text starts at the left margin, a right-aligned line ends at the right one, the first line
    // sits just below the top margin and the full first page stops short of the bottom one.
    QVERIFY2(qAbs(text.left() - 35) < 2, qPrintable(QString::number(text.left())));
    QVERIFY2(qAbs(text.right() - (paper.width() - 35)) < 2,
             qPrintable(QString::number(text.right())));
    QVERIFY2(text.top() >= 45 && text.top() < 60, qPrintable(QString::number(text.top())));
    QVERIFY2(text.bottom() <= paper.height() - 35 && text.bottom() > paper.height() - 35 - 30,
             qPrintable(QString::number(text.bottom())));
    const QString secondPage =
        run(QStringLiteral("pdftotext"),
            {QStringLiteral("-f"), QStringLiteral("2"), m_pdfPath, QStringLiteral("-")});
    QVERIFY(secondPage.contains(QStringLiteral("Total 27:45")));
}

void TstPdfRender::printingGoesToThePrinter() {
    // A printer writing into a PDF file stands for a real one.
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    const QString printed = m_folder.filePath(QStringLiteral("printed.pdf"));
    printer.setOutputFileName(printed);
    printer.setPageLayout(WebEngineReportRenderer::pageLayout(QLocale()));
    QVERIFY(m_renderer.printTo(m_folder.path(), printer));
    // The engine hands the printer pictures of the pages: the same two pages, with ink on them.
    QVERIFY(run(QStringLiteral("pdfinfo"), {printed})
                .contains(QRegularExpression(QStringLiteral("Pages: +2\\n"))));
    QImage firstPage;
    QVERIFY(firstPage.loadFromData(
        runBytes(QStringLiteral("pdftoppm"),
                 {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("30"),
                  QStringLiteral("-l"), QStringLiteral("1"), printed})));
    int inked = 0;
    for (int y = 0; y < firstPage.height(); ++y)
        for (int x = 0; x < firstPage.width(); ++x)
            inked += qGray(firstPage.pixel(x, y)) < 128;
    QVERIFY(inked > 100);
}

void TstPdfRender::missingReportFails() {
    QTemporaryDir empty;
    const ReportRenderer::PdfResult result = m_renderer.renderPdf(empty.path());
    QVERIFY(!result.ok);
    QVERIFY(result.pdf.isEmpty());
    QVERIFY(result.error.contains(empty.path()));
}

void TstPdfRender::exportsAStyledReport() {
    Preferences preferences(m_folder.filePath(QStringLiteral("p.conf")));
    ProjectCollection collection(preferences);
    auto project = std::make_shared<Project>(QStringLiteral("Harbour website"), QString(), 80.0f, 0,
                                             0, 0, -1, QString());
    auto entry = std::make_shared<Entry>();
    entry->setDate(QStringLiteral("02.11.2026"));
    entry->setTime(150);
    entry->setComment(QStringLiteral("Navigation redesign"));
    project->addEntry(entry);
    collection.addProject(project);

    PDFExporter exporter(QStringLiteral(HOURFOLD_RESOURCE_DIR "/Styles/Simple.hfstyle"), nullptr,
                         m_renderer);
    exporter.setProjectCollection(&collection);
    exporter.setScratchFolder(m_folder.filePath(QStringLiteral("scratch")));
    const QString path = m_folder.filePath(QStringLiteral("styled.pdf"));
    const Exporter::Result result = exporter.exportProjects({QStringLiteral("Harbour website")}, {},
                                                            {}, path, false, QString());
    QVERIFY2(result.ok, qPrintable(result.error));
    const QString text = run(QStringLiteral("pdftotext"), {path, QStringLiteral("-")});
    QVERIFY2(text.contains(QStringLiteral("Harbour website")), qPrintable(text));
    QVERIFY(text.contains(QStringLiteral("Navigation redesign")));
    QVERIFY(text.contains(QStringLiteral("02:30")));
}

int main(int argc, char *argv[]) {
    // Chromium reads its settings when it starts, so they are set before the application exists.
    WebEngineSetup::prepareProcess();
    QApplication app(argc, argv);
    TstPdfRender test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_pdfrender.moc"
