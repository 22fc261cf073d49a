#pragma once

#include "Project.h"

#include <QByteArray>
#include <QHash>
#include <QList>

// The project file's text kept project by project, so that saving after a change makes anew only
// the text of the projects that changed. The document says which projects it changed; a project
// whose expansion was toggled (which is no change of the document) is made anew as well.
class SerialisedProjects {
public:
    void invalidate(const Project *project) { m_texts.remove(project); }
    void clear() { m_texts.clear(); }

    // The whole file for these projects, in pieces: the head, each project's text, the tail.
    // Texts of projects no longer in the list are forgotten.
    QList<QByteArray> pieces(const ProjectList &projects);

private:
    struct Text {
        QByteArray bytes;
        bool expanded = false;
    };
    QHash<const Project *, Text> m_texts;
};
