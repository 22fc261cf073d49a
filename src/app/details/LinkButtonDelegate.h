#pragma once

#include <QPersistentModelIndex>
#include <QStyledItemDelegate>

class QAbstractItemView;

// The cells of a table whose rows are selected whole: one column of small round link buttons
// ("follow_link"; on a selected row "follow_link_inv"; held down, the "_pressed" forms of both),
// the other columns as usual, and no focus frame around a single cell. A click on a button is
// reported; the button takes the mouse from the view, so pressing it neither selects the row nor
// starts a drag, and double-clicking it opens nothing.
class LinkButtonDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    LinkButtonDelegate(QAbstractItemView *view, int column);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    // Where the button of the row is drawn, in the view's viewport.
    QRect buttonRect(int row) const;

signals:
    void clicked(int row);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    static constexpr int ButtonSize = 16;

    QModelIndex buttonAt(const QPoint &position) const;
    void setPressed(const QModelIndex &index, bool inside);

    QAbstractItemView *m_view;
    QObject *m_viewport;
    int m_column;
    QPersistentModelIndex m_pressed;
    bool m_pressedInside = false;
};
