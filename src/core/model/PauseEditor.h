#pragma once

#include "Entry.h"
#include "PauseConflicts.h"

#include <functional>

class QUndoStack;

// The logic of the pause table inside the entry sheet: its rows and texts, conflicts, adding,
// deleting and changing pauses as undoable steps of the document, the clamping of changed
// moments (the dialog beeps when told to), and the checks before the sheet may close.
class PauseEditor {
public:
    // documentChanged marks the document changed; viewUpdated lets the sheet recompute its
    // total time.
    PauseEditor(QUndoStack &undoStack, std::function<void()> documentChanged,
                std::function<void()> viewUpdated = {});
    PauseEditor(const PauseEditor &) = delete;
    PauseEditor &operator=(const PauseEditor &) = delete;

    // Shows the entry's pauses without marking the document changed.
    void setCurrentEntry(const std::shared_ptr<Entry> &entry);
    std::shared_ptr<Entry> currentEntry() const { return m_entry; }

    int rowCount() const;
    std::shared_ptr<PauseEntry> pauseAt(int row) const;
    bool hasConflicts() const { return m_conflicts.hasConflicts(); }
    const PauseConflicts &conflicts() const { return m_conflicts; }

    // Column texts: "pause_from", "pause_to" (short date, time without seconds), "pause_total"
    // ("%02d:%02d" of the length rounded to the nearest minute).
    QString fromText(int row) const;
    QString toText(int row) const;
    QString totalText(int row) const;
    bool showsConflictIcon(int row) const;
    // The row's texts are red while it conflicts with the selected row.
    bool isRowRed(int row, int selectedRow) const;

    // Appends a pause starting and ending at the entry's start; returns its row.
    int addPauseEntry();
    void deletePauseEntry(int row);
    // Undoable steps; index -1 appends.
    void add(const std::shared_ptr<PauseEntry> &pause, int index);
    void remove(const std::shared_ptr<PauseEntry> &pause);
    void setFrom(const std::shared_ptr<PauseEntry> &pause, const QDateTime &from);
    void setTo(const std::shared_ptr<PauseEntry> &pause, const QDateTime &to);

    // A moment typed into the table. A start before the entry's start, or an end after its end
    // (now, while it runs), is clamped; true means the dialog beeps.
    bool setFromInRow(int row, const QDateTime &from);
    bool setToInRow(int row, const QDateTime &to);

    enum class Closing { Close, Beep, ConflictAlert };
    // What closing the sheet does, given whether the cell being edited (if any) holds a valid
    // moment: beep and stay, show the conflict alert and stay, or close.
    Closing closingCheck(bool editedDateValid) const;
    static QString conflictMessage();
    static QString conflictInformativeText();

private:
    void updateView(bool markChanged);
    // The refresh that undo steps run: nothing once this editor is gone (the steps stay on the
    // document's stack).
    std::function<void()> refresher() const;

    QUndoStack &m_undoStack;
    std::function<void()> m_documentChanged;
    std::function<void()> m_viewUpdated;
    std::shared_ptr<Entry> m_entry;
    PauseConflicts m_conflicts;
    std::shared_ptr<PauseEditor *> m_alive;
};
