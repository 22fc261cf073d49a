#include "CustomerDrops.h"
#include "app/SheetFixture.h"

#include "ProjectListModel.h"
#include "customers/CustomerDropBox.h"
#include "customers/CustomerSheetDialog.h"
#include "customers/CustomerSideBar.h"
#include "customers/CustomerTableModel.h"
#include "customers/ImageWell.h"

#include <QAbstractItemModelTester>
#include <QColorDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QToolButton>
#include <QUndoStack>

namespace {

// "name#id" of every customer in the list's order.
QString customersOf(const CustomerStorage &storage) {
    QStringList names;
    for (const auto &customer : storage.customers())
        names << u"%1#%2"_s.arg(customer->name()).arg(customer->customerID());
    return names.join(u", "_s);
}

// The names of the projects or customers, in order.
template <typename List> QString namesOf(const List &list) {
    QStringList names;
    for (const auto &element : list)
        names << element->name();
    return names.join(u", "_s);
}

// "1" for every customer shown, "0" for every one hidden, in the list's order.
QString checkMarks(const CustomerStorage &customers) {
    QString marks;
    for (const auto &customer : customers.customers())
        marks += customer->visible() ? u'1' : u'0';
    return marks;
}

double distance(const QColor &a, const QColor &b) {
    return std::hypot(a.red() - b.red(), a.green() - b.green(), a.blue() - b.blue());
}

} // namespace

