#include "editors/EntrySheetLogic.h"

#include "model/Clock.h"
#include "model/HelpFunctions.h"
#include "model/ProjectCollection.h"
#include "model/StoredForms.h"
#include "platform/Preferences.h"
#include "platform/UserAlerts.h"

namespace {

const QString pauseEditorHiddenKey = QStringLiteral("isPauseEditorHidden");

// A stored date, or today where it does not parse.
QDate dayOrToday(const QString &stored) {
    const QDate day = StoredForms::parseDate(stored);
    return day.isValid() ? day : Clock::now().date();
}

void setClockTime(WBTimeControl &control, const QString &stored) {
    const int minutes = StoredForms::parseTime(stored);
    control.setHour(minutes < 0 ? 0 : minutes / 60);
    control.setMinute(minutes < 0 ? 0 : minutes % 60);
}

} // namespace

EntrySheetLogic::EntrySheetLogic(ProjectCollection &collection, Preferences &preferences,
                                 UserAlerts &alerts, QObject *parent)
    : QObject(parent)
    , m_collection(collection)
    , m_preferences(preferences)
    , m_alerts(alerts)
    , m_pauseEditor(
          *collection.undoStack(), [this] { m_collection.setDataChanged(true); },
          [this] {
              emit pausesChanged();
              recalculateTotalTime();
              emit changed();
          }) {
    // The from and to controls show clock times in the user's format. The duration control
    // counts hours and minutes: on every clock it reads 0 to 23 hours and has no morning or
    // afternoon field.
    for (WBTimeControl *control : {&m_timeCtrl, &m_fromTimeCtrl, &m_toTimeCtrl})
        control->setAlerts(&alerts);
    m_timeCtrl.setIsLocalizing(false);
    connect(&m_fromTimeCtrl, &WBTimeControl::stepped, this, &EntrySheetLogic::changedFrom);
    connect(&m_toTimeCtrl, &WBTimeControl::stepped, this, &EntrySheetLogic::changedTo);
    connect(&m_fromTimeCtrl, &WBTimeControl::edited, this,
            [this] { changedAnyTimeControl(m_fromTimeCtrl); });
    connect(&m_toTimeCtrl, &WBTimeControl::edited, this,
            [this] { changedAnyTimeControl(m_toTimeCtrl); });
}

QString EntrySheetLogic::title() const {
    return m_isNew ? tr("new entry") : tr("edit entry");
}

QString EntrySheetLogic::acceptButtonTitle() const {
    return m_isNew ? tr("Create") : tr("Accept");
}

QString EntrySheetLogic::dateRangeMessage() {
    return tr("Date range error.");
}

QString EntrySheetLogic::dateRangeInformativeText() {
    return tr("The 'to' time must be after the 'from' time.");
}

void EntrySheetLogic::newTimerEntry(const std::shared_ptr<Project> &project,
                                    const std::shared_ptr<ProjectItem> &selectedItem) {
    m_isNew = true;
    m_entry.reset();
    m_selectedProject = project;
    m_selectedItem = selectedItem;
    m_canceledCreating = false;
    m_stoppedEntry = false;

    const QDate today = Clock::now().date();
    m_dayDate = today;
    const QTime proposed = m_preferences.timeForKey(u"defaultTime");
    m_timeCtrl.setHour(proposed.isValid() ? proposed.hour() : 0);
    m_timeCtrl.setMinute(proposed.isValid() ? proposed.minute() : 0);
    m_comment.clear();
    m_tags.clear();
    m_fromTimeCtrl.setHour(9);
    m_fromTimeCtrl.setMinute(0);
    m_fromDate = today;
    m_toTimeCtrl.setHour(17);
    m_toTimeCtrl.setMinute(0);
    m_toDate = today;
    m_pauseLabel.clear();
    m_totalLabel.clear();

    const Mode mode =
        m_preferences.integerForKey(u"defaultEntryMode") == PeriodMode ? PeriodMode : DurationMode;
    showMode(mode);
    m_pauseEditorShown = mode == PeriodMode && !m_preferences.boolForKey(pauseEditorHiddenKey);
    applyRounding();
    m_pauseEditor.setCurrentEntry(nullptr);
    emit changed();
}

