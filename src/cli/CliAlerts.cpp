#include "CliAlerts.h"

#include "CliConsole.h"

void CliAlerts::beep() {
    m_console.bell();
}

int CliAlerts::runModal(const Alert &alert) {
    m_console.warn(alert.informativeText.isEmpty() ? alert.message
                                                   : alert.message + u' ' + alert.informativeText);
    return firstButton;
}
