#include "ProjectListDelegate.h"

#include "ActionTableColumn.h"
#include "Pictures.h"
#include "ProjectListModel.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr int minimumRowHeight = 22;
constexpr int pictureSize = 16;

const QStyle *styleOf(const QStyleOptionViewItem &option) {
    return option.widget ? option.widget->style() : QApplication::style();
}

QStringList actionImages(const QModelIndex &index) {
    return index.data(ProjectListModel::ActionImagesRole).toStringList();
}

bool isMouseEvent(const QEvent *event) {
    return event->type() == QEvent::MouseButtonPress ||
           event->type() == QEvent::MouseButtonRelease ||
           event->type() == QEvent::MouseButtonDblClick;
}

} // namespace

ProjectListDelegate::ProjectListDelegate(QObject *parent)
    : QStyledItemDelegate(parent) {}

QRect ProjectListDelegate::checkBoxRect(const QStyleOptionViewItem &option) {
    const QStyle *style = styleOf(option);
    const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth, &option, option.widget),
                     style->pixelMetric(QStyle::PM_IndicatorHeight, &option, option.widget));
    return QStyle::alignedRect(option.direction, Qt::AlignCenter, size, option.rect);
}

bool ProjectListDelegate::isOnControl(const QStyleOptionViewItem &option, const QModelIndex &index,
                                      const QPoint &point) {
    switch (index.column()) {
    case ProjectListModel::ActionColumn:
        return !actionImages(index).isEmpty() &&
               ActionTableColumn::segmentAt(option.rect, point) >= 0;
    case ProjectListModel::StateColumn:
        return checkBoxRect(option).contains(point);
    default:
        return false;
    }
}

void ProjectListDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                const QModelIndex &index) const {
    switch (index.column()) {
    case ProjectListModel::ActionColumn:
        paintActionCell(painter, option, index);
        break;
    case ProjectListModel::StateColumn:
        paintStateCell(painter, option, index);
        break;
    default:
        QStyledItemDelegate::paint(painter, option, index);
        break;
    }
}

void ProjectListDelegate::paintActionCell(QPainter *painter, const QStyleOptionViewItem &option,
                                          const QModelIndex &index) const {
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QStyle *style = styleOf(option);
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, option.widget);
    const QStringList images = actionImages(index);
    if (images.size() != ActionTableColumn::segmentCount)
        return;
    for (int segment = 0; segment < ActionTableColumn::segmentCount; ++segment) {
        QStyleOptionButton button;
        button.initFrom(option.widget);
        button.rect = ActionTableColumn::segmentRect(option.rect, segment);
        button.state = QStyle::State_Enabled | QStyle::State_Raised;
        style->drawControl(QStyle::CE_PushButtonBevel, &button, painter, option.widget);
        const QIcon icon = Pictures::icon(images[segment]);
        if (icon.isNull())
            continue;
        const QRect picture = QStyle::alignedRect(option.direction, Qt::AlignCenter,
                                                  QSize(pictureSize, pictureSize), button.rect);
        icon.paint(painter, picture);
    }
}

void ProjectListDelegate::paintStateCell(QPainter *painter, const QStyleOptionViewItem &option,
                                         const QModelIndex &index) const {
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QStyle *style = styleOf(option);
    const bool hasCheck = cell.features & QStyleOptionViewItem::HasCheckIndicator;
    cell.features &= ~QStyleOptionViewItem::HasCheckIndicator;
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, option.widget);
    if (!hasCheck)
        return;
    QStyleOptionViewItem check = cell;
    check.rect = checkBoxRect(option);
    check.state &= ~(QStyle::State_On | QStyle::State_Off | QStyle::State_NoChange);
    switch (cell.checkState) {
    case Qt::Checked:
        check.state |= QStyle::State_On;
        break;
    case Qt::PartiallyChecked:
        check.state |= QStyle::State_NoChange;
        break;
    default:
        check.state |= QStyle::State_Off;
        break;
    }
    style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &check, painter, option.widget);
}

QSize ProjectListDelegate::sizeHint(const QStyleOptionViewItem &option,
                                    const QModelIndex &index) const {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    size.setHeight(std::max(size.height(), minimumRowHeight));
    return size;
}

bool ProjectListDelegate::editorEvent(QEvent *event, QAbstractItemModel *model,
                                      const QStyleOptionViewItem &option,
                                      const QModelIndex &index) {
    const int column = index.column();
    if ((column != ProjectListModel::ActionColumn && column != ProjectListModel::StateColumn) ||
        !isMouseEvent(event))
        return QStyledItemDelegate::editorEvent(event, model, option, index);
    const auto *mouse = static_cast<QMouseEvent *>(event);
    const QPoint point = mouse->position().toPoint();
    if (!isOnControl(option, index, point))
        return false;
    if (event->type() == QEvent::MouseButtonRelease && mouse->button() == Qt::LeftButton) {
        if (column == ProjectListModel::ActionColumn) {
            emit actionSegmentClicked(index, ActionTableColumn::segmentAt(option.rect, point));
        } else {
            const bool checked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
            model->setData(index, int(checked ? Qt::Unchecked : Qt::Checked), Qt::CheckStateRole);
        }
    }
    return true;
}

QString ProjectListDelegate::displayText(const QVariant &value, const QLocale &locale) const {
    QString text = QStyledItemDelegate::displayText(value, locale);
    text.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    text.replace(u'\n', u' ');
    text.replace(u'\r', u' ');
    return text;
}
