#include "Filter.h"

#include "../stores/KeyedArchiver.h"
#include "SearchArchiveClasses.h"

#include "../Logging.h"

#include <QCoreApplication>
#include <QFile>

namespace {

MPSearchQuery::Pointer queryFrom(const QVariant &value) {
    return std::dynamic_pointer_cast<MPSearchQuery>(value.value<KeyedObject>());
}

QVariant objectOf(const MPSearchQuery::Pointer &query) {
    return query ? QVariant::fromValue(KeyedObject(query)) : QVariant();
}

} // namespace

Filter::Filter()
    : m_name(QCoreApplication::translate("Filter", "New Filter")) {}

void Filter::encodeWithCoder(KeyedArchiver &coder) const {
    coder.encodeObject(m_name, QStringLiteral("name"));
    coder.encodeObject(objectOf(m_projectQuery), QStringLiteral("projectQuery"));
    coder.encodeObject(objectOf(m_entryQuery), QStringLiteral("entryQuery"));
    coder.encodeObject(m_projectsQueryActive, QStringLiteral("isProjectsQueryActive"));
    coder.encodeObject(m_entriesQueryActive, QStringLiteral("isEntriesQueryActive"));
}

KeyedObject Filter::initWithCoder(KeyedUnarchiver &coder) {
    auto filter = std::make_shared<Filter>();
    const QVariant name = coder.decodeObject(QStringLiteral("name"));
    filter->m_name = name.typeId() == QMetaType::QString ? name.toString() : QString();
    filter->m_projectQuery = queryFrom(coder.decodeObject(QStringLiteral("projectQuery")));
    filter->m_entryQuery = queryFrom(coder.decodeObject(QStringLiteral("entryQuery")));
    const QVariant projects = coder.decodeObject(QStringLiteral("isProjectsQueryActive"));
    const QVariant entries = coder.decodeObject(QStringLiteral("isEntriesQueryActive"));
    filter->m_projectsQueryActive = !projects.isValid() || projects.toBool();
    filter->m_entriesQueryActive = !entries.isValid() || entries.toBool();
    return filter;
}

QByteArray Filter::archiveList(const QList<Pointer> &filters) {
    QVariantList list;
    for (const auto &filter : filters)
        list.append(QVariant::fromValue(KeyedObject(filter)));
    return KeyedArchiver::archivedData(list);
}

std::optional<QList<Filter::Pointer>> Filter::unarchiveList(const QByteArray &data,
                                                            QString *error) {
    const auto result = KeyedUnarchiver::unarchive(data, SearchArchiveClasses::table());
    const auto failed = [error](const QString &reason) {
        if (error)
            *error = reason;
        return std::nullopt;
    };
    if (!result.ok)
        return failed(result.error);
    if (result.root.typeId() != QMetaType::QVariantList)
        return failed(QStringLiteral("The archive does not hold a list of filters."));
    QList<Pointer> filters;
    for (const QVariant &element : result.root.toList()) {
        auto filter = std::dynamic_pointer_cast<Filter>(element.value<KeyedObject>());
        if (!filter)
            return failed(QStringLiteral("The archive's list holds something other than filters."));
        filters.append(filter);
    }
    return filters;
}

bool Filter::readListFile(const QString &path, QList<Pointer> &filters, QString *error) {
    QFile file(path);
    if (!file.exists())
        return true;
    QString reason;
    const auto failed = [&] {
        qCWarning(lcSearch).noquote() << "cannot read" << path << ":" << reason;
        if (error)
            *error = reason;
        return false;
    };
    if (!file.open(QIODevice::ReadOnly)) {
        reason = file.errorString();
        return failed();
    }
    const auto read = unarchiveList(file.readAll(), &reason);
    if (!read)
        return failed();
    filters = *read;
    return true;
}
