#include "ProjectXmlWriter.h"

#include "Entry.h"
#include "FlatFeeEntry.h"
#include "StoredForms.h"

QByteArray ProjectXmlWriter::makeXML(const ProjectList &projects) {
    ProjectXmlWriter writer;
    qsizetype estimate = 64;
    for (const auto &project : projects)
        estimate += 512 + project->entries().size() * 560;
    writer.m_out.reserve(estimate);
    writer.m_out += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!--1.5-->\n";
    writer.open("projects");
    for (const auto &project : projects)
        writer.makeXML(*project);
    writer.close("projects");
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
    element("from", StoredForms::momentText(pause.from()));
    element("to", StoredForms::momentText(pause.to()));
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

void ProjectXmlWriter::indent() {
    m_out.append(m_depth * 4, ' ');
}

void ProjectXmlWriter::open(const char *name) {
    indent();
    m_out += '<';
    m_out += name;
    m_out += ">\n";
    ++m_depth;
}

void ProjectXmlWriter::close(const char *name) {
    --m_depth;
    indent();
    m_out += "</";
    m_out += name;
    m_out += ">\n";
}

void ProjectXmlWriter::element(const char *name, const QString &text) {
    indent();
    m_out += '<';
    m_out += name;
    if (text.isEmpty()) {
        m_out += "/>\n";
        return;
    }
    m_out += '>';
    appendEscaped(m_out, text);
    m_out += "</";
    m_out += name;
    m_out += ">\n";
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
    const QByteArray utf8 = text.toUtf8();
    const auto *p = reinterpret_cast<const unsigned char *>(utf8.constData());
    const auto *end = p + utf8.size();
    while (p < end) {
        const unsigned char c = *p;
        if (c < 0x20) {
            if (c == '\r')
                out += "&#13;";
            else if (c == '\t' || c == '\n')
                out += char(c);
            // Any other control character cannot be carried by XML 1.0: dropped.
            ++p;
            continue;
        }
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case 0xEF:
            // U+FFFE and U+FFFF are not XML characters either.
            if (end - p >= 3 && p[1] == 0xBF && (p[2] == 0xBE || p[2] == 0xBF)) {
                p += 3;
                continue;
            }
            out += char(c);
            break;
        default:
            out += char(c);
        }
        ++p;
    }
}
