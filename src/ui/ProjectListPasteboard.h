#pragma once

#include "model/ProjectItem.h"

#include <QString>

class QMimeData;

// The clipboard and drag formats of the project list. Each pasteboard type travels under the MIME
// type "application/x-hourfold-" followed by the type's name:
//
//   EntriesPBoardType, FlatFeeEntriesPBoardType    copy and paste of a timed entry or flat fee
//   DragDropEntriesPboardType,
//   DragDropFlatFeeEntriesPboardType               dragging a timed entry or flat fee
//   DragDropProjectsPboardType                     dragging a project: its index as decimal text
//   DragDropCustomerPboardType                     a customer from the customer list: its id
//
// Entries and flat fees are carried as the keyed archive (XML property list) of their dictionary
// representation (a text or moment that is not set as no value); a copy adds the item's description
// as plain text. Address cards arrive as "text/vcard" or "text/x-vcard", files as "text/uri-list".
class ProjectListPasteboard {
public:
    static QString entriesType();
    static QString flatFeeEntriesType();
    static QString dragEntriesType();
    static QString dragFlatFeeEntriesType();
    static QString dragProjectsType();
    static QString dragCustomerType();
    static QStringList vCardTypes();

    // What a copy puts on the clipboard: the item's archived dictionary and its description.
    static QMimeData *copyData(const ProjectItem &item);
    // What dragging the item carries.
    static QMimeData *dragData(const ProjectItem &item);
    // What dragging the project at the index carries.
    static QMimeData *dragData(int projectIndex);

    // Whether the data holds a copied timed entry or flat fee.
    static bool hasCopiedItem(const QMimeData &data);
    // A new item made from copied data: a timed entry when there is one, else a flat fee; null
    // when there is neither or the archive cannot be read.
    static std::shared_ptr<ProjectItem> itemFromCopy(const QMimeData &data);

    // A timed entry or flat fee made from an archived dictionary representation, its values set
    // key by key; null when the archive cannot be read.
    static std::shared_ptr<ProjectItem> entryFromArchive(const QByteArray &archive);
    static std::shared_ptr<ProjectItem> flatFeeFromArchive(const QByteArray &archive);
    static QByteArray archive(const ProjectItem &item);

private:
    static QString typeName(QStringView pasteboardType);
};
