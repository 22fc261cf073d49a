#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

class QPrinter;

// Prints a PDF document as pictures of its pages. The report's PDF already carries its margins,
// so each page is drawn over the whole sheet, scaled to fit and centred across it.
class PdfPagePainter {
    Q_DECLARE_TR_FUNCTIONS(PdfPagePainter)

public:
    // An empty text when every page reached the printer, otherwise why not.
    static QString paint(const QByteArray &pdf, QPrinter &printer);
};
