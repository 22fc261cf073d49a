#include "customers/CustomerCheckBox.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

QColor CustomerCheckBox::checkColor(const QColor &color) {
    // Relative luminance as the eye weighs the three channels.
    const double luminance = 0.299 * color.redF() + 0.587 * color.greenF() + 0.114 * color.blueF();
    return luminance > 0.6 ? QColor(0x20, 0x20, 0x20) : QColor(Qt::white);
}

void CustomerCheckBox::paint(QPainter &painter, const QRectF &box, const QColor &color,
                             bool checked) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal side = qMin(box.width(), box.height());
    const QRectF square(box.center() - QPointF(side, side) / 2, QSizeF(side, side));
    const qreal unit = side / 16;
    const QRectF body = square.adjusted(1.5 * unit, 1 * unit, -1.5 * unit, -2 * unit);
    const qreal radius = 3 * unit;

    // Shadow beneath, a little lower than the box.
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 60));
    painter.drawRoundedRect(body.translated(0, unit), radius, radius);

    // The colour, lighter at the top.
    const QColor opaque = QColor::fromRgb(color.rgb());
    QLinearGradient fill(body.topLeft(), body.bottomLeft());
    fill.setColorAt(0, opaque.lighter(135));
    fill.setColorAt(0.55, opaque);
    fill.setColorAt(1, opaque.darker(112));
    painter.setBrush(fill);
    painter.setPen(QPen(opaque.darker(160), unit));
    painter.drawRoundedRect(body, radius, radius);

    // Gloss over the upper half.
    QPainterPath gloss;
    const QRectF upper = body.adjusted(unit, unit, -unit, -body.height() / 2);
    gloss.addRoundedRect(upper, radius * 0.7, radius * 0.7);
    QLinearGradient shine(upper.topLeft(), upper.bottomLeft());
    shine.setColorAt(0, QColor(255, 255, 255, 150));
    shine.setColorAt(1, QColor(255, 255, 255, 20));
    painter.setPen(Qt::NoPen);
    painter.setBrush(shine);
    painter.drawPath(gloss);

    if (checked) {
        QPainterPath mark;
        mark.moveTo(body.left() + body.width() * 0.22, body.top() + body.height() * 0.52);
        mark.lineTo(body.left() + body.width() * 0.43, body.top() + body.height() * 0.74);
        mark.lineTo(body.left() + body.width() * 0.80, body.top() + body.height() * 0.24);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(
            QPen(checkColor(opaque), 2.2 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(mark);
    }
    painter.restore();
}

QPixmap CustomerCheckBox::pixmap(const QColor &color, bool checked, int size,
                                 qreal devicePixelRatio) {
    QPixmap pixmap(QSize(size, size) * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(painter, QRectF(0, 0, size, size), color, checked);
    return pixmap;
}
