#pragma once

#include <QAbstractTableModel>
#include <QIcon>

class PauseEditor;
class UserAlerts;

// The pause editor's table: one row per pause of the entry being edited, with the columns
// "pause_from" and "pause_to" (editable moments in the short date and time style), "pause_total"
// (the length) and "pause_conflict" (the conflict picture on a pause that collides). The texts of
// a row that conflicts with the selected row are red. Typed moments go to the pause editor as
// undoable steps; one that it clamps beeps.
class PauseTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { FromColumn, ToColumn, TotalColumn, ConflictColumn, ColumnCount };

    PauseTableModel(PauseEditor &editor, UserAlerts &alerts, QObject *parent = nullptr);

    // The column's identifier, also its header's Qt::UserRole data.
    static QString columnIdentifier(int column);

    // The rows were added or removed, or their pauses changed.
    void refresh();
    // The row whose conflicts are drawn red (-1: none).
    void setSelectedRow(int row);
    int selectedRow() const { return m_selectedRow; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    PauseEditor &m_editor;
    UserAlerts &m_alerts;
    QIcon m_conflictIcon;
    int m_rows = 0;
    int m_selectedRow = -1;
};
