#include "ProjectCollection.h"

#include "../Logging.h"
#include "../platform/CurrencyFormatter.h"
#include "../platform/Preferences.h"
#include "StoredForms.h"
#include "UndoCommand.h"

#include <QFileInfo>
#include <QSet>

namespace {

// The values of a project that editing takes over, customer included.
std::shared_ptr<Project> valuesOf(const Project &project) {
    auto values = project.copy();
    values->setCustomer(project.customer());
    return values;
}

// Runs step(0), step(1), ... one per turn of the event loop, while it returns true.
void inTurns(QObject *context, const std::function<bool(qsizetype)> &step, qsizetype i = 0) {
    QMetaObject::invokeMethod(
        context,
        [context, step, i] {
            if (step(i))
                inTurns(context, step, i + 1);
        },
        Qt::QueuedConnection);
}

void takeOver(Project &project, const Project &values) {
    project.setName(values.name());
    project.setDescription(values.description());
    project.setHourlyWage(values.hourlyWage());
    project.setRoundWhat(values.roundWhat());
    project.setRoundTo(values.roundTo());
    project.setRoundType(values.roundType());
    project.setCustomer(values.customer());
    project.setTags(values.tags());
}

} // namespace

ProjectCollection::ProjectCollection(Preferences &preferences, QObject *parent)
    : QObject(parent)
    , m_preferences(preferences)
    , m_hideFadedProjects(preferences.boolForKey(u"hideFadedProjects"))
    , m_order(preferences) {
    connect(&m_writer, &BackgroundWriter::resultsReady, this,
            &ProjectCollection::takeWriterResults);
}

ProjectCollection::~ProjectCollection() = default;

void ProjectCollection::setCurrencyFormatter(const CurrencyFormatter *formatter) {
    m_currency = formatter;
    for (const auto &project : std::as_const(m_projects))
        project->setCurrencyFormatter(formatter);
}

QStringList ProjectCollection::projectNames() const {
    QStringList names;
    for (const auto &project : m_projects)
        names.append(project->name());
    return names;
}

std::shared_ptr<Project> ProjectCollection::sharedProject(const Project *project) const {
    for (const auto &each : m_projects) {
        if (each.get() == project)
            return each;
    }
    return nullptr;
}

std::shared_ptr<Project> ProjectCollection::projectWithName(const QString &name) const {
    for (const auto &project : m_projects) {
        if (project->name() == name)
            return project;
    }
    return nullptr;
}

QList<std::shared_ptr<Entry>> ProjectCollection::workingEntries() const {
    QList<std::shared_ptr<Entry>> working;
    for (const auto &project : m_projects) {
        for (const auto &item : project->entries()) {
            if (item->isEntry() && item->isWorking())
                working.append(std::static_pointer_cast<Entry>(item));
        }
    }
    return working;
}

void ProjectCollection::setDataChanged(bool changed) {
    if (changed)
        m_serialised.clear();
    setChangedMark(changed);
}

void ProjectCollection::projectChanged(const Project *project) {
    m_serialised.invalidate(project);
    setChangedMark(true);
}

void ProjectCollection::setChangedMark(bool changed) {
    m_changed = changed;
    if (changed)
        ++m_changeCount;
    emit changedMarkChanged(changed);
    if (changed && m_finishedLoading && !m_file.isEmpty() &&
        m_preferences.integerForKey(u"crashProtection") != 0)
        scheduleSave();
}

void ProjectCollection::scheduleSave() {
    if (m_savePending)
        return;
    m_savePending = true;
    QMetaObject::invokeMethod(this, &ProjectCollection::writePendingChanges, Qt::QueuedConnection);
}

void ProjectCollection::writePendingChanges() {
    if (!m_savePending)
        return;
    m_savePending = false;
    if (m_changed && !m_file.isEmpty())
        submitSave(m_file.path());
}

void ProjectCollection::flushPendingSave() {
    writePendingChanges();
    m_writer.waitForIdle();
    takeWriterResults();
}

