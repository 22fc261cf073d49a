#include "app/SheetFixture.h"

#include "export/ExportDialogue.h"
#include "export/ExportFormatSheet.h"
#include "export/ExportPanels.h"
#include "export/ExportProjectSheet.h"
#include "export/HTMLStyles.h"
#include "export/ReportPrinter.h"
#include "export/StyleChooser.h"
#include "export/TextEncodings.h"
#include "model/ProjectFile.h"
#include "render/WebEngineSetup.h"
#include "support/ExportSamples.h"
#include "support/FileFailures.h"
#include "support/Files.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QProcess>
#include <QProgressDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>

// Answers the panels at once with the paths the test gave, and prints to a PDF file.
struct ScriptedPanels : ExportPanels {
    void beginFolderPanel(const QString &directory, const QString &prompt, Done done) override {
        asked << directory << prompt;
        done(path);
    }
    void beginSavePanel(const QString &directory, const QString &fileType, Done done) override {
        asked << directory << fileType;
        done(path);
    }
    void beginStylesPanel(const QString &, DoneMany done) override { done({path}); }
    bool runPrintDialog(QPrinter &printer) override {
        printer.setOutputFileName(path);
        return true;
    }
    void runPrintPreview(QPrinter &printer, const Paint &paint) override {
        QPrintPreviewWidget preview(&printer);
        QObject::connect(&preview, &QPrintPreviewWidget::paintRequested, &preview,
                         [&paint](QPrinter *shown) { paint(*shown); });
        preview.updatePreview();
        previewPages = preview.pageCount();
    }
    QString path;
    QStringList asked;
    int previewPages = 0;
};

