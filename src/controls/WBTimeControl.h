#pragma once

#include "stores/KeyedCoding.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <optional>

class KeyedUnarchiver;
class UserAlerts;

// The logic of the time entry control: a time of day edited field by field (hour, minute,
// optionally second and, on a 12-hour clock, the morning/afternoon field) with a stepper beside
// the fields. It holds the time (the hour always on the 24-hour clock), the clock type taken from
// the user's time format, the stepper's value, the typing rules of each field, the bounds and
// the rounding of stepped minutes. TimeControlWidget draws it and feeds it keys and clicks; the
// editors use it without a widget in their own logic.
//
// What other objects bind to ("hour", "minute", "second", "date", "enabled") is offered as change
// signals; the control always sets its own values.
class WBTimeControl : public QObject, public KeyedCoding {
    Q_OBJECT

public:
    enum Field { HourField = 0, MinuteField = 1, SecondField = 2, MeridianField = 3 };

    // What the control reads from the user's locale.
    struct FormatInfo {
        // A time format in the notation "%H:%M", "%I:%M %p", "%1I:%M %p" ("%1" = hour without
        // leading zero).
        QString timeFormat;
        QString amString;
        QString pmString;
        QString separator;

        // From a C-library time format: "%l" and "%-I" become "%1I", "%k" and "%-H" become "%1H";
        // the separator is the character after the hour; empty designations read "AM" and "PM".
        static FormatInfo fromFormat(const QString &format, const QString &am, const QString &pm);
        // The user's: the program's display time format and the LC_TIME locale's designations.
        static FormatInfo user();
    };

    // The flat look of the border (no frame); any other value is the bordered field.
    static constexpr int flatAppearance = 1;

    explicit WBTimeControl(QObject *parent = nullptr);
    explicit WBTimeControl(const FormatInfo &format, QObject *parent = nullptr);

    int hour() const { return m_hour; }
    int minute() const { return m_minute; }
    int second() const { return m_second; }
    void setHour(int hour);
    void setMinute(int minute);
    void setSecond(int second);
    // Today (the clock's) at the control's time; setting takes hour, minute and second.
    QDateTime date() const;
    void setDate(const QDateTime &date);

