#include "PauseEditor.h"

#include "../platform/LocaleFormat.h"
#include "Clock.h"
#include "StoredForms.h"
#include "UndoCommand.h"

#include <QCoreApplication>
#include <QUndoStack>
#include <cmath>

namespace {

QString tr(const char *text) {
    return QCoreApplication::translate("PauseEditor", text);
}

} // namespace

PauseEditor::PauseEditor(QUndoStack &undoStack, std::function<void()> documentChanged,
                         std::function<void()> viewUpdated)
    : m_undoStack(undoStack)
    , m_documentChanged(std::move(documentChanged))
    , m_viewUpdated(std::move(viewUpdated))
    , m_alive(std::make_shared<PauseEditor *>(this)) {}

void PauseEditor::setCurrentEntry(const std::shared_ptr<Entry> &entry) {
    m_entry = entry;
    updateView(false);
}

int PauseEditor::rowCount() const {
    return m_entry ? int(m_entry->pauseEntries().size()) : 0;
}

std::shared_ptr<PauseEntry> PauseEditor::pauseAt(int row) const {
    Q_ASSERT_X(row >= 0 && row < rowCount(), "PauseEditor::pauseAt",
               "Invalid parameter not satisfying: row >= 0 && row < rowCount()");
    if (row < 0 || row >= rowCount())
        return nullptr;
    return m_entry->pauseEntries().at(row);
}

QString PauseEditor::fromText(int row) const {
    const auto pause = pauseAt(row);
    return pause ? LocaleFormat::formatPauseMoment(pause->from()) : QString();
}

QString PauseEditor::toText(int row) const {
    const auto pause = pauseAt(row);
    return pause ? LocaleFormat::formatPauseMoment(pause->to()) : QString();
}

QString PauseEditor::totalText(int row) const {
    const auto pause = pauseAt(row);
    if (!pause || !pause->hasFrom() || !pause->hasTo())
        return StoredForms::durationText(0);
    const int minutes = int(std::round(double(pause->toSecs() - pause->fromSecs()) / 60.0));
    return StoredForms::durationText(minutes);
}

bool PauseEditor::showsConflictIcon(int row) const {
    return !m_conflicts.conflictsOf(row).isEmpty();
}

bool PauseEditor::isRowRed(int row, int selectedRow) const {
    const auto pause = pauseAt(row);
    return pause && m_conflicts.isInConflictWith(selectedRow, pause.get());
}

int PauseEditor::addPauseEntry() {
    if (!m_entry)
        return -1;
    const QDateTime start = m_entry->fromAsDate();
    add(std::make_shared<PauseEntry>(start, start), -1);
    return rowCount() - 1;
}

void PauseEditor::deletePauseEntry(int row) {
    if (const auto pause = row >= 0 && row < rowCount() ? pauseAt(row) : nullptr)
        remove(pause);
}

void PauseEditor::add(const std::shared_ptr<PauseEntry> &pause, int index) {
    const auto entry = m_entry;
    if (!entry)
        return;
    m_undoStack.push(new UndoCommand(
        tr("Add pause entry"),
        [refresh = refresher(), entry, pause, index] {
            PauseList pauses = entry->pauseEntries();
            pauses.insert(index < 0 ? pauses.size() : std::min<qsizetype>(index, pauses.size()),
                          pause);
            entry->setPauseEntries(pauses);
            refresh();
        },
        [refresh = refresher(), entry, pause] {
            PauseList pauses = entry->pauseEntries();
            pauses.removeAll(pause);
            entry->setPauseEntries(pauses);
            refresh();
        }));
}

void PauseEditor::remove(const std::shared_ptr<PauseEntry> &pause) {
    const auto entry = m_entry;
    if (!entry)
        return;
    const int index = int(entry->pauseEntries().indexOf(pause));
    if (index < 0)
        return;
    m_undoStack.push(new UndoCommand(
        tr("Delete pause entry"),
        [refresh = refresher(), entry, pause] {
            PauseList pauses = entry->pauseEntries();
            pauses.removeAll(pause);
            entry->setPauseEntries(pauses);
            refresh();
        },
        [refresh = refresher(), entry, pause, index] {
            PauseList pauses = entry->pauseEntries();
            pauses.insert(std::min<qsizetype>(index, pauses.size()), pause);
            entry->setPauseEntries(pauses);
            refresh();
        }));
}

void PauseEditor::setFrom(const std::shared_ptr<PauseEntry> &pause, const QDateTime &from) {
    const QDateTime before = pause->from();
    m_undoStack.push(new UndoCommand(
        tr("Edit pause entry"),
        [refresh = refresher(), pause, from] {
            pause->setFrom(from);
            refresh();
        },
        [refresh = refresher(), pause, before] {
            pause->setFrom(before);
            refresh();
        }));
}

void PauseEditor::setTo(const std::shared_ptr<PauseEntry> &pause, const QDateTime &to) {
    const QDateTime before = pause->to();
    m_undoStack.push(new UndoCommand(
        tr("Edit pause entry"),
        [refresh = refresher(), pause, to] {
            pause->setTo(to);
            refresh();
        },
        [refresh = refresher(), pause, before] {
            pause->setTo(before);
            refresh();
        }));
}

bool PauseEditor::setFromInRow(int row, const QDateTime &from) {
    const auto pause = pauseAt(row);
    if (!pause)
        return false;
    const PauseConflicts::Clamped clamped = PauseConflicts::clampedFrom(from, *m_entry);
    setFrom(pause, clamped.moment);
    return clamped.beep;
}

bool PauseEditor::setToInRow(int row, const QDateTime &to) {
    const auto pause = pauseAt(row);
    if (!pause)
        return false;
    const PauseConflicts::Clamped clamped = PauseConflicts::clampedTo(to, *m_entry);
    setTo(pause, clamped.moment);
    return clamped.beep;
}

PauseEditor::Closing PauseEditor::closingCheck(bool editedDateValid) const {
    if (!editedDateValid)
        return Closing::Beep;
    return hasConflicts() ? Closing::ConflictAlert : Closing::Close;
}

QString PauseEditor::conflictMessage() {
    return tr("Conflicts in pause entries.");
}

QString PauseEditor::conflictInformativeText() {
    return tr("There are overlapping pause entries.");
}

std::function<void()> PauseEditor::refresher() const {
    return [alive = std::weak_ptr<PauseEditor *>(m_alive)] {
        if (const auto editor = alive.lock())
            (*editor)->updateView(true);
    };
}

void PauseEditor::updateView(bool markChanged) {
    m_conflicts.update(m_entry ? m_entry->pauseEntries() : PauseList());
    if (m_viewUpdated)
        m_viewUpdated();
    if (markChanged && m_documentChanged)
        m_documentChanged();
}
