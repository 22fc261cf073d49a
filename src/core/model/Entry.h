#pragma once

#include "PauseEntry.h"
#include "ProjectItem.h"

// One timed piece of work: a day entry (a day and typed minutes) or a period entry measured by a
// timer that runs, pauses and stops. Start and end are kept as stored texts ("dd.MM.yyyy",
// "HH:mm"); moments are made from them on demand.
class Entry : public ProjectItem {
public:
    Entry();

    Kind kind() const override { return Kind::Entry; }

    QString fromTime() const { return fromTime_; }
    void setFromTime(const QString &fromTime);
    QString fromDate() const { return fromDate_; }
    void setFromDate(const QString &fromDate);
    QString toTime() const { return toTime_; }
    void setToTime(const QString &toTime) { toTime_ = toTime; }
    QString toDate() const { return toDate_; }
    void setToDate(const QString &toDate) { toDate_ = toDate; }
    // The moment the running entry was paused, to the second; invalid when not paused.
    QDateTime pausedAt() const;
    void setPausedAt(const QDateTime &pausedAt);
    // The pause list. Copies made with copy() share it with their source.
    PauseList pauseEntries() const { return *pause_entries_; }
    void setPauseEntries(const PauseList &pauseEntries);
    std::shared_ptr<PauseList> sharedPauseEntries() const { return pause_entries_; }
    void setTime(int minutes) { minutes_ = minutes; }
    int storedMinutes() const { return minutes_; }
    void setIsWorking(bool working) { working_ = working; }
    void setHasPeriod(bool hasPeriod);

    bool hasPeriod() const override { return hasPeriod_; }
    bool isWorking() const override { return working_; }
    bool isPaused() const override { return paused_at_ != PauseEntry::unset; }

    // Gross minutes: from the start to now while not finished, the stored minutes once finished;
    // the stored minutes rounded instead when the project rounds each entry.
    int time() const override;
    // Minutes of all pauses, with the current pause counted up to now.
    int pauseTime() const override;
    // Pause minutes inside the entry's own period.
    int netPauseTime() const;
    // Pause minutes clipped to the period [from, to]. A pause that overhangs the period at both
    // ends adds nothing (kept that way on purpose); the current pause is not clipped.
    int pauseTimeWithPeriodFrom(const QDateTime &from, const QDateTime &to) const;
    // time - pauseTime, rounded when the project rounds each entry.
    int effectiveDuration() const override;

    QDateTime fromDateAsDate() const override;
    QDateTime toDateAsDate() const override;
    QDateTime fromAsDate() const;
    QDateTime toAsDate() const;

    QString formattedFromDate(bool medium = false) const;
    QString formattedToDate(bool medium = false) const;
    QString formattedFromTime() const;
    QString formattedToTime() const;
    QString formattedPauseDate() const;
    QString formattedPauseTime() const;
    QString localizedPauseDate() const;
    QString formattedTime() const;
    QString formattedEffectiveTime() const;
    QString formattedPauseDuration() const;
    QString localisedTimeString(QStringView storedTime) const;

    // Pausing sets the pause moment of a running entry that is not paused yet.
    void pause();
    // Resuming closes the current pause, or continues a finished entry with the time since its
    // stop counted as a pause. A day entry, or a running entry that is not paused, stays as is.
    void resume();
    // Stops the timer at now (rounded when the project rounds clock times): a paused entry is
    // resumed first, then the end texts and the whole minutes since the start are written.
    void stop();
    // Stops the timer at the given moment instead of now; a pause still open closes there.
    void stopAt(const QDateTime &end);
    void deleteAllPauseEntries();
    // A running period entry started now, the clock time rounded when the project rounds clock
    // times; not yet added to the project.
    static std::shared_ptr<Entry> startedIn(const Project &project);

    // A value holder for editing and undo: the texts, minutes and flags are copied; the pause list
    // and pause moment are shared with this entry; check mark, attachments and project are not
    // taken over.
    std::shared_ptr<Entry> copy() const;
    std::shared_ptr<ProjectItem> copyItem() const override { return copy(); }
    static const QStringList &copyKeys();
    QVariantMap dictionaryRepresentation() const override;
    QString stringDescription() const override;
    QVariant valueForKey(QStringView key) const override;

    static int calculateMinutesFromString(QStringView text);
    static void determineLocalTimeFormat();

    // Sort key of the start time in minutes since midnight (-1 when it does not parse), and of the
    // end time; parsed once and kept until the text changes.
    int sortFromMinutes() const {
        return m_sortFromMinutes != sortMinutesUnknown ? m_sortFromMinutes : parseSortFromMinutes();
    }

protected:
    const QString &sortDayText() const override { return hasPeriod_ ? fromDate_ : date_; }

private:
    int parseSortFromMinutes() const;
    int roundedIfProjectRoundsEntries(int minutes) const;
    int currentPauseMinutesAdded(int sum) const;

    QString fromTime_;
    QString fromDate_;
    QString toTime_;
    QString toDate_;
    qint64 paused_at_ = PauseEntry::unset;
    int minutes_ = 0;
    bool working_ = false;
    bool hasPeriod_ = false;
    std::shared_ptr<PauseList> pause_entries_;
    mutable int m_sortFromMinutes = sortMinutesUnknown;

    static constexpr int sortMinutesUnknown = -2;
};
