#pragma once

#include "platform/DesktopServices.h"

// Web addresses and files opened by the desktop's default applications; files revealed in the
// file manager over D-Bus (org.freedesktop.FileManager1), else their folder is opened.
class QtDesktopServices : public DesktopServices {
public:
    bool openUrl(const QString &url) override;
    bool openPath(const QString &path) override;
    bool revealPath(const QString &path) override;
};
