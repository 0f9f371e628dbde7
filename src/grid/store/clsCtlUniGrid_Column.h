// grid/store/clsCtlUniGrid_Column.h: one column of the grid, with its header and its cells.
//
// A column runs on its own. Rows count from 1. As the grid promises equal row counts in all its
// columns, every change of the row structure is made to each of them in turn.
//
// A cell is 16 bytes, its text lies in the column's arena, and what few cells have (a picture, a
// tag, a text colour) or what one mode needs (heights) is kept apart and costs nothing until used.
//
// Accessors take any row of the array, whose capacity grows in the steps 1, 26, 51, 76, ...; a row
// outside it raises 9 "Subscript out of range". Rows above Rows() are such that were removed, or
// fresh ones; what they hold is overwritten by AddRow.
#pragma once
#include "grid/store/CellTexts.h"
#include "grid/store/GridCell.h"
#include "grid/store/MeasuredCells.h"

#include <cstdlib>
#include <optional>
#include <span>

// The optional arguments of SetPicture: each is stored only when it is given.
struct PictureOptions {
    std::optional<bool> bPicTransparent = {};
    std::optional<bool> bPicGrayed = {};
    std::optional<std::int32_t> lPicXTransp = {};
    std::optional<std::int32_t> lPicYTransp = {};
    std::optional<std::int32_t> lPicTranspColor = {};
};

class clsCtlUniGrid_Column {
public:
    Text sText;                      // header caption
    std::int32_t iMaxWidth = -1;     // fixed width in pixels; -1: the column sizes itself
    std::int32_t iCurrentWidth = 0;  // width in use, set by measuring
    std::int32_t iAlign = 0;         // cell text: 0 left, 1 right, 2 centre
    bool bResizable = true;          // the user may drag the right edge
    std::int32_t iHeaderAlign = 2;   // header text, codes as iAlign
    GridValue vKey = Text();         // the key given at AddColumn
    bool bSortable = false;          // a header click sorts by this column
    bool bRightToLeft = false;       // draw with right-to-left reading order
    std::int32_t iType = 0;          // 0 text, 1 number, 2 flag (boolean shown as a picture)
    bool bSortWithCustomEvent = false;
    bool bAllowEmptyNumbers = true;  // a number cell may hold the empty text
    Text sNumDecSep;                 // number format, see FormatNumber.h
    Text sNumValSep;
    std::int16_t iNumFixInt = -1;  // minimum integer digits; -1: none
    std::int16_t iNumFixDec = -1;  // exact decimal digits; -1: as they are
    bool bNumSign = false;         // always show a sign
    bool bNumAutoDecSep = true;
    bool bNumAutoValSep = false;

    clsCtlUniGrid_Column() = default;
    clsCtlUniGrid_Column(const clsCtlUniGrid_Column&) = delete;
    clsCtlUniGrid_Column& operator=(const clsCtlUniGrid_Column&) = delete;

    [[nodiscard]] std::int32_t Rows() const { return m_iRows; }
    [[nodiscard]] std::int32_t capacity() const { return m_iCapacity; }

    // Appends a row whose other fields are those of a fresh GridCell. By iType: 0 stores the text
    // of vValue or "", 1 its double or the integer 0, 2 its boolean or false, any other type leaves
    // Value empty. Raises the failure of the conversion; no row is then added.
    void AddRow();
    void AddRow(const GridValue& vValue);
    void AddRow(const std::convertible_to<TextView> auto& sValue) {
        if (iType == 0) {
            addText(sValue);
        } else {
            AddRow(GridValue(TextView(sValue)));
        }
    }
    // Nothing on an empty column; -1 is the last row. The removed record stays behind the last row
    // until AddRow overwrites it. Raises 9 for a row outside 1 to Rows.
    void RemoveRow(std::int32_t iRow = -1);
    void ClearRows();  // also iCurrentWidth = 0

