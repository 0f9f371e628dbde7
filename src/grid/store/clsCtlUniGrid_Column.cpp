#include "grid/store/clsCtlUniGrid_Column.h"

#include "grid/store/gridFailures.h"
#include "platform/base/memory.h"

#include <algorithm>
#include <cmath>
#include <cstring>

void clsCtlUniGrid_Column::raiseOutOfRange() { raiseSubscriptOutOfRange(); }
void clsCtlUniGrid_Column::raiseNoText() { raiseTypeMismatch(); }

// --- Rows

void clsCtlUniGrid_Column::AddRow() {
    switch (iType) {
    case 0:
        pushRow(GridValueType::kText);
        break;
    case 1:
        pushRow(GridValueType::kInteger).number = 0;
        break;
    case 2:
        pushRow(GridValueType::kBoolean).number = 0;
        break;
    default:
        pushRow(GridValueType::kEmpty);
        break;
    }
}

void clsCtlUniGrid_Column::AddRow(const GridValue& vValue) {
    switch (iType) {
    case 0:
        if (vValue.isText()) {
            addText(vValue.text());
        } else {
            addText(vValue.toText());
        }
        break;
    case 1: {
        const double number = vValue.toDouble();
        pushRow(GridValueType::kDouble).number = number;
        break;
    }
    case 2: {
        const bool flag = vValue.toBoolean();
        pushRow(GridValueType::kBoolean).number = flag ? 1 : 0;
        break;
    }
    default:
        pushRow(GridValueType::kEmpty);
        break;
    }
}

void clsCtlUniGrid_Column::RemoveRow(std::int32_t iRow) {
    if (m_iRows == 0) return;
    if (iRow == -1) iRow = m_iRows;
    if (iRow < 1 || iRow > m_iRows) raiseOutOfRange();

    Cell* const gap = &m_aRows[static_cast<std::size_t>(iRow) - 1];
    const auto behind = static_cast<std::size_t>(m_iRows - iRow);
    const Cell removed = *gap;
    std::memmove(gap, gap + 1, behind * sizeof(Cell));
    gap[behind] = removed;
    if (m_heights.size() >= static_cast<std::size_t>(iRow)) {
        m_heights.resize(std::max(m_heights.size(), static_cast<std::size_t>(m_iRows)));
        const auto first = m_heights.begin() + (iRow - 1);
        std::rotate(first, first + 1, m_heights.begin() + m_iRows);
    }
    m_measured.rowRemoved(iRow);
    --m_iRows;
    compactTextsWhenDue();
}

void clsCtlUniGrid_Column::ClearRows() {
    iCurrentWidth = 0;
    m_aRows.reset();
    m_iRows = 0;
    m_iCapacity = 1;
    m_written = m_ready = m_allocated = 0;
    m_texts = CellTexts();
    m_garbage = 0;
    m_sides.clear();
    m_sides.shrink_to_fit();
    m_freeSides.clear();
    m_heights.clear();
    m_heights.shrink_to_fit();
    m_measured.clear();
}

void clsCtlUniGrid_Column::reserveRows(std::int32_t count) {
    if (count > 0 && static_cast<std::uint32_t>(count) > m_allocated) {
        growTo(static_cast<std::uint32_t>(count));
    }
}

// Cells may move as raw memory, so a large array grows by moving its pages, not its bytes.
void clsCtlUniGrid_Column::growTo(std::uint32_t rows) {
    const std::size_t wanted =
        std::max({std::size_t{rows}, std::size_t{m_allocated} * 2, std::size_t{32}});
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
    void* const grown = std::realloc(m_aRows.get(), wanted * sizeof(Cell));
    if (grown == nullptr) raiseOutOfMemory();
    (void)m_aRows.release();  // realloc has taken it over
    m_aRows.reset(static_cast<Cell*>(grown));
    m_allocated = static_cast<std::uint32_t>(wanted);
}

// Room for the next record. A long list gets its memory in steps, each ahead of its first use.
void clsCtlUniGrid_Column::makeReady() {
    constexpr std::uint32_t kStep = 4096;
    if (m_written == m_allocated) growTo(m_written + 1);
    m_ready = m_written + std::min(m_allocated - m_written, kStep);
    if (m_ready - m_written == kStep) {
        platform::aboutToWrite(&m_aRows[m_written], kStep * sizeof(Cell));
    }
}

const clsCtlUniGrid_Column::Cell& clsCtlUniGrid_Column::cellBehind(std::int32_t iRow) const {
    static const Cell fresh = freshCell(GridValueType::kEmpty);
    if (iRow < 1 || iRow > m_iCapacity) raiseOutOfRange();
    return fresh;
}

