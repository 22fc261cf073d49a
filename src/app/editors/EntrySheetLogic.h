#pragma once

#include "WBTimeControl.h"
#include "model/PauseEditor.h"

#include <QDate>
#include <QObject>
#include <memory>

class Entry;
class Preferences;
class Project;
class ProjectCollection;
class ProjectItem;
class UserAlerts;

// The rules of the entry sheet, without a window: its two modes (a day and a duration, or a
// period from and to), which control is enabled and shown in each case, the proposed values,
// the snapping of the time controls by the project's rounding, keeping the period from running
// backwards, the pause and total labels, starting and stopping a timer inside the sheet, the
// checks before it closes and the entry it finally adds to the document or changes there.
//
// The time controls and the pause editor are held here; EntrySheet shows them and the rest.
class EntrySheetLogic : public QObject {
    Q_OBJECT

public:
    enum Mode { DurationMode = 0, PeriodMode = 1 };

    // The controls whose state is not held by a time control.
    struct Controls {
        bool dayEnabled = true;
        bool fromDateEnabled = false;
        bool toDateEnabled = false;
        bool startEnabled = false;
        bool startVisible = true;
        bool stopEnabled = false;
        bool stopVisible = false;
        bool labelsEnabled = false;
        bool pauseEditorToggleEnabled = false;
    };

    EntrySheetLogic(ProjectCollection &collection, Preferences &preferences, UserAlerts &alerts,
                    QObject *parent = nullptr);

    // Fills the sheet for a new entry in the project. The selected item is the list's selected
    // row when that is an entry or a flat fee of the project (its pause time shows in the pause
    // label, as the list's selection does).
    void newTimerEntry(const std::shared_ptr<Project> &project,
                       const std::shared_ptr<ProjectItem> &selectedItem = {});
    // Fills the sheet from an entry of the document; a running one shows "to" at now, fixed.
    void edit(const std::shared_ptr<Entry> &entry);

    bool isNewEntry() const { return m_isNew; }
    // "new entry" or "edit entry"; the accept button reads "Create" or "Accept".
    QString title() const;
    QString acceptButtonTitle() const;
    Mode mode() const { return m_mode; }
    const Controls &controls() const { return m_controls; }

    WBTimeControl &timeCtrl() { return m_timeCtrl; }
    WBTimeControl &fromTimeCtrl() { return m_fromTimeCtrl; }
    WBTimeControl &toTimeCtrl() { return m_toTimeCtrl; }
    QDate dayDate() const { return m_dayDate; }
    QDate fromDate() const { return m_fromDate; }
    QDate toDate() const { return m_toDate; }
    QString pauseLabel() const { return m_pauseLabel; }
    QString totalLabel() const { return m_totalLabel; }
    QString comment() const { return m_comment; }
    void setComment(const QString &comment) { m_comment = comment; }
    QString tags() const { return m_tags; }
    void setTags(const QString &tags) { m_tags = tags; }

    PauseEditor &pauseEditor() { return m_pauseEditor; }
    bool isPauseEditorShown() const { return m_pauseEditorShown; }
    // The toggle: shows or hides the pause editor and stores "isPauseEditorHidden".
    void setPauseEditorShown(bool shown);
    bool isConflictMarkerShown() const { return m_pauseEditor.hasConflicts(); }

    std::shared_ptr<Project> selectedProject() const { return m_selectedProject; }
    std::shared_ptr<Entry> editedEntry() const { return m_entry; }

    // The radio rows.
    void selectedTime();
    void selectedPeriod();
    void selectMode(Mode mode);
    // After a stepper click or typing in the from or to control: a period that would run
    // backwards beeps and the control takes the other end's time.
    void changedFrom();
    void changedTo();
    void changedAnyTimeControl(const WBTimeControl &sender);
    // The date pickers: a from day after the to day (or the reverse) beeps and takes the other
    // end's day and time.
    void changedPeriodFromDate(QDate date);
    void changedPeriodToDate(QDate date);
    void changedPeriodDate(QDate date);
    void pressedStart();
    void pressedStop();
    // Recomputes the labels; returns the net minutes of the period, negative when it runs
    // backwards (0 in the duration mode).
    int recalculateTotalTime();

    // The accept button, told whether the pause being typed (if any) is a valid moment. Beeps or
    // shows the conflict alert and returns false to keep the sheet open; true closes it.
    bool doneCreateEntry(bool editedDateValid);
    void cancelCreateEntry();
    // After the sheet closed: adds the new entry or changes the edited one through the document
    // (undoable as "Add Entry" / "Edit Entry"), unless the sheet was cancelled or the period
    // runs backwards ("Date range error.", the input is lost). Returns the entry, or null.
    std::shared_ptr<Entry> newEntrySheetDidEnd();

    static QString dateRangeMessage();
    static QString dateRangeInformativeText();

signals:
    // Something besides the time controls changed: the sheet shows the state again.
    void changed();
    // The pause editor's entry or its pauses changed: the table shows them again.
    void pausesChanged();
    void entryAdded(const std::shared_ptr<Entry> &entry, const std::shared_ptr<Project> &project);
    void entryEdited(const std::shared_ptr<Entry> &entry);

private:
    void applyRounding();
    void showMode(Mode mode);
    // The period's ends as moments (seconds 0).
    QDateTime fromMoment() const;
    QDateTime toMoment() const;
    void keepPeriod(WBTimeControl &changed, const WBTimeControl &other);

    ProjectCollection &m_collection;
    Preferences &m_preferences;
    UserAlerts &m_alerts;
    WBTimeControl m_timeCtrl;
    WBTimeControl m_fromTimeCtrl;
    WBTimeControl m_toTimeCtrl;
    PauseEditor m_pauseEditor;
    Controls m_controls;
    Mode m_mode = DurationMode;
    bool m_isNew = true;
    QDate m_dayDate;
    QDate m_fromDate;
    QDate m_toDate;
    QString m_pauseLabel;
    QString m_totalLabel;
    QString m_comment;
    QString m_tags;
    bool m_pauseEditorShown = false;
    bool m_canceledCreating = false;
    bool m_stoppedEntry = false;
    std::shared_ptr<Project> m_selectedProject;
    // The list's selected row: the edited entry, or what was selected for a new one (none: the
    // project's row).
    std::shared_ptr<ProjectItem> m_selectedItem;
    std::shared_ptr<Entry> m_entry;
};
