#pragma once

#include "stores/AttachmentController.h"

#include <QIcon>

// The pictures of the attachments table: the desktop theme's where it has them, else the
// program's own drawings ("folder", "url", "file"). Each is made once, so equal kinds share one
// icon.
class AttachmentIcons {
public:
    static QIcon iconFor(const AttachmentController::Row &row);
    static QIcon folderIcon();
    static QIcon urlIcon();
    // A file without extension, or of a kind the desktop has no picture for.
    static QIcon defaultIcon();
    static QIcon iconForExtension(const QString &extension);
};
