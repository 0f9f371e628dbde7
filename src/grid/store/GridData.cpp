#include "grid/store/GridData.h"

#include "grid/store/gridFailures.h"
#include "platform/base/casemap.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

// A bit for each of the first 64 units of s that is a tab. Without a branch on what the units are:
// where fields end is hard to guess.
std::uint64_t tabsIn(TextView s) {
    constexpr std::uint64_t kTabs = 0x0009'0009'0009'0009;
    constexpr std::uint64_t kLow = 0x7FFF'7FFF'7FFF'7FFF;
    const std::size_t units = std::min<std::size_t>(s.size(), 64);
    std::uint64_t found = 0;
    std::size_t i = 0;
    if constexpr (std::endian::native == std::endian::little) {
        for (; i + 4 <= units; i += 4) {
            std::uint64_t four = 0;
            std::memcpy(&four, s.data() + i, sizeof four);
            four ^= kTabs;
            const std::uint64_t tabs = ~(((four & kLow) + kLow) | four | kLow) >> 15;
            found |= ((tabs | tabs >> 15 | tabs >> 30 | tabs >> 45) & 0xF) << i;
        }
    }
    for (; i < units; ++i) found |= std::uint64_t{s[i] == u'\t'} << i;
    return found;
}

// Fills fields, as far as s has so many (at least one), and returns how many there are.
std::size_t splitAtTabs(TextView s, std::span<TextView> fields) {
    std::size_t count = 0;
    std::size_t start = 0;
    for (std::size_t block = 0; block < s.size(); block += 64) {
        for (std::uint64_t tabs = tabsIn(s.substr(block)); tabs != 0; tabs &= tabs - 1) {
            const std::size_t end = block + static_cast<std::size_t>(std::countr_zero(tabs));
            fields[count++] = s.substr(start, end - start);
            if (count == fields.size()) return count;
            start = end + 1;
        }
    }
    fields[count++] = s.substr(start);
    return count;
}

}  // namespace

void GridData::DrawControl(bool, bool) {}
void GridData::FocusSelectedRow(bool, bool) {}

// --- Looking up columns

void GridData::raiseNoSuchColumn() { raiseSubscriptOutOfRange(); }

std::optional<std::size_t> GridData::findKey(TextView sKey) const {
    if (sKey.empty()) return std::nullopt;
    const Text folded = platform::lowerCase(sKey);
    for (std::size_t i = 0; i < m_aKeys.size(); ++i) {
        if (m_aKeys[i] == folded) return i;
    }
    return std::nullopt;
}

std::size_t GridData::lookUp(const GridValue& vKey) const {
    if (vKey.isNumeric()) {
        const double position = std::nearbyint(vKey.toDouble());
        if (!(position >= 1 && position <= static_cast<double>(m_oColumns.size()))) {
            raiseNoSuchColumn();
        }
        return static_cast<std::size_t>(position) - 1;
    }
    if (!vKey.isText()) raiseTypeMismatch();
    const std::optional<std::size_t> found = findKey(vKey.text());
    if (!found) {
        throw Failure(5, u"", Text(u"There is no column \"").append(vKey.text()).append(u"\"."));
    }
    return *found;
}

clsCtlUniGrid_Column& GridData::column(const GridValue& vKey) { return *m_oColumns[lookUp(vKey)]; }
const clsCtlUniGrid_Column& GridData::column(const GridValue& vKey) const {
    return *m_oColumns[lookUp(vKey)];
}

void GridData::requireColumns(TextView source) const {
    if (m_oColumns.empty()) {
        throw Failure(kOwnError, Text(source), u"Please add some columns first!");
    }
}

void GridData::requireRow(std::int32_t iRow) const {
    if (iRow != -1 && (iRow < 1 || iRow > Rows())) throw Failure(kOwnError, u"", u"Wrong Row");
}

// --- Columns

