#pragma once

#include <QString>

// Brings the previous major version's files over before anything else runs: its preferences
// file when this version has none, and its support folder (copied whole) when this version has
// none. Nothing is moved or removed: the old files stay as they were.
class VersionMigration {
public:
    struct Paths {
        QString preferences;
        QString previousPreferences;
        QString supportFolder;
        QString previousSupportFolder;
    };

    // ~/.config/Hourfold/Hourfold3.conf and Hourfold.conf, ~/.local/share/Hourfold3 and Hourfold.
    static Paths defaultPaths();
    // Returns false (and logs why) when a copy failed; what was copied stays.
    static bool migrate(const Paths &paths);
    // Creates the support folder when it does not exist; false when that failed.
    static bool createSupportFolder(const QString &folder);

private:
    static bool copyFolder(const QString &from, const QString &to);
};
