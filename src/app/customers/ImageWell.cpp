#include "customers/ImageWell.h"

#include "customers/CustomerDragData.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>

ImageWell::ImageWell(QWidget *parent)
    : QFrame(parent) {
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    setAcceptDrops(true);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
}

void ImageWell::setImage(const QImage &image) {
    m_image = image;
    update();
}

void ImageWell::setPlaceholderText(const QString &text) {
    m_placeholder = text;
    update();
}

QSize ImageWell::sizeHint() const {
    return {96, 96};
}

void ImageWell::paintEvent(QPaintEvent *event) {
    QFrame::paintEvent(event);
    QPainter painter(this);
    const QRect inside = contentsRect().adjusted(4, 4, -4, -4);
    if (m_highlighted) {
        QColor highlight = palette().color(QPalette::Highlight);
        painter.setPen(QPen(highlight, 2));
        highlight.setAlpha(40);
        painter.setBrush(highlight);
        painter.drawRect(contentsRect().adjusted(1, 1, -1, -1));
    }
    if (!m_image.isNull()) {
        const QSize shown = m_image.size().scaled(inside.size(), Qt::KeepAspectRatio);
        QRect target(QPoint(), m_image.size().boundedTo(shown));
        target.moveCenter(inside.center());
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(target, m_image);
    } else if (!m_placeholder.isEmpty()) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(inside, Qt::AlignCenter | Qt::TextWordWrap, m_placeholder);
    }
}

void ImageWell::dragEnterEvent(QDragEnterEvent *event) {
    if (!isEnabled() || !CustomerDragData::hasImage(*event->mimeData())) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    m_highlighted = true;
    update();
}

void ImageWell::dragLeaveEvent(QDragLeaveEvent *) {
    m_highlighted = false;
    update();
}

void ImageWell::dropEvent(QDropEvent *event) {
    m_highlighted = false;
    update();
    const QImage image = CustomerDragData::image(*event->mimeData());
    if (image.isNull()) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    setImage(image);
    emit imageDropped(image);
}
