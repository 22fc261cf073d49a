#include "TimeAway.h"

#include "ProjectCollection.h"
#include "StoredForms.h"

#include <QCoreApplication>

namespace {

QString tr(const char *text) {
    return QCoreApplication::translate("TimeAway", text);
}

QString undoName() {
    return tr("Time Away");
}

} // namespace

TimeAway::TimeAway(const QDateTime &from, const QDateTime &to)
    : m_from(from)
    , m_to(to) {}

int TimeAway::minutes() const {
    // Counted between the whole minutes of the ends, as the message shows them and the pause
    // keeps them.
    return int(m_to.toSecsSinceEpoch() / 60 - m_from.toSecsSinceEpoch() / 60);
}

QList<std::shared_ptr<Entry>> TimeAway::entriesThatRan(const ProjectCollection &collection) const {
    QList<std::shared_ptr<Entry>> ran;
    for (const auto &entry : collection.workingEntries()) {
        if (entry->fromAsDate() < m_to && (!entry->isPaused() || entry->pausedAt() > m_from))
            ran << entry;
    }
    return ran;
}

QString TimeAway::message(int timers) const {
    const int away = minutes();
    const QString duration =
        QStringLiteral("%1:%2").arg(away / 60).arg(away % 60, 2, 10, QLatin1Char('0'));
    const QString from = StoredForms::timeText(m_from.time());
    const QString to = StoredForms::timeText(m_to.time());
    if (timers == 1)
        return tr("Away from %1 to %2 (%3) while 1 timer ran").arg(from, to, duration);
    return tr("Away from %1 to %2 (%3) while %4 timers ran")
        .arg(from, to, duration, QString::number(timers));
}

void TimeAway::countAsPause(ProjectCollection &collection) const {
    collection.changeEntries(undoName(), entriesThatRan(collection), [this](Entry &entry) {
        const QDateTime from = qMax(m_from, entry.fromAsDate());
        const QDateTime to = entry.isPaused() ? qMin(m_to, entry.pausedAt()) : m_to;
        if (from >= to)
            return;
        PauseList pauses = entry.pauseEntries();
        pauses << std::make_shared<PauseEntry>(from, to);
        entry.setPauseEntries(pauses);
    });
}

void TimeAway::stopTimers(ProjectCollection &collection) const {
    collection.changeEntries(undoName(), entriesThatRan(collection), [this](Entry &entry) {
        entry.stopAt(qMax(m_from, entry.fromAsDate()));
    });
}
