#pragma once

#include "editors/EntrySheetLogic.h"

#include <QDialog>

class PauseEditorView;
class Preferences;
class QButtonGroup;
class QDateEdit;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QToolButton;
class QLineEdit;
class TagStorage;
class TimeControlWidget;

// The entry sheet: a window-modal dialog over the main window in which a timed entry is created
// or changed. It shows EntrySheetLogic (which holds every rule) and hands it what the user does.
//
// newEntry() and editEntry() fill the sheet and open it; stopEntry() opens it for a running
// entry with its timer stopped now. When the sheet is accepted, the entry is added to the
// document ("Add Entry") or changed there ("Edit Entry"), and entryAdded() or entryEdited() is
// emitted before finished(); a cancelled sheet changes nothing.
class EntrySheet : public QDialog {
    Q_OBJECT

public:
    EntrySheet(ProjectCollection &collection, Preferences &preferences, UserAlerts &alerts,
               TagStorage *tags, QWidget *parent = nullptr);
    ~EntrySheet() override;

    // A new entry in the project; selectedItem is the list's selected entry or flat fee of
    // that project, if one is selected.
    void newEntry(const std::shared_ptr<Project> &project,
                  const std::shared_ptr<ProjectItem> &selectedItem = {});
    void editEntry(const std::shared_ptr<Entry> &entry);
    // The entry's sheet with "Stop" pressed: "to" is now and the edit finishes the timer.
    void stopEntry(const std::shared_ptr<Entry> &entry);

    EntrySheetLogic &logic() { return m_logic; }
    PauseEditorView *pauseEditorView() const { return m_pauseView; }

    void accept() override;
    void reject() override;

signals:
    void entryAdded(const std::shared_ptr<Entry> &entry, const std::shared_ptr<Project> &project);
    void entryEdited(const std::shared_ptr<Entry> &entry);

private:
    void buildLayout();
    void connectControls();
    // Shows the logic's state in the controls.
    void sync();
    void loadTexts();
    void focusFirstField();

    EntrySheetLogic m_logic;
    QRadioButton *m_durationMode;
    QRadioButton *m_periodMode;
    QButtonGroup *m_modes;
    QDateEdit *m_dayDate;
    TimeControlWidget *m_timeCtrl;
    QDateEdit *m_fromDate;
    TimeControlWidget *m_fromTimeCtrl;
    QDateEdit *m_toDate;
    TimeControlWidget *m_toTimeCtrl;
    QPushButton *m_startButton;
    QPushButton *m_stopButton;
    QLabel *m_pauseCaption;
    QLabel *m_pauseLabel;
    QLabel *m_totalCaption;
    QLabel *m_totalLabel;
    QPlainTextEdit *m_comment;
    QLineEdit *m_tags;
    QToolButton *m_pauseToggle;
    QLabel *m_conflictMarker;
    PauseEditorView *m_pauseView;
    QPushButton *m_acceptButton;
};
