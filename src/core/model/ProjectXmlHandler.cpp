#include "ProjectXmlHandler.h"

#include <cstdint>
#include <cstring>
#include <libxml/parserInternals.h>

namespace {

using Tag = ProjectXmlHandler::Tag;

Tag tagOf(const xmlChar *localname) {
    const char *n = reinterpret_cast<const char *>(localname);
    const auto is = [n](const char *name) { return std::strcmp(n, name) == 0; };
    switch (std::strlen(n)) {
    case 2:
        return is("to") ? Tag::To : Tag::Unknown;
    case 3:
        return is("day") ? Tag::Day : Tag::Unknown;
    case 4:
        if (is("name"))
            return Tag::Name;
        if (is("tags"))
            return Tag::Tags;
        if (is("wage"))
            return Tag::Wage;
        if (is("what"))
            return Tag::What;
        if (is("type"))
            return Tag::Type;
        if (is("path"))
            return Tag::Path;
        if (is("from"))
            return Tag::From;
        if (is("date"))
            return Tag::Date;
        if (is("time"))
            return Tag::Time;
        return Tag::Unknown;
    case 5:
        return is("entry") ? Tag::EntryTag : is("pause") ? Tag::Pause : Tag::Unknown;
    case 6:
        return is("period") ? Tag::Period : is("amount") ? Tag::Amount : Tag::Unknown;
    case 7:
        if (is("project"))
            return Tag::ProjectTag;
        if (is("roundto"))
            return Tag::RoundTo;
        if (is("working"))
            return Tag::Working;
        if (is("comment"))
            return Tag::Comment;
        return is("checked") ? Tag::Checked : Tag::Unknown;
    case 8:
        if (is("projects"))
            return Tag::Projects;
        if (is("rounding"))
            return Tag::Rounding;
        if (is("expanded"))
            return Tag::Expanded;
        return is("pausedAt") ? Tag::PausedAt : Tag::Unknown;
    case 10:
        if (is("customerID"))
            return Tag::CustomerID;
        return is("pauseentry") ? Tag::PauseEntryTag : Tag::Unknown;
    case 11:
        if (is("description"))
            return Tag::Description;
        return is("attachments") ? Tag::Attachments : Tag::Unknown;
    case 12:
        return is("FlatFeeEntry") ? Tag::FlatFeeTag : Tag::Unknown;
    default:
        return Tag::Unknown;
    }
}

} // namespace

ProjectXmlHandler::ProjectXmlHandler(xmlParserCtxtPtr ctxt)
    : m_ctxt(ctxt) {
    m_stack.reserve(16);
    m_text.reserve(256);
}

void ProjectXmlHandler::install(xmlSAXHandler &sax) {
    sax.initialized = XML_SAX2_MAGIC;
    sax.startElementNs = &startElement;
    sax.endElementNs = &endElement;
    sax.characters = &characters;
    sax.ignorableWhitespace = &characters;
    sax.cdataBlock = &characters;
    sax.comment = &comment;
    sax.serror = &structuredError;
}

void ProjectXmlHandler::startElement(void *ctx, const xmlChar *localname, const xmlChar *,
                                     const xmlChar *, int, const xmlChar **, int, int,
                                     const xmlChar **) {
    auto *handler = static_cast<ProjectXmlHandler *>(ctx);
    handler->start(handler->tagFor(localname), localname);
}

void ProjectXmlHandler::endElement(void *ctx, const xmlChar *, const xmlChar *, const xmlChar *) {
    static_cast<ProjectXmlHandler *>(ctx)->end();
}

void ProjectXmlHandler::characters(void *ctx, const xmlChar *ch, int len) {
    auto *handler = static_cast<ProjectXmlHandler *>(ctx);
    if (handler->reading())
        handler->m_text.append(reinterpret_cast<const char *>(ch), size_t(len));
}

void ProjectXmlHandler::comment(void *ctx, const xmlChar *value) {
    auto *handler = static_cast<ProjectXmlHandler *>(ctx);
    if (!handler->m_rootSeen && std::strcmp(reinterpret_cast<const char *>(value), "1.5") == 0)
        handler->m_versioned = true;
}

