#include "core/model/ModelFixtures.h"

#include "details/DetailsPage.h"
#include "model/LocalTimeFormat.h"
#include "model/ProjectCollection.h"
#include "platform/CurrencyFormatter.h"
#include "platform/LocaleFormat.h"
#include "stores/CustomerStorage.h"

#include <QTest>

using PageOf = std::function<QString(const DetailsPage &)>;
Q_DECLARE_METATYPE(PageOf)

namespace {

const QString rule = u"<hr style=\"height: 1px; border-style: none; border-color: black; color: "
                     "black; background: black; width: 95%;\">"_s;
const QString table = u"<table style=\"border-collapse: separate; border-spacing: 4px 0px;\">"_s;

// "{Clock}" stands for the address of the program's picture "Clock".
QString withIcons(QString html) {
    const QString images =
        QDir::cleanPath(QCoreApplication::applicationDirPath() + u"/../share/hourfold/images"_s);
    for (const QString &name : {u"customer"_s, u"Clock"_s, u"pause_details"_s, u"dollarsign"_s,
                                u"Edit"_s, u"tags"_s, u"attachments"_s})
        html.replace(u'{' + name + u'}', u"file://"_s + images + u'/' + name + u".svg"_s);
    return html;
}

std::shared_ptr<Project> project(const QString &name, float wage, int customer) {
    return std::make_shared<Project>(name, u""_s, wage, 0, 0, 0, customer, u""_s);
}

} // namespace

