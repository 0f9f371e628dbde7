// grid/store/GridCell.h: one cell record, as columns take it in and give it out.
#pragma once
#include "grid/store/GridValue.h"

#include <memory>

// What a cell shows beside or instead of its value. The store only keeps shared references to it;
// the drawn grid defines it.
class GridPicture;

// The six picture fields of a cell.
struct CellPicture {
    std::shared_ptr<GridPicture> oPic = {};  // none: no picture
    bool bPicTransparent = true;             // draw with transparency
    bool bPicGrayed = false;                 // draw grey
    std::int32_t lPicXTransp = 0;            // the pixel that gives the transparent colour
    std::int32_t lPicYTransp = 0;
    std::int32_t lPicTranspColor = -1;  // the transparent colour; -1: none given

    friend bool operator==(const CellPicture&, const CellPicture&) = default;
};

// The defaults are those of a new row, but for Value, which goes by the column's type. Columns keep
// their cells in a smaller form and make this record on request.
struct GridCell {
    GridValue Value = {};
    std::int32_t BackColor = -1;  // -1: none, the grid's colour
    std::int32_t ForeColor = -1;  // -1: none
    CellPicture Picture = {};
    bool Selected = false;        // counts in the first column only
    GridValue Tag = {};           // caller's data
    std::int32_t TextHeight = 0;  // pixels, multi-line mode, as the two below
    std::int32_t CellHeight = 0;
    std::int32_t OffsetRow = 0;  // y of the row from the top of the first row

    friend bool operator==(const GridCell&, const GridCell&) = default;
};