void EntrySheetLogic::edit(const std::shared_ptr<Entry> &entry) {
    m_isNew = false;
    m_entry = entry;
    m_selectedItem = entry;
    m_selectedProject = m_collection.sharedProject(entry->parent());
    m_canceledCreating = false;
    m_stoppedEntry = false;

    const QDateTime now = Clock::now();
    const QTime proposed = m_preferences.timeForKey(u"defaultTime");
    m_dayDate = now.date();
    m_timeCtrl.setHour(proposed.isValid() ? proposed.hour() : 0);
    m_timeCtrl.setMinute(proposed.isValid() ? proposed.minute() : 0);
    m_fromTimeCtrl.setHour(9);
    m_fromTimeCtrl.setMinute(0);
    m_fromDate = now.date();
    m_toTimeCtrl.setHour(17);
    m_toTimeCtrl.setMinute(0);
    m_toDate = now.date();
    m_pauseLabel.clear();
    m_totalLabel.clear();

    if (entry->hasPeriod()) {
        showMode(PeriodMode);
        m_fromDate = dayOrToday(entry->fromDate());
        setClockTime(m_fromTimeCtrl, entry->fromTime());
        if (entry->isWorking()) {
            m_toDate = now.date();
            m_toTimeCtrl.setHour(now.time().hour());
            m_toTimeCtrl.setMinute(now.time().minute());
            m_toTimeCtrl.setEnabled(false);
            m_controls.toDateEnabled = false;
            m_controls.startVisible = false;
            m_controls.startEnabled = false;
            m_controls.stopVisible = true;
            m_controls.stopEnabled = true;
        } else {
            m_toDate = dayOrToday(entry->toDate());
            setClockTime(m_toTimeCtrl, entry->toTime());
            m_controls.startVisible = false;
            m_controls.startEnabled = false;
            m_controls.stopVisible = false;
            m_controls.stopEnabled = false;
        }
    } else {
        showMode(DurationMode);
        m_dayDate = dayOrToday(entry->date());
        const int minutes = entry->time();
        m_timeCtrl.setHour(minutes / 60);
        m_timeCtrl.setMinute(minutes % 60);
    }
    m_comment = entry->comment();
    m_tags = entry->tags();
    m_pauseEditorShown = entry->hasPeriod() && !m_preferences.boolForKey(pauseEditorHiddenKey);
    applyRounding();
    m_pauseEditor.setCurrentEntry(entry);
    recalculateTotalTime();
    emit changed();
}

void EntrySheetLogic::showMode(Mode mode) {
    m_mode = mode;
    const bool period = mode == PeriodMode;
    m_controls.dayEnabled = !period;
    m_timeCtrl.setEnabled(!period);
    m_fromTimeCtrl.setEnabled(period);
    m_toTimeCtrl.setEnabled(period);
    m_controls.fromDateEnabled = period;
    m_controls.toDateEnabled = period;
    m_controls.startEnabled = period;
    m_controls.startVisible = true;
    m_controls.stopEnabled = false;
    m_controls.stopVisible = false;
    m_controls.labelsEnabled = period;
    m_controls.pauseEditorToggleEnabled = period;
}

void EntrySheetLogic::applyRounding() {
    const int roundWhat = m_selectedProject ? m_selectedProject->roundWhat() : 0;
    const int roundTo = m_selectedProject ? m_selectedProject->roundTo() : 0;
    const int roundType = m_selectedProject ? m_selectedProject->roundType() : 0;
    const bool roundsDuration = roundWhat == 2;
    m_timeCtrl.setRoundTo(roundsDuration ? roundTo : 0);
    m_timeCtrl.setRoundType(roundType);
    for (WBTimeControl *control : {&m_fromTimeCtrl, &m_toTimeCtrl}) {
        control->setRoundTo(roundsDuration ? 0 : roundTo);
        control->setRoundType(roundType);
    }
}