quint64 ProjectCollection::submitSave(const QString &path) {
    BackgroundWriter::Job job;
    job.path = path;
    job.pieces = m_serialised.pieces(m_projects);
    if (path == m_file.path()) {
        // While earlier writes are still out, the writer knows best what the file now is.
        job.check =
            isWriting() ? BackgroundWriter::Check::LastWritten : BackgroundWriter::Check::Identity;
        job.expected = m_file.identity();
    }
    m_lastSubmitted = m_writer.submit(std::move(job));
    m_submitted.append({m_lastSubmitted, m_changeCount});
    return m_lastSubmitted;
}

void ProjectCollection::takeWriterResults() {
    const QList<BackgroundWriter::Result> results = m_writer.takeResults();
    for (const BackgroundWriter::Result &result : results) {
        quint64 changeCount = 0;
        // Jobs that a later one replaced are never reported.
        while (!m_submitted.isEmpty() && m_submitted.first().first <= result.serial)
            changeCount = m_submitted.takeFirst().second;
        m_lastHandled = result.serial;
        m_lastResult = result;
        if (!result.ok) {
            emit saveFailed(result.error);
            continue;
        }
        m_file.take(result.path, result.identity);
        if (changeCount == m_changeCount) {
            setChangedMark(false);
            emit saved(result.path);
        }
    }
}

void ProjectCollection::newDatabase(const ProjectList &projects) {
    m_savePending = false;
    flushPendingSave();
    m_serialised.clear();
    m_projects = projects;
    for (const auto &project : std::as_const(m_projects))
        project->setCurrencyFormatter(m_currency);
    sortAllProjects();
    m_shown.update(m_projects);
    m_undoStack.clear();
    m_file.forget();
    setDataChanged(!projects.isEmpty());
    emit projectsChanged();
}

ProjectFile::LoadResult ProjectCollection::loadCollection(const QString &path) {
    // The document's own writes end first, so that what is read is what they left.
    m_savePending = false;
    flushPendingSave();
    ProjectFile::LoadResult result = ProjectFile::load(path);
    if (!result.ok)
        return result;
    m_finishedLoading = false;
    m_serialised.clear();
    m_undoStack.clear();
    m_projects = result.projects;
    for (const auto &project : std::as_const(m_projects))
        project->setCurrencyFormatter(m_currency);
    m_file.take(QFileInfo(path).absoluteFilePath(), result.contentHash);
    m_preferences.setObject(m_file.path(), u"LastOpenFile");
    m_preferences.synchronize();
    sortAllProjects();
    updateVisibleProjects();
    setDataChanged(false);
    m_finishedLoading = true;
    emit loaded(m_file.path());
    // With crash protection, the file's text is made project by project while the program is
    // idle, so that the first change does not wait for the whole document to be turned into
    // text. Any change ends it: its save makes what is still missing.
    if (m_preferences.integerForKey(u"crashProtection") != 0) {
        const quint64 changes = m_changeCount;
        const qsizetype count = m_projects.size();
        inTurns(this, [this, changes, count](qsizetype i) {
            if (m_changeCount != changes || m_projects.size() != count || i >= count)
                return false;
            m_serialised.pieces(m_projects.first(i + 1));
            return true;
        });
    }
    return result;
}

ProjectFile::SaveResult ProjectCollection::saveCollection(const QString &path) {
    m_savePending = false;
    // A save the user asked for makes the whole file anew.
    m_serialised.clear();
    const quint64 serial = submitSave(QFileInfo(path).absoluteFilePath());
    flushPendingSave();
    ProjectFile::SaveResult result;
    if (m_lastResult.serial == serial) {
        result.ok = m_lastResult.ok;
        result.error = m_lastResult.error;
    }
    return result;
}

QString ProjectCollection::makeStringFromMinutes(int minutes) {
    return StoredForms::durationText(minutes);
}

QString ProjectCollection::formattedWages(float wages) const {
    return (m_currency ? *m_currency : CurrencyFormatter::fallback()).format(wages);
}

QString ProjectCollection::statusBarInfo() const {
    int minutes = 0;
    float wages = 0;
    const auto filtered = [this](const ProjectItem &item) { return isEntryFiltered(item); };
    for (const auto &project : visibleProjects()) {
        minutes += filteredTotalDurationOfProject(*project);
        wages += project->totalWagesWithFilter(true, filtered);
    }
    return QStringLiteral("%1: %2\t%3: %4")
        .arg(tr("Total duration"), makeStringFromMinutes(minutes), tr("Total wages"),
             formattedWages(wages));
}

