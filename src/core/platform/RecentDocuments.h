#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

// The desktop's list of recently used files (recently-used.xbel in the user's data folder, read
// by file dialogs and launchers). Adding a file rewrites the list with every other bookmark kept
// as it was; a list that cannot be read is left alone.
class RecentDocuments {
public:
    // The list of the user's desktop session.
    static QString defaultPath();

    explicit RecentDocuments(QString path = defaultPath());

    // Records that the program used the file now; false (and logged) when the list could not be
    // read or written.
    bool add(const QString &file, const QString &mimeType, const QDateTime &when);
    // The program's files on the list that still exist, the most recently used first.
    QStringList files(const QString &mimeType, int maximum) const;

private:
    QString m_path;
};