void EntrySheetLogic::setPauseEditorShown(bool shown) {
    if (!m_controls.pauseEditorToggleEnabled || shown == m_pauseEditorShown)
        return;
    m_pauseEditorShown = shown;
    m_preferences.setObject(!shown, pauseEditorHiddenKey);
    emit changed();
}

void EntrySheetLogic::selectMode(Mode mode) {
    if (mode == PeriodMode)
        selectedPeriod();
    else
        selectedTime();
}

void EntrySheetLogic::selectedTime() {
    m_fromTimeCtrl.setDate(m_fromTimeCtrl.date());
    showMode(DurationMode);
    m_pauseEditorShown = false;
    m_pauseLabel.clear();
    m_totalLabel.clear();
    emit changed();
}

void EntrySheetLogic::selectedPeriod() {
    showMode(PeriodMode);
    m_pauseEditor.setCurrentEntry(m_pauseEditor.currentEntry());
    recalculateTotalTime();
    emit changed();
}

QDateTime EntrySheetLogic::fromMoment() const {
    return HelpFunctions::localMoment(m_fromDate,
                                      QTime(m_fromTimeCtrl.hour(), m_fromTimeCtrl.minute()));
}

QDateTime EntrySheetLogic::toMoment() const {
    return HelpFunctions::localMoment(m_toDate, QTime(m_toTimeCtrl.hour(), m_toTimeCtrl.minute()));
}

int EntrySheetLogic::recalculateTotalTime() {
    if ((!m_selectedProject && !m_selectedItem) || m_mode == DurationMode)
        return 0;
    const QDateTime from = fromMoment();
    const QDateTime to = toMoment();
    int minutes = int(from.secsTo(to) / 60);
    if (!m_isNew && m_selectedItem && m_selectedItem->isEntry()) {
        const auto &entry = static_cast<const Entry &>(*m_selectedItem);
        minutes -= entry.isFinished() ? entry.pauseTime() : entry.pauseTimeWithPeriodFrom(from, to);
    }
    if (m_selectedProject && m_selectedProject->roundWhat() == 2 &&
        m_selectedProject->roundTo() > 0)
        minutes = HelpFunctions::roundDuration(minutes, m_selectedProject->roundType(),
                                               m_selectedProject->roundTo());
    m_totalLabel = ProjectCollection::makeStringFromMinutes(minutes);
    if (m_selectedItem)
        m_pauseLabel = StoredForms::durationText(m_selectedItem->pauseTime());
    emit changed();
    return minutes;
}

void EntrySheetLogic::keepPeriod(WBTimeControl &changed, const WBTimeControl &other) {
    if (recalculateTotalTime() >= 0)
        return;
    m_alerts.beep();
    changed.setHour(other.hour());
    changed.setMinute(other.minute());
    recalculateTotalTime();
}

void EntrySheetLogic::changedFrom() {
    keepPeriod(m_fromTimeCtrl, m_toTimeCtrl);
}

void EntrySheetLogic::changedTo() {
    keepPeriod(m_toTimeCtrl, m_fromTimeCtrl);
}

void EntrySheetLogic::changedAnyTimeControl(const WBTimeControl &sender) {
    if (&sender == &m_fromTimeCtrl)
        changedFrom();
    else if (&sender == &m_toTimeCtrl)
        changedTo();
}

void EntrySheetLogic::changedPeriodFromDate(QDate date) {
    m_fromDate = date;
    if (m_fromDate > m_toDate) {
        m_alerts.beep();
        m_fromDate = m_toDate;
        m_fromTimeCtrl.setDate(m_toTimeCtrl.date());
    }
    recalculateTotalTime();
    emit changed();
}

void EntrySheetLogic::changedPeriodToDate(QDate date) {
    m_toDate = date;
    if (m_toDate < m_fromDate) {
        m_alerts.beep();
        m_toDate = m_fromDate;
        m_toTimeCtrl.setDate(m_fromTimeCtrl.date());
    }
    recalculateTotalTime();
    emit changed();
}

void EntrySheetLogic::changedPeriodDate(QDate date) {
    m_dayDate = date;
    recalculateTotalTime();
    emit changed();
}