void clsCtlUniGrid_Column::writeFreshUpTo(std::int32_t iRow) {
    if (iRow < 1 || iRow > m_iCapacity) raiseOutOfRange();
    const auto rows = static_cast<std::uint32_t>(iRow);
    if (rows > m_allocated) growTo(rows);
    while (m_written < rows) m_aRows[m_written++] = freshCell(GridValueType::kEmpty);
    m_ready = std::max(m_ready, m_written);
}

// Takes what a removed record still holds, before the slot is written anew.
void clsCtlUniGrid_Column::dropSlot(std::uint32_t index) {
    Cell& cell = m_aRows[index];
    if (typeOf(cell) == GridValueType::kText) m_garbage += cell.text.length;
    dropSide(cell);
    if (index < m_heights.size()) m_heights[index] = {};
}

// --- Values

GridValue clsCtlUniGrid_Column::valueOf(const Cell& cell) const {
    switch (typeOf(cell)) {
    case GridValueType::kInteger:
        return static_cast<std::int16_t>(cell.number);
    case GridValueType::kDouble:
        return cell.number;
    case GridValueType::kBoolean:
        return cell.number != 0;
    case GridValueType::kText:
        return textOf(cell);
    case GridValueType::kEmpty:
        break;
    }
    return {};
}

GridValue clsCtlUniGrid_Column::Value(std::int32_t iRow) const { return valueOf(cellAt(iRow)); }

void clsCtlUniGrid_Column::Value(std::int32_t iRow, const GridValue& vValue) {
    Cell& cell = slot(iRow);
    m_measured.cellChanged(iRow);
    switch (iType) {
    case 0:
        if (vValue.isText()) {
            storeText(cell, vValue.text());
        } else {
            storeText(cell, vValue.toText());
        }
        break;
    case 1:
        if (bAllowEmptyNumbers && vValue.isText() && vValue.text().empty()) {
            storeText(cell, {});
        } else {
            storeNumber(cell, GridValueType::kDouble, vValue.toDouble());
        }
        break;
    case 2:
        storeNumber(cell, GridValueType::kBoolean, vValue.toBoolean() ? 1 : 0);
        break;
    default:
        store(cell, vValue);
        break;
    }
}

TextView clsCtlUniGrid_Column::valueText(std::int32_t iRow, Text& spare) const {
    const Cell& cell = cellAt(iRow);
    if (typeOf(cell) == GridValueType::kText) return textOf(cell);
    spare = valueOf(cell).toText();
    return spare;
}

void clsCtlUniGrid_Column::CellText(std::int32_t iRow, TextView sValue) {
    if (iType == 0) {
        storeText(slot(iRow), sValue);
        m_measured.cellChanged(iRow);
    } else {
        Value(iRow, sValue);
    }
}

void clsCtlUniGrid_Column::store(Cell& cell, const GridValue& vValue) {
    if (vValue.isText()) {
        storeText(cell, vValue.text());
    } else {
        storeNumber(cell, vValue.type(),
                    vValue.type() == GridValueType::kBoolean ? (vValue.toBoolean() ? 1 : 0)
                                                             : vValue.toDouble());
    }
}

void clsCtlUniGrid_Column::storeNumber(Cell& cell, GridValueType type, double number) {
    if (typeOf(cell) == GridValueType::kText) m_garbage += cell.text.length;
    cell.type = static_cast<std::uint32_t>(type);
    cell.number = number;
    compactTextsWhenDue();
}

// sValue may lie in m_texts, even in the cell itself.
void clsCtlUniGrid_Column::storeText(Cell& cell, TextView sValue) {
    const std::uint32_t room = typeOf(cell) == GridValueType::kText ? cell.text.length : 0;
    const auto length = static_cast<std::uint32_t>(sValue.size());
    char16_t* const place =
        room >= sValue.size() && length > 0 ? m_texts.writable(cell.text.offset) : nullptr;
    if (place != nullptr) {
        std::memmove(place, sValue.data(), length * sizeof(char16_t));
        m_garbage += room - length;
        cell.text.length = length;
    } else {
        cell.text = {length > 0 ? m_texts.append(sValue) : 0, length};
        cell.type = static_cast<std::uint32_t>(GridValueType::kText);
        m_garbage += room;
    }
    compactTextsWhenDue();
}

