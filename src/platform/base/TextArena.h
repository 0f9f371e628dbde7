// platform/base/TextArena.h: texts that stay where they are until all of them go.
#pragma once
#include "platform/base/memory.h"
#include "platform/base/text.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace platform {

// Hands out room for texts in large chunks. What it gave stays valid and in place until clear() or
// the arena's end; moving the arena moves no text.
class TextArena {
public:
    // Room for `length` units, not filled.
    [[nodiscard]] char16_t* allocate(std::size_t length) {
        if (length > m_left) grow(length);
        char16_t* const room = m_next;
        m_next += length;
        m_left -= length;
        return room;
    }
    [[nodiscard]] TextView store(TextView s) {
        if (s.empty()) return {};
        char16_t* const room = allocate(s.size());
        std::memcpy(room, s.data(), s.size() * sizeof(char16_t));
        return {room, s.size()};
    }
    void clear() {
        m_chunks.clear();
        m_next = nullptr;
        m_left = 0;
        m_chunkLength = kFirstChunk;
    }

private:
    static constexpr std::size_t kFirstChunk = 2048;
    static constexpr std::size_t kLargestChunk = std::size_t{1} << 22;

    void grow(std::size_t length) {
        const std::size_t size = std::max(length, m_chunkLength);
        m_chunks.push_back(std::make_unique_for_overwrite<char16_t[]>(size));
        m_next = m_chunks.back().get();
        adviseLargePages(m_next, size * sizeof(char16_t));
        m_left = size;
        m_chunkLength = std::min(m_chunkLength * 2, kLargestChunk);
    }

    std::vector<std::unique_ptr<char16_t[]>> m_chunks;
    char16_t* m_next = nullptr;
    std::size_t m_left = 0;
    std::size_t m_chunkLength = kFirstChunk;
};

}  // namespace platform
