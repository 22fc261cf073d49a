#pragma once

#include <QString>

// The per-user folder that PDF and RTF exports write their HTML report into before converting
// it: "hfexport-" and the user name inside the system's temporary folder. It is created
// accessible to its owner only, and used only when it is a real folder of this user that no
// one else can reach, so that another user cannot plant or read its files.
class ScratchFolder {
public:
    struct Result {
        bool ok = false;
        QString error;
    };

    static QString path();
    // Creates the folder when it is missing (keeping what is in it otherwise) and checks it.
    static Result ensure();
    // The same for any folder path.
    static Result ensure(const QString &path);
};
