#pragma once

#include <QDateTime>
#include <QList>
#include <QVariantMap>
#include <limits>
#include <memory>

// One closed interruption of a period entry, from a start moment to an end moment, both on a
// whole minute. Moments are kept as seconds since the epoch so that durations and totals need no
// time-zone conversion.
class PauseEntry {
public:
    PauseEntry() = default;
    PauseEntry(const QDateTime &from, const QDateTime &to);

    // Setters remove the seconds of the moment; an invalid moment leaves the field unset.
    QDateTime from() const;
    QDateTime to() const;
    void setFrom(const QDateTime &from);
    void setTo(const QDateTime &to);

    bool hasFrom() const { return m_from != unset; }
    bool hasTo() const { return m_to != unset; }
    qint64 fromSecs() const { return m_from; }
    qint64 toSecs() const { return m_to; }

    // (to - from) in whole minutes, truncated toward zero; 0 while a moment is unset.
    int duration() const;

    std::shared_ptr<PauseEntry> copy() const;
    static const QStringList &copyKeys();
    QVariantMap dictionaryRepresentation() const;
    // "from: <moment>; to: <moment>" with the moments' calendar-date text forms.
    QString stringDescription() const;

    static constexpr qint64 unset = std::numeric_limits<qint64>::min();

private:
    static qint64 wholeMinute(const QDateTime &moment);

    qint64 m_from = unset;
    qint64 m_to = unset;
};

using PauseList = QList<std::shared_ptr<PauseEntry>>;
