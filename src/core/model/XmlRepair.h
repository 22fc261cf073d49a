#pragma once

#include <QByteArray>

// Mends the two faults hand edits leave most often in an XML file, before a forgiving read: an "&"
// that starts no reference becomes "&amp;", and control characters XML cannot carry are dropped.
// Line breaks stay where they are, so lines named in messages are those of the original.
class XmlRepair {
public:
    static QByteArray repairCommonFaults(const QByteArray &bytes);
};