class TestExportDialogue : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_fixture = std::make_unique<SheetFixture>();
        m_fixture->collection.setCurrencyFormatter(&m_fixture->currency);
        m_fixture->alpha->addEntry(commented(dayEntry(u"03.03.2025"_s, 90), u"Draft \"one\""_s));
        m_fixture->beta->addEntry(periodEntry(u"04.03.2025 09:00"_s, u"04.03.2025 10:30"_s));
        m_fixture->beta->addEntry(flatFee(u"05.03.2025"_s, 25.5f));
        m_panels = ScriptedPanels();
        m_dialogue = std::make_unique<ExportDialogue>(
            ExportDialogue::Services{m_fixture->collection, &m_fixture->customers,
                                     m_fixture->preferences, m_fixture->user, m_panels, nullptr},
            &m_fixture->window);
        m_dialogue->showExportSheet();
    }

    void cleanup() {
        m_dialogue.reset();
        m_fixture.reset();
    }

    void csvEqualsCommandLine_data() {
        QTest::addColumn<QStringList>("options"); // text, field delimiter, line ending, encoding
        QTest::addColumn<QString>("unchecked");   // field check boxes
        QTest::addColumn<QStringList>("cliOptions");
        QTest::newRow("presets") << QStringList{u"\""_s, u","_s, u"0"_s, u""_s} << QString()
                                 << QStringList{};
        QTest::newRow("tab, CRLF, fields")
            << QStringList{u"'x"_s, u"{tab}"_s, u"2"_s, u"UTF-16LE"_s} << u"project1 entry0"_s
            << QStringList{u"--project-fields"_s, u"name,total-duration,hourly-wages,total-wages"_s,
                           u"--entry-fields"_s,   u"period,duration,description,state"_s,
                           u"--line-ending"_s,    u"crlf"_s};
    }

    void csvEqualsCommandLine() {
        QFETCH(QStringList, options);
        QFETCH(QString, unchecked);
        QFETCH(QStringList, cliOptions);
        const QString encoding = options[3].isEmpty() ? TextEncodings::defaultName() : options[3];
        ExportFormatSheet &sheet = *m_dialogue->formatSheet();
        chooseFormat(3);
        SheetFixture::type(SheetFixture::control<QComboBox>(sheet, u"textDelimiter"_s), options[0]);
        SheetFixture::type(SheetFixture::control<QComboBox>(sheet, u"fieldDelimiter"_s),
                           options[1]);
        SheetFixture::control<QComboBox>(sheet, u"lineEndings"_s)
            ->setCurrentIndex(options[2].toInt());
        SheetFixture::control<QComboBox>(sheet, u"csvEncoding"_s)->setCurrentText(encoding);
        next();
        for (const QString &box : unchecked.split(u' ', Qt::SkipEmptyParts))
            click(*m_dialogue->projectSheet(), box);
        m_panels.path = m_fixture->folder.filePath(u"dialogue.csv"_s);
        click(*m_dialogue->projectSheet(), u"export"_s);

        const QString document = m_fixture->folder.filePath(u"work.projects"_s);
        QVERIFY(ProjectFile::save(document, m_fixture->collection.projectArray()).ok);
        const QString cliPath = m_fixture->folder.filePath(u"cli.csv"_s);
        QProcess cli;
        cli.start(QStringLiteral(HOURFOLD_CLI_PATH),
                  QStringList{u"--file"_s, document, u"export"_s, u"--format"_s, u"csv"_s,
                              u"--output"_s, cliPath, u"--encoding"_s, encoding,
                              u"--text-delimiter"_s, options[0], u"--field-delimiter"_s,
                              options[1]} +
                      cliOptions);
        QVERIFY(cli.waitForFinished(30000));
        QCOMPARE(cli.exitCode(), 0);
        QCOMPARE(readFile(m_panels.path), readFile(cliPath));
    }

    // The folder chooser starts in the home folder, then where the last export went.
    void htmlIntoChosenFolder() {
        chooseFormat(1);
        next();
        m_panels.path = m_fixture->folder.filePath(u"report"_s);
        QVERIFY(QDir().mkdir(m_panels.path));
        click(*m_dialogue->projectSheet(), u"export"_s);
        QCOMPARE(m_panels.asked, (QStringList{QDir::homePath(), u"Choose folder"_s}));
        QVERIFY(readFile(m_panels.path + u"/report.html"_s).contains("Alpha"));
        m_dialogue->showExportSheet();
        next();
        click(*m_dialogue->projectSheet(), u"export"_s);
        QCOMPARE(m_panels.asked.value(2), m_fixture->folder.path());
        QCOMPARE(m_panels.asked.value(3), u"pdf"_s);
    }

    void noProjectSelected() {
        next();
        click(*m_dialogue->projectSheet(), u"selectNone"_s);
        click(*m_dialogue->projectSheet(), u"export"_s);
        QCOMPARE(m_fixture->user.alerts.size(), 1);
        const UserAlerts::Alert &alert = m_fixture->user.alerts.first();
        QCOMPARE(alert.message, u"No project selected."_s);
        QCOMPARE(alert.informativeText, u"At least one project has to be selected."_s);
        QCOMPARE(alert.style, UserAlerts::Style::Critical);
        QVERIFY(m_dialogue->projectSheet()->isVisible());
        QVERIFY(m_panels.asked.isEmpty());
    }

    void customerChoiceResetsChecks_data() {
        QTest::addColumn<QString>("customer");
        QTest::addColumn<QStringList>("projects");
        QTest::newRow("ACME") << u"ACME"_s << QStringList{u"Alpha"_s};
        QTest::newRow("unassigned") << u"Unassigned projects"_s << QStringList{u"Beta"_s};
        QTest::newRow("no projects") << u"Bolt"_s << QStringList{};
        QTest::newRow("all") << u"All projects"_s << QStringList{u"Alpha"_s, u"Beta"_s};
    }

    void customerChoiceResetsChecks() {
        QFETCH(QString, customer);
        QFETCH(QStringList, projects);
        next();
        ExportProjectSheet &sheet = *m_dialogue->projectSheet();
        auto *customers = SheetFixture::control<QComboBox>(sheet, u"customers"_s);
        click(sheet, u"invert"_s);
        QTest::keyClick(customers, Qt::Key_End);
        QTest::keyClick(customers, Qt::Key_Home);
        while (customers->currentText() != customer && customers->currentIndex() < 4)
            QTest::keyClick(customers, Qt::Key_Down);
        auto *list = SheetFixture::control<QListWidget>(sheet, u"projects"_s);
        QStringList checked;
        for (int row = 0; row < list->count(); ++row) {
            if (list->item(row)->checkState() == Qt::Checked)
                checked << list->item(row)->text();
        }
        QCOMPARE(checked, projects);
        QCOMPARE(list->count(), projects.size());
    }

    // The second copy of a style fails and leaves the first one as it was.
    void styleInstalledTwice() {
        const QString style = m_fixture->folder.filePath(u"Mine.hfstyle"_s);
        QVERIFY(QDir().mkpath(style));
        QVERIFY(writeFile(style + u"/report.html"_s, "first"));
        m_panels.path = style;
        ExportFormatSheet &sheet = *m_dialogue->formatSheet();
        auto *chooser = SheetFixture::control<StyleChooser>(sheet, u"styles0"_s);
        const int builtIn = chooser->count();
        click(sheet, u"addStyle"_s);
        QCOMPARE(chooser->count(), builtIn + 1);
        QCOMPARE(chooser->item(builtIn)->text(), u"Mine.hfstyle"_s);
        QVERIFY(m_fixture->user.alerts.isEmpty());
        QVERIFY(writeFile(style + u"/report.html"_s, "second"));
        click(sheet, u"addStyle"_s);
        QCOMPARE(m_fixture->user.messages(), QStringList{u"Error while adding style."_s});
        QCOMPARE(
            m_fixture->user.alerts.first().informativeText,
            u"The style \"Mine.hfstyle\" could not be copied to \"~/.qttest/share/Hourfold3/Styles\"."_s);
        QCOMPARE(readFile(HTMLStyles::userStylesFolder() + u"/Mine.hfstyle/report.html"_s),
                 QByteArray("first"));
        QCOMPARE(chooser->count(), builtIn + 1);
    }

    // Cancel in the progress dialogue ends the export without a file.
    void cancelledExportLeavesNoFile() {
        for (int index = 0; index < 300; ++index)
            m_fixture->collection.addProject(project(u"P%1"_s.arg(index)));
        chooseFormat(4);
        next();
        m_dialogue->setProgressDelay(0);
        connect(&m_dialogue->controller(), &ExportController::progress, this, [this] {
            QProgressDialog *progress = m_dialogue->progressDialog();
            if (progress->isVisible() && !m_cancelled++)
                QTest::mouseClick(progress->findChild<QPushButton *>(), Qt::LeftButton);
        });
        QSignalSpy finished(m_dialogue.get(), &ExportDialogue::exportFinished);
        m_panels.path = m_fixture->folder.filePath(u"long.txt"_s);
        click(*m_dialogue->projectSheet(), u"export"_s);
        QCOMPARE(m_cancelled, 1);
        QVERIFY(finished.first().first().value<Exporter::Result>().cancelled);
        QVERIFY(!QFile::exists(m_panels.path));
        QVERIFY(m_fixture->user.alerts.isEmpty());
    }

    // A write that fails names the path and says why.
    void failedExportIsReported() {
        chooseFormat(4);
        next();
        const QString folder = m_fixture->folder.filePath(u"locked"_s);
        QVERIFY(QDir().mkdir(folder));
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
        const FileFailures::ObeyPermissions obey;
        m_panels.path = folder + u"/report.txt"_s;
        click(*m_dialogue->projectSheet(), u"export"_s);
        QCOMPARE(m_fixture->user.messages(),
                 QStringList{u"The report could not be exported to \"%1\"."_s.arg(m_panels.path)});
        QVERIFY(m_fixture->user.alerts.first().informativeText.endsWith(u"Permission denied"_s));
        QCOMPARE(m_fixture->user.alerts.first().style, UserAlerts::Style::Critical);
    }

    // The projects of a hidden customer are not printed; the preview shows the pages first.
    void printHoldsShownProjects() {
        m_fixture->collection.addProject(project(u"Gamma"_s, 10.0f, 2));
        m_fixture->customers.uncheckOthers(0);
        m_panels.path = m_fixture->folder.filePath(u"printed.pdf"_s);
        ReportPrinter printer(
            {m_fixture->collection, &m_fixture->customers, m_fixture->user, m_panels},
            &m_fixture->window);
        QVERIFY(printer.previewReport());
        QVERIFY(m_panels.previewPages > 0);
        QVERIFY(printer.printReport());
        QProcess text;
        text.start(u"pdftotext"_s, {m_panels.path, u"-"_s});
        QVERIFY(text.waitForFinished(30000));
        const QString printed = QString::fromUtf8(text.readAllStandardOutput());
        QVERIFY(printed.contains(u"Alpha"_s) && printed.contains(u"Beta"_s));
        QVERIFY(!printed.contains(u"Gamma"_s));
    }

private:
    void chooseFormat(int format) {
        SheetFixture::control<QTabWidget>(*m_dialogue->formatSheet(), u"formats"_s)
            ->setCurrentIndex(format);
    }
    void next() { click(*m_dialogue->formatSheet(), u"next"_s); }
    // By keyboard, as check boxes take clicks only on their box and label.
    static void click(QWidget &sheet, const QString &name) {
        QTest::keyClick(SheetFixture::control<QAbstractButton>(sheet, name), Qt::Key_Space);
    }

    std::unique_ptr<SheetFixture> m_fixture;
    ScriptedPanels m_panels;
    std::unique_ptr<ExportDialogue> m_dialogue;
    int m_cancelled = 0;
};

int main(int argc, char *argv[]) {
    QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    WebEngineSetup::prepareProcess();
    QApplication app(argc, argv);
    TestExportDialogue test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_exportdialogue.moc"
