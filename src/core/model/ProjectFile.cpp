#include "ProjectFile.h"

#include "../Logging.h"
#include "../platform/AtomicFile.h"
#include "../platform/FileIdentity.h"
#include "Clock.h"
#include "ProjectXmlReader.h"
#include "ProjectXmlWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>
#include <vector>

namespace {

const xmlChar *xml(const char *text) {
    return reinterpret_cast<const xmlChar *>(text);
}

bool isElement(xmlNodePtr node, const char *name) {
    return node->type == XML_ELEMENT_NODE && xmlStrcmp(node->name, xml(name)) == 0;
}

xmlNodePtr firstChild(xmlNodePtr parent, const char *name) {
    for (xmlNodePtr child = parent->children; child; child = child->next) {
        if (isElement(child, name))
            return child;
    }
    return nullptr;
}

void collectEntries(xmlNodePtr node, std::vector<xmlNodePtr> &entries) {
    for (xmlNodePtr child = node->children; child; child = child->next) {
        if (child->type != XML_ELEMENT_NODE)
            continue;
        if (isElement(child, "entry"))
            entries.push_back(child);
        collectEntries(child, entries);
    }
}

struct XmlText {
    xmlChar *value;
    explicit XmlText(xmlNodePtr node)
        : value(xmlNodeGetContent(node)) {}
    ~XmlText() { xmlFree(value); }
    const xmlChar *get() const { return value ? value : xml(""); }
};

void appendSide(xmlNodePtr period, const char *side, const xmlChar *date, const xmlChar *time) {
    xmlNodePtr node = xmlNewChild(period, nullptr, xml(side), nullptr);
    xmlNewTextChild(node, nullptr, xml("date"), date);
    xmlNewTextChild(node, nullptr, xml("time"), time);
}

bool hasVersionComment(xmlDocPtr document) {
    for (xmlNodePtr node = document->children; node; node = node->next) {
        if (node->type == XML_COMMENT_NODE && xmlStrcmp(node->content, xml("1.5")) == 0)
            return true;
    }
    return false;
}

ProjectFile::LoadResult fromReader(const ProjectXmlReader::Result &r) {
    ProjectFile::LoadResult result;
    result.ok = r.ok;
    result.projects = r.projects;
    if (!r.error.isEmpty())
        result.error =
            r.line > 0 ? QStringLiteral("%1 (line %2)").arg(r.error).arg(r.line) : r.error;
    result.line = r.line;
    result.itemsLeftOut = r.itemsLeftOut;
    return result;
}

// Reads an older-layout file: a document model, converted, written out and read again.
ProjectFile::LoadResult readOlderLayout(const QByteArray &bytes, bool recover) {
    ProjectFile::LoadResult result;
    const int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                        (recover ? XML_PARSE_RECOVER : 0);
    std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlReadMemory(bytes.constData(), int(bytes.size()), nullptr, nullptr, options),
        &xmlFreeDoc);
    if (!document || !xmlDocGetRootElement(document.get())) {
        result.error = QStringLiteral("The file is not valid XML.");
        return result;
    }
    if (!hasVersionComment(document.get())) {
        QString error;
        if (!ProjectFile::convertXMLDocToCurrentFormat(document.get(), &error)) {
            result.error = error;
            return result;
        }
        result.converted = true;
    } else {
        // The mark stands after the root element: move it to the front for the reader.
        xmlNodePtr mark = xmlNewDocComment(document.get(), xml("1.5"));
        xmlAddPrevSibling(document->children, mark);
    }
    xmlChar *text = nullptr;
    int size = 0;
    xmlDocDumpMemoryEnc(document.get(), &text, &size, "UTF-8");
    const QByteArray converted(reinterpret_cast<const char *>(text), size);
    xmlFree(text);
    const bool converted_ = result.converted;
    result = fromReader(ProjectXmlReader::read(converted, ProjectXmlReader::Mode::Strict));
    result.converted = converted_;
    return result;
}

} // namespace

