#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The records of a CSV text: fields separated by the delimiter, double-quoted fields may hold
// delimiters, line breaks and doubled quotes; CR LF and LF both end a record. Each record keeps
// the line it starts on.
class CsvRecords {
public:
    struct Record {
        int line = 0;
        QStringList fields;
        bool unterminated = false; // a quote that is never closed
    };

    static QList<Record> parse(QStringView text, QChar delimiter);
    // ';' when the first line has more of those than commas, else ','.
    static QChar delimiterOf(QStringView text);
};
