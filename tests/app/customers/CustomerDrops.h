#pragma once

#include <QApplication>
#include <QBuffer>
#include <QDropEvent>
#include <QImage>
#include <QMimeData>
#include <QWidget>

// What a drag from another program does to a widget, as far as the widget can tell.
struct DragOutcome {
    bool entered = false; // the widget took the drag when it came in
    bool dropped = false; // and the drop
};

// Drags the data in over the point of the widget, moves it there and drops it; a drag the
// widget refuses on entering goes no further. As with a real drag, the moves over a widget that
// took the drag count as taken unless the widget says otherwise.
inline DragOutcome dragOnto(QWidget *target, const QMimeData &data, const QPoint &point) {
    DragOutcome outcome;
    QDragEnterEvent enter(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    outcome.entered = enter.isAccepted();
    if (!outcome.entered)
        return outcome;
    QDragMoveEvent move(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    move.setDropAction(enter.dropAction());
    move.accept();
    QApplication::sendEvent(target, &move);
    if (!move.isAccepted())
        return outcome;
    QDropEvent drop(QPointF(point), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &drop);
    outcome.dropped = drop.isAccepted();
    return outcome;
}

// A picture of one colour, as PNG data.
inline QByteArray pngData(const QColor &color, const QSize &size) {
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

// Base64 cut into folded lines (each continuation begins with a blank).
inline QByteArray folded(const QByteArray &base64) {
    QByteArray lines;
    for (qsizetype i = 0; i < base64.size(); i += 60)
        lines += (i ? "\r\n " : "") + base64.mid(i, 60);
    return lines;
}

// Address cards as contact programs hand them out: version 3.0 with an inline photo (40 × 30),
// version 4.0 with a photo as a data address (24 × 24), and a company's card with only the
// organisation's name.
inline QByteArray card30WithPhoto() {
    return "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Doe;Jane;;;\r\nFN:Jane Doe\r\nORG:Doe Design\r\n"
           "PHOTO;ENCODING=b;TYPE=PNG:" +
           folded(pngData(Qt::darkCyan, QSize(40, 30)).toBase64()) +
           "\r\nUID:jane-doe-1\r\nEND:VCARD\r\n";
}

inline QByteArray card40WithPhoto() {
    return "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:Max Mustermann\r\nN:Mustermann;Max;;;\r\n"
           "PHOTO:data:image/png;base64," +
           folded(pngData(Qt::darkMagenta, QSize(24, 24)).toBase64()) +
           "\r\nUID:urn:uuid:0b6c2f1e-9a1d-4c55-8f0e-2d4a6b8c9e01\r\nEND:VCARD\r\n";
}

inline QByteArray organisationCard() {
    return "BEGIN:VCARD\nVERSION:3.0\nN:;;;;\nFN:Globex Ltd\nORG:Globex Ltd;Accounts\n"
           "END:VCARD\n";
}
