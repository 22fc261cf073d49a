#pragma once

#include <QCoreApplication>
#include <QString>

// The folder the HTML report is written into before an engine renders it to PDF or paper. It
// lives in the shared temporary folder, so it is per user ("hfexport-<user name>"), readable by
// its owner only, and never used when someone else could have placed it there: a folder of that
// name that is a symbolic link, or is not a folder, or belongs to another user is refused.
class ReportScratchFolder {
    Q_DECLARE_TR_FUNCTIONS(ReportScratchFolder)

public:
    struct Result {
        bool ok = false;
        QString error; // why the folder cannot be used, naming it
    };

    // QDir::tempPath() + "/hfexport-" + the user name of the effective user.
    static QString defaultPath();

    // Removes the folder with everything in it and creates it again, empty, with permissions
    // 0700, so that no file of an earlier export is left.
    static Result recreate(const QString &path);
};
