#include "grid/store/GridGeometry.h"

#include "grid/store/pvGetCellText.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr std::int32_t kFrame = 2;         // of the control, in absolute coordinates
constexpr std::int32_t kCellPadding = 10;  // what a column is wider than its content
constexpr std::int32_t kCellMargin = 6;    // what a row is higher than its text

std::int32_t held(std::int64_t value) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(
        value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

std::int64_t halfEven(double value) { return std::llrint(value); }  // the rounding mode's default

std::int32_t rowHeightFor(std::int32_t iTextHeight, std::int32_t iLeast) {
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(std::int64_t{iTextHeight} + kCellMargin, iLeast, 1 << 30));
}

}  // namespace

// --- Measuring

std::int32_t GridGeometry::headerWidth(const clsCtlUniGrid_Column& oCol) const {
    return m_measuring.textSize(oCol.sText).cx + (oCol.bSortable ? kArrowSize.cx + 2 : 0);
}

void GridGeometry::pvMeasureGrid() {
    if (Cols() == 0) return;
    const std::int32_t lineHeight = m_measuring.textSize(u"Xg").cy + kCellMargin;
    m_iRowHeight = static_cast<std::int16_t>(std::clamp(lineHeight, m_iMinRowHeight, 32767));

    MeasuredCells::Rows changed{std::numeric_limits<std::int32_t>::max(), 0};
    for (std::int32_t c = 1; c <= Cols(); ++c) {
        clsCtlUniGrid_Column& oCol = columnAt(c);
        if (!AllowMultiLineText()) {
            measureSingleLine(oCol);
            continue;
        }
        const MeasuredCells::Rows rows = measureMultiLine(oCol);
        changed = {std::min(changed.first, rows.first), std::max(changed.last, rows.last)};
    }
    if (AllowMultiLineText()) placeRows(changed);

    std::int64_t total = 1;
    for (std::int32_t c = 1; c <= Cols(); ++c) total += stepOf(columnAt(c));
    m_iTotalWidth = held(total);
    clsCtlUniGrid_Column& last = columnAt(Cols());
    if (const std::int32_t width = ViewPortWidth(); width > m_iTotalWidth && last.iMaxWidth == -1) {
        last.iCurrentWidth += width - m_iTotalWidth;
        m_iTotalWidth = width;
    }
}

namespace {

// The fields that the text of a number cell depends on.
Text numberFormatOf(const clsCtlUniGrid_Column& oCol) {
    if (oCol.iType != 1) return {};
    const auto unit = [](int i) { return static_cast<char16_t>(i); };
    Text format = oCol.sNumDecSep + u'\0' + oCol.sNumValSep + u'\0';
    format += unit(oCol.iNumFixInt);
    format += unit(oCol.iNumFixDec);
    format += unit(oCol.bNumSign * 4 + oCol.bNumAutoDecSep * 2 + oCol.bNumAutoValSep);
    return format;
}

}  // namespace

void GridGeometry::measureSingleLine(clsCtlUniGrid_Column& oCol) {
    if (oCol.iMaxWidth != -1) {
        oCol.iCurrentWidth = std::max(oCol.iMaxWidth, 0);
        return;
    }
    MeasuredCells& cells = oCol.measuredCells();
    cells.measuredUnder({false, MeasuredCells::kUnknown, m_fontGeneration, numberFormatOf(oCol)});
    const MeasuredCells::Rows changed = cells.changed(oCol.Rows());
    const std::int32_t end = std::min(changed.last, kMeasuredRows);
    for (std::int32_t i = changed.first; i <= end; ++i) {
        if (cells.width(i) == MeasuredCells::kUnknown) {
            cells.width(i, pvMeasureCell(i, oCol, std::nullopt).cx);
        }
    }
    cells.changesSeen();
    oCol.iCurrentWidth =
        held(std::int64_t{std::max(headerWidth(oCol), cells.widest(kMeasuredRows))} + kCellPadding);
}

