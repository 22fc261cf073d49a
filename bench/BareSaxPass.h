#pragma once

#include <QString>

// The floor for reading a project file: libxml2's SAX2 parser streaming the file with callbacks
// that do nothing, under the same options the project file reader uses.
class BareSaxPass {
public:
    struct Result {
        bool ok = false;
        qint64 elements = 0;
    };

    static Result run(const QString &path);
};
