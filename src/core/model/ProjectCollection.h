#pragma once

#include "../search/Filter.h"
#include "BackgroundWriter.h"
#include "CustomerAssignments.h"
#include "Entry.h"
#include "EntryOrder.h"
#include "FlatFeeEntry.h"
#include "OpenedFile.h"
#include "ProjectFile.h"
#include "SerialisedProjects.h"
#include "ShownProjects.h"

#include <QObject>
#include <QUndoStack>

class CurrencyFormatter;
class Preferences;

// The document: every project, the undo stack, the changed mark and the order of entries. Every
// change the user can undo goes through here under its action name; the projects shown (customer
// visibility, the current filter, the search field) are kept here; with crash protection on, a
// change after a completed load is written to the file at once: at the end of the event-loop
// turn (so a compound change is written once), by a writer thread, so the window does not wait
// for the disk. Only the projects that changed are turned into text again.
class ProjectCollection : public QObject, public CustomerAssignments {
    Q_OBJECT

public:
    explicit ProjectCollection(Preferences &preferences, QObject *parent = nullptr);
    ~ProjectCollection() override;

    // Which customers exist and are shown; without one, no customer exists.
    void setCustomerDirectory(const CustomerDirectory *directory) {
        m_shown.setCustomerDirectory(directory);
    }
    void setCurrencyFormatter(const CurrencyFormatter *formatter);

    const ProjectList &projectArray() const { return m_projects; }
    QStringList projectNames() const;
    std::shared_ptr<Project> projectWithName(const QString &name) const;
    // The document's own pointer to the project (an item's parent, a row of a view); null when the
    // project is not in the document (any more).
    std::shared_ptr<Project> sharedProject(const Project *project) const;
    bool projectExists(const QString &name) const { return projectWithName(name) != nullptr; }
    QList<std::shared_ptr<Entry>> workingEntries() const;
    int numWorkingEntries() const { return int(workingEntries().size()); }

    bool dataChanged() const { return m_changed; }
    // True while the changed mark is set for a change that projectsChanged() has just announced:
    // views that reload on both need not reload twice.
    bool isMarkingAnnouncedChange() const { return m_markingAnnouncedChange; }
    // Setting the mark from outside says nothing about what changed: the next save makes the
    // whole file anew. projectChanged() says that only this project changed.
    void setDataChanged(bool changed);
    void projectChanged(const Project *project);
    bool finishedLoading() const { return m_finishedLoading; }
    // Empties the document and its undo history; the file it was read from is forgotten. Given
    // projects (a restored backup) fill the new document, which is then unsaved.
    void newDatabase(const ProjectList &projects = {});

    // Reads the file and replaces the document with it; a failure leaves the document exactly as
    // it was.
    ProjectFile::LoadResult loadCollection(const QString &path);
    // Writes the document and waits until it is on disk. When the path is the file that was
    // loaded or last saved, it is first checked (under the file's lock) that no other program has
    // changed it since; if one has, nothing is written and the reason says so.
    ProjectFile::SaveResult saveCollection(const QString &path);
    // The file loaded or last saved; empty for a new document.
    QString currentFile() const { return m_file.path(); }
    // Whether another program has changed the current file since it was loaded or saved.
    bool currentFileChangedOnDisk() const { return m_file.changedOnDisk(); }
    // Takes the file as it is on disk now as the one this document was made from, so that the
    // next save replaces what another program wrote (the user chose to keep this version).
    void adoptFileOnDisk() { m_file.adoptFileOnDisk(); }
    // Hands a crash-protection save that is still waiting to the writer and waits until every
    // write has ended (Quit, and before the document is replaced).
    void flushPendingSave();
    // A write handed to the writer has not been reported back yet: the file on disk may be
    // changing under the program's own hand.
    bool isWriting() const { return m_lastHandled != m_lastSubmitted; }

    QUndoStack *undoStack() override { return &m_undoStack; }

    static QString makeStringFromMinutes(int minutes);
    QString formattedTime(int minutes) const { return makeStringFromMinutes(minutes); }
    QString formattedWages(float wages) const;
    // "Total duration: 12:30\tTotal wages: $562.50" over the shown projects and entries.
    QString statusBarInfo() const;

