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

const QList<ImportSources::Source> &ImportSources::all() {
    static const QList<Source> sources{Source::Timewarrior,  Source::Watson, Source::Hamster,
                                       Source::KTimeTracker, Source::Toggl,  Source::Clockify};
    return sources;
}

QString ImportSources::key(Source source) {
    switch (source) {
    case Source::Timewarrior:
        return QStringLiteral("timewarrior");
    case Source::Watson:
        return QStringLiteral("watson");
    case Source::Hamster:
        return QStringLiteral("hamster");
    case Source::KTimeTracker:
        return QStringLiteral("ktimetracker");
    case Source::Toggl:
        return QStringLiteral("toggl");
    case Source::Clockify:
        return QStringLiteral("clockify");
    }
    return {};
}

std::optional<ImportSources::Source> ImportSources::fromKey(const QString &key) {
    for (Source source : all()) {
        if (ImportSources::key(source) == key)
            return source;
    }
    return std::nullopt;
}

QString ImportSources::title(Source source) {
    switch (source) {
    case Source::Timewarrior:
        return QStringLiteral("Timewarrior");
    case Source::Watson:
        return QStringLiteral("Watson");
    case Source::Hamster:
        return QStringLiteral("Hamster");
    case Source::KTimeTracker:
        return QStringLiteral("KTimeTracker");
    case Source::Toggl:
        return QCoreApplication::translate("ImportSources", "Toggl (CSV)");
    case Source::Clockify:
        return QCoreApplication::translate("ImportSources", "Clockify (CSV)");
    }
    return {};
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
