#pragma once

#include "Project.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

// Reads the current layout of the project file in one streaming SAX pass that builds the model
// directly. Text is kept as it stands (white space included); a number or moment that is none is
// left without a value and noted; a missing required element ends the read with a message naming
// the element, the object and the line.
class ProjectXmlReader {
public:
    enum class Mode { Strict, Recover };

    struct Result {
        bool ok = false;
        // The file carries no "1.5" layout comment before its root element: an older layout,
        // which OlderLayoutReader reads. Only malformed and the error are set then.
        bool olderLayout = false;
        // The XML itself was malformed (as opposed to a structural problem in good XML).
        bool malformed = false;
        QString error;
        int line = 0;
        ProjectList projects;
        // Items a forgiving read left out because the data ended inside them.
        int itemsLeftOut = 0;
        // Values that could not be read and were left without one, each a sentence naming the
        // element, the entry or flat fee and the project.
        QStringList unreadable;
    };

    // Reads the bytes. Projects hold their timed entries first and then their flat fees.
    static Result read(const QByteArray &bytes, Mode mode);
};
