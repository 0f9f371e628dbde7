#include "gfx/modCtlCommon_src_errors.h"
#include "grid/ctlUniGrid.h"
#include "grid/store/pvGetCellText.h"

#include <algorithm>

Text ctlUniGrid::headerText(int column) const { return columnAt(column + 1).sText; }

Text ctlUniGrid::cellText(int row, int column) const {
    if (column == 0 && RowInWords) {
        try {
            return RowInWords(row + 1);
        } catch (...) {  // the desktop's library, which asks, lets no failure through
            ReportCaughtFailure(u"ctlUniGrid.RowInWords");
        }
    }
    const clsCtlUniGrid_Column& oCol = columnAt(column + 1);
    const GridValue value = oCol.Value(row + 1);
    return oCol.iType == 2 ? value.toText() : pvGetCellText(value, oCol);
}

RECT ctlUniGrid::cellRect(int row, int column) const {
    GridRect cell = GetCellRect(row + 1, column + 1);
    if (row < 0) {  // the header does not scroll
        cell.Y1 = m_pic.Top();
        cell.Y2 = cell.Y1 + RowHeight();
    }
    const int top = m_pic.Top() + (row < 0 ? 0 : RowHeight() - 1);
    const RECT seen{std::max(cell.X1, m_pic.Left()), std::max(cell.Y1, top),
                    std::min(cell.X2, m_pic.Left() + ViewPortWidth()),
                    std::min(cell.Y2, m_pic.Top() + ViewPortHeight())};
    return seen.left < seen.right && seen.top < seen.bottom ? seen : RECT();
}

platform::AccessibleTable::Cell ctlUniGrid::cellAt(POINT at) const {
    const int x = at.x - m_pic.Left(), y = at.y - m_pic.Top();
    if (x < 0 || y < 0 || x >= ViewPortWidth() || y >= ViewPortHeight()) return {};
    const std::int32_t column = GetColByX(x);
    if (column < 1) return {};
    if (IsHeaderCoord(static_cast<float>(y))) return {-1, column - 1};
    const std::int32_t row = GetRowByY(y);
    return row < 1 ? Cell() : Cell{row - 1, column - 1};
}

int ctlUniGrid::currentRow() const { return Row() >= 1 && Row() <= Rows() ? Row() - 1 : -1; }

bool ctlUniGrid::isRowSelected(int row) const { return RowSel(row + 1); }

bool ctlUniGrid::selectRow(int row) {
    if (!Enabled()) return false;
    if (MultiSelect()) {
        SelectAll(false, false);
        RowSel(row + 1, true);
        m_iSelAnchor = row + 1;
    }
    Row(row + 1);
    return true;
}

// After a frame, when something of it differs.
void ctlUniGrid::tellHelpers() {
    using platform::AccessibleCellChange;
    if (!platform::accessibleIsHeard()) return;
    Told now{{Rows(), Cols(), m_vSortCol, m_bSortAsc}, currentRow(), {}, false};
    if (now.row >= 0 && now.table.columns > 0) {
        now.text = cellText(now.row, 0);
        now.selected = isRowSelected(now.row);
    }
    const Told before = std::exchange(m_told, now);
    if (now.table != before.table) {
        platform::tellAccessible(hWnd(), platform::AccessibleChange::TableReset);
    }
    const auto tell = [&](AccessibleCellChange change) {
        platform::tellAccessibleCell(hWnd(), now.row, 0, change);
    };
    if (now.row < 0) return;
    if (now.row != before.row) return tell(AccessibleCellChange::Current);
    if (now.text != before.text) tell(AccessibleCellChange::Text);
    if (now.selected != before.selected) tell(AccessibleCellChange::Selected);
}
