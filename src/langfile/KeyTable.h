// langfile/KeyTable.h: from a hash to the number of an entry, by open addressing.
#pragma once
#include <cstdint>
#include <vector>

// Eight bytes a slot: 32 bits of the hash and the entry's number, so that growing needs no look at
// the entries. The owner compares the entries themselves: `same(number)` decides among equal
// hashes.
class KeyTable {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    void clear() {
        m_slots.clear();
        m_used = 0;
    }
    // Makes room for `count` entries in all.
    void reserve(std::size_t count) {
        std::size_t size = 16;
        while (size * 3 < count * 4) size *= 2;
        if (size > m_slots.size()) rebuild(size);
    }
    void prefetch(std::uint64_t hash) const {
        if (!m_slots.empty()) __builtin_prefetch(&m_slots[place(tagOf(hash))]);
    }
    template <class Same> [[nodiscard]] std::uint32_t find(std::uint64_t hash, Same same) const {
        if (m_slots.empty()) return kNone;
        return m_slots[locate(tagOf(hash), same)].entry;
    }
    // The entry that is there already, or kNone when `entry` has been put in.
    template <class Same> std::uint32_t insert(std::uint64_t hash, std::uint32_t entry, Same same) {
        if ((m_used + 1) * 4 > m_slots.size() * 3)
            rebuild(m_slots.empty() ? 16 : m_slots.size() * 2);
        Slot& slot = m_slots[locate(tagOf(hash), same)];
        if (slot.entry != kNone) return slot.entry;
        slot = {tagOf(hash), entry};
        ++m_used;
        return kNone;
    }
    // Takes the entry out; the slots behind it close up, so that no search passes over gaps.
    template <class Same> void remove(std::uint64_t hash, Same same) {
        if (m_slots.empty()) return;
        std::size_t gap = locate(tagOf(hash), same);
        if (m_slots[gap].entry == kNone) return;
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t i = (gap + 1) & mask; m_slots[i].entry != kNone; i = (i + 1) & mask) {
            if (((i - place(m_slots[i].tag)) & mask) >= ((i - gap) & mask)) {
                m_slots[gap] = m_slots[i];
                gap = i;
            }
        }
        m_slots[gap] = Slot{};
        --m_used;
    }

private:
    struct Slot {
        std::uint32_t tag = 0;
        std::uint32_t entry = kNone;
    };

    static std::uint32_t tagOf(std::uint64_t hash) {
        return static_cast<std::uint32_t>(hash >> 32);
    }
    [[nodiscard]] std::size_t place(std::uint32_t tag) const { return tag & (m_slots.size() - 1); }

    template <class Same> [[nodiscard]] std::size_t locate(std::uint32_t tag, Same same) const {
        const std::size_t mask = m_slots.size() - 1;
        std::size_t i = place(tag);
        while (m_slots[i].entry != kNone && !(m_slots[i].tag == tag && same(m_slots[i].entry))) {
            i = (i + 1) & mask;
        }
        return i;
    }
    void rebuild(std::size_t size) {
        std::vector<Slot> old(size);
        old.swap(m_slots);
        for (const Slot& slot : old) {
            if (slot.entry == kNone) continue;
            std::size_t i = place(slot.tag);
            while (m_slots[i].entry != kNone) i = (i + 1) & (size - 1);
            m_slots[i] = slot;
        }
    }

    std::vector<Slot> m_slots;  // a power of two, or none at all
    std::size_t m_used = 0;
};
