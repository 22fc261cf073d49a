#include "WBTimeControl.h"

#include "model/Clock.h"
#include "model/HelpFunctions.h"
#include "model/LocalTimeFormat.h"
#include "platform/UserAlerts.h"
#include "stores/KeyedArchiver.h"
#include "stores/KeyedUnarchiver.h"

#include <QRegularExpression>

namespace {

constexpr int secondsPerDay = 24 * 3600;

int secondsOf(int hour, int minute, int second) {
    return hour * 3600 + minute * 60 + second;
}

bool isDecimalDigits(const QString &text) {
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

// A field's text read as a number: the empty text reads 0.
int numberOf(const QString &text) {
    return text.isEmpty() ? 0 : text.toInt();
}

} // namespace

WBTimeControl::FormatInfo
WBTimeControl::FormatInfo::fromFormat(const QString &format, const QString &am, const QString &pm) {
    FormatInfo info;
    info.timeFormat = format;
    info.timeFormat.replace(QStringLiteral("%-I"), QStringLiteral("%1I"));
    info.timeFormat.replace(QStringLiteral("%l"), QStringLiteral("%1I"));
    info.timeFormat.replace(QStringLiteral("%-H"), QStringLiteral("%1H"));
    info.timeFormat.replace(QStringLiteral("%k"), QStringLiteral("%1H"));
    info.amString = am.isEmpty() ? QStringLiteral("AM") : am;
    info.pmString = pm.isEmpty() ? QStringLiteral("PM") : pm;
    static const QRegularExpression hour(QStringLiteral("%1?[HI]([^%])"));
    const QRegularExpressionMatch match = hour.match(info.timeFormat);
    info.separator = match.hasMatch() ? match.captured(1) : QStringLiteral(":");
    return info;
}

WBTimeControl::FormatInfo WBTimeControl::FormatInfo::user() {
    return fromFormat(LocalTimeFormat::format(), LocalTimeFormat::amString(),
                      LocalTimeFormat::pmString());
}

WBTimeControl::WBTimeControl(QObject *parent)
    : WBTimeControl(FormatInfo::user(), parent) {}

WBTimeControl::WBTimeControl(const FormatInfo &format, QObject *parent)
    : QObject(parent)
    , m_format(format) {
    determineTimeFormatInfo();
}

void WBTimeControl::setFormatInfo(const FormatInfo &format) {
    m_format = format;
    determineTimeFormatInfo();
}

void WBTimeControl::determineTimeFormatInfo() {
    const QString &format = m_format.timeFormat;
    m_unpaddedHour = m_isLocalizing && (format.contains(QStringLiteral("%1I")) ||
                                        format.contains(QStringLiteral("%1H")));
    const bool twentyFourHour = !m_isLocalizing || format.contains(QStringLiteral("%1H")) ||
                                format.contains(QStringLiteral("%H"));
    if (twentyFourHour) {
        m_hourType = 1;
        m_displayedHourMinimum = 0;
        m_displayedHourMaximum = 23;
    } else if (!format.contains(QStringLiteral("%1I")) && !format.contains(QStringLiteral("%I"))) {
        m_hourType = 3;
        m_displayedHourMinimum = 0;
        m_displayedHourMaximum = 11;
    } else {
        m_hourType = 2;
        m_displayedHourMinimum = 1;
        m_displayedHourMaximum = 12;
    }
    if (!visibleFields().contains(Field(m_selected)))
        m_selected = HourField;
    updateStepperValue();
    emit displayChanged();
}

void WBTimeControl::setTime(int hour, int minute, int second) {
    const bool hourChange = hour != m_hour;
    const bool minuteChange = minute != m_minute;
    const bool secondChange = second != m_second;
    m_hour = hour;
    m_minute = minute;
    m_second = second;
    updateStepperValue();
    if (hourChange)
        emit hourChanged(m_hour);
    if (minuteChange)
        emit minuteChanged(m_minute);
    if (secondChange)
        emit secondChanged(m_second);
    if (hourChange || minuteChange || secondChange)
        emit dateChanged(date());
    emit displayChanged();
}

void WBTimeControl::setHour(int hour) {
    setTime(hour, m_minute, m_second);
}

void WBTimeControl::setMinute(int minute) {
    setTime(m_hour, minute, m_second);
}

void WBTimeControl::setSecond(int second) {
    setTime(m_hour, m_minute, second);
}

QDateTime WBTimeControl::date() const {
    return HelpFunctions::localMoment(Clock::now().date(), QTime(m_hour, m_minute, m_second));
}

void WBTimeControl::setDate(const QDateTime &date) {
    const QTime time = date.time();
    setTime(time.hour(), time.minute(), time.second());
}

void WBTimeControl::setShowSeconds(bool show) {
    m_showSeconds = show;
    if (!show && m_selected == SecondField)
        setSelected(HourField);
    emit displayChanged();
}

void WBTimeControl::setAlignStepper(bool align) {
    m_alignStepper = align;
    emit displayChanged();
}

void WBTimeControl::setAppearance(int appearance) {
    m_appearance = appearance;
    emit displayChanged();
}

void WBTimeControl::setIsLocalizing(bool localizing) {
    m_isLocalizing = localizing;
    determineTimeFormatInfo();
}

void WBTimeControl::setEnabled(bool enabled) {
    if (enabled == m_enabled)
        return;
    if (!enabled && m_editing)
        abortEditing();
    m_enabled = enabled;
    emit enabledChanged(enabled);
    emit displayChanged();
}

QList<WBTimeControl::Field> WBTimeControl::visibleFields() const {
    QList<Field> fields{HourField, MinuteField};
    if (m_showSeconds)
        fields.append(SecondField);
    if (m_hourType != 1)
        fields.append(MeridianField);
    return fields;
}

void WBTimeControl::setSelected(int field) {
    if (!visibleFields().contains(Field(field)))
        field = HourField;
    if (m_editing && field != m_selected)
        acceptNewValueInSelectedCell();
    m_selected = field;
    updateStepperValue();
    emit displayChanged();
}

int WBTimeControl::fieldMinimum(int) {
    return 0;
}

int WBTimeControl::fieldMaximum(int field) {
    switch (field) {
    case HourField:
        return 23;
    case MeridianField:
        return 1;
    default:
        return 59;
    }
}

void WBTimeControl::setMinHour(int hour, int minute, int second) {
    m_minSeconds = secondsOf(hour, minute, second);
}

void WBTimeControl::setMaxHour(int hour, int minute, int second) {
    m_maxSeconds = secondsOf(hour, minute, second);
}

void WBTimeControl::clearBounds() {
    m_minSeconds.reset();
    m_maxSeconds.reset();
}

bool WBTimeControl::isTimeWithinBounds(int hour, int minute, int second) const {
    const int time = secondsOf(hour, minute, second);
    return (!m_minSeconds || time >= *m_minSeconds) && (!m_maxSeconds || time <= *m_maxSeconds);
}

void WBTimeControl::roundTime() {
    if (m_roundTo == 0)
        return;
    const HFTime rounded =
        HelpFunctions::roundTime({quint32(m_hour), quint32(m_minute)}, m_roundType, m_roundTo);
    // Taken over as a moment of the day would be: minutes beyond the hour carry into it, hours
    // beyond the day wrap.
    const int minutes = int(rounded.hours) * 60 + int(rounded.minutes);
    const int secs = (minutes * 60) % secondsPerDay;
    setTime(secs / 3600, secs / 60 % 60, 0);
}

QString WBTimeControl::hourString(int hour) const {
    const QString text = QString::number(hourToLocalizedHour(hour));
    return m_unpaddedHour ? text : text.rightJustified(2, u'0');
}

QString WBTimeControl::minuteString(int minute) {
    return QString::number(minute).rightJustified(2, u'0');
}

QString WBTimeControl::secondString(int second) {
    return QString::number(second).rightJustified(2, u'0');
}

int WBTimeControl::hourToLocalizedHour(int hour) const {
    switch (m_hourType) {
    case 2:
        if (hour > 12)
            return hour - 12;
        return hour == 0 ? 12 : hour;
    case 3:
        return hour > 11 ? hour - 12 : hour;
    default:
        return hour;
    }
}

int WBTimeControl::localizedHourToHour(int hour, bool afternoon) const {
    switch (m_hourType) {
    case 2:
        if (afternoon)
            return hour == 12 ? 12 : hour + 12;
        return hour == 12 ? 0 : hour;
    case 3:
        return afternoon ? hour + 12 : hour;
    default:
        return hour;
    }
}

QString WBTimeControl::fieldText(int field) const {
    if (m_editing && field == m_selected && field != MeridianField)
        return m_editText;
    switch (field) {
    case HourField:
        return hourString(m_hour);
    case MinuteField:
        return minuteString(m_minute);
    case SecondField:
        return secondString(m_second);
    default:
        return m_hour > 11 ? m_format.pmString : m_format.amString;
    }
}

void WBTimeControl::updateStepperValue() {
    switch (m_selected) {
    case HourField:
        m_stepperValue = m_hour;
        break;
    case MinuteField:
        m_stepperValue = m_minute;
        break;
    case SecondField:
        m_stepperValue = m_second;
        break;
    default:
        m_stepperValue = m_hour > 11 ? 1 : 0;
        break;
    }
    m_stepperMidValue = m_stepperValue;
}

void WBTimeControl::stepUp() {
    if (!m_enabled)
        return;
    if (m_editing)
        acceptNewValueInSelectedCell();
    const double value = m_stepperValue + 1;
    handleStepperClick(value > stepperMaximum() ? stepperMinimum() : value);
}

void WBTimeControl::stepDown() {
    if (!m_enabled)
        return;
    if (m_editing)
        acceptNewValueInSelectedCell();
    const double value = m_stepperValue - 1;
    handleStepperClick(value < stepperMinimum() ? stepperMaximum() : value);
}

void WBTimeControl::handleStepperClick(double value) {
    m_stepperValue = value;
    int v = int(value);
    int field = m_selected;
    if (field == MeridianField) {
        v = v == 1 ? m_hour + 12 : m_hour - 12;
        field = HourField;
    }
    int hour = m_hour, minute = m_minute, second = m_second;
    (field == HourField ? hour : field == MinuteField ? minute : second) = v;
    if (!isTimeWithinBounds(hour, minute, second)) {
        updateStepperValue();
        beep();
        emit displayChanged();
        emit stepped();
        return;
    }
    if (field == HourField) {
        setHour(v);
    } else if (field == SecondField) {
        setSecond(v);
    } else {
        const int old = m_minute;
        setMinute(v);
        if (m_roundTo > 0) {
            const int storedType = m_roundType;
            const bool wrap = old == 0 && v == 59;
            if (v >= old && !wrap) {
                m_roundType = 1;
            } else {
                if (wrap)
                    setHour(m_hour == 0 ? 23 : m_hour - 1);
                m_roundType = 2;
            }
            roundTime();
            m_roundType = storedType;
        }
    }
    updateStepperValue();
    emit displayChanged();
    emit stepped();
}

bool WBTimeControl::changeText(int position, int length, const QString &text) {
    if (!m_enabled)
        return false;
    if (m_selected == MeridianField) {
        m_editing = true;
        if (!text.isEmpty()) {
            const QChar typed = text.front().toLower();
            if (typed == m_format.amString.front().toLower() && m_hour > 11)
                setHour(m_hour - 12);
            else if (typed == m_format.pmString.front().toLower() && m_hour <= 11)
                setHour(m_hour + 12);
        }
        return false;
    }
    if (position > 1 || length > 2 || !isDecimalDigits(text))
        return false;
    QString result = fieldText(m_selected);
    if (position + length > result.size())
        return false;
    result.replace(position, length, text);
    m_editing = true;
    m_editText = result;
    const int number = numberOf(result);
    m_stepperValue = number >= fieldMinimum(m_selected) && number <= fieldMaximum(m_selected)
                         ? number
                         : m_stepperMidValue;
    emit displayChanged();
    return true;
}

bool WBTimeControl::withinDisplayedRange(int field, int value) const {
    if (field == HourField)
        return value >= m_displayedHourMinimum && value <= m_displayedHourMaximum;
    return value >= 0 && value <= 59;
}

bool WBTimeControl::acceptNewValueInSelectedCell() {
    if (!m_editing)
        return false;
    const int field = m_selected;
    const QString text = fieldText(field);
    m_editing = false;
    m_editText.clear();
    const bool afternoon = fieldText(MeridianField) == m_format.pmString;
    bool accepted = false;
    if (field == MeridianField) {
        const int hour = localizedHourToHour(hourToLocalizedHour(m_hour), afternoon);
        accepted = isTimeWithinBounds(hour, m_minute, m_second);
        if (accepted)
            setHour(hour);
    } else {
        int v = numberOf(text);
        int hour = m_hour, minute = m_minute, second = m_second;
        (field == HourField ? hour : field == MinuteField ? minute : second) = v;
        // The typed hour is tested as it stands, before it is turned into the 24-hour clock.
        accepted = withinDisplayedRange(field, v) && isTimeWithinBounds(hour, minute, second);
        if (accepted) {
            if (field == HourField)
                setHour(localizedHourToHour(v, afternoon));
            else if (field == MinuteField)
                setMinute(v);
            else
                setSecond(v);
        }
    }
    updateStepperValue();
    emit displayChanged();
    if (accepted)
        emit edited();
    else
        beep();
    return accepted;
}

void WBTimeControl::abortEditing() {
    m_editing = false;
    m_editText.clear();
    updateStepperValue();
    emit displayChanged();
}

void WBTimeControl::beep() {
    if (m_alerts)
        m_alerts->beep();
}

void WBTimeControl::encodeWithCoder(KeyedArchiver &coder) const {
    coder.encodeBool(m_showSeconds, QStringLiteral("showSeconds"));
    coder.encodeBool(m_alignStepper, QStringLiteral("alignStepper"));
    coder.encodeInt(m_appearance, QStringLiteral("appearance"));
    coder.encodeBool(m_isLocalizing, QStringLiteral("isLocalizing"));
}

KeyedObject WBTimeControl::initWithCoder(KeyedUnarchiver &coder) {
    auto control = std::make_shared<WBTimeControl>();
    control->setShowSeconds(coder.decodeBool(QStringLiteral("showSeconds")));
    control->setAlignStepper(coder.decodeBool(QStringLiteral("alignStepper")));
    control->setAppearance(int(coder.decodeInt(QStringLiteral("appearance"))));
    control->setIsLocalizing(coder.decodeBool(QStringLiteral("isLocalizing")));
    return control;
}
