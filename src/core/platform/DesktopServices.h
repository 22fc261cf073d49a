#pragma once

#include <QString>
#include <QStringList>

// What the desktop does for the program: opening a web address or a file with its default
// application, showing a file in the file manager, and asking the user in an alert. Each
// operation answers false when it could not be done (a path that does not exist, no desktop to
// ask); tests answer with a stand-in.
class DesktopServices {
public:
    struct Alert {
        enum class Style { Informational, Warning, Critical };
        Style style = Style::Informational;
        QString message;
        QString informativeText;
        QStringList buttons; // the first is the default
    };

    virtual ~DesktopServices() = default;

    virtual bool openUrl(const QString &url) = 0;
    virtual bool openPath(const QString &path) = 0;
    // Shows the file or folder selected in the file manager.
    virtual bool revealPath(const QString &path) = 0;
    // Runs the alert window-modally; the index of the button pressed.
    virtual int runAlert(const Alert &alert) = 0;
};