void GridData::AddColumn(const NewColumn& column) {
    const bool keyed = column.vKey != GridValue(Text()) && column.vKey != GridValue();
    if (keyed && !column.vKey.isText()) raiseTypeMismatch();
    if (keyed && findKey(column.vKey.text())) {
        throw Failure(
            457, u"",
            Text(u"There is a column \"").append(column.vKey.text()).append(u"\" already."));
    }
    if (m_oColumns.size() == std::numeric_limits<std::int16_t>::max()) raiseOverflow();

    auto added = std::make_unique<clsCtlUniGrid_Column>();
    added->sText = column.sText;
    added->iMaxWidth = column.iWidth;
    added->iAlign = column.iAlign;
    if (keyed) added->vKey = column.vKey;
    added->bResizable = column.bResizable;
    added->iHeaderAlign = column.iHeaderAlign;
    added->bSortable = column.bSortable;
    added->bSortWithCustomEvent = column.bSortWithCustomEvent;
    added->bRightToLeft = column.bRightToLeft;
    added->iType = column.iType;
    added->bAllowEmptyNumbers = column.bAllowEmptyNumbers;
    for (std::int32_t i = 0; i < Rows(); ++i) added->AddRow();

    m_aKeys.push_back(platform::lowerCase(column.vKey.text()));
    m_oColumns.push_back(std::move(added));
    draw(true, false);
}

void GridData::RemoveColumn(const std::optional<GridValue>& vColKey) {
    if (m_oColumns.empty()) return;
    const std::size_t index = vColKey ? lookUp(*vColKey) : m_oColumns.size() - 1;
    m_aKeys.erase(m_aKeys.begin() + static_cast<std::ptrdiff_t>(index));
    m_oColumns.erase(m_oColumns.begin() + static_cast<std::ptrdiff_t>(index));
    draw(true, false);
}

bool GridData::ColExists(const GridValue& vKey) const {
    try {
        (void)lookUp(vKey);
        return true;
    } catch (const Failure&) {
        return false;
    }
}

std::int32_t GridData::ColWidth(const GridValue& vKey) const {
    const clsCtlUniGrid_Column& found = column(vKey);
    return found.iMaxWidth != -1 ? found.iMaxWidth : found.iCurrentWidth;
}
void GridData::ColWidth(const GridValue& vKey, std::int32_t iWidth) {
    column(vKey).iMaxWidth = iWidth;
    draw(true, false);
}
std::int32_t GridData::ColAlign(const GridValue& vKey) const { return column(vKey).iAlign; }
void GridData::ColAlign(const GridValue& vKey, std::int32_t iAlign) {
    column(vKey).iAlign = iAlign;
    draw(false, false);
}
std::int32_t GridData::ColHeaderAlign(const GridValue& vKey) const {
    return column(vKey).iHeaderAlign;
}
void GridData::ColHeaderAlign(const GridValue& vKey, std::int32_t iAlign) {
    column(vKey).iHeaderAlign = iAlign;
    draw(false, false);
}
bool GridData::ColResizable(const GridValue& vKey) const { return column(vKey).bResizable; }
void GridData::ColResizable(const GridValue& vKey, bool bResizable) {
    column(vKey).bResizable = bResizable;
    draw(true, false);
}
bool GridData::ColRightToLeft(const GridValue& vKey) const { return column(vKey).bRightToLeft; }
void GridData::ColRightToLeft(const GridValue& vKey, bool bRightToLeft) {
    column(vKey).bRightToLeft = bRightToLeft;
    draw(false, false);
}
const Text& GridData::ColText(const GridValue& vKey) const { return column(vKey).sText; }
void GridData::ColText(const GridValue& vKey, Text sText) {
    column(vKey).sText = std::move(sText);
    draw(true, false);
}
bool GridData::ColSortable(const GridValue& vKey) const { return column(vKey).bSortable; }
void GridData::ColSortable(const GridValue& vKey, bool bSortable) {
    column(vKey).bSortable = bSortable;
}
bool GridData::ColSortWithCustomEvent(const GridValue& vKey) const {
    return column(vKey).bSortWithCustomEvent;
}
void GridData::ColSortWithCustomEvent(const GridValue& vKey, bool bSortWithCustomEvent) {
    column(vKey).bSortWithCustomEvent = bSortWithCustomEvent;
}
bool GridData::ColAllowEmptyNumbers(const GridValue& vKey) const {
    return column(vKey).bAllowEmptyNumbers;
}
void GridData::ColAllowEmptyNumbers(const GridValue& vKey, bool bAllowEmptyNumbers) {
    column(vKey).bAllowEmptyNumbers = bAllowEmptyNumbers;
}
std::int32_t GridData::ColType(const GridValue& vKey) const { return column(vKey).iType; }
const GridValue& GridData::ColKey(const GridValue& iCol) const { return column(iCol).vKey; }