void ProjectCollection::changed(const Project *touched) {
    updateVisibleProjects();
    if (touched)
        m_serialised.invalidate(touched);
    m_markingAnnouncedChange = true;
    setChangedMark(true);
    m_markingAnnouncedChange = false;
}

void ProjectCollection::push(const QString &name, std::function<void()> perform,
                             std::function<void()> revert) {
    m_undoStack.push(new UndoCommand(name, std::move(perform), std::move(revert)));
}

void ProjectCollection::insertProject(const std::shared_ptr<Project> &project, qsizetype at) {
    project->setCurrencyFormatter(m_currency);
    m_projects.insert(std::clamp<qsizetype>(at, 0, m_projects.size()), project);
}

void ProjectCollection::addProject(const std::shared_ptr<Project> &project) {
    push(
        tr("Add Project"),
        [this, project] {
            insertProject(project, m_projects.size());
            changed(nullptr);
        },
        [this, project] {
            m_projects.removeAll(project);
            changed(nullptr);
        });
}

void ProjectCollection::deleteProject(const std::shared_ptr<Project> &project) {
    // Undoing puts the project back at the end of the list, not at its old place.
    push(
        tr("Delete Project"),
        [this, project] {
            m_projects.removeAll(project);
            changed(nullptr);
        },
        [this, project] {
            insertProject(project, m_projects.size());
            changed(nullptr);
        });
}

void ProjectCollection::addEntry(const std::shared_ptr<ProjectItem> &item,
                                 const std::shared_ptr<Project> &project,
                                 const QString &operationName) {
    push(
        operationName,
        [this, item, project] {
            project->addEntry(item);
            sortEntriesOfProject(*project);
            changed(project.get());
        },
        [this, item, project] {
            project->deleteEntry(item);
            changed(project.get());
        });
}

void ProjectCollection::deleteEntry(const std::shared_ptr<ProjectItem> &item,
                                    const std::shared_ptr<Project> &project) {
    deleteEntry(item, project, tr("Delete Entry"));
}

void ProjectCollection::deleteEntry(const std::shared_ptr<ProjectItem> &item,
                                    const std::shared_ptr<Project> &project,
                                    const QString &operationName) {
    push(
        operationName,
        [this, item, project] {
            project->deleteEntry(item);
            changed(project.get());
        },
        [this, item, project] {
            project->addEntry(item);
            sortEntriesOfProject(*project);
            changed(project.get());
        });
}

void ProjectCollection::addProjectsAndEntries(const QString &operationName,
                                              const ProjectList &projects,
                                              const QList<ItemsForProject> &items) {
    push(
        operationName,
        [this, projects, items] {
            for (const auto &project : projects) {
                insertProject(project, m_projects.size());
                sortEntriesOfProject(*project);
            }
            for (const auto &[project, added] : items) {
                for (const auto &item : added)
                    project->addEntry(item);
                sortEntriesOfProject(*project);
                m_serialised.invalidate(project.get());
            }
            changed(nullptr);
        },
        [this, projects, items] {
            for (const auto &project : projects)
                m_projects.removeAll(project);
            for (const auto &[project, added] : items) {
                QSet<const ProjectItem *> leaving;
                for (const auto &item : added)
                    leaving.insert(item.get());
                ItemList kept;
                for (const auto &item : project->entries()) {
                    if (!leaving.contains(item.get()))
                        kept.append(item);
                }
                project->setEntries(kept);
                m_serialised.invalidate(project.get());
            }
            changed(nullptr);
        });
}

void ProjectCollection::moveEntries(const ItemList &items, const std::shared_ptr<Project> &target) {
    const QString name = tr("Move Entry");
    // A copy: the items may be the source project's own list, which the moves change.
    const ItemList moving = items;
    m_undoStack.beginMacro(name);
    for (const auto &item : moving) {
        const auto source = sharedProject(item->parent());
        if (!source || source == target)
            continue;
        addEntry(item, target, name);
        deleteEntry(item, source, name);
    }
    m_undoStack.endMacro();
}

