#pragma once

#include <QString>

#include <string>
#include <vector>

// Dates, clock times and tags repeat all through a project file: each distinct short text becomes
// a QString once, and every field with that text shares it (implicitly). That saves an allocation
// and a conversion per field, and the memory of the copies. Open addressing over a power-of-two
// table that grows up to a limit; past it, texts are simply not pooled.
class TextPool {
public:
    // The UTF-8 bytes as text, shared with every earlier request for the same bytes.
    QString text(const std::string &bytes);

private:
    struct Slot {
        std::string bytes;
        QString text; // null while the slot is free
    };

    static constexpr size_t maxLength = 64;
    static constexpr size_t maxSlots = size_t(1) << 17;

    // The slot holding the bytes, or the free slot where they belong.
    Slot &find(const std::string &bytes);
    bool grow();

    std::vector<Slot> m_slots;
    size_t m_used = 0;
};