void GridData::SetColFormat(const GridValue& vKey, const ColumnFormat& format) {
    clsCtlUniGrid_Column& found = column(vKey);
    found.sNumDecSep = format.sNumDecSep;
    found.sNumValSep = format.sNumValSep;
    found.iNumFixInt = format.iNumFixInt;
    found.iNumFixDec = format.iNumFixDec;
    found.bNumSign = format.bNumSign;
    found.bNumAutoDecSep = format.bNumAutoDecSep;
    found.bNumAutoValSep = format.bNumAutoValSep;
    draw(true, false);
}

// --- Rows

void GridData::AddRow(TextView sRowText, bool bSelect) {
    requireColumns(u"AddRow");
    m_aFields.resize(m_oColumns.size());
    const std::size_t count = sRowText.empty() ? 0 : splitAtTabs(sRowText, m_aFields);
    addFields({m_aFields.data(), count});
    finishAddRow(bSelect);
}

void GridData::AddRow(std::span<const TextView> fields, bool bSelect) {
    requireColumns(u"AddRow");
    // One empty field is an empty row text, which has no fields.
    addFields(fields.size() == 1 && fields[0].empty() ? std::span<const TextView>() : fields);
    finishAddRow(bSelect);
}

void GridData::addFields(std::span<const TextView> fields) {
    std::size_t done = 0;
    try {
        for (; done < m_oColumns.size(); ++done) {
            if (done < fields.size()) {
                m_oColumns[done]->AddRow(fields[done]);
            } else {
                m_oColumns[done]->AddRow();
            }
        }
    } catch (...) {
        while (done > 0) m_oColumns[--done]->RemoveRow();
        throw;
    }
}

void GridData::finishAddRow(bool bSelect) {
    if (bSelect) {
        m_iRow = Rows();
        if (m_iUpdateLock == 0) FocusSelectedRow(true, true);
    }
    draw(true, false);
    if (bSelect) raiseSelectionChange();
}

void GridData::RemoveRow(std::int32_t iRow, bool bCheckSize) {
    requireColumns(u"RemoveRow");
    requireRow(iRow);
    for (const auto& each : m_oColumns) each->RemoveRow(iRow);
    if (iRow == m_iRow && iRow != -1) {
        m_iRow = std::min(m_iRow, Rows());
        if (m_iRow == 0) m_iRow = -1;
        if (m_iUpdateLock == 0) FocusSelectedRow(true, true);
        raiseSelectionChange();
    }
    draw(bCheckSize, false);
}

void GridData::Rows(std::int32_t l) {
    if (l != Rows()) requireColumns(l < Rows() ? u"RemoveRow" : u"AddRow");
    if (l < 0) throw Failure(kOwnError, u"", u"Wrong Row");
    BeginUpdate();
    try {
        while (Rows() > l) RemoveRow(Rows(), false);
        while (Rows() < l) AddRow();
    } catch (...) {
        NoUpdate();
        throw;
    }
    EndUpdate(true, false);
    draw(false, false);
}

void GridData::reserveRows(std::int32_t count) {
    for (const auto& each : m_oColumns) each->reserveRows(count);
}

void GridData::lendText(const std::shared_ptr<const Text>& text) {
    for (const auto& each : m_oColumns) each->lendText(text);
}

void GridData::Row(std::int32_t l) {
    if (l >= 1 && l <= Rows()) {
        m_iRow = l;
        if (m_iUpdateLock < 1) FocusSelectedRow(true, true);
    } else {
        m_iRow = -1;
        draw(false, false);
    }
    raiseSelectionChange();
}

void GridData::Clear(bool bClearHeader) {
    if (bClearHeader) {
        m_oColumns.clear();
        m_aKeys.clear();
    } else {
        for (const auto& each : m_oColumns) each->ClearRows();
    }
    m_iRow = -1;
    m_iSelAnchor = -1;
    m_vSortCol = -1;
    draw(true, false);
    raiseSelectionChange();
}

// --- Cells

