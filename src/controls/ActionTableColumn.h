#pragma once

#include <QRect>
#include <QStringList>

class ProjectItem;

// The action cell of a project-list row: a button of three segments (0, 1, 2) without labels,
// each showing a picture. A project row offers a new timer, resume and pause; a running entry
// pause and stop; a paused entry resume and stop. Any other row has an empty text cell instead.
class ActionTableColumn {
public:
    static constexpr int segmentCount = 3;

    // The three picture names of a project row.
    static QStringList imagesForProjectRow();
    // The three picture names of an entry's row; empty for a row without the button (an entry
    // that is not running, a flat fee).
    static QStringList imagesForItemRow(const ProjectItem &item);

    // Where a segment lies inside the cell: the cell less a small margin, split in three equal
    // parts (the last one takes what division leaves over).
    static QRect segmentRect(const QRect &cell, int segment);
    // The segment under the point, or -1 when the point is on none.
    static int segmentAt(const QRect &cell, const QPoint &point);
};
