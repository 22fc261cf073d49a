#pragma once

#include "desktop/AwayDialog.h"
#include "desktop/AwayLogic.h"

#include <QObject>
#include <QTimer>
#include <memory>

class IdleTime;
class LogindSleep;
class Preferences;
class ProjectCollection;

// Watches for time away while timers run (the computer asleep, or the user idle for
// "idleMinutes") and asks once per absence what it counts for; the answer changes the timers as
// one undo step.
class AwayWatcher : public QObject {
    Q_OBJECT

public:
    // How often the idle time is looked at.
    static constexpr int idlePollSeconds = 30;

    // The idle time from the desktop when idleTime is nullptr (not owned otherwise).
    AwayWatcher(Preferences &preferences, ProjectCollection &collection, IdleTime *idleTime,
                QObject *parent = nullptr);
    ~AwayWatcher() override;

    // Follows "idleMinutes": the idle time is looked at only while it is above 0.
    void updateIdleMinutes();
    void pollIdleTime();
    void preparingForSleep(bool start);

    AwayLogic &logic() { return m_logic; }
    AwayDialog &dialog() const { return *m_dialog; }

private:
    void ask(const std::optional<TimeAway> &away);
    void answered(AwayDialog::Choice choice);

    Preferences &m_preferences;
    ProjectCollection &m_collection;
    std::unique_ptr<IdleTime> m_ownIdleTime;
    IdleTime &m_idleTime;
    AwayLogic m_logic;
    std::unique_ptr<LogindSleep> m_sleep;
    std::unique_ptr<AwayDialog> m_dialog;
    std::optional<TimeAway> m_away;
    QTimer m_poll;
};
