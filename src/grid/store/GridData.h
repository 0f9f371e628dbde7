// grid/store/GridData.h: the grid without its window: columns, rows, current row, selection, sort.
//
// Rows and columns count from 1; -1 stands for none. Where a column argument is a vKey, it takes
// the column's key text (case ignored) or its position as a number. A lookup that fails raises 5
// for an unknown key, 13 for what is neither and 9 "Subscript out of range" for a position. A row
// outside the column's array raises 9 as well.
//
// The drawn grid derives from this class and overrides DrawControl and FocusSelectedRow; nothing
// here knows of pixels.
#pragma once
#include "grid/store/clsCtlUniGrid_Column.h"

#include <functional>
#include <optional>
#include <span>

// The arguments of AddColumn.
struct NewColumn {
    Text sText = {};           // header caption
    std::int32_t iWidth = -1;  // pixels; -1: the column sizes itself
    std::int32_t iAlign = 0;   // 0 left, 1 right, 2 centre
    GridValue vKey = Text();   // empty: reached by position only
    bool bResizable = true;
    std::int32_t iHeaderAlign = 2;
    bool bSortable = false;
    bool bSortWithCustomEvent = false;
    bool bRightToLeft = false;
    std::int32_t iType = 0;  // 0 text, 1 number, 2 flag
    bool bAllowEmptyNumbers = true;
};

// The arguments of SetColFormat; see FormatNumber.h.
struct ColumnFormat {
    Text sNumDecSep = {};
    Text sNumValSep = {};
    std::int16_t iNumFixInt = -1;
    std::int16_t iNumFixDec = -1;
    bool bNumSign = false;
    bool bNumAutoDecSep = true;
    bool bNumAutoValSep = false;
};

class GridData {
public:
    GridData() = default;
    virtual ~GridData() = default;
    GridData(const GridData&) = delete;
    GridData& operator=(const GridData&) = delete;

    // Events, raised to the owner when set. The owner may call back into the grid, but must not
    // put another function in place of one that is running.
    std::function<void()> SelectionChange;  // the current row was set or moved, or set to the same
    // The owner sets bRetFirstIsMajor to whether row iRow1 orders after row iRow2, in ascending
    // order; bSortAscending is for information. It arrives true.
    std::function<void(const GridValue& vColKey, std::int32_t iRow1, std::int32_t iRow2,
                       bool bSortAscending, bool& bRetFirstIsMajor)>
        SortCompareRows;

    // --- Columns. "Measures" is DrawControl(true, false), "redraws" DrawControl(false, false).

    // Appends a column, with a row for each row of the grid; measures. Raises 457 for a key in use
    // and 13 for a key that is no text; the grid is then as before.
    void AddColumn(const NewColumn& column);
    // Removes that column, or the last one; nothing when there are no columns; then measures.
    void RemoveColumn(const std::optional<GridValue>& vColKey = std::nullopt);
    [[nodiscard]] std::int16_t Cols() const { return static_cast<std::int16_t>(m_oColumns.size()); }
    [[nodiscard]] bool ColExists(const GridValue& vKey) const;  // raises nothing

    // Pixels: the fixed width, or the width in use of a column that sizes itself. Set measures.
    [[nodiscard]] std::int32_t ColWidth(const GridValue& vKey) const;
    void ColWidth(const GridValue& vKey, std::int32_t iWidth);
    [[nodiscard]] std::int32_t ColAlign(const GridValue& vKey) const;
    void ColAlign(const GridValue& vKey, std::int32_t iAlign);  // redraws
    [[nodiscard]] std::int32_t ColHeaderAlign(const GridValue& vKey) const;
    void ColHeaderAlign(const GridValue& vKey, std::int32_t iAlign);  // redraws
    [[nodiscard]] bool ColResizable(const GridValue& vKey) const;
    void ColResizable(const GridValue& vKey, bool bResizable);  // measures
    [[nodiscard]] bool ColRightToLeft(const GridValue& vKey) const;
    void ColRightToLeft(const GridValue& vKey, bool bRightToLeft);  // redraws
    [[nodiscard]] const Text& ColText(const GridValue& vKey) const;
    void ColText(const GridValue& vKey, Text sText);  // measures
    [[nodiscard]] bool ColSortable(const GridValue& vKey) const;
    void ColSortable(const GridValue& vKey, bool bSortable);
    [[nodiscard]] bool ColSortWithCustomEvent(const GridValue& vKey) const;
    void ColSortWithCustomEvent(const GridValue& vKey, bool bSortWithCustomEvent);
    [[nodiscard]] bool ColAllowEmptyNumbers(const GridValue& vKey) const;
    void ColAllowEmptyNumbers(const GridValue& vKey, bool bAllowEmptyNumbers);
    [[nodiscard]] std::int32_t ColType(const GridValue& vKey) const;
    [[nodiscard]] const GridValue& ColKey(const GridValue& iCol) const;
    void SetColFormat(const GridValue& vKey, const ColumnFormat& format);  // measures

