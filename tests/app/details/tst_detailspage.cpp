#include "app/SheetFixture.h"

#include "details/DetailsPage.h"
#include "model/LocalTimeFormat.h"
#include "platform/LocaleFormat.h"

#include <QTest>

using PageOf = std::function<QString(const DetailsPage &)>;
Q_DECLARE_METATYPE(PageOf)

namespace {

const QString rule = u"<hr style=\"height: 1px; border-style: none; border-color: black; color: "
                     "black; background: black; width: 95%;\">"_s;
const QString table = u"<table style=\"border-collapse: separate; border-spacing: 4px 0px;\">"_s;
const QString blank = u"<tr><td>&nbsp;</td></tr>"_s;

// The pieces the pages are made of; "{Clock}" stands for the address of the picture "Clock".
QString icon(const QString &name, int rows) {
    return uR"(<tr><td colspan="1" rowspan="%2" style="vertical-align: top;"><img src="{%1}" width="32" height="32"></td>)"_s
        .arg(name)
        .arg(rows);
}
QString plainIcon(const QString &name) {
    return uR"(<td style="vertical-align: top;"><img src="{%1}" width="32" height="32"></td>)"_s
        .arg(name);
}
QString field(const QString &label, const QString &value) {
    return uR"(<td style="text-align: right;">%1:</td><td><strong>%2</strong></td></tr>)"_s.arg(
        label, value);
}
QString row(const QString &label, const QString &value) {
    return u"<tr>"_s + field(label, value);
}
// A section of its own: notes, tags or attachments.
QString section(const QString &name, const QString &cells, int rows = 0) {
    return rule + table + (rows ? icon(name, rows) : u"<tr>"_s + plainIcon(name)) + cells +
           u"</table>"_s;
}

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

QString projectHead(const QString &name, const QString &customer, const QString &total,
                    const QString &wage, const QString &wages) {
    return u"<h2>"_s + name + u"</h2>"_s + rule + table + icon(u"customer"_s, 3) +
           field(u"Customer"_s, customer) + row(u"Total duration"_s, total) +
           u"<tr><td>&nbsp;</td><td></td></tr>"_s + icon(u"dollarsign"_s, 2) +
           field(u"Hourly wages"_s, wage) + row(u"Total wages"_s, wages) + u"</table>"_s;
}

QString periodHead(const QString &from, const QString &to) {
    return table + icon(u"Clock"_s, 3) + field(u"From"_s, from) + row(u"To"_s, to) + blank +
           icon(u"pause_details"_s, 2);
}

} // namespace

