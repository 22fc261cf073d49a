#include "SerialisedProjects.h"

#include "ProjectXmlWriter.h"

QList<QByteArray> SerialisedProjects::pieces(const ProjectList &projects) {
    QList<QByteArray> pieces;
    pieces.reserve(projects.size() + 2);
    pieces.append(ProjectXmlWriter::head());
    QHash<const Project *, Text> texts;
    texts.reserve(projects.size());
    for (const auto &project : projects) {
        auto known = m_texts.constFind(project.get());
        Text text = known != m_texts.cend() && known->expanded == project->expanded()
                        ? *known
                        : Text{ProjectXmlWriter::projectXML(*project), project->expanded()};
        pieces.append(text.bytes);
        texts.insert(project.get(), std::move(text));
    }
    pieces.append(ProjectXmlWriter::tail());
    m_texts = std::move(texts);
    return pieces;
}
