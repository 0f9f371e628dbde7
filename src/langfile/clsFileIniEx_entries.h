// langfile/clsFileIniEx_entries.h: how the document's tables compare their entries. For its sources
// only.
#pragma once
#include "langfile/clsFileIniEx.h"

// Separates the elements of a packed list of lines, and sets root keys apart from section names.
inline constexpr TextView ROW_SEP = u"\t1234\t5-6*7-8\t4321\t";
static_assert(ROW_SEP.size() == 19);

inline std::uint64_t clsFileIniEx::hashOf(std::uint32_t section, TextView sTrimmedKey) const {
    return hashInSection(m_sections[section].hash, upperHalf(hashFolded(sTrimmedKey)));
}

inline auto clsFileIniEx::isKeyOf(std::uint32_t section, TextView sTrimmedKey) const {
    return [this, section, sTrimmedKey](std::uint32_t entry) {
        const Record& record = m_records[entry];
        return m_heads[record.head].section == section &&
               equalFolded(pvTrim(keyOf(record)), sTrimmedKey);
    };
}

inline auto clsFileIniEx::isSectionNamed(TextView sTrimmedName) const {
    return [this, sTrimmedName](std::uint32_t entry) {
        return equalFolded(m_sections[entry].trimmed, sTrimmedName);
    };
}
