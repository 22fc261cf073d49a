#pragma once

#include "desktop/LauncherEntry.h"

#include <QString>

// The launcher count as the com.canonical.Unity.LauncherEntry "Update" signal, which the docks
// of Plasma, GNOME (Dash to Dock) and others read, for the program's desktop file.
class UnityLauncherEntry : public LauncherEntry {
public:
    static inline const QString interfaceName = QStringLiteral("com.canonical.Unity.LauncherEntry");
    static inline const QString objectPath =
        QStringLiteral("/com/canonical/unity/launcherentry/hourfold");
    static inline const QString applicationUri = QStringLiteral("application://hourfold.desktop");

    void setCount(int count, bool countVisible) override;
};