bool ProjectFile::convertXMLDocToCurrentFormat(xmlDoc *document, QString *error) {
    xmlNodePtr root = xmlDocGetRootElement(document);
    std::vector<xmlNodePtr> entries;
    if (root) {
        if (isElement(root, "entry"))
            entries.push_back(root);
        collectEntries(root, entries);
    }
    for (xmlNodePtr entry : entries) {
        xmlNodePtr day = firstChild(entry, "day");
        xmlNodePtr from = firstChild(entry, "from");
        xmlNodePtr to = firstChild(entry, "to");
        if (!day || !from) {
            if (error)
                *error = QStringLiteral("The element \"%1\" is missing in the entry at line %2.")
                             .arg(day ? QStringLiteral("from") : QStringLiteral("day"))
                             .arg(xmlGetLineNo(entry));
            return false;
        }
        const XmlText dayText(day);
        const XmlText fromText(from);
        if (xmlStrlen(fromText.get()) > 0) {
            xmlNodePtr period = xmlNewChild(entry, nullptr, xml("period"), nullptr);
            appendSide(period, "from", dayText.get(), fromText.get());
            if (to) {
                const XmlText toText(to);
                appendSide(period, "to", dayText.get(), toText.get());
            } else {
                appendSide(period, "to", xml(""), xml(""));
            }
        }
        xmlUnlinkNode(from);
        xmlFreeNode(from);
        if (to) {
            xmlUnlinkNode(to);
            xmlFreeNode(to);
        }
    }
    xmlNodePtr mark = xmlNewDocComment(document, xml("1.5"));
    if (document->children)
        xmlAddPrevSibling(document->children, mark);
    else
        xmlAddChild(reinterpret_cast<xmlNodePtr>(document), mark);
    return true;
}

ProjectFile::LoadResult ProjectFile::read(const QByteArray &bytes) {
    using Mode = ProjectXmlReader::Mode;
    const ProjectXmlReader::Result strict = ProjectXmlReader::read(bytes, Mode::Strict);
    if (strict.olderLayout)
        return readOlderLayout(bytes, false);
    if (strict.ok || !strict.malformed)
        return fromReader(strict);

    const QByteArray repaired = ProjectXmlReader::repairCommonFaults(bytes);
    const ProjectXmlReader::Result forgiving = ProjectXmlReader::read(repaired, Mode::Recover);
    LoadResult result =
        forgiving.olderLayout ? readOlderLayout(repaired, true) : fromReader(forgiving);
    // The strict parse's complaint says best what is wrong with the file.
    const QString damage = fromReader(strict).error;
    if (!result.ok) {
        result.error = damage;
        result.line = strict.line;
        return result;
    }
    result.recovered = true;
    result.error.clear();
    result.damage = damage;
    qCWarning(lcFile).noquote() << "the file is not well-formed; read it in forgiving mode:"
                                << damage;
    return result;
}

ProjectFile::LoadResult ProjectFile::load(const QString &path) {
    QFile file(path);
    LoadResult result;
    if (!file.exists()) {
        result.error = QStringLiteral("The file \"%1\" does not exist.").arg(path);
        return result;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        result.error =
            QStringLiteral("The file \"%1\" could not be opened: %2").arg(path, file.errorString());
        return result;
    }
    // Mapped rather than copied: a large file is parsed where it lies.
    const qint64 size = file.size();
    uchar *mapped = size > 0 ? file.map(0, size) : nullptr;
    const QByteArray bytes =
        mapped ? QByteArray::fromRawData(reinterpret_cast<const char *>(mapped), qsizetype(size))
               : file.readAll();
    result = read(bytes);
    result.contentHash = FileIdentity::hashOf(bytes);
    if (result.ok && result.recovered) {
        QString error;
        result.backupPath = keepRecoveredCopy(path, bytes, &error);
        if (result.backupPath.isEmpty())
            result.error = error;
    }
    if (!result.ok)
        qCWarning(lcFile).noquote() << "cannot read" << path << ":" << result.error;
    if (mapped)
        file.unmap(mapped);
    return result;
}

QByteArray ProjectFile::makeXML(const ProjectList &projects) {
    return ProjectXmlWriter::makeXML(projects);
}

ProjectFile::SaveResult ProjectFile::save(const QString &path, const ProjectList &projects) {
    const QByteArray bytes = makeXML(projects);
    const AtomicFile::Result written = AtomicFile::write(path, bytes);
    return {written.ok, written.error, FileIdentity::hashOf(bytes)};
}

QString ProjectFile::keepRecoveredCopy(const QString &path, const QByteArray &bytes,
                                       QString *error) {
    const QFileInfo info(path);
    const QDir folder = info.absoluteDir();
    const QString prefix = info.fileName() + QStringLiteral(".recovered-");
    const QStringList earlier =
        folder.entryList({prefix + u'*'}, QDir::Files | QDir::Hidden, QDir::Name);
    for (const QString &name : earlier) {
        QFile copy(folder.filePath(name));
        if (copy.size() == bytes.size() && copy.open(QIODevice::ReadOnly) &&
            copy.readAll() == bytes)
            return copy.fileName();
    }
    const QString stamp = Clock::now().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString candidate = folder.filePath(prefix + stamp);
    for (int n = 2; QFileInfo::exists(candidate); ++n)
        candidate = folder.filePath(prefix + stamp + u'-' + QString::number(n));
    const AtomicFile::Result written = AtomicFile::write(candidate, bytes);
    if (!written.ok) {
        if (error)
            *error = written.error;
        return {};
    }
    qCInfo(lcFile) << "kept the original of" << path << "as" << candidate;
    return candidate;
}