    [[nodiscard]] GridValue Value(std::int32_t iRow) const;
    // Converts by iType: 0 to text; 1 to a double, but with bAllowEmptyNumbers an empty text stays;
    // 2 to a boolean; any other type stores vValue as it is. Raises the failure of the conversion.
    void Value(std::int32_t iRow, const GridValue& vValue);
    // The text of a cell without a copy, good until a text of this column is set, a row is removed,
    // or the column is cleared or dies. Raises 13 "Type mismatch" when the value is no text.
    [[nodiscard]] TextView CellText(std::int32_t iRow) const {
        const Cell& cell = cellAt(iRow);
        if (typeOf(cell) != GridValueType::kText) raiseNoText();
        return textOf(cell);
    }
    // The value as text, whatever it is: a view as above, or of spare, which then holds it.
    [[nodiscard]] TextView valueText(std::int32_t iRow, Text& spare) const;
    // As Value with that text, which may lie in this column.
    void CellText(std::int32_t iRow, TextView sValue);

    [[nodiscard]] GridValue Tag(std::int32_t iRow) const;
    void Tag(std::int32_t iRow, GridValue vTag);
    [[nodiscard]] std::int32_t BackColor(std::int32_t iRow) const { return cellAt(iRow).backColor; }
    void BackColor(std::int32_t iRow, std::int32_t lColor) { slot(iRow).backColor = lColor; }
    [[nodiscard]] std::int32_t ForeColor(std::int32_t iRow) const;
    void ForeColor(std::int32_t iRow, std::int32_t lColor);
    [[nodiscard]] bool Selected(std::int32_t iRow) const { return cellAt(iRow).selected != 0; }
    void Selected(std::int32_t iRow, bool b) { slot(iRow).selected = b; }
    [[nodiscard]] std::int32_t CellHeight(std::int32_t iRow) const { return heights(iRow).cell; }
    void CellHeight(std::int32_t iRow, std::int32_t l) { heightsSlot(iRow).cell = l; }
    [[nodiscard]] std::int32_t TextHeight(std::int32_t iRow) const { return heights(iRow).text; }
    void TextHeight(std::int32_t iRow, std::int32_t l) { heightsSlot(iRow).text = l; }
    [[nodiscard]] std::int32_t OffsetRow(std::int32_t iRow) const { return heights(iRow).offset; }
    void OffsetRow(std::int32_t iRow, std::int32_t l) { heightsSlot(iRow).offset = l; }

    [[nodiscard]] bool HasPicture(std::int32_t iRow) const;
    [[nodiscard]] std::shared_ptr<GridPicture> Picture(std::int32_t iRow) const;
    [[nodiscard]] CellPicture GetPicture(std::int32_t iRow) const;
    // oPic is always stored (none clears the picture), the options as far as they are given.
    void SetPicture(std::int32_t iRow, std::shared_ptr<GridPicture> oPic,
                    const PictureOptions& options = {});

    // What measuring knows of the cells. Values, pictures and the order of rows keep it true; it is
    // cleared with the rows.
    [[nodiscard]] MeasuredCells& measuredCells() { return m_measured; }

    // The whole record, all fields; set stores Value as it is.
    [[nodiscard]] GridCell record(std::int32_t iRow) const;
    void record(std::int32_t iRow, GridCell cell);

    void SwapRows(std::int32_t iRow1, std::int32_t iRow2);
    // Record i becomes the record that had the number given by entry i of sOrder, a list of row
    // numbers with cSep between them; further entries are not read. Raises, before any change, 13
    // for an entry that is no number and 9 for one outside the array or a list that is too short.
    void z_SetRowsOrder(TextView sOrder, TextView cSep);
    // The same for a list of Rows() numbers that names each row from 1 to Rows() once (a promise).
    void setRowsOrder(std::span<const std::uint32_t> order);

    // A hint: takes address space for that many rows, touches no memory.
    void reserveRows(std::int32_t count);
    // Texts that lie in `text` are from now on shown from there instead of copied; the column keeps
    // text until it is cleared or has copied what is left in use. It must not change any more.
    void lendText(std::shared_ptr<const Text> text) { m_texts.lend(std::move(text)); }
    // Bytes held for rows and texts, and units of text that no cell refers to any more.
    [[nodiscard]] std::size_t memoryHeld() const;

private:
    struct TextPlace {
        std::uint32_t offset, length;
    };
    // Cells are moved as raw memory. What side refers to is owned by the cell that has the number.
    struct Cell {
        union {
            TextPlace text;  // where it lies in m_texts
            double number;   // of an integer, double or boolean (0, 1)
        };
        std::int32_t backColor;
        std::uint32_t type : 3;  // a GridValueType
        std::uint32_t selected : 1;
        std::uint32_t side : 28;  // number of the record in m_sides; 0: all its fields default
    };
    static_assert(sizeof(Cell) == 16 && std::is_trivially_copyable_v<Cell>);

