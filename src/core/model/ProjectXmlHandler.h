#pragma once

#include "ProjectXmlBuilder.h"
#include "TextPool.h"

#include <array>
#include <libxml/parser.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// The SAX events of one parse of a project file: which element's text goes to which field of the
// object being read. The objects themselves are made by ProjectXmlBuilder.
class ProjectXmlHandler {
public:
    // The element names the file uses, as small numbers.
    enum Tag : quint8 {
        Unknown,
        Projects,
        ProjectTag,
        Name,
        Description,
        Tags,
        Wage,
        Rounding,
        What,
        RoundTo,
        Type,
        Expanded,
        CustomerID,
        Attachments,
        Path,
        EntryTag,
        FlatFeeTag,
        Working,
        Period,
        From,
        To,
        Date,
        Time,
        PausedAt,
        Day,
        Pause,
        PauseEntryTag,
        Checked,
        Comment,
        Amount,
    };

    explicit ProjectXmlHandler(xmlParserCtxtPtr ctxt);

    // Points the handler's callbacks at this class; the parser hands them the handler as context.
    static void install(xmlSAXHandler &sax);

    // Closes what a forgiving parse left open at the end of the data. An item the data ended in
    // before its required elements is left out rather than failing the whole read.
    void closeOpenElements();

    bool rootSeen() const { return m_rootSeen; }
    // No "1.5" layout comment came before the root element.
    bool olderLayout() const { return m_olderLayout; }
    const std::optional<ProjectXmlBuilder::ReadError> &error() const { return m_error; }
    // The parser's first complaint about the XML itself, and its line.
    const QString &xmlError() const { return m_xmlError; }
    int xmlErrorLine() const { return m_xmlErrorLine; }
    int itemsLeftOut() const { return m_itemsLeftOut; }
    const ProjectList &projects() const { return m_build.projects(); }
    const QStringList &unreadable() const { return m_build.unreadable(); }

private:
    static void startElement(void *ctx, const xmlChar *localname, const xmlChar *, const xmlChar *,
                             int, const xmlChar **, int, int, const xmlChar **);
    static void endElement(void *ctx, const xmlChar *, const xmlChar *, const xmlChar *);
    static void characters(void *ctx, const xmlChar *ch, int len);
    static void comment(void *ctx, const xmlChar *value);
    static void structuredError(void *ctx, xmlErrorPtr error);

    int line() const { return xmlSAX2GetLineNumber(m_ctxt); }
    // Elements are taken in: not stopped, and not a file of the older layout.
    bool reading() const { return !m_stopped && !m_olderLayout; }
    Tag tagFor(const xmlChar *localname);
    void setOnceShared(ProjectXmlBuilder::Text &field) {
        if (!field)
            field = m_shared.text(m_text);
    }
    void stop();
    void start(Tag tag, const xmlChar *localname);
    void end();
    void handleEnd();
    void projectChild(Tag tag);
    void entryChild(Tag tag);
    void feeChild(Tag tag);

    xmlParserCtxtPtr m_ctxt;
    static constexpr int tagTableBits = 6;
    std::array<std::pair<const xmlChar *, Tag>, 1u << tagTableBits> m_tags{};
    std::vector<Tag> m_stack;
    std::string m_text;
    TextPool m_shared;
    ProjectXmlBuilder m_build;
    bool m_versioned = false;
    bool m_rootSeen = false;
    bool m_olderLayout = false;
    bool m_stopped = false;
    bool m_closingAtEnd = false;
    int m_itemsLeftOut = 0;
    std::optional<ProjectXmlBuilder::ReadError> m_error;
    QString m_xmlError;
    int m_xmlErrorLine = 0;
};
