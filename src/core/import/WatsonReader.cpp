#include "WatsonReader.h"

#include "ImportText.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString tr(const char *text) {
    return QCoreApplication::translate("WatsonReader", text);
}

QStringList tagsOf(const QJsonValue &value) {
    QStringList tags;
    for (const QJsonValue &tag : value.toArray())
        tags.append(tag.toString());
    return tags;
}

// The document, or the line of the JSON syntax error added as the result's problem.
std::optional<QJsonDocument> parse(const QByteArray &bytes, const QString &file,
                                   ImportResult &result) {
    QJsonParseError error;
    QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error == QJsonParseError::NoError)
        return document;
    const int line = int(bytes.first(qMin<qsizetype>(error.offset, bytes.size())).count('\n')) + 1;
    result.problems.append(
        {tr("%1, line %2").arg(file).arg(line), tr("unreadable: %1").arg(error.errorString())});
    return std::nullopt;
}

} // namespace

ImportResult WatsonReader::read(const QString &path, const Progress &progress) const {
    const bool isFolder = QFileInfo(path).isDir();
    const QString framesPath = isFolder ? QDir(path).filePath(QStringLiteral("frames")) : path;
    const QString statePath = QFileInfo(framesPath).dir().filePath(QStringLiteral("state"));
    ImportResult result;
    result.placeWord = tr("frame");
    const QString file = QFileInfo(framesPath).fileName();
    const QByteArray bytes = ImportText::fileBytes(framesPath, result);
    if (!result.error.isEmpty())
        return result;
    const auto frames = parse(bytes, file, result);
    const QJsonArray array = frames ? frames->array() : QJsonArray();
    if (frames && !frames->isArray())
        result.addProblem(file, 0, tr("not a list of frames"));
    for (qsizetype i = 0; i < array.size(); ++i) {
        if (!goOn(progress, i + 1, array.size()))
            return ImportResult::wasCancelled();
        const QJsonArray frame = array[i].toArray();
        const int number = int(i + 1);
        if (frame.size() < 3 || !frame[0].isDouble() || !frame[1].isDouble() ||
            !frame[2].isString()) {
            result.addProblem(file, number, tr("unreadable frame"));
            continue;
        }
        ImportedEntry entry;
        entry.start = qint64(frame[0].toDouble());
        entry.end = qint64(frame[1].toDouble());
        if (*entry.end < entry.start) {
            result.addProblem(file, number, tr("ends before it starts"));
            continue;
        }
        entry.project = frame[2].toString();
        entry.tags = tagsOf(frame[4]);
        entry.file = file;
        entry.line = number;
        result.entries.append(std::move(entry));
    }
    if (QFileInfo::exists(statePath)) {
        ImportResult stateRead;
        const QByteArray stateBytes = ImportText::fileBytes(statePath, stateRead);
        const auto state = stateBytes.trimmed().isEmpty()
                               ? std::optional<QJsonDocument>(QJsonDocument(QJsonObject()))
                               : parse(stateBytes, QStringLiteral("state"), result);
        const QJsonObject running = state ? state->object() : QJsonObject();
        if (!stateRead.error.isEmpty())
            result.problems.append({QStringLiteral("state"), stateRead.error});
        else if (running.contains(u"project")) {
            ImportedEntry entry;
            entry.project = running.value(u"project").toString();
            entry.start = qint64(running.value(u"start").toDouble());
            entry.tags = tagsOf(running.value(u"tags"));
            entry.file = QStringLiteral("state");
            entry.line = 1;
            result.entries.append(std::move(entry));
        }
    }
    result.finish();
    return result;
}
