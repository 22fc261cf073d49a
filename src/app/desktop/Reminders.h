#pragma once

#include "desktop/Notifier.h"

#include <QObject>
#include <QTimer>
#include <memory>

class Preferences;
class ProjectCollection;
class ReminderPanel;
class UserAlerts;

// Reminders of running and paused timers at the intervals of the preferences ("useReminders",
// "useRunningReminder", "usePauseReminder", "runningReminderInterval", "pausedReminderInterval"
// in minutes), shown as the built-in panel ("reminderType" 0) or as desktop notifications (any
// other type). When no notification service answers, the panel takes over and the log says why,
// once.
class Reminders : public QObject {
    Q_OBJECT

public:
    static inline const QString runningName = QStringLiteral("Running timers reminder");
    static inline const QString pausedName = QStringLiteral("Paused timers reminder");

    Reminders(Preferences &preferences, ProjectCollection &collection, UserAlerts &alerts,
              Notifier &notifier, QObject *parent = nullptr);
    ~Reminders() override;

    // Rebuilds the timers from the preferences: each interval starts anew.
    void setupReminders();
    void clearReminders();
    void runningReminderTimerFired();
    void pausedReminderTimerFired();

    // One "Project: duration" line per running (or paused) timer, in the document's order.
    static QString reminderText(const ProjectCollection &collection, bool paused);
    // Whether the preference is a reminder setting: a change of one restarts the timers.
    static bool isReminderSetting(QStringView key);

    // The timers while they are scheduled, else nullptr.
    const QTimer *runningReminder() const { return m_runningReminder.get(); }
    const QTimer *pausedReminder() const { return m_pausedReminder.get(); }
    ReminderPanel &panel() const { return *m_panel; }

private:
    void remind(bool paused);
    std::unique_ptr<QTimer> schedule(const QString &intervalKey, void (Reminders::*fired)());
    void notificationFailed(const Notifier::Notification &notification, const QString &reason);

    Preferences &m_preferences;
    ProjectCollection &m_collection;
    Notifier &m_notifier;
    std::unique_ptr<ReminderPanel> m_panel;
    std::unique_ptr<QTimer> m_runningReminder;
    std::unique_ptr<QTimer> m_pausedReminder;
    bool m_failureLogged = false;
};
