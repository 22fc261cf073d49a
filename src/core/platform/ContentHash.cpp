#include "ContentHash.h"

#include <cstring>

namespace {

constexpr quint64 multiplier = 0xff51afd7ed558ccdULL;

quint64 rotate(quint64 value, int bits) {
    return (value << bits) | (value >> (64 - bits));
}

} // namespace

void ContentHash::mix(quint64 word) {
    m_state = rotate((m_state ^ word) * multiplier, 29);
}

void ContentHash::add(QByteArrayView bytes) {
    const char *p = bytes.data();
    qsizetype left = bytes.size();
    m_length += quint64(left);
    while (m_pendingCount > 0 && left > 0) {
        m_pending[m_pendingCount++] = static_cast<unsigned char>(*p++);
        --left;
        if (m_pendingCount == 8) {
            quint64 word;
            std::memcpy(&word, m_pending, 8);
            mix(word);
            m_pendingCount = 0;
        }
    }
    for (; left >= 8; p += 8, left -= 8) {
        quint64 word;
        std::memcpy(&word, p, 8);
        mix(word);
    }
    std::memcpy(m_pending + m_pendingCount, p, size_t(left));
    m_pendingCount += int(left);
}

quint64 ContentHash::value() const {
    quint64 tail = 0;
    std::memcpy(&tail, m_pending, size_t(m_pendingCount));
    quint64 h = rotate((m_state ^ tail) * multiplier, 29) ^ m_length;
    h ^= h >> 33;
    h *= 0xc4ceb9fe1a85ec53ULL;
    return h ^ (h >> 33);
}

quint64 ContentHash::of(QByteArrayView bytes) {
    ContentHash hash;
    hash.add(bytes);
    return hash.value();
}
