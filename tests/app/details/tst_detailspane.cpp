#include "app/SheetFixture.h"

#include "details/DetailsPane.h"
#include "platform/LocaleFormat.h"

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
        Clock::setNow(QDateTime(QDate(2026, 11, 22), QTime(10, 7, 30)));
        LocaleFormat::setDateLocale(u"en_US"_s);
    }
    void init() {
        m_fixture = std::make_unique<SheetFixture>();
        m_fixture->alpha->addEntry(m_fee);
        m_pages = std::make_unique<DetailsPage>(m_fixture->collection, m_fixture->customers,
                                                m_fixture->currency);
    }
    void cleanup() {
        m_pages.reset();
        m_fixture.reset();
    }

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
        DetailsPane pane(*m_pages);
        pane.showEntry(*periodEntry(u"22.11.2026 08:30"_s));
        QVERIFY(pane.browser()->toPlainText().contains(u"--:--"_s));
        pane.updateDetails(withProject ? m_fixture->alpha.get() : nullptr,
                           withItem ? m_fee.get() : nullptr);
        const QString text = pane.browser()->toPlainText();
        QCOMPARE(text.isEmpty(), shownText.isEmpty());
        QVERIFY(text.contains(shownText));
    }

    void customerPictureIsAnImageResource() {
        DetailsPane pane(*m_pages);
        pane.browser()->resize(400, 300);
        Customer::Pointer acme = m_fixture->customers.customerWithID(1);
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
    std::unique_ptr<SheetFixture> m_fixture;
    std::unique_ptr<DetailsPage> m_pages;
    std::shared_ptr<FlatFeeEntry> m_fee = flatFee(u"19.11.2026"_s, 40.0f);
};

QTEST_MAIN(TestDetailsPane)
#include "tst_detailspane.moc"
