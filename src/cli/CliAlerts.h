#pragma once

#include "platform/UserAlerts.h"

class CliConsole;

// Alerts of the logic classes on a terminal: the message and its information as one line on the
// error stream, answered with the first button; a beep is the terminal's bell.
class CliAlerts : public UserAlerts {
public:
    explicit CliAlerts(CliConsole &console)
        : m_console(console) {}

    void beep() override;
    int runModal(const Alert &alert) override;

private:
    CliConsole &m_console;
};
