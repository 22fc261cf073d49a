#include "CustomerDrops.h"
#include "app/SheetFixture.h"

#include "customers/CustomerDropBox.h"

#include <QUndoStack>

// The fixture's projects Alpha (customer ACME, id 1) and Beta (no customer), and the customers
// ACME and Bolt (id 2); the box shows one project.
class TestCustomerDropBox : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_fixture = std::make_unique<SheetFixture>();
        m_box =
            new CustomerDropBox(m_fixture->customers, m_fixture->collection, &m_fixture->window);
        m_box->setGeometry(10, 10, 180, 120);
        m_box->show();
        QVERIFY(QTest::qWaitForWindowExposed(&m_fixture->window));
    }

    void cleanup() { m_fixture.reset(); }

    // What the box shows for the selected project.
    void states_data() {
        QTest::addColumn<QString>("project");
        QTest::addColumn<bool>("picture"); // ACME has a picture
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("customer");
        QTest::newRow("nothing selected") << u""_s << false << u"Nothing selected"_s << u""_s;
        QTest::newRow("project without customer")
            << u"Beta"_s << false << u"Drag Customer here"_s << u""_s;
        QTest::newRow("customer without picture")
            << u"Alpha"_s << false << u"Drag Image here"_s << u"ACME"_s;
        QTest::newRow("customer with picture") << u"Alpha"_s << true << u""_s << u"ACME"_s;
    }
    void states() {
        QFETCH(QString, project);
        QFETCH(bool, picture);
        if (picture)
            m_fixture->customers.customerWithID(1)->setCustomerImage(
                QImage::fromData(pngData(Qt::magenta, QSize(40, 40))));
        m_box->showProject(m_fixture->collection.projectWithName(project).get());
        QTEST(m_box->text(), "text");
        QTEST(m_box->currentCustomer() ? m_box->currentCustomer()->name() : QString(), "customer");
        const QImage shown = m_box->grab().toImage();
        const QColor middle = shown.pixelColor(shown.rect().center());
        QCOMPARE(middle == QColor(Qt::magenta), picture);
    }

    // The box follows the project's customer and the customer's picture as they change, undo
    // included, and a project that leaves the document counts as none.
    void followsChanges() {
        m_box->showProject(m_fixture->beta.get());
        QUndoStack *undo = m_fixture->collection.undoStack();
        m_fixture->collection.assignCustomerWithID(2, m_fixture->beta);
        QCOMPARE(m_box->text(), u"Drag Image here"_s);
        m_fixture->customers.changeCustomerImage(2, QImage(3, 3, QImage::Format_RGB32));
        QCOMPARE(m_box->text(), u""_s);
        m_fixture->customers.deleteCustomerWithID(2);
        QCOMPARE(m_box->text(), u"Drag Customer here"_s);
        undo->undo();
        QCOMPARE(m_box->text(), u""_s);
        undo->setIndex(0);
        QCOMPARE(m_box->text(), u"Drag Customer here"_s);
        m_fixture->collection.deleteProject(m_fixture->beta);
        QCOMPARE(m_box->text(), u"Nothing selected"_s);
        QVERIFY(!m_box->project());
    }

    // What each drop changes, as one undo step that takes it back.
    void drops_data() {
        QTest::addColumn<QString>("project");
        QTest::addColumn<QString>("dropped"); // "customer N", "card", "image" or "text"
        QTest::addColumn<bool>("entered");
        QTest::addColumn<bool>("taken");
        QTest::addColumn<QString>("result"); // the project's customer; "" without project
        QTest::addColumn<QString>("undoText");
        QTest::newRow("customer onto project without one")
            << u"Beta"_s << u"customer 2"_s << true << true << u"Bolt"_s << u"Assign customer"_s;
        QTest::newRow("customer replaces customer")
            << u"Alpha"_s << u"customer 2"_s << true << true << u"Bolt"_s << u"Assign customer"_s;
        QTest::newRow("customer without project")
            << u""_s << u"customer 2"_s << true << false << u""_s << u""_s;
        QTest::newRow("unknown customer")
            << u"Beta"_s << u"customer 99"_s << true << false << u"-"_s << u""_s;
        QTest::newRow("card onto project: added and assigned")
            << u"Beta"_s << u"card"_s << true << true << u"Jane Doe"_s << u"Assign customer"_s;
        QTest::newRow("card without project: added")
            << u""_s << u"card"_s << true << true << u""_s << u"Delete customer"_s;
        QTest::newRow("picture onto customer")
            << u"Alpha"_s << u"image"_s << true << true << u"ACME"_s << u"Customer image"_s;
        QTest::newRow("picture without customer")
            << u"Beta"_s << u"image"_s << false << false << u"-"_s << u""_s;
        QTest::newRow("text") << u"Alpha"_s << u"text"_s << false << false << u"ACME"_s << u""_s;
    }
    void drops() {
        QFETCH(QString, project);
        QFETCH(QString, dropped);
        QFETCH(bool, taken);
        QFETCH(QString, result);
        const auto target = m_fixture->collection.projectWithName(project);
        m_box->showProject(target.get());
        QMimeData data;
        if (dropped.startsWith(u"customer"))
            data.setData(u"application/x-hourfold-DragDropCustomerPboardType"_s,
                         dropped.section(u' ', 1).toUtf8());
        else if (dropped == u"card")
            data.setData(u"text/vcard"_s, card30WithPhoto());
        else if (dropped == u"image")
            data.setData(u"image/png"_s, pngData(Qt::darkGreen, QSize(50, 40)));
        else
            data.setText(u"ACME"_s);
        const DragOutcome outcome = dragOnto(m_box, data, m_box->rect().center());
        QTEST(outcome.entered, "entered");
        QCOMPARE(outcome.dropped, taken);
        QVERIFY(!m_box->isHighlighted());
        if (target) {
            const Customer::Pointer customer =
                m_fixture->customers.customerWithID(target->customer());
            QCOMPARE(customer ? customer->name() : u"-"_s, result);
        }
        QUndoStack *undo = m_fixture->collection.undoStack();
        QCOMPARE(undo->count(), int(taken));
        if (!taken)
            return;
        QTEST(undo->undoText(), "undoText");
        if (dropped == u"card")
            QCOMPARE(m_fixture->customers.customerWithID(3)->customerImage().size(), QSize(40, 30));
        if (dropped == u"image") {
            QCOMPARE(m_box->text(), u""_s);
            QCOMPARE(m_box->currentCustomer()->customerImage().size(), QSize(50, 40));
            // Saved at once.
            CustomerStorage reloaded(m_fixture->customers.customersPath(), m_fixture->collection,
                                     m_fixture->preferences);
            reloaded.loadCustomers();
            QCOMPARE(reloaded.customerWithID(1)->customerImage().size(), QSize(50, 40));
        }
        undo->undo();
        QCOMPARE(m_fixture->customers.count(), 2);
        QVERIFY(m_fixture->customers.customerWithID(1)->customerImage().isNull());
        QCOMPARE(m_fixture->alpha->customer(), 1);
        QCOMPARE(m_fixture->beta->customer(), -1);
        undo->redo();
        if (target)
            QCOMPARE(m_fixture->customers.customerWithID(target->customer())->name(), result);
    }

    // The frame lights up while an accepted drag hovers and goes out when it leaves; a disabled
    // box takes nothing.
    void highlight() {
        m_box->showProject(m_fixture->alpha.get());
        QMimeData data;
        data.setData(u"application/x-hourfold-DragDropCustomerPboardType"_s, "2");
        // Just inside the frame, above the text.
        const auto inside = [this] {
            const QImage shown = m_box->grab().toImage();
            return shown.pixelColor(shown.width() / 2, 12);
        };
        const QColor plain = inside();
        QDragEnterEvent enter(m_box->rect().center(), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(m_box, &enter);
        QVERIFY(enter.isAccepted());
        QVERIFY(m_box->isHighlighted());
        const QColor lit = inside();
        QVERIFY(lit != plain);
        QCOMPARE(lit.hue(), m_box->palette().color(QPalette::Highlight).hue());
        QDragLeaveEvent leave;
        QApplication::sendEvent(m_box, &leave);
        QVERIFY(!m_box->isHighlighted());
        QCOMPARE(inside(), plain);
        m_box->setEnabled(false);
        QVERIFY(!dragOnto(m_box, data, m_box->rect().center()).entered);
        QCOMPARE(m_fixture->alpha->customer(), 1);
    }

private:
    std::unique_ptr<SheetFixture> m_fixture;
    CustomerDropBox *m_box = nullptr;
};

QTEST_MAIN(TestCustomerDropBox)
#include "tst_customerdropbox.moc"
