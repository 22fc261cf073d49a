#include "PauseEntry.h"

#include "StoredForms.h"

PauseEntry::PauseEntry(const QDateTime &from, const QDateTime &to) {
    setFrom(from);
    setTo(to);
}

qint64 PauseEntry::wholeMinute(const QDateTime &moment) {
    if (!moment.isValid())
        return unset;
    const qint64 secs = moment.toSecsSinceEpoch();
    const qint64 second = ((secs % 60) + 60) % 60;
    return secs - second;
}

QDateTime PauseEntry::from() const {
    return m_from == unset ? QDateTime() : QDateTime::fromSecsSinceEpoch(m_from);
}

QDateTime PauseEntry::to() const {
    return m_to == unset ? QDateTime() : QDateTime::fromSecsSinceEpoch(m_to);
}

void PauseEntry::setFrom(const QDateTime &from) {
    m_from = wholeMinute(from);
}

void PauseEntry::setTo(const QDateTime &to) {
    m_to = wholeMinute(to);
}

int PauseEntry::duration() const {
    if (m_from == unset || m_to == unset)
        return 0;
    return int((m_to - m_from) / 60);
}

std::shared_ptr<PauseEntry> PauseEntry::copy() const {
    return std::make_shared<PauseEntry>(*this);
}

const QStringList &PauseEntry::copyKeys() {
    static const QStringList keys{QStringLiteral("from"), QStringLiteral("to")};
    return keys;
}

QVariantMap PauseEntry::dictionaryRepresentation() const {
    return {{QStringLiteral("from"), from()}, {QStringLiteral("to"), to()}};
}

QString PauseEntry::stringDescription() const {
    return QStringLiteral("from: ") + StoredForms::momentText(from()) + QStringLiteral("; to: ") +
           StoredForms::momentText(to());
}