    // Undoable changes.
    void addProject(const std::shared_ptr<Project> &project);
    void deleteProject(const std::shared_ptr<Project> &project);
    void addEntry(const std::shared_ptr<ProjectItem> &item, const std::shared_ptr<Project> &project,
                  const QString &operationName = {});
    void deleteEntry(const std::shared_ptr<ProjectItem> &item,
                     const std::shared_ptr<Project> &project);
    void deleteEntry(const std::shared_ptr<ProjectItem> &item,
                     const std::shared_ptr<Project> &project, const QString &operationName);
    // Adds whole projects (holding their entries) and items to projects of the document, as one
    // step under the name; made for imports of many thousands of entries at once.
    using ItemsForProject = std::pair<std::shared_ptr<Project>, ItemList>;
    void addProjectsAndEntries(const QString &operationName, const ProjectList &projects,
                               const QList<ItemsForProject> &items);
    // Moves items from their projects into another, as one step named "Move Entry".
    void moveEntries(const ItemList &items, const std::shared_ptr<Project> &target);
    void editProject(const std::shared_ptr<Project> &project, const Project &values);
    void editEntry(const std::shared_ptr<Entry> &entry, const Entry &values, bool stopped);
    // Applies the change to each entry as one undo step under the name; undo brings back the
    // entries' texts, minutes, flags, pauses and pause moments as they were.
    void changeEntries(const QString &operationName, const QList<std::shared_ptr<Entry>> &entries,
                       const std::function<void(Entry &)> &change);
    void editFlatFeeEntry(const std::shared_ptr<FlatFeeEntry> &fee, const FlatFeeEntry &values);
    void moveProject(const std::shared_ptr<Project> &project, int index);
    void assignCustomerWithID(int customerId, const std::shared_ptr<Project> &project);
    // A running period entry started now (clock time rounded when the project rounds clock
    // times), added as "Start".
    std::shared_ptr<Entry> startTimerInProject(const std::shared_ptr<Project> &project);

    // Not undoable.
    void assignCustomerToProjects(int customerId, const ProjectList &projects) override;
    ProjectList removeCustomerFromProjects(int customerId) override;

    // Order of entries.
    QString sortingColumn() const { return m_order.sortingColumn(); }
    bool ascending() const { return m_order.ascending(); }
    void sortAllProjects() { m_order.sortAllProjects(m_projects); }
    void sortEntriesOfProject(Project &project) { m_order.sortEntriesOfProject(project); }
    // A click on a column heading: that column sorts, and the direction flips on every click.
    void columnClicked(const QString &column);

    // Expansion state for the list: projects whose row is expanded, and those to collapse
    // because their customer is not shown (which includes projects without one, deliberately).
    ProjectList projectsToExpand() const;
    ProjectList collapseFadedProjects() const { return m_shown.collapseFadedProjects(m_projects); }
    bool hideFadedProjects() const { return m_hideFadedProjects; }
    void setHideFadedProjects(bool hide);

    // What is shown.
    void updateVisibleProjects() override;
    const ProjectList &visibleProjects() const { return m_shown.visibleProjects(); }
    void setCurrentFilter(const Filter::Pointer &filter);
    Filter::Pointer currentFilter() const { return m_shown.currentFilter(); }
    void setSearchText(const QString &text);
    QString searchText() const { return m_shown.searchText(); }
    Filter::Pointer searchFilter() const { return m_shown.searchFilter(); }
    ItemList filteredEntriesForProject(const Project &project) const {
        return m_shown.filteredEntriesForProject(project);
    }
    ItemList filterEntriesArray(const ItemList &items) const {
        return m_shown.filterEntriesArray(items);
    }
    bool isProjectFiltered(const Project &project) const {
        return m_shown.isProjectFiltered(project);
    }
    bool isEntryFiltered(const ProjectItem &item) const { return m_shown.isEntryFiltered(item); }
    int filteredTotalDurationOfProject(const Project &project) const {
        return m_shown.filteredTotalDurationOfProject(project);
    }

signals:
    // The projects, their entries or what is shown changed: views reload.
    void projectsChanged();
    void changedMarkChanged(bool changed);
    void loaded(const QString &path);
    // The document as it is now is on disk.
    void saved(const QString &path);
    // A save (crash protection's included) did not happen; the changed mark stays, and the next
    // change or Save tries again.
    void saveFailed(const QString &reason);

private:
    // After an undoable change: the shown projects are updated and the mark set; touched is the
    // project whose own text changed (none when only the list of projects changed).
    void changed(const Project *touched);
    void setChangedMark(bool changed);
    void push(const QString &name, std::function<void()> perform, std::function<void()> revert);
    void insertProject(const std::shared_ptr<Project> &project, qsizetype at);
    void placeProject(const std::shared_ptr<Project> &project, int index, bool inVisibleList);
    void scheduleSave();
    void writePendingChanges();
    // Hands the document's file to the writer; returns the job's serial number.
    quint64 submitSave(const QString &path);
    // Takes in what the writer reports: a written file becomes the current one, and clears the
    // mark when no change came after it.
    void takeWriterResults();

    Preferences &m_preferences;
    const CurrencyFormatter *m_currency = nullptr;
    ProjectList m_projects;
    ShownProjects m_shown;
    bool m_changed = false;
    bool m_hideFadedProjects = false;
    bool m_finishedLoading = false;
    EntryOrder m_order;
    QUndoStack m_undoStack;
    OpenedFile m_file;
    SerialisedProjects m_serialised;
    bool m_savePending = false;
    // Every setting of the mark counts; a write clears it only when it holds the latest change.
    quint64 m_changeCount = 0;
    quint64 m_lastSubmitted = 0;
    quint64 m_lastHandled = 0;
    // Jobs not yet reported, with the change count each holds.
    QList<std::pair<quint64, quint64>> m_submitted;
    BackgroundWriter::Result m_lastResult;
    bool m_markingAnnouncedChange = false;
    // Last: its thread ends (after the last write) before the document goes.
    BackgroundWriter m_writer;
};
