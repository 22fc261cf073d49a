#include "BackgroundWriter.h"

#include "../Logging.h"
#include "../platform/AtomicFile.h"
#include "../platform/ContentHash.h"
#include "../platform/ProjectFileLock.h"
#include "ProjectBackups.h"

#include <QCoreApplication>
#include <QFileInfo>

BackgroundWriter::BackgroundWriter(QObject *parent)
    : QObject(parent)
    , m_thread([this] { run(); }) {}

BackgroundWriter::~BackgroundWriter() {
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

quint64 BackgroundWriter::submit(Job job) {
    quint64 serial = 0;
    {
        const std::lock_guard lock(m_mutex);
        m_waiting = std::move(job);
        serial = m_waitingSerial = ++m_lastSerial;
    }
    m_wake.notify_one();
    return serial;
}

void BackgroundWriter::waitForIdle() {
    std::unique_lock lock(m_mutex);
    m_idle.wait(lock, [this] { return !m_waiting && !m_writing; });
}

bool BackgroundWriter::isIdle() const {
    const std::lock_guard lock(m_mutex);
    return !m_waiting && !m_writing;
}

QList<BackgroundWriter::Result> BackgroundWriter::takeResults() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_results, {});
}

void BackgroundWriter::run() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_waiting || m_stopping; });
        if (!m_waiting)
            return;
        const Job job = std::move(*m_waiting);
        const quint64 serial = m_waitingSerial;
        m_waiting.reset();
        m_writing = true;
        lock.unlock();
        Result result = write(job);
        result.serial = serial;
        lock.lock();
        m_results.append(result);
        m_writing = false;
        if (!m_waiting)
            m_idle.notify_all();
        // A waiter may take the results before the announcement arrives; it then finds none.
        lock.unlock();
        emit resultsReady();
        lock.lock();
    }
}

BackgroundWriter::Result BackgroundWriter::write(const Job &job) {
    Result result;
    result.path = job.path;
    if (job.check == Check::Identity) {
        m_knownPath = job.path;
        m_known = job.expected;
    }
    const bool checked = job.check != Check::None && m_knownPath == job.path && m_known.isKnown();
    ProjectFileLock fileLock(job.path);
    if (!fileLock.lock()) {
        result.error = fileLock.errorString();
    } else if (checked && QFileInfo::exists(job.path) && m_known.differsFrom(job.path)) {
        // Another program's change is never overwritten; a file that is gone (removed, or its
        // folder made again) is written anew, as nothing of anyone's would be lost. The message
        // is the document's, translated as such.
        result.error = QCoreApplication::translate(
                           "ProjectCollection",
                           "\"%1\" was changed by another program since it was opened or last "
                           "saved. Nothing was written: reload the file or save it under another "
                           "name.")
                           .arg(job.path);
    } else {
        ProjectBackups(ProjectBackups::sharedFolder()).beforeReplacing(job.path, job.pieces);
        const AtomicFile::Result written = AtomicFile::write(job.path, job.pieces);
        result.ok = written.ok;
        result.error = written.error;
    }
    if (result.ok) {
        ContentHash hash;
        for (const QByteArray &piece : job.pieces)
            hash.add(piece);
        result.identity = FileIdentity::of(job.path, hash.value());
        m_knownPath = job.path;
        m_known = result.identity;
    } else {
        qCWarning(lcFile).noquote() << "not saved:" << result.error;
    }
    return result;
}
