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

    // Copies s, which may lie in this arena, and returns its offset. Addresses of earlier texts
    // stay. Raises 7 "Out of memory" when 2^32 units are full.
    std::uint32_t append(TextView s) {
        if (s.size() > m_left) return appendToNewBlock(s);
        std::copy_n(s.data(), s.size(), m_end);
        m_end += s.size();
        m_left -= static_cast<std::uint32_t>(s.size());
        m_used += s.size();
        return m_offset + (kSlice - m_left - static_cast<std::uint32_t>(s.size()));
    }
    [[nodiscard]] char16_t* at(std::uint32_t offset) const {
        return m_slices[offset >> kSliceShift] + (offset & (kSlice - 1));
    }
    [[nodiscard]] TextView view(std::uint32_t offset, std::uint32_t length) const {
        return length == 0 ? TextView() : TextView(at(offset), length);
    }
    [[nodiscard]] std::size_t used() const { return m_used; }  // units of all texts appended

private:
    // Offsets are cut into slices; a block of ordinary size is one slice, a long text lies in one
    // block of as many slices as it needs.
    static constexpr unsigned kSliceShift = 15;
    static constexpr std::uint32_t kSlice = 1U << kSliceShift;

    std::uint32_t appendToNewBlock(TextView s);
    std::uint32_t addSlices(std::size_t units);

    std::vector<std::unique_ptr<char16_t[]>> m_blocks;
    std::vector<char16_t*> m_slices;
    char16_t* m_end = nullptr;   // where the next short text goes
    std::uint32_t m_left = 0;    // units free behind m_end
    std::uint32_t m_offset = 0;  // offset of the block that m_end is in
    std::size_t m_used = 0;
};
