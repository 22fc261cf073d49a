#pragma once

#include <QDate>
#include <QStringList>

class Preferences;

// What the preferences window decides without a widget: the rows of the list's date styles and
// which settings take input given the others.
class PreferencesForm {
public:
    // The day the date style rows show: 2001-03-24 10:45:32 +0600, in the local time zone.
    static QDate sampleDay();
    // The sample day in the short, medium, long and full date styles (rows 0 to 3).
    static QStringList dateFormatTitles();
    // "listDateFormat" 1 to 4 is row 0 to 3; any other value is shown as the medium style, as
    // the list does.
    static int rowOfDateFormat(int listDateFormat);
    static int dateFormatOfRow(int row);

    // A tint's colour only while the tint is used; the reminder settings only while reminders
    // are on, and each interval only while its reminder is on. Every other setting always.
    static bool isEnabled(QStringView key, const Preferences &preferences);
};