// Gives the rows whose height or place has to be worked out anew.
MeasuredCells::Rows GridGeometry::measureMultiLine(clsCtlUniGrid_Column& oCol) {
    std::optional<std::int32_t> fixedWidth;
    if (oCol.iMaxWidth != -1) fixedWidth = std::max(oCol.iMaxWidth, 0);
    MeasuredCells& cells = oCol.measuredCells();
    cells.measuredUnder({true, oCol.iMaxWidth, m_fontGeneration, numberFormatOf(oCol)});
    const MeasuredCells::Rows changed = cells.changed(oCol.Rows());
    if (changed.first <= changed.last) cells.expect(changed.last);
    for (std::int32_t i = changed.first; i <= changed.last; ++i) {
        if (cells.width(i) != MeasuredCells::kUnknown) continue;
        const GridSize size = pvMeasureCell(i, oCol, fixedWidth);
        cells.width(i, std::max(size.cx, 0));
        oCol.TextHeight(i, size.cy);
    }
    cells.changesSeen();
    oCol.iCurrentWidth =
        fixedWidth ? *fixedWidth
                   : held(std::int64_t{std::max(headerWidth(oCol), cells.widest())} + kCellPadding);
    return changed;
}

GridSize GridGeometry::pvMeasureCell(std::int32_t iRow, const clsCtlUniGrid_Column& oCol,
                                     std::optional<std::int32_t> iFixedWidth) {
    GridSize size{iFixedWidth.value_or(0), 0};
    if (oCol.iType == 0) {
        const TextView text = oCol.valueText(iRow, m_spareText);
        size = AllowMultiLineText() ? m_measuring.textSizeWrapped(text, iFixedWidth)
                                    : m_measuring.textSize(text);
    } else if (oCol.iType == 1) {
        size = m_measuring.textSize(pvGetCellText(oCol.Value(iRow), oCol));
    } else if (oCol.iType == 2) {
        size = kFlagSize;
    }
    if (oCol.HasPicture(iRow)) {
        const GridSize picture = m_measuring.pictureSize(*oCol.Picture(iRow));
        size = {std::max(size.cx, picture.cx), std::max(size.cy, picture.cy)};
    }
    return size;
}

// Heights and offsets from the first changed row on, up to where they are what they were.
void GridGeometry::placeRows(MeasuredCells::Rows changed) {
    if (m_placedRowHeight != m_iRowHeight || m_placedCols != Cols()) changed = {1, Rows()};
    m_placedRowHeight = m_iRowHeight;
    m_placedCols = Cols();
    if (changed.first > changed.last || changed.first > Rows()) return;

    clsCtlUniGrid_Column& first = columnAt(1);
    std::int64_t offset = 0;
    const auto behind = [&](std::int32_t i) {  // row 1 is told its whole height, later rows less 1
        return std::int64_t{first.OffsetRow(i)} + first.CellHeight(i) - (i == 1 ? 0 : 1);
    };
    if (changed.first > 1) offset = behind(changed.first - 1);
    for (std::int32_t i = changed.first; i <= Rows(); ++i) {
        if (i > changed.last && first.OffsetRow(i) == held(offset)) break;
        std::int32_t height = m_iRowHeight;
        for (std::int32_t c = 1; c <= Cols(); ++c) {
            height = std::max(height, rowHeightFor(columnAt(c).TextHeight(i), m_iRowHeight));
        }
        for (std::int32_t c = 1; c <= Cols(); ++c) {
            columnAt(c).OffsetRow(i, held(offset));
            columnAt(c).CellHeight(i, height);
        }
        offset = behind(i);
    }
}

void GridGeometry::MinRowHeight(std::int32_t i) {
    if (i < 0 || i >= 15000) return;
    m_iMinRowHeight = i;
    draw(true, false);
}

// --- Rows

std::int32_t GridGeometry::GetRowY(std::int32_t iRow) const {
    if (!AllowMultiLineText()) return held(std::int64_t{iRow} * (m_iRowHeight - 1) + kFrame);
    if (iRow < 1) return kFrame;
    return held(std::int64_t{columnAt(1).OffsetRow(iRow)} + m_iRowHeight + kFrame);
}

std::int32_t GridGeometry::rowAt(std::int64_t y, std::int32_t scrolled) const {
    if (m_iRowHeight < 2) return -1;
    const std::int64_t row = AllowMultiLineText()
                                 ? pvGetRowByOffset(y + scrolled - kFrame - m_iRowHeight)
                                 : y / (m_iRowHeight - 1) + scrolled;
    return row < 0 || row > Rows() ? -1 : static_cast<std::int32_t>(row);
}

