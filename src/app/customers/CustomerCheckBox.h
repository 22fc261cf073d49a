#pragma once

#include <QColor>
#include <QPixmap>
#include <QRectF>

class QPainter;

// The check box of the customer list, drawn in the customer's colour: a soft shadow, the colour
// with a gloss over its upper half, a darker rim and, when checked, a check mark that stands out
// from the colour (dark on light colours, white on dark ones).
class CustomerCheckBox {
public:
    static void paint(QPainter &painter, const QRectF &box, const QColor &color, bool checked);
    // The box SIZE logical pixels square, drawn for the screen's pixel ratio.
    static QPixmap pixmap(const QColor &color, bool checked, int size, qreal devicePixelRatio);
    // The colour the check mark is drawn in on that colour.
    static QColor checkColor(const QColor &color);
};
