#include "export/ExportController.h"
#include "export/HTMLStyles.h"
#include "model/ProjectCollection.h"
#include "stores/CustomerStorage.h"
#include "support/ExportSamples.h"
#include "support/Files.h"
#include "support/RecordingAlerts.h"

#include <QSignalSpy>
#include <QTest>

namespace {

const QString stylesShown = u"~/.qttest/share/Hourfold3/Styles"_s;

} // namespace

class TestExportController : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        qputenv("HOME", QFile::encodeName(m_home.path()));
        QStandardPaths::setTestModeEnabled(true);
    }

    void init() {
        QDir(HTMLStyles::userStylesFolder()).removeRecursively();
        QFile::remove(HTMLStyles::userStylesFolder());
        m_preferences->removeObjectForKey(u"exportStartingDirectory");
        m_folder = std::make_unique<QTemporaryDir>();
        m_collection = std::make_unique<ProjectCollection>(*m_preferences);
        m_customers = std::make_unique<CustomerStorage>(m_folder->filePath(u"customers.plist"_s),
                                                        *m_collection, *m_preferences);
        m_collection->setCustomerDirectory(m_customers.get());
        for (const QString &name : {u"Beta"_s, u"Acme"_s, u"Cedar"_s})
            m_ids[name] = m_customers->addCustomer(customer(name));
        for (const auto &[name, customer] : {std::pair{u"Website"_s, m_ids[u"Acme"_s]},
                                             {u"Other"_s, -1},
                                             {u"Internal"_s, m_ids[u"Beta"_s]},
                                             {u"Misc"_s, -1}})
            m_collection->addProject(project(name, 10.0f, customer));
        m_alerts = RecordingAlerts();
        m_controller = std::make_unique<ExportController>(*m_collection, m_customers.get(),
                                                          *m_preferences, m_alerts, nullptr);
    }

    void customerChoices() {
        QStringList choices;
        for (const auto &choice : m_controller->customerChoices())
            choices.append(choice.separator ? u"-"_s
                                            : choice.title + u'#' + QString::number(choice.tag));
        QCOMPARE(choices, (QStringList{u"All projects#-99"_s, u"Unassigned projects#-1"_s, u"-"_s,
                                       u"Acme#%1"_s.arg(m_ids[u"Acme"_s]),
                                       u"Beta#%1"_s.arg(m_ids[u"Beta"_s]),
                                       u"Cedar#%1"_s.arg(m_ids[u"Cedar"_s])}));
    }

    void projectsOfCustomer_data() {
        QTest::addColumn<QString>("customer");
        QTest::addColumn<QString>("names");
        QTest::newRow("all") << u"all"_s << u"Website Other Internal Misc"_s;
        QTest::newRow("unassigned") << u"none"_s << u"Other Misc"_s;
        QTest::newRow("one customer") << u"Beta"_s << u"Internal"_s;
        QTest::newRow("customer without projects") << u"Cedar"_s << u""_s;
    }
    void projectsOfCustomer() {
        QFETCH(QString, customer);
        QFETCH(QString, names);
        const QStringList list = names.split(u' ', Qt::SkipEmptyParts);
        m_controller->selectNone();
        m_controller->setCustomer(tagOf(customer));
        QCOMPARE(m_controller->projectNames(), list);
        QCOMPARE(m_controller->checkStates(), QList<bool>(list.size(), true));
        QCOMPARE(m_controller->checkedProjectNames(), list);
    }

    void exportNeedsACheckedProject_data() {
        QTest::addColumn<QString>("customer");
        QTest::addColumn<QString>("selection");
        QTest::addColumn<QStringList>("checked");
        QTest::newRow("none selected") << u"all"_s << u"none"_s << QStringList();
        QTest::newRow("all inverted") << u"all"_s << u"invert"_s << QStringList();
        QTest::newRow("each unchecked") << u"none"_s << u"each"_s << QStringList();
        QTest::newRow("customer without projects") << u"Cedar"_s << u"all"_s << QStringList();
        QTest::newRow("one checked") << u"all"_s << u"one"_s << QStringList{u"Misc"_s};
    }
    void exportNeedsACheckedProject() {
        QFETCH(QString, customer);
        QFETCH(QString, selection);
        QFETCH(QStringList, checked);
        m_controller->setCustomer(tagOf(customer));
        if (selection == u"all") {
            m_controller->selectAll();
        } else if (selection == u"invert") {
            m_controller->invertSelection();
        } else if (selection == u"each") {
            for (int row = 0; row < m_controller->projectNames().size(); ++row)
                m_controller->setChecked(row, false);
        } else {
            m_controller->selectNone();
            m_controller->invertSelection();
            m_controller->invertSelection();
            m_controller->setChecked(3, selection == u"one");
        }
        QCOMPARE(m_controller->canExport(), !checked.isEmpty());
        QCOMPARE(m_controller->checkedProjectNames(), checked);
        QCOMPARE(m_alerts.criticalTexts(),
                 checked.isEmpty() ? QStringList{u"No project selected.|At least one project has "
                                                 u"to be selected.|OK"_s}
                                   : QStringList());
    }

    void delimiters_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("textDelimiter");
        QTest::addColumn<QString>("fieldDelimiter");
        QTest::newRow("empty") << u""_s << u""_s << u""_s;
        QTest::newRow("one character") << u";"_s << u";"_s << u";"_s;
        QTest::newRow("several cut") << u"|;,"_s << u"|"_s << u"|"_s;
        QTest::newRow("tab") << u"{tab}"_s << u"{"_s << u"\t"_s;
        QTest::newRow("space") << u"{space}"_s << u"{"_s << u" "_s;
        QTest::newRow("tab not whole") << u"{tab} "_s << u"{"_s << u"{"_s;
        QTest::newRow("space other case") << u"{Space}"_s << u"{"_s << u"{"_s;
    }
    void delimiters() {
        QFETCH(QString, typed);
        m_controller->setTextDelimiterText(typed);
        m_controller->setFieldDelimiterText(typed);
        QTEST(m_controller->textDelimiter(), "textDelimiter");
        QTEST(m_controller->fieldDelimiter(), "fieldDelimiter");
    }

    void formatsAndDestination_data() {
        QTest::addColumn<int>("format");
        QTest::addColumn<bool>("folder");
        QTest::addColumn<QString>("fileType");
        QTest::addColumn<bool>("fieldChoices");
        QTest::newRow("PDF") << 0 << false << u"pdf"_s << false;
        QTest::newRow("HTML") << 1 << true << u""_s << false;
        QTest::newRow("RTF") << 2 << false << u"rtf"_s << false;
        QTest::newRow("CSV") << 3 << false << u"csv"_s << true;
        QTest::newRow("Text") << 4 << false << u"txt"_s << true;
    }
    void formatsAndDestination() {
        QFETCH(int, format);
        QFETCH(bool, folder);
        m_controller->setFormat(format);
        QTEST(ExportController::showsFieldChoices(format), "fieldChoices");
        auto destination = m_controller->destination();
        QCOMPARE(destination.chooseFolder, folder);
        QTEST(destination.fileType, "fileType");
        QCOMPARE(destination.prompt, folder ? u"Choose folder"_s : QString());
        QCOMPARE(destination.startDirectory, m_home.path());
        m_preferences->setObject(m_folder->path(), u"exportStartingDirectory");
        QCOMPARE(m_controller->destination().startDirectory, m_folder->path());
    }

    // CSV with the chosen fields, delimiters and line ending, then text; both report their progress
    // project by project.
    void csvAndTextExport() {
        m_controller->setFormat(ExportController::Csv);
        m_controller->setCustomer(tagOf(u"all"_s));
        m_controller->setChecked(0, false);
        m_controller->setProjectFields({true, false, false, true, false});
        m_controller->setEntryFields({false, false, false, false, false});
        m_controller->setTextDelimiterText(u"'x"_s);
        m_controller->setFieldDelimiterText(u"{tab}"_s);
        m_controller->setLineEndingTag(2);
        const QString target = m_folder->filePath(u"out"_s);
        QVERIFY(QDir().mkdir(target));
        QSignalSpy progress(m_controller.get(), &ExportController::progress);
        const auto result = m_controller->exportTo(target + u"/report.csv");
        QVERIFY2(result.ok, qPrintable(result.error));
        const QByteArray written = readFile(target + u"/report.csv");
        QCOMPARE(written.left(written.indexOf("\r\n")), QByteArray("Name\tHourly wages"));
        QVERIFY(written.contains("'Other'"));
        QVERIFY(!written.contains("'Website'"));
        QCOMPARE(m_preferences->stringForKey(u"exportStartingDirectory"), target);
        QCOMPARE(static_cast<const QList<QVariantList> &>(progress),
                 (QList<QVariantList>{{1, 3}, {2, 3}, {3, 3}}));
        m_controller->setFormat(ExportController::Text);
        progress.clear();
        QVERIFY(m_controller->exportTo(m_folder->filePath(u"report"_s)).ok);
        QCOMPARE(static_cast<const QList<QVariantList> &>(progress),
                 (QList<QVariantList>{{1, 3}, {2, 3}, {3, 3}}));
        QVERIFY(readFile(m_folder->filePath(u"report"_s)).contains("Misc"));
    }

    void cancelWritesNothing_data() {
        QTest::addColumn<int>("format");
        for (const int format : {ExportController::Html, ExportController::Rtf,
                                 ExportController::Csv, ExportController::Text})
            QTest::addRow("%d", format) << format;
    }

    // A cancel while the projects go into the report ends the export without its file; the next
    // export runs to its end.
    void cancelWritesNothing() {
        QFETCH(int, format);
        m_controller->setFormat(format);
        connect(m_controller.get(), &ExportController::progress, this, [this](int done) {
            if (done == 2)
                m_controller->cancelExport();
        });
        const QString path = m_folder->filePath(u"out"_s);
        const QString written = format == ExportController::Html ? path + u"/report.html" : path;
        QVERIFY(QDir().mkpath(format == ExportController::Html ? path : m_folder->path()));
        const auto result = m_controller->writeTo(path);
        QVERIFY(result.cancelled && !result.ok);
        QVERIFY(!QFile::exists(written));
        disconnect(m_controller.get(), &ExportController::progress, this, nullptr);
        QVERIFY(m_controller->writeTo(path).ok);
        QVERIFY(QFile::exists(written));
    }

    void htmlExportWithChosenStyle() {
        const auto offered = ExportController::styles();
        QVERIFY(offered.size() >= 2);
        m_controller->setFormat(ExportController::Html);
        QCOMPARE(m_controller->stylePath(), offered.first().path);
        m_controller->setStylePath(offered.last().path);
        m_controller->setFormat(ExportController::Rtf);
        QCOMPARE(m_controller->stylePath(), offered.first().path);
        m_controller->setStylePath(m_folder->filePath(u"Gone.hfstyle"_s));
        QCOMPARE(m_controller->stylePath(), offered.first().path);
        // A style folder that is not installed is used where it is.
        const QString elsewhere = m_folder->filePath(u"Elsewhere.hfstyle"_s);
        QVERIFY(QDir().mkdir(elsewhere));
        m_controller->setStylePath(elsewhere);
        QCOMPARE(m_controller->stylePath(), elsewhere);
        m_controller->setFormat(ExportController::Html);
        QCOMPARE(m_controller->stylePath(), offered.last().path);
        const QString target = m_folder->filePath(u"site"_s);
        QVERIFY(QDir().mkdir(target));
        const auto result = m_controller->exportTo(target);
        QVERIFY2(result.ok, qPrintable(result.error));
        QVERIFY(readFile(target + u"/report.html"_s).contains("Website"));
        QCOMPARE(m_preferences->stringForKey(u"exportStartingDirectory"), m_folder->path());
        // Writing alone remembers no folder.
        const QString other = m_folder->filePath(u"other/site"_s);
        QVERIFY(QDir().mkpath(other));
        QVERIFY(m_controller->writeTo(other).ok);
        QVERIFY(readFile(other + u"/report.html"_s).contains("Website"));
        QCOMPARE(m_preferences->stringForKey(u"exportStartingDirectory"), m_folder->path());
    }

    void pdfWithoutRendererFails() {
        m_controller->setFormat(ExportController::Pdf);
        const auto result = m_controller->exportTo(m_folder->filePath(u"report.pdf"_s));
        QVERIFY(!result.ok);
        QCOMPARE(result.error, u"PDF export is not available: there is no PDF renderer."_s);
        QVERIFY(!QFile::exists(m_folder->filePath(u"report.pdf"_s)));
    }

    void addStyles_data() {
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QStringList>("alerts");
        QTest::addColumn<QString>("installed");
        const auto failed = [](const QString &style, const QString &buttons) {
            return u"The style \"%1.hfstyle\" could not be copied to \"%2\".|"_s.arg(style,
                                                                                     stylesShown) +
                   buttons;
        };
        const QString ask =
            u"Error while adding style. Would you like to add the remaining styles?|"_s;
        const QString three = u"Old.hfstyle Missing.hfstyle New.hfstyle"_s;
        QTest::newRow("new styles") << u"New.hfstyle Flat.hfstyle"_s << 0 << QStringList()
                                    << u"Flat.hfstyle New.hfstyle Old.hfstyle"_s;
        QTest::newRow("existing name")
            << u"Old.hfstyle"_s << 0
            << QStringList{u"Error while adding style.|"_s + failed(u"Old"_s, u"OK"_s)}
            << u"Old.hfstyle"_s;
        QTest::newRow("two failures, No stops")
            << three << 1 << QStringList{ask + failed(u"Old"_s, u"Yes,No"_s)} << u"Old.hfstyle"_s;
        QTest::newRow("two failures, Yes goes on")
            << three << 0
            << QStringList{ask + failed(u"Old"_s, u"Yes,No"_s),
                           ask + failed(u"Missing"_s, u"Yes,No"_s)}
            << u"New.hfstyle Old.hfstyle"_s;
    }
    void addStyles() {
        QFETCH(QString, chosen);
        QFETCH(int, answer);
        QFETCH(QString, installed);
        const QString styles = HTMLStyles::userStylesFolder();
        QVERIFY(QDir().mkpath(styles + u"/Old.hfstyle"_s));
        QVERIFY(writeFile(styles + u"/Old.hfstyle/report.html"_s, "old"));
        const QDir sources(m_folder->path());
        for (const QString &name : {u"New.hfstyle"_s, u"Old.hfstyle"_s}) {
            QVERIFY(sources.mkpath(name + u"/images"_s));
            QVERIFY(writeFile(sources.filePath(name + u"/report.html"_s), name.toUtf8()));
            QVERIFY(writeFile(sources.filePath(name + u"/images/logo.png"_s), "png"));
        }
        QVERIFY(writeFile(sources.filePath(u"Flat.hfstyle"_s), "flat"));
        QStringList paths;
        for (const QString &name : chosen.split(u' '))
            paths.append(sources.filePath(name));
        m_alerts.answer = answer;
        QSignalSpy changed(m_controller.get(), &ExportController::stylesChanged);
        m_controller->addStyles(paths);
        QTEST(m_alerts.criticalTexts(), "alerts");
        QCOMPARE(QDir(styles).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 installed.split(u' '));
        QCOMPARE(readFile(styles + u"/Old.hfstyle/report.html"_s), QByteArray("old"));
        QVERIFY(!QFile::exists(styles + u"/Old.hfstyle/images"_s));
        if (installed.contains(u"New.hfstyle"_s)) {
            QCOMPARE(readFile(styles + u"/New.hfstyle/report.html"_s), QByteArray("New.hfstyle"));
            QCOMPARE(readFile(styles + u"/New.hfstyle/images/logo.png"_s), QByteArray("png"));
            QVERIFY(ExportController::styles().contains(
                HTMLStyles::Style{styles + u"/New.hfstyle"_s, u"New.hfstyle"_s}));
        }
        QCOMPARE(changed.size(), 1);
    }

    // A file where the styles folder belongs, or where the folder above it belongs.
    void stylesFolderBlocked_data() {
        QTest::addColumn<bool>("aboveStyles");
        QTest::addColumn<QString>("alert");
        QTest::newRow("file named as the styles folder")
            << false
            << u"Error creating styles folder.|A file named \"%1\" already exists. Please delete "
               u"this file and try again.|OK"_s;
        QTest::newRow("folder not creatable")
            << true
            << u"Error creating styles folder.|The folder \"%1\" could not be created.|OK"_s;
    }
    void stylesFolderBlocked() {
        QFETCH(bool, aboveStyles);
        QFETCH(QString, alert);
        const QString styles = HTMLStyles::userStylesFolder();
        const QString blocked = aboveStyles ? QFileInfo(styles).absolutePath() : styles;
        QDir(blocked).removeRecursively();
        QVERIFY(QDir().mkpath(QFileInfo(blocked).absolutePath()));
        QVERIFY(writeFile(blocked, "in the way"));
        QVERIFY(QDir().mkpath(m_folder->filePath(u"New.hfstyle"_s)));
        QCOMPARE(m_controller->addStyles({m_folder->filePath(u"New.hfstyle"_s)}), 0);
        QCOMPARE(m_alerts.criticalTexts(), QStringList{alert.arg(stylesShown)});
        QCOMPARE(readFile(blocked), QByteArray("in the way"));
        QFile::remove(blocked);
    }

private:
    int tagOf(const QString &customer) const {
        if (customer == u"all")
            return ExportController::allProjectsTag;
        return customer == u"none" ? ExportController::unassignedTag : m_ids.value(customer);
    }

    QTemporaryDir m_home;
    TemporaryPreferences m_preferences;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ProjectCollection> m_collection;
    std::unique_ptr<CustomerStorage> m_customers;
    QHash<QString, int> m_ids;
    RecordingAlerts m_alerts;
    std::unique_ptr<ExportController> m_controller;
};

QTEST_GUILESS_MAIN(TestExportController)
#include "tst_exportcontroller.moc"
