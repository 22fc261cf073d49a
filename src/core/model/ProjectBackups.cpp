#include "ProjectBackups.h"

#include "../Logging.h"
#include "../platform/AtomicFile.h"
#include "Clock.h"
#include "ProjectFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <cstring>
#include <functional>
#include <mutex>

using namespace Qt::StringLiterals;

namespace {

QString &shared() {
    static QString folder;
    return folder;
}

// The size and entries of the text last handed in for each path: while the file on disk still has
// that size, its entries need not be counted again (a save at 100,000 entries would read and scan
// 50 MB more).
struct Handed {
    qint64 size = -1;
    qint64 entries = 0;
};
std::mutex handedMutex;
QHash<QString, Handed> &handed() {
    static QHash<QString, Handed> texts;
    return texts;
}

constexpr qint64 copyInterval = 3600; // seconds
constexpr int hoursKept = 24;
constexpr int daysKept = 30;
constexpr int monthsKept = 12;

const QString stampFormat = QStringLiteral("yyyy-MM-dd'T'HHmmss.zzz'Z'");

const QRegularExpression &copyName() {
    static const QRegularExpression pattern(
        QStringLiteral(R"(^(\d{4}-\d{2}-\d{2}T\d{6}\.\d{3}Z) (.*) \(([0-9a-f]{8})\)\.projects$)"));
    return pattern;
}

int occurrences(QByteArrayView bytes, QByteArrayView tag) {
    int count = 0;
    const char *at = bytes.data();
    const char *end = bytes.data() + bytes.size();
    while (at < end) {
        const void *found = memmem(at, size_t(end - at), tag.data(), size_t(tag.size()));
        if (!found)
            break;
        const char *after = static_cast<const char *>(found) + tag.size();
        if (after < end && (*after == '>' || *after == ' ' || *after == '/'))
            ++count;
        at = after;
    }
    return count;
}

// Keeps, among copies sorted newest first, the newest copy of each of the most recent buckets
// (all copies of a bucket when every is true).
void keepRecent(const QList<ProjectBackups::Copy> &newestFirst, int buckets, bool every,
                const std::function<QString(const QDateTime &)> &bucketOf, QSet<QString> &kept) {
    QSet<QString> seen;
    for (const auto &copy : newestFirst) {
        const QString bucket = bucketOf(copy.made);
        const bool known = seen.contains(bucket);
        if (!known) {
            if (seen.size() == buckets)
                return;
            seen.insert(bucket);
        }
        if (!known || every)
            kept.insert(copy.path);
    }
}

} // namespace

ProjectBackups::ProjectBackups(QString folder)
    : m_folder(std::move(folder)) {}

void ProjectBackups::setShared(const QString &folder) {
    shared() = folder;
}

QString ProjectBackups::sharedFolder() {
    return shared();
}

QString ProjectBackups::keyOf(const QString &path) {
    const QFileInfo info(path);
    const QString absolute =
        info.canonicalFilePath().isEmpty() ? info.absoluteFilePath() : info.canonicalFilePath();
    return QString::fromLatin1(
        QCryptographicHash::hash(absolute.toUtf8(), QCryptographicHash::Sha1).toHex().left(8));
}

int ProjectBackups::countEntries(QByteArrayView bytes) {
    return occurrences(bytes, "<entry") + occurrences(bytes, "<FlatFeeEntry");
}

