#pragma once

#include <QStyledItemDelegate>

// Draws a search result's text with the ranges of its RedRangesRole in red.
class SearchResultsDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};
