#include "export/HTMLExporter.h"
#include "export/HTMLStyles.h"
#include "model/ProjectCollection.h"
#include "platform/AtomicFile.h"
#include "stores/CustomerStorage.h"
#include "support/ExportSamples.h"
#include "support/Files.h"

#include <QTest>

namespace {

const QString simpleStyle = QStringLiteral(HOURFOLD_RESOURCE_DIR "/Styles/Simple.hfstyle");

// Template file name to text; a null text leaves the file out.
using Templates = QMap<QString, QString>;

} // namespace

class TestHTMLExporter : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("HOME", QFile::encodeName(m_home.path())); }

    void init() {
        m_target = std::make_unique<QTemporaryDir>();
        m_collection = std::make_unique<ProjectCollection>(*m_settings);
        m_collection->setCurrencyFormatter(&m_settings.dollars);
        m_customers = std::make_unique<CustomerStorage>(m_target->filePath(u"customers.plist"_s),
                                                        *m_collection, *m_settings);
        m_collection->setCustomerDirectory(m_customers.get());
        for (const auto &customer : ExportSamples::htmlCustomers())
            m_customers->addCustomer(customer);
        for (const auto &added : ExportSamples::htmlDocument())
            m_collection->addProject(added);
    }

    // Only "Layout" matches the search text.
    void matchesGolden_data() {
        QTest::addColumn<bool>("applyFilter");
        QTest::addColumn<QString>("golden");
        QTest::newRow("filter ignored") << false << u"simple-report.html"_s;
        QTest::newRow("filter applied") << true << u"simple-filtered.html"_s;
    }
    void matchesGolden() {
        QFETCH(bool, applyFilter);
        QFETCH(QString, golden);
        m_collection->setSearchText(u"Layout"_s);
        const QByteArray written = run(simpleStyle, applyFilter);
        if (qEnvironmentVariableIsSet("HOURFOLD_WRITE_GOLDEN"))
            QVERIFY(AtomicFile::write(ExportSamples::goldenPath(golden), written).ok);
        QCOMPARE(written, readFile(ExportSamples::goldenPath(golden)));
    }

    void expandsInOrder_data() {
        QTest::addColumn<Templates>("templates");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QString>("expected");
        const QStringList website{u"Website"_s};
        const QString projects = u"%projects%"_s;
        QTest::newRow("description shows the wage")
            << Templates{{u"report.html"_s, projects},
                         {u"project.template"_s, u"[%projectdescription%]"_s}}
            << website << u"[Relaunch at $45.50<br/>in two steps]\n"_s;
        QTest::newRow("a comment keeps the project placeholder")
            << Templates{{u"report.html"_s, projects},
                         {u"project.template"_s, u"%projectname%:%entries%"_s},
                         {u"entry.template"_s, u"(%entrydescription%)"_s}}
            << website
            << u"Website:(Layout for %projectname%<br/>first draft)\n()\n(Call)\n(Ongoing)\n\n"_s;
        QTest::newRow("times of finished, day and running entries")
            << Templates{{u"report.html"_s, projects},
                         {u"project.template"_s, u"%entries%"_s},
                         {u"entry.template"_s,
                          u"%startdate%|%starttime%|%enddate%|%endtime%|%duration%|%pauseduration%|%state%"_s}}
            << website
            << u"Nov 2, 2026|09:00|Nov 2, 2026|10:30|01:15|00:15|<img "
               u"src=\"images/checked.png\"/>\n"
               u"Nov 3, 2026|22:00|Nov 4, 2026|01:15|03:15|00:00|\n"
               u"11/5/26||||00:45|00:00|\n"
               u"Nov 22, 2026|08:00|<i>---</i>||<font color=\"red\">01:47</font>|00:20|\n\n"_s;
        QTest::newRow("flat fees")
            << Templates{{u"report.html"_s, projects},
                         {u"project.template"_s, u"%flatfeeentries%"_s},
                         {u"flatfeeentry.template"_s,
                          u"%day%|%amount%|%entrydescription%|%state%"_s}}
            << website << u"11/6/26|$120.50|Hosting|<img src=\"images/checked.png\"/>\n\n"_s;
        QTest::newRow("customers with and without picture")
            << Templates{{u"report.html"_s, projects},
                         {u"project.template"_s, u"%customername%=%customerimage%;"_s}}
            << QStringList{u"Website"_s, u"Internal"_s, u"Other"_s}
            << u"Acme & Co=<img src=\"images/customer1.jpg\"/>;\nPlain Ltd=;\n=;\n"_s;
        QTest::newRow("missing templates are empty")
            << Templates{{u"report.html"_s, u"<%projects%>"_s}} << website << u"<\n>"_s;
        QTest::newRow("no report template") << Templates{} << website << QString();
        QTest::newRow("date of today")
            << Templates{{u"report.html"_s, u"%datestring% %projects%"_s}} << QStringList()
            << u"November 22, 2026 "_s;
    }
    void expandsInOrder() {
        QFETCH(Templates, templates);
        QFETCH(QStringList, names);
        QTemporaryDir style;
        for (auto it = templates.cbegin(); it != templates.cend(); ++it)
            QVERIFY(AtomicFile::write(style.filePath(it.key()), it.value().toUtf8()).ok);
        QTEST(QString::fromUtf8(run(style.path(), false, names)), "expected");
    }

    // Only the customer with a picture gets a JPEG, of the picture's size; a second export keeps
    // the style's files that are there and adds none that were taken away.
    void writesPicturesAndStyleCopiesOnce() {
        run(simpleStyle, false);
        QCOMPARE(QDir(m_target->filePath(u"images"_s)).entryList(QDir::Files),
                 (QStringList{u"checked.png"_s, u"customer1.jpg"_s}));
        QCOMPARE(QImage(m_target->filePath(u"images/customer1.jpg"_s)).size(), QSize(4, 2));
        QVERIFY(AtomicFile::write(m_target->filePath(u"screen.css"_s), "mine").ok);
        QVERIFY(QFile::remove(m_target->filePath(u"images/checked.png"_s)));
        const QByteArray second = run(simpleStyle, false, {u"Internal"_s});
        QCOMPARE(readFile(m_target->filePath(u"screen.css"_s)), "mine");
        QCOMPARE(readFile(m_target->filePath(u"print.css"_s)),
                 readFile(simpleStyle + u"/print.css"));
        QVERIFY(!QFile::exists(m_target->filePath(u"images/checked.png"_s)));
        QVERIFY(second.contains("Internal"));
        QVERIFY(!second.contains("Website"));
    }

    void listsStyles() {
        const QString user = HTMLStyles::userStylesFolder();
        QCOMPARE(user, m_home.filePath(u".qttest/share/Hourfold3/Styles"_s));
        QVERIFY(QDir().mkpath(user + u"/Mine.hfstyle"));
        QVERIFY(QDir().mkpath(user + u"/Draft.hfstyle.old"));
        QVERIFY(QDir().mkpath(user + u"/Elsewhere"));
        QVERIFY(AtomicFile::write(user + u"/Loose.hfstyle", "").ok);
        const QString builtIn = QStringLiteral(HOURFOLD_RESOURCE_DIR "/Styles/");
        const QList<HTMLStyles::Style> expected{
            {builtIn + u"Invoice.hfstyle", u"Invoice.hfstyle"_s},
            {builtIn + u"Simple.hfstyle", u"Simple.hfstyle"_s},
            {user + u"/Draft.hfstyle.old", u"Draft.hfstyle.old"_s},
            {user + u"/Mine.hfstyle", u"Mine.hfstyle"_s}};
        QCOMPARE(HTMLStyles::availableStyles(), expected);
        // Where files count as well (as among the built-in styles), the loose file is one too.
        QCOMPARE(HTMLStyles::stylesIn(user, false).size(), 3);
    }

private:
    QByteArray run(const QString &style, bool applyFilter,
                   const QStringList &names = {u"Website"_s, u"Internal"_s}) {
        HTMLExporter exporter(style, m_customers.get());
        exporter.setProjectCollection(m_collection.get());
        const auto result =
            exporter.exportProjects(names, {}, {}, m_target->path(), applyFilter, u"UTF-8"_s);
        if (!result.ok)
            return "failed: " + result.error.toUtf8();
        return readFile(m_target->filePath(u"report.html"_s));
    }

    QTemporaryDir m_home;
    ExportSamples::Settings m_settings;
    std::unique_ptr<QTemporaryDir> m_target;
    std::unique_ptr<ProjectCollection> m_collection;
    std::unique_ptr<CustomerStorage> m_customers;
};

QTEST_GUILESS_MAIN(TestHTMLExporter)
#include "tst_htmlexporter.moc"