    // --- Rows.

    // Appends a row: sRowText is split at tabs, field i goes to column i, columns without a field
    // get their default, fields beyond the last column are dropped. An empty text gives no fields.
    // With bSelect the new row becomes current, and SelectionChange follows. Measures. Raises
    // "Please add some columns first!", and the failure of a conversion; no row is then added.
    void AddRow(TextView sRowText = {}, bool bSelect = false);
    // The same for a text that is split already: as AddRow of the fields joined by tabs, provided
    // that no field holds a tab (the caller's promise).
    void AddRow(std::span<const TextView> fields, bool bSelect = false);
    // Removes a row; -1 is the last one, and then Row stays, even past the end. Otherwise, when the
    // row was current, the row behind it (or the new last one) becomes current, with
    // SelectionChange. DrawControl(bCheckSize, false). Raises "Please add some columns first!" and
    // "Wrong Row".
    void RemoveRow(std::int32_t iRow = -1, bool bCheckSize = true);
    [[nodiscard]] std::int32_t Rows() const {
        return m_oColumns.empty() ? 0 : m_oColumns.front()->Rows();
    }
    void Rows(std::int32_t l);  // removes from the end, or appends default rows; raises as those
    // A hint that about this many rows will come: takes address space, touches no memory.
    void reserveRows(std::int32_t count);
    // The texts of a file that rows are about to come from: fields that lie in it are not copied,
    // the grid keeps it instead, until Clear. It must not change any more.
    void lendText(const std::shared_ptr<const Text>& text);

    [[nodiscard]] std::int32_t Row() const { return m_iRow; }
    void Row(std::int32_t l);  // outside 1 to Rows: -1. Raises SelectionChange in any case
    // Header and all, or only the rows; Row and the last sort are forgotten. Measures, then
    // SelectionChange.
    void Clear(bool bClearHeader = true);

    // --- Cells.

    // The text of a cell of a text column, without a copy. The view is good until a text of the
    // same column is set, a row or the column is removed, or the grid is cleared or dies; AddRow
    // and sorting leave it alone. Raises 13 for a cell whose value is no text.
    [[nodiscard]] TextView CellText(std::int32_t iRow, std::int32_t iCol) const {
        return columnAt(iCol).CellText(iRow);
    }
    // As CellValue with that text. It may be a view that CellText gave. Measures.
    void CellText(std::int32_t iRow, std::int32_t iCol, TextView sText);

    [[nodiscard]] GridValue CellValue(std::int32_t iRow, const GridValue& vColKey) const;
    void CellValue(std::int32_t iRow, const GridValue& vColKey, const GridValue& vValue);
    [[nodiscard]] GridValue CellTag(std::int32_t iRow, const GridValue& vColKey) const;
    void CellTag(std::int32_t iRow, const GridValue& vColKey, GridValue vTag);  // draws nothing
    // Colours: -1 for none. Set measures.
    [[nodiscard]] std::int32_t CellBackColor(std::int32_t iRow, const GridValue& vColKey) const;
    void CellBackColor(std::int32_t iRow, const GridValue& vColKey, std::int32_t lColor);
    [[nodiscard]] std::int32_t CellForeColor(std::int32_t iRow, const GridValue& vColKey) const;
    void CellForeColor(std::int32_t iRow, const GridValue& vColKey, std::int32_t lColor);
    // Stores oPic (none clears it) and those of the other fields that are given. Measures.
    void SetCellPicture(std::int32_t iRow, const GridValue& vColKey,
                        std::shared_ptr<GridPicture> oPic = {}, const PictureOptions& options = {});
    [[nodiscard]] CellPicture GetCellPicture(std::int32_t iRow, const GridValue& vColKey) const;

    // The same for row Row; with no current row they raise 9.
    [[nodiscard]] GridValue CurrCellValue(const GridValue& vColKey) const;
    void CurrCellValue(const GridValue& vColKey, const GridValue& vValue);
    [[nodiscard]] GridValue CurrCellTag(const GridValue& vColKey) const;
    void CurrCellTag(const GridValue& vColKey, GridValue vTag);
    [[nodiscard]] std::int32_t CurrCellBackColor(const GridValue& vColKey) const;
    void CurrCellBackColor(const GridValue& vColKey, std::int32_t lColor);
    [[nodiscard]] std::int32_t CurrCellForeColor(const GridValue& vColKey) const;
    void CurrCellForeColor(const GridValue& vColKey, std::int32_t lColor);
    void SetCurrCellPicture(const GridValue& vColKey, std::shared_ptr<GridPicture> oPic = {},
                            const PictureOptions& options = {});
    [[nodiscard]] CellPicture GetCurrCellPicture(const GridValue& vColKey) const;

