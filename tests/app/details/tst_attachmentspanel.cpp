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

class TestAttachmentsPanel : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_fixture = std::make_unique<SheetFixture>();
        QDir files(m_files.path());
        for (const QString &name : {u"Report.pdf"_s, u"notes"_s}) {
            QFile file(files.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
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
        m_table = control<QTableView>(u"attachmentsTable"_s);
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
        m_chosen = nullptr;
    }

    void titles_data() {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("title");
        QTest::newRow("project") << u"project"_s << u"Alpha"_s;
        QTest::newRow("day entry") << u"entry"_s << u"Alpha: February 1, 2008"_s;
        QTest::newRow("flat fee") << u"fee"_s << u"Alpha: April 5, 2008"_s;
        QTest::newRow("nothing") << QString() << u"(Nothing selected)"_s;
    }
    // The title names the item; without one the label says so and nothing can be added.
    void titles() {
        QFETCH(QString, item);
        auto fee = flatFee(u"05.04.2008"_s, 10.0f);
        m_fixture->alpha->addEntry(fee);
        fee->addAttachments({path(u"Report.pdf"_s)});
        const QHash<QString, AttachmentsPanel::Item> items{
            {u"project"_s, m_fixture->alpha}, {u"entry"_s, m_entry}, {u"fee"_s, fee}};
        m_panel->updateWindowWithItem(items.value(item));
        QTEST(m_panel->windowTitle(), "title");
        auto *label = control<QLabel>(u"nothingSelectedLabel"_s);
        QCOMPARE(label->isVisible(), item.isEmpty());
        QCOMPARE(label->text(), u"Nothing selected"_s);
        QCOMPARE(control<QToolButton>(u"addButton"_s)->isEnabled(), !item.isEmpty());
        QCOMPARE(m_table->model()->rowCount(), item == u"fee" ? 1 : 0);
    }

    // Closed, the window ignores the selection; opened again, it shows the selected item.
    void closedIgnoresTheSelection() {
        m_panel->close();
        QVERIFY(!m_panel->isVisible());
        m_panel->updateWindowWithItem(m_fixture->beta);
        QCOMPARE(m_panel->windowTitle(), u"Alpha: February 1, 2008"_s);
        m_panel->openAttachmentsWindowForItem(m_fixture->beta);
        QVERIFY(m_panel->isVisible());
        QCOMPARE(m_panel->windowTitle(), u"Beta"_s);
    }

    void addingByOpenPanel_data() {
        QTest::addColumn<QString>("startingDirectory");
        QTest::newRow("home folder") << QString();
        QTest::newRow("preference") << u"/srv/files"_s;
    }
    // The open panel starts in the preferred folder; a file chosen twice is attached once, and
    // cancelling changes nothing.
    void addingByOpenPanel() {
        QFETCH(QString, startingDirectory);
        if (!startingDirectory.isEmpty())
            m_fixture->preferences.setObject(startingDirectory, u"StartingDirectory");
        QSignalSpy changed(m_panel.get(), &AttachmentsPanel::attachmentsChanged);
        const QStringList chosen{path(u"Report.pdf"_s), path(u"Invoices"_s)};
        for (const QStringList &paths : {chosen, QStringList{path(u"Report.pdf"_s)}, {}}) {
            QTest::mouseClick(control<QToolButton>(u"addButton"_s), Qt::LeftButton);
            QVERIFY(m_chosen);
            QCOMPARE(m_panelDirectory,
                     startingDirectory.isEmpty() ? QDir::homePath() : startingDirectory);
            std::exchange(m_chosen, nullptr)(paths);
        }
        QCOMPARE(m_entry->attachments(), chosen);
        QCOMPARE(shownNames(), (QStringList{u"Report.pdf"_s, u"Invoices"_s}));
        QCOMPARE(changed.count(), 2);
        QVERIFY(m_fixture->collection.dataChanged());
    }

    void openPanel_data() {
        QTest::addColumn<QString>("selected");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QStringList>("chosen");
        QTest::newRow("folder") << u"Invoices"_s << true << QStringList{path(u"Invoices"_s)};
        QTest::newRow("file") << u"Report.pdf"_s << true << QStringList{path(u"Report.pdf"_s)};
        QTest::newRow("cancelled") << u"Report.pdf"_s << false << QStringList();
    }
    // The real open panel takes a chosen folder instead of going into it.
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
        if (accepted)
            dialog->accept();
        else
            dialog->reject();
        QTEST(chosen.value_or(QStringList{u"not done"_s}), "chosen");
    }

    void drops_data() {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QList<QUrl>>("urls");
        QTest::addColumn<bool>("taken");
        QTest::addColumn<QStringList>("attached");
        const QUrl pdf = QUrl::fromLocalFile(path(u"Report.pdf"_s));
        const QUrl folder = QUrl::fromLocalFile(path(u"Invoices"_s));
        const QUrl web(u"https://example.com/a?b=1"_s);
        QTest::newRow("files") << u"entry"_s << QList<QUrl>{pdf, folder, pdf} << true
                               << QStringList{pdf.toLocalFile(), folder.toLocalFile()};
        QTest::newRow("address") << u"project"_s << QList<QUrl>{web} << true
                                 << QStringList{web.toString()};
        QTest::newRow("files before addresses")
            << u"entry"_s << QList<QUrl>{web, pdf} << true << QStringList{pdf.toLocalFile()};
        QTest::newRow("nothing selected")
            << QString() << QList<QUrl>{pdf} << false << QStringList();
        QTest::newRow("no files") << u"entry"_s << QList<QUrl>() << false << QStringList();
    }
    // Files and addresses dropped on the table are attached; a move is taken as a copy, so the
    // source keeps its files.
    void drops() {
        QFETCH(QString, item);
        QFETCH(QList<QUrl>, urls);
        QFETCH(bool, taken);
        QFETCH(QStringList, attached);
        const QHash<QString, AttachmentsPanel::Item> items{{u"project"_s, m_fixture->alpha},
                                                           {u"entry"_s, m_entry}};
        m_panel->updateWindowWithItem(items.value(item));
        QMimeData data;
        data.setUrls(urls);
        data.setText(u"plain"_s);
        QWidget *viewport = m_table->viewport();
        const QPoint where = viewport->rect().center();
        const Qt::DropActions offered = Qt::MoveAction | Qt::CopyAction | Qt::LinkAction;
        QDragEnterEvent enter(where, offered, &data, Qt::LeftButton, Qt::NoModifier);
        enter.setDropAction(Qt::MoveAction);
        QApplication::sendEvent(viewport, &enter);
        QCOMPARE(enter.isAccepted(), taken);
        const auto *target = m_table->findChild<QWidget *>(u"attachmentsDropTarget"_s);
        QCOMPARE(target->isVisible(), taken);
        QDropEvent drop(where, offered, &data, Qt::LeftButton, Qt::NoModifier);
        drop.setDropAction(Qt::MoveAction);
        QApplication::sendEvent(viewport, &drop);
        QCOMPARE(drop.isAccepted(), taken);
        if (taken)
            QCOMPARE(drop.dropAction(), Qt::CopyAction);
        QVERIFY(!target->isVisible());
        if (!item.isEmpty())
            QCOMPARE(m_panel->controller().attachments(), attached);
        QCOMPARE(m_fixture->collection.dataChanged(), taken);
    }

    void icons_data() {
        QTest::addColumn<QString>("attachment");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("icon");
        QTest::newRow("folder") << path(u"Invoices"_s) << u"Invoices"_s << u"folder"_s;
        QTest::newRow("address") << u"https://example.com/x"_s << u"https://example.com/x"_s
                                 << u"url"_s;
        QTest::newRow("pdf") << path(u"Report.pdf"_s) << u"Report.pdf"_s << u"pdf"_s;
        QTest::newRow("missing pdf") << path(u"Gone.PDF"_s) << u"Gone.PDF"_s << u"pdf"_s;
        QTest::newRow("no extension") << path(u"notes"_s) << u"notes"_s << u"default"_s;
        QTest::newRow("folder gone") << path(u"Old/"_s) << u"Old"_s << u"default"_s;
        QTest::newRow("host without scheme") << u"example.com"_s << u"example.com"_s << u"com"_s;
    }
    // The name column shows the address or the last path component with the icon of its kind;
    // a file or folder that is gone has the icon of its extension. Tooltips name the whole
    // attachment.
    void icons() {
        QFETCH(QString, attachment);
        m_panel->controller().addAttachmentsToCurrentItem({attachment});
        QAbstractItemModel *model = m_table->model();
        QCOMPARE(model->rowCount(), 1);
        QTEST(model->index(0, 0).data().toString(), "name");
        QCOMPARE(model->index(0, 0).data(Qt::ToolTipRole).toString(), attachment);
        QCOMPARE(model->index(0, 1).data(Qt::ToolTipRole).toString(), attachment);
        QVERIFY(model->index(0, 1).data().isNull());
        QFETCH(QString, icon);
        const QImage folder = picture(AttachmentIcons::folderIcon());
        const QImage url = picture(AttachmentIcons::urlIcon());
        const QImage file = picture(AttachmentIcons::defaultIcon());
        const QHash<QString, QImage> pictures{
            {u"folder"_s, folder}, {u"url"_s, url}, {u"default"_s, file}};
        QCOMPARE(picture(model->index(0, 0).data(Qt::DecorationRole).value<QIcon>()),
                 pictures.value(icon, picture(AttachmentIcons::iconForExtension(icon))));
        // The three kinds look different.
        QVERIFY(folder != url && folder != file && url != file);
    }

    void opening_data() {
        QTest::addColumn<QString>("attachment");
        QTest::addColumn<QString>("click");
        QTest::addColumn<int>("answer"); // 0 "Yes", 1 "No"
        QTest::addColumn<QString>("call");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<bool>("kept");
        const QString pdf = path(u"Report.pdf"_s);
        const QString gone = path(u"Gone.pdf"_s);
        const QString web = u"https://example.com/x"_s;
        QTest::newRow("open file") << pdf << u"double"_s << 0 << u"open"_s << false << true;
        QTest::newRow("reveal file") << pdf << u"link"_s << 0 << u"reveal"_s << false << true;
        QTest::newRow("reveal folder")
            << path(u"Invoices"_s) << u"link"_s << 0 << u"reveal"_s << false << true;
        QTest::newRow("open address") << web << u"double"_s << 0 << u"url"_s << false << true;
        QTest::newRow("follow address") << web << u"link"_s << 0 << u"url"_s << false << true;
        QTest::newRow("missing, removed") << gone << u"double"_s << 0 << u"open"_s << true << false;
        QTest::newRow("missing, kept") << gone << u"link"_s << 1 << u"reveal"_s << true << true;
        QTest::newRow("host without scheme")
            << u"example.com"_s << u"double"_s << 0 << u"open"_s << true << false;
    }
    // Double-click opens, the link button reveals a file or opens an address; a file that is
    // gone is offered for removal.
    void opening() {
        QFETCH(QString, attachment);
        QFETCH(QString, click);
        QFETCH(int, answer);
        QFETCH(QString, call);
        QFETCH(bool, asked);
        QFETCH(bool, kept);
        const QString &full = attachment;
        m_panel->controller().addAttachmentsToCurrentItem({path(u"notes"_s), full});
        m_fixture->user.answers = {answer};
        QWidget *viewport = m_table->viewport();
        if (click == u"double") {
            const QPoint name = m_table->visualRect(m_table->model()->index(1, 0)).center();
            // A double-click follows a first click on the row.
            QTest::mouseClick(viewport, Qt::LeftButton, {}, name);
            QTest::mouseDClick(viewport, Qt::LeftButton, {}, name);
        } else {
            auto *links = qobject_cast<LinkButtonDelegate *>(m_table->itemDelegate());
            QTest::mouseClick(viewport, Qt::LeftButton, {}, links->buttonRect(1).center());
            // The button keeps the mouse to itself.
            QVERIFY(!m_table->selectionModel()->hasSelection());
        }
        QCOMPARE(m_desktop.calls, QStringList{call + u' ' + full});
        QCOMPARE(m_fixture->user.alerts.size(), asked ? 1 : 0);
        if (asked) {
            const UserAlerts::Alert &alert = m_fixture->user.alerts.constFirst();
            QCOMPARE(alert.style, UserAlerts::Style::Critical);
            QCOMPARE(alert.message,
                     u"File or folder does not exist. Do you want to remove the attachment?"_s);
            QCOMPARE(alert.informativeText, full);
            QCOMPARE(alert.buttons, (QStringList{u"Yes"_s, u"No"_s}));
        }
        QCOMPARE(m_entry->attachments().contains(full), kept);
        QCOMPARE(m_table->model()->rowCount(), kept ? 2 : 1);
    }

    // The remove button works on the selected rows and is enabled only while there are some.
    void removing() {
        const QStringList all{path(u"Report.pdf"_s), path(u"notes"_s), path(u"Invoices"_s)};
        m_panel->controller().addAttachmentsToCurrentItem(all);
        auto *remove = control<QToolButton>(u"removeButton"_s);
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
    template <typename T> T *control(const QString &name) {
        return SheetFixture::control<T>(*m_panel, name);
    }
    QString path(const QString &name) const { return m_files.filePath(name); }
    QStringList shownNames() const {
        QStringList names;
        for (int row = 0; row < m_table->model()->rowCount(); ++row)
            names << m_table->model()->index(row, 0).data().toString();
        return names;
    }

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
