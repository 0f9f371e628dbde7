// grid/store/GridGeometry.h: sizes and places in the grid, and its scroll bars, without a window.
//
// All sizes are pixels. Surface coordinates start at the top left of the surface that rows and
// header are drawn on. Absolute coordinates are those of the whole content as if it were not
// scrolled, with the frame of two pixels in them. The header counts as row 0. Neighbouring cells
// share their border line, so rows are RowHeight less 1 apart, and a column takes up its width less
// 1 (nothing when the width is 0).
//
// In single-line mode all rows have one height; in multi-line mode each has its own, and its place
// is kept with the cells. Results have a use once the grid has been measured.
#pragma once
#include "grid/store/GridData.h"

struct GridSize {
    std::int32_t cx = 0, cy = 0;
    friend bool operator==(const GridSize&, const GridSize&) = default;
};
struct GridRect {
    std::int32_t X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
    friend bool operator==(const GridRect&, const GridRect&) = default;
};

// A scroll bar with the 16-bit numbers of its host. It holds its value between 0 and Max.
class GridScrollBar {
public:
    GridScrollBar() = default;
    virtual ~GridScrollBar() = default;
    GridScrollBar(const GridScrollBar&) = delete;
    GridScrollBar& operator=(const GridScrollBar&) = delete;

    [[nodiscard]] virtual std::int32_t Max() const = 0;
    virtual void Max(std::int32_t l) = 0;
    [[nodiscard]] virtual std::int32_t Value() const = 0;
    virtual void Value(std::int32_t l) = 0;  // a change is notified before it returns
    virtual void Changes(std::int32_t lSmall, std::int32_t lLarge) = 0;
    virtual void Visible(bool b) = 0;
    [[nodiscard]] virtual std::int32_t thickness() const = 0;  // height of a horizontal one
};

// What the geometry asks of the surface that it lays out. Texts are measured in the grid's font,
// with "&" as a plain character.
class GridMeasuring {
public:
    GridMeasuring() = default;
    virtual ~GridMeasuring() = default;
    GridMeasuring(const GridMeasuring&) = delete;
    GridMeasuring& operator=(const GridMeasuring&) = delete;

    [[nodiscard]] virtual GridSize textSize(TextView s) = 0;  // as one line
    // Broken at its line ends and at words in that width; without one in that of its longest line.
    [[nodiscard]] virtual GridSize textSizeWrapped(TextView s,
                                                   std::optional<std::int32_t> iWidth) = 0;
    [[nodiscard]] virtual GridSize pictureSize(const GridPicture& oPic) = 0;
    [[nodiscard]] virtual GridSize surfaceSize() = 0;
};

class GridGeometry : public GridData {
public:
    static constexpr GridSize kFlagSize{7, 7};          // the mark of a true flag cell
    static constexpr GridSize kArrowSize{9, 4};         // the arrows of sorted headers
    static constexpr std::int32_t kMeasuredRows = 749;  // that widen a column in single-line mode

    // All three must outlive the grid.
    GridGeometry(GridMeasuring& measuring, GridScrollBar& hScroll, GridScrollBar& vScroll)
        : m_measuring(measuring), HScroll1(hScroll), VScroll1(vScroll) {}

    // --- Rows

    [[nodiscard]] std::int32_t GetRowY(std::int32_t iRow) const;  // absolute y of its top
    // The row at y; 0 for the header when nothing is scrolled, -1 outside of header and rows, and
    // before the first measuring.
    [[nodiscard]] std::int32_t GetRowByY(std::int32_t y) const;
    [[nodiscard]] std::int32_t GetRowByAbsY(std::int32_t y) const;
    [[nodiscard]] bool IsRowCompletelyVisible(std::int32_t r) const;
    // Rows that fit, the header counted as one; -1 in multi-line mode, 0 before the first
    // measuring.
    [[nodiscard]] std::int16_t GetVisibleRows() const;
    [[nodiscard]] bool IsHeaderCoord(float y) const { return y < static_cast<float>(m_iRowHeight); }
    [[nodiscard]] std::int32_t RowHeight() const { return m_iRowHeight; }  // and of the header

    // The least height of a row. A value below 0 or from 15000 up is ignored. Measures.
    [[nodiscard]] std::int16_t MinRowHeight() const {
        return static_cast<std::int16_t>(m_iMinRowHeight);
    }
    void MinRowHeight(std::int32_t i);

    // --- Columns

    // Absolute x of the left edge; behind the last column for larger numbers.
    [[nodiscard]] std::int32_t GetColX(std::int32_t iCol) const;
    // The column at x, -1 outside. Their walk starts at 0 where GetColX starts at 2.
    [[nodiscard]] std::int32_t GetColByX(std::int32_t x) const;
    [[nodiscard]] std::int32_t GetColByAbsX(std::int32_t x) const {
        return GetColByX(x - HScroll_Value());
    }
    [[nodiscard]] std::int32_t TotalWidth() const { return m_iTotalWidth; }

    // --- Cells. What looks at a column raises for an unknown one, in multi-line mode also for an
    // unknown row; rows below 1 count as the header.

    [[nodiscard]] GridRect GetCellRect(std::int32_t iRow, std::int32_t iCol) const;
    [[nodiscard]] GridRect GetCellAbsRect(std::int32_t iRow, std::int32_t iCol) const;
    // Of the cell at a place of the surface.
    [[nodiscard]] GridRect GetCellRectByCoords(std::int32_t x, std::int32_t y) const {
        return GetCellRect(GetRowByY(y), GetColByX(x));
    }
    [[nodiscard]] std::int32_t CellHeight(std::int32_t iRow, const GridValue& vColKey) const;
    // Of the current row; raises 9 in multi-line mode without one.
    [[nodiscard]] std::int32_t CurrCellHeight(const GridValue& vColKey) const;