void ProjectCollection::editProject(const std::shared_ptr<Project> &project,
                                    const Project &values) {
    const auto now = valuesOf(values);
    const auto before = valuesOf(*project);
    push(
        tr("Edit Project"),
        [this, project, now] {
            takeOver(*project, *now);
            changed(project.get());
        },
        [this, project, before] {
            takeOver(*project, *before);
            changed(project.get());
        });
}

void ProjectCollection::editEntry(const std::shared_ptr<Entry> &entry, const Entry &values,
                                  bool stopped) {
    const auto now = values.copy();
    const auto before = entry->copy();
    // Pauses and the pause moment are kept by value, so that undo brings back pauses that the
    // edit deleted or closed.
    const PauseList pausesBefore = entry->pauseEntries();
    const QDateTime pausedBefore = entry->pausedAt();
    const auto apply = [this, entry](const Entry &v, bool stop) {
        entry->setDate(v.date());
        entry->setFromTime(v.fromTime());
        entry->setFromDate(v.fromDate());
        entry->setToTime(v.toTime());
        entry->setToDate(v.toDate());
        entry->setComment(v.comment());
        entry->setTime(v.time());
        entry->setIsWorking(v.isWorking());
        entry->setHasPeriod(v.hasPeriod());
        entry->setTags(v.tags());
        if (!v.hasPeriod())
            entry->deleteAllPauseEntries();
        if (stop && entry->isPaused())
            entry->resume();
        if (!v.isWorking() && entry->parent())
            sortEntriesOfProject(*entry->parent());
    };
    push(
        tr("Edit Entry"),
        [this, apply, entry, now, stopped] {
            apply(*now, stopped);
            changed(entry->parent());
        },
        [this, apply, entry, before, pausesBefore, pausedBefore] {
            apply(*before, false);
            entry->setPauseEntries(pausesBefore);
            entry->setPausedAt(pausedBefore);
            changed(entry->parent());
        });
}

void ProjectCollection::changeEntries(const QString &operationName,
                                      const QList<std::shared_ptr<Entry>> &entries,
                                      const std::function<void(Entry &)> &change) {
    struct State {
        std::shared_ptr<Entry> values;
        PauseList pauses;
        QDateTime pausedAt;
    };
    const auto capture = [](const Entry &entry) {
        return State{entry.copy(), entry.pauseEntries(), entry.pausedAt()};
    };
    const auto restore = [this](const QList<std::shared_ptr<Entry>> &targets,
                                const QList<State> &states) {
        for (qsizetype i = 0; i < targets.size(); ++i) {
            Entry &entry = *targets.at(i);
            const Entry &values = *states.at(i).values;
            entry.setFromTime(values.fromTime());
            entry.setFromDate(values.fromDate());
            entry.setToTime(values.toTime());
            entry.setToDate(values.toDate());
            entry.setTime(values.storedMinutes());
            entry.setIsWorking(values.isWorking());
            entry.setPauseEntries(states.at(i).pauses);
            entry.setPausedAt(states.at(i).pausedAt);
        }
        for (const auto &entry : targets) {
            if (entry->parent()) {
                sortEntriesOfProject(*entry->parent());
                m_serialised.invalidate(entry->parent());
            }
        }
    };
    QList<State> before;
    QList<State> after;
    for (const auto &entry : entries) {
        before << capture(*entry);
        change(*entry);
        after << capture(*entry);
    }
    // The change was worked out in place; the undo step makes it again as it is pushed.
    restore(entries, before);
    push(
        operationName,
        [this, restore, entries, after] {
            restore(entries, after);
            changed(nullptr);
        },
        [this, restore, entries, before] {
            restore(entries, before);
            changed(nullptr);
        });
}

void ProjectCollection::editFlatFeeEntry(const std::shared_ptr<FlatFeeEntry> &fee,
                                         const FlatFeeEntry &values) {
    const auto now = values.copy();
    const auto before = fee->copy();
    const auto apply = [this, fee](const FlatFeeEntry &v) {
        fee->setDate(v.date());
        fee->setAmount(v.amount());
        fee->setComment(v.comment());
        fee->setTags(v.tags());
        if (fee->parent())
            sortEntriesOfProject(*fee->parent());
        changed(fee->parent());
    };
    push(
        tr("Edit Entry"), [apply, now] { apply(*now); }, [apply, before] { apply(*before); });
}

