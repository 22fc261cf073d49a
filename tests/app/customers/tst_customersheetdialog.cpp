#include "CustomerDrops.h"
#include "app/SheetFixture.h"

#include "customers/CustomerSheetDialog.h"
#include "customers/ImageWell.h"

#include <QColorDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QUndoStack>

namespace {

// "name#id" of every customer in the list's order.
QString customersOf(const CustomerStorage &storage) {
    QStringList names;
    for (const auto &customer : storage.customers())
        names << u"%1#%2"_s.arg(customer->name()).arg(customer->customerID());
    return names.join(u", "_s);
}

} // namespace

// The fixture's customers ACME (id 1) and Bolt (id 2).
class TestCustomerSheetDialog : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void init() {
        m_fixture = std::make_unique<SheetFixture>();
        m_sheet = std::make_unique<CustomerSheetDialog>(
            m_fixture->customers, m_fixture->preferences, m_fixture->user, &m_fixture->window);
    }

    void cleanup() {
        m_sheet.reset();
        m_fixture.reset();
    }

    void create_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("alerted");
        QTest::addColumn<bool>("warning");
        QTest::addColumn<QString>("customers");
        QTest::newRow("new name") << u"Cobalt"_s << false << false << u"ACME#1, Bolt#2, Cobalt#3"_s;
        QTest::newRow("differs only by case")
            << u"bolt"_s << false << false << u"ACME#1, Bolt#2, bolt#3"_s;
        QTest::newRow("empty: alert, sheet stays") << u""_s << true << false << u"ACME#1, Bolt#2"_s;
        QTest::newRow("taken: warning line, sheet stays")
            << u"Bolt"_s << false << true << u"ACME#1, Bolt#2"_s;
    }

    // A new customer needs a name no customer has; it is created with the default project
    // colour as one undo step "Create customer".
    void create() {
        QFETCH(QString, name);
        QFETCH(bool, alerted);
        QFETCH(bool, warning);
        QFETCH(QString, customers);
        const QColor defaultColor = m_fixture->preferences.colorForKey(u"projectColor");
        QSignalSpy saved(m_sheet.get(), &CustomerSheetDialog::customerSaved);
        m_sheet->createCustomer();
        QVERIFY(m_sheet->isVisible());
        QCOMPARE(m_sheet->windowModality(), Qt::WindowModal);
        QCOMPARE(m_sheet->windowTitle(), u"new customer"_s);
        QCOMPARE(control<QPushButton>(u"customerAcceptButton"_s)->text(), u"Create"_s);
        QVERIFY(!control<QPushButton>(u"removeImageButton"_s)->isEnabled());
        auto *warningLine = control<QLabel>(u"nameExistsTextBox"_s);
        QVERIFY(warningLine->isHidden());
        auto *field = control<QLineEdit>(u"customerNameTextField"_s);
        QCOMPARE(field->text(), u""_s);
        SheetFixture::type(field, name);
        QTest::keyClick(field, Qt::Key_Return);

        const bool created = !alerted && !warning;
        QCOMPARE(m_sheet->isVisible(), !created);
        QCOMPARE(m_fixture->user.beeps, created ? 0 : 1);
        QCOMPARE(warningLine->isVisible(), warning);
        QCOMPARE(warningLine->text(), u"A customer with this name already exists."_s);
        QCOMPARE(m_fixture->user.alerts.size(), alerted ? 1 : 0);
        if (alerted) {
            const UserAlerts::Alert &alert = m_fixture->user.alerts.constFirst();
            QCOMPARE(alert.message, u"No customer name entered."_s);
            QCOMPARE(alert.informativeText, u"A customer must have a unique name."_s);
            QCOMPARE(alert.style, UserAlerts::Style::Critical);
            QCOMPARE(alert.buttons, QStringList{u"OK"_s});
        }
        QCOMPARE(customersOf(m_fixture->customers), customers);
        QCOMPARE(saved.size(), int(created));
        QUndoStack *undo = m_fixture->collection.undoStack();
        QCOMPARE(undo->count(), int(created));
        if (!created)
            return;
        QCOMPARE(saved.first().at(0).toInt(), 3);
        QCOMPARE(m_fixture->customers.customerWithID(3)->color(), defaultColor);
        QCOMPARE(undo->undoText(), u"Create customer"_s);
        undo->undo();
        QCOMPARE(customersOf(m_fixture->customers), u"ACME#1, Bolt#2"_s);
        undo->redo();
        QCOMPARE(customersOf(m_fixture->customers), customers);
    }

    void edit_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("customers");
        QTest::newRow("renamed") << u"Zenith"_s << u"Bolt#2, Zenith#1"_s;
        QTest::newRow("empty name, unchecked") << u""_s << u"#1, Bolt#2"_s;
        QTest::newRow("taken name, unchecked") << u"Bolt"_s << u"Bolt#1, Bolt#2"_s;
    }

    // An edit takes the fields as they are, without checks and without undo.
    void edit() {
        QFETCH(QString, name);
        QFETCH(QString, customers);
        QVERIFY(!m_sheet->editCustomer(2));
        QVERIFY(!m_sheet->isVisible());
        QVERIFY(m_sheet->editCustomer(0));
        QCOMPARE(m_sheet->windowTitle(), u"edit customer"_s);
        QCOMPARE(control<QPushButton>(u"customerAcceptButton"_s)->text(), u"Accept"_s);
        QVERIFY(!m_sheet->findChild<QPushButton *>(u"openInAddressBookButton"_s));
        auto *field = control<QLineEdit>(u"customerNameTextField"_s);
        QCOMPARE(field->text(), u"ACME"_s);
        SheetFixture::type(field, name);
        QTest::mouseClick(control<QPushButton>(u"customerAcceptButton"_s), Qt::LeftButton);
        QVERIFY(!m_sheet->isVisible());
        QCOMPARE(customersOf(m_fixture->customers), customers);
        QVERIFY(control<QLabel>(u"nameExistsTextBox"_s)->isHidden());
        QCOMPARE(m_fixture->user.beeps, 0);
        QVERIFY(m_fixture->user.alerts.isEmpty());
        QCOMPARE(m_fixture->collection.undoStack()->count(), 0);
    }

    // Cancelling changes nothing, whatever was entered.
    void cancel() {
        m_sheet->editCustomer(1);
        SheetFixture::type(control<QLineEdit>(u"customerNameTextField"_s), u"Other"_s);
        m_sheet->findChild<ImageWell *>(u"imageView"_s)
            ->setImage(QImage(4, 4, QImage::Format_RGB32));
        QTest::mouseClick(control<QPushButton>(u"cancelButton"_s), Qt::LeftButton);
        QVERIFY(!m_sheet->isVisible());
        QCOMPARE(customersOf(m_fixture->customers), u"ACME#1, Bolt#2"_s);
        QVERIFY(m_fixture->customers.customerWithID(2)->customerImage().isNull());
    }

    // The colour button opens a colour dialog; the colour chosen there is the customer's.
    void colour() {
        m_sheet->editCustomer(1);
        auto *button = control<QPushButton>(u"customerColor"_s);
        QTest::mouseClick(button, Qt::LeftButton);
        auto *dialog = m_sheet->findChild<QColorDialog *>();
        QVERIFY(dialog && dialog->isVisible());
        QCOMPARE(dialog->currentColor(), QColor(Qt::red));
        dialog->setCurrentColor(QColor(0, 0x80, 0x40));
        dialog->accept();
        const QImage swatch = button->icon().pixmap(button->iconSize()).toImage();
        QCOMPARE(swatch.pixelColor(swatch.rect().center()), QColor(0, 0x80, 0x40));
        QTest::keyClick(control<QLineEdit>(u"customerNameTextField"_s), Qt::Key_Return);
        QCOMPARE(m_fixture->customers.customerWithID(2)->color(), QColor(0, 0x80, 0x40));
    }

    void imageWell_data() {
        QTest::addColumn<QString>("form"); // how the picture comes
        QTest::addColumn<bool>("taken");
        QTest::newRow("image data") << u"image"_s << true;
        QTest::newRow("PNG data") << u"image/png"_s << true;
        QTest::newRow("PNG file") << u"file"_s << true;
        QTest::newRow("text file") << u"text"_s << false;
    }

    // A picture dropped on the well becomes the customer's when the sheet is accepted; the
    // remove button is enabled while there is one.
    void imageWell() {
        QFETCH(QString, form);
        QFETCH(bool, taken);
        m_sheet->editCustomer(0);
        auto *well = m_sheet->findChild<ImageWell *>(u"imageView"_s);
        auto *remove = control<QPushButton>(u"removeImageButton"_s);
        QVERIFY(!remove->isEnabled());
        QMimeData data;
        const QByteArray png = pngData(Qt::blue, QSize(30, 20));
        const QString path = m_fixture->folder.filePath(form == u"text" ? u"a.txt"_s : u"a.png"_s);
        if (form == u"image") {
            data.setImageData(QImage::fromData(png));
        } else if (form == u"image/png") {
            data.setData(form, png);
        } else {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(form == u"text" ? "hi" : png));
            file.close();
            data.setUrls({QUrl::fromLocalFile(path)});
        }
        const DragOutcome outcome = dragOnto(well, data, well->rect().center());
        QCOMPARE(outcome.dropped, taken);
        QCOMPARE(remove->isEnabled(), taken);
        QCOMPARE(well->image().size(), taken ? QSize(30, 20) : QSize(0, 0));
        QTest::mouseClick(control<QPushButton>(u"customerAcceptButton"_s), Qt::LeftButton);
        const QImage image = m_fixture->customers.customerWithID(1)->customerImage();
        QCOMPARE(image.size(), taken ? QSize(30, 20) : QSize(0, 0));
        if (taken)
            QCOMPARE(image.pixelColor(5, 5), QColor(Qt::blue));
    }

    // The remove button empties the well; the customer then has no picture.
    void removeImage() {
        m_fixture->customers.customerWithID(2)->setCustomerImage(
            QImage::fromData(pngData(Qt::green, QSize(8, 8))));
        m_sheet->editCustomer(1);
        auto *well = m_sheet->findChild<ImageWell *>(u"imageView"_s);
        auto *remove = control<QPushButton>(u"removeImageButton"_s);
        QCOMPARE(well->image().size(), QSize(8, 8));
        QVERIFY(remove->isEnabled());
        QTest::mouseClick(remove, Qt::LeftButton);
        QVERIFY(well->image().isNull());
        QVERIFY(!remove->isEnabled());
        QTest::mouseClick(control<QPushButton>(u"customerAcceptButton"_s), Qt::LeftButton);
        QVERIFY(m_fixture->customers.customerWithID(2)->customerImage().isNull());
    }

private:
    template <typename T> T *control(const QString &name) const {
        return SheetFixture::control<T>(*m_sheet, name);
    }

    std::unique_ptr<SheetFixture> m_fixture;
    std::unique_ptr<CustomerSheetDialog> m_sheet;
};

QTEST_MAIN(TestCustomerSheetDialog)
#include "tst_customersheetdialog.moc"
