#include "ProjectXmlWriter.h"

#include "Entry.h"
#include "FlatFeeEntry.h"
#include "StoredForms.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

char *put(char *out, QByteArrayView text) {
    std::memcpy(out, text.data(), size_t(text.size()));
    return out + text.size();
}

// value in decimal, zero-padded on the left to width digits (a sign counts as a digit); needs
// room for 11 bytes or width, whichever is more.
char *putPadded(char *out, int value, int width) {
    char digits[16];
    const char *end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    const qsizetype length = end - digits;
    for (qsizetype i = length; i < width; ++i)
        *out++ = '0';
    return put(out, QByteArrayView(digits, length));
}

bool isAscii(const QString &text) {
    const auto *units = reinterpret_cast<const char16_t *>(text.constData());
    return std::all_of(units, units + text.size(), [](char16_t c) { return c < 0x80; });
}

// Escapes [p, end) into dst, which has room for five bytes per unit; returns the new end. Units
// are UTF-8 bytes, or UTF-16 units that are all ASCII.
template <typename Unit> char *escapeInto(char *dst, const Unit *p, const Unit *end) {
    while (p < end) {
        const unsigned c = *p;
        if (c < 0x20) {
            if (c == '\r') {
                std::memcpy(dst, "&#13;", 5);
                dst += 5;
            } else if (c == '\t' || c == '\n') {
                *dst++ = char(c);
            }
            // Any other control character cannot be carried by XML 1.0: dropped.
            ++p;
            continue;
        }
        switch (c) {
        case '&':
            std::memcpy(dst, "&amp;", 5);
            dst += 5;
            break;
        case '<':
            std::memcpy(dst, "&lt;", 4);
            dst += 4;
            break;
        case '>':
            std::memcpy(dst, "&gt;", 4);
            dst += 4;
            break;
        case 0xEF:
            // U+FFFE and U+FFFF are not XML characters either.
            if (end - p >= 3 && p[1] == 0xBF && (p[2] == 0xBE || p[2] == 0xBF)) {
                p += 3;
                continue;
            }
            *dst++ = char(c);
            break;
        default:
            *dst++ = char(c);
        }
        ++p;
    }
    return dst;
}

} // namespace

QByteArray ProjectXmlWriter::makeXML(const ProjectList &projects) {
    qsizetype estimate = 64;
    for (const auto &project : projects)
        estimate += 512 + project->entries().size() * 560;
    QByteArray out;
    out.reserve(estimate);
    out += head();
    for (const auto &project : projects)
        out += projectXML(*project);
    out += tail();
    return out;
}

