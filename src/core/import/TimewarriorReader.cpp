#include "TimewarriorReader.h"

#include "ImportText.h"

#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QFileInfo>

namespace {

QString tr(const char *text) {
    return QCoreApplication::translate("TimewarriorReader", text);
}

} // namespace

void TimewarriorReader::setRule(Rule rule, const QString &pattern) {
    m_rule = rule;
    m_pattern = QRegularExpression(pattern);
}

std::optional<qint64> TimewarriorReader::parseMoment(QStringView text) {
    if (text.size() != 16 || text[8] != u'T' || text[15] != u'Z')
        return std::nullopt;
    const auto number = [text](qsizetype from, qsizetype length) {
        int value = 0;
        for (qsizetype i = from; i < from + length; ++i) {
            const char16_t c = text[i].unicode();
            if (c < u'0' || c > u'9')
                return -1;
            value = value * 10 + (c - u'0');
        }
        return value;
    };
    const QDate day(number(0, 4), number(4, 2), number(6, 2));
    const int hour = number(9, 2), minute = number(11, 2), second = number(13, 2);
    if (!day.isValid() || hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 ||
        second > 59)
        return std::nullopt;
    constexpr qint64 epochDay = 2440588;
    return (day.toJulianDay() - epochDay) * 86400 + hour * 3600 + minute * 60 + second;
}

QStringList TimewarriorReader::words(QStringView text) {
    QStringList words;
    QString word;
    bool inWord = false;
    bool quoted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u'\\' && i + 1 < text.size()) {
            word.append(text[++i]);
            inWord = true;
        } else if (c == u'"') {
            quoted = !quoted;
            inWord = true;
        } else if (c.isSpace() && !quoted) {
            if (inWord)
                words.append(word);
            word.clear();
            inWord = false;
        } else {
            word.append(c);
            inWord = true;
        }
    }
    if (inWord)
        words.append(word);
    return words;
}

void TimewarriorReader::readLine(QStringView line, const QString &file, int number,
                                 ImportResult &result) const {
    line = line.trimmed();
    if (line.isEmpty())
        return;
    const auto unreadable = [&] { result.addProblem(file, number, tr("unreadable line")); };
    if (!line.startsWith(u"inc "))
        return unreadable();
    line = line.sliced(4).trimmed();
    // The moments come first; everything after the first " # " is tags and annotation.
    const qsizetype hash = line.indexOf(u" #");
    const QStringView moments = hash < 0 ? line : line.first(hash);
    const QList<QStringView> parts = moments.split(u' ', Qt::SkipEmptyParts);
    ImportedEntry entry;
    const auto start = parts.isEmpty() ? std::nullopt : parseMoment(parts[0]);
    if (!start || (parts.size() != 1 && (parts.size() != 3 || parts[1] != u"-")))
        return unreadable();
    entry.start = *start;
    if (parts.size() == 3) {
        entry.end = parseMoment(parts[2]);
        if (!entry.end)
            return unreadable();
        if (*entry.end < entry.start)
            return result.addProblem(file, number, tr("ends before it starts"));
    }
    QStringList tags;
    if (hash >= 0) {
        const QStringList tail = words(line.sliced(hash + 2));
        const qsizetype separator = tail.indexOf(QStringLiteral("#"));
        tags = tail.mid(0, separator);
        if (separator >= 0)
            entry.comment = tail.mid(separator + 1).join(u' ');
    }
    qsizetype projectTag = tags.isEmpty() ? -1 : 0;
    if (m_rule == Rule::Pattern) {
        projectTag = -1;
        for (qsizetype i = 0; i < tags.size() && projectTag < 0; ++i) {
            if (m_pattern.match(tags[i]).hasMatch())
                projectTag = i;
        }
    }
    entry.project = projectTag < 0 ? tr("Untagged") : tags.takeAt(projectTag);
    entry.tags = std::move(tags);
    entry.file = file;
    entry.line = number;
    result.entries.append(std::move(entry));
}

ImportResult TimewarriorReader::read(const QString &path, const Progress &progress) const {
    QStringList files;
    const QFileInfo info(path);
    if (info.isDir()) {
        const QDir folder(QDir(path).exists(QStringLiteral("data")) ? path + u"/data" : path);
        for (const QString &name :
             folder.entryList({QStringLiteral("*.data")}, QDir::Files, QDir::Name))
            files.append(folder.filePath(name));
        if (files.isEmpty())
            return ImportResult::failed(tr("\"%1\" holds no Timewarrior data files").arg(path));
    } else {
        files.append(path);
    }
    ImportResult result;
    QList<QStringList> texts;
    qint64 total = 0;
    for (const QString &file : std::as_const(files)) {
        texts.append(ImportText::fileLines(file, result));
        if (!result.error.isEmpty())
            return result;
        total += texts.constLast().size();
    }
    qint64 done = 0;
    for (qsizetype f = 0; f < files.size(); ++f) {
        const QString name = QFileInfo(files[f]).fileName();
        const QStringList &lines = texts[f];
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (!goOn(progress, ++done, total))
                return ImportResult::wasCancelled();
            readLine(lines[i], name, int(i + 1), result);
        }
    }
    result.finish();
    return result;
}
