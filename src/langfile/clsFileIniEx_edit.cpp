#include "langfile/clsFileIniEx.h"
#include "langfile/clsFileIniEx_entries.h"
#include "langfile/scanText.h"

#include <algorithm>
#include <array>

void clsFileIniEx::AddString(TextView sAppName, TextView sKeyName, TextView sKeyVal) {
    if (!m_bLoaded) startRows();
    const TextView key = cleaned(sKeyName);
    pvAddKeyRow(cleaned(sAppName), key, lineOf(key, cleaned(sKeyVal)));
}

void clsFileIniEx::AddBool(TextView sAppName, TextView sKeyName, bool bKeyVal) {
    AddString(sAppName, sKeyName, bKeyVal ? u"1" : u"0");
}

TextView clsFileIniEx::lineOf(TextView sKey, TextView sValue) {
    char16_t* const line = m_edited.allocate(sKey.size() + 1 + sValue.size());
    char16_t* end = std::copy(sKey.begin(), sKey.end(), line);
    *end++ = m_cSeparator;
    end = std::copy(sValue.begin(), sValue.end(), end);
    return {line, static_cast<std::size_t>(end - line)};
}

// The head to file a row of this section under: a spelling that is there already, else a new one.
std::uint32_t clsFileIniEx::headNamed(TextView sSection) {
    if (pvTrim(sSection).empty()) return kRoot;
    const Head& recent = m_heads[m_recentHead];
    if (recent.name == sSection && recent.section != kNone && !m_sections[recent.section].removed) {
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

// sLine begins with sKey and the separator and lives as long as the document's rows.
clsFileIniEx::NewRow clsFileIniEx::prepareRow(TextView sSection, TextView sKey, TextView sLine) {
    const std::uint32_t head = headNamed(sSection);
    const TextView key = pvTrim(sKey);
    const std::uint64_t hash = hashOf(sectionOf(head), key);
    m_keyTable.prefetch(hash);
    if (containsText(sLine, ROW_SEP)) m_bPackedSplits = true;
    return {Record{sLine.data(), static_cast<std::uint32_t>(sLine.size()),
                   static_cast<std::uint32_t>(sKey.size()), head, kNone},
            key, hash};
}

void clsFileIniEx::putRow(const NewRow& row) {
    const std::uint32_t section = m_heads[row.record.head].section;
    const auto number = static_cast<std::uint32_t>(m_records.size());
    const std::uint32_t there =
        m_keyTable.insert(row.hash, number, isKeyOf(section, row.trimmedKey));
    if (there != kNone) {
        const std::uint32_t next = m_records[there].next;
        m_records[there] = row.record;
        m_records[there].next = next;
    } else {
        m_records.push_back(row.record);
        append(section, number);
    }
}

void clsFileIniEx::pvAddKeyRow(TextView sSection, TextView sKey, TextView sLine) {
    putRow(prepareRow(sSection, sKey, sLine));
}

void clsFileIniEx::Reserve(std::size_t rows) {
    if (rows == 0) return;
    if (!m_bLoaded) startRows();
    m_records.reserve(m_records.size() + rows);
    m_keyTable.reserve(m_records.size() + rows);
}

// The lines that can be taken over as they are stay this document's, which must outlive the target.
void clsFileIniEx::mergeInto(clsFileIniEx& oTarget) const {
    constexpr std::size_t kAhead = 16;  // far enough for a row's slot to have come from memory
    std::array<NewRow, kAhead> ahead;
    std::size_t prepared = 0;
    for (const Section& section : m_sections) {
        for (std::uint32_t r = section.first; r != kNone; r = m_records[r].next) {
            const Record& row = m_records[r];
            if (!isKeyRow(row)) continue;
            const TextView key = oTarget.cleaned(keyOf(row));
            const TextView value = oTarget.cleaned(valueOf(row));
            const bool clean = key.size() + 1 + value.size() == row.lineLength;
            if (prepared >= kAhead) oTarget.putRow(ahead[prepared % kAhead]);
            ahead[prepared++ % kAhead] =
                oTarget.prepareRow(oTarget.cleaned(m_heads[row.head].name), key,
                                   clean ? textOf(row) : oTarget.lineOf(key, value));
        }
    }
    for (std::size_t i = prepared - std::min(prepared, kAhead); i < prepared; ++i) {
        oTarget.putRow(ahead[i % kAhead]);
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
