#include "customers/CustomerTableModel.h"

#include "ProjectListPasteboard.h"
#include "customers/CustomerCheckBox.h"
#include "customers/CustomerDragData.h"
#include "stores/CustomerStorage.h"

#include <QGuiApplication>
#include <QIcon>
#include <QMimeData>

using namespace Qt::StringLiterals;

CustomerTableModel::CustomerTableModel(CustomerStorage &storage, QObject *parent)
    : QAbstractTableModel(parent)
    , m_storage(storage) {
    // The storage tells after the fact: the table is read again from scratch.
    connect(&storage, &CustomerStorage::customersChanged, this, [this] {
        beginResetModel();
        endResetModel();
    });
    connect(&storage, &CustomerStorage::customerChanged, this,
            &CustomerTableModel::customerChanged);
}

Customer::Pointer CustomerTableModel::customerAt(const QModelIndex &index) const {
    return index.isValid() && index.model() == this ? m_storage.customerWithIndex(index.row())
                                                    : nullptr;
}

QModelIndex CustomerTableModel::indexOfCustomer(int customerID) const {
    const QList<Customer::Pointer> &customers = m_storage.customers();
    for (int row = 0; row < customers.size(); ++row) {
        if (customers[row]->customerID() == customerID)
            return index(row, NameColumn);
    }
    return {};
}

void CustomerTableModel::customerChanged(int customerID) {
    const QModelIndex name = indexOfCustomer(customerID);
    if (name.isValid())
        emit dataChanged(index(name.row(), IconColumn), name);
}

int CustomerTableModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : m_storage.count();
}

int CustomerTableModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant CustomerTableModel::data(const QModelIndex &index, int role) const {
    const Customer::Pointer customer = customerAt(index);
    if (!customer)
        return {};
    if (role == CustomerIDRole)
        return customer->customerID();
    if (index.column() == IconColumn) {
        switch (role) {
        case Qt::DecorationRole: {
            // The same picture on a selected row: the colour is the customer's, not a tint.
            const QPixmap box = CustomerCheckBox::pixmap(customer->color(), customer->visible(),
                                                         checkBoxSize, qApp->devicePixelRatio());
            QIcon icon(box);
            icon.addPixmap(box, QIcon::Selected);
            return icon;
        }
        case Qt::ToolTipRole:
            return customer->visible()
                       ? tr("Click to hide the projects of %1").arg(customer->name())
                       : tr("Click to show the projects of %1").arg(customer->name());
        case Qt::AccessibleTextRole:
            return customer->visible() ? tr("Shown") : tr("Hidden");
        default:
            return {};
        }
    }
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return customer->name();
    return {};
}

QVariant CustomerTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return section == NameColumn ? tr("Customers") : QString();
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags CustomerTableModel::flags(const QModelIndex &index) const {
    // Cards are dropped on the table as a whole, not on a row.
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled;
}

QStringList CustomerTableModel::mimeTypes() const {
    return ProjectListPasteboard::vCardTypes() << u"text/uri-list"_s;
}

QMimeData *CustomerTableModel::mimeData(const QModelIndexList &indexes) const {
    const Customer::Pointer customer = indexes.isEmpty() ? nullptr : customerAt(indexes.first());
    return customer ? CustomerDragData::customerData(customer->customerID()) : nullptr;
}

Qt::DropActions CustomerTableModel::supportedDragActions() const {
    return Qt::CopyAction;
}

Qt::DropActions CustomerTableModel::supportedDropActions() const {
    return Qt::CopyAction;
}

bool CustomerTableModel::canDropMimeData(const QMimeData *data, Qt::DropAction, int, int,
                                         const QModelIndex &) const {
    return data && CustomerDragData::hasVCard(*data);
}

bool CustomerTableModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row,
                                      int column, const QModelIndex &parent) {
    if (!canDropMimeData(data, action, row, column, parent))
        return false;
    const int first = m_storage.addCustomersFromVCard(CustomerDragData::vCardData(*data));
    if (first < 0)
        return false;
    emit customersDropped(first);
    return true;
}