    // Fields that few cells have.
    struct Side {
        std::int32_t foreColor = -1;
        CellPicture picture;
        GridValue tag;
    };
    struct Heights {
        std::int32_t text = 0, cell = 0, offset = 0;
    };
    struct Free {  // the array is grown by realloc
        // NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
        void operator()(Cell* cells) const { std::free(cells); }
    };

    static Cell freshCell(GridValueType type) {
        return {{.text = {0, 0}}, -1, static_cast<std::uint32_t>(type), 0, 0};
    }
    static GridValueType typeOf(const Cell& cell) { return static_cast<GridValueType>(cell.type); }
    static bool hasText(const Cell& cell) {
        return typeOf(cell) == GridValueType::kText && cell.text.length > 0;
    }
    [[noreturn]] static void raiseOutOfRange();
    [[noreturn]] static void raiseNoText();

    [[nodiscard]] TextView textOf(const Cell& cell) const {
        return m_texts.view(cell.text.offset, cell.text.length);
    }
    [[nodiscard]] const Cell& cellAt(std::int32_t iRow) const {
        const auto index = static_cast<std::uint32_t>(iRow) - 1;
        return index < m_written ? m_aRows[index] : cellBehind(iRow);
    }
    [[nodiscard]] Cell& slot(std::int32_t iRow) {
        const auto index = static_cast<std::uint32_t>(iRow) - 1;
        if (index >= m_written) writeFreshUpTo(iRow);
        return m_aRows[index];
    }
    [[nodiscard]] const Cell& cellBehind(std::int32_t iRow) const;
    void writeFreshUpTo(std::int32_t iRow);

    // The record for the next row, already counted in, of that type and with no value yet.
    Cell& pushRow(GridValueType type) {
        const auto index = static_cast<std::uint32_t>(m_iRows);
        if (index == m_written) {
            if (index == m_ready) makeReady();
            ++m_written;
        } else {
            dropSlot(index);
        }
        if (++m_iRows > m_iCapacity) m_iCapacity += kCapacityStep;
        m_aRows[index] = freshCell(type);
        return m_aRows[index];
    }
    void addText(TextView sValue) {
        const std::uint32_t offset = sValue.empty() ? 0 : m_texts.append(sValue);
        pushRow(GridValueType::kText).text = {offset, static_cast<std::uint32_t>(sValue.size())};
    }
    void growTo(std::uint32_t rows);
    void makeReady();
    void dropSlot(std::uint32_t index);
    void store(Cell& cell, const GridValue& vValue);
    void storeText(Cell& cell, TextView sValue);
    void storeNumber(Cell& cell, GridValueType type, double number);
    void compactTextsWhenDue();
    [[nodiscard]] GridValue valueOf(const Cell& cell) const;

    [[nodiscard]] const Side* side(std::int32_t iRow) const;
    [[nodiscard]] Side& sideSlot(std::int32_t iRow);
    void dropSide(Cell& cell);
    [[nodiscard]] Heights heights(std::int32_t iRow) const;
    [[nodiscard]] Heights& heightsSlot(std::int32_t iRow);

    static constexpr std::int32_t kCapacityStep = 25;

    std::unique_ptr<Cell[], Free> m_aRows;
    std::int32_t m_iRows = 0;
    std::int32_t m_iCapacity = 1;
    // Records in use, at least m_iRows; whose memory is at hand for AddRow; that fit in m_aRows.
    std::uint32_t m_written = 0, m_ready = 0, m_allocated = 0;
    CellTexts m_texts;
    std::size_t m_garbage = 0;  // units of m_texts that no cell refers to
    std::vector<Side> m_sides;  // [0] is unused
    std::vector<std::uint32_t> m_freeSides;
    std::vector<Heights> m_heights;  // empty, or as far as heights were set
    MeasuredCells m_measured;
};
