#include "desktop/AwayWatcher.h"

#include "desktop/DesktopIdleTime.h"
#include "desktop/LogindSleep.h"
#include "platform/Preferences.h"

AwayWatcher::AwayWatcher(Preferences &preferences, ProjectCollection &collection,
                         IdleTime *idleTime, QObject *parent)
    : QObject(parent)
    , m_preferences(preferences)
    , m_collection(collection)
    , m_ownIdleTime(idleTime ? nullptr : std::make_unique<DesktopIdleTime>())
    , m_idleTime(idleTime ? *idleTime : *m_ownIdleTime)
    , m_logic(collection)
    , m_sleep(std::make_unique<LogindSleep>())
    , m_dialog(std::make_unique<AwayDialog>()) {
    m_poll.setInterval(idlePollSeconds * 1000);
    connect(&m_poll, &QTimer::timeout, this, &AwayWatcher::pollIdleTime);
    connect(m_sleep.get(), &LogindSleep::preparingForSleep, this, &AwayWatcher::preparingForSleep);
    connect(m_dialog.get(), &AwayDialog::answered, this, &AwayWatcher::answered);
}

AwayWatcher::~AwayWatcher() = default;

void AwayWatcher::updateIdleMinutes() {
    m_logic.setIdleMinutes(m_preferences.integerForKey(u"idleMinutes"));
    if (m_logic.idleMinutes() > 0)
        m_poll.start();
    else
        m_poll.stop();
}

void AwayWatcher::pollIdleTime() {
    const std::optional<qint64> idle = m_idleTime.idleMilliseconds();
    if (!idle) {
        // Nothing tells the idle time here: looking again changes nothing.
        m_poll.stop();
        return;
    }
    ask(m_logic.idleSample(*idle));
}

void AwayWatcher::preparingForSleep(bool start) {
    if (start)
        m_logic.sleeping();
    else
        ask(m_logic.resumed());
}

void AwayWatcher::ask(const std::optional<TimeAway> &away) {
    if (!away)
        return;
    m_away = away;
    m_dialog->ask(*away, int(away->entriesThatRan(m_collection).size()));
}

void AwayWatcher::answered(AwayDialog::Choice choice) {
    switch (choice) {
    case AwayDialog::Choice::Keep:
        break;
    case AwayDialog::Choice::Pause:
        m_away->countAsPause(m_collection);
        break;
    case AwayDialog::Choice::Stop:
        m_away->stopTimers(m_collection);
        break;
    }
    m_away.reset();
    m_logic.answered();
}
