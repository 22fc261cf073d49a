#include "import/ImportDialogueLogic.h"

#include "model/StoredForms.h"

void ImportDialogueLogic::setSource(ImportSources::Source source) {
    if (source != m_source)
        forgetPreview();
    m_source = source;
}

std::optional<ImportSources::Source> ImportDialogueLogic::setPath(const QString &path) {
    if (path != m_path)
        forgetPreview();
    m_path = path;
    const auto detected = ImportSources::detect(path);
    if (detected)
        setSource(*detected);
    return detected;
}

void ImportDialogueLogic::setProjectTagPattern(const QString &pattern) {
    if (pattern != m_pattern)
        forgetPreview();
    m_pattern = pattern;
}

void ImportDialogueLogic::readPreview(const ImportReader::Progress &progress) {
    ImportResult read = ImportSources::reader(m_source, m_pattern)->read(m_path, progress);
    if (read.cancelled)
        m_result.reset();
    else
        m_result = std::move(read);
}

QList<QStringList> ImportDialogueLogic::projectRows() const {
    QList<QStringList> rows;
    if (!m_result)
        return rows;
    for (const auto &project : m_result->projects())
        rows.append({project.name, project.customer, QString::number(project.entries),
                     StoredForms::durationText(project.minutes), QString::number(project.running)});
    return rows;
}

QStringList ImportDialogueLogic::problemLines() const {
    QStringList lines;
    if (!m_result)
        return lines;
    if (!m_result->error.isEmpty())
        lines.append(m_result->error);
    for (const ImportProblem &problem : m_result->problems)
        lines.append(problem.where + u": " + problem.text);
    return lines;
}

QString ImportDialogueLogic::summary() const {
    if (!m_result)
        return tr("Choose the data to import, then Preview.");
    if (!m_result->error.isEmpty())
        return tr("Nothing can be imported.");
    if (m_result->entries.isEmpty())
        return tr("The source holds no time records.");
    int minutes = 0;
    for (const ImportedEntry &entry : m_result->entries)
        minutes += entry.minutes();
    QString text = tr("%1 projects, %2 entries, %3 hours.")
                       .arg(m_result->projects().size())
                       .arg(m_result->entries.size())
                       .arg(StoredForms::durationText(minutes));
    if (!m_result->problems.isEmpty())
        text += u' ' + tr("%1 problems: they are left out only when you agree.")
                           .arg(m_result->problems.size());
    return text;
}

bool ImportDialogueLogic::canImport() const {
    return m_result && m_result->error.isEmpty() && !m_result->entries.isEmpty() &&
           (m_result->problems.isEmpty() || m_skipProblems);
}
