#pragma once

#include <QObject>

class QMenu;

// The program's icon in the panel's tray with its menu. The application uses QSystemTrayIcon
// (a StatusNotifierItem or an XEmbed icon); tests put a recorder in its place.
class TrayIcon : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // Whether the desktop has a tray that shows icons at all.
    virtual bool isAvailable() const = 0;
    // Puts the icon into the tray with the menu that opens on it.
    virtual void show(QMenu *menu) = 0;
    virtual void hide() = 0;
    virtual bool isShown() const = 0;
    virtual void setToolTip(const QString &text) = 0;

signals:
    // A left click (or the tray's "activate") on the icon.
    void clicked();
};
