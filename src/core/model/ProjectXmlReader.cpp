#include "ProjectXmlReader.h"

#include "Entry.h"
#include "FlatFeeEntry.h"
#include "HelpFunctions.h"
#include "StoredForms.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

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

Tag tagOf(const xmlChar *localname) {
    const char *n = reinterpret_cast<const char *>(localname);
    const auto is = [n](const char *name) { return std::strcmp(n, name) == 0; };
    switch (std::strlen(n)) {
    case 2:
        return is("to") ? To : Unknown;
    case 3:
        return is("day") ? Day : Unknown;
    case 4:
        if (is("name"))
            return Name;
        if (is("tags"))
            return Tags;
        if (is("wage"))
            return Wage;
        if (is("what"))
            return What;
        if (is("type"))
            return Type;
        if (is("path"))
            return Path;
        if (is("from"))
            return From;
        if (is("date"))
            return Date;
        if (is("time"))
            return Time;
        return Unknown;
    case 5:
        return is("entry") ? EntryTag : is("pause") ? Pause : Unknown;
    case 6:
        return is("period") ? Period : is("amount") ? Amount : Unknown;
    case 7:
        if (is("project"))
            return ProjectTag;
        if (is("roundto"))
            return RoundTo;
        if (is("working"))
            return Working;
        if (is("comment"))
            return Comment;
        return is("checked") ? Checked : Unknown;
    case 8:
        if (is("projects"))
            return Projects;
        if (is("rounding"))
            return Rounding;
        if (is("expanded"))
            return Expanded;
        return is("pausedAt") ? PausedAt : Unknown;
    case 10:
        if (is("customerID"))
            return CustomerID;
        return is("pauseentry") ? PauseEntryTag : Unknown;
    case 11:
        if (is("description"))
            return Description;
        return is("attachments") ? Attachments : Unknown;
    case 12:
        return is("FlatFeeEntry") ? FlatFeeTag : Unknown;
    default:
        return Unknown;
    }
}

using Text = std::optional<QString>;
// Numbers and moments are only parsed, so their text is kept as it came (see utf16()).
using Raw = std::optional<std::string>;

