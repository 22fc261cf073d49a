#include "RtfWriter.h"

#include <QColor>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>
#include <cmath>

namespace {

// The width between the margins of a letter page that tables are spread over, in twips.
constexpr int tableWidth = 9360;
// RTF's default font size, 12 points, in half points.
constexpr int defaultHalfPoints = 24;

// The document's lengths are CSS pixels of 1/96 inch; RTF measures in twips (1/1440 inch).
int twips(qreal pixels) {
    return int(std::lround(pixels * 15));
}

QByteArray number(qint64 value) {
    return QByteArray::number(value);
}

// A heading's size is a step of the HTML size scale (h1 is +3) rather than a point size.
int halfPoints(const QTextCharFormat &format) {
    if (format.hasProperty(QTextFormat::FontPointSize))
        return int(std::lround(format.fontPointSize() * 2));
    if (format.hasProperty(QTextFormat::FontPixelSize))
        return int(std::lround(format.intProperty(QTextFormat::FontPixelSize) * 1.5));
    const int step = format.intProperty(QTextFormat::FontSizeAdjustment);
    return int(std::lround(defaultHalfPoints * std::pow(1.2, step)));
}

QList<int> columnEdges(const QTextTable &table) {
    const int columns = table.columns();
    QList<int> widths(columns, 0);
    const QList<QTextLength> constraints = table.format().columnWidthConstraints();
    int given = 0, open = 0;
    for (int c = 0; c < columns; ++c) {
        const QTextLength length = constraints.value(c);
        if (length.type() == QTextLength::PercentageLength)
            widths[c] = int(tableWidth * length.rawValue() / 100);
        else if (length.type() == QTextLength::FixedLength)
            widths[c] = twips(length.rawValue());
        else
            ++open;
        given += widths[c];
    }
    const int share = open ? std::max(360, (tableWidth - given) / open) : 0;
    QList<int> edges;
    int edge = 0;
    for (int c = 0; c < columns; ++c) {
        edge += widths[c] ? widths[c] : share;
        edges.append(edge);
    }
    return edges;
}

} // namespace

QByteArray RtfWriter::escaped(const QString &text) {
    QByteArray rtf;
    for (const QChar c : text) {
        const char16_t unit = c.unicode();
        if (unit == u'\\' || unit == u'{' || unit == u'}') {
            rtf += '\\';
            rtf += char(unit);
        } else if (unit == QChar::LineSeparator) {
            rtf += "\\line ";
        } else if (unit == u'\t') {
            rtf += "\\tab ";
        } else if (unit == QChar::Nbsp) {
            rtf += "\\~";
        } else if (unit >= 0x20 && unit < 0x7f) {
            rtf += char(unit);
        } else if (unit >= 0x80 && unit != QChar::ObjectReplacementCharacter) {
            rtf += "\\u" + number(qint16(unit)) + '?';
        }
    }
    return rtf;
}

int RtfWriter::colorIndex(const QColor &color) {
    const QColor rgb = color.toRgb();
    qsizetype index = m_colors.indexOf(rgb);
    if (index < 0) {
        index = m_colors.size();
        m_colors.append(rgb);
    }
    return int(index) + 1; // entry 0 is the reader's automatic colour
}

QByteArray RtfWriter::charFormatCodes(const QTextCharFormat &format) {
    QByteArray codes;
    if (format.fontWeight() >= QFont::DemiBold)
        codes += "\\b";
    if (format.fontItalic())
        codes += "\\i";
    if (format.fontUnderline())
        codes += "\\ul";
    if (format.foreground().style() != Qt::NoBrush)
        codes += "\\cf" + number(colorIndex(format.foreground().color()));
    if (const int size = halfPoints(format); size != defaultHalfPoints)
        codes += "\\fs" + number(size);
    return codes;
}

void RtfWriter::writeParagraph(const QTextBlock &block, bool inTable) {
    const QTextBlockFormat format = block.blockFormat();
    m_body += "\\pard\\plain";
    if (inTable)
        m_body += "\\intbl";
    const Qt::Alignment alignment = format.alignment() & Qt::AlignHorizontal_Mask;
    if (alignment & Qt::AlignRight)
        m_body += "\\qr";
    else if (alignment & Qt::AlignHCenter)
        m_body += "\\qc";
    else if (alignment & Qt::AlignJustify)
        m_body += "\\qj";
    if (const int indent = twips(format.leftMargin() + format.indent() * 40))
        m_body += "\\li" + number(indent);
    if (const int before = twips(format.topMargin()))
        m_body += "\\sb" + number(before);
    if (const int after = twips(format.bottomMargin()))
        m_body += "\\sa" + number(after);
    m_body += ' ';
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        const QByteArray codes = charFormatCodes(fragment.charFormat());
        const QByteArray text = escaped(fragment.text());
        if (codes.isEmpty())
            m_body += text;
        else if (!text.isEmpty())
            m_body += '{' + codes + ' ' + text + '}';
    }
}

void RtfWriter::writeCellContent(QTextFrame::iterator it, bool &first) {
    for (; !it.atEnd(); ++it) {
        if (const QTextFrame *frame = it.currentFrame()) {
            writeCellContent(frame->begin(), first);
            continue;
        }
        if (!first)
            m_body += "\\par\n";
        first = false;
        writeParagraph(it.currentBlock(), true);
    }
}

void RtfWriter::writeTable(const QTextTable &table) {
    const QList<int> edges = columnEdges(table);
    for (int row = 0; row < table.rows(); ++row) {
        m_body += "\\trowd\\trgaph108";
        for (int column = 0; column < table.columns(); ++column) {
            const QTextTableCell cell = table.cellAt(row, column);
            if (cell.column() != column)
                continue;
            if (cell.row() != row)
                m_body += "\\clvmrg";
            else if (cell.rowSpan() > 1)
                m_body += "\\clvmgf";
            m_body += "\\cellx" + number(edges[column + cell.columnSpan() - 1]);
        }
        m_body += '\n';
        for (int column = 0; column < table.columns(); ++column) {
            const QTextTableCell cell = table.cellAt(row, column);
            if (cell.column() != column)
                continue;
            if (cell.row() == row) {
                bool first = true;
                writeCellContent(cell.begin(), first);
            } else {
                m_body += "\\pard\\plain\\intbl ";
            }
            m_body += "\\cell\n";
        }
        m_body += "\\row\n";
    }
}

void RtfWriter::writeFrame(const QTextFrame &frame) {
    for (auto it = frame.begin(); !it.atEnd(); ++it) {
        if (const QTextFrame *child = it.currentFrame()) {
            if (const auto *table = qobject_cast<const QTextTable *>(child))
                writeTable(*table);
            else
                writeFrame(*child);
        } else {
            writeParagraph(it.currentBlock(), false);
            m_body += "\\par\n";
        }
    }
}

QByteArray RtfWriter::write(const QTextDocument &document) {
    RtfWriter writer;
    writer.writeFrame(*document.rootFrame());
    QByteArray rtf = "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1\n"
                     "{\\fonttbl{\\f0\\fswiss Helvetica;}}\n{\\colortbl;";
    for (const QColor &color : std::as_const(writer.m_colors))
        rtf += "\\red" + number(color.red()) + "\\green" + number(color.green()) + "\\blue" +
               number(color.blue()) + ';';
    return rtf + "}\n" + writer.m_body + "}\n";
}
