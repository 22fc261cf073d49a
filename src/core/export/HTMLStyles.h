#pragma once

#include <QList>
#include <QString>

// The styles the export dialogue offers: the built-in ones of the application's resources, then
// the user's own from the styles folder of the support folder.
class HTMLStyles {
public:
    struct Style {
        QString path;  // identifies the style
        QString title; // the folder name, ".hfstyle" included
        friend bool operator==(const Style &, const Style &) = default;
    };

    // Built-in: every item of the resources' "Styles" folder whose name contains ".hfstyle";
    // the user's: every folder of that kind in their styles folder. Each group by name.
    static QList<Style> availableStyles();
    static QList<Style> stylesIn(const QString &folder, bool foldersOnly);
    // The support folder's "Styles".
    static QString userStylesFolder();
};