void ProjectXmlHandler::structuredError(void *ctx, xmlErrorPtr error) {
    auto *handler = static_cast<ProjectXmlHandler *>(ctx);
    if (error && error->level >= XML_ERR_ERROR && handler->m_xmlError.isEmpty()) {
        handler->m_xmlError = QString::fromUtf8(error->message).trimmed();
        handler->m_xmlErrorLine = error->line;
    }
}

void ProjectXmlHandler::closeOpenElements() {
    m_closingAtEnd = true;
    while (!m_stopped && m_stack.size() > 1)
        end();
}

// The parser hands element names out of its dictionary, one pointer per distinct name for the
// whole parse: a small table from pointer to tag spares comparing the texts for every element.
Tag ProjectXmlHandler::tagFor(const xmlChar *localname) {
    // Fibonacci hashing: the names lie packed in the dictionary's pool, so the low bits of their
    // addresses alone would collide.
    const auto address = std::uint64_t(reinterpret_cast<std::uintptr_t>(localname));
    const size_t mask = m_tags.size() - 1;
    size_t slot = size_t((address * 0x9E3779B97F4A7C15u) >> (64 - tagTableBits));
    for (size_t probe = 0; probe < m_tags.size(); ++probe, slot = (slot + 1) & mask) {
        auto &[name, tag] = m_tags[slot];
        if (name == localname)
            return tag;
        if (!name) {
            name = localname;
            tag = tagOf(localname);
            return tag;
        }
    }
    return tagOf(localname);
}

void ProjectXmlHandler::stop() {
    m_stopped = true;
    xmlStopParser(m_ctxt);
}

void ProjectXmlHandler::start(Tag tag, const xmlChar *localname) {
    if (!reading())
        return;
    if (!m_rootSeen) {
        m_rootSeen = true;
        if (!m_versioned) {
            // OlderLayoutReader reads this file. The parse goes on only to tell whether the XML
            // is well-formed, and if not, where.
            m_olderLayout = true;
            return;
        }
        if (tag != Projects) {
            m_error = ProjectXmlBuilder::ReadError{
                QStringLiteral("The root element is \"%1\", not \"projects\".")
                    .arg(QString::fromUtf8(reinterpret_cast<const char *>(localname))),
                line()};
            stop();
            return;
        }
    }
    m_stack.push_back(tag);
    m_text.clear();
    const size_t n = m_stack.size();
    if (n == 2 && tag == ProjectTag) {
        m_build.startProject(line());
    } else if (n == 3 && m_stack[1] == ProjectTag) {
        if (tag == EntryTag)
            m_build.startEntry(line());
        else if (tag == FlatFeeTag)
            m_build.startFee(line());
        else if (tag == Rounding)
            m_build.project()->hasRounding = true;
    } else if (n == 4 && m_stack[2] == EntryTag && m_build.entry()) {
        if (tag == Period)
            m_build.entry()->hasPeriod = true;
        else if (tag == PausedAt)
            m_build.entry()->hasPausedAt = true;
    } else if (n == 5 && tag == PauseEntryTag && m_stack[2] == EntryTag && m_stack[3] == Pause) {
        m_build.startPause();
    }
}

void ProjectXmlHandler::end() {
    if (!reading() || m_stack.empty())
        return;
    try {
        handleEnd();
    } catch (const ProjectXmlBuilder::ReadError &error) {
        if (m_closingAtEnd && m_stack.size() > 2) {
            // An incomplete entry, flat fee or pause at the cut-off end: left out.
            ++m_itemsLeftOut;
            m_build.leaveOutOpenItems();
        } else {
            m_error = error;
            stop();
        }
    }
    m_stack.pop_back();
    m_text.clear();
}

