#pragma once

#include <QList>
#include <QStringList>
#include <QTextStream>

// Rows of text cells printed in columns as wide as their widest cell, two spaces apart, with
// no trailing blanks.
class TextTable {
public:
    void addRow(const QStringList &cells) { m_rows.append(cells); }
    void print(QTextStream &out) const;

private:
    QList<QStringList> m_rows;
};
