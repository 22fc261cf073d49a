#pragma once

#include "Exporter.h"

class Entry;
class EntryTexts;

// Writes the chosen projects as comma-separated values: per project a header and a value line,
// then the timed entries under their own header, then the flat fees under theirs. Text values
// are put between the text delimiter as they are (nothing inside is doubled or escaped). Nothing
// is written when a character cannot be represented in the chosen encoding.
class CSVExporter : public Exporter {
    Q_DECLARE_TR_FUNCTIONS(CSVExporter)

public:
    QString textDelimiter() const { return m_textDelimiter; }
    void setTextDelimiter(const QString &delimiter) { m_textDelimiter = delimiter; }
    QString fieldDelimiter() const { return m_fieldDelimiter; }
    void setFieldDelimiter(const QString &delimiter) { m_fieldDelimiter = delimiter; }
    QString lineEnding() const { return m_lineEnding; }
    void setLineEnding(const QString &lineEnding) { m_lineEnding = lineEnding; }

    // The column titles of the chosen fields, joined by the field delimiter, with the line ending.
    QString getHeadlineOfProjectFields(const QList<bool> &projectFields) const;
    QString getHeadlineOfEntryFields(const QList<bool> &entryFields) const;
    QString getHeadlineOfFlatFeeEntryFields(const QList<bool> &entryFields) const;

    Result exportProjects(const QStringList &projectNames, const QList<bool> &projectFields,
                          const QList<bool> &entryFields, const QString &path, bool applyFilter,
                          const QString &encoding) override;

private:
    // Replaces the last character (the field delimiter after a line's last field) by the line
    // ending. A line without fields thus eats the last character of the one before; kept so.
    void trim(QString &text) const;
    QString headline(const QStringList &titles) const;
    QString delimitedText(const QString &text) const;
    void appendEntry(QString &block, const Entry &entry, const QList<bool> &entryFields,
                     EntryTexts &texts) const;
    void appendFlatFee(QString &block, const ProjectItem &fee, const QList<bool> &entryFields,
                       EntryTexts &texts) const;
    void appendProjectValues(QString &text, const Project &project, int filteredTotal,
                             bool applyFilter, const QList<bool> &projectFields) const;

    QString m_textDelimiter = QStringLiteral("\"");
    QString m_fieldDelimiter = QStringLiteral(",");
    QString m_lineEnding = QStringLiteral("\n");
};