class TestDetailsPage : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QStandardPaths::setTestModeEnabled(true);
        Clock::setNow(QDateTime(QDate(2026, 11, 22), QTime(10, 7, 30)));
        LocaleFormat::setDateLocale(u"en_US"_s);
        LocalTimeFormat::setFormat(u"%I:%M %p"_s, u"en_US.UTF-8"_s);
    }

    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_preferences = std::make_unique<Preferences>(m_folder->filePath(u"p.conf"_s));
        Preferences::setShared(m_preferences.get());
        m_collection = std::make_unique<ProjectCollection>(*m_preferences);
        m_customers = std::make_unique<CustomerStorage>(m_folder->filePath(u"customers.plist"_s),
                                                        *m_collection, *m_preferences);
        m_collection->setCustomerDirectory(m_customers.get());
        auto acme = std::make_shared<Customer>();
        acme->setName(u"Acme & Sons"_s);
        QCOMPARE(m_customers->addCustomer(acme), 1);
    }

    void cleanup() {
        m_customers.reset();
        m_collection.reset();
        Preferences::setShared(nullptr);
    }

    void itemPages_data() {
        QTest::addColumn<int>("listDateFormat");
        QTest::addColumn<PageOf>("pageOf");
        QTest::addColumn<QString>("expected");

        QTest::newRow("project with its customer, notes, tags and an attachment")
            << 3 << PageOf([](const DetailsPage &pages) {
                   auto web = project(u"Web <Relaunch>"_s, 60.0f, 1);
                   web->addEntry(dayEntry(u"20.11.2026"_s, 90));
                   web->addEntry(periodEntry(u"21.11.2026 13:00"_s, u"21.11.2026 14:00"_s));
                   web->addEntry(periodEntry(u"22.11.2026 09:00"_s)); // running: not counted
                   web->addEntry(flatFee(u"19.11.2026"_s, 100.0f));
                   web->setDescription(u"New shop\n<b>fast</b>"_s);
                   web->setTags(u"a,b"_s);
                   web->setAttachments(QStringList{u"/home/ann/docs/brief.pdf"_s});
                   return pages.printProjectDetails(*web);
               })
            << u"<h2>Web &lt;Relaunch&gt;</h2>"_s + rule + table +
                   uR"(<tr><td colspan="1" rowspan="3" style="vertical-align: top;"><img src="{customer}" width="32" height="32"></td>)"
                   uR"(<td style="text-align: right;">Customer:</td><td><strong>Acme &amp; Sons</strong></td></tr>)"
                   uR"(<tr><td style="text-align: right;">Total duration:</td><td><strong>02:30</strong></td></tr>)"
                   uR"(<tr><td>&nbsp;</td><td></td></tr>)"
                   uR"(<tr><td colspan="1" rowspan="2" style="vertical-align: top;"><img src="{dollarsign}" width="32" height="32"></td>)"
                   uR"(<td style="text-align: right;">Hourly wages:</td><td><strong>$60.00</strong></td></tr>)"
                   uR"(<tr><td style="text-align: right;">Total wages:</td><td><strong>$250.00</strong></td></tr>)"
                   u"</table>"_s +
                   rule + table +
                   uR"(<tr><td style="vertical-align: top;"><img src="{Edit}" width="32" height="32"></td>)"
                   uR"(<td>New shop<br/>&lt;b&gt;fast&lt;/b&gt;</td></tr></table>)"_s +
                   rule + table +
                   uR"(<tr><td style="vertical-align: top;"><img src="{tags}" width="32" height="32"></td>)"
                   uR"(<td>a, b</td></tr></table>)"_s +
                   rule + table +
                   uR"(<tr><td colspan="1" rowspan="1" style="vertical-align: top;"><img src="{attachments}" width="32" height="32"></td>)"
                   uR"(<td>brief.pdf</td></tr></table>)"_s;

        const QString internalPage =
            u"<h2>Internal</h2>"_s + rule + table +
            uR"(<tr><td colspan="1" rowspan="3" style="vertical-align: top;"><img src="{customer}" width="32" height="32"></td>)"
            uR"(<td style="text-align: right;">Customer:</td><td><strong>none</strong></td></tr>)"
            uR"(<tr><td style="text-align: right;">Total duration:</td><td><strong>00:00</strong></td></tr>)"
            uR"(<tr><td>&nbsp;</td><td></td></tr>)"
            uR"(<tr><td colspan="1" rowspan="2" style="vertical-align: top;"><img src="{dollarsign}" width="32" height="32"></td>)"
            uR"(<td style="text-align: right;">Hourly wages:</td><td><strong>$0.00</strong></td></tr>)"
            uR"(<tr><td style="text-align: right;">Total wages:</td><td><strong>$0.00</strong></td></tr>)"
            u"</table>"_s +
            rule;
        QTest::newRow("project without customer") << 3 << PageOf([](const DetailsPage &pages) {
            return pages.printProjectDetails(*project(u"Internal"_s, 0.0f, -1));
        }) << internalPage;
        QTest::newRow("project whose customer is unknown")
            << 3 << PageOf([](const DetailsPage &pages) {
                   return pages.printProjectDetails(*project(u"Internal"_s, 0.0f, 99));
               })
            << internalPage;

        const QString runningHead =
            table +
            uR"(<tr><td colspan="1" rowspan="3" style="vertical-align: top;"><img src="{Clock}" width="32" height="32"></td>)"
            uR"(<td style="text-align: right;">From:</td><td><strong>08:30 AM November 22, 2026</strong></td></tr>)"
            uR"(<tr><td style="text-align: right;">To:</td><td><strong>--:--</strong></td></tr>)"
            uR"(<tr><td>&nbsp;</td></tr>)"
            uR"(<tr><td colspan="1" rowspan="2" style="vertical-align: top;"><img src="{pause_details}" width="32" height="32"></td>)"_s;
        QTest::newRow("running entry")
            << 3 << PageOf([](const DetailsPage &pages) {
                   return pages.printEntryDetails(*periodEntry(u"22.11.2026 08:30"_s));
               })
            << runningHead +
                   uR"(<td style="text-align: right;">Pause time:</td><td><strong>00:00</strong></td></tr>)"
                   u"</table>"_s +
                   rule;
        QTest::newRow("paused entry")
            << 3 << PageOf([](const DetailsPage &pages) {
                   auto entry = periodEntry(u"22.11.2026 08:30"_s);
                   entry->setPausedAt(at(u"22.11.2026 09:45:10"_s));
                   return pages.printEntryDetails(*entry);
               })
            << runningHead +
                   uR"(<td style="text-align: right;">Pause time:</td><td><strong>00:22</strong></td></tr>)"
                   uR"(<tr><td style="text-align: right;">Paused at:</td><td> <strong>November 22, 2026 09:45 AM</strong></td></tr>)"
                   u"</table>"_s +
                   rule;
        QTest::newRow("finished entry with notes, tags and three attachments")
            << 3 << PageOf([](const DetailsPage &pages) {
                   auto entry = periodEntry(u"21.11.2026 13:00"_s, u"21.11.2026 17:15"_s);
                   entry->setPauseEntries({std::make_shared<PauseEntry>(
                       at(u"21.11.2026 14:00"_s), at(u"21.11.2026 14:20"_s))});
                   entry->setComment(u"Call\nwith client"_s);
                   entry->setTags(u"a,b"_s);
                   entry->setAttachments(QStringList{u"/tmp/x/report.pdf"_s,
                                                     u"https://example.com/docs/page.html"_s,
                                                     u"/tmp/notes/"_s});
                   return pages.printEntryDetails(*entry);
               })
            << table +
                   uR"(<tr><td colspan="1" rowspan="3" style="vertical-align: top;"><img src="{Clock}" width="32" height="32"></td>)"
                   uR"(<td style="text-align: right;">From:</td><td><strong>01:00 PM November 21, 2026</strong></td></tr>)"
                   uR"(<tr><td style="text-align: right;">To:</td><td><strong>05:15 PM November 21, 2026</strong></td></tr>)"
                   uR"(<tr><td>&nbsp;</td></tr>)"
                   uR"(<tr><td colspan="1" rowspan="2" style="vertical-align: top;"><img src="{pause_details}" width="32" height="32"></td>)"
                   uR"(<td style="text-align: right;">Pause time:</td><td><strong>00:20</strong></td></tr>)"
                   u"</table>"_s +
                   rule + table +
                   uR"(<tr><td style="vertical-align: top;"><img src="{Edit}" width="32" height="32"></td>)"
                   uR"(<td>Call<br/>with client</td></tr></table>)"_s +
                   rule + table +
                   uR"(<tr><td style="vertical-align: top;"><img src="{tags}" width="32" height="32"></td>)"
                   uR"(<td>a, b</td></tr></table>)"_s +
                   rule + table +
                   uR"(<tr><td colspan="1" rowspan="3" style="vertical-align: top;"><img src="{attachments}" width="32" height="32"></td>)"
                   uR"(<td>report.pdf</td></tr><tr><td>page.html</td></tr><tr><td>notes</td></tr></table>)"_s;

        const QString dayEntryPage =
            table +
            uR"(<tr><td colspan="1" rowspan="3" style="vertical-align: top;"><img src="{Clock}" width="32" height="32"></td>)"
            uR"(<td style="text-align: right;">Day:</td><td><strong>%1</strong></td></tr>)"
            uR"(<tr><td style="text-align: right;">Duration:</td><td><strong>01:35</strong></td></tr>)"
            u"</table>"_s +
            rule;
        const PageOf dayEntryOf = [](const DetailsPage &pages) {
            return pages.printEntryDetails(*dayEntry(u"20.11.2026"_s, 95));
        };
        QTest::newRow("day entry") << 3 << dayEntryOf << dayEntryPage.arg(u"November 20, 2026"_s);
        QTest::newRow("day entry, short dates")
            << 1 << dayEntryOf << dayEntryPage.arg(u"11/20/26"_s);
        QTest::newRow("day entry, full dates")
            << 4 << dayEntryOf << dayEntryPage.arg(u"Friday, November 20, 2026"_s);

        QTest::newRow("flat fee")
            << 3 << PageOf([](const DetailsPage &pages) {
                   auto fee = flatFee(u"19.11.2026"_s, 1234.5f);
                   fee->setComment(u"Hosting"_s);
                   return pages.printFlatFeeEntryDetails(*fee);
               })
            << table +
                   uR"(<tr><td colspan="1" rowspan="3" style="vertical-align: top;"><img src="{dollarsign}" width="32" height="32"></td>)"
                   uR"(<td style="text-align: right;">Day:</td><td><strong>November 19, 2026</strong></td></tr>)"
                   uR"(<tr><td style="text-align: right;">Amount:</td><td><strong>$1,234.50</strong></td></tr>)"
                   u"</table>"_s +
                   rule + table +
                   uR"(<tr><td style="vertical-align: top;"><img src="{Edit}" width="32" height="32"></td>)"
                   uR"(<td>Hosting</td></tr></table>)"_s +
                   rule;
    }
    void itemPages() {
        QFETCH(int, listDateFormat);
        QFETCH(PageOf, pageOf);
        QFETCH(QString, expected);
        m_preferences->setObject(listDateFormat, u"listDateFormat");
        const DetailsPage pages(*m_collection, *m_customers, m_currency);
        QCOMPARE(pageOf(pages), withIcons(expected));
    }

    void customerPage_data() {
        QTest::addColumn<bool>("withPicture");
        QTest::newRow("with a picture") << true;
        QTest::newRow("without a picture") << false;
    }
    void customerPage() {
        QFETCH(bool, withPicture);
        auto web = project(u"Web"_s, 60.0f, 1);
        web->addEntry(dayEntry(u"20.11.2026"_s, 90));
        web->addEntry(periodEntry(u"22.11.2026 09:00"_s)); // running: not counted
        auto hosting = project(u"Hosting"_s, 0.0f, 1);
        hosting->addEntry(flatFee(u"19.11.2026"_s, 40.0f));
        auto other = project(u"Other"_s, 100.0f, -1);
        other->addEntry(dayEntry(u"20.11.2026"_s, 600));
        for (const auto &p : {web, hosting, other})
            m_collection->addProject(p);
        Customer::Pointer acme = m_customers->customerWithID(1);
        QImage picture(20, 10, QImage::Format_ARGB32);
        picture.fill(Qt::blue);
        if (withPicture)
            acme->setCustomerImage(picture);

        const DetailsPage pages(*m_collection, *m_customers, m_currency);
        const DetailsPage::Page page = pages.printCustomerDetails(*acme);
        const QString pictureHtml =
            withPicture ? uR"(<center><img src="customer-image:1" height="64"></center>)"_s
                        : QString();
        QCOMPARE(
            page.html,
            withIcons(
                u"<h2>Acme &amp; Sons</h2>"_s + pictureHtml + rule + table +
                uR"(<tr><td style="vertical-align: top;"><img src="{Clock}" width="32" height="32"></td>)"
                uR"(<td style="text-align: right;">Time spent:</td><td><strong>01:30</strong></td></tr>)"
                uR"(<tr><td style="vertical-align: top;"><img src="{dollarsign}" width="32" height="32"></td>)"
                uR"(<td style="text-align: right;">Money:</td><td><strong>$130.00</strong></td></tr>)"
                u"</table>"_s));
        QCOMPARE(page.imageUrl, withPicture ? QUrl(u"customer-image:1"_s) : QUrl());
        QCOMPARE(page.image, withPicture ? picture : QImage());
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<ProjectCollection> m_collection;
    std::unique_ptr<CustomerStorage> m_customers;
    CurrencyFormatter m_currency{u"en_US"_s};
};

QTEST_GUILESS_MAIN(TestDetailsPage)
#include "tst_detailspage.moc"
