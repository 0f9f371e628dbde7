#include "langfile/clsFileIniEx.h"

#include "langfile/clsFileIniEx_entries.h"
#include "platform/base/failure.h"

void clsFileIniEx::pvCheckLoaded() const {
    if (!m_bLoaded) throw Failure(kOwnError, u"clsFileIniEx", u"Please load the file first!");
}

void clsFileIniEx::forget() {
    m_bLoaded = false;
    m_recentHead = kRoot;
    m_recentRow = kNone;
    m_records.clear();
    m_heads.clear();
    m_sections.clear();
    m_sectionTable.clear();
    m_keyTable.clear();
    m_edited.clear();
    m_text.reset();
}

// The state of a document without rows: the root is there, as a section without a name.
void clsFileIniEx::startRows() {
    forget();
    m_heads.push_back({TextView(), hashFolded({}), kRoot});
    m_sections.push_back({TextView(), TextView(), hashFolded({}), kRoot});
    m_bLoaded = true;
}

void clsFileIniEx::append(std::uint32_t section, std::uint32_t record) {
    Section& list = m_sections[section];
    m_records[record].next = kNone;
    (list.last == kNone ? list.first : m_records[list.last].next) = record;
    list.last = record;
}

// A head whose name has brackets around it in memory.
void clsFileIniEx::addHead(TextView sName) {
    m_heads.push_back({sName, hashFolded(pvTrim(sName)), kNone});
}

std::uint32_t clsFileIniEx::sectionOf(std::uint32_t head) {
    Head& spelling = m_heads[head];
    if (spelling.section != kNone) return spelling.section;
    const auto number = static_cast<std::uint32_t>(m_sections.size());
    const TextView trimmed = pvTrim(spelling.name);
    spelling.section = m_sectionTable.insert(spelling.hash, number, isSectionNamed(trimmed));
    if (spelling.section == kNone) {
        spelling.section = number;
        m_sections.push_back({spelling.name, trimmed, spelling.hash, head});
    }
    return spelling.section;
}

std::uint32_t clsFileIniEx::pvFindSection(TextView sSection) const {
    const TextView name = pvTrim(sSection);
    return m_sectionTable.find(hashFolded(name), isSectionNamed(name));
}

std::uint32_t clsFileIniEx::findRow(std::uint32_t section, TextView sTrimmedKey,
                                    std::uint32_t next) const {
    constexpr int kMostSkipped = 4;  // comments and blank lines in between
    for (int i = 0; i < kMostSkipped && next != kNone && !isKeyRow(m_records[next]); ++i) {
        next = m_records[next].next;
    }
    const auto isKey = isKeyOf(section, sTrimmedKey);
    if (next != kNone && isKeyRow(m_records[next]) && isKey(next)) return next;
    return m_keyTable.find(hashOf(section, sTrimmedKey), isKey);
}

std::uint32_t clsFileIniEx::pvFindRow(TextView sSection, TextView sKey) const {
    const std::uint32_t section = sSection.empty() ? kRoot : pvFindSection(sSection);
    return section == kNone ? kNone : findRow(section, pvTrim(sKey), kNone);
}
