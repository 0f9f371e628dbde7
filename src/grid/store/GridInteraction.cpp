#include "grid/store/GridInteraction.h"

#include <cmath>

namespace {

enum Key : std::int16_t {
    kPageUp = 33,
    kPageDown = 34,
    kEnd = 35,
    kHome = 36,
    kLeft = 37,
    kUp = 38,
    kRight = 39,
    kDown = 40,
};
constexpr std::int16_t kLeftButton = 1;
constexpr std::int32_t kShift = 1, kControl = 2;

std::int32_t rounded(double value) {  // halves to even; what no number can hold is far outside
    return static_cast<std::int32_t>(std::lrint(std::clamp(value, -2e9, 2e9)));
}

}  // namespace

void GridInteraction::ShowFocus(bool b) {
    m_bShowFocus = b;
    draw(false, false);
}

bool GridInteraction::isSortedColumn(std::int32_t iCol) const {
    if (m_vSortCol.isNumeric()) return m_vSortCol.toDouble() == iCol;
    // An empty text names no column, as it is the key of all that have none.
    return !m_vSortCol.text().empty() && m_vSortCol == columnAt(iCol).vKey;
}

// --- Selection

void GridInteraction::pvSelectRows(std::int32_t iRow, bool bKeyboard, bool bRefreshNow) {
    if (!MultiSelect() || iRow < 1 || iRow > Rows()) return;
    const std::int32_t keys = shiftState();
    BeginUpdate();
    if ((keys & kShift) != 0) {
        SelectAll(false, false);
        if (m_iSelAnchor < 1 || m_iSelAnchor > Rows()) m_iSelAnchor = iRow;
        SelectRange(iRow, m_iSelAnchor, true, false);
    } else if ((keys & kControl) == 0) {
        SelectAll(false, false);
        RowSel(iRow, true);
        m_iSelAnchor = iRow;
    } else if (!bKeyboard) {
        m_iSelAnchor = iRow;
        RowSel(iRow, !RowSel(iRow));
    }
    if (bRefreshNow) {
        EndUpdate(false, true);
    } else {
        NoUpdate();
    }
}

// --- Mouse

// In the empty area behind the last column, which does not count while there is more to scroll to.
bool GridInteraction::rightOfColumns(float x) const {
    if (HScroll_Max() >= 1) return false;
    std::int64_t right = 0;
    for (std::int32_t c = 1; c <= Cols(); ++c) right += stepOf(columnAt(c));
    return x >= static_cast<float>(right);
}

void GridInteraction::surfaceMouseDown(std::int16_t Button, std::int16_t Shift, float x, float y) {
    m_fDownX = x;
    m_fDownY = y;
    m_bDblClicked = false;
    if (Button == kLeftButton && !IsHeaderCoord(y) && !rightOfColumns(x)) {
        const std::int32_t r = GetRowByY(rounded(y));
        if (r >= 1) {  // the first pixels of row 1 may be told as row 0 in multi-line mode
            pvSelectRows(r, false, false);
            m_iRow = r;
            FocusSelectedRow(true, true);
            raiseSelectionChange();
        }
    }
    if (MouseDown) MouseDown(Button, Shift, x, y);
}

void GridInteraction::surfaceMouseMove(std::int16_t Button, std::int16_t Shift, float x, float y) {
    m_bDblClicked = false;
    m_fMouseX = x;
    m_fMouseY = y;
    showTip();
    if (MouseMove) MouseMove(Button, Shift, x, y);

    if (Button == kLeftButton && m_bOverResizeZone) {
        if (m_iResizeCol < 1 || m_iResizeCol > Cols()) return;  // the owner took it away
        const std::int32_t width = rounded(double{x} + HScroll_Value() - m_iResizeColX);
        columnAt(m_iResizeCol).iMaxWidth = std::max(width, 0);
        draw(true, false);
    } else if (Button == 0) {
        if (IsHeaderCoord(y)) {
            enterResizeZone(x);
        } else {
            leaveResizeZone();
        }
    }
}

void GridInteraction::enterResizeZone(float x) {
    const std::int64_t a = std::int64_t{rounded(x)} + HScroll_Value();
    std::int64_t right = 0;
    for (std::int32_t c = 1; c <= Cols(); ++c) {
        const clsCtlUniGrid_Column& column = columnAt(c);
        right += stepOf(column);
        if (column.bResizable && a > right - 3 && a < right + 3) {
            showResizeCursor(true);
            m_bOverResizeZone = true;
            m_iResizeCol = static_cast<std::int16_t>(c);
            m_iResizeColX = static_cast<std::int32_t>(right - column.iCurrentWidth);
            return;
        }
    }
    leaveResizeZone();
}

