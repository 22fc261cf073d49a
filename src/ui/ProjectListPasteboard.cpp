#include "ProjectListPasteboard.h"

#include "model/Entry.h"
#include "model/FlatFeeEntry.h"
#include "stores/KeyedArchiver.h"
#include "stores/KeyedUnarchiver.h"

#include <QMimeData>

namespace {

std::optional<QVariantMap> unarchivedDictionary(const QByteArray &archive) {
    if (archive.isEmpty())
        return std::nullopt;
    const KeyedUnarchiver::Result result = KeyedUnarchiver::unarchive(archive, {});
    if (!result.ok || result.root.typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    return result.root.toMap();
}

PauseList pausesFrom(const QVariant &value) {
    PauseList pauses;
    const QVariantList list = value.toList();
    for (const QVariant &element : list) {
        const QVariantMap pause = element.toMap();
        pauses.append(std::make_shared<PauseEntry>(pause.value(QStringLiteral("from")).toDateTime(),
                                                   pause.value(QStringLiteral("to")).toDateTime()));
    }
    return pauses;
}

} // namespace

QString ProjectListPasteboard::typeName(QStringView pasteboardType) {
    return QStringLiteral("application/x-hourfold-") + pasteboardType;
}

QString ProjectListPasteboard::entriesType() {
    return typeName(u"EntriesPBoardType");
}

QString ProjectListPasteboard::flatFeeEntriesType() {
    return typeName(u"FlatFeeEntriesPBoardType");
}

QString ProjectListPasteboard::dragEntriesType() {
    return typeName(u"DragDropEntriesPboardType");
}

QString ProjectListPasteboard::dragFlatFeeEntriesType() {
    return typeName(u"DragDropFlatFeeEntriesPboardType");
}

QString ProjectListPasteboard::dragProjectsType() {
    return typeName(u"DragDropProjectsPboardType");
}

QString ProjectListPasteboard::dragCustomerType() {
    return typeName(u"DragDropCustomerPboardType");
}

QStringList ProjectListPasteboard::vCardTypes() {
    return {QStringLiteral("text/vcard"), QStringLiteral("text/x-vcard")};
}

QByteArray ProjectListPasteboard::archive(const ProjectItem &item) {
    // A text or moment that is not set (the day of a period entry, the pause moment of an entry
    // that is not paused) is written as no value, not as an empty text or some date.
    QVariantMap values = item.dictionaryRepresentation();
    for (auto it = values.begin(); it != values.end(); ++it) {
        if ((it->typeId() == QMetaType::QDateTime && !it->toDateTime().isValid()) ||
            (it->typeId() == QMetaType::QString && it->toString().isNull()))
            *it = QVariant();
    }
    return KeyedArchiver::archivedData(QVariant(values));
}

QMimeData *ProjectListPasteboard::copyData(const ProjectItem &item) {
    auto *data = new QMimeData;
    data->setData(item.isEntry() ? entriesType() : flatFeeEntriesType(), archive(item));
    data->setText(item.stringDescription());
    return data;
}

QMimeData *ProjectListPasteboard::dragData(const ProjectItem &item) {
    auto *data = new QMimeData;
    data->setData(item.isEntry() ? dragEntriesType() : dragFlatFeeEntriesType(), archive(item));
    return data;
}

QMimeData *ProjectListPasteboard::dragData(int projectIndex) {
    auto *data = new QMimeData;
    data->setData(dragProjectsType(), QByteArray::number(projectIndex));
    return data;
}

bool ProjectListPasteboard::hasCopiedItem(const QMimeData &data) {
    return data.hasFormat(entriesType()) || data.hasFormat(flatFeeEntriesType());
}

std::shared_ptr<ProjectItem> ProjectListPasteboard::itemFromCopy(const QMimeData &data) {
    if (data.hasFormat(entriesType()))
        return entryFromArchive(data.data(entriesType()));
    if (data.hasFormat(flatFeeEntriesType()))
        return flatFeeFromArchive(data.data(flatFeeEntriesType()));
    return nullptr;
}

std::shared_ptr<ProjectItem> ProjectListPasteboard::entryFromArchive(const QByteArray &archive) {
    const auto values = unarchivedDictionary(archive);
    if (!values)
        return nullptr;
    auto entry = std::make_shared<Entry>();
    for (auto it = values->cbegin(); it != values->cend(); ++it) {
        const QString &key = it.key();
        const QVariant &value = it.value();
        if (key == u"time")
            entry->setTime(value.toInt());
        else if (key == u"date")
            entry->setDate(value.toString());
        else if (key == u"fromTime")
            entry->setFromTime(value.toString());
        else if (key == u"fromDate")
            entry->setFromDate(value.toString());
        else if (key == u"toTime")
            entry->setToTime(value.toString());
        else if (key == u"toDate")
            entry->setToDate(value.toString());
        else if (key == u"tags")
            entry->setTags(value.toString());
        else if (key == u"comment")
            entry->setComment(value.toString());
        else if (key == u"isWorking")
            entry->setIsWorking(value.toBool());
        else if (key == u"hasPeriod")
            entry->setHasPeriod(value.toBool());
        else if (key == u"pausedAt")
            entry->setPausedAt(value.toDateTime());
        else if (key == u"pauseEntries")
            entry->setPauseEntries(pausesFrom(value));
    }
    return entry;
}

std::shared_ptr<ProjectItem> ProjectListPasteboard::flatFeeFromArchive(const QByteArray &archive) {
    const auto values = unarchivedDictionary(archive);
    if (!values)
        return nullptr;
    auto fee = std::make_shared<FlatFeeEntry>();
    for (auto it = values->cbegin(); it != values->cend(); ++it) {
        const QString &key = it.key();
        const QVariant &value = it.value();
        if (key == u"date")
            fee->setDate(value.toString());
        else if (key == u"amount")
            fee->setAmount(value.toFloat());
        else if (key == u"comment")
            fee->setComment(value.toString());
        else if (key == u"tags")
            fee->setTags(value.toString());
    }
    return fee;
}
