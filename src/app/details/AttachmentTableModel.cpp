#include "details/AttachmentTableModel.h"

#include "details/AttachmentIcons.h"

AttachmentTableModel::AttachmentTableModel(const AttachmentController &controller, QObject *parent)
    : QAbstractTableModel(parent)
    , m_controller(controller) {
    reload();
}

void AttachmentTableModel::reload() {
    beginResetModel();
    m_rows.clear();
    // Read once here: a row's kind asks the file system whether its path is a folder.
    for (int index = 0; index < m_controller.rowCount(); ++index)
        m_rows.append(m_controller.row(index));
    endResetModel();
}

int AttachmentTableModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(m_rows.size());
}

int AttachmentTableModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant AttachmentTableModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const AttachmentController::Row &row = m_rows[index.row()];
    if (role == Qt::ToolTipRole)
        return row.toolTip;
    if (index.column() == LinkColumn) {
        if (role == Qt::AccessibleTextRole)
            return row.icon == AttachmentController::IconKind::Url ? tr("Open")
                                                                   : tr("Show in File Manager");
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return row.text;
    case Qt::DecorationRole:
        return AttachmentIcons::iconFor(row);
    default:
        return {};
    }
}
