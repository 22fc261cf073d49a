#include "ProjectFile.h"

#include "../Logging.h"
#include "../platform/AtomicFile.h"
#include "../platform/FileIdentity.h"
#include "Clock.h"
#include "OlderLayoutReader.h"
#include "ProjectBackups.h"
#include "ProjectXmlReader.h"
#include "ProjectXmlWriter.h"
#include "XmlRepair.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

ProjectFile::LoadResult fromReader(const ProjectXmlReader::Result &r) {
    ProjectFile::LoadResult result;
    result.ok = r.ok;
    result.projects = r.projects;
    if (!r.error.isEmpty())
        result.error =
            r.line > 0 ? QStringLiteral("%1 (line %2)").arg(r.error).arg(r.line) : r.error;
    result.line = r.line;
    result.itemsLeftOut = r.itemsLeftOut;
    result.unreadable = r.unreadable;
    return result;
}

ProjectFile::LoadResult fromOlderLayout(const OlderLayoutReader::Result &r) {
    ProjectFile::LoadResult result = fromReader(r);
    result.converted = r.converted;
    return result;
}

} // namespace

ProjectFile::LoadResult ProjectFile::read(const QByteArray &bytes) {
    using Mode = ProjectXmlReader::Mode;
    const ProjectXmlReader::Result strict = ProjectXmlReader::read(bytes, Mode::Strict);
    if (!strict.malformed)
        return strict.olderLayout ? fromOlderLayout(OlderLayoutReader::read(bytes, false))
                                  : fromReader(strict);

    const QByteArray repaired = XmlRepair::repairCommonFaults(bytes);
    const ProjectXmlReader::Result forgiving = ProjectXmlReader::read(repaired, Mode::Recover);
    LoadResult result = forgiving.olderLayout
                            ? fromOlderLayout(OlderLayoutReader::read(repaired, true))
                            : fromReader(forgiving);
    // The strict parse's complaint says best what is wrong with the file.
    const QString damage = fromReader(strict).error;
    if (!result.ok) {
        result.error = damage;
        result.line = strict.line;
        return result;
    }
    result.recovered = true;
    result.error.clear();
    result.damage = damage;
    qCWarning(lcFile).noquote() << "the file is not well-formed; read it in forgiving mode:"
                                << damage;
    return result;
}

ProjectFile::LoadResult ProjectFile::load(const QString &path) {
    QFile file(path);
    LoadResult result;
    if (!file.exists()) {
        result.error = QStringLiteral("The file \"%1\" does not exist.").arg(path);
        return result;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        result.error =
            QStringLiteral("The file \"%1\" could not be opened: %2").arg(path, file.errorString());
        return result;
    }
    // Mapped rather than copied: a large file is parsed where it lies.
    const qint64 size = file.size();
    uchar *mapped = size > 0 ? file.map(0, size) : nullptr;
    const QByteArray bytes =
        mapped ? QByteArray::fromRawData(reinterpret_cast<const char *>(mapped), qsizetype(size))
               : file.readAll();
    result = read(bytes);
    result.contentHash = FileIdentity::hashOf(bytes);
    for (const QString &value : std::as_const(result.unreadable))
        qCWarning(lcFile).noquote()
            << QStringLiteral("a value in %1 could not be read and is left empty: %2")
                   .arg(path, value);
    if (result.ok && (result.recovered || !result.unreadable.isEmpty())) {
        QString error;
        result.backupPath = keepRecoveredCopy(path, bytes, &error);
        if (result.backupPath.isEmpty())
            result.error = error;
    }
    if (!result.ok)
        qCWarning(lcFile).noquote() << "cannot read" << path << ":" << result.error;
    if (mapped)
        file.unmap(mapped);
    return result;
}

QByteArray ProjectFile::makeXML(const ProjectList &projects) {
    return ProjectXmlWriter::makeXML(projects);
}

ProjectFile::SaveResult ProjectFile::save(const QString &path, const ProjectList &projects) {
    const QByteArray bytes = makeXML(projects);
    ProjectBackups(ProjectBackups::sharedFolder()).beforeReplacing(path, {bytes});
    const AtomicFile::Result written = AtomicFile::write(path, bytes);
    return {written.ok, written.error, FileIdentity::hashOf(bytes)};
}

QString ProjectFile::keepRecoveredCopy(const QString &path, const QByteArray &bytes,
                                       QString *error) {
    const QFileInfo info(path);
    const QDir folder = info.absoluteDir();
    const QString prefix = info.fileName() + QStringLiteral(".recovered-");
    const QStringList earlier =
        folder.entryList({prefix + u'*'}, QDir::Files | QDir::Hidden, QDir::Name);
    for (const QString &name : earlier) {
        QFile copy(folder.filePath(name));
        if (copy.size() == bytes.size() && copy.open(QIODevice::ReadOnly) &&
            copy.readAll() == bytes)
            return copy.fileName();
    }
    const QString stamp = Clock::now().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString candidate = folder.filePath(prefix + stamp);
    for (int n = 2; QFileInfo::exists(candidate); ++n)
        candidate = folder.filePath(prefix + stamp + u'-' + QString::number(n));
    const AtomicFile::Result written = AtomicFile::write(candidate, bytes);
    if (!written.ok) {
        if (error)
            *error = written.error;
        return {};
    }
    qCInfo(lcFile) << "kept the original of" << path << "as" << candidate;
    return candidate;
}
