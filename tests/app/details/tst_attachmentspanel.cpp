#include "app/SheetFixture.h"

#include "details/AttachmentIcons.h"
#include "details/AttachmentOpenPanel.h"
#include "details/AttachmentsPanel.h"
#include "details/LinkButtonDelegate.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QLabel>
#include <QMimeData>
#include <QSignalSpy>
#include <QTableView>
#include <QToolButton>
#include <QUrl>

namespace {

// Opens what exists, like the desktop, and records every request.
class FakeDesktop : public DesktopServices {
public:
    bool openUrl(const QString &url) override { return called(u"url "_s + url, true); }
    bool openPath(const QString &path) override {
        return called(u"open "_s + path, QFileInfo::exists(path));
    }
    bool revealPath(const QString &path) override {
        return called(u"reveal "_s + path, QFileInfo::exists(path));
    }
    bool called(const QString &call, bool result) {
        calls << call;
        return result;
    }
    QStringList calls;
};

QImage picture(const QIcon &icon) {
    return icon.pixmap(16, 16).toImage().convertToFormat(QImage::Format_ARGB32);
}

} // namespace

// The window over the AttachmentController (whose rules are tested headless): what it adds is
// the wiring of its buttons, clicks, drops and pictures.
class TestAttachmentsPanel : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_fixture = std::make_unique<SheetFixture>();
        QDir files(m_files.path());
        for (const QString &name : {u"Report.pdf"_s, u"notes"_s})
            QVERIFY(QFile(files.filePath(name)).open(QIODevice::WriteOnly));
        QVERIFY(files.mkpath(u"Invoices"_s));
        m_entry = dayEntry(u"01.02.2008"_s, 30);
        m_fixture->alpha->addEntry(m_entry);
        m_panel = std::make_unique<AttachmentsPanel>(
            m_fixture->collection, m_desktop, m_fixture->user,
            [this](QWidget *window, const QString &directory,
                   std::function<void(const QStringList &)> done) {
                QCOMPARE(window, m_panel.get());
                m_panelDirectory = directory;
                m_chosen = std::move(done);
            },
            &m_fixture->window);
        m_table = SheetFixture::control<QTableView>(*m_panel, u"attachmentsTable"_s);
        new QAbstractItemModelTester(
            m_table->model(), QAbstractItemModelTester::FailureReportingMode::QtTest, m_table);
        m_panel->openAttachmentsWindowForItem(m_entry);
        QVERIFY(QTest::qWaitForWindowExposed(m_panel.get()));
        m_fixture->collection.setDataChanged(false);
    }
    void cleanup() {
        m_panel.reset();
        m_fixture.reset();
        m_desktop.calls.clear();
    }

    // The title names the item; without one the label says so and nothing can be added. Closed,
    // the window ignores the selection; opened again, it shows the selected item.
    void titles() {
        auto fee = flatFee(u"05.04.2008"_s, 10.0f);
        m_fixture->alpha->addEntry(fee);
        fee->addAttachments({path(u"Report.pdf"_s)});
        auto *label = SheetFixture::control<QLabel>(*m_panel, u"nothingSelectedLabel"_s);
        auto *add = SheetFixture::control<QToolButton>(*m_panel, u"addButton"_s);
        m_panel->updateWindowWithItem(fee);
        QCOMPARE(m_panel->windowTitle(), u"Alpha: April 5, 2008"_s);
        QVERIFY(!label->isVisible() && add->isEnabled());
        QCOMPARE(m_table->model()->rowCount(), 1);
        m_panel->updateWindowWithItem({});
        QCOMPARE(m_panel->windowTitle(), u"(Nothing selected)"_s);
        QVERIFY(label->isVisible() && !add->isEnabled());
        QCOMPARE(label->text(), u"Nothing selected"_s);
        QCOMPARE(m_table->model()->rowCount(), 0);
        m_panel->close();
        m_panel->updateWindowWithItem(m_fixture->beta);
        QCOMPARE(m_panel->windowTitle(), u"(Nothing selected)"_s);
        m_panel->openAttachmentsWindowForItem(m_fixture->beta);
        QVERIFY(m_panel->isVisible());
        QCOMPARE(m_panel->windowTitle(), u"Beta"_s);
    }

    // The add button runs the open panel in the preferred folder and attaches what it returns; a
    // file chosen twice is attached once, and cancelling changes nothing.
    void addingByOpenPanel() {
        m_fixture->preferences.setObject(u"/srv/files"_s, u"StartingDirectory");
        QSignalSpy changed(m_panel.get(), &AttachmentsPanel::attachmentsChanged);
        const QStringList chosen{path(u"Report.pdf"_s), path(u"Invoices"_s)};
        for (const QStringList &paths : {chosen, QStringList{path(u"Report.pdf"_s)}, {}}) {
            QTest::mouseClick(SheetFixture::control<QToolButton>(*m_panel, u"addButton"_s),
                              Qt::LeftButton);
            QCOMPARE(m_panelDirectory, u"/srv/files"_s);
            std::exchange(m_chosen, nullptr)(paths);
        }
        QCOMPARE(m_entry->attachments(), chosen);
        QCOMPARE(m_table->model()->index(1, 0).data().toString(), u"Invoices"_s);
        QCOMPARE(changed.count(), 2);
        QVERIFY(m_fixture->collection.dataChanged());
    }

    // The real open panel takes a chosen folder instead of going into it.
    void openPanel_data() {
        QTest::addColumn<QString>("selected");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QStringList>("chosen");
        QTest::newRow("folder") << u"Invoices"_s << true << QStringList{path(u"Invoices"_s)};
        QTest::newRow("file") << u"Report.pdf"_s << true << QStringList{path(u"Report.pdf"_s)};
        QTest::newRow("cancelled") << u"Report.pdf"_s << false << QStringList();
    }
    void openPanel() {
        QFETCH(QString, selected);
        QFETCH(bool, accepted);
        std::optional<QStringList> chosen;
        AttachmentOpenPanel::begin(m_panel.get(), m_files.path(),
                                   [&chosen](const QStringList &paths) { chosen = paths; });
        auto *dialog = m_panel->findChild<AttachmentOpenPanel *>();
        QVERIFY(dialog);
        QCOMPARE(dialog->windowModality(), Qt::WindowModal);
        QCOMPARE(dialog->fileMode(), QFileDialog::ExistingFiles);
        dialog->selectFile(selected);
        accepted ? dialog->accept() : dialog->reject();
        QTEST(chosen.value_or(QStringList{u"not done"_s}), "chosen");
    }

    // Dropped files are attached while the drop target shows; a move is taken as a copy, so the
    // source keeps its files.
    void drops_data() {
        QTest::addColumn<bool>("withItem");
        QTest::newRow("taken") << true;
        QTest::newRow("nothing selected") << false;
    }
    void drops() {
        QFETCH(bool, withItem);
        const QUrl pdf = QUrl::fromLocalFile(path(u"Report.pdf"_s));
        if (!withItem)
            m_panel->updateWindowWithItem({});
        QMimeData data;
        data.setUrls({pdf});
        QWidget *viewport = m_table->viewport();
        const QPoint where = viewport->rect().center();
        const Qt::DropActions offered = Qt::MoveAction | Qt::CopyAction | Qt::LinkAction;
        QDragEnterEvent enter(where, offered, &data, Qt::LeftButton, Qt::NoModifier);
        enter.setDropAction(Qt::MoveAction);
        QApplication::sendEvent(viewport, &enter);
        QCOMPARE(enter.isAccepted(), withItem);
        const auto *target = m_table->findChild<QWidget *>(u"attachmentsDropTarget"_s);
        QCOMPARE(target->isVisible(), withItem);
        QDropEvent drop(where, offered, &data, Qt::LeftButton, Qt::NoModifier);
        drop.setDropAction(Qt::MoveAction);
        QApplication::sendEvent(viewport, &drop);
        QCOMPARE(drop.isAccepted(), withItem);
        if (withItem)
            QCOMPARE(drop.dropAction(), Qt::CopyAction);
        QVERIFY(!target->isVisible());
        QCOMPARE(m_entry->attachments(), withItem ? QStringList{pdf.toLocalFile()} : QStringList());
        QCOMPARE(m_fixture->collection.dataChanged(), withItem);
    }

    // The name column shows the row's text with the picture of its kind; both columns name the
    // whole attachment in their tooltips.
    void icons_data() {
        QTest::addColumn<QString>("attachment");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("icon");
        QTest::newRow("folder") << path(u"Invoices"_s) << u"Invoices"_s << u"folder"_s;
        QTest::newRow("address") << u"https://a.com/x"_s << u"https://a.com/x"_s << u"url"_s;
        QTest::newRow("pdf") << path(u"Report.pdf"_s) << u"Report.pdf"_s << u"pdf"_s;
        QTest::newRow("missing, upper case") << path(u"Gone.PDF"_s) << u"Gone.PDF"_s << u"pdf"_s;
        QTest::newRow("no extension") << path(u"notes"_s) << u"notes"_s << u"default"_s;
    }
    void icons() {
        QFETCH(QString, attachment);
        QFETCH(QString, icon);
        m_panel->controller().addAttachmentsToCurrentItem({attachment});
        QAbstractItemModel *model = m_table->model();
        QTEST(model->index(0, 0).data().toString(), "name");
        QCOMPARE(model->index(0, 0).data(Qt::ToolTipRole).toString(), attachment);
        QCOMPARE(model->index(0, 1).data(Qt::ToolTipRole).toString(), attachment);
        QVERIFY(model->index(0, 1).data().isNull());
        const QImage folder = picture(AttachmentIcons::folderIcon());
        const QImage url = picture(AttachmentIcons::urlIcon());
        const QImage file = picture(AttachmentIcons::defaultIcon());
        const QHash<QString, QImage> pictures{
            {u"folder"_s, folder}, {u"url"_s, url}, {u"default"_s, file}};
        QCOMPARE(picture(model->index(0, 0).data(Qt::DecorationRole).value<QIcon>()),
                 pictures.value(icon, picture(AttachmentIcons::iconForExtension(icon))));
        QVERIFY(folder != url && folder != file && url != file);
    }

    // Double-click opens, the link button reveals (and keeps the mouse to itself); a file that is
    // gone is offered for removal.
    void opening_data() {
        QTest::addColumn<QString>("attachment");
        QTest::addColumn<bool>("link");
        QTest::addColumn<QString>("call");
        QTest::addColumn<bool>("kept");
        const QString pdf = path(u"Report.pdf"_s);
        QTest::newRow("double-click opens") << pdf << false << u"open "_s + pdf << true;
        QTest::newRow("link reveals") << pdf << true << u"reveal "_s + pdf << true;
        const QString gone = path(u"Gone.pdf"_s);
        QTest::newRow("missing, removed") << gone << false << u"open "_s + gone << false;
    }
    void opening() {
        QFETCH(QString, attachment);
        QFETCH(bool, link);
        QFETCH(QString, call);
        QFETCH(bool, kept);
        m_panel->controller().addAttachmentsToCurrentItem({path(u"notes"_s), attachment});
        QWidget *viewport = m_table->viewport();
        if (link) {
            auto *links = qobject_cast<LinkButtonDelegate *>(m_table->itemDelegate());
            QTest::mouseClick(viewport, Qt::LeftButton, {}, links->buttonRect(1).center());
            QVERIFY(!m_table->selectionModel()->hasSelection());
        } else {
            const QPoint name = m_table->visualRect(m_table->model()->index(1, 0)).center();
            QTest::mouseClick(viewport, Qt::LeftButton, {}, name);
            QTest::mouseDClick(viewport, Qt::LeftButton, {}, name);
        }
        QCOMPARE(m_desktop.calls, QStringList{call});
        QCOMPARE(m_fixture->user.messages(),
                 kept ? QStringList()
                      : QStringList{u"File or folder does not exist. Do you want to remove the "
                                    u"attachment?"_s});
        QCOMPARE(m_table->model()->rowCount(), kept ? 2 : 1);
    }

    // The remove button works on the selected rows and is enabled only while there are some.
    void removing() {
        const QStringList all{path(u"Report.pdf"_s), path(u"notes"_s), path(u"Invoices"_s)};
        m_panel->controller().addAttachmentsToCurrentItem(all);
        auto *remove = SheetFixture::control<QToolButton>(*m_panel, u"removeButton"_s);
        QVERIFY(!remove->isEnabled());
        QWidget *viewport = m_table->viewport();
        QTest::mouseClick(viewport, Qt::LeftButton, {},
                          m_table->visualRect(m_table->model()->index(0, 0)).center());
        QTest::mouseClick(viewport, Qt::LeftButton, Qt::ControlModifier,
                          m_table->visualRect(m_table->model()->index(2, 0)).center());
        QVERIFY(remove->isEnabled());
        m_fixture->collection.setDataChanged(false);
        QTest::mouseClick(remove, Qt::LeftButton);
        QCOMPARE(m_entry->attachments(), QStringList{all[1]});
        QVERIFY(!remove->isEnabled());
        QVERIFY(m_fixture->collection.dataChanged());
    }

private:
    QString path(const QString &name) const { return m_files.filePath(name); }

    QTemporaryDir m_files;
    std::unique_ptr<SheetFixture> m_fixture;
    FakeDesktop m_desktop;
    std::unique_ptr<AttachmentsPanel> m_panel;
    QTableView *m_table = nullptr;
    std::shared_ptr<Entry> m_entry;
    QString m_panelDirectory;
    std::function<void(const QStringList &)> m_chosen;
};

QTEST_MAIN(TestAttachmentsPanel)
#include "tst_attachmentspanel.moc"
