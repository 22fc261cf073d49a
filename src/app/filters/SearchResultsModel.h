#pragma once

#include <QAbstractListModel>

class SearchController;

// The rows of the search results as a list model: a project row's text in bold, an entry row's
// excerpt with the positions of the search text (RedRangesRole: a list of QPoint(start, length))
// for the delegate to colour. It follows the controller's results as they change.
class SearchResultsModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { RedRangesRole = Qt::UserRole + 1 };

    explicit SearchResultsModel(const SearchController &search, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    const SearchController &m_search;
};
