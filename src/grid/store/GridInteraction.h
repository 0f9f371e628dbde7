// grid/store/GridInteraction.h: what the grid does with mouse, keys, wheel, bars and focus, as
// logic on coordinates, key codes and its own state.
//
// Positions are surface pixels (see GridGeometry.h). Button: 1 left, 2 right, 4 middle. Shift: the
// sum of 1 Shift, 2 Control, 4 Alt.
#pragma once
#include "grid/store/GridGeometry.h"

class GridInteraction : public GridGeometry {
public:
    using GridGeometry::GridGeometry;

    // Events beside those of GridData, raised to the owner when set. The owner may call back into
    // the grid, but must not destroy it or put another function in place of one that is running.
    std::function<void()> Click;
    std::function<void()> DblClick;
    // Before the grid's own handling, which reads KeyCode afterwards: 0 turns it off.
    std::function<void(std::int16_t& KeyCode, std::int16_t& Shift)> KeyDown;
    std::function<void(std::int16_t& KeyAscii)> KeyPress;
    std::function<void(std::int16_t& KeyCode, std::int16_t& Shift)> KeyUp;
    using MouseEvent =
        std::function<void(std::int16_t Button, std::int16_t Shift, float x, float y)>;
    MouseEvent MouseDown;  // after the grid's own handling
    MouseEvent MouseMove;  // before it
    MouseEvent MouseUp;    // after it
    // Before scrolling; in screen coordinates. bDown: towards the user.
    std::function<void(std::int16_t Button, std::int16_t Shift, float x, float y, bool bDown)>
        MouseWheel;
    std::function<void()> VScroll;  // the user drags the vertical bar
    std::function<void()> HScroll;  // or the horizontal one

    [[nodiscard]] bool ScrollOnMouseWheel() const { return m_bScrollOnMouseWheel; }
    void ScrollOnMouseWheel(bool b) { m_bScrollOnMouseWheel = b; }
    [[nodiscard]] bool ShowFocus() const { return m_bShowFocus; }
    void ShowFocus(bool b);  // redraws

    // The column of the last sort is this one (by number).
    [[nodiscard]] bool isSortedColumn(std::int32_t iCol) const;

protected:
    // --- What the host of the grid does for it.
    [[nodiscard]] virtual std::int32_t shiftState() const = 0;  // of the keyboard, at this moment
    virtual void showResizeCursor(bool b) = 0;                  // else the default one
    virtual void showTip() = 0;

    // --- What the host tells. On the surface:
    void surfaceMouseDown(std::int16_t Button, std::int16_t Shift, float x, float y);
    void surfaceMouseMove(std::int16_t Button, std::int16_t Shift, float x, float y);
    void surfaceMouseUp(std::int16_t Button, std::int16_t Shift, float x, float y);
    void surfaceClick();
    void surfaceDblClick();
    // On surface and control alike. A handled key comes back as 0.
    void keyDown(std::int16_t& KeyCode, std::int16_t& Shift);
    void keyPress(std::int16_t& KeyAscii) const;
    void keyUp(std::int16_t& KeyCode, std::int16_t& Shift) const;
    // keys: 1 left, 2 right, 16 middle button. delta: 120 a notch, below 0 towards the user.
    void wheel(std::int32_t keys, std::int32_t delta, float x, float y);
    void hScrollChanged();
    void hScrollDragged();
    void vScrollChanged();
    void vScrollDragged();
    void focusChanged(bool bHasFocus);
    void ambientChanged();

    [[nodiscard]] bool hasFocus() const { return m_bHasFocus; }

private:
    void pvSelectRows(std::int32_t iRow, bool bKeyboard, bool bRefreshNow);
    void moveTo(std::int32_t iRow);
    bool handleKey(std::int16_t KeyCode);
    [[nodiscard]] bool rightOfColumns(float x) const;
    [[nodiscard]] bool mouseIsOnContent() const;
    void leaveResizeZone();
    void enterResizeZone(float x);

    bool m_bScrollOnMouseWheel = true;
    bool m_bShowFocus = true;
    bool m_bHasFocus = false;

    bool m_bDblClicked = false;      // a double click has just happened
    bool m_bOverResizeZone = false;  // the mouse is over a right edge, or drags it
    std::int16_t m_iResizeCol = -1;
    std::int32_t m_iResizeColX = -1;     // its left edge in the content
    float m_fMouseX = 0, m_fMouseY = 0;  // of the last move
    float m_fDownX = 0, m_fDownY = 0;    // of the last press
};
