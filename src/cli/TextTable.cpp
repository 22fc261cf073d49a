#include "TextTable.h"

void TextTable::print(QTextStream &out) const {
    QList<qsizetype> widths;
    for (const QStringList &row : m_rows) {
        for (qsizetype i = 0; i < row.size(); ++i) {
            if (widths.size() <= i)
                widths.append(0);
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    for (const QStringList &row : m_rows) {
        QString line;
        for (qsizetype i = 0; i < row.size(); ++i) {
            if (i > 0)
                line += QStringLiteral("  ");
            line += i + 1 < row.size() ? row[i].leftJustified(widths[i]) : row[i];
        }
        while (line.endsWith(u' '))
            line.chop(1);
        out << line << '\n';
    }
}
