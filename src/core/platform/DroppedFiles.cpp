#include "DroppedFiles.h"

#include <QMimeData>
#include <QUrl>

QStringList DroppedFiles::localFiles(const QMimeData &data) {
    QStringList paths;
    const QList<QUrl> urls = data.urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile() && !url.toLocalFile().isEmpty())
            paths.append(url.toLocalFile());
    }
    return paths;
}
