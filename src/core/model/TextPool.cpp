#include "TextPool.h"

#include <cstdint>
#include <utility>

namespace {

QString fromUtf8(const std::string &bytes) {
    return QString::fromUtf8(bytes.data(), qsizetype(bytes.size()));
}

} // namespace

QString TextPool::text(const std::string &bytes) {
    if (bytes.empty() || bytes.size() > maxLength)
        return fromUtf8(bytes);
    const bool mayAdd = m_used * 2 < m_slots.size() || grow();
    Slot &slot = find(bytes);
    if (!slot.text.isNull())
        return slot.text;
    QString text = fromUtf8(bytes);
    if (mayAdd) {
        slot.bytes = bytes;
        slot.text = text;
        ++m_used;
    }
    return text;
}

TextPool::Slot &TextPool::find(const std::string &bytes) {
    std::uint64_t hash = 0xcbf29ce484222325u; // FNV-1a
    for (const char c : bytes)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
    const size_t mask = m_slots.size() - 1;
    for (size_t i = size_t(hash) & mask;; i = (i + 1) & mask) {
        Slot &slot = m_slots[i];
        if (slot.text.isNull() || slot.bytes == bytes)
            return slot;
    }
}

bool TextPool::grow() {
    if (m_slots.size() >= maxSlots)
        return false;
    std::vector<Slot> old =
        std::exchange(m_slots, std::vector<Slot>(m_slots.empty() ? 1024 : m_slots.size() * 2));
    for (Slot &slot : old) {
        if (!slot.text.isNull())
            find(slot.bytes) = std::move(slot);
    }
    return true;
}
