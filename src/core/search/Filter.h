#pragma once

#include "MPSearchQuery.h"

// A named pair of queries: one selects projects, one selects entries within the shown projects.
// A missing query selects nothing out; the flags decide, when the filter is stored from the
// editors, whether a query is kept at all.
class Filter : public KeyedCoding {
public:
    using Pointer = std::shared_ptr<Filter>;

    Filter();

    QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    MPSearchQuery::Pointer projectQuery() const { return m_projectQuery; }
    void setProjectQuery(const MPSearchQuery::Pointer &query) { m_projectQuery = query; }
    MPSearchQuery::Pointer entryQuery() const { return m_entryQuery; }
    void setEntryQuery(const MPSearchQuery::Pointer &query) { m_entryQuery = query; }
    bool isProjectsQueryActive() const { return m_projectsQueryActive; }
    void setIsProjectsQueryActive(bool active) { m_projectsQueryActive = active; }
    bool isEntriesQueryActive() const { return m_entriesQueryActive; }
    void setIsEntriesQueryActive(bool active) { m_entriesQueryActive = active; }

    QString className() const override { return QStringLiteral("Filter"); }
    void encodeWithCoder(KeyedArchiver &coder) const override;
    static KeyedObject initWithCoder(KeyedUnarchiver &coder);

    // A list of filters as a keyed archive, and back. Reading fails (with the reason) when the
    // data is no archive of a list of filters.
    static QByteArray archiveList(const QList<Pointer> &filters);
    static std::optional<QList<Pointer>> unarchiveList(const QByteArray &data,
                                                       QString *error = nullptr);
    // Replaces filters by the file's list when the file exists; a missing file leaves them as
    // they are, and so does one that cannot be read (logged; false, with the reason in error).
    static bool readListFile(const QString &path, QList<Pointer> &filters,
                             QString *error = nullptr);

private:
    QString m_name;
    MPSearchQuery::Pointer m_projectQuery;
    MPSearchQuery::Pointer m_entryQuery;
    bool m_projectsQueryActive = true;
    bool m_entriesQueryActive = true;
};
