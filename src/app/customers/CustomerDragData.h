#pragma once

#include <QByteArray>
#include <QImage>
#include <optional>

class QMimeData;

// What customers travel as in drags and what the customer list, the drop box and the image well
// take from a drop: a customer as its id under the project list's customer type, address cards
// as vCard data or .vcf files, and pictures as image data or image files.
class CustomerDragData {
public:
    // The id as decimal text under "application/x-hourfold-DragDropCustomerPboardType".
    static QMimeData *customerData(int customerID);
    // The dragged customer's id; none when the data holds no customer.
    static std::optional<int> customerID(const QMimeData &data);

    // vCard data ("text/vcard", "text/x-vcard") or local files named *.vcf or *.vcard.
    static bool hasVCard(const QMimeData &data);
    // The vCard data, or the contents of every card file one after another; empty without any.
    static QByteArray vCardData(const QMimeData &data);

    // Image data in any format Qt reads, or local files of such a format.
    static bool hasImage(const QMimeData &data);
    // The first picture that can be read; a null image without one.
    static QImage image(const QMimeData &data);
};
