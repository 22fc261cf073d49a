#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QString>

// Reads address cards in the vCard format (versions 2.1, 3.0 and 4.0), the form in which people
// are dragged out of address books and contact programs on Linux: folded lines, quoted-printable
// and base64 values, escaped characters, parameters, grouped properties and several cards one
// after another.
class VCardReader {
public:
    // What a customer takes from a card. A card without a structured name (N) has its formatted
    // name (FN) as the first name.
    struct Person {
        QString firstName;
        QString lastName;
        // The first component of ORG.
        QString organization;
        // From an inline PHOTO; null when there is none or it cannot be decoded.
        QImage image;
        // UID; a null text without one.
        QString uniqueId;
    };

    // Every complete card in the data, in order; none for data without one.
    static QList<Person> read(const QByteArray &data);
};
