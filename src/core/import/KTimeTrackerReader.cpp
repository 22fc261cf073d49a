#include "KTimeTrackerReader.h"

#include "ImportText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QHash>

#include <libical/ical.h>
#include <memory>

namespace {

QString tr(const char *text) {
    return QCoreApplication::translate("KTimeTrackerReader", text);
}

QString textOf(const char *value) {
    return value ? QString::fromUtf8(value) : QString();
}

std::optional<qint64> secondsOf(const icaltimetype &time) {
    if (icaltime_is_null_time(time) || !icaltime_is_valid_time(time) || icaltime_is_date(time))
        return std::nullopt;
    if (icaltime_is_utc(time) || time.zone)
        return qint64(icaltime_as_timet_with_zone(time, time.zone));
    const QDateTime floating(QDate(time.year, time.month, time.day),
                             QTime(time.hour, time.minute, time.second));
    return floating.isValid() ? std::optional<qint64>(floating.toSecsSinceEpoch()) : std::nullopt;
}

// All values of one kind of property, each on a line of its own.
QStringList values(icalcomponent *component, icalproperty_kind kind) {
    QStringList found;
    for (icalproperty *p = icalcomponent_get_first_property(component, kind); p;
         p = icalcomponent_get_next_property(component, kind)) {
        const QString value = textOf(icalvalue_get_text(icalproperty_get_value(p)));
        if (!value.isEmpty())
            found.append(value);
    }
    return found;
}

// The line each component of a kind begins on, in the order the parser keeps them.
QList<int> beginLines(const QStringList &lines, QStringView kind) {
    QList<int> found;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (QStringView(lines[i]).trimmed() == kind)
            found.append(int(i + 1));
    }
    return found;
}

} // namespace

ImportResult KTimeTrackerReader::read(const QString &path, const Progress &progress) const {
    ImportResult result;
    const QString file = QFileInfo(path).fileName();
    const QStringList lines = ImportText::fileLines(path, result);
    if (!result.error.isEmpty())
        return result;
    const QByteArray calendarText = lines.join(u'\n').toUtf8();
    const std::unique_ptr<icalcomponent, decltype(&icalcomponent_free)> calendar(
        icalparser_parse_string(calendarText.constData()), &icalcomponent_free);
    if (!calendar || icalcomponent_isa(calendar.get()) != ICAL_VCALENDAR_COMPONENT)
        return ImportResult::failed(tr("\"%1\" is not an iCalendar file").arg(file));

    // Tasks by UID, then their full names through the parents.
    QHash<QString, std::pair<QString, QString>> tasks; // uid -> (summary, parent uid)
    for (icalcomponent *todo =
             icalcomponent_get_first_component(calendar.get(), ICAL_VTODO_COMPONENT);
         todo; todo = icalcomponent_get_next_component(calendar.get(), ICAL_VTODO_COMPONENT)) {
        icalproperty *parent = icalcomponent_get_first_property(todo, ICAL_RELATEDTO_PROPERTY);
        tasks.insert(textOf(icalcomponent_get_uid(todo)),
                     {textOf(icalcomponent_get_summary(todo)),
                      parent ? textOf(icalproperty_get_relatedto(parent)) : QString()});
    }
    const auto taskName = [&tasks](QString uid) {
        QStringList names;
        for (int depth = 0; tasks.contains(uid) && depth < 32; ++depth) {
            names.prepend(tasks.value(uid).first);
            uid = tasks.value(uid).second;
        }
        return names.join(QStringLiteral(" / "));
    };

    const QList<int> eventLines = beginLines(lines, u"BEGIN:VEVENT");
    const int total = icalcomponent_count_components(calendar.get(), ICAL_VEVENT_COMPONENT);
    int index = 0;
    for (icalcomponent *event =
             icalcomponent_get_first_component(calendar.get(), ICAL_VEVENT_COMPONENT);
         event; event = icalcomponent_get_next_component(calendar.get(), ICAL_VEVENT_COMPONENT)) {
        if (!goOn(progress, index + 1, total))
            return ImportResult::wasCancelled();
        const int line = eventLines.value(index++);
        const QStringList errors = values(event, ICAL_XLICERROR_PROPERTY);
        if (!errors.isEmpty()) {
            result.addProblem(file, line, tr("unreadable event: %1").arg(errors.join(u' ')));
            continue;
        }
        icalproperty *related = icalcomponent_get_first_property(event, ICAL_RELATEDTO_PROPERTY);
        const QString uid = related ? textOf(icalproperty_get_relatedto(related)) : QString();
        const QString project =
            tasks.contains(uid) ? taskName(uid) : textOf(icalcomponent_get_summary(event));
        const auto start = secondsOf(icalcomponent_get_dtstart(event));
        const bool hasEnd = icalcomponent_get_first_property(event, ICAL_DTEND_PROPERTY) ||
                            icalcomponent_get_first_property(event, ICAL_DURATION_PROPERTY);
        const auto end = hasEnd ? secondsOf(icalcomponent_get_dtend(event)) : std::nullopt;
        if (!start || (hasEnd && !end) || project.isEmpty()) {
            result.addProblem(file, line, tr("unreadable event: no task, start or end"));
            continue;
        }
        if (end && *end < *start) {
            result.addProblem(file, line, tr("ends before it starts"));
            continue;
        }
        ImportedEntry entry;
        entry.project = project;
        entry.start = *start;
        entry.end = end;
        entry.comment =
            (values(event, ICAL_DESCRIPTION_PROPERTY) + values(event, ICAL_COMMENT_PROPERTY))
                .join(u'\n');
        for (const QString &categories : values(event, ICAL_CATEGORIES_PROPERTY))
            entry.tags += categories.split(u',', Qt::SkipEmptyParts);
        entry.file = file;
        entry.line = line;
        result.entries.append(std::move(entry));
    }
    result.finish();
    return result;
}
