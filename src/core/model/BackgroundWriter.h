#pragma once

#include "../platform/FileIdentity.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

// Writes project files on a thread of its own, so that the window never waits for the disk. Each
// job is written under the file's lock (the one hourfold-cli takes), to a temporary file that is
// flushed to disk and renamed over the target. Jobs are written in the order they were given; a
// job given while an earlier one is still waiting replaces it, so a burst of changes is written
// once with the latest bytes. Results come back through takeResults(), announced by
// resultsReady() on the thread that owns the writer.
class BackgroundWriter : public QObject {
    Q_OBJECT

public:
    // What the file must still be before it is replaced.
    enum class Check {
        None,        // nothing: a new file, or one the user chose to replace
        Identity,    // the given identity: a file another program might have changed
        LastWritten, // what this writer's last write to the same path left (or was told)
    };

    struct Job {
        QString path;             // absolute
        QList<QByteArray> pieces; // the file's bytes, in order
        Check check = Check::None;
        FileIdentity expected; // with Check::Identity
    };

    struct Result {
        quint64 serial = 0;
        QString path;
        bool ok = false;
        QString error;
        FileIdentity identity; // of the file written
    };

    explicit BackgroundWriter(QObject *parent = nullptr);
    // Writes what is still waiting before it returns.
    ~BackgroundWriter() override;

    // Queues the job and returns its serial number (rising from 1). A job still waiting is
    // dropped in its favour and never reported.
    quint64 submit(Job job);
    // Blocks until every job given so far has been written or has failed.
    void waitForIdle();
    bool isIdle() const;
    // The results not yet taken, oldest first.
    QList<Result> takeResults();

signals:
    // Emitted from the writing thread: connect with a queued (or automatic) connection.
    void resultsReady();

private:
    void run();
    Result write(const Job &job);

    mutable std::mutex m_mutex;
    std::condition_variable m_wake;
    std::condition_variable m_idle;
    std::optional<Job> m_waiting;
    quint64 m_waitingSerial = 0;
    quint64 m_lastSerial = 0;
    bool m_writing = false;
    bool m_stopping = false;
    QList<Result> m_results;
    // Only the writing thread uses these: the file it last wrote or was told about, as then.
    QString m_knownPath;
    FileIdentity m_known;
    std::thread m_thread;
};
