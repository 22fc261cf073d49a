#pragma once

#include <QHash>
#include <QList>
#include <QObject>

// Turns the remote's bursts of events into button codes with a pressed or released flag. A burst
// is written as its cookies, each as "%d_", in event order ("31_29_28_18_"); the values of its
// events add up to 0 for a release and to 1 or more for a press. Which string means which button
// depends on the generation of the remote's table (4 or 5); any other generation knows no
// button. Cookie 19 is a remote telling its identity: it is reported as button 10 at once.
class AppleRemote : public QObject {
    Q_OBJECT

public:
    struct Event {
        int cookie;
        int value;
    };
    using Burst = QList<Event>;

    static constexpr int identityCookie = 19;
    static constexpr int identityButton = 10;

    explicit AppleRemote(int tableVersion, QObject *parent = nullptr);

    static QHash<QString, int> mappingForVersion(int tableVersion);
    const QHash<QString, int> &cookieToButtonMapping() const { return m_mapping; }

    // The event callback: one burst, as it was taken from the device.
    void handleBurst(const Burst &burst);
    void handleCookieString(const QString &cookieString, int sumOfValues);

    int remoteId() const { return m_remoteId; }
    bool isOpenInExclusiveMode() const { return m_exclusive; }
    void setOpenInExclusiveMode(bool exclusive) { m_exclusive = exclusive; }

signals:
    void appleRemoteButton(int button, bool pressedDown);

private:
    QHash<QString, int> m_mapping;
    int m_remoteId = 0;
    bool m_exclusive = false;
};
