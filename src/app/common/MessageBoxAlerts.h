#pragma once

#include "platform/UserAlerts.h"

class QWidget;

// Alerts as message boxes over the main window, and the desktop's beep.
class MessageBoxAlerts : public UserAlerts {
public:
    void setParentWindow(QWidget *window) { m_window = window; }
    void beep() override;
    int runModal(const Alert &alert) override;

private:
    QWidget *m_window = nullptr;
};
