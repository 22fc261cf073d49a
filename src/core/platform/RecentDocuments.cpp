#include "RecentDocuments.h"

#include "AtomicFile.h"
#include "Logging.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString bookmarkNamespace = u"http://www.freedesktop.org/standards/desktop-bookmarks"_s;
const QString mimeNamespace = u"http://www.freedesktop.org/standards/shared-mime-info"_s;

QString stamp(const QDateTime &when) {
    return when.toUTC().toString(u"yyyy-MM-ddTHH:mm:ss.zzz000Z"_s);
}

void writeBookmark(QXmlStreamWriter &xml, const QString &href, const QString &added,
                   const QString &mimeType, const QString &when, int count) {
    xml.writeStartElement(u"bookmark"_s);
    xml.writeAttribute(u"href"_s, href);
    xml.writeAttribute(u"added"_s, added);
    xml.writeAttribute(u"modified"_s, when);
    xml.writeAttribute(u"visited"_s, when);
    xml.writeStartElement(u"info"_s);
    xml.writeStartElement(u"metadata"_s);
    xml.writeAttribute(u"owner"_s, u"http://freedesktop.org"_s);
    xml.writeEmptyElement(mimeNamespace, u"mime-type"_s);
    xml.writeAttribute(u"type"_s, mimeType);
    xml.writeStartElement(bookmarkNamespace, u"applications"_s);
    xml.writeEmptyElement(bookmarkNamespace, u"application"_s);
    xml.writeAttribute(u"name"_s, QCoreApplication::applicationName());
    xml.writeAttribute(u"exec"_s, u"'hourfold %u'"_s);
    xml.writeAttribute(u"modified"_s, when);
    xml.writeAttribute(u"count"_s, QString::number(count));
    xml.writeEndElement();
    xml.writeEndElement();
    xml.writeEndElement();
    xml.writeEndElement();
    xml.writeEndElement();
}

} // namespace

QString RecentDocuments::defaultPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           u"/recently-used.xbel"_s;
}

RecentDocuments::RecentDocuments(QString path)
    : m_path(std::move(path)) {}

bool RecentDocuments::add(const QString &file, const QString &mimeType, const QDateTime &when) {
    const QString href = QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath()).toString();
    QByteArray old;
    QFile existing(m_path);
    if (existing.exists()) {
        if (!existing.open(QIODevice::ReadOnly)) {
            qCWarning(lcApp).noquote() << "cannot read" << m_path << ":" << existing.errorString();
            return false;
        }
        old = existing.readAll();
    }
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    QString added = stamp(when);
    int count = 1;
    if (old.isEmpty()) {
        xml.writeStartDocument();
        xml.writeNamespace(bookmarkNamespace, u"bookmark"_s);
        xml.writeNamespace(mimeNamespace, u"mime"_s);
        xml.writeStartElement(u"xbel"_s);
        xml.writeAttribute(u"version"_s, u"1.0"_s);
        writeBookmark(xml, href, added, mimeType, stamp(when), count);
        xml.writeEndElement();
        xml.writeEndDocument();
    } else {
        // Every token is copied as it stands except this file's own bookmark, which is written
        // anew (keeping when it was first added and counting the use) before the list ends.
        QXmlStreamReader reader(old);
        int depth = 0;
        while (!reader.atEnd()) {
            if (reader.readNext() == QXmlStreamReader::Invalid)
                break;
            if (reader.isStartElement()) {
                ++depth;
                if (depth == 2 && reader.name() == u"bookmark" &&
                    reader.attributes().value(QLatin1StringView("href")) == href) {
                    added = reader.attributes().value(QLatin1StringView("added")).toString();
                    while (!(reader.isEndElement() && reader.name() == u"bookmark") &&
                           !reader.atEnd()) {
                        reader.readNext();
                        if (reader.isStartElement() && reader.name() == u"application" &&
                            reader.attributes().value(QLatin1StringView("name")) ==
                                QCoreApplication::applicationName())
                            count =
                                reader.attributes().value(QLatin1StringView("count")).toInt() + 1;
                    }
                    --depth;
                    continue;
                }
            } else if (reader.isEndElement()) {
                if (depth == 1)
                    writeBookmark(xml, href, added, mimeType, stamp(when), count);
                --depth;
            }
            if (!reader.isWhitespace())
                xml.writeCurrentToken(reader);
        }
        if (reader.hasError()) {
            qCWarning(lcApp).noquote() << "not touching" << m_path << ":" << reader.errorString();
            return false;
        }
    }
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    const AtomicFile::Result written = AtomicFile::write(m_path, bytes);
    if (!written.ok)
        qCWarning(lcApp).noquote() << written.error;
    return written.ok;
}

QStringList RecentDocuments::files(const QString &mimeType, int maximum) const {
    QFile list(m_path);
    if (!list.open(QIODevice::ReadOnly))
        return {};
    QList<std::pair<QString, QString>> found; // (visited, path)
    QXmlStreamReader reader(&list);
    QString href;
    QString visited;
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement())
            continue;
        if (reader.name() == u"bookmark") {
            href = reader.attributes().value(QLatin1StringView("href")).toString();
            visited = reader.attributes().value(QLatin1StringView("visited")).toString();
        } else if (reader.name() == u"mime-type" &&
                   reader.attributes().value(QLatin1StringView("type")) == mimeType) {
            const QString path = QUrl(href).toLocalFile();
            if (!path.isEmpty() && QFileInfo::exists(path))
                found.append({visited, path});
        }
    }
    std::sort(found.begin(), found.end(), [](const auto &a, const auto &b) { return a > b; });
    QStringList paths;
    for (const auto &[when, path] : std::as_const(found)) {
        if (paths.size() == maximum)
            break;
        paths << path;
    }
    return paths;
}
