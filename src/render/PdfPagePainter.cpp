#include "PdfPagePainter.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfDocument>
#include <QPrinter>

#include <algorithm>

namespace {

// Pictures finer than this only make printing slower: a page at 300 dots per inch is already
// sharper than most printers resolve text.
constexpr int finestResolution = 300;

} // namespace

QString PdfPagePainter::paint(const QByteArray &pdf, QPrinter &printer) {
    QBuffer buffer;
    buffer.setData(pdf);
    buffer.open(QIODevice::ReadOnly);
    QPdfDocument document;
    document.load(&buffer);
    if (document.status() != QPdfDocument::Status::Ready || document.pageCount() == 0)
        return tr("The report's pages could not be read.");
    printer.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&printer))
        return tr("The printer did not take the pages.");
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRectF sheet = printer.paperRect(QPrinter::DevicePixel);
    const double pixelsPerPoint = std::min(printer.resolution(), finestResolution) / 72.0;
    for (int page = 0; page < document.pageCount(); ++page) {
        if (page > 0 && !printer.newPage())
            return tr("The printer did not take the pages.");
        const QSizeF points = document.pagePointSize(page);
        // The engine leaves the paper transparent; printed on white, its edges would show.
        QImage picture((points * pixelsPerPoint).toSize(), QImage::Format_RGB32);
        picture.fill(Qt::white);
        QPainter(&picture).drawImage(0, 0, document.render(page, picture.size()));
        const QSizeF drawn = points.scaled(sheet.size(), Qt::KeepAspectRatio);
        const QPointF corner(sheet.left() + (sheet.width() - drawn.width()) / 2, sheet.top());
        painter.drawImage(QRectF(corner, drawn), picture);
    }
    return painter.end() ? QString() : tr("The printer did not take the pages.");
}
