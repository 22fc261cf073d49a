#include "OlderLayoutReader.h"

#include <algorithm>
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

// The entries at or below the node, but none inside another: converting an entry frees its "from"
// and "to" with all they hold, and an entry among that would be converted after it was freed.
void collectEntries(xmlNodePtr node, std::vector<xmlNodePtr> &entries) {
    if (isElement(node, "entry")) {
        entries.push_back(node);
        return;
    }
    for (xmlNodePtr child = node->children; child; child = child->next) {
        if (child->type == XML_ELEMENT_NODE)
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

} // namespace

OlderLayoutReader::Result OlderLayoutReader::read(const QByteArray &bytes, bool recover) {
    Result result;
    const int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                        (recover ? XML_PARSE_RECOVER : 0);
    std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlReadMemory(bytes.constData(), int(bytes.size()), nullptr, nullptr, options),
        &xmlFreeDoc);
    if (!document || !xmlDocGetRootElement(document.get())) {
        result.error = QStringLiteral("The file is not valid XML.");
        return result;
    }
    const bool converted = !hasVersionComment(document.get());
    if (converted) {
        QString error;
        if (!convertXMLDocToCurrentFormat(document.get(), &error)) {
            result.error = error;
            return result;
        }
    }
    // The converted root goes to the reader behind the layout mark, on the line where it stood in
    // the file: the lines that messages name are those of the file. Inside the root every text
    // stays as it was, line breaks included.
    xmlNodePtr root = xmlDocGetRootElement(document.get());
    std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> buffer(xmlBufferCreate(), &xmlBufferFree);
    if (!buffer || xmlNodeDump(buffer.get(), document.get(), root, 0, 0) < 0) {
        result.error = QStringLiteral("The file could not be converted.");
        return result;
    }
    QByteArray current = "<!--1.5-->" + QByteArray(std::max(0L, xmlGetLineNo(root) - 1), '\n');
    current.append(reinterpret_cast<const char *>(xmlBufferContent(buffer.get())),
                   xmlBufferLength(buffer.get()));
    static_cast<ProjectXmlReader::Result &>(result) =
        ProjectXmlReader::read(current, ProjectXmlReader::Mode::Strict);
    result.converted = converted;
    return result;
}

bool OlderLayoutReader::convertXMLDocToCurrentFormat(xmlDoc *document, QString *error) {
    xmlNodePtr root = xmlDocGetRootElement(document);
    std::vector<xmlNodePtr> entries;
    if (root)
        collectEntries(root, entries);
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
