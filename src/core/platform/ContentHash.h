#pragma once

#include <QByteArrayView>
#include <QtGlobal>

// A fast hash of file content fed in pieces (not for security: to notice that a file changed).
// The pieces may be cut anywhere: the same bytes give the same hash however they are split.
class ContentHash {
public:
    void add(QByteArrayView bytes);
    quint64 value() const;

    static quint64 of(QByteArrayView bytes);

private:
    void mix(quint64 word);

    quint64 m_state = 0x9e3779b97f4a7c15ULL;
    quint64 m_length = 0;
    // Bytes of a word not yet complete, and how many there are.
    unsigned char m_pending[8] = {};
    int m_pendingCount = 0;
};