void EntrySheetLogic::pressedStart() {
    m_controls.startVisible = false;
    m_controls.startEnabled = false;
    m_controls.stopVisible = true;
    m_controls.stopEnabled = true;
    m_toTimeCtrl.setEnabled(false);
    m_controls.toDateEnabled = false;
    const QDateTime now = Clock::now();
    m_fromTimeCtrl.setDate(now);
    m_toTimeCtrl.setDate(now);
    m_fromDate = now.date();
    m_toDate = now.date();
    m_fromTimeCtrl.roundTime();
    m_toTimeCtrl.roundTime();
    recalculateTotalTime();
    emit changed();
}

void EntrySheetLogic::pressedStop() {
    if (!m_selectedProject && !m_selectedItem)
        return;
    m_stoppedEntry = true;
    // Stopping closes the open pause of the edited entry, so that the table shows it.
    if (m_entry && m_entry->isPaused()) {
        m_entry->resume();
        m_collection.setDataChanged(true);
    }
    m_pauseEditor.setCurrentEntry(m_pauseEditor.currentEntry());
    m_controls.startVisible = false;
    m_controls.startEnabled = false;
    m_controls.stopVisible = false;
    m_controls.stopEnabled = false;
    m_toTimeCtrl.setEnabled(true);
    m_controls.toDateEnabled = true;
    const QDateTime now = Clock::now();
    m_toTimeCtrl.setDate(now);
    m_toDate = now.date();
    m_toTimeCtrl.roundTime();
    recalculateTotalTime();
    emit changed();
}

bool EntrySheetLogic::doneCreateEntry(bool editedDateValid) {
    if (!editedDateValid) {
        m_alerts.beep();
        return false;
    }
    m_canceledCreating = false;
    if (m_pauseEditor.hasConflicts()) {
        m_alerts.runModal({PauseEditor::conflictMessage(),
                           PauseEditor::conflictInformativeText(),
                           UserAlerts::Style::Critical,
                           {tr("OK")}});
        return false;
    }
    return true;
}

void EntrySheetLogic::cancelCreateEntry() {
    m_canceledCreating = true;
}

std::shared_ptr<Entry> EntrySheetLogic::newEntrySheetDidEnd() {
    if (m_canceledCreating)
        return nullptr;
    auto values = std::make_shared<Entry>();
    if (m_mode == DurationMode) {
        values->setHasPeriod(false);
        values->setTime(m_timeCtrl.hour() * 60 + m_timeCtrl.minute());
        values->setDate(StoredForms::dateText(m_dayDate));
    } else {
        values->setHasPeriod(true);
        values->setFromTime(StoredForms::timeText(m_fromTimeCtrl.hour(), m_fromTimeCtrl.minute()));
        values->setFromDate(StoredForms::dateText(m_fromDate));
        if (!m_controls.startVisible && m_controls.stopVisible) {
            values->setIsWorking(true);
            values->setTime(0);
        } else {
            values->setIsWorking(false);
            const QDateTime from = fromMoment();
            const QDateTime to = toMoment();
            if (to < from) {
                m_alerts.runModal({dateRangeMessage(),
                                   dateRangeInformativeText(),
                                   UserAlerts::Style::Critical,
                                   {tr("OK")}});
                return nullptr;
            }
            values->setTime(int(from.secsTo(to) / 60));
            values->setToTime(StoredForms::timeText(m_toTimeCtrl.hour(), m_toTimeCtrl.minute()));
            values->setToDate(StoredForms::dateText(m_toDate));
        }
    }
    values->setComment(m_comment);
    values->setTags(m_tags);

    if (m_isNew) {
        if (!m_selectedProject)
            return nullptr;
        m_collection.addEntry(values, m_selectedProject, tr("Add Entry"));
        m_selectedProject->setExpanded(true);
        emit entryAdded(values, m_selectedProject);
        return values;
    }
    m_collection.editEntry(m_entry, *values, m_stoppedEntry);
    m_stoppedEntry = false;
    emit entryEdited(m_entry);
    return m_entry;
}
