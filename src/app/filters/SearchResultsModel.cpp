#include "filters/SearchResultsModel.h"

#include "search/SearchController.h"

#include <QFont>
#include <QPoint>

SearchResultsModel::SearchResultsModel(const SearchController &search, QObject *parent)
    : QAbstractListModel(parent)
    , m_search(search) {
    connect(&search, &SearchController::resultsChanged, this, [this] {
        beginResetModel();
        endResetModel();
    });
}

int SearchResultsModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : m_search.rowCount();
}

QVariant SearchResultsModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const SearchController::Row row = m_search.row(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return row.text;
    case Qt::FontRole: {
        QFont font;
        font.setBold(row.bold);
        return font;
    }
    case RedRangesRole: {
        QVariantList ranges;
        for (const RangeValue &range : row.redRanges)
            ranges.append(QPoint(int(range.location), int(range.length)));
        return ranges;
    }
    default:
        return {};
    }
}
