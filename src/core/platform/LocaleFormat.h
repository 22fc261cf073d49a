#pragma once

#include <QDate>
#include <QString>

// Locale-dependent display texts through ICU: the four date styles and the locale's name.
// Stored forms never go through here.
class LocaleFormat {
public:
    // The locale of a category as the C library sees it: LC_ALL, then the category's own variable
    // (LC_TIME, LC_MONETARY, ...), then LANG; encoding and modifier removed ("de_DE"). "C" when
    // none is set.
    static QString localeNameFor(const char *categoryVariable);

    // The ICU locale used for dates; tests put another in place. An empty name goes back to the
    // environment's.
    static QString dateLocale();
    static void setDateLocale(const QString &name);

    // Date style 1 short, 2 medium, 3 long, 4 full; anything else is treated as medium.
    static QString formatDate(QDate date, int style);
    // The date in the style of the "listDateFormat" preference.
    static QString formatDateInListStyle(QDate date);

    // Moments in the pause editor: the short date and medium time styles with the seconds (and
    // the separator before them) removed. Parsing is strict; invalid when the text does not fit.
    static QString pauseMomentPattern();
    static QString formatPauseMoment(const QDateTime &moment);
    static QDateTime parsePauseMoment(const QString &text);
};