void GridInteraction::leaveResizeZone() {
    showResizeCursor(false);
    m_bOverResizeZone = false;
    m_iResizeCol = -1;
    m_iResizeColX = -1;
}

void GridInteraction::surfaceMouseUp(std::int16_t Button, std::int16_t Shift, float x, float y) {
    // Exactly the same place: whoever moves off did not mean to sort.
    if (Button == kLeftButton && IsHeaderCoord(m_fDownY) && !m_bOverResizeZone && !m_bDblClicked &&
        m_fDownX == x) {
        const std::int32_t c = GetColByX(rounded(m_fDownX));
        if (c != -1 && columnAt(c).bSortable) {
            SortByColum(c, isSortedColumn(c) ? !m_bSortAsc : true);
        }
    }
    m_bDblClicked = false;
    if (MouseUp) MouseUp(Button, Shift, x, y);
}

bool GridInteraction::mouseIsOnContent() const {
    return !IsHeaderCoord(m_fMouseY) && !rightOfColumns(m_fMouseX);
}

void GridInteraction::surfaceClick() {
    if (mouseIsOnContent() && Click) Click();
}

void GridInteraction::surfaceDblClick() {
    m_bDblClicked = true;
    if (mouseIsOnContent() && DblClick) DblClick();
    if (!m_bOverResizeZone) return;
    if (m_iResizeCol >= 1 && m_iResizeCol <= Cols() && columnAt(m_iResizeCol).bResizable) {
        columnAt(m_iResizeCol).iMaxWidth = -1;
        draw(true, false);
    }
    m_bOverResizeZone = false;
}

void GridInteraction::wheel(std::int32_t keys, std::int32_t delta, float x, float y) {
    const auto Button = static_cast<std::int16_t>((keys & 1) | (keys & 2) | ((keys & 16) >> 2));
    const bool bDown = delta < 0;
    if (MouseWheel) MouseWheel(Button, static_cast<std::int16_t>(shiftState()), x, y, bDown);
    if (!m_bScrollOnMouseWheel) return;
    const std::int32_t step = AllowMultiLineText() ? 25 : 3;
    scrollRows(bDown ? step : -step);
}

// --- Keys

void GridInteraction::moveTo(std::int32_t iRow) {
    m_iRow = iRow;
    FocusSelectedRow(!MultiSelect(), true);
    raiseSelectionChange();
}

bool GridInteraction::handleKey(std::int16_t KeyCode) {
    // Half a page away, rounded to the even row.
    const auto page = [this](int sign) {
        if (AllowMultiLineText()) return m_iRow + sign * 5;
        return static_cast<std::int32_t>(std::llrint(m_iRow + sign * (GetVisibleRows() / 2.0)));
    };
    switch (KeyCode) {
    case kDown:
        if (m_iRow < Rows()) moveTo(m_iRow + 1);
        return true;
    case kUp:
        if (m_iRow >= 2) moveTo(m_iRow - 1);
        return true;
    case kPageDown:
        moveTo(std::min(page(1), Rows()));
        return true;
    case kPageUp:
        moveTo(std::max(page(-1), 1));
        return true;
    case kRight:
        scrollColumns(10);
        return true;
    case kLeft:
        scrollColumns(-10);
        return true;
    case kHome:
        if (Rows() > 0) {
            moveTo(1);
        } else {
            VScroll_Value(0);
        }
        HScroll_Value(0);
        return true;
    case kEnd:
        if (Rows() > 0) moveTo(Rows());
        return true;
    default:
        return false;
    }
}

void GridInteraction::keyDown(std::int16_t& KeyCode, std::int16_t& Shift) {
    if (KeyDown) KeyDown(KeyCode, Shift);
    if (!handleKey(KeyCode)) return;
    KeyCode = 0;
    pvSelectRows(m_iRow, true, true);
}

void GridInteraction::keyPress(std::int16_t& KeyAscii) const {
    if (KeyPress) KeyPress(KeyAscii);
}

void GridInteraction::keyUp(std::int16_t& KeyCode, std::int16_t& Shift) const {
    if (KeyUp) KeyUp(KeyCode, Shift);
}

// --- Bars and focus

void GridInteraction::hScrollChanged() { draw(false, true); }

void GridInteraction::hScrollDragged() {
    draw(false, true);
    if (HScroll) HScroll();
}

void GridInteraction::vScrollChanged() {
    if (!m_bFocusing) draw(false, true);
}

void GridInteraction::vScrollDragged() {
    draw(false, true);
    if (VScroll) VScroll();
}

void GridInteraction::focusChanged(bool bHasFocus) {
    m_bHasFocus = bHasFocus;
    if (m_bShowFocus) draw(false, false);
}

void GridInteraction::ambientChanged() {
    forgetMeasuredTexts();
    draw(true, false);
}
