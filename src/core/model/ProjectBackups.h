#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

// Rotating copies of project files, kept in one folder (the support folder's "Backups"). Before a
// save replaces a project file, the file as it is on disk is copied when the newest copy of that
// document is an hour old or more, and at once, whatever the hour, when the save would leave the
// file at less than half its size or drop more than a tenth of its entries. A document keeps every
// copy of the 24 most recent hours that have one, the newest copy of each of the 30 most recent
// days and of the 12 most recent months; older copies are removed. Names are
// "<UTC moment> <document name> (<key>).projects", so that they sort by date and say which
// document they belong to; the key tells apart documents of the same name in other folders.
class ProjectBackups {
public:
    struct Copy {
        QString path;
        QString documentName;
        QString documentKey;
        QDateTime made; // UTC
    };
    // What a copy holds, read on demand.
    struct Summary {
        bool ok = false;
        QString error;
        int projects = 0;
        int entries = 0; // timed entries and flat fees
        int minutes = 0; // effective minutes of the timed entries
    };

    explicit ProjectBackups(QString folder);

    // The folder that every save of this process keeps copies in; none is kept while it is empty,
    // as it is until the program's start-up sets it.
    static void setShared(const QString &folder);
    static QString sharedFolder();

    QString folder() const { return m_folder; }

    // Keeps a copy of the project file at path before bytes replace it, when one is due, and then
    // removes this document's copies that the rotation no longer keeps. Returns the new copy's
    // path, or an empty text when none was due or it could not be made (which is logged and never
    // stops the save).
    QString beforeReplacing(const QString &path, const QList<QByteArray> &pieces) const;

    // Every copy in the folder, newest first.
    QList<Copy> copies() const;
    // The copy that a file name describes; nothing for a file that is no copy.
    static std::optional<Copy> copyAt(const QString &path);
    // The copies (of one document, any order) that the rotation removes.
    static QList<Copy> toPrune(const QList<Copy> &copies);
    static Summary summarize(const QString &copyPath);
    // The entries and flat fees of project file bytes, counted from their elements.
    static int countEntries(QByteArrayView bytes);

private:
    static QString keyOf(const QString &path);
    QString m_folder;
};
