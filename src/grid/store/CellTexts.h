// grid/store/CellTexts.h: many short texts in few blocks whose addresses never change.
#pragma once
#include "platform/base/text.h"

#include <algorithm>
#include <memory>

// A text is found again by the offset that append gave and its own length. Blocks are not touched
// before they are written, so an arena costs what its texts need.
class CellTexts {
public:
    CellTexts() = default;
    CellTexts(CellTexts&&) noexcept = default;
    CellTexts& operator=(CellTexts&&) noexcept = default;

    // Texts that lie in `text` are from now on taken as they are, not copied; the arena keeps text.
    void lend(std::shared_ptr<const Text> text);

    // Copies s, which may lie in this arena, unless it lies in a lent text, and returns its offset.
    // Addresses of earlier texts stay. Raises 7 "Out of memory" when 2^32 units are full.
    std::uint32_t append(TextView s) {
        for (const Lent& lent : m_lent) {
            const std::uintptr_t bytes = addressOf(s.data()) - addressOf(lent.text->data());
            if (bytes < lent.text->size() * sizeof(char16_t)) {
                m_used += s.size();
                return lent.offset + static_cast<std::uint32_t>(bytes / sizeof(char16_t));
            }
        }
        if (s.size() > m_left) return appendToNewBlock(s);
        std::copy_n(s.data(), s.size(), m_end);
        m_end += s.size();
        m_left -= static_cast<std::uint32_t>(s.size());
        m_used += s.size();
        return m_offset + (kSlice - m_left - static_cast<std::uint32_t>(s.size()));
    }
    [[nodiscard]] TextView view(std::uint32_t offset, std::uint32_t length) const {
        return length == 0 ? TextView() : TextView(at(offset), length);
    }
    // Where the text at offset may be overwritten; null in a lent text.
    [[nodiscard]] char16_t* writable(std::uint32_t offset) const {
        for (const Lent& lent : m_lent) {
            if (offset - lent.offset < lent.text->size()) return nullptr;
        }
        return const_cast<char16_t*>(at(offset));  // NOLINT: it lies in one of m_blocks
    }
    [[nodiscard]] std::size_t used() const { return m_used; }  // units of all texts appended

private:
    // Offsets are cut into slices; a block of ordinary size is one slice, a long text lies in one
    // block of as many slices as it needs.
    static constexpr unsigned kSliceShift = 15;
    static constexpr std::uint32_t kSlice = 1U << kSliceShift;

    struct Lent {
        std::shared_ptr<const Text> text;
        std::uint32_t offset;
    };

    static std::uintptr_t addressOf(const char16_t* unit) {
        return reinterpret_cast<std::uintptr_t>(unit);
    }
    [[nodiscard]] const char16_t* at(std::uint32_t offset) const {
        return m_slices[offset >> kSliceShift] + (offset & (kSlice - 1));
    }
    std::uint32_t appendToNewBlock(TextView s);
    char16_t* addBlock(std::size_t units);
    std::uint32_t addSlices(const char16_t* block, std::size_t units);

    std::vector<std::unique_ptr<char16_t[]>> m_blocks;
    std::vector<Lent> m_lent;
    std::vector<const char16_t*> m_slices;
    char16_t* m_end = nullptr;   // where the next short text goes
    std::uint32_t m_left = 0;    // units free behind m_end
    std::uint32_t m_offset = 0;  // offset of the block that m_end is in
    std::size_t m_used = 0;
};
