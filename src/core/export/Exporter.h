#pragma once

#include "../model/Project.h"

#include <QCoreApplication>
#include <QList>
#include <QStringList>
#include <functional>

class EntryTexts;
class ProjectCollection;

// Writes the chosen projects of a collection to one file as a plain-text report. It is the base
// of every report writer: each takes the same choices (projects by name, which project and entry
// fields, whether the current filter applies, the text encoding) through exportProjects().
class Exporter {
    Q_DECLARE_TR_FUNCTIONS(Exporter)

public:
    struct Result {
        bool ok = false;
        QString error;          // why nothing was written
        bool cancelled = false; // stopped on request; nothing was written
    };

    // Positions in the field choices.
    enum ProjectField { ProjectName, ProjectDescription, TotalDuration, HourlyWages, TotalWages };
    enum EntryField { Day, Period, Duration, EntryDescription, State };

    Exporter() = default;
    virtual ~Exporter();
    Exporter(const Exporter &) = delete;
    Exporter &operator=(const Exporter &) = delete;

    // The source of the projects; not owned.
    void setProjectCollection(ProjectCollection *collection) { m_projectCollection = collection; }
    ProjectCollection *projectCollection() const { return m_projectCollection; }

    // Called after each project has been put into the report, with how many are done of how many.
    using ProgressHandler = std::function<void(int done, int total)>;
    void setProgressHandler(ProgressHandler handler) { m_progressHandler = std::move(handler); }
    const ProgressHandler &progressHandler() const { return m_progressHandler; }

    // Asked after each project and before the file is written: true stops the export, which then
    // writes nothing.
    using CancelCheck = std::function<bool()>;
    void setCancelCheck(CancelCheck check) { m_cancelCheck = std::move(check); }
    const CancelCheck &cancelCheck() const { return m_cancelCheck; }

    // Writes every project whose name is among the names (so same-named projects all go), in
    // the collection's order. With applyFilter, projects and entries the current filter hides are
    // left out. The encoding is any name or alias of TextEncodings.
    virtual Result exportProjects(const QStringList &projectNames, const QList<bool> &projectFields,
                                  const QList<bool> &entryFields, const QString &path,
                                  bool applyFilter, const QString &encoding);

protected:
    void reportProgress(int done, qsizetype total) const {
        if (m_progressHandler)
            m_progressHandler(done, int(total));
    }
    bool isCancelled() const { return m_cancelCheck && m_cancelCheck(); }
    static Result cancelled() { return {false, {}, true}; }
    ProjectList selectedProjects(const QStringList &projectNames, bool applyFilter) const;
    bool isLeftOut(const ProjectItem &item, bool applyFilter) const;
    // "%02d:%02d" of the hours and minutes.
    static QString hoursAndMinutes(int minutes);
    static bool chosen(const QList<bool> &fields, int index) {
        return index < fields.size() && fields[index];
    }
    static Result unknownEncoding(const QString &encoding);

private:
    QString entryText(const ProjectItem &item, const QList<bool> &entryFields,
                      EntryTexts &texts) const;

    ProjectCollection *m_projectCollection = nullptr;
    ProgressHandler m_progressHandler;
    CancelCheck m_cancelCheck;
};
