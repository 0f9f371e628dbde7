#include "workbench/logic/PendingRows.h"

#include "workbench/logic/UpdateBracket.h"
#include "workbench/logic/columns.h"
#include "workbench/logic/hashText.h"

#include <algorithm>

namespace {

auto hasDefault(const GridData& fxGrid, TextView sDefault) {
    return [&fxGrid, sDefault](std::int32_t iRow) {
        return iRow <= fxGrid.Rows() && fxGrid.CellText(iRow, kDefaultColumn) == sDefault;
    };
}

}  // namespace

void PendingRows::collect(const GridData& fxGrid) {
    m_groups.clear();
    m_notes.clear();
    m_table.clear();
    m_guess.clear();
    for (std::int32_t i = 1; i <= fxGrid.Rows(); ++i) {
        if (fxGrid.CellText(i, kTranslationColumn).empty()) add(fxGrid, i);
    }
}

void PendingRows::add(const GridData& fxGrid, std::int32_t iRow) {
    const TextView sDefault = fxGrid.CellText(iRow, kDefaultColumn);
    const auto isSame = [&, same = hasDefault(fxGrid, sDefault)](std::uint32_t number) {
        return same(m_groups[number].row);
    };
    const auto number = static_cast<std::uint32_t>(m_groups.size());
    std::uint32_t there = m_table.insert(hashText(sDefault), number, isSame);
    if (there == kNone) {
        there = number;
        m_groups.push_back({iRow});
        m_guess.insert(hashEnds(sDefault));
    }
    Group& group = m_groups[there];
    const auto note = static_cast<std::uint32_t>(m_notes.size());
    m_notes.push_back({iRow, kNone});
    (group.first == kNone ? group.first : m_notes[group.last].next) = note;
    group.last = note;
}

std::span<const std::int32_t> PendingRows::fill(GridData& fxGrid, TextView sDefault,
                                                TextView sTrans) {
    if (!m_guess.mayHold(hashEnds(sDefault))) return {};
    const auto same = hasDefault(fxGrid, sDefault);
    const std::uint32_t number =
        m_table.find(hashText(sDefault), [&](std::uint32_t n) { return same(m_groups[n].row); });
    if (number == kNone || m_groups[number].first == kNone) return {};

    m_rows.clear();
    for (std::uint32_t n = m_groups[number].first; n != kNone; n = m_notes[n].next) {
        const std::int32_t row = m_notes[n].row;
        if (same(row) && fxGrid.CellText(row, kTranslationColumn).empty()) m_rows.push_back(row);
    }
    m_groups[number].first = kNone;
    // A row that was added later may stand in front of others, or be there twice.
    std::sort(m_rows.begin(), m_rows.end());
    m_rows.erase(std::unique(m_rows.begin(), m_rows.end()), m_rows.end());

    if (m_rows.empty()) return {};
    const Text sKept(sTrans);  // setting a text may move the others of its column
    const UpdateBracket update(fxGrid);
    for (const std::int32_t row : m_rows) fxGrid.CellText(row, kTranslationColumn, sKept);
    return m_rows;
}
