#include "langfile/clsFileIniEx.h"
#include "langfile/clsFileIniEx_entries.h"

#include <algorithm>

void clsFileIniEx::AddString(TextView sAppName, TextView sKeyName, TextView sKeyVal) {
    if (!m_bLoaded) startRows();
    pvAddKeyRow(cleaned(sAppName), cleaned(sKeyName), cleaned(sKeyVal));
}

void clsFileIniEx::AddBool(TextView sAppName, TextView sKeyName, bool bKeyVal) {
    AddString(sAppName, sKeyName, bKeyVal ? u"1" : u"0");
}

void clsFileIniEx::setLine(Record& row, TextView sKey, TextView sValue) {
    char16_t* const line = m_edited.allocate(sKey.size() + 1 + sValue.size());
    char16_t* end = std::copy(sKey.begin(), sKey.end(), line);
    *end++ = m_cSeparator;
    end = std::copy(sValue.begin(), sValue.end(), end);
    row.line = line;
    row.lineLength = static_cast<std::uint32_t>(end - line);
    row.keyLength = static_cast<std::uint32_t>(sKey.size());
}

// The head to file a row of this section under: a spelling that is there already, else a new one.
std::uint32_t clsFileIniEx::headNamed(TextView sSection) {
    if (pvTrim(sSection).empty()) return kRoot;
    const Head& recent = m_heads[m_recentHead];
    if (sameUnits(recent.name, sSection) && recent.section != kNone &&
        !m_sections[recent.section].removed) {
        return m_recentHead;
    }
    const std::uint32_t section = pvFindSection(sSection);
    if (section != kNone && m_sections[section].name == sSection) {
        m_recentHead = m_sections[section].head;
        return m_recentHead;
    }
    char16_t* const bracketed = m_edited.allocate(sSection.size() + 2);
    bracketed[0] = u'[';
    *std::copy(sSection.begin(), sSection.end(), bracketed + 1) = u']';
    m_recentHead = static_cast<std::uint32_t>(m_heads.size());
    addHead({bracketed + 1, sSection.size()});
    return m_recentHead;
}

// A row that says the same already keeps its line: of a file that is saved again, nearly all do.
void clsFileIniEx::pvAddKeyRow(TextView sSection, TextView sKey, TextView sValue) {
    const std::uint32_t head = headNamed(sSection);
    const std::uint32_t section = sectionOf(head);
    const TextView key = pvTrim(sKey);
    const bool goesOn =
        m_recentRow != kNone && m_heads[m_records[m_recentRow].head].section == section;
    const std::uint32_t there =
        findRow(section, key, goesOn ? m_records[m_recentRow].next : m_sections[section].first);
    if (there != kNone) {
        Record& row = m_records[there];
        const bool same = sameUnits(keyOf(row), sKey) && sameUnits(valueOf(row), sValue);
        if (!same || row.line[row.keyLength] != m_cSeparator) setLine(row, sKey, sValue);
        row.head = head;
        m_recentRow = there;
        return;
    }
    const auto number = static_cast<std::uint32_t>(m_records.size());
    Record row{nullptr, 0, 0, head, kNone};
    setLine(row, sKey, sValue);
    m_records.push_back(row);
    (void)m_keyTable.insert(hashOf(section, key), number, [](std::uint32_t) { return false; });
    append(section, number);
    m_recentRow = number;
}

void clsFileIniEx::mergeInto(clsFileIniEx& oTarget) const {
    for (const Section& section : m_sections) {
        for (std::uint32_t r = section.first; r != kNone; r = m_records[r].next) {
            const Record& row = m_records[r];
            if (isKeyRow(row)) oTarget.AddString(m_heads[row.head].name, keyOf(row), valueOf(row));
        }
    }
}

bool clsFileIniEx::RemoveSection(TextView sSection) {
    if (!m_bLoaded || pvTrim(sSection).empty()) return false;
    const std::uint32_t section = pvFindSection(sSection);
    if (section == kNone) return false;
    dropSection(section);
    return true;
}

void clsFileIniEx::dropSection(std::uint32_t section) {
    Section& gone = m_sections[section];
    while (gone.first != kNone) removeRecord(section, kNone, gone.first);
    m_sectionTable.remove(gone.hash, isSectionNamed(gone.trimmed));
    gone.removed = true;  // its heads stay with it: a later row of that name comes under a new one
}

// `before` is the row in front of it in the section, or kNone.
void clsFileIniEx::removeRecord(std::uint32_t section, std::uint32_t before, std::uint32_t record) {
    const Record& gone = m_records[record];
    if (gone.keyLength != kNoKey) {
        const TextView key = pvTrim(keyOf(gone));
        m_keyTable.remove(hashOf(section, key), isKeyOf(section, key));
    }
    if (m_recentRow == record) m_recentRow = kNone;
    Section& list = m_sections[section];
    (before == kNone ? list.first : m_records[before].next) = gone.next;
    if (list.last == record) list.last = before;
}

bool clsFileIniEx::RemoveRowKeyVal(TextView sAppName, TextView sKeyName) {
    if (!m_bLoaded) return false;
    const std::uint32_t section = sAppName.empty() ? kRoot : pvFindSection(sAppName);
    if (section == kNone) return false;
    const TextView key = pvTrim(sKeyName);
    std::uint32_t before = kNone;
    for (std::uint32_t r = m_sections[section].first; r != kNone; r = m_records[r].next) {
        if (equalFolded(pvTrim(keyOf(m_records[r])), key)) {
            removeRecord(section, before, r);
            return true;
        }
        before = r;
    }
    // At the top level the section rows are rows without a key, too.
    if (section != kRoot || !key.empty()) return false;
    for (std::uint32_t s = kRoot + 1; s < m_sections.size(); ++s) {
        if (m_sections[s].removed) continue;
        dropSection(s);
        return true;
    }
    return false;
}
