#include "grid/store/CellTexts.h"

#include "grid/store/gridFailures.h"
#include "platform/base/memory.h"

void CellTexts::lend(std::shared_ptr<const Text> text) {
    if (text == nullptr || text->empty()) return;
    const std::uint32_t offset = addSlices(text->data(), text->size());
    m_lent.push_back({std::move(text), offset});
}

// Enters a block into the table of slices and returns the offset of its first unit.
std::uint32_t CellTexts::addSlices(const char16_t* block, std::size_t units) {
    const std::size_t count = (units + kSlice - 1) >> kSliceShift;
    const std::size_t first = m_slices.size();
    if (count > (std::size_t{1} << (32 - kSliceShift)) - first) raiseOutOfMemory();
    m_slices.reserve(first + count);
    for (std::size_t i = 0; i < count; ++i) m_slices.push_back(block + (i << kSliceShift));
    return static_cast<std::uint32_t>(first << kSliceShift);
}

char16_t* CellTexts::addBlock(std::size_t units) {
    m_blocks.push_back(std::make_unique_for_overwrite<char16_t[]>(units));
    return m_blocks.back().get();
}

std::uint32_t CellTexts::appendToNewBlock(TextView s) {
    // A long text gets a block of its own size, so that at most an eighth of a block is lost to it.
    if (s.size() > kSlice / 8) {
        char16_t* const block = addBlock(s.size());
        std::copy_n(s.data(), s.size(), block);
        m_used += s.size();
        return addSlices(block, s.size());
    }
    const bool first = m_end == nullptr;
    m_end = addBlock(kSlice);
    m_offset = addSlices(m_end, kSlice);
    m_left = kSlice;
    if (!first) platform::aboutToWrite(m_end, kSlice * sizeof(char16_t));
    return append(s);
}
