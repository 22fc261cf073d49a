#include "ActionTableColumn.h"

#include "model/ProjectItem.h"

namespace {
constexpr int margin = 2;
}

QStringList ActionTableColumn::imagesForProjectRow() {
    return {QStringLiteral("btn_clock"), QStringLiteral("btn_play"), QStringLiteral("btn_pause")};
}

QStringList ActionTableColumn::imagesForItemRow(const ProjectItem &item) {
    if (!item.isEntry() || !item.isWorking())
        return {};
    if (item.isPaused())
        return {QStringLiteral("btn_play"), QStringLiteral("btn_pause_dis"),
                QStringLiteral("btn_stop")};
    return {QStringLiteral("btn_play_dis"), QStringLiteral("btn_pause"),
            QStringLiteral("btn_stop")};
}

QRect ActionTableColumn::segmentRect(const QRect &cell, int segment) {
    if (segment < 0 || segment >= segmentCount)
        return {};
    const QRect inner = cell.adjusted(margin, margin, -margin, -margin);
    if (inner.width() < segmentCount || inner.height() <= 0)
        return {};
    const int width = inner.width() / segmentCount;
    const int left = inner.left() + segment * width;
    const int right = segment == segmentCount - 1 ? inner.right() : left + width - 1;
    return QRect(QPoint(left, inner.top()), QPoint(right, inner.bottom()));
}

int ActionTableColumn::segmentAt(const QRect &cell, const QPoint &point) {
    for (int segment = 0; segment < segmentCount; ++segment) {
        if (segmentRect(cell, segment).contains(point))
            return segment;
    }
    return -1;
}
