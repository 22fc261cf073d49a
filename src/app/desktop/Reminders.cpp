#include "desktop/Reminders.h"

#include "Logging.h"
#include "desktop/MiniWindowLogic.h"
#include "desktop/ReminderPanel.h"
#include "model/ProjectCollection.h"
#include "platform/Folders.h"
#include "platform/Preferences.h"

using namespace Qt::StringLiterals;

Reminders::Reminders(Preferences &preferences, ProjectCollection &collection, UserAlerts &alerts,
                     Notifier &notifier, QObject *parent)
    : QObject(parent)
    , m_preferences(preferences)
    , m_collection(collection)
    , m_notifier(notifier)
    , m_panel(std::make_unique<ReminderPanel>(alerts)) {
    connect(&m_notifier, &Notifier::failed, this, &Reminders::notificationFailed);
}

Reminders::~Reminders() = default;

bool Reminders::isReminderSetting(QStringView key) {
    return key == u"useReminders" || key == u"useRunningReminder" || key == u"usePauseReminder" ||
           key == u"runningReminderInterval" || key == u"pausedReminderInterval" ||
           key == u"reminderType";
}

void Reminders::setupReminders() {
    clearReminders();
    if (!m_preferences.boolForKey(u"useReminders"))
        return;
    if (m_preferences.boolForKey(u"useRunningReminder"))
        m_runningReminder =
            schedule(u"runningReminderInterval"_s, &Reminders::runningReminderTimerFired);
    if (m_preferences.boolForKey(u"usePauseReminder"))
        m_pausedReminder =
            schedule(u"pausedReminderInterval"_s, &Reminders::pausedReminderTimerFired);
}

std::unique_ptr<QTimer> Reminders::schedule(const QString &intervalKey,
                                            void (Reminders::*fired)()) {
    auto timer = std::make_unique<QTimer>();
    timer->setInterval(qMax(m_preferences.integerForKey(intervalKey), 1) * 60 * 1000);
    connect(timer.get(), &QTimer::timeout, this, fired);
    timer->start();
    return timer;
}

void Reminders::clearReminders() {
    m_runningReminder.reset();
    m_pausedReminder.reset();
}

void Reminders::runningReminderTimerFired() {
    remind(false);
}

void Reminders::pausedReminderTimerFired() {
    remind(true);
}

QString Reminders::reminderText(const ProjectCollection &collection, bool paused) {
    QStringList lines;
    for (const auto &entry : collection.workingEntries()) {
        if (entry->isPaused() != paused)
            continue;
        lines << MiniWindowLogic::projectAndDuration(*entry);
    }
    return lines.join(u'\n');
}

void Reminders::remind(bool paused) {
    const QString text = reminderText(m_collection, paused);
    const Notifier::Notification notification{
        paused ? pausedName : runningName, paused ? tr("Paused timers:") : tr("Running timers:"),
        text, Folders::imagePath(paused ? u"pause"_s : u"play"_s)};
    if (m_preferences.integerForKey(u"reminderType") != 0) {
        // Posted even when no timer is listed: the user sees the reminders keep coming.
        m_notifier.post(notification);
    } else if (!text.isEmpty()) {
        m_panel->showBuiltInAlert(notification.title, text, notification.icon);
    }
}

void Reminders::notificationFailed(const Notifier::Notification &notification,
                                   const QString &reason) {
    if (!m_failureLogged) {
        m_failureLogged = true;
        qCWarning(lcDesktop,
                  "No desktop notification service (%s): reminders show in Hourfold's "
                  "own window",
                  qUtf8Printable(reason));
    }
    if (!notification.text.isEmpty())
        m_panel->showBuiltInAlert(notification.title, notification.text, notification.icon);
}
