#pragma once

#include <QString>
#include <QStringList>

// The main window's toolbar as data: the items it can hold, the default arrangement, the saved
// arrangement ("TB Item Identifiers") and how an arrangement saved by an older version is brought
// up to date. The window builds its QToolBar from this.
class ToolbarItems {
public:
    struct Item {
        QString identifier;
        QString label; // also the palette label
        QString image; // picture name; empty for the two items that hold a control
        QString action;
    };

    // Items of the platform that every toolbar allows.
    static inline const QString separator = QStringLiteral("Separator");
    static inline const QString space = QStringLiteral("Space");
    static inline const QString flexibleSpace = QStringLiteral("FlexibleSpace");

    static const QList<Item> &items();
    // The item with the identifier; nullptr for the platform items and unknown identifiers.
    static const Item *item(const QString &identifier);
    static QStringList defaultItemIdentifiers();
    static QStringList allowedItemIdentifiers();

    // Position of the first item with the identifier, or the number of items when it is absent.
    static int indexOfItem(const QString &identifier, const QStringList &items);
    static bool isItemMissing(const QString &identifier, const QStringList &items);

    // The version text "3.1.2" as the number 312 ("2.3" is 230); -1 for an empty text.
    static int versionNumber(const QString &version);
    // The saved arrangement after an update from the version that last ran (empty when none has):
    // from 2.3 on "Attachments" comes in after "Edit" when missing, and up to 3.0.9 the default
    // arrangement replaces the saved one.
    static QStringList migrate(const QStringList &saved, const QString &lastVersion);
    // Drops unknown identifiers and repeats of an item (separators and spaces may repeat).
    static QStringList validated(const QStringList &saved);
};
