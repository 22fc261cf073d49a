#include "Entry.h"

#include "../platform/LocaleFormat.h"
#include "Clock.h"
#include "HelpFunctions.h"
#include "LocalTimeFormat.h"
#include "Project.h"
#include "StoredForms.h"

#include <QVariantList>
#include <cmath>

namespace {

// Leading white space, an optional sign and digits, as far as they go; 0 when there are none.
int leadingIntValue(QStringView text) {
    qsizetype i = 0;
    while (i < text.size() && text[i].isSpace())
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+')) {
        negative = text[i] == u'-';
        ++i;
    }
    qint64 value = 0;
    while (i < text.size() && text[i] >= u'0' && text[i] <= u'9') {
        value = std::min<qint64>(value * 10 + (text[i].unicode() - u'0'), qint64(INT_MAX) + 1);
        ++i;
    }
    value = negative ? -value : value;
    return int(std::clamp<qint64>(value, INT_MIN, INT_MAX));
}

qint64 msecsOf(const QDateTime &moment) {
    return moment.toMSecsSinceEpoch();
}

// The running sum plus a span in milliseconds as minutes, truncated toward zero.
int addTruncated(int sum, qint64 spanMsecs) {
    return int(std::trunc(double(sum) + double(spanMsecs) / 60000.0));
}

} // namespace

Entry::Entry()
    : pause_entries_(std::make_shared<PauseList>()) {
    comment_ = QStringLiteral("");
    tags_ = QStringLiteral("");
    LocalTimeFormat::determine();
}

void Entry::setFromTime(const QString &fromTime) {
    fromTime_ = fromTime;
    m_sortFromMinutes = sortMinutesUnknown;
}

void Entry::setFromDate(const QString &fromDate) {
    fromDate_ = fromDate;
    invalidateSortDay();
}

void Entry::setHasPeriod(bool hasPeriod) {
    hasPeriod_ = hasPeriod;
    invalidateSortDay();
}

QDateTime Entry::pausedAt() const {
    return paused_at_ == PauseEntry::unset ? QDateTime()
                                           : QDateTime::fromSecsSinceEpoch(paused_at_);
}

void Entry::setPausedAt(const QDateTime &pausedAt) {
    paused_at_ = pausedAt.isValid() ? pausedAt.toSecsSinceEpoch() : PauseEntry::unset;
}

void Entry::setPauseEntries(const PauseList &pauseEntries) {
    // A new list object: copies that shared the old list keep it.
    pause_entries_ = std::make_shared<PauseList>(pauseEntries);
}

int Entry::roundedIfProjectRoundsEntries(int minutes) const {
    if (m_parent && m_parent->roundWhat() == 2 && m_parent->roundTo() > 0)
        return HelpFunctions::roundDuration(minutes, m_parent->roundType(), m_parent->roundTo());
    return minutes;
}

int Entry::time() const {
    if (m_parent && m_parent->roundWhat() == 2)
        return roundedIfProjectRoundsEntries(minutes_);
    if (isFinished())
        return minutes_;
    const QDateTime start = HelpFunctions::makeDateFromDateString(fromDate_, fromTime_);
    if (!start.isValid())
        return 0;
    const qint64 seconds = (Clock::now().toMSecsSinceEpoch() - msecsOf(start)) / 1000;
    return int(seconds / 60);
}

int Entry::currentPauseMinutesAdded(int sum) const {
    if (!isPaused())
        return sum;
    return addTruncated(sum, Clock::now().toMSecsSinceEpoch() - paused_at_ * 1000);
}

int Entry::pauseTime() const {
    int sum = 0;
    for (const auto &pause : *pause_entries_)
        sum += pause->duration();
    return currentPauseMinutesAdded(sum);
}

int Entry::netPauseTime() const {
    // Without pauses there is nothing to clip: the period's moments are not even needed.
    if (!hasPeriod_ || (pause_entries_->isEmpty() && !isPaused()))
        return 0;
    const QDateTime start = HelpFunctions::makeDateFromDateString(fromDate_, fromTime_);
    const QDateTime end =
        toDate_.isEmpty() ? Clock::now() : HelpFunctions::makeDateFromDateString(toDate_, toTime_);
    return pauseTimeWithPeriodFrom(start, end);
}

