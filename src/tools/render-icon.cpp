// Renders the application icon from its SVG drawing into a square PNG of one size, for the icon
// theme folders of an installed copy (desktop environments want bitmaps at the small sizes).

#include "platform/AtomicFile.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

int main(int argc, char *argv[]) {
    QCoreApplication app(argc, argv);
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s INPUT.svg SIZE OUTPUT.png\n", argv[0]);
        return 2;
    }
    const QString input = QString::fromLocal8Bit(argv[1]);
    bool sizeOk = false;
    const int size = QByteArray(argv[2]).toInt(&sizeOk);
    if (!sizeOk || size < 1) {
        std::fprintf(stderr, "%s: the size must be a positive number of pixels\n", argv[2]);
        return 2;
    }
    QSvgRenderer renderer(input);
    if (!renderer.isValid()) {
        std::fprintf(stderr, "%s: not a readable SVG drawing\n", qPrintable(input));
        return 1;
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter);
    painter.end();

    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) {
        std::fprintf(stderr, "%s: the PNG encoder is missing\n", argv[3]);
        return 1;
    }
    const AtomicFile::Result written = AtomicFile::write(QString::fromLocal8Bit(argv[3]), png);
    if (!written.ok) {
        std::fprintf(stderr, "%s\n", qPrintable(written.error));
        return 1;
    }
    return 0;
}
