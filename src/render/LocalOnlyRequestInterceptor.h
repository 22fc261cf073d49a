#pragma once

#include <QWebEngineUrlRequestInterceptor>

#include <atomic>

// Lets the engine read only what the report folder holds: every request whose scheme is neither
// "file" nor "data" (web addresses, FTP, anything else) is blocked and counted.
class LocalOnlyRequestInterceptor : public QWebEngineUrlRequestInterceptor {
    Q_OBJECT

public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;

    void interceptRequest(QWebEngineUrlRequestInfo &info) override;
    // How many requests were blocked so far.
    int blockedCount() const { return m_blocked; }

private:
    std::atomic<int> m_blocked = 0;
};
