#include "details/AttachmentsPanel.h"

#include "common/SignButtons.h"
#include "details/AttachmentTableModel.h"
#include "details/LinkButtonDelegate.h"
#include "model/ProjectCollection.h"

#include <QDragMoveEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

using namespace Qt::StringLiterals;

AttachmentsPanel::AttachmentsPanel(ProjectCollection &collection, DesktopServices &desktop,
                                   UserAlerts &alerts, ChooseFiles chooseFiles, QWidget *parent)
    : QWidget(parent, Qt::Tool)
    , m_controller(new AttachmentController(
          desktop, alerts, [&collection] { collection.setDataChanged(true); }, this))
    , m_chooseFiles(std::move(chooseFiles))
    , m_model(new AttachmentTableModel(*m_controller, this))
    , m_table(new QTableView)
    , m_linkButtons(new LinkButtonDelegate(m_table, AttachmentTableModel::LinkColumn))
    , m_nothingSelectedLabel(new QLabel(tr("Nothing selected")))
    , m_dropTarget(new QFrame(m_table->viewport()))
    , m_addButton(new QToolButton)
    , m_removeButton(new QToolButton) {
    setObjectName(u"attachmentsWindow"_s);

    m_table->setObjectName(u"attachmentsTable"_s);
    m_table->setModel(m_model);
    m_table->setItemDelegate(m_linkButtons);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setShowGrid(false);
    m_table->setAlternatingRowColors(true);
    m_table->setWordWrap(false);
    m_table->setIconSize(QSize(16, 16));
    // The end of a long name shows its kind.
    m_table->setTextElideMode(Qt::ElideMiddle);
    m_table->horizontalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(AttachmentTableModel::FileNameColumn,
                                                      QHeaderView::Stretch);
    m_table->horizontalHeader()->setSectionResizeMode(AttachmentTableModel::LinkColumn,
                                                      QHeaderView::Fixed);
    m_table->horizontalHeader()->resizeSection(AttachmentTableModel::LinkColumn, 28);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(qMax(22, fontMetrics().height() + 6));
    m_table->viewport()->setAcceptDrops(true);
    m_table->viewport()->installEventFilter(this);

    m_dropTarget->setObjectName(u"attachmentsDropTarget"_s);
    m_dropTarget->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_dropTarget->setStyleSheet(
        u"#attachmentsDropTarget { border: 2px solid palette(highlight); border-radius: 3px; }"_s);
    m_dropTarget->hide();

    m_nothingSelectedLabel->setObjectName(u"nothingSelectedLabel"_s);
    m_nothingSelectedLabel->setAlignment(Qt::AlignCenter);
    m_nothingSelectedLabel->setForegroundRole(QPalette::PlaceholderText);
    m_nothingSelectedLabel->setAttribute(Qt::WA_TransparentForMouseEvents);

    SignButtons::makeAdd(m_addButton, u"addButton"_s, tr("Add files or folders"));
    SignButtons::makeRemove(m_removeButton, u"removeButton"_s,
                            tr("Remove the selected attachments"));
    for (QToolButton *button : {m_addButton, m_removeButton})
        button->setFixedSize(28, 24);

    auto *tableArea = new QGridLayout;
    tableArea->addWidget(m_table, 0, 0);
    tableArea->addWidget(m_nothingSelectedLabel, 0, 0, Qt::AlignCenter);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(2);
    buttons->addWidget(m_addButton);
    buttons->addWidget(m_removeButton);
    buttons->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->setSpacing(6);
    layout->addLayout(tableArea);
    layout->addLayout(buttons);
    resize(380, 260);

    connect(m_controller, &AttachmentController::windowOpened, this, [this] {
        show();
        raise();
        activateWindow();
    });
    connect(m_controller, &AttachmentController::currentItemChanged, this,
            &AttachmentsPanel::showCurrentItem);
    connect(m_controller, &AttachmentController::attachmentsChanged, this, [this] {
        reloadTable();
        emit attachmentsChanged();
    });
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &AttachmentsPanel::updateButtons);
    connect(m_table, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex &index) { m_controller->openLinkedFile(index.row()); });
    connect(m_linkButtons, &LinkButtonDelegate::clicked, m_controller,
            &AttachmentController::followButtonClicked);
    connect(m_addButton, &QToolButton::clicked, this, &AttachmentsPanel::addButtonClicked);
    connect(m_removeButton, &QToolButton::clicked, this, &AttachmentsPanel::removeButtonClicked);
    showCurrentItem();
}

void AttachmentsPanel::openAttachmentsWindowForItem(const Item &item) {
    m_controller->openAttachmentsWindowForItem(item);
}

void AttachmentsPanel::updateWindowWithItem(const Item &item) {
    m_controller->updateWindowWithItem(item);
}

void AttachmentsPanel::showCurrentItem() {
    setWindowTitle(m_controller->windowTitle());
    m_nothingSelectedLabel->setVisible(m_controller->isNothingSelectedLabelVisible());
    reloadTable();
}

void AttachmentsPanel::reloadTable() {
    m_model->reload();
    updateButtons();
}

void AttachmentsPanel::updateButtons() {
    m_addButton->setEnabled(m_controller->canAdd());
    m_removeButton->setEnabled(m_table->selectionModel()->hasSelection());
}

void AttachmentsPanel::addButtonClicked() {
    if (!m_controller->canAdd())
        return;
    m_chooseFiles(this, AttachmentController::openPanelDirectory(),
                  [panel = QPointer(this)](const QStringList &paths) {
                      if (!panel)
                          return;
                      panel->m_controller->addAttachmentsToCurrentItem(paths);
                      panel->reloadTable();
                  });
}

void AttachmentsPanel::removeButtonClicked() {
    QList<int> rows;
    for (const QModelIndex &index : m_table->selectionModel()->selectedRows())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    m_controller->removeButtonClicked(rows);
}

void AttachmentsPanel::showDropTarget(bool shown) {
    m_dropTarget->setGeometry(m_table->viewport()->rect());
    m_dropTarget->setVisible(shown);
}

bool AttachmentsPanel::eventFilter(QObject *watched, QEvent *event) {
    if (watched != m_table->viewport())
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: {
        auto *drop = static_cast<QDropEvent *>(event);
        const bool taken = event->type() == QEvent::Drop
                               ? m_controller->acceptDrop(*drop->mimeData())
                               : m_controller->validateDrop(*drop->mimeData());
        showDropTarget(taken && event->type() != QEvent::Drop);
        if (!taken) {
            drop->ignore();
            return true;
        }
        // Only a reference is kept: never a move, which would let the source delete its files.
        drop->setDropAction(drop->possibleActions() & Qt::CopyAction ? Qt::CopyAction
                                                                     : Qt::LinkAction);
        drop->accept();
        return true;
    }
    case QEvent::DragLeave:
        showDropTarget(false);
        return true;
    default:
        return false;
    }
}

void AttachmentsPanel::hideEvent(QHideEvent *event) {
    // Minimised, it still follows the selection.
    if (!event->spontaneous())
        m_controller->windowDidClose();
    QWidget::hideEvent(event);
}
