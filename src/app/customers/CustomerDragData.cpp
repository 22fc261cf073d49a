#include "customers/CustomerDragData.h"

#include "ProjectListPasteboard.h"
#include "platform/DroppedFiles.h"

#include <algorithm>

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QMimeData>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

bool isCardFile(const QString &path) {
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix == u"vcf" || suffix == u"vcard";
}

bool isImageFile(const QString &path) {
    return !QImageReader::imageFormat(path).isEmpty();
}

// The image formats among the data's MIME types ("image/png", ...).
QStringList imageTypes(const QMimeData &data) {
    QStringList types;
    for (const QString &type : data.formats()) {
        if (type.startsWith(u"image/"))
            types << type;
    }
    return types;
}

} // namespace

QMimeData *CustomerDragData::customerData(int customerID) {
    auto *data = new QMimeData;
    data->setData(ProjectListPasteboard::dragCustomerType(), QByteArray::number(customerID));
    return data;
}

std::optional<int> CustomerDragData::customerID(const QMimeData &data) {
    if (!data.hasFormat(ProjectListPasteboard::dragCustomerType()))
        return std::nullopt;
    bool ok = false;
    const int id = data.data(ProjectListPasteboard::dragCustomerType()).trimmed().toInt(&ok);
    return ok ? std::optional<int>(id) : std::nullopt;
}

bool CustomerDragData::hasVCard(const QMimeData &data) {
    for (const QString &type : ProjectListPasteboard::vCardTypes()) {
        if (data.hasFormat(type))
            return true;
    }
    const QStringList files = DroppedFiles::localFiles(data);
    return std::any_of(files.begin(), files.end(), isCardFile);
}

QByteArray CustomerDragData::vCardData(const QMimeData &data) {
    for (const QString &type : ProjectListPasteboard::vCardTypes()) {
        if (data.hasFormat(type))
            return data.data(type);
    }
    QByteArray cards;
    for (const QString &path : DroppedFiles::localFiles(data)) {
        if (!isCardFile(path))
            continue;
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            cards += file.readAll() + '\n';
    }
    return cards;
}

bool CustomerDragData::hasImage(const QMimeData &data) {
    if (data.hasImage() || !imageTypes(data).isEmpty())
        return true;
    const QStringList files = DroppedFiles::localFiles(data);
    return std::any_of(files.begin(), files.end(), isImageFile);
}

QImage CustomerDragData::image(const QMimeData &data) {
    if (data.hasImage()) {
        const QImage image = qvariant_cast<QImage>(data.imageData());
        if (!image.isNull())
            return image;
    }
    for (const QString &type : imageTypes(data)) {
        const QImage image = QImage::fromData(data.data(type));
        if (!image.isNull())
            return image;
    }
    for (const QString &path : DroppedFiles::localFiles(data)) {
        if (!isImageFile(path))
            continue;
        const QImage image(path);
        if (!image.isNull())
            return image;
    }
    return {};
}