    bool showSeconds() const { return m_showSeconds; }
    void setShowSeconds(bool show);
    bool alignStepper() const { return m_alignStepper; }
    void setAlignStepper(bool align);
    int appearance() const { return m_appearance; }
    void setAppearance(int appearance);
    bool isFlatAppearance() const { return m_appearance == flatAppearance; }
    bool isLocalizing() const { return m_isLocalizing; }
    // Switching re-reads the time format; off means a 24-hour clock.
    void setIsLocalizing(bool localizing);
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);

    // The format the control reads (tests put one in place; the default is the user's).
    FormatInfo formatInfo() const { return m_format; }
    void setFormatInfo(const FormatInfo &format);
    // 1: 24-hour clock shown 0..23; 2: 12-hour clock shown 1..12; 3: 12-hour clock shown 0..11.
    int hourType() const { return m_hourType; }
    int displayedHourMinimum() const { return m_displayedHourMinimum; }
    int displayedHourMaximum() const { return m_displayedHourMaximum; }
    QString hourFormat() const {
        return m_unpaddedHour ? QStringLiteral("%01d") : QStringLiteral("%02d");
    }
    QString amString() const { return m_format.amString; }
    QString pmString() const { return m_format.pmString; }
    QString timeSeparator() const { return m_format.separator; }

    // Where beeps go; none means silent.
    void setAlerts(UserAlerts *alerts) { m_alerts = alerts; }

    // The fields shown, in order: hour, minute, the second when shown, the morning/afternoon
    // field on a 12-hour clock.
    QList<Field> visibleFields() const;
    int selected() const { return m_selected; }
    // Selecting a hidden field selects the hour. Ends an edit in progress first.
    void setSelected(int field);
    // Stepping and typing range of a field: 0..23, 0..59, 0..59, 0..1.
    static int fieldMinimum(int field);
    static int fieldMaximum(int field);

    // Inclusive bounds of the time (today at that time); none by default.
    void setMinHour(int hour, int minute, int second);
    void setMaxHour(int hour, int minute, int second);
    void clearBounds();
    bool isTimeWithinBounds(int hour, int minute, int second) const;

    // Rounding applied when minutes are stepped (roundTo 0: none) and by roundTime().
    int roundTo() const { return m_roundTo; }
    void setRoundTo(int roundTo) { m_roundTo = roundTo; }
    int roundType() const { return m_roundType; }
    void setRoundType(int roundType) { m_roundType = roundType; }
    // Rounds hour and minute with the shared rounding rule; seconds become 0.
    void roundTime();

    QString hourString(int hour) const;
    static QString minuteString(int minute);
    static QString secondString(int second);
    int hourToLocalizedHour(int hour) const;
    int localizedHourToHour(int hour, bool afternoon) const;
    // What a field shows: the text being typed while it is edited, else the time's.
    QString fieldText(int field) const;

    // The stepper: the fixed range of the selected field and its value.
    double stepperValue() const { return m_stepperValue; }
    double stepperMinimum() const { return fieldMinimum(m_selected); }
    double stepperMaximum() const { return fieldMaximum(m_selected); }
    double stepperMidValue() const { return m_stepperMidValue; }
    void updateStepperValue();
    // A click on the stepper's arrows: one up or down, wrapping at the ends of the range; a
    // value being typed is taken over first.
    void stepUp();
    void stepDown();
    // The stepper was set to value, taken over for the selected field: the morning/afternoon
    // field moves the hour by 12; a time outside the bounds beeps and changes nothing; with a
    // rounding step, a stepped minute is rounded in the step's direction (down from 0 to 59 the
    // hour goes back first, and the minute rounds down).
    void handleStepperClick(double value);

    // Typing into the selected field: replaces length characters at position with text. Returns
    // whether the change is taken as text; the morning/afternoon field refuses every change as
    // text but switches on the first letter of either designation.
    bool changeText(int position, int length, const QString &text);
    bool isEditing() const { return m_editing; }
    // Ends editing of the selected field: takes the typed value over when it is allowed.
    // Returns whether it was taken over; a refused value leaves the time unchanged.
    bool acceptNewValueInSelectedCell();
    // Ends editing, the typed text dropped.
    void abortEditing();

    // Keyed archive: "showSeconds", "alignStepper", "appearance", "isLocalizing".
    QString className() const override { return QStringLiteral("WBTimeControl"); }
    void encodeWithCoder(KeyedArchiver &coder) const override;
    static KeyedObject initWithCoder(KeyedUnarchiver &coder);

signals:
    void hourChanged(int hour);
    void minuteChanged(int minute);
    void secondChanged(int second);
    // Whenever hour, minute or second changes.
    void dateChanged(const QDateTime &date);
    void enabledChanged(bool enabled);
    // Something shown changed (fields, selection, stepper, look): views redraw.
    void displayChanged();
    // A stepper click was handled (also one refused by the bounds).
    void stepped();
    // A typed value was taken over when editing ended.
    void edited();

private:
    void determineTimeFormatInfo();
    void setTime(int hour, int minute, int second);
    bool withinDisplayedRange(int field, int value) const;
    void beep();

    FormatInfo m_format;
    int m_hour = 0;
    int m_minute = 0;
    int m_second = 0;
    bool m_showSeconds = false;
    bool m_alignStepper = false;
    bool m_isLocalizing = true;
    bool m_enabled = true;
    int m_appearance = 0;
    int m_selected = HourField;
    int m_hourType = 1;
    int m_displayedHourMinimum = 0;
    int m_displayedHourMaximum = 23;
    bool m_unpaddedHour = false;
    std::optional<int> m_minSeconds;
    std::optional<int> m_maxSeconds;
    int m_roundTo = 0;
    int m_roundType = 0;
    double m_stepperValue = 0;
    double m_stepperMidValue = 0;
    bool m_editing = false;
    QString m_editText;
    UserAlerts *m_alerts = nullptr;
};
