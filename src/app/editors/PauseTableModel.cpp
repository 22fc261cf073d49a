#include "editors/PauseTableModel.h"

#include "model/PauseEditor.h"
#include "platform/Folders.h"
#include "platform/LocaleFormat.h"
#include "platform/UserAlerts.h"

#include <QApplication>
#include <QColor>
#include <QPalette>

PauseTableModel::PauseTableModel(PauseEditor &editor, UserAlerts &alerts, QObject *parent)
    : QAbstractTableModel(parent)
    , m_editor(editor)
    , m_alerts(alerts)
    , m_conflictIcon(Folders::imagePath(QStringLiteral("conflict")))
    , m_rows(editor.rowCount()) {}

QString PauseTableModel::columnIdentifier(int column) {
    switch (column) {
    case FromColumn:
        return QStringLiteral("pause_from");
    case ToColumn:
        return QStringLiteral("pause_to");
    case TotalColumn:
        return QStringLiteral("pause_total");
    default:
        return QStringLiteral("pause_conflict");
    }
}

void PauseTableModel::refresh() {
    if (m_editor.rowCount() != m_rows) {
        beginResetModel();
        m_rows = m_editor.rowCount();
        m_selectedRow = -1;
        endResetModel();
    } else if (m_rows > 0) {
        emit dataChanged(index(0, 0), index(m_rows - 1, ColumnCount - 1));
    }
}

void PauseTableModel::setSelectedRow(int row) {
    if (row == m_selectedRow)
        return;
    m_selectedRow = row;
    if (m_rows > 0)
        emit dataChanged(index(0, FromColumn), index(m_rows - 1, TotalColumn),
                         {Qt::ForegroundRole});
}

int PauseTableModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : m_rows;
}

int PauseTableModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PauseTableModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const int row = index.row();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        switch (index.column()) {
        case FromColumn:
            return m_editor.fromText(row);
        case ToColumn:
            return m_editor.toText(row);
        case TotalColumn:
            return m_editor.totalText(row);
        default:
            return {};
        }
    case Qt::DecorationRole:
        if (index.column() == ConflictColumn && m_editor.showsConflictIcon(row))
            return m_conflictIcon;
        return {};
    case Qt::ToolTipRole:
        if (index.column() == ConflictColumn && m_editor.showsConflictIcon(row))
            return tr("This pause overlaps another one or ends before it starts.");
        return {};
    case Qt::ForegroundRole:
        if (index.column() != ConflictColumn && m_editor.isRowRed(row, m_selectedRow)) {
            // A red that reads on light and on dark backgrounds.
            const bool dark = QApplication::palette().color(QPalette::Base).lightness() < 128;
            return dark ? QColor(0xff, 0x6b, 0x60) : QColor(0xc8, 0x1e, 0x1e);
        }
        return {};
    case Qt::TextAlignmentRole:
        return index.column() == TotalColumn ? QVariant(Qt::AlignCenter)
                                             : QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    default:
        return {};
    }
}

bool PauseTableModel::setData(const QModelIndex &index, const QVariant &value, int role) {
    if (role != Qt::EditRole ||
        !checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid) ||
        (index.column() != FromColumn && index.column() != ToColumn))
        return false;
    const QDateTime moment = LocaleFormat::parsePauseMoment(value.toString());
    const auto entry = m_editor.currentEntry();
    if (!moment.isValid() || !entry)
        return false;
    const bool from = index.column() == FromColumn;
    const PauseConflicts::Clamped clamped = from ? PauseConflicts::clampedFrom(moment, *entry)
                                                 : PauseConflicts::clampedTo(moment, *entry);
    if (clamped.beep)
        m_alerts.beep();
    // A cell committed unchanged is no step to undo.
    const auto pause = m_editor.pauseAt(index.row());
    PauseEntry probe;
    probe.setFrom(clamped.moment);
    if (probe.fromSecs() == (from ? pause->fromSecs() : pause->toSecs()))
        return true;
    if (from)
        m_editor.setFrom(pause, clamped.moment);
    else
        m_editor.setTo(pause, clamped.moment);
    return true;
}

Qt::ItemFlags PauseTableModel::flags(const QModelIndex &index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (index.column() == FromColumn || index.column() == ToColumn)
        flags |= Qt::ItemIsEditable;
    return flags;
}

QVariant PauseTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role == Qt::UserRole)
        return columnIdentifier(section);
    if (role != Qt::DisplayRole)
        return {};
    switch (section) {
    case FromColumn:
        return tr("Start");
    case ToColumn:
        return tr("End");
    case TotalColumn:
        return tr("Duration");
    default:
        return QString();
    }
}
