#pragma once

#include <QObject>
#include <QString>

// Desktop notifications: the application posts them over the session bus; tests record them.
class Notifier : public QObject {
    Q_OBJECT

public:
    struct Notification {
        // Which kind of notification ("Running timers reminder", "Paused timers reminder").
        QString name;
        QString title;
        QString text;
        // The icon's file.
        QString icon;
    };

    using QObject::QObject;

    virtual void post(const Notification &notification) = 0;

signals:
    // No service took the notification; the reason is for the log.
    void failed(const Notifier::Notification &notification, const QString &reason);
};
