#pragma once

#include <QObject>

// logind's PrepareForSleep signal on the system bus: true as the computer goes to sleep, false
// as it wakes. Without a system bus or logind the log says that sleep is not noticed.
class LogindSleep : public QObject {
    Q_OBJECT

public:
    explicit LogindSleep(QObject *parent = nullptr);

signals:
    void preparingForSleep(bool start);

private slots:
    void prepareForSleep(bool start);
};