// Copies the texts that are in use when they are less than half of the arena: each unit of garbage
// pays for the copy of one unit, and a cell may be edited for ever.
void clsCtlUniGrid_Column::compactTextsWhenDue() {
    constexpr std::size_t kWorthIt = 16384;
    if (m_garbage < kWorthIt || m_garbage * 2 < m_texts.used()) return;
    CellTexts texts;
    std::vector<std::uint32_t> offsets;  // apart until all are copied, as memory may run out
    for (const Cell& cell : std::span(m_aRows.get(), m_written)) {
        if (hasText(cell)) offsets.push_back(texts.append(textOf(cell)));
    }
    auto offset = offsets.begin();
    for (Cell& cell : std::span(m_aRows.get(), m_written)) {
        if (hasText(cell)) cell.text.offset = *offset++;
    }
    m_texts = std::move(texts);
    m_garbage = 0;
}

// --- Fields that few cells have

const clsCtlUniGrid_Column::Side* clsCtlUniGrid_Column::side(std::int32_t iRow) const {
    const std::uint32_t number = cellAt(iRow).side;
    return number == 0 ? nullptr : &m_sides[number];
}

clsCtlUniGrid_Column::Side& clsCtlUniGrid_Column::sideSlot(std::int32_t iRow) {
    Cell& cell = slot(iRow);
    if (cell.side == 0) {
        constexpr std::size_t kMostSides = (1U << 28) - 1;
        if (m_sides.empty()) m_sides.emplace_back();
        if (m_freeSides.empty()) {
            if (m_sides.size() > kMostSides) raiseOutOfMemory();
            m_sides.emplace_back();
            cell.side = static_cast<std::uint32_t>(m_sides.size() - 1) & kMostSides;
        } else {
            cell.side = m_freeSides.back() & kMostSides;
            m_freeSides.pop_back();
        }
    }
    return m_sides[cell.side];
}

void clsCtlUniGrid_Column::dropSide(Cell& cell) {
    if (cell.side == 0) return;
    m_freeSides.push_back(cell.side);
    m_sides[cell.side] = {};
    cell.side = 0;
}

GridValue clsCtlUniGrid_Column::Tag(std::int32_t iRow) const {
    const Side* const found = side(iRow);
    return found == nullptr ? GridValue() : found->tag;
}

void clsCtlUniGrid_Column::Tag(std::int32_t iRow, GridValue vTag) {
    if (side(iRow) == nullptr && vTag.type() == GridValueType::kEmpty) return;
    sideSlot(iRow).tag = std::move(vTag);
}

std::int32_t clsCtlUniGrid_Column::ForeColor(std::int32_t iRow) const {
    const Side* const found = side(iRow);
    return found == nullptr ? -1 : found->foreColor;
}

void clsCtlUniGrid_Column::ForeColor(std::int32_t iRow, std::int32_t lColor) {
    if (side(iRow) == nullptr && lColor == -1) return;
    sideSlot(iRow).foreColor = lColor;
}

bool clsCtlUniGrid_Column::HasPicture(std::int32_t iRow) const {
    const Side* const found = side(iRow);
    return found != nullptr && found->picture.oPic != nullptr;
}

std::shared_ptr<GridPicture> clsCtlUniGrid_Column::Picture(std::int32_t iRow) const {
    const Side* const found = side(iRow);
    return found == nullptr ? nullptr : found->picture.oPic;
}

CellPicture clsCtlUniGrid_Column::GetPicture(std::int32_t iRow) const {
    const Side* const found = side(iRow);
    return found == nullptr ? CellPicture() : found->picture;
}

void clsCtlUniGrid_Column::SetPicture(std::int32_t iRow, std::shared_ptr<GridPicture> oPic,
                                      const PictureOptions& options) {
    CellPicture picture = GetPicture(iRow);
    const auto take = [](auto& field, const auto& given) { field = given.value_or(field); };
    picture.oPic = std::move(oPic);
    take(picture.bPicTransparent, options.bPicTransparent);
    take(picture.bPicGrayed, options.bPicGrayed);
    take(picture.lPicXTransp, options.lPicXTransp);
    take(picture.lPicYTransp, options.lPicYTransp);
    take(picture.lPicTranspColor, options.lPicTranspColor);
    if (side(iRow) == nullptr && picture == CellPicture()) return;
    sideSlot(iRow).picture = std::move(picture);
    m_measured.cellChanged(iRow);
}

clsCtlUniGrid_Column::Heights clsCtlUniGrid_Column::heights(std::int32_t iRow) const {
    (void)cellAt(iRow);  // raises for a row outside the array
    const auto index = static_cast<std::size_t>(iRow) - 1;
    return index < m_heights.size() ? m_heights[index] : Heights();
}

clsCtlUniGrid_Column::Heights& clsCtlUniGrid_Column::heightsSlot(std::int32_t iRow) {
    (void)slot(iRow);  // as above
    const auto index = static_cast<std::size_t>(iRow) - 1;
    if (index >= m_heights.size()) m_heights.resize(std::max<std::size_t>(index + 1, m_iRows));
    return m_heights[index];
}

