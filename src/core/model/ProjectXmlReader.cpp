#include "ProjectXmlReader.h"

#include "ProjectXmlHandler.h"

#include <algorithm>
#include <cstring>
#include <libxml/parser.h>

namespace {

void ignoreMessage(void *, const char *, ...) {}

// The bytes handed to the parser a block at a time, as it reads a file. A memory parser context
// would first copy them all: the whole file once more in memory, and the time to copy it.
struct ByteSource {
    const char *data;
    qsizetype size;
    qsizetype position = 0;

    static int read(void *context, char *buffer, int length) {
        auto *source = static_cast<ByteSource *>(context);
        const int count = int(std::min<qsizetype>(length, source->size - source->position));
        std::memcpy(buffer, source->data + source->position, size_t(count));
        source->position += count;
        return count;
    }
};

} // namespace

ProjectXmlReader::Result ProjectXmlReader::read(const QByteArray &bytes, Mode mode) {
    Result result;
    // White space as QByteArray::trimmed() sees it; checked in place rather than on a copy of the
    // whole file.
    const auto isSpace = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    if (std::all_of(bytes.begin(), bytes.end(), isSpace)) {
        result.malformed = true;
        result.error = QStringLiteral("The file is empty.");
        return result;
    }

    xmlSAXHandler sax;
    std::memset(&sax, 0, sizeof sax);
    ProjectXmlHandler::install(sax);
    sax.warning = &ignoreMessage;
    sax.error = &ignoreMessage;

    ByteSource source{bytes.constData(), bytes.size()};
    xmlParserCtxtPtr ctxt = xmlCreateIOParserCtxt(nullptr, nullptr, &ByteSource::read, nullptr,
                                                  &source, XML_CHAR_ENCODING_NONE);
    if (!ctxt) {
        result.error = QStringLiteral("The XML parser could not be started.");
        return result;
    }
    ProjectXmlHandler handler(ctxt);
    xmlSAXHandlerPtr original = ctxt->sax;
    ctxt->sax = &sax;
    ctxt->userData = &handler;
    xmlCtxtUseOptions(ctxt, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                                (mode == Mode::Recover ? XML_PARSE_RECOVER : 0));
    // xmlCtxtUseOptions may put the default handler's blank handling back; keep ours.
    ProjectXmlHandler::install(*ctxt->sax);
    xmlParseDocument(ctxt);
    const bool wellFormed = ctxt->wellFormed != 0;
    if (mode == Mode::Recover && !handler.olderLayout() && !handler.error())
        handler.closeOpenElements();
    ctxt->sax = original;
    ctxt->userData = nullptr;
    xmlFreeParserCtxt(ctxt);

    if (handler.error()) {
        result.error = handler.error()->message;
        result.line = handler.error()->line;
        return result;
    }
    result.olderLayout = handler.olderLayout();
    if (!wellFormed) {
        result.malformed = true;
        result.error = handler.xmlError().isEmpty() ? QStringLiteral("The file is not valid XML.")
                                                    : handler.xmlError();
        result.line = handler.xmlErrorLine();
        if (mode == Mode::Strict || !handler.rootSeen() || result.olderLayout)
            return result;
    } else if (result.olderLayout) {
        return result;
    } else if (!handler.rootSeen()) {
        result.error = QStringLiteral("The file holds no \"projects\" element.");
        return result;
    }
    result.ok = true;
    result.projects = handler.projects();
    result.itemsLeftOut = handler.itemsLeftOut();
    result.unreadable = handler.unreadable();
    return result;
}
