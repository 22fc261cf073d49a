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

    // The elements of one object, appended at the current depth.
    void makeXML(const Project &project);
    void makeXML(const Entry &entry);
    void makeXML(const PauseEntry &pause);
    void makeXML(const FlatFeeEntry &fee);

    QByteArray bytes() const { return m_out; }

    // The XML-escaped UTF-8 of a text, appended to out.
    static void appendEscaped(QByteArray &out, const QString &text);

private:
    void indent();
    void open(const char *name);
    void close(const char *name);
    void element(const char *name, const QString &text);
    void attachments(const QStringList &paths);

    QByteArray m_out;
    int m_depth = 0;
};