QString ProjectBackups::beforeReplacing(const QString &path,
                                        const QList<QByteArray> &pieces) const {
    QFile current(path);
    if (m_folder.isEmpty() || !current.open(QIODevice::ReadOnly) || current.size() == 0)
        return {};
    const QString key = keyOf(path);
    QList<Copy> ours;
    for (const Copy &copy : copies())
        if (copy.documentKey == key)
            ours << copy;
    const QDateTime now = Clock::now().toUTC();
    Handed next;
    next.size = 0;
    for (const QByteArray &piece : pieces) {
        next.size += piece.size();
        next.entries += countEntries(piece);
    }
    Handed before;
    {
        const std::lock_guard lock(handedMutex);
        before = handed().value(path);
        handed().insert(path, next);
    }
    uchar *mapped = current.map(0, current.size());
    const QByteArray old = mapped ? QByteArray::fromRawData(reinterpret_cast<const char *>(mapped),
                                                            qsizetype(current.size()))
                                  : current.readAll();
    bool due = ours.isEmpty() || ours.first().made.secsTo(now) >= copyInterval;
    if (!due) {
        const qint64 entriesBefore =
            before.size == old.size() ? before.entries : qint64(countEntries(old));
        due = next.size * 2 < old.size() || next.entries * 10 < entriesBefore * 9;
    }
    QString made;
    if (due) {
        const QString name = u"%1 %2 (%3).projects"_s.arg(now.toString(stampFormat),
                                                          QFileInfo(path).completeBaseName(), key);
        const QString target = QDir(m_folder).filePath(name);
        const AtomicFile::Result written =
            QDir().mkpath(m_folder)
                ? AtomicFile::write(target, old)
                : AtomicFile::Result{false, u"cannot create %1"_s.arg(m_folder)};
        if (written.ok) {
            made = target;
            ours.prepend({target, QFileInfo(path).completeBaseName(), key, now});
        } else {
            qCWarning(lcFile).noquote() << "no backup of" << path << "was kept:" << written.error;
        }
    }
    if (mapped)
        current.unmap(mapped);
    for (const Copy &gone : toPrune(ours))
        if (!QFile::remove(gone.path))
            qCWarning(lcFile).noquote() << "cannot remove the old backup" << gone.path;
    return made;
}

std::optional<ProjectBackups::Copy> ProjectBackups::copyAt(const QString &path) {
    const QRegularExpressionMatch match = copyName().match(QFileInfo(path).fileName());
    if (!match.hasMatch())
        return {};
    QDateTime made = QDateTime::fromString(match.captured(1), stampFormat);
    made.setTimeSpec(Qt::UTC);
    if (!made.isValid())
        return {};
    return Copy{path, match.captured(2), match.captured(3), made};
}

QList<ProjectBackups::Copy> ProjectBackups::copies() const {
    QList<Copy> found;
    const QDir folder(m_folder);
    for (const QString &name : folder.entryList({QStringLiteral("*.projects")}, QDir::Files)) {
        if (const std::optional<Copy> copy = copyAt(folder.filePath(name)))
            found.append(*copy);
    }
    std::sort(found.begin(), found.end(),
              [](const Copy &a, const Copy &b) { return a.made > b.made; });
    return found;
}

QList<ProjectBackups::Copy> ProjectBackups::toPrune(const QList<Copy> &copies) {
    QList<Copy> newestFirst = copies;
    std::sort(newestFirst.begin(), newestFirst.end(),
              [](const Copy &a, const Copy &b) { return a.made > b.made; });
    QSet<QString> kept;
    keepRecent(
        newestFirst, hoursKept, true,
        [](const QDateTime &made) { return made.toString(u"yyyyMMddHH"_s); }, kept);
    keepRecent(
        newestFirst, daysKept, false,
        [](const QDateTime &made) { return made.toLocalTime().toString(u"yyyyMMdd"_s); }, kept);
    keepRecent(
        newestFirst, monthsKept, false,
        [](const QDateTime &made) { return made.toLocalTime().toString(u"yyyyMM"_s); }, kept);
    QList<Copy> gone;
    for (const Copy &copy : newestFirst)
        if (!kept.contains(copy.path))
            gone << copy;
    return gone;
}

ProjectBackups::Summary ProjectBackups::summarize(const QString &copyPath) {
    QFile file(copyPath);
    if (!file.open(QIODevice::ReadOnly))
        return {false, file.errorString()};
    const ProjectFile::LoadResult read = ProjectFile::read(file.readAll());
    if (!read.ok)
        return {false, read.error};
    Summary summary{true, {}, int(read.projects.size())};
    for (const auto &project : read.projects) {
        summary.entries += int(project->entries().size());
        summary.minutes += project->totalDuration();
    }
    return summary;
}
