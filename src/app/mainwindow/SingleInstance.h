#pragma once

#include <QObject>
#include <QStringList>

// One running copy per user: the first launch owns a name on the session bus; a later launch
// hands its files to that copy (or just asks it to come to the front) and ends. Without a
// session bus every launch runs on its own.
class SingleInstance : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.hourfold.Hourfold")

public:
    // The bus name; tests pass their own so they never meet a real copy.
    explicit SingleInstance(const QString &serviceName = defaultServiceName(),
                            QObject *parent = nullptr);
    ~SingleInstance() override;

    static QString defaultServiceName();

    // True when this process is now the one running copy (or no bus is there to ask).
    bool claim();
    // Gives the files (absolute paths) to the running copy; false when it cannot be reached.
    bool handOver(const QStringList &files) const;

public slots:
    // Called over the bus by a later launch.
    Q_SCRIPTABLE void Open(const QStringList &files);

signals:
    // The running copy should come to the front and open these files (none: just come).
    void openRequested(const QStringList &files);

private:
    QString m_serviceName;
    bool m_registered = false;
};
