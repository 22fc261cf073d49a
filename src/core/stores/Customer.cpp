#include "Customer.h"

#include "../Logging.h"
#include "KeyedArchiver.h"
#include "KeyedUnarchiver.h"

#include <QBuffer>
#include <QCoreApplication>

namespace {

QByteArray pngData(const QImage &image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QString textOf(const QVariant &value) {
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

} // namespace

Customer::Customer()
    : m_name(QCoreApplication::translate("Customer", "New Customer")) {}

void Customer::encodeWithCoder(KeyedArchiver &coder) const {
    coder.encodeInt(m_customerID, QStringLiteral("id"));
    coder.encodeObject(m_name, QStringLiteral("name"));
    coder.encodeBool(m_visible, QStringLiteral("visible"));
    coder.encodeObject(m_color, QStringLiteral("color"));
    coder.encodeObject(m_customerImage.isNull() ? QVariant() : QVariant(pngData(m_customerImage)),
                       QStringLiteral("image"));
    coder.encodeObject(m_ABid.isNull() ? QVariant() : QVariant(m_ABid), QStringLiteral("ABid"));
}

KeyedObject Customer::initWithCoder(KeyedUnarchiver &coder) {
    auto customer = std::make_shared<Customer>();
    customer->m_customerID =
        coder.containsValue(QStringLiteral("id")) ? int(coder.decodeInt(QStringLiteral("id"))) : -1;
    customer->m_name = textOf(coder.decodeObject(QStringLiteral("name")));
    customer->m_visible = !coder.containsValue(QStringLiteral("visible")) ||
                          coder.decodeBool(QStringLiteral("visible"));
    const QColor color = coder.decodeObject(QStringLiteral("color")).value<QColor>();
    if (color.isValid())
        customer->m_color = color;
    const QVariant image = coder.decodeObject(QStringLiteral("image"));
    if (image.typeId() == QMetaType::QByteArray) {
        customer->m_customerImage = QImage::fromData(image.toByteArray());
        if (customer->m_customerImage.isNull())
            qCWarning(lcStores).noquote() << "the picture of the customer" << customer->m_name
                                          << "cannot be decoded and is left out";
    }
    customer->m_ABid = textOf(coder.decodeObject(QStringLiteral("ABid")));
    return customer;
}

QByteArray Customer::archiveList(const QList<Pointer> &customers) {
    QVariantList list;
    for (const auto &customer : customers)
        list.append(QVariant::fromValue(KeyedObject(customer)));
    return KeyedArchiver::archivedData(list);
}

Customer::ListReading Customer::unarchiveList(const QByteArray &data) {
    ListReading reading;
    static const KeyedUnarchiver::ClassTable classes{
        {QStringLiteral("Customer"), &Customer::initWithCoder}};
    const auto result = KeyedUnarchiver::unarchive(data, classes);
    if (!result.ok) {
        reading.problems.append(result.error);
        return reading;
    }
    if (result.root.typeId() != QMetaType::QVariantList) {
        reading.problems.append(QStringLiteral("The archive does not hold a list of customers."));
        return reading;
    }
    const QVariantList list = result.root.toList();
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (auto customer = std::dynamic_pointer_cast<Customer>(list[i].value<KeyedObject>()))
            reading.customers.append(customer);
        else
            reading.problems.append(
                QStringLiteral("Element %1 of the list is not a customer.").arg(i + 1));
    }
    return reading;
}
