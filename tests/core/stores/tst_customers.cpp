#include "model/CustomerAssignments.h"
#include "stores/CustomerSheet.h"
#include "stores/CustomerStorage.h"
#include "stores/KeyedArchiver.h"
#include "support/ExportSamples.h"
#include "support/Files.h"
#include "support/PlistScript.h"
#include "support/RecordingAlerts.h"

#include <QSignalSpy>
#include <QTest>
#include <QUndoStack>

namespace {

class FakeDocument : public CustomerAssignments {
public:
    ProjectList removeCustomerFromProjects(int customerId) override {
        ProjectList had;
        for (const auto &project : std::as_const(projects))
            if (project->customer() == customerId)
                had.append(project);
        assignCustomerToProjects(-1, had);
        return had;
    }
    void assignCustomerToProjects(int customerId, const ProjectList &list) override {
        for (const auto &project : list)
            project->setCustomer(customerId);
    }
    void updateVisibleProjects() override { ++visibleUpdates; }
    QUndoStack *undoStack() override { return &stack; }

    ProjectList projects;
    QUndoStack stack;
    int visibleUpdates = 0;
};

// "name#id" of each customer in the list's order.
QString namesOf(const CustomerStorage &storage) {
    QStringList names;
    for (const auto &customer : storage.customers())
        names.append(customer->name() + u'#' + QString::number(customer->customerID()));
    return names.join(u", ");
}

QList<int> customersOf(const ProjectList &projects) {
    QList<int> ids;
    for (const auto &project : projects)
        ids.append(project->customer());
    return ids;
}

const QColor projectColor(64, 128, 191);

} // namespace

