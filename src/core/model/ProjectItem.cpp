#include "ProjectItem.h"

#include "../platform/LocaleFormat.h"
#include "StoredForms.h"

ProjectItem::~ProjectItem() = default;

void ProjectItem::setDate(const QString &date) {
    date_ = date;
    invalidateSortDay();
}

QString ProjectItem::described(const QString &text) {
    return text.isNull() ? QStringLiteral("(null)") : text;
}

QString ProjectItem::formattedDay() const {
    return LocaleFormat::formatDateInListStyle(StoredForms::parseDate(date_));
}

QString ProjectItem::htmlComment() const {
    QString html = comment_;
    html.replace(u'\n', QStringLiteral("<br/>"));
    return html;
}

QVariant ProjectItem::valueForKey(QStringView key) const {
    if (key == u"time")
        return time();
    if (key == u"pauseTime")
        return pauseTime();
    if (key == u"effectiveDuration")
        return effectiveDuration();
    if (key == u"isWorking")
        return isWorking();
    if (key == u"isFinished")
        return isFinished();
    if (key == u"isPaused")
        return isPaused();
    if (key == u"isChecked")
        return isChecked();
    if (key == u"hasPeriod")
        return hasPeriod();
    if (key == u"fromDateAsDate")
        return fromDateAsDate();
    if (key == u"toDateAsDate")
        return toDateAsDate();
    if (key == u"comment")
        return comment_;
    if (key == u"tags")
        return tags_;
    if (key == u"date")
        return date_;
    return {};
}

qint64 ProjectItem::parseSortDay() const {
    const QDate day = StoredForms::parseDate(sortDayText());
    m_sortDay = day.isValid() ? day.toJulianDay() : std::numeric_limits<qint64>::min();
    return m_sortDay;
}