void GridData::CellText(std::int32_t iRow, std::int32_t iCol, TextView sText) {
    columnAt(iCol).CellText(iRow, sText);
    draw(true, false);
}
GridValue GridData::CellValue(std::int32_t iRow, const GridValue& vColKey) const {
    return column(vColKey).Value(iRow);
}
void GridData::CellValue(std::int32_t iRow, const GridValue& vColKey, const GridValue& vValue) {
    column(vColKey).Value(iRow, vValue);
    draw(true, false);
}
GridValue GridData::CellTag(std::int32_t iRow, const GridValue& vColKey) const {
    return column(vColKey).Tag(iRow);
}
void GridData::CellTag(std::int32_t iRow, const GridValue& vColKey, GridValue vTag) {
    column(vColKey).Tag(iRow, std::move(vTag));
}
std::int32_t GridData::CellBackColor(std::int32_t iRow, const GridValue& vColKey) const {
    return column(vColKey).BackColor(iRow);
}
void GridData::CellBackColor(std::int32_t iRow, const GridValue& vColKey, std::int32_t lColor) {
    column(vColKey).BackColor(iRow, lColor);
    draw(true, false);
}
std::int32_t GridData::CellForeColor(std::int32_t iRow, const GridValue& vColKey) const {
    return column(vColKey).ForeColor(iRow);
}
void GridData::CellForeColor(std::int32_t iRow, const GridValue& vColKey, std::int32_t lColor) {
    column(vColKey).ForeColor(iRow, lColor);
    draw(true, false);
}
void GridData::SetCellPicture(std::int32_t iRow, const GridValue& vColKey,
                              std::shared_ptr<GridPicture> oPic, const PictureOptions& options) {
    column(vColKey).SetPicture(iRow, std::move(oPic), options);
    draw(true, false);
}
CellPicture GridData::GetCellPicture(std::int32_t iRow, const GridValue& vColKey) const {
    return column(vColKey).GetPicture(iRow);
}

GridValue GridData::CurrCellValue(const GridValue& vColKey) const {
    return CellValue(m_iRow, vColKey);
}
void GridData::CurrCellValue(const GridValue& vColKey, const GridValue& vValue) {
    CellValue(m_iRow, vColKey, vValue);
}
GridValue GridData::CurrCellTag(const GridValue& vColKey) const { return CellTag(m_iRow, vColKey); }
void GridData::CurrCellTag(const GridValue& vColKey, GridValue vTag) {
    CellTag(m_iRow, vColKey, std::move(vTag));
}
std::int32_t GridData::CurrCellBackColor(const GridValue& vColKey) const {
    return CellBackColor(m_iRow, vColKey);
}
void GridData::CurrCellBackColor(const GridValue& vColKey, std::int32_t lColor) {
    CellBackColor(m_iRow, vColKey, lColor);
}
std::int32_t GridData::CurrCellForeColor(const GridValue& vColKey) const {
    return CellForeColor(m_iRow, vColKey);
}
void GridData::CurrCellForeColor(const GridValue& vColKey, std::int32_t lColor) {
    CellForeColor(m_iRow, vColKey, lColor);
}
void GridData::SetCurrCellPicture(const GridValue& vColKey, std::shared_ptr<GridPicture> oPic,
                                  const PictureOptions& options) {
    SetCellPicture(m_iRow, vColKey, std::move(oPic), options);
}
CellPicture GridData::GetCurrCellPicture(const GridValue& vColKey) const {
    return GetCellPicture(m_iRow, vColKey);
}

// --- Selection

bool GridData::RowSel(std::int32_t iRow) const {
    requireColumns(u"RowSel");
    requireRow(iRow);
    return m_bMultiSelect ? m_oColumns.front()->Selected(iRow) : iRow == m_iRow;
}

void GridData::RowSel(std::int32_t iRow, bool b) {
    requireColumns(u"RowSel");
    requireRow(iRow);
    m_oColumns.front()->Selected(iRow, b);
    draw(false, false);
}

std::int32_t GridData::CountSelected() const {
    std::int32_t count = 0;
    for (std::int32_t i = 1; i <= Rows(); ++i) count += RowSel(i) ? 1 : 0;
    return count;
}

void GridData::SelectAll(bool b, bool bRefresh) {
    if (Rows() > 0) SelectRange(1, Rows(), b, bRefresh);
}

void GridData::SelectRange(std::int32_t i1, std::int32_t i2, bool b, bool bRefresh) {
    requireColumns(u"SelectRange");
    if (i1 > i2) std::swap(i1, i2);
    clsCtlUniGrid_Column& first = *m_oColumns.front();
    (void)first.Selected(i1);  // raises for a row outside the array
    (void)first.Selected(i2);
    for (std::int32_t i = i1; i <= i2; ++i) first.Selected(i, b);
    if (bRefresh) draw(false, false);
}

// --- Updating

void GridData::EndUpdate(bool bCheckSize, bool bRefreshNow) {
    NoUpdate();
    draw(bCheckSize, bRefreshNow);
}

void GridData::NoUpdate() {
    if (m_iUpdateLock > 0) --m_iUpdateLock;
}

void GridData::AllowMultiLineText(bool b) {
    m_bAllowMultiLineText = b;
    Refresh();
}
