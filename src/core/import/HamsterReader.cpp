#include "HamsterReader.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>

namespace {

QString tr(const char *text) {
    return QCoreApplication::translate("HamsterReader", text);
}

// The tables and columns read; anything else in the database is left alone.
const QList<std::pair<QString, QStringList>> &requiredColumns() {
    static const QList<std::pair<QString, QStringList>> columns{
        {QStringLiteral("facts"),
         {QStringLiteral("id"), QStringLiteral("activity_id"), QStringLiteral("start_time"),
          QStringLiteral("end_time"), QStringLiteral("description")}},
        {QStringLiteral("activities"),
         {QStringLiteral("id"), QStringLiteral("name"), QStringLiteral("category_id")}},
        {QStringLiteral("categories"), {QStringLiteral("id"), QStringLiteral("name")}},
        {QStringLiteral("tags"), {QStringLiteral("id"), QStringLiteral("name")}},
        {QStringLiteral("fact_tags"), {QStringLiteral("fact_id"), QStringLiteral("tag_id")}},
    };
    return columns;
}

// Hamster writes "2026-11-01 08:00:00", older versions also with fractions of a second.
std::optional<qint64> localMoment(const QVariant &value) {
    const QString text = value.toString().left(19);
    QDateTime moment = QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    if (!moment.isValid())
        moment = QDateTime::fromString(text.left(16), QStringLiteral("yyyy-MM-dd HH:mm"));
    if (!moment.isValid())
        return std::nullopt;
    return moment.toSecsSinceEpoch();
}

ImportResult readDatabase(QSqlDatabase &db, const QString &path,
                          const ImportReader::Progress &progress) {
    if (!db.open())
        return ImportResult::failed(
            tr("Cannot open \"%1\" as a database: %2").arg(path, db.lastError().text()));
    QString version;
    QSqlQuery versionQuery(db);
    if (versionQuery.exec(QStringLiteral("SELECT version FROM version")) && versionQuery.next())
        version = versionQuery.value(0).toString();
    for (const auto &[table, columns] : requiredColumns()) {
        const QSqlRecord record = db.record(table);
        for (const QString &column : columns) {
            if (record.indexOf(column) < 0)
                return ImportResult::failed(
                    (version.isEmpty() ? tr("\"%1\" is not a Hamster database, or one of another "
                                            "version: it has no column %2 in a table %3.")
                                       : tr("\"%1\" is a Hamster database of version %4, which "
                                            "has no column %2 in the table %3."))
                        .arg(QFileInfo(path).fileName(), column, table, version));
        }
    }
    QHash<qint64, QStringList> tags;
    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (!query.exec(QStringLiteral("SELECT fact_tags.fact_id, tags.name FROM fact_tags JOIN tags "
                                   "ON tags.id = fact_tags.tag_id ORDER BY fact_tags.rowid")))
        return ImportResult::failed(query.lastError().text());
    while (query.next())
        tags[query.value(0).toLongLong()].append(query.value(1).toString());
    qint64 total = 0;
    if (query.exec(QStringLiteral("SELECT count(*) FROM facts")) && query.next())
        total = query.value(0).toLongLong();
    if (!query.exec(QStringLiteral(
            "SELECT facts.id, facts.start_time, facts.end_time, facts.description, "
            "activities.name, categories.name FROM facts LEFT JOIN activities ON activities.id = "
            "facts.activity_id LEFT JOIN categories ON categories.id = activities.category_id "
            "ORDER BY facts.start_time, facts.id")))
        return ImportResult::failed(query.lastError().text());
    ImportResult result;
    result.placeWord = tr("fact");
    qint64 done = 0;
    while (query.next()) {
        if (!ImportReader::goOn(progress, ++done, total))
            return ImportResult::wasCancelled();
        const int id = query.value(0).toInt();
        ImportedEntry entry;
        const auto start = localMoment(query.value(1));
        const bool running = query.value(2).isNull() || query.value(2).toString().isEmpty();
        const auto end = running ? std::nullopt : localMoment(query.value(2));
        if (!start || (!running && !end)) {
            result.addProblem({}, id, tr("unreadable start or end time"));
            continue;
        }
        if (end && *end < *start) {
            result.addProblem({}, id, tr("ends before it starts"));
            continue;
        }
        entry.start = *start;
        entry.end = end;
        entry.comment = query.value(3).toString();
        entry.project = query.value(4).isNull() ? tr("No activity") : query.value(4).toString();
        entry.customer = query.value(5).toString();
        entry.tags = tags.value(id);
        entry.line = id;
        result.entries.append(std::move(entry));
    }
    return result;
}

} // namespace

ImportResult HamsterReader::read(const QString &path, const Progress &progress) const {
    if (!QFileInfo(path).isFile())
        return ImportResult::failed(tr("Cannot read \"%1\": there is no such file").arg(path));
    const QString connection = QUuid::createUuid().toString();
    ImportResult result;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(path);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        result = readDatabase(db, path, progress);
        db.close();
    }
    QSqlDatabase::removeDatabase(connection);
    if (result.error.isEmpty() && !result.cancelled)
        result.finish();
    return result;
}