std::int32_t GridGeometry::GetRowByY(std::int32_t y) const { return rowAt(y, VScroll_Value()); }
std::int32_t GridGeometry::GetRowByAbsY(std::int32_t y) const { return rowAt(y, 0); }

// Offsets grow with the rows, so the walk over them can be halved.
std::int32_t GridGeometry::pvGetRowByOffset(std::int64_t y) const {
    if (Cols() == 0) return -1;
    const clsCtlUniGrid_Column& first = columnAt(1);
    std::int32_t above = 0, behind = Rows() + 1;
    while (behind - above > 1) {
        const std::int32_t middle = above + (behind - above) / 2;
        (first.OffsetRow(middle) > y ? behind : above) = middle;
    }
    return above;
}

std::int64_t GridGeometry::scrollOffset() const {
    const std::int64_t value = VScroll_Value();
    return AllowMultiLineText() ? value : value * (m_iRowHeight - 1);
}

bool GridGeometry::IsRowCompletelyVisible(std::int32_t r) const {
    const std::int64_t top = GetRowY(r) - scrollOffset();
    const std::int64_t bottom = top + CellHeight(r, 1);
    return bottom <= ViewPortHeight() && top >= m_iRowHeight;
}

std::int16_t GridGeometry::GetVisibleRows() const {
    if (AllowMultiLineText()) return -1;
    if (m_iRowHeight < 2) return 0;
    return static_cast<std::int16_t>(std::clamp(ViewPortHeight() / (m_iRowHeight - 1), 0, 32767));
}

// --- Columns

std::int32_t GridGeometry::GetColX(std::int32_t iCol) const {
    std::int64_t x = kFrame;
    for (std::int32_t c = 1; c < iCol && c <= Cols(); ++c) x += stepOf(columnAt(c));
    return held(x);
}

std::int32_t GridGeometry::GetColByX(std::int32_t x) const {
    const std::int64_t a = std::int64_t{x} + HScroll_Value();
    std::int64_t left = 0;
    for (std::int32_t c = 1; c <= Cols(); ++c) {
        const std::int64_t right = left + stepOf(columnAt(c));
        if (a >= left && a < right) return c;
        left = right;
    }
    return -1;
}

// --- Cells

GridRect GridGeometry::GetCellRect(std::int32_t iRow, std::int32_t iCol) const {
    const std::int64_t x = std::int64_t{GetColX(iCol)} - HScroll_Value();
    const std::int64_t y = GetRowY(iRow) - scrollOffset();
    return {held(x), held(y), held(x + ColWidth(iCol)), held(y + CellHeight(iRow, iCol) - 1)};
}

GridRect GridGeometry::GetCellAbsRect(std::int32_t iRow, std::int32_t iCol) const {
    const std::int64_t x = GetColX(iCol), y = GetRowY(iRow);
    return {held(x), held(y), held(x + ColWidth(iCol)), held(y + CellHeight(iRow, iCol))};
}

std::int32_t GridGeometry::CellHeight(std::int32_t iRow, const GridValue& vColKey) const {
    return AllowMultiLineText() && iRow >= 1 ? column(vColKey).CellHeight(iRow) : m_iRowHeight;
}

std::int32_t GridGeometry::CurrCellHeight(const GridValue& vColKey) const {
    return AllowMultiLineText() ? column(vColKey).CellHeight(m_iRow) : m_iRowHeight;
}

// --- Scrolling

std::int32_t GridGeometry::ViewPortHeight() const {
    return m_measuring.surfaceSize().cy - (m_horizontalShown ? HScroll1.thickness() : 0);
}

void GridGeometry::setMax(GridScrollBar& bar, std::int16_t& iScale, std::int32_t& max,
                          std::int32_t l, bool reachable) {
    max = std::max(l, 0);
    iScale = static_cast<std::int16_t>(std::min<std::int64_t>(halfEven(max / 30000.0 + 1), 32767));
    std::int64_t number = halfEven(static_cast<double>(max) / iScale);
    if (reachable && number * iScale < max) ++number;
    bar.Max(static_cast<std::int32_t>(std::min<std::int64_t>(number, 32767)));
}

