#pragma once

#include "desktop/Notifier.h"

// Notifications through org.freedesktop.Notifications on the session bus, from the application
// "Hourfold". The call is not waited for: a missing bus or service is reported through failed().
class DBusNotifier : public Notifier {
    Q_OBJECT

public:
    static inline const QString serviceName = QStringLiteral("org.freedesktop.Notifications");
    static inline const QString objectPath = QStringLiteral("/org/freedesktop/Notifications");

    using Notifier::Notifier;

    void post(const Notification &notification) override;
};
