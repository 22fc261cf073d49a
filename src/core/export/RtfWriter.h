#pragma once

#include <QByteArray>
#include <QList>
#include <QTextFrame>

class QColor;
class QTextBlock;
class QTextCharFormat;
class QTextDocument;
class QTextTable;

// Writes a rich-text document as RTF: paragraphs with their alignment, indent and spacing, tables
// (one RTF row per table row; column spans kept, nested tables flattened into their cell),
// bold, italics, underlining, font sizes, text colours (through the colour table) and line
// breaks. Text outside ASCII is written as \uN? escapes, so the result is plain 7-bit text.
// Pictures are left out.
class RtfWriter {
public:
    static QByteArray write(const QTextDocument &document);
    // The text with RTF's special characters escaped and everything outside ASCII as \uN?.
    static QByteArray escaped(const QString &text);

private:
    void writeFrame(const QTextFrame &frame);
    void writeTable(const QTextTable &table);
    // Each block (of nested frames too) as a paragraph of the current table cell.
    void writeCellContent(QTextFrame::iterator it, bool &first);
    void writeParagraph(const QTextBlock &block, bool inTable);
    QByteArray charFormatCodes(const QTextCharFormat &format);
    int colorIndex(const QColor &color);

    QByteArray m_body;
    QList<QColor> m_colors;
};
