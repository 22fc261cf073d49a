#include "VersionMigration.h"

#include "../Logging.h"
#include "../model/HelpFunctions.h"
#include "Preferences.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

VersionMigration::Paths VersionMigration::defaultPaths() {
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return {Preferences::defaultFilePath(), config + QStringLiteral("/Hourfold/Hourfold.conf"),
            HelpFunctions::applicationSupportFolder(), data + QStringLiteral("/Hourfold")};
}

bool VersionMigration::copyFolder(const QString &from, const QString &to) {
    if (!QDir().mkpath(to))
        return false;
    QDirIterator it(from, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    bool ok = true;
    while (it.hasNext()) {
        const QString source = it.next();
        const QString target = to + source.mid(from.size());
        if (it.fileInfo().isDir() && !it.fileInfo().isSymLink()) {
            ok = QDir().mkpath(target) && ok;
        } else if (!QFile::copy(source, target)) {
            qCWarning(lcPreferences) << "could not copy" << source << "to" << target;
            ok = false;
        }
    }
    return ok;
}

bool VersionMigration::migrate(const Paths &paths) {
    bool ok = true;
    if (!QFileInfo::exists(paths.preferences) && QFileInfo::exists(paths.previousPreferences)) {
        QDir().mkpath(QFileInfo(paths.preferences).absolutePath());
        if (!QFile::copy(paths.previousPreferences, paths.preferences)) {
            qCWarning(lcPreferences)
                << "could not copy" << paths.previousPreferences << "to" << paths.preferences;
            ok = false;
        }
    }
    if (QFileInfo(paths.previousSupportFolder).isDir() && !QFileInfo::exists(paths.supportFolder))
        ok = copyFolder(paths.previousSupportFolder, paths.supportFolder) && ok;
    return ok;
}

bool VersionMigration::createSupportFolder(const QString &folder) {
    if (QFileInfo(folder).isDir())
        return true;
    const bool created = QDir().mkpath(folder);
    if (!created)
        qCWarning(lcPreferences) << "could not create the support folder" << folder;
    return created;
}
