#pragma once

#include "stores/Customer.h"

#include <QAbstractTableModel>

class CustomerStorage;

// The customer list's table over the customer storage, one row per customer in the storage's
// order: the check box drawn in the customer's colour (checked while its projects are shown)
// and the name. A row is dragged out as the customer's id; address cards (vCard data or .vcf
// files) dropped anywhere on the table become customers.
class CustomerTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { IconColumn, NameColumn, ColumnCount };
    enum Role { CustomerIDRole = Qt::UserRole };
    // The side of the check box in logical pixels.
    static constexpr int checkBoxSize = 16;

    explicit CustomerTableModel(CustomerStorage &storage, QObject *parent = nullptr);

    CustomerStorage &storage() const { return m_storage; }
    Customer::Pointer customerAt(const QModelIndex &index) const;
    // The name cell of the customer's row; invalid when no customer has the id.
    QModelIndex indexOfCustomer(int customerID) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    Qt::DropActions supportedDragActions() const override;
    Qt::DropActions supportedDropActions() const override;
    bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                         const QModelIndex &parent) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

signals:
    // Address cards were dropped; the first new customer's id.
    void customersDropped(int firstCustomerID);

private:
    void customerChanged(int customerID);

    CustomerStorage &m_storage;
};
