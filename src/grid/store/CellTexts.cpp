#include "grid/store/CellTexts.h"

#include "grid/store/gridFailures.h"
#include "platform/base/memory.h"

// The slice numbers of `units` units, added to the table, as the offset of the first.
std::uint32_t CellTexts::addSlices(std::size_t units) {
    const std::size_t count = (units + kSlice - 1) >> kSliceShift;
    const std::size_t first = m_slices.size();
    if (count > (std::size_t{1} << (32 - kSliceShift)) - first) raiseOutOfMemory();
    m_slices.reserve(first + count);
    m_blocks.push_back(std::make_unique_for_overwrite<char16_t[]>(units));
    for (std::size_t i = 0; i < count; ++i) {
        m_slices.push_back(m_blocks.back().get() + (i << kSliceShift));
    }
    return static_cast<std::uint32_t>(first << kSliceShift);
}

std::uint32_t CellTexts::appendToNewBlock(TextView s) {
    // A long text gets a block of its own size, so that at most an eighth of a block is lost to it.
    if (s.size() > kSlice / 8) {
        const std::uint32_t offset = addSlices(s.size());
        std::copy_n(s.data(), s.size(), at(offset));
        m_used += s.size();
        return offset;
    }
    const bool first = m_left == 0 && m_end == nullptr;
    m_offset = addSlices(kSlice);
    m_end = at(m_offset);
    m_left = kSlice;
    if (!first) platform::aboutToWrite(m_end, kSlice * sizeof(char16_t));
    return append(s);
}
