#include "desktop/CountBadge.h"

#include "desktop/LauncherEntry.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

QFont badgeFont() {
    QFont font(u"Helvetica"_s);
    font.setBold(true);
    font.setPixelSize(26);
    return font;
}

// The circle's diameter leaves 8 pixels around the larger side of the text.
QSize textSize(int count) {
    const QFontMetrics metrics(badgeFont());
    return {metrics.horizontalAdvance(QString::number(count)), metrics.height()};
}

} // namespace

CountBadge::CountBadge(const QImage &originalIcon, LauncherEntry &launcher,
                       std::function<void(const QImage &)> setIcon)
    : m_originalIcon(originalIcon)
    , m_launcher(launcher)
    , m_setIcon(std::move(setIcon)) {}

void CountBadge::update(int count, bool shown) {
    const int visibleCount = shown ? count : 0;
    if (visibleCount == m_shownCount)
        return;
    m_shownCount = visibleCount;
    m_setIcon(drawCountIcon(m_originalIcon, visibleCount));
    m_launcher.setCount(count, visibleCount > 0);
}

QRect CountBadge::badgeRect(const QSize &icon, int count) {
    const QSize text = textSize(count);
    const int diameter = qMax(text.width(), text.height()) + 16;
    return {icon.width() - diameter, 0, diameter, diameter};
}

QImage CountBadge::drawCountIcon(const QImage &icon, int count) {
    if (count <= 0)
        return icon;
    QImage buffer(QSize(iconSize, iconSize), QImage::Format_ARGB32_Premultiplied);
    buffer.fill(Qt::transparent);
    QPainter painter(&buffer);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawImage(buffer.rect(), icon);
    const QRect box = badgeRect(buffer.size(), count);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgbF(0.9f, 0.0f, 0.0f, 1.0f));
    painter.drawEllipse(box);
    const QSize text = textSize(count);
    const QPointF centre = QRectF(box).center();
    // Raised by 2 pixels: the digits have no descenders, so the line's box sits low.
    const QRectF textBox(centre.x() - text.width() / 2.0, centre.y() - text.height() / 2.0 - 2,
                         text.width(), text.height());
    painter.setFont(badgeFont());
    painter.setPen(Qt::white);
    painter.drawText(textBox, Qt::AlignCenter, QString::number(count));
    painter.end();
    return buffer;
}
