#include "BareSaxPass.h"

#include <QFile>
#include <cstring>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

namespace {

void startElement(void *ctx, const xmlChar *, const xmlChar *, const xmlChar *, int,
                  const xmlChar **, int, int, const xmlChar **) {
    ++*static_cast<qint64 *>(ctx);
}

void endElement(void *, const xmlChar *, const xmlChar *, const xmlChar *) {}

void characters(void *, const xmlChar *, int) {}

void comment(void *, const xmlChar *) {}

void structuredError(void *, xmlErrorPtr) {}

} // namespace

BareSaxPass::Result BareSaxPass::run(const QString &path) {
    Result result;
    xmlSAXHandler handler;
    std::memset(&handler, 0, sizeof handler);
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = &startElement;
    handler.endElementNs = &endElement;
    handler.characters = &characters;
    handler.ignorableWhitespace = &characters;
    handler.cdataBlock = &characters;
    handler.comment = &comment;
    handler.serror = &structuredError;

    // libxml2 reads the file itself, a block at a time.
    xmlParserCtxtPtr ctxt = xmlCreateFileParserCtxt(QFile::encodeName(path).constData());
    if (!ctxt)
        return result;
    xmlSAXHandlerPtr original = ctxt->sax;
    ctxt->sax = &handler;
    ctxt->userData = &result.elements;
    xmlCtxtUseOptions(ctxt, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
    ctxt->sax->ignorableWhitespace = &characters;
    xmlParseDocument(ctxt);
    result.ok = ctxt->wellFormed != 0;
    ctxt->sax = original;
    ctxt->userData = nullptr;
    xmlFreeParserCtxt(ctxt);
    return result;
}