// The side bar and its customer sheet, on the fixture's customers ACME (id 1, project Alpha) and
// Bolt (id 2), and a third project Gamma of Bolt's; the side bar fills the window.
class TestCustomerSideBar : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_fixture = std::make_unique<SheetFixture>();
        m_fixture->collection.addProject(
            std::make_shared<Project>(u"Gamma"_s, u""_s, 10.0f, 0, 0, 0, 2, u""_s));
        m_fixture->collection.undoStack()->clear();
        m_bar = new CustomerSideBar(m_fixture->customers, m_fixture->collection,
                                    m_fixture->preferences, m_fixture->user, &m_fixture->window);
        m_bar->setGeometry(0, 0, 240, 560);
        m_bar->show();
        m_sheet = m_bar->sheet();
        QVERIFY(QTest::qWaitForWindowExposed(&m_fixture->window));
    }

    void cleanup() { m_fixture.reset(); }

    // The model stays consistent through everything that changes the customers.
    void modelIsConsistent() {
        QAbstractItemModelTester tester(m_bar->model(),
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        CustomerStorage &customers = m_fixture->customers;
        customers.addCustomer(std::make_shared<Customer>());
        customers.toggleVisible(0);
        customers.changeCustomerImage(1, QImage(2, 2, QImage::Format_RGB32));
        customers.deleteCustomerWithID(2);
        m_fixture->collection.undoStack()->setIndex(0);
        QCOMPARE(m_bar->model()->rowCount(), 2);
        QCOMPARE(m_bar->model()->headerData(0, Qt::Horizontal).toString(), u""_s);
        QCOMPARE(m_bar->model()->headerData(1, Qt::Horizontal).toString(), u"Customers"_s);
    }

    // The check boxes decide which projects the list shows.
    void visibility_data() {
        QTest::addColumn<QString>("initial"); // check marks of ACME, Bolt
        QTest::addColumn<QString>("command"); // "box", "name", or a menu action
        QTest::addColumn<int>("row");         // the row clicked; -1 below the rows
        QTest::addColumn<QString>("marks");
        QTest::addColumn<QString>("projects");
        QTest::newRow("box hides") << u"11"_s << u"box"_s << 0 << u"01"_s << u"Beta, Gamma"_s;
        QTest::newRow("box shows")
            << u"10"_s << u"box"_s << 1 << u"11"_s << u"Alpha, Beta, Gamma"_s;
        QTest::newRow("name leaves it")
            << u"11"_s << u"name"_s << 0 << u"11"_s << u"Alpha, Beta, Gamma"_s;
        QTest::newRow("check none keeps projects without customer")
            << u"11"_s << u"checkNone:"_s << -1 << u"00"_s << u"Beta"_s;
        QTest::newRow("check all")
            << u"00"_s << u"checkAll:"_s << -1 << u"11"_s << u"Alpha, Beta, Gamma"_s;
        QTest::newRow("check others")
            << u"00"_s << u"checkOthers:"_s << 1 << u"10"_s << u"Alpha, Beta"_s;
        QTest::newRow("uncheck others")
            << u"11"_s << u"uncheckOthers:"_s << 0 << u"10"_s << u"Alpha, Beta"_s;
    }
    void visibility() {
        QFETCH(QString, initial);
        QFETCH(QString, command);
        QFETCH(int, row);
        CustomerStorage &customers = m_fixture->customers;
        for (int i = 0; i < 2; ++i)
            customers.customerWithIndex(i)->setVisible(initial[i] == u'1');
        customers.update();
        const QPoint point = cellCenter(row, command == u"box" ? 0 : 1);
        if (command == u"box" || command == u"name") {
            QTest::mouseClick(m_bar->table()->viewport(), Qt::LeftButton, {}, point);
        } else {
            QMenu *menu = m_bar->menuForEvent(point);
            auto *action = menu->findChild<QAction *>(command);
            QVERIFY(action && action->isEnabled());
            action->trigger();
        }
        QTEST(checkMarks(customers), "marks");
        QTEST(namesOf(m_fixture->collection.visibleProjects()), "projects");
    }

    // Check others, uncheck others, edit and delete need a selected customer; check all and none
    // do not. A click below the rows clears the selection.
    void menuNeedsSelection_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("on a row") << 1 << true;
        QTest::newRow("below the rows") << -1 << false;
    }
    void menuNeedsSelection() {
        QFETCH(int, row);
        m_bar->setCurrentCustomer(1);
        QMenu *menu = m_bar->menuForEvent(cellCenter(row, 1));
        QCOMPARE(m_bar->selectedCustomerIndex(), row);
        for (const QString &name :
             {u"checkOthers:"_s, u"uncheckOthers:"_s, u"editCustomer:"_s, u"deleteCustomer:"_s})
            QTEST(menu->findChild<QAction *>(name)->isEnabled(), "enabled");
        for (const QString &name : {u"checkAll:"_s, u"checkNone:"_s})
            QVERIFY(menu->findChild<QAction *>(name)->isEnabled());
    }

    // The check box is drawn in the customer's colour, with a check mark that stands out from
    // it only while the customer's projects are shown.
    void checkBoxColour_data() {
        QTest::addColumn<QColor>("color");
        QTest::addColumn<bool>("visible");
        QTest::addColumn<QColor>("mark");
        QTest::newRow("red, checked") << QColor(Qt::red) << true << QColor(Qt::white);
        QTest::newRow("yellow, checked") << QColor(Qt::yellow) << true << QColor(0x20, 0x20, 0x20);
        QTest::newRow("navy, unchecked") << QColor(0, 0, 128) << false << QColor();
    }
    void checkBoxColour() {
        QFETCH(QColor, color);
        QFETCH(bool, visible);
        QFETCH(QColor, mark);
        const Customer::Pointer bolt = m_fixture->customers.customerWithID(2);
        bolt->setColor(color);
        bolt->setVisible(visible);
        const QIcon icon =
            m_bar->model()->data(m_bar->model()->index(1, 0), Qt::DecorationRole).value<QIcon>();
        const QImage box = icon.pixmap(QSize(16, 16)).toImage();
        // A selected row shows the same colours.
        QCOMPARE(icon.pixmap(QSize(16, 16), QIcon::Selected).toImage(), box);
        const qreal ratio = box.devicePixelRatio();
        QCOMPARE(box.size(), QSize(16, 16) * ratio);
        // Below the gloss, left of the mark: the colour itself.
        const QColor body = box.pixelColor(QPoint(4, 12) * ratio);
        QVERIFY2(distance(body, color) < 60, qPrintable(body.name()));
        // On the long stroke of the check mark.
        const QColor corner = box.pixelColor(QPoint(9, 7) * ratio);
        QVERIFY2(distance(corner, visible ? mark : color) < (visible ? 40 : 60),
                 qPrintable(corner.name()));
    }

    // Choosing a customer shows its details; so does a click on its name. The main window making
    // the selected project's customer current does not.
    void selectionShowsDetails() {
        QSignalSpy selected(m_bar, &CustomerSideBar::customerSelected);
        QTest::mouseClick(m_bar->table()->viewport(), Qt::LeftButton, {}, cellCenter(1, 1));
        QVERIFY(!selected.isEmpty());
        QCOMPARE(selected.last().at(0).value<Customer::Pointer>()->name(), u"Bolt"_s);
        selected.clear();
        QTest::mouseClick(m_bar->table()->viewport(), Qt::LeftButton, {}, cellCenter(1, 1));
        QCOMPARE(selected.size(), 1);
        m_bar->showProject(m_fixture->alpha.get());
        QCOMPARE(m_bar->selectedCustomer()->name(), u"ACME"_s);
        QCOMPARE(m_bar->dropBox()->project(), m_fixture->alpha);
        m_bar->showProject(m_fixture->beta.get());
        QCOMPARE(m_bar->selectedCustomer()->name(), u"ACME"_s);
        m_bar->setCurrentCustomer(2);
        QCOMPARE(m_bar->selectedCustomer()->name(), u"Bolt"_s);
        QCOMPARE(selected.size(), 1);
        QTest::mouseClick(m_bar->table()->viewport(), Qt::LeftButton, {}, cellCenter(-1, 1));
        QCOMPARE(selected.size(), 2);
        QVERIFY(!selected.last().at(0).value<Customer::Pointer>());
        QVERIFY(!m_bar->findChild<QToolButton *>(u"removeCustomerButton"_s)->isEnabled());
    }

    // A double click opens the sheet on the customer; the edit takes the fields as they are
    // (CustomerSheet's rule), not undoable, and shows its details. The selection follows the
    // customer to its new place in the list.
    void doubleClickEdits() {
        QVERIFY(!m_sheet->editCustomer(2));
        QVERIFY(!m_sheet->isVisible());
        QSignalSpy selected(m_bar, &CustomerSideBar::customerSelected);
        QTest::mouseClick(m_bar->table()->viewport(), Qt::LeftButton, {}, cellCenter(1, 1));
        QTest::mouseDClick(m_bar->table()->viewport(), Qt::LeftButton, {}, cellCenter(1, 1));
        QVERIFY(m_sheet->isVisible());
        QCOMPARE(m_sheet->windowTitle(), u"edit customer"_s);
        QCOMPARE(control<QPushButton>(u"customerAcceptButton"_s)->text(), u"Accept"_s);
        QVERIFY(!m_sheet->findChild<QPushButton *>(u"openInAddressBookButton"_s));
        auto *name = control<QLineEdit>(u"customerNameTextField"_s);
        QCOMPARE(name->text(), u"Bolt"_s);
        SheetFixture::type(name, u"AAA"_s);
        QTest::keyClick(name, Qt::Key_Return);
        QVERIFY(!m_sheet->isVisible());
        QCOMPARE(customersOf(m_fixture->customers), u"AAA#2, ACME#1"_s);
        QCOMPARE(m_bar->selectedCustomer()->customerID(), 2);
        QCOMPARE(selected.last().at(0).value<Customer::Pointer>()->name(), u"AAA"_s);
        QCOMPARE(m_fixture->collection.undoStack()->count(), 0);
    }

    // − deletes the selected customer and its projects lose it; undo brings both back.
    void removing() {
        auto *remove = m_bar->findChild<QToolButton *>(u"removeCustomerButton"_s);
        QVERIFY(!remove->isEnabled());
        m_bar->setCurrentCustomer(2);
        QTest::mouseClick(remove, Qt::LeftButton);
        QVERIFY(!m_fixture->customers.customerWithID(2));
        QCOMPARE(m_bar->model()->rowCount(), 1);
        QCOMPARE(m_fixture->collection.projectWithName(u"Gamma"_s)->customer(), -1);
        QUndoStack *undo = m_fixture->collection.undoStack();
        QCOMPARE(undo->undoText(), u"Delete customer"_s);
        undo->undo();
        QCOMPARE(m_fixture->customers.customerWithID(2)->name(), u"Bolt"_s);
        QCOMPARE(m_fixture->collection.projectWithName(u"Gamma"_s)->customer(), 2);
    }

    // A customer is dragged out as its id under the project list's customer type, and the
    // project list takes it: the project gets the customer.
    void dragCustomerOntoProject() {
        QMimeData *data = m_bar->model()->mimeData({m_bar->model()->index(1, 1)});
        QVERIFY(data);
        QCOMPARE(data->formats(),
                 QStringList{u"application/x-hourfold-DragDropCustomerPboardType"_s});
        QCOMPARE(data->data(u"application/x-hourfold-DragDropCustomerPboardType"_s),
                 QByteArray("2"));
        QCOMPARE(m_bar->model()->supportedDragActions(), Qt::CopyAction);
        // Dropped back on the table it does nothing.
        QVERIFY(!dragOnto(m_bar->table()->viewport(), *data, cellCenter(0, 1)).dropped);
        ProjectListModel list(m_fixture->collection, m_fixture->preferences, m_fixture->currency);
        const QModelIndex beta = list.index(1, 0);
        QCOMPARE(list.projectAt(beta), m_fixture->beta);
        QVERIFY(list.dropMimeData(data, Qt::CopyAction, -1, -1, beta));
        QCOMPARE(m_fixture->beta->customer(), 2);
        delete data;
    }

    // Address cards dropped on the table become customers, as one undo step; the first new one
    // is selected. Files that are no card files are refused.
    void cardDrops_data() {
        QTest::addColumn<QString>("form"); // the MIME type, or the suffix of the files
        QTest::addColumn<QList<QByteArray>>("cards");
        QTest::addColumn<QString>("customers");
        QTest::addColumn<QSize>("picture"); // of the first new customer
        QTest::addColumn<QString>("selected");
        QTest::newRow("3.0 with photo")
            << u"text/vcard"_s << QList<QByteArray>{card30WithPhoto()} << u"ACME, Bolt, Jane Doe"_s
            << QSize(40, 30) << u"Jane Doe"_s;
        QTest::newRow("4.0 with photo")
            << u"text/x-vcard"_s << QList<QByteArray>{card40WithPhoto()}
            << u"ACME, Bolt, Max Mustermann"_s << QSize(24, 24) << u"Max Mustermann"_s;
        QTest::newRow("two files")
            << u"vcf"_s << QList<QByteArray>{card40WithPhoto(), organisationCard()}
            << u"ACME, Bolt, Globex Ltd, Max Mustermann"_s << QSize(24, 24) << u"Max Mustermann"_s;
        QTest::newRow("no card") << u"text/vcard"_s << QList<QByteArray>{"hello"} << u"ACME, Bolt"_s
                                 << QSize() << QString();
        QTest::newRow("card in a file of another kind")
            << u"txt"_s << QList<QByteArray>{organisationCard()} << u"ACME, Bolt"_s << QSize()
            << QString();
    }
    void cardDrops() {
        QFETCH(QString, form);
        QFETCH(QList<QByteArray>, cards);
        QFETCH(QSize, picture);
        QFETCH(QString, selected);
        QMimeData data;
        if (!form.contains(u'/')) {
            QList<QUrl> urls;
            for (int i = 0; i < cards.size(); ++i) {
                const QString path = m_fixture->folder.filePath(u"card%1.%2"_s.arg(i).arg(form));
                QFile file(path);
                QVERIFY(file.open(QIODevice::WriteOnly) && file.write(cards[i]) > 0);
                urls << QUrl::fromLocalFile(path);
            }
            data.setUrls(urls);
        } else {
            data.setData(form, cards.first());
        }
        const bool cardFile = form != u"txt";
        if (selected.isEmpty() && cardFile)
            QTest::ignoreMessage(QtWarningMsg, "the dropped data holds no address card");
        QCOMPARE(dragOnto(m_bar->table()->viewport(), data, cellCenter(-1, 1)).dropped,
                 !selected.isEmpty());
        QTEST(namesOf(m_fixture->customers.customers()), "customers");
        if (selected.isEmpty())
            return;
        QCOMPARE(m_bar->selectedCustomer()->name(), selected);
        QCOMPARE(m_fixture->customers.customerWithID(3)->customerImage().size(),
                 picture.isValid() ? picture : QSize(0, 0));
        m_fixture->collection.undoStack()->undo();
        QCOMPARE(m_fixture->customers.count(), 2);
    }

    // Collapsing the side bar is kept in "isDropBoxHidden" and comes back at the next start.
    void hiding() {
        QSignalSpy changed(m_bar, &CustomerSideBar::dropBoxHiddenChanged);
        m_bar->toggleDropBox();
        QVERIFY(m_bar->isDropBoxHidden() && !m_bar->isVisible());
        QVERIFY(m_fixture->preferences.boolForKey(u"isDropBoxHidden"));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.last().at(0).toBool(), true);
        QWidget window;
        CustomerSideBar next(m_fixture->customers, m_fixture->collection, m_fixture->preferences,
                             m_fixture->user, &window);
        QVERIFY(!next.isDropBoxHidden());
        next.restoreDropBoxState();
        QVERIFY(next.isDropBoxHidden());
        window.show();
        QVERIFY(!next.isVisible());
        m_bar->showDropBox();
        QVERIFY(m_bar->isVisible());
        QVERIFY(!m_fixture->preferences.boolForKey(u"isDropBoxHidden"));
        QCOMPARE(changed.last().at(0).toBool(), false);
    }

    // + opens the sheet; its rules are CustomerSheet's (tested headless): here, that the dialog
    // shows them, that Return reaches them, and that the side bar selects the new customer.
    void sheetCreates_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("alerts");
        QTest::addColumn<bool>("warning");
        QTest::addColumn<QString>("customers");
        QTest::newRow("new name") << u"Apex"_s << QStringList() << false
                                  << u"ACME#1, Apex#3, Bolt#2"_s;
        QTest::newRow("empty: alert, sheet stays")
            << u""_s << QStringList{u"No customer name entered."_s} << false << u"ACME#1, Bolt#2"_s;
        QTest::newRow("taken: warning line, sheet stays")
            << u"Bolt"_s << QStringList() << true << u"ACME#1, Bolt#2"_s;
    }
    void sheetCreates() {
        QFETCH(QString, name);
        QSignalSpy saved(m_sheet, &CustomerSheetDialog::customerSaved);
        QTest::mouseClick(m_bar->findChild<QToolButton *>(u"addCustomerButton"_s), Qt::LeftButton);
        QCOMPARE(m_sheet->windowModality(), Qt::WindowModal);
        QCOMPARE(m_sheet->windowTitle(), u"new customer"_s);
        QCOMPARE(control<QPushButton>(u"customerAcceptButton"_s)->text(), u"Create"_s);
        QVERIFY(!control<QPushButton>(u"removeImageButton"_s)->isEnabled());
        auto *warningLine = control<QLabel>(u"nameExistsTextBox"_s);
        auto *field = control<QLineEdit>(u"customerNameTextField"_s);
        SheetFixture::type(field, name);
        QTest::keyClick(field, Qt::Key_Return);
        QTEST(m_fixture->user.messages(), "alerts");
        QTEST(warningLine->isVisible(), "warning");
        QCOMPARE(warningLine->text(), u"A customer with this name already exists."_s);
        QTEST(customersOf(m_fixture->customers), "customers");
        const bool created = saved.size() == 1;
        QCOMPARE(m_sheet->isVisible(), !created);
        QCOMPARE(m_fixture->collection.undoStack()->count(), int(created));
        if (!created)
            return;
        QCOMPARE(saved.first().at(0).toInt(), 3);
        QCOMPARE(m_bar->selectedCustomer()->customerID(), 3);
        QVERIFY(m_bar->findChild<QToolButton *>(u"removeCustomerButton"_s)->isEnabled());
    }

    // Cancelling changes nothing, whatever was entered.
    void sheetCancels() {
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
    void sheetColour() {
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

    // A picture dropped on the well becomes the customer's when the sheet is accepted; the
    // remove button is enabled while there is one.
    void sheetImageWell_data() {
        QTest::addColumn<QString>("form"); // how the picture comes
        QTest::addColumn<bool>("taken");
        QTest::newRow("image data") << u"image"_s << true;
        QTest::newRow("PNG data") << u"image/png"_s << true;
        QTest::newRow("PNG file") << u"file"_s << true;
        QTest::newRow("text file") << u"text"_s << false;
    }
    void sheetImageWell() {
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
    void sheetRemovesImage() {
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

    // The centre of the cell; a row of -1 is below the last row.
    QPoint cellCenter(int row, int column) const {
        QTableView *table = m_bar->table();
        if (row < 0)
            return QPoint(table->columnViewportPosition(column) + 10,
                          table->viewport()->height() - 10);
        return table->visualRect(table->model()->index(row, column)).center();
    }

    std::unique_ptr<SheetFixture> m_fixture;
    CustomerSideBar *m_bar = nullptr;
    CustomerSheetDialog *m_sheet = nullptr;
};

QTEST_MAIN(TestCustomerSideBar)
#include "tst_customersidebar.moc"
