#pragma once

#include "ProjectXmlReader.h"

#include <QByteArray>
#include <QString>

typedef struct _xmlDoc xmlDoc;

// Reads project files of the older layout, which carries no layout version mark: the file is
// parsed into a document model, converted to the current layout in memory and read as such. The
// file on disk keeps its layout until the next save.
class OlderLayoutReader {
public:
    struct Result : ProjectXmlReader::Result {
        // The document had no "1.5" mark anywhere and was converted.
        bool converted = false;
    };

    // Reads the bytes, with the forgiving parse when recover is set.
    static Result read(const QByteArray &bytes, bool recover);

    // Turns an older-layout document into the current layout in place. False (with the reason)
    // when an entry lacks its "day" or "from" element.
    static bool convertXMLDocToCurrentFormat(xmlDoc *document, QString *error = nullptr);
};
