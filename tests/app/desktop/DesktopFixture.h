#pragma once

#include "core/model/ModelFixtures.h"
#include "support/ScriptedUser.h"

#include "desktop/DesktopPresence.h"
#include "desktop/LauncherEntry.h"
#include "desktop/TrayIcon.h"
#include "model/Project.h"
#include "model/ProjectCollection.h"

#include <QWidget>

// A tray that only records, so that the menu is looked at without a panel.
class FakeTray : public TrayIcon {
public:
    bool isAvailable() const override { return available; }
    void show(QMenu *shownMenu) override {
        menu = shownMenu;
        shown = true;
    }
    void hide() override { shown = false; }
    bool isShown() const override { return shown; }
    void setToolTip(const QString &text) override { toolTip = text; }

    bool available = true;
    bool shown = false;
    QMenu *menu = nullptr;
    QString toolTip;
};

class FakeLauncher : public LauncherEntry {
public:
    void setCount(int count, bool countVisible) override { counts << (countVisible ? count : -1); }
    // Each count sent; -1 for a count that is not shown.
    QList<int> counts;
};

// A document with one project ("Web shop", rounding the clock to 15 minutes when asked) in a
// fresh preferences file, the clock at 22.11.2026 10:00, and the desktop presence over it.
struct DesktopFixture {
    explicit DesktopFixture(int roundWhat = 0, int roundType = 0) {
        QStandardPaths::setTestModeEnabled(true);
        Clock::setNow(at(u"22.11.2026 10:00"_s));
        preferences.setObject(false, u"showMiniWindow");
        project = std::make_shared<Project>(u"Web shop"_s, u""_s, 80.0f, roundWhat, 15, roundType,
                                            -1, u""_s);
        collection.addProject(project);
        collection.addProject(
            std::make_shared<Project>(u"App"_s, u""_s, 60.0f, 0, 0, 0, -1, u""_s));
        presence = std::make_unique<DesktopPresence>(
            DesktopPresence::Services{preferences, collection, user, [](int) { return QColor(); },
                                      &tray, &launcher},
            &mainWindow);
        presence->start();
    }
    ~DesktopFixture() { Clock::reset(); }

    QTemporaryDir folder;
    Preferences preferences{folder.filePath(u"p.conf"_s)};
    ProjectCollection collection{preferences};
    std::shared_ptr<Project> project;
    ScriptedUser user;
    FakeTray tray;
    FakeLauncher launcher;
    QWidget mainWindow;
    std::unique_ptr<DesktopPresence> presence;
};
