#pragma once

#include "common/FilePanels.h"
#include "platform/DesktopServices.h"
#include "platform/UserAlerts.h"

#include <QList>
#include <QStringList>

// Stands in for the person at the desktop: answers alerts from a script (the first button once
// the script runs out), keeps open and save panels open until the test ends them, and records
// what the desktop was asked to open.
class ScriptedUser : public UserAlerts, public FilePanels, public DesktopServices {
public:
    void beep() override { ++beeps; }
    int runModal(const Alert &alert) override {
        alerts.append(alert);
        return answers.isEmpty() ? firstButton : firstButton + answers.takeFirst();
    }
    // The message of every alert shown, in order.
    QStringList messages() const {
        QStringList texts;
        for (const Alert &alert : alerts)
            texts << alert.message;
        return texts;
    }

    void beginOpenPanel(const QString &directory, Done done) override {
        panelDirectory = directory;
        openPanel = std::move(done);
    }
    void beginSavePanel(const QString &directory, Done done) override {
        panelDirectory = directory;
        savePanel = std::move(done);
    }
    // Ends the waiting panel with the path (empty: cancelled).
    void endOpenPanel(const QString &path) { std::exchange(openPanel, nullptr)(path); }
    void endSavePanel(const QString &path) { std::exchange(savePanel, nullptr)(path); }

    bool openUrl(const QString &url) override {
        opened << url;
        return true;
    }
    bool openPath(const QString &path) override {
        opened << path;
        return true;
    }
    bool revealPath(const QString &path) override {
        opened << path;
        return true;
    }

    // Button positions (0 = first button) for the next alerts.
    QList<int> answers;
    QList<Alert> alerts;
    int beeps = 0;
    Done openPanel;
    Done savePanel;
    QString panelDirectory;
    QStringList opened;
};
