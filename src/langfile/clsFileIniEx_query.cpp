#include "langfile/clsFileIniEx.h"
#include "langfile/clsFileIniEx_entries.h"
#include "langfile/scanText.h"

namespace {

// The parts of a line that holds the separator of packed lists.
void splitPacked(TextView line, std::vector<TextView>& parts) {
    for (std::size_t at = 0;;) {
        const std::size_t end = line.find(ROW_SEP, at);
        parts.push_back(line.substr(at, end - at));
        if (end == TextView::npos) return;
        at = end + ROW_SEP.size();
    }
}

}  // namespace

TextView clsFileIniEx::GetString(TextView sAppName, TextView sKeyName, TextView sDefault) const {
    pvCheckLoaded();
    const std::uint32_t row = pvFindRow(sAppName, sKeyName);
    return row == kNone ? sDefault : cleaned(valueOf(m_records[row]));
}

void clsFileIniEx::InOrder::section(TextView sAppName) {
    m_section = sAppName.empty() ? kRoot : m_document.pvFindSection(sAppName);
    m_next =
        m_document.m_bLoaded && m_section != kNone ? m_document.m_sections[m_section].first : kNone;
}

TextView clsFileIniEx::InOrder::GetString(TextView sKeyName, TextView sDefault) {
    m_document.pvCheckLoaded();
    if (m_section == kNone) return sDefault;
    const std::uint32_t row = m_document.findRow(m_section, pvTrim(sKeyName), m_next);
    if (row == kNone) return sDefault;
    m_next = m_document.m_records[row].next;
    return m_document.cleaned(valueOf(m_document.m_records[row]));
}

bool clsFileIniEx::GetBool(TextView sAppName, TextView sKeyName, bool bDefault) const {
    return pvTrim(GetString(sAppName, sKeyName, bDefault ? u"1" : u"0")) == u"1";
}

void clsFileIniEx::GetSectionNames(std::vector<TextView>& vRows) const {
    pvCheckLoaded();
    vRows.assign(1, TextView());
    for (std::size_t s = kRoot + 1; s < m_sections.size(); ++s) {
        if (!m_sections[s].removed) vRows.push_back(m_sections[s].name);
    }
}

void clsFileIniEx::GetSectionRows(TextView sSecName, std::vector<TextView>& vRows) const {
    pvCheckLoaded();
    vRows.clear();
    const std::uint32_t section = pvTrim(sSecName).empty() ? kRoot : pvFindSection(sSecName);
    if (section == kNone) return;
    for (std::uint32_t r = m_sections[section].first; r != kNone; r = m_records[r].next) {
        if (!isKeyRow(m_records[r])) continue;
        const TextView line = textOf(m_records[r]);
        if (mayHold(line, ROW_SEP.front())) {
            splitPacked(line, vRows);
        } else {
            vRows.push_back(line);
        }
    }
}

TextView clsFileIniEx::GetSectionRowKey(const std::vector<TextView>& vRows, std::size_t idx) const {
    const TextView s = vRows.at(idx);
    const std::size_t separator = firstUnit(s, m_cSeparator);
    return cleaned(separator != TextView::npos && separator > 0 ? s.substr(0, separator) : s);
}

TextView clsFileIniEx::GetSectionRowValue(const std::vector<TextView>& vRows,
                                          std::size_t idx) const {
    const TextView s = vRows.at(idx);
    const std::size_t separator = firstUnit(s, m_cSeparator);
    return cleaned(separator != TextView::npos && separator > 0 ? s.substr(separator + 1) : s);
}
