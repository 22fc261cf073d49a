#include "ImportSources.h"

#include "ClockifyReader.h"
#include "HamsterReader.h"
#include "KTimeTrackerReader.h"
#include "TimewarriorReader.h"
#include "TogglReader.h"
#include "WatsonReader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

struct Named {
    ImportSources::Source source;
    const char *key;
    const char *title;
};

// Every source with its name on the command line and in the dialogue, in the dialogue's order.
constexpr Named names[] = {
    {ImportSources::Source::Timewarrior, "timewarrior", "Timewarrior"},
    {ImportSources::Source::Watson, "watson", "Watson"},
    {ImportSources::Source::Hamster, "hamster", "Hamster"},
    {ImportSources::Source::KTimeTracker, "ktimetracker", "KTimeTracker"},
    {ImportSources::Source::Toggl, "toggl", QT_TRANSLATE_NOOP("ImportSources", "Toggl (CSV)")},
    {ImportSources::Source::Clockify, "clockify",
     QT_TRANSLATE_NOOP("ImportSources", "Clockify (CSV)")},
};

const Named &named(ImportSources::Source source) {
    return names[int(source)];
}

} // namespace

const QList<ImportSources::Source> &ImportSources::all() {
    static const QList<Source> sources = [] {
        QList<Source> list;
        for (const Named &each : names)
            list.append(each.source);
        return list;
    }();
    return sources;
}

QString ImportSources::key(Source source) {
    return QString::fromLatin1(named(source).key);
}

std::optional<ImportSources::Source> ImportSources::fromKey(const QString &key) {
    for (const Named &each : names) {
        if (key == QLatin1String(each.key))
            return each.source;
    }
    return std::nullopt;
}

QString ImportSources::title(Source source) {
    return QCoreApplication::translate("ImportSources", named(source).title);
}

bool ImportSources::takesFolder(Source source) {
    return source == Source::Timewarrior || source == Source::Watson;
}

std::optional<ImportSources::Source> ImportSources::detect(const QString &path) {
    const QFileInfo info(path);
    if (info.isDir()) {
        const QDir folder(path);
        if (!QDir(folder.filePath(QStringLiteral("data")))
                 .entryList({QStringLiteral("*.data")}, QDir::Files)
                 .isEmpty() ||
            !folder.entryList({QStringLiteral("*.data")}, QDir::Files).isEmpty())
            return Source::Timewarrior;
        if (folder.exists(QStringLiteral("frames")))
            return Source::Watson;
        return std::nullopt;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray head = file.read(4096);
    if (head.startsWith("SQLite format 3"))
        return Source::Hamster;
    const QByteArray text = head.startsWith("\xEF\xBB\xBF") ? head.mid(3) : head;
    if (text.trimmed().startsWith("BEGIN:VCALENDAR"))
        return Source::KTimeTracker;
    if (text.trimmed().startsWith('[') || info.fileName() == u"frames")
        return Source::Watson;
    if (text.startsWith("inc ") || info.suffix() == u"data")
        return Source::Timewarrior;
    const QByteArray header = text.left(text.indexOf('\n'));
    if (header.contains("Start date") && header.contains("Start time"))
        return Source::Toggl;
    if (header.contains("Start Date") && header.contains("Start Time"))
        return Source::Clockify;
    return std::nullopt;
}

std::unique_ptr<ImportReader> ImportSources::reader(Source source,
                                                    const QString &projectTagPattern) {
    switch (source) {
    case Source::Timewarrior: {
        auto reader = std::make_unique<TimewarriorReader>();
        if (!projectTagPattern.isEmpty())
            reader->setRule(TimewarriorReader::Rule::Pattern, projectTagPattern);
        return reader;
    }
    case Source::Watson:
        return std::make_unique<WatsonReader>();
    case Source::Hamster:
        return std::make_unique<HamsterReader>();
    case Source::KTimeTracker:
        return std::make_unique<KTimeTrackerReader>();
    case Source::Toggl:
        return std::make_unique<TogglReader>();
    case Source::Clockify:
        return std::make_unique<ClockifyReader>();
    }
    return nullptr;
}
