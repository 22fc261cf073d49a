#pragma once

#include <QIcon>
#include <QString>

// The program's pictures by name (Folders::imagePath), loaded once. A picture whose file is not
// there is a null icon: the list then draws nothing in its place.
class Pictures {
public:
    static QIcon icon(const QString &name);
};
