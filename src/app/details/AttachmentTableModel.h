#pragma once

#include "stores/AttachmentController.h"

#include <QAbstractTableModel>

// The rows of the attachments table: the file-name column ("filename_col": the web address, or
// the path's last component, with its icon) and the column of link buttons ("link_col"). Every
// cell's tooltip is the whole attachment. The rows are read from the controller on reload().
class AttachmentTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { FileNameColumn, LinkColumn, ColumnCount };

    explicit AttachmentTableModel(const AttachmentController &controller,
                                  QObject *parent = nullptr);

    // Reads the current item's attachments again; the view loses its selection.
    void reload();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    const AttachmentController &m_controller;
    QList<AttachmentController::Row> m_rows;
};
