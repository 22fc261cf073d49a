#pragma once

#include "Project.h"

#include <QByteArray>

class Entry;
class FlatFeeEntry;
class PauseEntry;

// Writes the project file: UTF-8 XML, indented one element per line, with the "1.5" layout
// comment. Text is escaped straight into one buffer; characters XML 1.0 cannot carry are dropped
// and a carriage return is written as "&#13;" so that it survives a read.
class ProjectXmlWriter {
public:
    static QByteArray makeXML(const ProjectList &projects);
    // The same file in pieces: head(), then projectXML() of each project, then tail().
    static QByteArray head();
    static QByteArray tail();
    static QByteArray projectXML(const Project &project);

    // The elements of one object, appended at the current depth.
    void makeXML(const Project &project);
    void makeXML(const Entry &entry);
    void makeXML(const PauseEntry &pause);
    void makeXML(const FlatFeeEntry &fee);

    QByteArray bytes() const { return m_out; }

    // The XML-escaped UTF-8 of a text, appended to out.
    static void appendEscaped(QByteArray &out, const QString &text);

private:
    // Room for length more bytes at the end of the text; commit() then ends the text where the
    // writing stopped. startLine() also writes the indentation first.
    char *reserve(qsizetype length);
    void commit(const char *end);
    char *startLine(qsizetype length);
    void open(QByteArrayView name);
    void close(QByteArrayView name);
    void element(QByteArrayView name, const QString &text);
    // A moment as StoredForms::momentText() writes it; an empty element when it is not set.
    void moment(QByteArrayView name, bool isSet, qint64 secsSinceEpoch);
    void attachments(const QStringList &paths);

    QByteArray m_out;
    int m_depth = 0;
    bool m_zoneRead = false;
};
