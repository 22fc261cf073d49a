#pragma once

#include <QString>

// Where the program's own files are.
class Folders {
public:
    // Built-in styles, quickfilters.plist and images: <folder of the executable>/../share/hourfold,
    // the same in the build tree and in an installed copy.
    static QString resourceFolder();
    // The picture NAME of the program (toolbar, list cells, details pane): an SVG file in the
    // "images" folder of the resource folder.
    static QString imagePath(const QString &name);
    // A path with the home folder written as "~", for messages.
    static QString withTilde(const QString &path);
};
