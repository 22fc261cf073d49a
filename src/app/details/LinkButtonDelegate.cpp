#include "details/LinkButtonDelegate.h"

#include "Pictures.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

QRect centred(const QRect &cell, int size) {
    return QRect(cell.x() + (cell.width() - size) / 2, cell.y() + (cell.height() - size) / 2, size,
                 size);
}

} // namespace

LinkButtonDelegate::LinkButtonDelegate(QAbstractItemView *view, int column)
    : QStyledItemDelegate(view)
    , m_view(view)
    , m_viewport(view->viewport())
    , m_column(column) {
    m_viewport->installEventFilter(this);
}

void LinkButtonDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                               const QModelIndex &index) const {
    QStyleOptionViewItem cell = option;
    cell.state &= ~QStyle::State_HasFocus;
    if (index.column() != m_column) {
        QStyledItemDelegate::paint(painter, cell, index);
        return;
    }
    // The cell's background and selection as in the other columns, then the button.
    QStyleOptionViewItem background = cell;
    initStyleOption(&background, index);
    background.text.clear();
    background.icon = QIcon();
    background.features &= ~QStyleOptionViewItem::HasDisplay;
    background.features &= ~QStyleOptionViewItem::HasDecoration;
    const QWidget *widget = option.widget;
    QStyle *style = widget ? widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &background, painter, widget);

    QString name = u"follow_link"_s;
    if (m_pressedInside && m_pressed == index)
        name += u"_pressed"_s;
    if (option.state & QStyle::State_Selected)
        name += u"_inv"_s;
    Pictures::icon(name).paint(painter, centred(option.rect, ButtonSize));
}

QSize LinkButtonDelegate::sizeHint(const QStyleOptionViewItem &option,
                                   const QModelIndex &index) const {
    if (index.column() != m_column)
        return QStyledItemDelegate::sizeHint(option, index);
    return QSize(ButtonSize + 8, ButtonSize + 4);
}

QRect LinkButtonDelegate::buttonRect(int row) const {
    const QModelIndex index = m_view->model()->index(row, m_column);
    return index.isValid() ? centred(m_view->visualRect(index), ButtonSize) : QRect();
}

QModelIndex LinkButtonDelegate::buttonAt(const QPoint &position) const {
    const QModelIndex index = m_view->indexAt(position);
    if (!index.isValid() || index.column() != m_column ||
        !buttonRect(index.row()).contains(position))
        return {};
    return index;
}

void LinkButtonDelegate::setPressed(const QModelIndex &index, bool inside) {
    const QModelIndex before = m_pressed;
    m_pressed = index;
    m_pressedInside = inside;
    if (before.isValid())
        m_view->update(before);
    if (index.isValid())
        m_view->update(index);
}

bool LinkButtonDelegate::eventFilter(QObject *watched, QEvent *event) {
    // Compared with the viewport kept at the start: the view may be half destroyed already when
    // its viewport sends its last events.
    if (watched != m_viewport)
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        auto *mouse = static_cast<QMouseEvent *>(event);
        const QModelIndex index = buttonAt(mouse->position().toPoint());
        if (!index.isValid() || mouse->button() != Qt::LeftButton)
            return false;
        setPressed(index, true);
        return true;
    }
    case QEvent::MouseMove: {
        if (!m_pressed.isValid())
            return false;
        const auto *mouse = static_cast<QMouseEvent *>(event);
        setPressed(m_pressed, buttonAt(mouse->position().toPoint()) == m_pressed);
        return true;
    }
    case QEvent::MouseButtonRelease: {
        if (!m_pressed.isValid())
            return false;
        const int row = m_pressedInside ? m_pressed.row() : -1;
        setPressed(QModelIndex(), false);
        if (row >= 0)
            emit clicked(row);
        return true;
    }
    default:
        return false;
    }
}