QString fromUtf8(const std::string &text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

void setOnce(Text &field, const std::string &text) {
    if (!field)
        field = fromUtf8(text);
}

void setOnce(Raw &field, const std::string &text) {
    if (!field)
        field = text;
}

// Calls use with the text as UTF-16, as QString::fromUtf8() makes it. Short ASCII text, which
// every number and moment of a well-formed file is, is widened on the stack without allocating.
template <typename Use> auto utf16(const std::string &text, Use use) {
    char16_t buffer[64];
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (text.size() <= std::size(buffer) && std::all_of(text.begin(), text.end(), isAscii)) {
        std::copy(text.begin(), text.end(), buffer);
        return use(QStringView(buffer, qsizetype(text.size())));
    }
    return use(QStringView(fromUtf8(text)));
}

// Dates, clock times and tags repeat all through a file: each distinct short text becomes a QString
// once, and every field with that text shares it (implicitly). That saves an allocation and a
// conversion per field, and the memory of the copies. Open addressing over a power-of-two table
// that grows up to a limit; past it, texts are simply not pooled.
class TextPool {
public:
    QString text(const std::string &bytes) {
        if (bytes.empty() || bytes.size() > maxLength)
            return fromUtf8(bytes);
        const bool mayAdd = m_used * 2 < m_slots.size() || grow();
        Slot &slot = find(bytes);
        if (!slot.text.isNull())
            return slot.text;
        QString text = fromUtf8(bytes);
        if (mayAdd) {
            slot.bytes = bytes;
            slot.text = text;
            ++m_used;
        }
        return text;
    }

private:
    struct Slot {
        std::string bytes;
        QString text; // null while the slot is free
    };

    static constexpr size_t maxLength = 64;
    static constexpr size_t maxSlots = size_t(1) << 17;

    // The slot holding the bytes, or the free slot where they belong.
    Slot &find(const std::string &bytes) {
        std::uint64_t hash = 0xcbf29ce484222325u; // FNV-1a
        for (const char c : bytes)
            hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
        const size_t mask = m_slots.size() - 1;
        for (size_t i = size_t(hash) & mask;; i = (i + 1) & mask) {
            Slot &slot = m_slots[i];
            if (slot.text.isNull() || slot.bytes == bytes)
                return slot;
        }
    }

    bool grow() {
        if (m_slots.size() >= maxSlots)
            return false;
        std::vector<Slot> old =
            std::exchange(m_slots, std::vector<Slot>(m_slots.empty() ? 1024 : m_slots.size() * 2));
        for (Slot &slot : old) {
            if (!slot.text.isNull())
                find(slot.bytes) = std::move(slot);
        }
        return true;
    }

    std::vector<Slot> m_slots;
    size_t m_used = 0;
};

struct PauseBuilder {
    Raw from;
    Raw to;
};

struct EntryBuilder {
    int line = 0;
    Raw working, time, checked;
    Text day, comment, tags;
    bool hasPeriod = false;
    bool hasPausedAt = false;
    Text fromDate, fromTime, toDate, toTime, pausedDate, pausedTime;
    QStringList attachments;
    PauseList pauses;
};

struct FeeBuilder {
    int line = 0;
    Raw amount, checked;
    Text day, comment, tags;
    QStringList attachments;
};

struct ProjectBuilder {
    int line = 0;
    Text name, description, tags;
    Raw wage, expanded, customer;
    bool hasRounding = false;
    Raw what, roundTo, type;
    QStringList attachments;
    ItemList timed;
    ItemList fees;
};

// Thrown inside the reader to end a read with a structural error.
struct ReadError {
    QString message;
    int line;
};

class SaxReader {
public:
    explicit SaxReader(xmlParserCtxtPtr ctxt)
        : m_ctxt(ctxt) {
        m_stack.reserve(16);
        m_text.reserve(256);
    }

    static void startElement(void *ctx, const xmlChar *localname, const xmlChar *, const xmlChar *,
                             int, const xmlChar **, int, int, const xmlChar **) {
        auto *reader = static_cast<SaxReader *>(ctx);
        reader->start(reader->tagFor(localname), localname);
    }
    static void endElement(void *ctx, const xmlChar *, const xmlChar *, const xmlChar *) {
        static_cast<SaxReader *>(ctx)->end();
    }
    static void characters(void *ctx, const xmlChar *ch, int len) {
        auto *reader = static_cast<SaxReader *>(ctx);
        if (!reader->m_stopped)
            reader->m_text.append(reinterpret_cast<const char *>(ch), size_t(len));
    }
    static void comment(void *ctx, const xmlChar *value) {
        auto *reader = static_cast<SaxReader *>(ctx);
        if (!reader->m_rootSeen && std::strcmp(reinterpret_cast<const char *>(value), "1.5") == 0)
            reader->m_versioned = true;
    }
    static void structuredError(void *ctx, xmlErrorPtr error) {
        auto *reader = static_cast<SaxReader *>(ctx);
        if (error && error->level >= XML_ERR_ERROR && reader->m_xmlError.isEmpty()) {
            reader->m_xmlError = QString::fromUtf8(error->message).trimmed();
            reader->m_xmlErrorLine = error->line;
        }
    }

    // Closes what a forgiving parse left open at the end of the data. An item the data ended in
    // before its required elements is left out rather than failing the whole read.
    void closeOpenElements() {
        m_closingAtEnd = true;
        while (!m_stopped && m_stack.size() > 1)
            end();
    }

    bool m_versioned = false;
    bool m_rootSeen = false;
    bool m_olderLayout = false;
    bool m_stopped = false;
    bool m_closingAtEnd = false;
    int m_itemsLeftOut = 0;
    std::optional<ReadError> m_error;
    QString m_xmlError;
    int m_xmlErrorLine = 0;
    ProjectList m_projects;

private:
    int line() const { return xmlSAX2GetLineNumber(m_ctxt); }

    // The parser hands element names out of its dictionary, one pointer per distinct name for the
    // whole parse: a small table from pointer to tag spares comparing the texts for every element.
    Tag tagFor(const xmlChar *localname) {
        // Fibonacci hashing: the names lie packed in the dictionary's pool, so the low bits of
        // their addresses alone would collide.
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

    void setOnceShared(Text &field) {
        if (!field)
            field = m_shared.text(m_text);
    }

    void stop() {
        m_stopped = true;
        xmlStopParser(m_ctxt);
    }

    void start(Tag tag, const xmlChar *localname) {
        if (m_stopped)
            return;
        if (!m_rootSeen) {
            m_rootSeen = true;
            if (!m_versioned) {
                m_olderLayout = true;
                stop();
                return;
            }
            if (tag != Projects) {
                m_error = ReadError{
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
            m_project.emplace();
            m_project->line = line();
            ++m_projectIndex;
        } else if (n == 3 && m_stack[1] == ProjectTag) {
            if (tag == EntryTag) {
                m_entry.emplace();
                m_entry->line = line();
            } else if (tag == FlatFeeTag) {
                m_fee.emplace();
                m_fee->line = line();
            } else if (tag == Rounding) {
                m_project->hasRounding = true;
            }
        } else if (n == 4 && m_stack[2] == EntryTag && m_entry) {
            if (tag == Period)
                m_entry->hasPeriod = true;
            else if (tag == PausedAt)
                m_entry->hasPausedAt = true;
        } else if (n == 5 && tag == PauseEntryTag && m_stack[2] == EntryTag &&
                   m_stack[3] == Pause) {
            m_pause.emplace();
        }
    }

    void end() {
        if (m_stopped || m_stack.empty())
            return;
        try {
            handleEnd();
        } catch (const ReadError &error) {
            if (m_closingAtEnd && m_stack.size() > 2) {
                // An incomplete entry, flat fee or pause at the cut-off end: left out.
                ++m_itemsLeftOut;
                m_entry.reset();
                m_fee.reset();
                m_pause.reset();
            } else {
                m_error = error;
                stop();
            }
        }
        m_stack.pop_back();
        m_text.clear();
    }

    void handleEnd() {
        const size_t n = m_stack.size();
        const Tag tag = m_stack.back();
        if (n < 2 || m_stack[1] != ProjectTag || !m_project)
            return;
        if (n == 2) {
            finishProject();
        } else if (n == 3) {
            projectChild(tag);
        } else if (n == 4) {
            const Tag parent = m_stack[2];
            if (parent == Rounding) {
                if (tag == What)
                    setOnce(m_project->what, m_text);
                else if (tag == RoundTo)
                    setOnce(m_project->roundTo, m_text);
                else if (tag == Type)
                    setOnce(m_project->type, m_text);
            } else if (parent == Attachments && tag == Path) {
                m_project->attachments.append(
                    QString::fromUtf8(m_text.data(), qsizetype(m_text.size())));
            } else if (parent == EntryTag && m_entry) {
                entryChild(tag);
            } else if (parent == FlatFeeTag && m_fee) {
                feeChild(tag);
            }
        } else if (n == 5) {
            const Tag parent = m_stack[3];
            if (parent == Attachments && tag == Path) {
                const QString text = QString::fromUtf8(m_text.data(), qsizetype(m_text.size()));
                if (m_stack[2] == EntryTag && m_entry)
                    m_entry->attachments.append(text);
                else if (m_stack[2] == FlatFeeTag && m_fee)
                    m_fee->attachments.append(text);
            } else if (m_stack[2] == EntryTag && m_entry) {
                if (parent == PausedAt && tag == Date)
                    setOnce(m_entry->pausedDate, m_text);
                else if (parent == PausedAt && tag == Time)
                    setOnce(m_entry->pausedTime, m_text);
                else if (parent == Pause && tag == PauseEntryTag)
                    finishPause();
            }
        } else if (n == 6 && m_stack[2] == EntryTag && m_entry) {
            const Tag group = m_stack[3];
            const Tag side = m_stack[4];
            if (group == Period && side == From && tag == Date)
                setOnceShared(m_entry->fromDate);
            else if (group == Period && side == From && tag == Time)
                setOnceShared(m_entry->fromTime);
            else if (group == Period && side == To && tag == Date)
                setOnceShared(m_entry->toDate);
            else if (group == Period && side == To && tag == Time)
                setOnceShared(m_entry->toTime);
            else if (group == Pause && side == PauseEntryTag && m_pause && tag == From)
                setOnce(m_pause->from, m_text);
            else if (group == Pause && side == PauseEntryTag && m_pause && tag == To)
                setOnce(m_pause->to, m_text);
        }
    }

    void projectChild(Tag tag) {
        switch (tag) {
        case Name:
            setOnce(m_project->name, m_text);
            break;
        case Description:
            setOnce(m_project->description, m_text);
            break;
        case Tags:
            setOnce(m_project->tags, m_text);
            break;
        case Wage:
            setOnce(m_project->wage, m_text);
            break;
        case Expanded:
            setOnce(m_project->expanded, m_text);
            break;
        case CustomerID:
            setOnce(m_project->customer, m_text);
            break;
        case EntryTag:
            finishEntry();
            break;
        case FlatFeeTag:
            finishFee();
            break;
        default:
            break;
        }
    }

    void entryChild(Tag tag) {
        switch (tag) {
        case Working:
            setOnce(m_entry->working, m_text);
            break;
        case Day:
            setOnceShared(m_entry->day);
            break;
        case Time:
            setOnce(m_entry->time, m_text);
            break;
        case Checked:
            setOnce(m_entry->checked, m_text);
            break;
        case Comment:
            setOnce(m_entry->comment, m_text);
            break;
        case Tags:
            setOnceShared(m_entry->tags);
            break;
        default:
            break;
        }
    }

    void feeChild(Tag tag) {
        switch (tag) {
        case Day:
            setOnceShared(m_fee->day);
            break;
        case Amount:
            setOnce(m_fee->amount, m_text);
            break;
        case Checked:
            setOnce(m_fee->checked, m_text);
            break;
        case Comment:
            setOnce(m_fee->comment, m_text);
            break;
        case Tags:
            setOnceShared(m_fee->tags);
            break;
        default:
            break;
        }
    }

    QString projectLabel() const {
        if (m_project && m_project->name)
            return QStringLiteral("project \"%1\"").arg(*m_project->name);
        return QStringLiteral("project %1").arg(m_projectIndex);
    }

    // The object an element belongs to, named in error messages only: the label is made when a
    // message needs it, not for every object read.
    struct Object {
        const char *kind; // "entry", "flat fee"; null for the project itself
        int line;
    };

    QString label(const Object &object) const {
        if (!object.kind)
            return projectLabel() + QStringLiteral(" (line %1)").arg(object.line);
        return QStringLiteral("the %1 at line %2 in %3")
            .arg(QLatin1StringView(object.kind))
            .arg(object.line)
            .arg(projectLabel());
    }

    [[noreturn]] void missing(const char *element, const Object &object) const {
        throw ReadError{QStringLiteral("The element \"%1\" is missing in %2.")
                            .arg(QLatin1StringView(element), label(object)),
                        object.line};
    }

    [[noreturn]] void malformed(const char *message, const char *element, const Object &object,
                                const QString &text) const {
        throw ReadError{
            QString::fromLatin1(message).arg(QLatin1StringView(element), label(object), text),
            object.line};
    }

    template <typename T>
    const T &required(const std::optional<T> &field, const char *element,
                      const Object &object) const {
        if (!field)
            missing(element, object);
        return *field;
    }

    int integer(const Raw &field, const char *element, const Object &object, int fallback) const {
        if (!field)
            return fallback;
        const auto value = utf16(*field, &StoredForms::parseInt);
        if (!value)
            malformed("The element \"%1\" of %2 is not a whole number: \"%3\".", element, object,
                      fromUtf8(*field));
        return *value;
    }

    float number(const Raw &field, const char *element, const Object &object,
                 float fallback) const {
        if (!field)
            return fallback;
        const auto value = utf16(*field, &StoredForms::parseFloat);
        if (!value)
            malformed("The element \"%1\" of %2 is not a number: \"%3\".", element, object,
                      fromUtf8(*field));
        return *value;
    }

    // In UTC: a pause keeps only the seconds since the epoch, and a local moment would cost a
    // time-zone lookup per pause.
    QDateTime moment(const Raw &field, const char *element, const Object &object) const {
        const auto isBlank = [](QStringView text) { return text.trimmed().isEmpty(); };
        if (!field || utf16(*field, isBlank))
            return {};
        const std::optional<qint64> secs = utf16(*field, &StoredForms::parseMomentSecs);
        if (!secs)
            malformed("The element \"%1\" of %2 is not a moment: \"%3\".", element, object,
                      fromUtf8(*field));
        return QDateTime::fromSecsSinceEpoch(*secs, Qt::UTC);
    }

    void finishPause() {
        if (!m_pause || !m_entry)
            return;
        const Object object{"entry", m_entry->line};
        auto pause = std::make_shared<PauseEntry>();
        pause->setFrom(moment(m_pause->from, "pauseentry/from", object));
        pause->setTo(moment(m_pause->to, "pauseentry/to", object));
        m_entry->pauses.append(pause);
        m_pause.reset();
    }

    void finishEntry() {
        EntryBuilder &b = *m_entry;
        const Object object{"entry", b.line};
        auto entry = std::make_shared<Entry>();
        const bool working = integer(b.working, "working", object, 0) != 0;
        entry->setIsWorking(working);
        if (b.hasPeriod) {
            entry->setHasPeriod(true);
            entry->setFromDate(required(b.fromDate, "period/from/date", object));
            entry->setFromTime(required(b.fromTime, "period/from/time", object));
            if (working) {
                if (b.hasPausedAt) {
                    const QString date = required(b.pausedDate, "pausedAt/date", object);
                    const QString time = required(b.pausedTime, "pausedAt/time", object);
                    const QDateTime pausedAt = HelpFunctions::makeDateFromDateString(date, time);
                    if (!pausedAt.isValid())
                        throw ReadError{
                            QStringLiteral(
                                "The pause moment of %1 is not a date and time: \"%2 %3\".")
                                .arg(label(object), date, time),
                            b.line};
                    entry->setPausedAt(pausedAt);
                }
            } else {
                entry->setToDate(required(b.toDate, "period/to/date", object));
                entry->setToTime(required(b.toTime, "period/to/time", object));
            }
            // A new entry starts with an empty pause list of its own.
            if (!b.pauses.isEmpty())
                entry->setPauseEntries(b.pauses);
            entry->setDate(QStringLiteral(""));
        } else {
            entry->setDate(required(b.day, "day", object));
        }
        if (!working) {
            required(b.time, "time", object);
            entry->setTime(integer(b.time, "time", object, 0));
        }
        entry->setChecked(integer(b.checked, "checked", object, 0) != 0);
        entry->setComment(required(b.comment, "comment", object));
        entry->setTags(b.tags.value_or(QStringLiteral("")));
        entry->setAttachments(b.attachments);
        // Opening a file sorts it by day next: the sort keys are worked out now, while the texts
        // they come from are still in the processor's cache.
        entry->sortDay();
        entry->sortFromMinutes();
        m_project->timed.append(entry);
        m_entry.reset();
    }

    void finishFee() {
        FeeBuilder &b = *m_fee;
        const Object object{"flat fee", b.line};
        auto fee = std::make_shared<FlatFeeEntry>();
        fee->setDate(required(b.day, "day", object));
        required(b.amount, "amount", object);
        fee->setAmount(number(b.amount, "amount", object, 0.0f));
        fee->setChecked(integer(b.checked, "checked", object, 0) != 0);
        fee->setComment(required(b.comment, "comment", object));
        fee->setTags(b.tags.value_or(QStringLiteral("")));
        fee->setAttachments(b.attachments);
        fee->sortDay();
        m_project->fees.append(fee);
        m_fee.reset();
    }

    void finishProject() {
        ProjectBuilder &b = *m_project;
        const Object object{nullptr, b.line};
        auto project = std::make_shared<Project>();
        project->setName(required(b.name, "name", object));
        project->setDescription(b.description.value_or(QStringLiteral("")));
        project->setTags(b.tags.value_or(QStringLiteral("")));
        project->setHourlyWage(number(b.wage, "wage", object, 0.0f));
        if (b.hasRounding) {
            required(b.roundTo, "rounding/roundto", object);
            required(b.type, "rounding/type", object);
            const int roundTo = integer(b.roundTo, "rounding/roundto", object, 0);
            project->setRoundTo(roundTo);
            project->setRoundType(integer(b.type, "rounding/type", object, 0));
            project->setRoundWhat(integer(b.what, "rounding/what", object, roundTo >= 1 ? 1 : 0));
        }
        project->setExpanded(integer(b.expanded, "expanded", object, 0) != 0);
        project->setCustomer(integer(b.customer, "customerID", object, -1));
        project->setAttachments(b.attachments);
        for (const auto &item : std::as_const(b.timed))
            project->addEntry(item);
        for (const auto &item : std::as_const(b.fees))
            project->addEntry(item);
        m_projects.append(project);
        m_project.reset();
    }

    xmlParserCtxtPtr m_ctxt;
    static constexpr int tagTableBits = 6;
    std::array<std::pair<const xmlChar *, Tag>, 1u << tagTableBits> m_tags{};
    std::vector<Tag> m_stack;
    std::string m_text;
    TextPool m_shared;
    int m_projectIndex = 0;
    std::optional<ProjectBuilder> m_project;
    std::optional<EntryBuilder> m_entry;
    std::optional<FeeBuilder> m_fee;
    std::optional<PauseBuilder> m_pause;
};

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

    xmlSAXHandler handler;
    std::memset(&handler, 0, sizeof handler);
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = &SaxReader::startElement;
    handler.endElementNs = &SaxReader::endElement;
    handler.characters = &SaxReader::characters;
    handler.ignorableWhitespace = &SaxReader::characters;
    handler.cdataBlock = &SaxReader::characters;
    handler.comment = &SaxReader::comment;
    handler.serror = &SaxReader::structuredError;
    handler.warning = &ignoreMessage;
    handler.error = &ignoreMessage;

    ByteSource source{bytes.constData(), bytes.size()};
    xmlParserCtxtPtr ctxt = xmlCreateIOParserCtxt(nullptr, nullptr, &ByteSource::read, nullptr,
                                                  &source, XML_CHAR_ENCODING_NONE);
    if (!ctxt) {
        result.error = QStringLiteral("The XML parser could not be started.");
        return result;
    }
    SaxReader reader(ctxt);
    xmlSAXHandlerPtr original = ctxt->sax;
    ctxt->sax = &handler;
    ctxt->userData = &reader;
    xmlCtxtUseOptions(ctxt, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                                (mode == Mode::Recover ? XML_PARSE_RECOVER : 0));
    // xmlCtxtUseOptions may put the default handler's blank handling back; keep ours.
    ctxt->sax->ignorableWhitespace = &SaxReader::characters;
    xmlParseDocument(ctxt);
    const bool wellFormed = ctxt->wellFormed != 0;
    if (mode == Mode::Recover && !reader.m_olderLayout && !reader.m_error)
        reader.closeOpenElements();
    ctxt->sax = original;
    ctxt->userData = nullptr;
    xmlFreeParserCtxt(ctxt);

    if (reader.m_olderLayout) {
        result.olderLayout = true;
        return result;
    }
    if (reader.m_error) {
        result.error = reader.m_error->message;
        result.line = reader.m_error->line;
        return result;
    }
    if (!wellFormed) {
        result.malformed = true;
        result.error = reader.m_xmlError.isEmpty() ? QStringLiteral("The file is not valid XML.")
                                                   : reader.m_xmlError;
        result.line = reader.m_xmlErrorLine;
        if (mode == Mode::Strict || !reader.m_rootSeen)
            return result;
    } else if (!reader.m_rootSeen) {
        result.error = QStringLiteral("The file holds no \"projects\" element.");
        return result;
    }
    result.ok = true;
    result.projects = reader.m_projects;
    result.itemsLeftOut = reader.m_itemsLeftOut;
    return result;
}

QByteArray ProjectXmlReader::repairCommonFaults(const QByteArray &bytes) {
    QByteArray out;
    out.reserve(bytes.size() + 64);
    const char *p = bytes.constData();
    const char *end = p + bytes.size();
    const auto startsWith = [&](const char *at, const char *text) {
        const size_t n = std::strlen(text);
        return size_t(end - at) >= n && std::memcmp(at, text, n) == 0;
    };
    const auto isReference = [&](const char *at) {
        // at points after the "&": "#123;", "#x1F;" or "name;".
        const char *q = at;
        if (q < end && *q == '#') {
            ++q;
            const bool hex = q < end && *q == 'x';
            if (hex)
                ++q;
            const char *digits = q;
            while (q < end && (std::isdigit(uchar(*q)) || (hex && std::isxdigit(uchar(*q)))))
                ++q;
            return q > digits && q < end && *q == ';';
        }
        if (q >= end || !(std::isalpha(uchar(*q)) || *q == '_' || *q == ':'))
            return false;
        while (q < end &&
               (std::isalnum(uchar(*q)) || *q == '_' || *q == ':' || *q == '.' || *q == '-'))
            ++q;
        return q < end && *q == ';';
    };
    while (p < end) {
        if (*p == '<' && startsWith(p, "<![CDATA[")) {
            const char *close = std::search(p, end, "]]>", "]]>" + 3);
            const char *stop = close == end ? end : close + 3;
            out.append(p, stop - p);
            p = stop;
            continue;
        }
        const uchar c = uchar(*p);
        if (c == '&' && !isReference(p + 1))
            out += "&amp;";
        else if (c >= 0x20 || c == '\t' || c == '\n' || c == '\r')
            out += char(c);
        ++p;
    }
    return out;
}
