#pragma once

#include "platform/UserAlerts.h"

#include <QList>
#include <QStringList>

// Stands in for the user: counts the beeps, keeps every alert and answers each with the button
// at position `answer` (0 the first).
class RecordingAlerts : public UserAlerts {
public:
    void beep() override { ++beeps; }
    int runModal(const Alert &alert) override {
        alerts.append(alert);
        return firstButton + answer;
    }
    // "message|informative text|buttons" of each alert; "not critical" for one of another style.
    QStringList criticalTexts() const {
        QStringList texts;
        for (const Alert &alert : alerts)
            texts << (alert.style == Style::Critical
                          ? alert.message + u'|' + alert.informativeText + u'|' +
                                alert.buttons.join(u',')
                          : QStringLiteral("not critical"));
        return texts;
    }

    int answer = 0;
    int beeps = 0;
    QList<Alert> alerts;
};