    // --- Selection. The flags live in the first column and stay when MultiSelect goes off.

    [[nodiscard]] bool MultiSelect() const { return m_bMultiSelect; }
    void MultiSelect(bool b) { m_bMultiSelect = b; }
    // With MultiSelect the row's flag, else whether it is the current row. Raises "Please add some
    // columns first!" and "Wrong Row"; -1 passes that check and raises 9 where a flag is touched.
    [[nodiscard]] bool RowSel(std::int32_t iRow) const;
    void RowSel(std::int32_t iRow, bool b);            // stores the flag; redraws
    [[nodiscard]] std::int32_t CountSelected() const;  // rows for which RowSel is true
    void SelectAll(bool b, bool bRefresh = true);
    // Sets the flags of the rows between i1 and i2, in either order; redraws with bRefresh. Raises
    // "Please add some columns first!", and 9 when the range leaves the array, before any change.
    void SelectRange(std::int32_t i1, std::int32_t i2, bool b, bool bRefresh = true);

    // --- Updating. Nothing is drawn or measured while the lock is above 0.

    void BeginUpdate() { ++m_iUpdateLock; }
    void EndUpdate(bool bCheckSize = true, bool bRefreshNow = false);
    void NoUpdate();  // EndUpdate without drawing
    void Refresh(bool bRefreshNow = false) { draw(true, bRefreshNow); }
    [[nodiscard]] bool AllowMultiLineText() const { return m_bAllowMultiLineText; }
    void AllowMultiLineText(bool b);  // refreshes

    // --- Sorting.

    // Sorts the rows by a column: by its values, or by SortCompareRows when the column says so.
    // Cell records move whole; Row stays the number it is. Nothing at all happens with fewer than 2
    // rows. Raises nothing: a failure, also that of an owner that raises or adds or removes rows
    // while it is asked, leaves the rows as far as they got.
    void SortByColum(const GridValue& vKey, bool bSortAsc);

    // The column itself, for readers of fields that have no member here.
    [[nodiscard]] clsCtlUniGrid_Column& column(const GridValue& vKey);
    [[nodiscard]] const clsCtlUniGrid_Column& column(const GridValue& vKey) const;
    [[nodiscard]] clsCtlUniGrid_Column& columnAt(std::int32_t iCol) {
        return *m_oColumns[columnIndex(iCol)];
    }
    [[nodiscard]] const clsCtlUniGrid_Column& columnAt(std::int32_t iCol) const {
        return *m_oColumns[columnIndex(iCol)];
    }

protected:
    // What a window does after a change: measure when bCheckSize, draw, at once when bRefreshNow.
    // Never called while the update lock is held.
    virtual void DrawControl(bool bCheckSize, bool bRefreshNow);
    // Scrolls the current row into view, then draws when bDoRefresh.
    virtual void FocusSelectedRow(bool bDoRefresh, bool bRefreshNow);

    void draw(bool bCheckSize, bool bRefreshNow) {  // DrawControl, unless locked
        if (m_iUpdateLock == 0) DrawControl(bCheckSize, bRefreshNow);
    }
    void raiseSelectionChange() const {
        if (SelectionChange) SelectionChange();
    }

    std::int32_t m_iRow = -1;
    std::int32_t m_iSelAnchor = -1;
    std::int32_t m_iUpdateLock = 0;
    bool m_bMultiSelect = false;
    bool m_bAllowMultiLineText = false;
    GridValue m_vSortCol;     // column of the last sort, as it was given
    bool m_bSortAsc = false;  // its direction

private:
    [[nodiscard]] std::size_t columnIndex(std::int32_t iCol) const {
        const auto index = static_cast<std::size_t>(static_cast<std::uint32_t>(iCol) - 1);
        if (index >= m_oColumns.size()) raiseNoSuchColumn();
        return index;
    }
    [[noreturn]] static void raiseNoSuchColumn();
    [[nodiscard]] std::optional<std::size_t> findKey(TextView sKey) const;
    [[nodiscard]] std::size_t lookUp(const GridValue& vKey) const;
    void requireColumns(TextView source) const;
    void requireRow(std::int32_t iRow) const;
    void addFields(std::span<const TextView> fields);
    void finishAddRow(bool bSelect);

    void pvSortValues(const GridValue& vKey, bool bSortAsc);
    void pvSortCustom(const GridValue& vKey, bool bSortAsc);
    void pvQuickSortCustom(std::int32_t lo, std::int32_t hi, const GridValue& vKey, bool bSortAsc);
    void pvSwapRows(std::int32_t iRow1, std::int32_t iRow2);

    std::vector<std::unique_ptr<clsCtlUniGrid_Column>> m_oColumns;  // in grid order
    std::vector<Text> m_aKeys;        // lower case, one for each column; empty for none
    std::vector<TextView> m_aFields;  // of the row text that AddRow is splitting
};
