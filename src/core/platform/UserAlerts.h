#pragma once

#include <QString>
#include <QStringList>

// The few ways the logic of a sheet or window speaks to the user: a beep for a small refusal and
// modal alerts. The application shows them with QApplication::beep() and QMessageBox; tests
// record them.
class UserAlerts {
public:
    enum class Style { Warning, Informational, Critical };

    struct Alert {
        QString message;
        QString informativeText;
        Style style = Style::Warning;
        QStringList buttons;
    };

    // The answer of the first button, the second is firstButton + 1, and so on.
    static constexpr int firstButton = 1000;

    virtual ~UserAlerts() = default;
    virtual void beep() = 0;
    // Shows the alert and waits for a button; returns that button's answer.
    virtual int runModal(const Alert &alert) = 0;
};
