#pragma once

#include <QString>

// What the desktop does for the program: opening a web address or a file with its default
// application and showing a file in the file manager. Each operation answers false when it could
// not be done (a path that does not exist, no desktop); tests answer with a stand-in.
class DesktopServices {
public:
    virtual ~DesktopServices() = default;

    virtual bool openUrl(const QString &url) = 0;
    virtual bool openPath(const QString &path) = 0;
    // Shows the file or folder selected in the file manager.
    virtual bool revealPath(const QString &path) = 0;
};
