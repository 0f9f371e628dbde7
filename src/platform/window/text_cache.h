// platform/window/text_cache.h: what was found out about texts lately. Internal to this folder.
#pragma once
#include "platform/base/text.h"

#include <cstdint>
#include <utility>

namespace platform {

// Values by face, variant and text. When there are maxEntries, or they would hold more than
// maxBytes, a hand goes round and takes out what nobody asked for since it came by. A lookup copies
// nothing and moves nothing; places in memory change with insert and clear only.
template <class Value> class TextCache {
public:
    // maxEntries: a power of two.
    TextCache(std::uint32_t maxEntries, std::size_t maxBytes)
        : m_maxEntries(maxEntries), m_maxBytes(maxBytes) {}

    // nullptr when it isn't there.
    [[nodiscard]] const Value* find(std::uint32_t face, std::uint32_t variant, TextView text) {
        if (m_buckets.empty()) return nullptr;
        const std::uint64_t hash = hashOf(face, variant, text);
        for (std::uint32_t i = bucketOf(hash); i != kNone; i = m_entries[i].next) {
            Entry& entry = m_entries[i];
            if (entry.hash == hash && entry.face == face && entry.variant == variant &&
                entry.text == text) {
                entry.wanted = true;
                return &entry.value;
            }
        }
        return nullptr;
    }

    // For a text that isn't there. bytes: what the value holds outside itself.
    const Value& insert(std::uint32_t face, std::uint32_t variant, TextView text, Value value,
                        std::size_t bytes) {
        if (m_buckets.empty()) m_buckets.assign(m_maxEntries, kNone);
        bytes += sizeof(Entry) + text.size() * sizeof(char16_t);
        while (m_count > 0 && (m_count == m_maxEntries || m_bytes + bytes > m_maxBytes)) dropOne();
        std::uint32_t place = m_free;
        if (place != kNone) {
            m_free = m_entries[place].next;
        } else {
            place = static_cast<std::uint32_t>(m_entries.size());
            m_entries.emplace_back();
        }
        const std::uint64_t hash = hashOf(face, variant, text);
        std::uint32_t& bucket = bucketOf(hash);
        m_entries[place] = {hash, face, variant, Text(text), std::move(value), bytes, true, bucket};
        bucket = place;
        m_bytes += bytes;
        ++m_count;
        return m_entries[place].value;
    }

    void clear() { *this = TextCache(m_maxEntries, m_maxBytes); }
    [[nodiscard]] std::size_t size() const { return m_count; }
    [[nodiscard]] std::size_t bytes() const { return m_bytes; }

private:
    static constexpr std::uint32_t kNone = ~0U;
    struct Entry {
        std::uint64_t hash = 0;
        std::uint32_t face = 0, variant = 0;
        Text text;
        Value value{};
        std::size_t bytes = 0;  // 0: the place is free
        bool wanted = false;    // or new, since the hand last passed by
        std::uint32_t next = kNone;
    };

    static std::uint64_t hashOf(std::uint32_t face, std::uint32_t variant, TextView text) {
        const std::uint64_t kind = std::uint64_t{face} << 32 | variant;
        return std::hash<TextView>()(text) ^ kind * 0x9E3779B97F4A7C15U;
    }
    std::uint32_t& bucketOf(std::uint64_t hash) {
        return m_buckets[static_cast<std::uint32_t>(hash ^ hash >> 32) & (m_maxEntries - 1)];
    }

    // Takes out the next entry that nobody wanted since the hand last came by, and leaves the hand
    // behind it: what comes in its place is new.
    void dropOne() {
        const auto turn = [&] {
            const std::uint32_t passed = m_hand;
            m_hand = m_hand + 1 < m_entries.size() ? m_hand + 1 : 0;
            return passed;
        };
        std::uint32_t place = turn();
        while (m_entries[place].bytes == 0 || std::exchange(m_entries[place].wanted, false)) {
            place = turn();
        }
        Entry& entry = m_entries[place];
        std::uint32_t* link = &bucketOf(entry.hash);
        while (*link != place) link = &m_entries[*link].next;
        *link = entry.next;
        m_bytes -= entry.bytes;
        --m_count;
        entry = {};
        entry.next = std::exchange(m_free, place);
    }

    std::uint32_t m_maxEntries;
    std::size_t m_maxBytes, m_bytes = 0;
    std::uint32_t m_count = 0, m_hand = 0, m_free = kNone;
    std::vector<Entry> m_entries;  // free places are linked by next
    std::vector<std::uint32_t> m_buckets;
};

}  // namespace platform
