#include "CsvRecords.h"

QChar CsvRecords::delimiterOf(QStringView text) {
    const QStringView first = text.first(qMax<qsizetype>(0, text.indexOf(u'\n')));
    return first.count(u';') > first.count(u',') ? u';' : u',';
}

QList<CsvRecords::Record> CsvRecords::parse(QStringView text, QChar delimiter) {
    QList<Record> records;
    Record record;
    QString field;
    bool quoted = false;
    bool atRecordStart = true;
    int line = 1;
    const auto endField = [&] {
        record.fields.append(field);
        field.clear();
    };
    const auto endRecord = [&] {
        endField();
        records.append(std::move(record));
        record = Record();
        atRecordStart = true;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (atRecordStart) {
            record.line = line;
            atRecordStart = false;
        }
        if (quoted) {
            if (c == u'"' && i + 1 < text.size() && text[i + 1] == u'"') {
                field.append(u'"');
                ++i;
            } else if (c == u'"') {
                quoted = false;
            } else {
                if (c == u'\n')
                    ++line;
                field.append(c);
            }
        } else if (c == u'"') {
            quoted = true;
        } else if (c == delimiter) {
            endField();
        } else if (c == u'\n' || c == u'\r') {
            if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
                ++i;
            ++line;
            endRecord();
        } else {
            field.append(c);
        }
    }
    if (!atRecordStart) {
        record.unterminated = quoted;
        endRecord();
    }
    return records;
}
