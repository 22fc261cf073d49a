#include "core/model/ModelFixtures.h"

#include "details/DetailsPane.h"
#include "model/ProjectCollection.h"
#include "platform/CurrencyFormatter.h"
#include "platform/LocaleFormat.h"
#include "stores/CustomerStorage.h"

#include <QTest>
#include <QTextBrowser>

namespace {

bool showsColor(const QImage &image, QColor color) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == color)
                return true;
        }
    }
    return false;
}

} // namespace

class TestDetailsPane : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QStandardPaths::setTestModeEnabled(true);
        Clock::setNow(QDateTime(QDate(2026, 11, 22), QTime(10, 7, 30)));
        LocaleFormat::setDateLocale(u"en_US"_s);
        Preferences::setShared(&m_preferences);
        auto acme = std::make_shared<Customer>();
        acme->setName(u"Acme"_s);
        m_customers.addCustomer(acme);
        m_web->addEntry(m_fee);
        m_collection.addProject(m_web);
    }
    void cleanupTestCase() { Preferences::setShared(nullptr); }

    void showsTheSelectedRow_data() {
        QTest::addColumn<bool>("withProject");
        QTest::addColumn<bool>("withItem");
        QTest::addColumn<QString>("shownText");
        QTest::newRow("project") << true << false << u"Total duration:"_s;
        QTest::newRow("flat fee of the project") << true << true << u"Amount:"_s;
        QTest::newRow("nothing selected") << false << false << QString();
    }
    void showsTheSelectedRow() {
        QFETCH(bool, withProject);
        QFETCH(bool, withItem);
        QFETCH(QString, shownText);
        DetailsPane pane(m_pages);
        pane.showEntry(*periodEntry(u"22.11.2026 08:30"_s));
        QVERIFY(pane.browser()->toPlainText().contains(u"--:--"_s));

        pane.updateDetails(withProject ? m_web.get() : nullptr, withItem ? m_fee.get() : nullptr);
        const QString text = pane.browser()->toPlainText();
        QCOMPARE(text.isEmpty(), shownText.isEmpty());
        QVERIFY(text.contains(shownText));
    }

    void customerPictureIsAnImageResource() {
        DetailsPane pane(m_pages);
        pane.browser()->resize(400, 300);
        Customer::Pointer acme = m_customers.customerWithID(1);
        QImage picture(40, 20, QImage::Format_RGB32);
        picture.fill(QColor(0, 0, 255));
        acme->setCustomerImage(picture);

        pane.showCustomer(*acme);
        const QUrl url(u"customer-image:1"_s);
        QCOMPARE(
            pane.browser()->document()->resource(QTextDocument::ImageResource, url).value<QImage>(),
            picture);
        QVERIFY(pane.browser()->toPlainText().contains(u"Time spent:"_s));
        QVERIFY(showsColor(pane.browser()->viewport()->grab().toImage(), QColor(0, 0, 255)));

        // The next page lets go of the previous picture.
        Customer other;
        other.setCustomerID(2);
        other.setName(u"Other"_s);
        pane.showCustomer(other);
        QVERIFY(!pane.browser()->document()->resource(QTextDocument::ImageResource, url).isValid());
        QVERIFY(!showsColor(pane.browser()->viewport()->grab().toImage(), QColor(0, 0, 255)));
    }

private:
    QTemporaryDir m_folder;
    Preferences m_preferences{m_folder.filePath(u"p.conf"_s)};
    ProjectCollection m_collection{m_preferences};
    CustomerStorage m_customers{m_folder.filePath(u"customers.plist"_s), m_collection,
                                m_preferences};
    CurrencyFormatter m_currency{u"en_US"_s};
    DetailsPage m_pages{m_collection, m_customers, m_currency};
    std::shared_ptr<Project> m_web =
        std::make_shared<Project>(u"Web"_s, u""_s, 60.0f, 0, 0, 0, 1, u""_s);
    std::shared_ptr<FlatFeeEntry> m_fee = flatFee(u"19.11.2026"_s, 40.0f);
};

QTEST_MAIN(TestDetailsPane)
#include "tst_detailspane.moc"