class TestDetailsPage : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        Clock::setNow(QDateTime(QDate(2026, 11, 22), QTime(10, 7, 30)));
        LocaleFormat::setDateLocale(u"en_US"_s);
        LocalTimeFormat::setFormat(u"%I:%M %p"_s, u"en_US.UTF-8"_s);
    }

    void init() {
        m_fixture = std::make_unique<SheetFixture>();
        m_fixture->customers.customerWithID(1)->setName(u"Acme & Sons"_s);
    }
    void cleanup() { m_fixture.reset(); }

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
            << projectHead(u"Web &lt;Relaunch&gt;"_s, u"Acme &amp; Sons"_s, u"02:30"_s, u"$60.00"_s,
                           u"$250.00"_s) +
                   section(u"Edit"_s, u"<td>New shop<br/>&lt;b&gt;fast&lt;/b&gt;</td></tr>"_s) +
                   section(u"tags"_s, u"<td>a, b</td></tr>"_s) +
                   section(u"attachments"_s, u"<td>brief.pdf</td></tr>"_s, 1);
        const QString internalPage =
            projectHead(u"Internal"_s, u"none"_s, u"00:00"_s, u"$0.00"_s, u"$0.00"_s) + rule;
        QTest::newRow("project without customer") << 3 << PageOf([](const DetailsPage &pages) {
            return pages.printProjectDetails(*project(u"Internal"_s, 0.0f, -1));
        }) << internalPage;
        QTest::newRow("project whose customer is unknown")
            << 3 << PageOf([](const DetailsPage &pages) {
                   return pages.printProjectDetails(*project(u"Internal"_s, 0.0f, 99));
               })
            << internalPage;
        const QString runningHead = periodHead(u"08:30 AM November 22, 2026"_s, u"--:--"_s);
        QTest::newRow("running entry") << 3 << PageOf([](const DetailsPage &pages) {
            return pages.printEntryDetails(*periodEntry(u"22.11.2026 08:30"_s));
        }) << runningHead + field(u"Pause time"_s, u"00:00"_s) + u"</table>"_s + rule;
        QTest::newRow("paused entry")
            << 3 << PageOf([](const DetailsPage &pages) {
                   auto entry = periodEntry(u"22.11.2026 08:30"_s);
                   entry->setPausedAt(at(u"22.11.2026 09:45:10"_s));
                   return pages.printEntryDetails(*entry);
               })
            << runningHead + field(u"Pause time"_s, u"00:22"_s) +
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
            << periodHead(u"01:00 PM November 21, 2026"_s, u"05:15 PM November 21, 2026"_s) +
                   field(u"Pause time"_s, u"00:20"_s) + u"</table>"_s +
                   section(u"Edit"_s, u"<td>Call<br/>with client</td></tr>"_s) +
                   section(u"tags"_s, u"<td>a, b</td></tr>"_s) +
                   section(u"attachments"_s,
                           u"<td>report.pdf</td></tr><tr><td>page.html</td></tr>"
                           "<tr><td>notes</td></tr>"_s,
                           3);
        const PageOf dayEntryOf = [](const DetailsPage &pages) {
            return pages.printEntryDetails(*dayEntry(u"20.11.2026"_s, 95));
        };
        const auto dayPage = [](const QString &day) -> QString {
            return table + icon(u"Clock"_s, 3) + field(u"Day"_s, day) +
                   row(u"Duration"_s, u"01:35"_s) + u"</table>"_s + rule;
        };
        QTest::newRow("day entry") << 3 << dayEntryOf << dayPage(u"November 20, 2026"_s);
        QTest::newRow("day entry, short dates") << 1 << dayEntryOf << dayPage(u"11/20/26"_s);
        QTest::newRow("flat fee") << 3 << PageOf([](const DetailsPage &pages) {
            auto fee = flatFee(u"19.11.2026"_s, 1234.5f);
            fee->setComment(u"Hosting"_s);
            return pages.printFlatFeeEntryDetails(*fee);
        })
                                  << table + icon(u"dollarsign"_s, 3) +
                                         field(u"Day"_s, u"November 19, 2026"_s) +
                                         row(u"Amount"_s, u"$1,234.50"_s) + u"</table>"_s +
                                         section(u"Edit"_s, u"<td>Hosting</td></tr>"_s) + rule;
    }
    void itemPages() {
        QFETCH(int, listDateFormat);
        QFETCH(PageOf, pageOf);
        QFETCH(QString, expected);
        m_fixture->preferences.setObject(listDateFormat, u"listDateFormat");
        const DetailsPage pages(m_fixture->collection, m_fixture->customers, m_fixture->currency);
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
            m_fixture->collection.addProject(p);
        Customer::Pointer acme = m_fixture->customers.customerWithID(1);
        QImage picture(20, 10, QImage::Format_ARGB32);
        picture.fill(Qt::blue);
        if (withPicture)
            acme->setCustomerImage(picture);
        const DetailsPage pages(m_fixture->collection, m_fixture->customers, m_fixture->currency);
        const DetailsPage::Page page = pages.printCustomerDetails(*acme);
        const QString pictureHtml =
            withPicture ? uR"(<center><img src="customer-image:1" height="64"></center>)"_s
                        : QString();
        QCOMPARE(page.html,
                 withIcons(u"<h2>Acme &amp; Sons</h2>"_s + pictureHtml + rule + table + u"<tr>"_s +
                           plainIcon(u"Clock"_s) + field(u"Time spent"_s, u"01:30"_s) + u"<tr>"_s +
                           plainIcon(u"dollarsign"_s) + field(u"Money"_s, u"$130.00"_s) +
                           u"</table>"_s));
        QCOMPARE(page.imageUrl, withPicture ? QUrl(u"customer-image:1"_s) : QUrl());
        QCOMPARE(page.image, withPicture ? picture : QImage());
    }

private:
    std::unique_ptr<SheetFixture> m_fixture;
};

QTEST_MAIN(TestDetailsPage)
#include "tst_detailspage.moc"
