#include "mainwindow/RestoreBackupDialog.h"

#include "model/StoredForms.h"
#include "platform/Folders.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QThread>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

enum Column { Date, Document, Projects, Entries, Hours };

} // namespace

RestoreBackupDialog::RestoreBackupDialog(const ProjectBackups &backups, QWidget *parent)
    : QDialog(parent)
    , m_list(new QTreeWidget(this))
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Open | QDialogButtonBox::Cancel, this)) {
    setWindowTitle(tr("Restore from Backup"));
    setWindowModality(Qt::WindowModal);
    const QList<ProjectBackups::Copy> copies = backups.copies();
    auto *intro = new QLabel(
        copies.isEmpty()
            ? tr("There are no backups in %1 yet: a copy of a project file is kept there at "
                 "most once an hour while it changes.")
                  .arg(Folders::withTilde(backups.folder()))
            : tr("Copies of your project files, kept in %1. The chosen copy opens as a new "
                 "untitled document; the file it was copied from stays as it is.")
                  .arg(Folders::withTilde(backups.folder())),
        this);
    intro->setWordWrap(true);
    m_list->setObjectName(u"backupList"_s);
    m_list->setAccessibleName(tr("Backups"));
    m_list->setRootIsDecorated(false);
    m_list->setAllColumnsShowFocus(true);
    m_list->setHeaderLabels(
        {tr("Date"), tr("Document"), tr("Projects"), tr("Entries"), tr("Hours")});
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(Document, QHeaderView::Stretch);
    QStringList paths;
    for (const auto &copy : copies) {
        auto *row = new QTreeWidgetItem(
            m_list, {QLocale().toString(copy.made.toLocalTime(), QLocale::ShortFormat),
                     copy.documentName, u"…"_s, u"…"_s, u"…"_s});
        row->setData(Date, Qt::UserRole, copy.path);
        row->setToolTip(Document, Folders::withTilde(copy.path));
        for (int column : {Projects, Entries, Hours})
            row->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
        paths << copy.path;
    }
    QPushButton *open = m_buttons->button(QDialogButtonBox::Open);
    open->setEnabled(false);
    connect(m_list, &QTreeWidget::currentItemChanged, open,
            [open](QTreeWidgetItem *current) { open->setEnabled(current != nullptr); });
    connect(m_list, &QTreeWidget::itemActivated, this, &RestoreBackupDialog::openChosen);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &RestoreBackupDialog::openChosen);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addWidget(m_list);
    layout->addWidget(m_buttons);
    resize(640, 380);
    if (!copies.isEmpty())
        m_list->setCurrentItem(m_list->topLevelItem(0));

    m_reader = QThread::create([this, paths] {
        for (int row = 0; row < paths.size() && !m_stopReading; ++row) {
            const ProjectBackups::Summary summary = ProjectBackups::summarize(paths[row]);
            QMetaObject::invokeMethod(
                this, [this, row, summary] { showSummary(row, summary); }, Qt::QueuedConnection);
        }
    });
    m_reader->start(QThread::LowPriority);
}

RestoreBackupDialog::~RestoreBackupDialog() {
    m_stopReading = true;
    m_reader->wait();
    delete m_reader;
}

void RestoreBackupDialog::showSummary(int row, const ProjectBackups::Summary &summary) {
    QTreeWidgetItem *item = m_list->topLevelItem(row);
    if (!summary.ok) {
        for (int column : {Projects, Entries, Hours})
            item->setText(column, {});
        item->setText(Projects, tr("unreadable"));
        item->setToolTip(Projects, summary.error);
        return;
    }
    item->setText(Projects, QString::number(summary.projects));
    item->setText(Entries, QString::number(summary.entries));
    item->setText(Hours, StoredForms::durationText(summary.minutes));
}

void RestoreBackupDialog::openChosen() {
    const QTreeWidgetItem *current = m_list->currentItem();
    if (!current)
        return;
    accept();
    emit backupChosen(current->data(Date, Qt::UserRole).toString());
}