QByteArray ProjectXmlWriter::head() {
    return QByteArrayLiteral(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!--1.5-->\n<projects>\n");
}

QByteArray ProjectXmlWriter::tail() {
    return QByteArrayLiteral("</projects>\n");
}

QByteArray ProjectXmlWriter::projectXML(const Project &project) {
    ProjectXmlWriter writer;
    writer.m_out.reserve(512 + project.entries().size() * 560);
    writer.m_depth = 1;
    writer.makeXML(project);
    return writer.m_out;
}

void ProjectXmlWriter::makeXML(const Project &project) {
    open("project");
    element("name", project.name());
    element("description", project.description());
    element("tags", project.tags());
    element("wage", StoredForms::floatText(project.hourlyWage()));
    open("rounding");
    element("what", QString::number(project.roundWhat()));
    element("roundto", QString::number(project.roundTo()));
    element("type", QString::number(project.roundType()));
    close("rounding");
    element("expanded", project.expanded() ? QStringLiteral("1") : QStringLiteral("0"));
    element("customerID", QString::number(project.customer()));
    attachments(project.attachments());
    for (const auto &item : project.entries()) {
        if (item->isEntry())
            makeXML(static_cast<const Entry &>(*item));
        else
            makeXML(static_cast<const FlatFeeEntry &>(*item));
    }
    close("project");
}

void ProjectXmlWriter::makeXML(const Entry &entry) {
    open("entry");
    element("working", entry.isWorking() ? QStringLiteral("1") : QStringLiteral("0"));
    if (entry.hasPeriod()) {
        open("period");
        open("from");
        element("date", entry.fromDate());
        element("time", entry.fromTime());
        close("from");
        open("to");
        element("date", entry.isWorking() ? QString() : entry.toDate());
        element("time", entry.isWorking() ? QString() : entry.toTime());
        close("to");
        close("period");
        if (entry.isPaused()) {
            const QDateTime moment = entry.pausedAt();
            open("pausedAt");
            element("date", StoredForms::dateText(moment.date()));
            element("time", StoredForms::timeText(moment.time()));
            close("pausedAt");
        }
    } else {
        element("day", entry.date());
    }
    element("time", QString::number(entry.storedMinutes()));
    const PauseList pauses = entry.pauseEntries();
    if (pauses.isEmpty()) {
        element("pause", {});
    } else {
        open("pause");
        for (const auto &pause : pauses)
            makeXML(*pause);
        close("pause");
    }
    element("checked", entry.isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
    element("comment", entry.comment());
    element("tags", entry.tags());
    attachments(entry.attachments());
    close("entry");
}

void ProjectXmlWriter::makeXML(const PauseEntry &pause) {
    open("pauseentry");
    moment("from", pause.hasFrom(), pause.fromSecs());
    moment("to", pause.hasTo(), pause.toSecs());
    close("pauseentry");
}

void ProjectXmlWriter::makeXML(const FlatFeeEntry &fee) {
    open("FlatFeeEntry");
    element("day", fee.date());
    element("amount", StoredForms::fixedText(double(fee.amount())));
    element("checked", fee.isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
    element("comment", fee.comment());
    element("tags", fee.tags());
    attachments(fee.attachments());
    close("FlatFeeEntry");
}

char *ProjectXmlWriter::reserve(qsizetype length) {
    const qsizetype size = m_out.size();
    m_out.resize(size + length);
    return m_out.data() + size;
}

void ProjectXmlWriter::commit(const char *end) {
    m_out.truncate(end - m_out.constData());
}

char *ProjectXmlWriter::startLine(qsizetype length) {
    const qsizetype indent = m_depth * 4;
    char *out = reserve(indent + length);
    std::memset(out, ' ', size_t(indent));
    return out + indent;
}

void ProjectXmlWriter::open(QByteArrayView name) {
    char *out = startLine(name.size() + 3);
    *out++ = '<';
    out = put(out, name);
    commit(put(out, ">\n"));
    ++m_depth;
}

void ProjectXmlWriter::close(QByteArrayView name) {
    --m_depth;
    char *out = startLine(name.size() + 4);
    out = put(out, "</");
    out = put(out, name);
    commit(put(out, ">\n"));
}

void ProjectXmlWriter::element(QByteArrayView name, const QString &text) {
    if (text.isEmpty()) {
        char *out = startLine(name.size() + 4);
        *out++ = '<';
        out = put(out, name);
        commit(put(out, "/>\n"));
        return;
    }
    char *out = startLine(name.size() + 2);
    *out++ = '<';
    out = put(out, name);
    *out++ = '>';
    commit(out);
    appendEscaped(m_out, text);
    out = reserve(name.size() + 4);
    out = put(out, "</");
    out = put(out, name);
    commit(put(out, ">\n"));
}

void ProjectXmlWriter::moment(QByteArrayView name, bool isSet, qint64 secsSinceEpoch) {
    if (!isSet) {
        element(name, {});
        return;
    }
    // The text of StoredForms::momentText(), from the C library's local time directly: going
    // through a local QDateTime costs a time-zone lookup (a stat of /etc/localtime) per moment.
    // The zone is read once per writer instead.
    if (!m_zoneRead) {
        tzset();
        m_zoneRead = true;
    }
    const time_t t = time_t(secsSinceEpoch);
    std::tm local{};
    if (!localtime_r(&t, &local)) {
        element(name, StoredForms::momentText(QDateTime::fromSecsSinceEpoch(secsSinceEpoch)));
        return;
    }
    char *out = startLine(2 * name.size() + 5 + 7 * 11 + 4);
    *out++ = '<';
    out = put(out, name);
    *out++ = '>';
    out = putPadded(out, local.tm_year + 1900, 4);
    *out++ = '-';
    out = putPadded(out, local.tm_mon + 1, 2);
    *out++ = '-';
    out = putPadded(out, local.tm_mday, 2);
    *out++ = ' ';
    out = putPadded(out, local.tm_hour, 2);
    *out++ = ':';
    out = putPadded(out, local.tm_min, 2);
    *out++ = ':';
    out = putPadded(out, local.tm_sec, 2);
    const int offsetMinutes = int(local.tm_gmtoff / 60);
    out = put(out, offsetMinutes < 0 ? " -" : " +");
    const int absOffset = std::abs(offsetMinutes);
    out = putPadded(out, absOffset / 60, 2);
    out = putPadded(out, absOffset % 60, 2);
    out = put(out, "</");
    out = put(out, name);
    commit(put(out, ">\n"));
}

void ProjectXmlWriter::attachments(const QStringList &paths) {
    if (paths.isEmpty()) {
        element("attachments", {});
        return;
    }
    open("attachments");
    for (const QString &path : paths)
        element("path", path);
    close("attachments");
}

void ProjectXmlWriter::appendEscaped(QByteArray &out, const QString &text) {
    const qsizetype start = out.size();
    // Most texts are ASCII: escaped straight from UTF-16, without a UTF-8 copy.
    if (isAscii(text)) {
        const auto *units = reinterpret_cast<const char16_t *>(text.constData());
        out.resize(start + text.size() * 5);
        out.truncate(escapeInto(out.data() + start, units, units + text.size()) - out.constData());
        return;
    }
    const QByteArray utf8 = text.toUtf8();
    const auto *bytes = reinterpret_cast<const unsigned char *>(utf8.constData());
    out.resize(start + utf8.size() * 5);
    out.truncate(escapeInto(out.data() + start, bytes, bytes + utf8.size()) - out.constData());
}
