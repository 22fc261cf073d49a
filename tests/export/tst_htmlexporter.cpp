#include "core/ModelFixtures.h"
#include "export/HTMLExporter.h"
#include "export/HTMLStyles.h"
#include "model/LocalTimeFormat.h"
#include "model/ProjectCollection.h"
#include "platform/AtomicFile.h"
#include "platform/CurrencyFormatter.h"
#include "platform/LocaleFormat.h"
#include "stores/CustomerStorage.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTest>

namespace {

const QString simpleStyle = QStringLiteral(HOURFOLD_RESOURCE_DIR "/Styles/Simple.hfstyle");

QByteArray readFile(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString goldenPath(const QString &name) {
    return QStringLiteral(HOURFOLD_TEST_DATA "/export/") + name;
}

std::shared_ptr<Project> project(const QString &name, float wage, int customer = -1) {
    return std::make_shared<Project>(name, u""_s, wage, 0, 0, 0, customer, u""_s);
}

template <typename Item> Item commented(Item item, const QString &comment, bool checked = false) {
    item->setComment(comment);
    item->setChecked(checked);
    return item;
}

// Template file name to text; a null text leaves the file out.
using Templates = QMap<QString, QString>;

} // namespace

class TestHTMLExporter : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        qputenv("HOME", QFile::encodeName(m_home.path()));
        QStandardPaths::setTestModeEnabled(true);
        Clock::setNow(at(u"22.11.2026 10:07:30"_s));
        LocalTimeFormat::setFormat(u"%H:%M"_s, u"C"_s);
        LocaleFormat::setDateLocale(u"en_US"_s);
        Preferences::setShared(&m_preferences);
        m_preferences.setObject(1, u"listDateFormat");
    }

    void cleanupTestCase() { Preferences::setShared(nullptr); }

    void init() {
        m_target = std::make_unique<QTemporaryDir>();
        m_collection = std::make_unique<ProjectCollection>(m_preferences);
        m_collection->setCurrencyFormatter(&m_currency);
        m_customers = std::make_unique<CustomerStorage>(m_target->filePath(u"customers.plist"_s),
                                                        *m_collection, m_preferences);
        m_collection->setCustomerDirectory(m_customers.get());

        QImage logo(4, 2, QImage::Format_ARGB32);
        logo.fill(Qt::blue);
        auto pictured = std::make_shared<Customer>();
        pictured->setName(u"Acme & Co"_s);
        pictured->setCustomerImage(logo);
        m_pictured = m_customers->addCustomer(pictured);
        auto plain = std::make_shared<Customer>();
        plain->setName(u"Plain Ltd"_s);
        m_plain = m_customers->addCustomer(plain);

        auto website = project(u"Website"_s, 45.5f, m_pictured);
        website->setDescription(u"Relaunch at %hourlywage%\nin two steps"_s);
        auto layout = periodEntry(u"02.11.2026 09:00"_s, u"02.11.2026 10:30"_s);
        layout->setPauseEntries(
            {std::make_shared<PauseEntry>(at(u"02.11.2026 09:10"_s), at(u"02.11.2026 09:25"_s))});
        website->addEntry(commented(layout, u"Layout for %projectname%\nfirst draft"_s, true));
        website->addEntry(periodEntry(u"03.11.2026 22:00"_s, u"04.11.2026 01:15"_s));
        website->addEntry(commented(dayEntry(u"05.11.2026"_s, 45), u"Call"_s));
        website->addEntry(commented(flatFee(u"06.11.2026"_s, 120.5f), u"Hosting"_s, true));
        auto running = periodEntry(u"22.11.2026 08:00"_s);
        running->setPauseEntries(
            {std::make_shared<PauseEntry>(at(u"22.11.2026 09:00"_s), at(u"22.11.2026 09:20"_s))});
        website->addEntry(commented(running, u"Ongoing"_s));
        auto internal = project(u"Internal"_s, 0.0f, m_plain);
        internal->addEntry(commented(dayEntry(u"10.11.2026"_s, 60), u"Planning"_s));
        for (const auto &added : {website, internal, project(u"Other"_s, 10.0f)})
            m_collection->addProject(added);
    }

    void matchesGolden_data() {
        QTest::addColumn<QString>("searchText");
        QTest::addColumn<bool>("applyFilter");
        QTest::addColumn<QString>("golden");
        QTest::newRow("filter ignored") << u"Layout"_s << false << u"simple-report.html"_s;
        QTest::newRow("filter applied") << u"Layout"_s << true << u"simple-filtered.html"_s;
    }

    void matchesGolden() {
        QFETCH(QString, searchText);
        QFETCH(bool, applyFilter);
        QFETCH(QString, golden);
        m_collection->setSearchText(searchText);
        const QByteArray written = run(simpleStyle, applyFilter);
        if (qEnvironmentVariableIsSet("HOURFOLD_WRITE_GOLDEN"))
            QVERIFY(AtomicFile::write(goldenPath(golden), written).ok);
        QCOMPARE(written, readFile(goldenPath(golden)));
    }

    // Only the customer with a picture gets a JPEG, of the picture's size.
    void writesCustomerPictures() {
        run(simpleStyle, false);
        QCOMPARE(QDir(m_target->filePath(u"images"_s)).entryList(QDir::Files),
                 QStringList({u"checked.png"_s, u"customer%1.jpg"_s.arg(m_pictured)}));
        const QImage written(m_target->filePath(u"images/customer%1.jpg"_s.arg(m_pictured)));
        QCOMPARE(written.size(), QSize(4, 2));
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
        QFETCH(QString, expected);
        QTemporaryDir style;
        for (auto it = templates.cbegin(); it != templates.cend(); ++it)
            QVERIFY(AtomicFile::write(style.filePath(it.key()), it.value().toUtf8()).ok);
        QCOMPARE(QString::fromUtf8(run(style.path(), false, names)), expected);
    }

    void exportingTwiceKeepsStyleCopies() {
        run(simpleStyle, false);
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
    QTemporaryDir m_preferencesFolder;
    Preferences m_preferences{m_preferencesFolder.filePath(u"Hourfold3.conf"_s)};
    CurrencyFormatter m_currency{u"en_US"_s};
    std::unique_ptr<QTemporaryDir> m_target;
    std::unique_ptr<ProjectCollection> m_collection;
    std::unique_ptr<CustomerStorage> m_customers;
    int m_pictured = -1;
    int m_plain = -1;
};

QTEST_GUILESS_MAIN(TestHTMLExporter)
#include "tst_htmlexporter.moc"
