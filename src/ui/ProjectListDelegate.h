#pragma once

#include <QStyledItemDelegate>

// Draws the project list's cells: the action column as a button of three segments with their
// pictures, the state column as a centred check box, comments on one line. A click on a segment
// is reported; a click on the check box toggles it.
class ProjectListDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit ProjectListDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;
    QString displayText(const QVariant &value, const QLocale &locale) const override;

    // The check box of a state cell, centred in the cell.
    static QRect checkBoxRect(const QStyleOptionViewItem &option);
    // Whether the point lies on a control of the cell (an action segment or the check box), where
    // clicks act instead of selecting or opening the row.
    static bool isOnControl(const QStyleOptionViewItem &option, const QModelIndex &index,
                            const QPoint &point);

signals:
    void actionSegmentClicked(const QModelIndex &index, int segment);

private:
    void paintActionCell(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const;
    void paintStateCell(QPainter *painter, const QStyleOptionViewItem &option,
                        const QModelIndex &index) const;
};