void ProjectXmlHandler::handleEnd() {
    using Builder = ProjectXmlBuilder;
    const size_t n = m_stack.size();
    const Tag tag = m_stack.back();
    Builder::ProjectFields *project = m_build.project();
    if (n < 2 || m_stack[1] != ProjectTag || !project)
        return;
    Builder::EntryFields *entry = m_build.entry();
    if (n == 2) {
        m_build.finishProject();
    } else if (n == 3) {
        projectChild(tag);
    } else if (n == 4) {
        const Tag parent = m_stack[2];
        if (parent == Rounding) {
            if (tag == What)
                Builder::setOnce(project->what, m_text);
            else if (tag == RoundTo)
                Builder::setOnce(project->roundTo, m_text);
            else if (tag == Type)
                Builder::setOnce(project->type, m_text);
        } else if (parent == Attachments && tag == Path) {
            project->attachments.append(Builder::fromUtf8(m_text));
        } else if (parent == EntryTag && entry) {
            entryChild(tag);
        } else if (parent == FlatFeeTag && m_build.fee()) {
            feeChild(tag);
        }
    } else if (n == 5) {
        const Tag parent = m_stack[3];
        if (parent == Attachments && tag == Path) {
            const QString text = Builder::fromUtf8(m_text);
            if (m_stack[2] == EntryTag && entry)
                entry->attachments.append(text);
            else if (m_stack[2] == FlatFeeTag && m_build.fee())
                m_build.fee()->attachments.append(text);
        } else if (m_stack[2] == EntryTag && entry) {
            if (parent == PausedAt && tag == Date)
                Builder::setOnce(entry->pausedDate, m_text);
            else if (parent == PausedAt && tag == Time)
                Builder::setOnce(entry->pausedTime, m_text);
            else if (parent == Pause && tag == PauseEntryTag)
                m_build.finishPause();
        }
    } else if (n == 6 && m_stack[2] == EntryTag && entry) {
        const Tag group = m_stack[3];
        const Tag side = m_stack[4];
        Builder::PauseFields *pause = m_build.pause();
        if (group == Period && side == From && tag == Date)
            setOnceShared(entry->fromDate);
        else if (group == Period && side == From && tag == Time)
            setOnceShared(entry->fromTime);
        else if (group == Period && side == To && tag == Date)
            setOnceShared(entry->toDate);
        else if (group == Period && side == To && tag == Time)
            setOnceShared(entry->toTime);
        else if (group == Pause && side == PauseEntryTag && pause && tag == From)
            Builder::setOnce(pause->from, m_text);
        else if (group == Pause && side == PauseEntryTag && pause && tag == To)
            Builder::setOnce(pause->to, m_text);
    }
}

void ProjectXmlHandler::projectChild(Tag tag) {
    ProjectXmlBuilder::ProjectFields &project = *m_build.project();
    switch (tag) {
    case Name:
        ProjectXmlBuilder::setOnce(project.name, m_text);
        break;
    case Description:
        ProjectXmlBuilder::setOnce(project.description, m_text);
        break;
    case Tags:
        ProjectXmlBuilder::setOnce(project.tags, m_text);
        break;
    case Wage:
        ProjectXmlBuilder::setOnce(project.wage, m_text);
        break;
    case Expanded:
        ProjectXmlBuilder::setOnce(project.expanded, m_text);
        break;
    case CustomerID:
        ProjectXmlBuilder::setOnce(project.customer, m_text);
        break;
    case EntryTag:
        m_build.finishEntry();
        break;
    case FlatFeeTag:
        m_build.finishFee();
        break;
    default:
        break;
    }
}

void ProjectXmlHandler::entryChild(Tag tag) {
    ProjectXmlBuilder::EntryFields &entry = *m_build.entry();
    switch (tag) {
    case Working:
        ProjectXmlBuilder::setOnce(entry.working, m_text);
        break;
    case Day:
        setOnceShared(entry.day);
        break;
    case Time:
        ProjectXmlBuilder::setOnce(entry.time, m_text);
        break;
    case Checked:
        ProjectXmlBuilder::setOnce(entry.checked, m_text);
        break;
    case Comment:
        ProjectXmlBuilder::setOnce(entry.comment, m_text);
        break;
    case Tags:
        setOnceShared(entry.tags);
        break;
    default:
        break;
    }
}

void ProjectXmlHandler::feeChild(Tag tag) {
    ProjectXmlBuilder::FeeFields &fee = *m_build.fee();
    switch (tag) {
    case Day:
        setOnceShared(fee.day);
        break;
    case Amount:
        ProjectXmlBuilder::setOnce(fee.amount, m_text);
        break;
    case Checked:
        ProjectXmlBuilder::setOnce(fee.checked, m_text);
        break;
    case Comment:
        ProjectXmlBuilder::setOnce(fee.comment, m_text);
        break;
    case Tags:
        setOnceShared(fee.tags);
        break;
    default:
        break;
    }
}
