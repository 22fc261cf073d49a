#pragma once

#include "ImportReader.h"

#include <QRegularExpression>

// Timewarrior's data: a folder of "YYYY-MM.data" files (the "data" folder, or the folder above
// it), or one such file. Each line is an interval,
//   inc 20261101T080000Z - 20261101T093000Z # tag "tag with space" # "annotation"
// in UTC, without " - END" while it runs. Timewarrior has tags but no projects: by default the
// first tag names the project and the others stay tags; with a pattern, the first tag that
// matches it names the project. An interval without such a tag goes to "Untagged".
class TimewarriorReader : public ImportReader {
public:
    enum class Rule { FirstTag, Pattern };

    void setRule(Rule rule, const QString &pattern = {});
    ImportResult read(const QString &path, const Progress &progress = {}) const override;

    // The seconds since the epoch of "20261101T080000Z"; none when the text is not one.
    static std::optional<qint64> parseMoment(QStringView text);
    // The words of a line's tail: blanks separate them, double quotes keep blanks inside one, and
    // a backslash takes the next character as it is.
    static QStringList words(QStringView text);

private:
    void readLine(QStringView line, const QString &file, int number, ImportResult &result) const;

    Rule m_rule = Rule::FirstTag;
    QRegularExpression m_pattern;
};
