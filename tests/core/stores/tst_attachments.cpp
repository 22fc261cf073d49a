#include "core/model/ModelFixtures.h"

#include "model/Project.h"
#include "platform/DesktopServices.h"
#include "stores/AttachmentController.h"
#include "support/RecordingAlerts.h"

#include <QDir>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

using Kind = AttachmentController::IconKind;

namespace {

// Answers every request with the same result.
class FakeDesktop : public DesktopServices {
public:
    bool openUrl(const QString &url) override { return done(u"openUrl "_s + url); }
    bool openPath(const QString &path) override { return done(u"openPath "_s + path); }
    bool revealPath(const QString &path) override { return done(u"revealPath "_s + path); }
    bool done(const QString &call) {
        calls.append(call);
        return result;
    }
    bool result = false;
    QStringList calls;
};

} // namespace

class TestAttachments : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void init() {
        m_preferences = std::make_unique<TemporaryPreferences>();
        m_desktop = FakeDesktop();
        m_alerts = RecordingAlerts();
        m_changes = 0;
        m_controller =
            std::make_unique<AttachmentController>(m_desktop, m_alerts, [this] { ++m_changes; });
        m_project = std::make_shared<Project>();
        m_project->setName(u"Website"_s);
        m_entry = dayEntry(u"01.02.2008"_s, 30);
        m_project->addEntry(m_entry);
        m_controller->openAttachmentsWindowForItem(m_entry);
    }

    void cleanup() { m_preferences.reset(); }

    void windowTitle_data() {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("title");
        QTest::newRow("project") << u"project"_s << u"Website"_s;
        QTest::newRow("day entry") << u"day"_s << u"Website: February 1, 2008"_s;
        QTest::newRow("period entry") << u"period"_s << u"Website: March 3, 2008"_s;
        QTest::newRow("flat fee") << u"fee"_s << u"Website: April 5, 2008"_s;
        QTest::newRow("nothing") << QString() << u"(Nothing selected)"_s;
    }
    void windowTitle() {
        QFETCH(QString, item);
        auto period = periodEntry(u"03.03.2008 09:00"_s, u"03.03.2008 10:00"_s);
        period->setDate(u"01.01.2008"_s);
        auto fee = flatFee(u"05.04.2008"_s, 10.0f);
        m_project->addEntry(period);
        m_project->addEntry(fee);
        const QHash<QString, AttachmentController::Item> items{
            {u"project"_s, m_project}, {u"day"_s, m_entry}, {u"period"_s, period}, {u"fee"_s, fee}};
        QSignalSpy updated(m_controller.get(), &AttachmentController::currentItemChanged);
        m_controller->updateWindowWithItem(items.value(item));
        QTEST(m_controller->windowTitle(), "title");
        QCOMPARE(m_controller->isNothingSelectedLabelVisible(), item.isEmpty());
        m_controller->windowDidClose(); // a hidden panel ignores the selection
        m_controller->updateWindowWithItem(m_project);
        QCOMPARE(updated.count(), 1);
    }

    void rows_data() {
        QTest::addColumn<QString>("attachment"); // "@" stands for a temporary folder
        QTest::addColumn<QString>("text");
        QTest::addColumn<Kind>("icon");
        QTest::addColumn<QString>("extension");
        QTest::newRow("web address")
            << u"https://x.org/a.pdf"_s << u"https://x.org/a.pdf"_s << Kind::Url << QString();
        QTest::newRow("bare host") << u"x.org"_s << u"x.org"_s << Kind::FileType << u"org"_s;
        QTest::newRow("folder") << u"@/Pictures/"_s << u"Pictures"_s << Kind::Folder << QString();
        QTest::newRow("deleted folder") << u"@/Gone"_s << u"Gone"_s << Kind::FileType << QString();
        QTest::newRow("missing file")
            << u"/nowhere/a.tar.gz"_s << u"a.tar.gz"_s << Kind::FileType << u"gz"_s;
    }
    void rows() {
        QFETCH(QString, attachment);
        QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkpath(u"Pictures"_s));
        QVERIFY(QDir(folder.path()).mkpath(u"Gone"_s) && QDir(folder.path()).rmdir(u"Gone"_s));
        attachment.replace(u'@', folder.path());
        m_controller->addAttachmentsToCurrentItem({attachment});
        const AttachmentController::Row row = m_controller->row(0);
        QTEST(row.text, "text");
        QTEST(row.icon, "icon");
        QTEST(row.extension, "extension");
        QCOMPARE(row.toolTip, attachment);
    }

    void addingAndRemoving() {
        QSignalSpy changed(m_controller.get(), &AttachmentController::attachmentsChanged);
        QTest::ignoreMessage(QtInfoMsg, "path '/a' already added");
        m_controller->addAttachmentsToCurrentItem({QString(), u"/a"_s, u"/b"_s, u"/a"_s, u"/c"_s});
        QTest::ignoreMessage(QtInfoMsg, "path '/a' already added");
        m_controller->addAttachmentsToCurrentItem({u"/a"_s});
        m_controller->addAttachmentsToCurrentItem({QString()});
        QCOMPARE(m_entry->attachments(), (QStringList{u"/a"_s, u"/b"_s, u"/c"_s}));
        m_controller->removeButtonClicked({2, 0, 7});
        m_controller->removeButtonClicked({});
        QCOMPARE(m_entry->attachments(), QStringList{u"/b"_s});
        QCOMPARE(m_changes, 3);
        QCOMPARE(changed.count(), 3);
        m_entry->setAttachments(std::nullopt);
        QTest::ignoreMessage(QtWarningMsg, "attachments array not initialized");
        m_controller->addAttachmentsToCurrentItem({u"/d"_s});
        m_controller->updateWindowWithItem({});
        QVERIFY(!m_controller->canAdd());
        m_controller->addAttachmentsToCurrentItem({u"/e"_s});
        QCOMPARE(m_changes, 4);
        QCOMPARE(AttachmentController::openPanelDirectory(), QDir::homePath());
        (*m_preferences)->setObject(u"/srv/files"_s, u"StartingDirectory");
        QCOMPARE(AttachmentController::openPanelDirectory(), u"/srv/files"_s);
    }

    void opening_data() {
        QTest::addColumn<QString>("attachment");
        QTest::addColumn<bool>("follow");
        QTest::addColumn<bool>("result");
        QTest::addColumn<int>("answer"); // 0 "Yes", 1 "No"
        QTest::addColumn<QString>("call");
        QTest::addColumn<bool>("offered");
        QTest::addColumn<int>("rowsLeft");
        QTest::newRow("address") << u"https://x.org"_s << false << true << 0
                                 << u"openUrl https://x.org"_s << false << 1;
        QTest::newRow("address fails, no offer")
            << u"https://x.org"_s << true << false << 0 << u"openUrl https://x.org"_s << false << 1;
        QTest::newRow("bare host removed")
            << u"x.org"_s << false << false << 0 << u"openPath x.org"_s << true << 0;
        QTest::newRow("reveal fails, kept")
            << u"/gone"_s << true << false << 1 << u"revealPath /gone"_s << true << 1;
    }
    void opening() {
        QFETCH(QString, attachment);
        QFETCH(bool, follow);
        QFETCH(QString, call);
        QFETCH(bool, result);
        QFETCH(int, answer);
        QFETCH(bool, offered);
        m_desktop.result = result;
        m_alerts.answer = answer;
        m_controller->addAttachmentsToCurrentItem({attachment});
        if (!result && !offered)
            QTest::ignoreMessage(QtWarningMsg, qPrintable(u"cannot open "_s + attachment));
        follow ? m_controller->followButtonClicked(0) : m_controller->openLinkedFile(0);
        QCOMPARE(m_desktop.calls, QStringList{call});
        QTEST(m_controller->rowCount(), "rowsLeft");
        QCOMPARE(m_alerts.criticalTexts(),
                 offered ? QStringList{u"File or folder does not exist. Do you want to remove the "
                                       u"attachment?|"_s +
                                       attachment + u"|Yes,No"_s}
                         : QStringList());
    }

    void drops_data() {
        QTest::addColumn<bool>("withItem");
        QTest::addColumn<QStringList>("urls");
        QTest::addColumn<QStringList>("added");
        const QStringList both{u"https://x.org/p"_s, u"file:///tmp/a b.pdf"_s};
        QTest::newRow("file names first") << true << both << QStringList{u"/tmp/a b.pdf"_s};
        QTest::newRow("address") << true << both.mid(0, 1) << both.mid(0, 1);
        QTest::newRow("no item") << false << both << QStringList();
        QTest::newRow("text only") << true << QStringList() << QStringList();
    }
    void drops() {
        QFETCH(bool, withItem);
        QFETCH(QStringList, urls);
        QFETCH(QStringList, added);
        QMimeData data;
        data.setText(u"text"_s);
        data.setUrls(QUrl::fromStringList(urls));
        if (!withItem)
            m_controller->updateWindowWithItem({});
        QCOMPARE(m_controller->validateDrop(data), !added.isEmpty());
        QCOMPARE(m_controller->acceptDrop(data), !added.isEmpty());
        QCOMPARE(m_entry->attachments(), added);
    }

private:
    std::unique_ptr<TemporaryPreferences> m_preferences;
    FakeDesktop m_desktop;
    RecordingAlerts m_alerts;
    int m_changes = 0;
    std::unique_ptr<AttachmentController> m_controller;
    std::shared_ptr<Project> m_project;
    std::shared_ptr<Entry> m_entry;
};

QTEST_GUILESS_MAIN(TestAttachments)
#include "tst_attachments.moc"