    // --- View and scrolling. In pixels; vertically in rows in single-line mode.

    [[nodiscard]] std::int32_t ViewPortWidth() const { return m_measuring.surfaceSize().cx; }
    [[nodiscard]] std::int32_t ViewPortHeight() const;

    // The bars have 16 bits, so larger numbers are scaled, and what is read is the bar's number
    // times the scale; but never more than the maximum that was set, or the last page would be
    // empty.
    [[nodiscard]] std::int32_t VScroll_Max() const {
        return read(VScroll1.Max(), m_iVScale, m_verticalMax);
    }
    void VScroll_Max(std::int32_t l) { setMax(VScroll1, m_iVScale, m_verticalMax, l); }
    [[nodiscard]] std::int32_t VScroll_Value() const {
        return read(VScroll1.Value(), m_iVScale, m_verticalMax);
    }
    void VScroll_Value(std::int32_t l) { setValue(VScroll1, m_iVScale, m_verticalMax, l); }
    [[nodiscard]] std::int32_t HScroll_Max() const {
        return read(HScroll1.Max(), m_iHScale, m_horizontalMax);
    }
    void HScroll_Max(std::int32_t l) { setMax(HScroll1, m_iHScale, m_horizontalMax, l); }
    [[nodiscard]] std::int32_t HScroll_Value() const {
        return read(HScroll1.Value(), m_iHScale, m_horizontalMax);
    }
    void HScroll_Value(std::int32_t l) { setValue(HScroll1, m_iHScale, m_horizontalMax, l); }

    // When the current row is not completely visible, scrolls so that it stands in the middle; then
    // DrawControl(false, bRefreshNow) with bDoRefresh. Nothing at all without a current row.
    void FocusSelectedRow(bool bDoRefresh = true, bool bRefreshNow = true) override;

    // Where the parts of a control of that size are. Sides never come out below 0.
    struct Parts {
        GridRect pic, hScroll, vScroll;
    };
    [[nodiscard]] static Parts partsOf(GridSize control, std::int32_t iHBarHeight,
                                       std::int32_t iVBarWidth);

protected:
    // Measures when asked to or never done, updates the bars, and draws. A call from inside of
    // itself does nothing. A step that fails is left out, and the next one follows.
    void DrawControl(bool bCheckSize, bool bRefreshNow) override;
    virtual void paint(bool bRefreshNow) = 0;
    virtual void stepFailed() {}  // called while the failure is being handled; must raise nothing

    void pvMeasureGrid();
    void pvUpdateScroll();
    // The last row whose top is not below y, counted from the top of row 1; 0 above row 1, -1
    // without columns.
    [[nodiscard]] std::int32_t pvGetRowByOffset(std::int64_t y) const;
    // Moves by pixels or rows; by a step of the bar at least, where its scale is larger than that.
    void scrollRows(std::int32_t by) { moveBy(VScroll1, m_iVScale, m_verticalMax, by); }
    void scrollColumns(std::int32_t by) { moveBy(HScroll1, m_iHScale, m_horizontalMax, by); }
    // How far x advances over a column.
    [[nodiscard]] static std::int32_t stepOf(const clsCtlUniGrid_Column& column) {
        return std::max(column.iCurrentWidth - 1, 0);
    }
    // Another font: nothing that was measured holds any more.
    void forgetMeasuredTexts() { ++m_fontGeneration; }

    bool m_bFocusing = false;  // FocusSelectedRow is running: the bar's change draws nothing
    bool m_bDrawing = false;

private:
    // Numbers of 32 bits on a bar of 16; max is the maximum as it was set.
    [[nodiscard]] static std::int32_t read(std::int32_t number, std::int16_t iScale,
                                           std::int32_t max) {
        return static_cast<std::int32_t>(
            std::min<std::int64_t>(std::int64_t{number} * iScale, max));
    }
    // reachable: the largest value can be reached, whatever rounding makes of it.
    static void setMax(GridScrollBar& bar, std::int16_t& iScale, std::int32_t& max, std::int32_t l,
                       bool reachable = false);
    static void setValue(GridScrollBar& bar, std::int16_t iScale, std::int32_t max, std::int32_t l);
    static void moveBy(GridScrollBar& bar, std::int16_t iScale, std::int32_t max, std::int32_t by);
    // The row at y with the bar at that value; -1 outside of header and rows.
    [[nodiscard]] std::int32_t rowAt(std::int64_t y, std::int32_t scrolled) const;
    // How much higher the content stands than in absolute coordinates.
    [[nodiscard]] std::int64_t scrollOffset() const;
    GridSize pvMeasureCell(std::int32_t iRow, const clsCtlUniGrid_Column& oCol,
                           std::optional<std::int32_t> iFixedWidth);
    void measureSingleLine(clsCtlUniGrid_Column& oCol);
    MeasuredCells::Rows measureMultiLine(clsCtlUniGrid_Column& oCol);
    void placeRows(MeasuredCells::Rows changed);
    [[nodiscard]] std::int32_t headerWidth(const clsCtlUniGrid_Column& oCol) const;

    GridMeasuring& m_measuring;

protected:
    GridScrollBar& HScroll1;
    GridScrollBar& VScroll1;

    std::int16_t m_iRowHeight = 0;
    std::int32_t m_iTotalWidth = 0;
    std::int32_t m_iMinRowHeight = 0;

private:
    std::int16_t m_iVScale = 1, m_iHScale = 1;
    std::int32_t m_verticalMax = 0, m_horizontalMax = 0;
    bool m_horizontalShown = false;
    std::uint32_t m_fontGeneration = 0;
    // What row offsets were last worked out for.
    std::int32_t m_placedRowHeight = 0, m_placedCols = 0;
    Text m_spareText;
};
