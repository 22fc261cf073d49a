#pragma once

#include "desktop/TrayIcon.h"

class QSystemTrayIcon;

// The tray icon through QSystemTrayIcon, with the pictures "menubar" and, where the tray
// highlights, "menubar_alt".
class QtTrayIcon : public TrayIcon {
    Q_OBJECT

public:
    explicit QtTrayIcon(QObject *parent = nullptr);

    bool isAvailable() const override;
    void show(QMenu *menu) override;
    void hide() override;
    bool isShown() const override;
    void setToolTip(const QString &text) override;

private:
    QSystemTrayIcon *m_icon;
};