void ProjectCollection::placeProject(const std::shared_ptr<Project> &project, int index,
                                     bool inVisibleList) {
    if (!inVisibleList) {
        m_projects.removeAll(project);
        m_projects.insert(std::clamp<qsizetype>(index, 0, m_projects.size()), project);
        return;
    }
    // The index counts shown projects: the project goes right behind the shown project that now
    // stands before it.
    ProjectList visible = m_shown.visibleProjects();
    const qsizetype oldIndex = visible.indexOf(project);
    visible.removeAll(project);
    index = int(std::clamp<qsizetype>(index, 0, visible.size()));
    visible.insert(index, project);
    qsizetype place = 0;
    if (index > 0) {
        place = m_projects.indexOf(visible[index - 1]) + (index < oldIndex ? 1 : 0);
    }
    m_projects.removeAll(project);
    m_projects.insert(std::clamp<qsizetype>(place, 0, m_projects.size()), project);
}

void ProjectCollection::moveProject(const std::shared_ptr<Project> &project, int index) {
    const bool inVisibleList = m_hideFadedProjects;
    const int oldIndex =
        int(inVisibleList ? visibleProjects().indexOf(project) : m_projects.indexOf(project));
    push(
        tr("Move Project"),
        [this, project, index, inVisibleList] {
            placeProject(project, index, inVisibleList);
            changed(nullptr);
        },
        [this, project, oldIndex, inVisibleList] {
            placeProject(project, oldIndex, inVisibleList);
            changed(nullptr);
        });
}

void ProjectCollection::assignCustomerWithID(int customerId,
                                             const std::shared_ptr<Project> &project) {
    const int before = project->customer();
    push(
        tr("Assign customer"),
        [this, project, customerId] {
            project->setCustomer(customerId);
            changed(project.get());
        },
        [this, project, before] {
            project->setCustomer(before);
            changed(project.get());
        });
}

std::shared_ptr<Entry>
ProjectCollection::startTimerInProject(const std::shared_ptr<Project> &project) {
    auto entry = Entry::startedIn(*project);
    addEntry(entry, project, tr("Start"));
    return entry;
}

void ProjectCollection::assignCustomerToProjects(int customerId, const ProjectList &projects) {
    for (const auto &project : projects) {
        project->setCustomer(customerId);
        m_serialised.invalidate(project.get());
    }
    changed(nullptr);
}

ProjectList ProjectCollection::removeCustomerFromProjects(int customerId) {
    ProjectList cleared;
    for (const auto &project : std::as_const(m_projects)) {
        if (project->customer() == customerId) {
            project->setCustomer(-1);
            m_serialised.invalidate(project.get());
            cleared.append(project);
        }
    }
    changed(nullptr);
    return cleared;
}

void ProjectCollection::columnClicked(const QString &column) {
    m_order.columnClicked(column, m_preferences);
    sortAllProjects();
    m_serialised.clear();
    updateVisibleProjects();
}

ProjectList ProjectCollection::projectsToExpand() const {
    ProjectList expanded;
    for (const auto &project : m_projects) {
        if (project->expanded())
            expanded.append(project);
    }
    return expanded;
}

void ProjectCollection::setHideFadedProjects(bool hide) {
    // The preference's change notice comes back here with the value already in force.
    if (hide == m_hideFadedProjects)
        return;
    m_hideFadedProjects = hide;
    m_preferences.setObject(hide, u"hideFadedProjects");
    updateVisibleProjects();
}

void ProjectCollection::updateVisibleProjects() {
    m_shown.update(m_projects);
    emit projectsChanged();
}

void ProjectCollection::setCurrentFilter(const Filter::Pointer &filter) {
    m_shown.setCurrentFilter(filter);
    updateVisibleProjects();
}

void ProjectCollection::setSearchText(const QString &text) {
    m_shown.setSearchText(text);
    updateVisibleProjects();
}
