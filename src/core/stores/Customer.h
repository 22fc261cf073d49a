#pragma once

#include "KeyedCoding.h"

#include <QColor>
#include <QImage>

class KeyedUnarchiver;

// A customer that projects refer to by id: its name, the colour of its check box, whether its
// projects are shown, an optional picture and the id of the address-book card it came from.
class Customer : public KeyedCoding {
public:
    using Pointer = std::shared_ptr<Customer>;

    // The outcome of reading a list of customers: what could be read, and why anything could not.
    struct ListReading {
        QList<Pointer> customers;
        QStringList problems;
    };

    Customer();

    // -1 until the customer storage hands out an id.
    int customerID() const { return m_customerID; }
    void setCustomerID(int customerID) { m_customerID = customerID; }
    QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    bool visible() const { return m_visible; }
    void setVisible(bool visible) { m_visible = visible; }
    QColor color() const { return m_color; }
    void setColor(const QColor &color) { m_color = color; }
    // A null image for none.
    QImage customerImage() const { return m_customerImage; }
    void setCustomerImage(const QImage &image) { m_customerImage = image; }
    // A null text for none.
    QString ABid() const { return m_ABid; }
    void setABid(const QString &ABid) { m_ABid = ABid; }

    QString className() const override { return QStringLiteral("Customer"); }
    // "id", "name", "visible", "color", "image" (PNG data) and "ABid", in this order.
    void encodeWithCoder(KeyedArchiver &coder) const override;
    static KeyedObject initWithCoder(KeyedUnarchiver &coder);

    // A list of customers as a keyed archive, and back. Elements that are no customers are left
    // out and named among the problems; an archive that cannot be read yields no customers.
    static QByteArray archiveList(const QList<Pointer> &customers);
    static ListReading unarchiveList(const QByteArray &data);

private:
    int m_customerID = -1;
    QString m_name;
    bool m_visible = true;
    QColor m_color = Qt::red;
    QImage m_customerImage;
    QString m_ABid;
};