class TestCustomers : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_preferences = std::make_unique<Preferences>(m_folder->filePath(u"p.conf"_s));
        m_preferences->setColor(projectColor, u"projectColor");
        Preferences::setShared(m_preferences.get());
        m_document = std::make_unique<FakeDocument>();
        m_storage = makeStorage();
    }

    void cleanup() {
        m_storage.reset();
        Preferences::setShared(nullptr);
    }

    void lookup() {
        for (const QString &name : {u"Client 10"_s, u"client 9"_s, u"Acme"_s})
            m_storage->addCustomer(customer(name));
        QCOMPARE(namesOf(*m_storage), u"Acme#3, client 9#2, Client 10#1"_s);
        QCOMPARE(m_storage->customerWithIndex(1)->name(), u"client 9"_s);
        QVERIFY(!m_storage->customerWithIndex(3));
        QCOMPARE(m_storage->customerWithID(1)->name(), u"Client 10"_s);
        QVERIFY(!m_storage->customerWithName(u"acme"_s));
        QVERIFY(m_storage->customerExists(u"Acme"_s) && !m_storage->customerExists(u"ACME"_s));
        QCOMPARE(m_storage->isCustomerVisible(2), std::optional<bool>(true));
        QCOMPARE(m_storage->isCustomerVisible(4), std::nullopt);
    }

    void idsAreNotReusedWhileRunning() {
        m_storage->addCustomer(customer(u"A"_s));
        m_storage->addCustomer(customer(u"B"_s));
        m_storage->deleteCustomerWithID(m_storage->addCustomer(customer(u"C"_s)));
        QCOMPARE(m_storage->addCustomer(customer(u"D"_s)), 4);
        m_storage->deleteCustomerWithID(4);
        m_document->stack.undo();
        QCOMPARE(m_storage->customerWithID(4)->name(), u"D"_s);
        m_document->stack.redo();
        auto restarted = makeStorage();
        QVERIFY(restarted->loadCustomers().ok);
        QCOMPARE(restarted->lastCustomerID(), 2);
        QCOMPARE(restarted->addCustomer(customer(u"E"_s)), 3);
        QCOMPARE(restarted->addCustomer(customer(u"F"_s, 7)), 7);
        QCOMPARE(restarted->addCustomer(customer(u"G"_s)), 8);
    }

    void deleteAndUndo() {
        const int acme = m_storage->addCustomer(customer(u"Acme"_s));
        m_storage->addCustomer(customer(u"Beta"_s));
        for (int id : {acme, 2, acme, -1})
            m_document->projects.append(project(u"p"_s, 0.0f, id));
        QSignalSpy changed(m_storage.get(), &CustomerStorage::customersChanged);
        const int updates = m_document->visibleUpdates;
        m_storage->deleteCustomerWithID(acme);
        QCOMPARE(m_document->stack.undoText(), u"Delete customer"_s);
        QCOMPARE(customersOf(m_document->projects), (QList<int>{-1, 2, -1, -1}));
        m_document->stack.undo();
        QCOMPARE(customersOf(m_document->projects), (QList<int>{acme, 2, acme, -1}));
        QCOMPARE(namesOf(*makeLoadedStorage()), u"Acme#1, Beta#2"_s);
        m_document->stack.redo();
        QCOMPARE(customersOf(m_document->projects), (QList<int>{-1, 2, -1, -1}));
        QCOMPARE(changed.count(), 3);
        QCOMPARE(m_document->visibleUpdates, updates + 3);
        m_storage->deleteCustomerWithID(99);
        QCOMPARE(m_document->stack.count(), 3);
        // Undoing the adding of Beta clears it from its project; redoing gives it back.
        QCOMPARE(m_document->stack.text(1), u"Delete customer"_s);
        m_document->stack.setIndex(1);
        QCOMPARE(namesOf(*m_storage), u"Acme#1"_s);
        QCOMPARE(customersOf(m_document->projects), (QList<int>{acme, -1, acme, -1}));
        m_document->stack.setIndex(3);
        QCOMPARE(customersOf(m_document->projects), (QList<int>{-1, 2, -1, -1}));
    }

    void visibility_data() {
        QTest::addColumn<QString>("initial"); // of A, B, C: 1 shown, 0 hidden
        QTest::addColumn<QString>("operation");
        QTest::addColumn<int>("selected");
        QTest::addColumn<QString>("expected");
        QTest::newRow("toggle") << u"100"_s << u"toggle"_s << 1 << u"110"_s;
        QTest::newRow("check all") << u"100"_s << u"checkAll"_s << -1 << u"111"_s;
        QTest::newRow("check none") << u"110"_s << u"checkNone"_s << -1 << u"000"_s;
        QTest::newRow("check others") << u"000"_s << u"checkOthers"_s << 1 << u"101"_s;
        QTest::newRow("uncheck others") << u"111"_s << u"uncheckOthers"_s << 0 << u"100"_s;
        QTest::newRow("uncheck others, selected hidden")
            << u"011"_s << u"uncheckOthers"_s << 0 << u"000"_s;
    }
    void visibility() {
        QFETCH(QString, initial);
        QFETCH(QString, operation);
        QFETCH(int, selected);
        QFETCH(QString, expected);
        for (int i = 0; i < 3; ++i)
            m_storage->addCustomer(customer(QString(QChar(u'A' + i)), -1, initial[i] == u'1'));
        const int updates = m_document->visibleUpdates;
        QSignalSpy changed(m_storage.get(), &CustomerStorage::customerChanged);
        const QHash<QString, std::function<void()>> operations{
            {u"toggle"_s, [&] { m_storage->toggleVisible(selected); }},
            {u"checkAll"_s, [&] { m_storage->checkAll(); }},
            {u"checkNone"_s, [&] { m_storage->checkNone(); }},
            {u"checkOthers"_s, [&] { m_storage->checkOthers(selected); }},
            {u"uncheckOthers"_s, [&] { m_storage->uncheckOthers(selected); }}};
        operations[operation]();
        const auto states = [](const CustomerStorage &storage) {
            QString text;
            for (int id = 1; id <= 3; ++id)
                text += storage.isCustomerVisible(id).value() ? u'1' : u'0';
            return text;
        };
        QCOMPARE(states(*m_storage), expected);
        QCOMPARE(states(*makeLoadedStorage()), expected);
        QCOMPARE(m_document->visibleUpdates, updates + 1);
        int flips = 0;
        for (int i = 0; i < 3; ++i)
            flips += expected[i] != initial[i];
        QCOMPARE(changed.count(), flips);
    }

    void fileKeepsEveryValue() {
        QImage picture(2, 1, QImage::Format_ARGB32);
        picture.setPixel(0, 0, qRgba(10, 20, 30, 255));
        picture.setPixel(1, 0, qRgba(200, 100, 0, 128));
        const auto acme = customer(u"Acme"_s);
        acme->setVisible(false);
        acme->setColor(QColor(0, 51, 255));
        acme->setCustomerImage(picture);
        acme->setABid(u"4FBE-11"_s);
        m_storage->addCustomer(acme);
        m_storage->addCustomer(std::make_shared<Customer>());
        // Read back, every value is written again as it was.
        QCOMPARE(Customer::archiveList(makeLoadedStorage()->customers()),
                 Customer::archiveList(m_storage->customers()));
        QCOMPARE(makeLoadedStorage()->customerWithID(1)->customerImage().convertToFormat(
                     QImage::Format_ARGB32),
                 picture);
        // Python's plistlib, knowing nothing of this program, checks the layout.
        const QString script = uR"(
for c in (ref(u) for u in root['NS.objects']):
    print(cls(c), [k for k in c if k != '$class'])
    print(c['id'], ref(c['name']), c['visible'], ref(c['color'])['NSRGB'],
          ref(c['image'])[:8], ref(c['ABid']))
)"_s;
        QCOMPARE(runPlistScript(script, m_storage->customersPath()),
                 u"Customer ['id', 'name', 'visible', 'color', 'image', 'ABid']\n"
                 u"1 Acme False b'0 0.2 1 1' b'\\x89PNG\\r\\n\\x1a\\n' 4FBE-11\n"
                 u"Customer ['id', 'name', 'visible', 'color', 'image', 'ABid']\n"
                 u"2 New Customer True b'1 0 0 1' $null $null\n"_s);
    }

    void damagedFile_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("customers");
        QTest::addColumn<int>("lastCustomerID");
        QTest::addColumn<QString>("error");
        QTest::addColumn<QStringList>("log");
        const QStringList unreadable{u"^cannot read .*customers.plist : "_s,
                                     u"^kept the unreadable file as .*customers.plist.damaged$"_s};
        QTest::newRow("not a property list")
            << QByteArray("<plist><dict>") << u""_s << 0 << u"The data is not a property list."_s
            << QStringList{u"^rejected a keyed archive"_s} + unreadable;
        QTest::newRow("a stranger in the list")
            << KeyedArchiver::archivedData(
                   QVariantList{QVariant::fromValue(KeyedObject(customer(u"Acme"_s, 3))), u"x"_s})
            << u"Acme#3"_s << 3 << u"Element 2 of the list is not a customer."_s << unreadable;
        QTest::newRow("ids missing or taken twice")
            << Customer::archiveList(
                   {customer(u"A"_s, -1), customer(u"B"_s, 5), customer(u"C"_s, 5)})
            << u"A#6, B#5, C#7"_s << 7 << u""_s
            << QStringList{u"^the customer A had the id -1 and now has 6$"_s,
                           u"^the customer C had the id 5 and now has 7$"_s};
    }
    void damagedFile() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, error);
        QFETCH(QStringList, log);
        QVERIFY(writeFile(m_storage->customersPath(), bytes));
        for (const QString &line : log)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(line));
        const auto loaded = m_storage->loadCustomers();
        QCOMPARE(loaded.ok, error.isEmpty());
        QCOMPARE(loaded.error, error);
        QTEST(namesOf(*m_storage), "customers");
        QTEST(m_storage->lastCustomerID(), "lastCustomerID");
        QCOMPARE(readFile(m_storage->customersPath() + u".damaged"_s),
                 error.isEmpty() ? QByteArray() : bytes);
    }

    void failedSaveIsLogged() {
        CustomerStorage storage(m_folder->filePath(u"missing/customers.plist"_s), *m_document,
                                *m_preferences);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"temporary file"_s));
        QTest::ignoreMessage(QtWarningMsg, "Failed to save customers");
        QCOMPARE(storage.addCustomer(customer(u"Acme"_s)), 1);
        QCOMPARE(storage.count(), 1);
    }

    void sheetCreates_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("alert");
        QTest::addColumn<bool>("warning");
        QTest::newRow("new name") << u"Beta"_s << false << false;
        QTest::newRow("differs only by case") << u"acme"_s << false << false;
        QTest::newRow("empty") << u""_s << true << false;
        QTest::newRow("taken") << u"Acme"_s << false << true;
    }
    void sheetCreates() {
        QFETCH(QString, name);
        QFETCH(bool, alert);
        QFETCH(bool, warning);
        m_storage->addCustomer(customer(u"Acme"_s));
        m_storage->deleteCustomerWithID(m_storage->addCustomer(customer(u"Gone"_s)));
        RecordingAlerts alerts;
        CustomerSheet sheet(*m_storage, *m_preferences, alerts);
        sheet.setName(u"left over"_s);
        sheet.createCustomer();
        QCOMPARE(sheet.title(), u"new customer"_s);
        QCOMPARE(sheet.acceptButtonTitle(), u"Create"_s);
        QCOMPARE(sheet.name(), u""_s);
        QCOMPARE(sheet.color(), projectColor);
        sheet.setName(name);
        QCOMPARE(sheet.accept(), !alert && !warning);
        QCOMPARE(alerts.beeps, int(alert || warning));
        QCOMPARE(sheet.isNameWarningVisible(), warning);
        QCOMPARE(alerts.criticalTexts(),
                 alert ? QStringList{u"No customer name entered.|A customer must have a unique "
                                     u"name.|OK"_s}
                       : QStringList());
        QCOMPARE(m_document->stack.count(), alert || warning ? 3 : 4);
        if (alert || warning)
            return;
        QCOMPARE(m_document->stack.undoText(), u"Create customer"_s);
        QCOMPARE(m_storage->customerWithID(3)->name(), name);
        QCOMPARE(m_storage->customerWithID(3)->color(), projectColor);
        m_document->stack.undo();
        QVERIFY(!m_storage->customerWithID(3));
    }

    void sheetEdits() {
        const auto acme = customer(u"Acme"_s);
        acme->setCustomerImage(QImage(1, 1, QImage::Format_RGB32));
        acme->setABid(u"4FBE"_s);
        m_storage->addCustomer(acme);
        m_storage->addCustomer(customer(u"Beta"_s));
        RecordingAlerts alerts;
        CustomerSheet sheet(*m_storage, *m_preferences, alerts);
        QVERIFY(!sheet.editCustomer(2));
        QVERIFY(sheet.editCustomer(0));
        QCOMPARE(sheet.name(), u"Acme"_s);
        QCOMPARE(sheet.title(), u"edit customer"_s);
        QCOMPARE(sheet.acceptButtonTitle(), u"Accept"_s);
        QVERIFY(sheet.isRemoveImageEnabled() && sheet.isOpenInAddressBookVisible());
        for (const QString &name : {u"Beta"_s, u""_s}) {
            sheet.setName(name);
            sheet.removeImage();
            QVERIFY(sheet.accept());
            QCOMPARE(acme->name(), name);
        }
        QVERIFY(acme->customerImage().isNull());
        QCOMPARE(alerts.beeps, 0);
        QCOMPARE(m_document->stack.count(), 2);
        QCOMPARE(namesOf(*makeLoadedStorage()), u"#1, Beta#2"_s);
    }

    void cardsBecomeCustomers_data() {
        QTest::addColumn<QByteArray>("cards");
        QTest::addColumn<QString>("customers");
        const auto card = [](const QByteArray &lines) -> QByteArray {
            return "BEGIN:VCARD\nVERSION:3.0\n" + lines + "UID:U1\nEND:VCARD\n";
        };
        QTest::newRow("both names") << card("N:Doe;Jane\nORG:Acme\n") << u"Jane Doe#1"_s;
        QTest::newRow("last name") << card("N:Doe;\nORG:Acme\n") << u"Doe#1"_s;
        QTest::newRow("first name") << card("N:;Jane\n") << u"Jane#1"_s;
        QTest::newRow("organisation") << card("N:;;;;\nFN:Acme\nORG:Acme;Sales\n") << u"Acme#1"_s;
        QTest::newRow("two cards")
            << card("N:Doe;Jane\n") + card("FN:Bob\n") << u"Bob#2, Jane Doe#1"_s;
        QTest::newRow("none") << QByteArray("N:Doe;Jane\n") << u""_s;
    }
    void cardsBecomeCustomers() {
        QFETCH(QByteArray, cards);
        QFETCH(QString, customers);
        if (customers.isEmpty())
            QTest::ignoreMessage(QtWarningMsg, "the dropped data holds no address card");
        QCOMPARE(m_storage->addCustomersFromVCard(cards), customers.isEmpty() ? -1 : 1);
        QCOMPARE(namesOf(*m_storage), customers);
        QCOMPARE(m_document->stack.count(), int(!customers.isEmpty()));
        if (customers.isEmpty())
            return;
        QCOMPARE(m_document->stack.undoText(), u"Delete customer"_s);
        QCOMPARE(m_storage->customerWithID(1)->ABid(), u"U1"_s);
        QCOMPARE(m_storage->customerWithIndex(0)->color(), projectColor);
        m_preferences->setObject(u"not a colour"_s, u"projectColor");
        const int plain = m_storage->addCustomerFromABPerson({});
        QCOMPARE(m_storage->customerWithID(plain)->color(), QColor(Qt::red));
        m_document->stack.setIndex(0);
        QCOMPARE(m_storage->count(), 0);
    }

private:
    std::unique_ptr<CustomerStorage> makeStorage() {
        return std::make_unique<CustomerStorage>(m_folder->filePath(u"customers.plist"_s),
                                                 *m_document, *m_preferences);
    }

    std::unique_ptr<CustomerStorage> makeLoadedStorage() {
        auto storage = makeStorage();
        storage->loadCustomers();
        return storage;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<FakeDocument> m_document;
    std::unique_ptr<CustomerStorage> m_storage;
};

QTEST_GUILESS_MAIN(TestCustomers)
#include "tst_customers.moc"