GridCell clsCtlUniGrid_Column::record(std::int32_t iRow) const {
    const Cell& cell = cellAt(iRow);
    const Heights height = heights(iRow);
    return {.Value = valueOf(cell),
            .BackColor = cell.backColor,
            .ForeColor = ForeColor(iRow),
            .Picture = GetPicture(iRow),
            .Selected = cell.selected != 0,
            .Tag = Tag(iRow),
            .TextHeight = height.text,
            .CellHeight = height.cell,
            .OffsetRow = height.offset};
}

void clsCtlUniGrid_Column::record(std::int32_t iRow, GridCell cell) {
    Cell& to = slot(iRow);
    store(to, cell.Value);
    to.backColor = cell.BackColor;
    to.selected = cell.Selected ? 1 : 0;
    dropSide(to);
    if (cell.ForeColor != -1 || cell.Picture != CellPicture() || cell.Tag != GridValue()) {
        sideSlot(iRow) = {cell.ForeColor, std::move(cell.Picture), std::move(cell.Tag)};
    }
    const Heights height = {cell.TextHeight, cell.CellHeight, cell.OffsetRow};
    if (!m_heights.empty() || height.text != 0 || height.cell != 0 || height.offset != 0) {
        heightsSlot(iRow) = height;
    }
    m_measured.cellChanged(iRow);
}

// --- Order of rows

void clsCtlUniGrid_Column::SwapRows(std::int32_t iRow1, std::int32_t iRow2) {
    (void)slot(iRow1);  // may move the array
    (void)slot(iRow2);
    std::swap(slot(iRow1), slot(iRow2));
    m_measured.rowsSwapped(iRow1, iRow2);
    if (!m_heights.empty()) {
        (void)heightsSlot(std::max(iRow1, iRow2));
        std::swap(heightsSlot(iRow1), heightsSlot(iRow2));
    }
}

void clsCtlUniGrid_Column::setRowsOrder(std::span<const std::uint32_t> order) {
    const auto rows = static_cast<std::size_t>(m_iRows);
    const auto ordered = std::make_unique_for_overwrite<Cell[]>(rows);
    for (std::size_t i = 0; i < rows; ++i) ordered[i] = m_aRows[order[i] - 1];
    std::memcpy(m_aRows.get(), ordered.get(), rows * sizeof(Cell));
    m_measured.rowsReordered(order);
    if (m_heights.empty()) return;
    m_heights.resize(std::max(m_heights.size(), rows));
    std::vector<Heights> orderedHeights = m_heights;
    for (std::size_t i = 0; i < rows; ++i) orderedHeights[i] = m_heights[order[i] - 1];
    m_heights = std::move(orderedHeights);
}

void clsCtlUniGrid_Column::z_SetRowsOrder(TextView sOrder, TextView cSep) {
    std::vector<std::uint32_t> order;
    order.reserve(static_cast<std::size_t>(m_iRows));
    std::vector<bool> named(static_cast<std::size_t>(m_iRows));
    bool permutes = true;
    bool more = !sOrder.empty();  // an empty text has no entries
    for (std::int32_t i = 0; i < m_iRows; ++i) {
        if (!more) raiseOutOfRange();
        const std::size_t end = cSep.empty() ? TextView::npos : sOrder.find(cSep);
        const double row = std::nearbyint(GridValue(sOrder.substr(0, end)).toDouble());
        if (!(row >= 1 && row <= m_iCapacity)) raiseOutOfRange();
        order.push_back(static_cast<std::uint32_t>(row));
        if (row > m_iRows || named[order.back() - 1]) {
            permutes = false;
        } else {
            named[order.back() - 1] = true;
        }
        more = end != TextView::npos;
        if (more) sOrder.remove_prefix(end + cSep.size());
    }
    if (permutes) return setRowsOrder(order);

    // A row named twice becomes two rows, each with its own text.
    std::vector<GridCell> records;
    records.reserve(order.size());
    for (const std::uint32_t row : order) records.push_back(record(static_cast<std::int32_t>(row)));
    for (std::int32_t i = 0; i < m_iRows; ++i) {
        record(i + 1, std::move(records[static_cast<std::size_t>(i)]));
    }
}

std::size_t clsCtlUniGrid_Column::memoryHeld() const {
    return m_written * sizeof(Cell) + m_texts.used() * sizeof(char16_t) +
           m_sides.capacity() * sizeof(Side) + m_freeSides.capacity() * sizeof(std::uint32_t) +
           m_heights.capacity() * sizeof(Heights) + m_measured.memoryHeld();
}