int Entry::pauseTimeWithPeriodFrom(const QDateTime &from, const QDateTime &to) const {
    int sum = 0;
    if (from.isValid() && to.isValid()) {
        const qint64 a = msecsOf(from);
        const qint64 b = msecsOf(to);
        for (const auto &pause : *pause_entries_) {
            if (!pause->hasFrom() || !pause->hasTo())
                continue;
            const qint64 f = pause->fromSecs() * 1000;
            const qint64 t = pause->toSecs() * 1000;
            if (t < a || f > b)
                continue;
            if (f < a && t > b)
                continue;
            if (f >= a && t <= b)
                sum += pause->duration();
            else if (f < a && t > a)
                sum = addTruncated(sum, t - a);
            else if (f < b && t > b)
                sum = addTruncated(sum, b - f);
        }
    }
    return currentPauseMinutesAdded(sum);
}

int Entry::effectiveDuration() const {
    return roundedIfProjectRoundsEntries(time() - pauseTime());
}

QDateTime Entry::fromDateAsDate() const {
    return HelpFunctions::makeDateFromDateString(hasPeriod_ ? fromDate_ : date_, u"00:00");
}

QDateTime Entry::toDateAsDate() const {
    if (!hasPeriod_)
        return HelpFunctions::makeDateFromDateString(date_, u"00:00");
    if (working_)
        return {};
    return HelpFunctions::makeDateFromDateString(toDate_, u"00:00");
}

QDateTime Entry::fromAsDate() const {
    if (!hasPeriod_)
        return HelpFunctions::makeDateFromDateString(date_, u"00:00");
    return HelpFunctions::makeDateFromDateString(fromDate_, fromTime_);
}

QDateTime Entry::toAsDate() const {
    if (!hasPeriod_)
        return HelpFunctions::makeDateFromDateString(date_, u"00:00");
    if (working_)
        return {};
    return HelpFunctions::makeDateFromDateString(toDate_, toTime_);
}

QString Entry::formattedFromDate(bool medium) const {
    const QDate day = StoredForms::parseDate(fromDate_);
    return medium ? LocaleFormat::formatDate(day, 2) : LocaleFormat::formatDateInListStyle(day);
}

QString Entry::formattedToDate(bool medium) const {
    const QDate day = StoredForms::parseDate(toDate_);
    return medium ? LocaleFormat::formatDate(day, 2) : LocaleFormat::formatDateInListStyle(day);
}

QString Entry::formattedFromTime() const {
    return fromTime_.isEmpty() ? QStringLiteral("") : localisedTimeString(fromTime_);
}

QString Entry::formattedToTime() const {
    return toTime_.isEmpty() ? QStringLiteral("") : localisedTimeString(toTime_);
}

QString Entry::formattedPauseDate() const {
    if (!isPaused())
        return QStringLiteral("--.--.----");
    return StoredForms::dateText(pausedAt().date());
}

QString Entry::formattedPauseTime() const {
    if (!isPaused())
        return QStringLiteral("--:--");
    return StoredForms::timeText(pausedAt().time());
}

QString Entry::localizedPauseDate() const {
    if (!isPaused())
        return QStringLiteral("");
    const QDateTime moment = pausedAt();
    return LocaleFormat::formatDateInListStyle(moment.date()) + u' ' +
           localisedTimeString(StoredForms::timeText(moment.time()));
}

QString Entry::formattedTime() const {
    return StoredForms::durationText(time());
}

QString Entry::formattedEffectiveTime() const {
    return StoredForms::durationText(effectiveDuration());
}

QString Entry::formattedPauseDuration() const {
    return StoredForms::durationText(pauseTime());
}

QString Entry::localisedTimeString(QStringView storedTime) const {
    return LocalTimeFormat::localisedTimeString(storedTime);
}

void Entry::pause() {
    if (working_ && !isPaused())
        paused_at_ = Clock::nowSecsSinceEpoch();
}

void Entry::resume() {
    if (!hasPeriod_)
        return;
    if (isPaused()) {
        pause_entries_->append(std::make_shared<PauseEntry>(pausedAt(), Clock::now()));
        paused_at_ = PauseEntry::unset;
    } else if (isFinished()) {
        const QDateTime oldEnd = HelpFunctions::makeDateFromDateString(toDate_, toTime_);
        pause_entries_->append(std::make_shared<PauseEntry>(oldEnd, Clock::now()));
        working_ = true;
        toTime_.clear();
        toDate_.clear();
    }
}

