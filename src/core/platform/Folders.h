#pragma once

#include <QString>

// Where the program's own files are.
class Folders {
public:
    // Built-in styles, quickfilters.plist and images: <folder of the executable>/../share/hourfold,
    // the same in the build tree and in an installed copy.
    static QString resourceFolder();
    // A path with the home folder written as "~", for messages.
    static QString withTilde(const QString &path);
};
