#include "filters/SearchResultsDelegate.h"

#include "filters/SearchResultsModel.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

void SearchResultsDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                  const QModelIndex &index) const {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QString text = item.text;
    item.text.clear();
    QStyle *style = item.widget ? item.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    const QRect area = style->subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget)
                           .adjusted(3, 0, -3, 0);
    const QString shown = item.fontMetrics.elidedText(text, Qt::ElideRight, area.width());
    QTextLayout layout(shown, item.font);
    const bool selected = item.state & QStyle::State_Selected;
    // A lighter red on the selection's dark background.
    const QColor red = selected ? QColor(255, 190, 190) : QColor(Qt::red);
    QList<QTextLayout::FormatRange> formats;
    for (const QVariant &range : index.data(SearchResultsModel::RedRangesRole).toList()) {
        QTextLayout::FormatRange format;
        format.start = range.toPoint().x();
        format.length = range.toPoint().y();
        format.format.setForeground(red);
        formats.append(format);
    }
    layout.setFormats(formats);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(area.width());
    layout.endLayout();
    painter->save();
    painter->setPen(item.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    layout.draw(painter, QPointF(area.left(), area.top() + (area.height() - line.height()) / 2));
    painter->restore();
}
