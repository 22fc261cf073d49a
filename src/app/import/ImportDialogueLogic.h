#pragma once

#include "import/ImportSources.h"

#include <QCoreApplication>

// The rules of the import dialogue, without a window: the source follows the chosen file or
// folder when that is obvious, a preview is made of what was read, and Import is possible only
// for a preview with something to import whose problems (if any) the user agreed to leave out.
class ImportDialogueLogic {
    Q_DECLARE_TR_FUNCTIONS(ImportDialogueLogic)

public:
    ImportSources::Source source() const { return m_source; }
    void setSource(ImportSources::Source source);
    QString path() const { return m_path; }
    // Takes the path and answers the source it is detected as, which becomes the source.
    std::optional<ImportSources::Source> setPath(const QString &path);
    // Timewarrior's tag that names the project: empty for the first tag, else a pattern.
    void setProjectTagPattern(const QString &pattern);

    bool canPreview() const { return !m_path.isEmpty(); }
    // Reads the source (a cancelled read keeps no preview at all).
    void readPreview(const ImportReader::Progress &progress);
    bool hasPreview() const { return m_result.has_value(); }
    const ImportResult &result() const { return *m_result; }

    // Rows of the preview: project, customer, entries, hours ("HH:MM"), running timers.
    QList<QStringList> projectRows() const;
    // "where: what" per problem.
    QStringList problemLines() const;
    // One line under the preview: what will be imported, or why nothing can be.
    QString summary() const;

    void setSkipProblems(bool skip) { m_skipProblems = skip; }
    bool canImport() const;

private:
    void forgetPreview() { m_result.reset(); }

    ImportSources::Source m_source = ImportSources::Source::Timewarrior;
    QString m_path;
    QString m_pattern;
    std::optional<ImportResult> m_result;
    bool m_skipProblems = false;
};
