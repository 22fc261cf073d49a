#include "ImportText.h"

#include "ImportResult.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

QByteArray ImportText::fileBytes(const QString &path, ImportResult &result) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        result.error = QCoreApplication::translate("ImportText", "Cannot read \"%1\": %2")
                           .arg(path, file.errorString());
        return {};
    }
    return file.readAll();
}

QStringList ImportText::fileLines(const QString &path, ImportResult &result) {
    const QByteArray bytes = fileBytes(path, result);
    return result.error.isEmpty() ? lines(bytes, QFileInfo(path).fileName(), result)
                                  : QStringList();
}

QStringList ImportText::lines(const QByteArray &bytes, const QString &file, ImportResult &result) {
    const std::optional<QStringConverter::Encoding> marked =
        QStringConverter::encodingForData(bytes);
    if (marked && *marked != QStringConverter::Utf8) {
        QStringDecoder decoder(*marked);
        return QString(decoder(bytes)).split(u'\n');
    }
    QByteArrayView text(bytes);
    if (text.startsWith("\xEF\xBB\xBF"))
        text = text.sliced(3);
    if (text.isValidUtf8())
        return QString::fromUtf8(text).split(u'\n');
    QStringList lines;
    qsizetype from = 0;
    while (from <= text.size()) {
        qsizetype to = text.indexOf('\n', from);
        if (to < 0)
            to = text.size();
        const QByteArrayView line = text.sliced(from, to - from);
        if (line.isValidUtf8()) {
            lines.append(QString::fromUtf8(line));
        } else {
            lines.append(QString());
            result.addProblem(file, int(lines.size()),
                              QCoreApplication::translate(
                                  "ImportText", "not UTF-8 text: the encoding is unknown"));
        }
        from = to + 1;
    }
    return lines;
}