void Entry::stop() {
    stopAt(Clock::nowToTheSecond());
}

void Entry::stopAt(const QDateTime &end) {
    if (isPaused()) {
        // The pause ends with the entry; one that would begin after the end is dropped.
        if (pausedAt() < end)
            pause_entries_->append(std::make_shared<PauseEntry>(pausedAt(), end));
        paused_at_ = PauseEntry::unset;
    }
    QDateTime moment = end;
    if (m_parent)
        moment = m_parent->clockMoment(moment);
    toDate_ = StoredForms::dateText(moment.date());
    toTime_ = StoredForms::timeText(moment.time());
    const QDateTime start = HelpFunctions::makeDateFromDateString(fromDate_, fromTime_);
    minutes_ = start.isValid() ? int(start.secsTo(moment) / 60) : 0;
    working_ = false;
}

std::shared_ptr<Entry> Entry::startedIn(const Project &project) {
    auto entry = std::make_shared<Entry>();
    entry->setHasPeriod(true);
    const QDateTime start = project.clockMoment(Clock::nowToTheSecond());
    entry->setFromTime(StoredForms::timeText(start.time()));
    entry->setFromDate(StoredForms::dateText(start.date()));
    entry->setIsWorking(true);
    entry->setTime(0);
    return entry;
}

void Entry::deleteAllPauseEntries() {
    pause_entries_->clear();
}

std::shared_ptr<Entry> Entry::copy() const {
    auto entry = std::make_shared<Entry>();
    entry->date_ = date_;
    entry->fromTime_ = fromTime_;
    entry->fromDate_ = fromDate_;
    entry->toTime_ = toTime_;
    entry->toDate_ = toDate_;
    entry->comment_ = comment_;
    entry->tags_ = tags_;
    entry->minutes_ = minutes_;
    entry->working_ = working_;
    entry->hasPeriod_ = hasPeriod_;
    entry->paused_at_ = paused_at_;
    entry->pause_entries_ = pause_entries_;
    return entry;
}

const QStringList &Entry::copyKeys() {
    static const QStringList keys{
        QStringLiteral("time"),      QStringLiteral("date"),     QStringLiteral("fromTime"),
        QStringLiteral("fromDate"),  QStringLiteral("toTime"),   QStringLiteral("tags"),
        QStringLiteral("toDate"),    QStringLiteral("comment"),  QStringLiteral("isWorking"),
        QStringLiteral("hasPeriod"), QStringLiteral("pausedAt"), QStringLiteral("pauseEntries")};
    return keys;
}

QVariantMap Entry::dictionaryRepresentation() const {
    QVariantMap map;
    for (const QString &key : copyKeys())
        map.insert(key, valueForKey(key));
    return map;
}

QString Entry::stringDescription() const {
    return QString::number(time()) + u';' + described(date_) + u';' + described(fromTime_) + u';' +
           described(fromDate_) + u';' + described(toTime_) + u';' + described(toDate_) + u';' +
           described(comment_) + u';' + QString::number(working_ ? 1 : 0) + u';' +
           QString::number(hasPeriod_ ? 1 : 0) + u';' + described(tags_);
}

QVariant Entry::valueForKey(QStringView key) const {
    if (key == u"netPauseTime")
        return netPauseTime();
    if (key == u"fromAsDate")
        return fromAsDate();
    if (key == u"toAsDate")
        return toAsDate();
    if (key == u"fromTime")
        return fromTime_;
    if (key == u"fromDate")
        return fromDate_;
    if (key == u"toTime")
        return toTime_;
    if (key == u"toDate")
        return toDate_;
    if (key == u"pausedAt")
        return pausedAt();
    if (key == u"pauseEntries") {
        QVariantList pauses;
        for (const auto &pause : *pause_entries_)
            pauses.append(pause->dictionaryRepresentation());
        return pauses;
    }
    return ProjectItem::valueForKey(key);
}

int Entry::calculateMinutesFromString(QStringView text) {
    return leadingIntValue(text.left(3)) * 60 +
           leadingIntValue(text.size() > 3 ? text.mid(3) : QStringView());
}

void Entry::determineLocalTimeFormat() {
    LocalTimeFormat::determine();
}

int Entry::parseSortFromMinutes() const {
    m_sortFromMinutes = StoredForms::parseTime(fromTime_);
    return m_sortFromMinutes;
}