// The maximum is the end of the bar, wherever rounding would put it.
void GridGeometry::setValue(GridScrollBar& bar, std::int16_t iScale, std::int32_t max,
                            std::int32_t l) {
    bar.Value(l >= max ? bar.Max()
                       : static_cast<std::int32_t>(halfEven(static_cast<double>(l) / iScale)));
}

void GridGeometry::moveBy(GridScrollBar& bar, std::int16_t iScale, std::int32_t max,
                          std::int32_t by) {
    const std::int32_t number = bar.Value(), value = read(number, iScale, max);
    const auto wanted = static_cast<std::int32_t>(
        std::clamp<std::int64_t>(std::int64_t{value} + by, 0, read(bar.Max(), iScale, max)));
    setValue(bar, iScale, max, wanted);
    if (wanted != value && bar.Value() == number) bar.Value(number + (by > 0 ? 1 : -1));
}

void GridGeometry::pvUpdateScroll() {
    const std::int32_t width = ViewPortWidth();
    const bool tooWide = width < m_iTotalWidth;
    m_horizontalShown = tooWide;
    setMax(HScroll1, m_iHScale, m_horizontalMax, tooWide ? m_iTotalWidth - width : 0, true);
    HScroll1.Visible(tooWide);

    const std::int32_t rows = Rows(), height = ViewPortHeight();
    if (AllowMultiLineText()) {
        std::int64_t content = 0;
        if (rows > 0) content = std::int64_t{columnAt(1).OffsetRow(rows)} + CellHeight(rows, 1);
        setMax(VScroll1, m_iVScale, m_verticalMax,
               content > height ? held(m_iRowHeight + content - height) : 0, true);
        VScroll1.Changes(25, 100);
    } else {
        std::int32_t visible = GetVisibleRows();
        if (visible > 0) --visible;
        setMax(VScroll1, m_iVScale, m_verticalMax,
               rows > 0 && visible < rows ? rows - visible + 1 : 0, true);
        VScroll1.Changes(1, 5);
    }
}

void GridGeometry::FocusSelectedRow(bool bDoRefresh, bool bRefreshNow) {
    struct Running {
        explicit Running(bool& running) : flag(running), before(running) { flag = true; }
        ~Running() { flag = before; }
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;
        bool& flag;
        bool before;
    } const running(m_bFocusing);

    if (m_iRow < 1 || m_iRow > Rows()) return;
    if (!IsRowCompletelyVisible(m_iRow)) {
        std::int64_t value = 0;
        if (AllowMultiLineText()) {
            value = halfEven(columnAt(1).OffsetRow(m_iRow) - ViewPortHeight() / 2.0 + m_iRowHeight);
        } else {
            const std::int32_t visible = GetVisibleRows();
            value = std::int64_t{m_iRow} - visible + visible / 2;
        }
        value = std::max<std::int64_t>(std::min<std::int64_t>(value, VScroll_Max()), 0);
        if (value != VScroll_Value()) VScroll_Value(static_cast<std::int32_t>(value));
    }
    if (bDoRefresh) draw(false, bRefreshNow);
}

// --- Drawing

void GridGeometry::DrawControl(bool bCheckSize, bool bRefreshNow) {
    if (m_iUpdateLock > 0 || m_bDrawing) return;
    m_bDrawing = true;
    const auto done = [this](auto step) {
        try {
            step();
        } catch (...) {
            stepFailed();
        }
    };
    if (m_iRowHeight < 1 || m_iTotalWidth < 1 || bCheckSize) done([this] { pvMeasureGrid(); });
    done([this] { pvUpdateScroll(); });
    done([this, bRefreshNow] { paint(bRefreshNow); });
    m_bDrawing = false;
}

GridGeometry::Parts GridGeometry::partsOf(GridSize control, std::int32_t iHBarHeight,
                                          std::int32_t iVBarWidth) {
    const auto placed = [](std::int32_t x, std::int32_t y, std::int32_t cx, std::int32_t cy) {
        return GridRect{x, y, x + std::max(cx, 0), y + std::max(cy, 0)};
    };
    const std::int32_t barX = control.cx - iVBarWidth - 2;
    return {placed(2, 2, barX - 3, control.cy - 4),
            placed(2, control.cy - iHBarHeight - 2, control.cx - iVBarWidth - 5, iHBarHeight),
            placed(barX, 2, iVBarWidth, control.cy - 4)};
}
