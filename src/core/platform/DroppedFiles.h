#pragma once

#include <QStringList>

class QMimeData;

// What a drag from a file manager carries: its local files as paths.
class DroppedFiles {
public:
    // The paths of the local files among the data's addresses, in order; web addresses are left
    // out.
    static QStringList localFiles(const QMimeData &data);
};
