#include "preferences/PreferencesForm.h"

#include "platform/LocaleFormat.h"
#include "platform/Preferences.h"

#include <QDateTime>

QDate PreferencesForm::sampleDay() {
    const QDateTime sample =
        QDateTime::fromString(QStringLiteral("2001-03-24T10:45:32+06:00"), Qt::ISODate);
    return sample.toLocalTime().date();
}

QStringList PreferencesForm::dateFormatTitles() {
    QStringList titles;
    for (int style = 1; style <= 4; ++style)
        titles << LocaleFormat::formatDate(sampleDay(), style);
    return titles;
}

int PreferencesForm::rowOfDateFormat(int listDateFormat) {
    return listDateFormat >= 1 && listDateFormat <= 4 ? listDateFormat - 1 : 1;
}

int PreferencesForm::dateFormatOfRow(int row) {
    return row + 1;
}

bool PreferencesForm::isEnabled(QStringView key, const Preferences &preferences) {
    const auto on = [&preferences](QStringView name) { return preferences.boolForKey(name); };
    if (key == u"projectColor")
        return on(u"useProjectColor");
    if (key == u"unfinishedEntryColor")
        return on(u"useUnfinishedEntryColor");
    if (key == u"useRunningReminder" || key == u"usePauseReminder" || key == u"reminderType")
        return on(u"useReminders");
    if (key == u"runningReminderInterval")
        return on(u"useReminders") && on(u"useRunningReminder");
    if (key == u"pausedReminderInterval")
        return on(u"useReminders") && on(u"usePauseReminder");
    return true;
}
