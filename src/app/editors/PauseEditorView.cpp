#include "editors/PauseEditorView.h"

#include "editors/PauseTableModel.h"
#include "model/PauseEditor.h"
#include "platform/LocaleFormat.h"

#include <QAbstractItemDelegate>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

PauseEditorView::PauseEditorView(PauseEditor &editor, UserAlerts &alerts, QWidget *parent)
    : QWidget(parent)
    , m_editor(editor)
    , m_model(new PauseTableModel(editor, alerts, this))
    , m_table(new QTableView)
    , m_addButton(new QToolButton)
    , m_deleteButton(new QToolButton) {
    m_table->setObjectName(QStringLiteral("pauseEditorTable"));
    m_table->setModel(m_model);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                             QAbstractItemView::AnyKeyPressed);
    m_table->verticalHeader()->hide();
    m_table->setAlternatingRowColors(true);
    m_table->setWordWrap(false);
    QHeaderView *header = m_table->horizontalHeader();
    header->setSectionResizeMode(PauseTableModel::FromColumn, QHeaderView::Stretch);
    header->setSectionResizeMode(PauseTableModel::ToColumn, QHeaderView::Stretch);
    header->setSectionResizeMode(PauseTableModel::TotalColumn, QHeaderView::ResizeToContents);
    header->setSectionResizeMode(PauseTableModel::ConflictColumn, QHeaderView::Fixed);
    const int iconColumn = m_table->iconSize().width() > 0 ? m_table->iconSize().width() + 12 : 28;
    header->resizeSection(PauseTableModel::ConflictColumn, std::max(iconColumn, 28));
    // Room for the two moments side by side and a few rows.
    const QFontMetrics metrics = fontMetrics();
    const int moment = metrics.horizontalAdvance(
        LocaleFormat::formatPauseMoment(QDateTime(QDate(2028, 12, 28), QTime(23, 58))));
    m_table->setMinimumWidth(2 * moment + metrics.horizontalAdvance(QStringLiteral("00:00")) + 120);
    m_table->setMinimumHeight(header->sizeHint().height() +
                              4 * m_table->verticalHeader()->defaultSectionSize() + 4);

    m_addButton->setObjectName(QStringLiteral("addPauseButton"));
    m_addButton->setText(QStringLiteral("+"));
    m_addButton->setToolTip(tr("Add a pause"));
    m_addButton->setAccessibleName(tr("Add a pause"));
    m_deleteButton->setObjectName(QStringLiteral("deletePauseButton"));
    m_deleteButton->setText(QStringLiteral("\u2212"));
    m_deleteButton->setToolTip(tr("Delete the selected pause"));
    m_deleteButton->setAccessibleName(tr("Delete the selected pause"));
    connect(m_addButton, &QToolButton::clicked, this, &PauseEditorView::addPauseEntry);
    connect(m_deleteButton, &QToolButton::clicked, this, &PauseEditorView::deletePauseEntry);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        const QModelIndexList rows = m_table->selectionModel()->selectedRows();
        m_model->setSelectedRow(rows.isEmpty() ? -1 : rows.constFirst().row());
        updateButtons();
    });
    connect(m_model, &QAbstractItemModel::modelReset, this, &PauseEditorView::updateButtons);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(2);
    buttons->addWidget(m_addButton);
    buttons->addWidget(m_deleteButton);
    buttons->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(m_table);
    layout->addLayout(buttons);
    updateButtons();
}

void PauseEditorView::refresh() {
    m_model->refresh();
    updateButtons();
}

void PauseEditorView::updateButtons() {
    m_addButton->setEnabled(m_editor.currentEntry() != nullptr);
    m_deleteButton->setEnabled(m_table->selectionModel()->hasSelection());
}

QWidget *PauseEditorView::openEditor() const {
    const QModelIndex current = m_table->currentIndex();
    return current.isValid() ? m_table->indexWidget(current) : nullptr;
}

bool PauseEditorView::isEditedDateValid() const {
    const auto *field = qobject_cast<QLineEdit *>(openEditor());
    return !field || LocaleFormat::parsePauseMoment(field->text()).isValid();
}

bool PauseEditorView::endEditing() {
    QWidget *editor = openEditor();
    if (!editor)
        return false;
    QAbstractItemDelegate *delegate = m_table->itemDelegateForIndex(m_table->currentIndex());
    emit delegate->commitData(editor);
    emit delegate->closeEditor(editor, QAbstractItemDelegate::NoHint);
    return true;
}

void PauseEditorView::addPauseEntry() {
    const int row = m_editor.addPauseEntry();
    if (row < 0)
        return;
    m_model->refresh();
    const QModelIndex start = m_model->index(row, PauseTableModel::FromColumn);
    m_table->setCurrentIndex(start);
    m_table->selectRow(row);
    m_table->edit(start);
}

void PauseEditorView::deletePauseEntry() {
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    if (rows.isEmpty())
        return;
    m_editor.deletePauseEntry(rows.constFirst().row());
    m_model->refresh();
}
