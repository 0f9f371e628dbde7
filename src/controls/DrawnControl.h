// controls/DrawnControl.h: what the drawn controls have in common.
//
// Setters store the value and ask for a repaint; each header says where one does more or less. A
// control that keeps no picture of its own paints once for any number of changes. Painting catches
// every failure. Colours may be those of the desktop.
#pragma once
#include "host/HostWindow.h"
#include "host/PropertyTable.h"

class clsMEMDC;

constexpr Color kDisabledText = sysColor(17);
constexpr int kWindowCorner = 2;  // pixels, the radius of a rounded window
constexpr Color kInMask = 0xFFFFFF;

class DrawnControl : public HostWindow {
public:
    // The tip: what the control shows to the mouse, it tells helpers, too.
    [[nodiscard]] Text accessibleDescription() const override { return tip(); }

protected:
    // The repaint request: at once in a designer and for a picture that stays, else by onPaint.
    void pvRefresh();
    virtual void paintAtOnce();

    // Runs paint unless a paint of this control runs already; whatever fails in it ends here.
    template <class F> void guardedPaint(F paint) {
        if (m_bDrawing) return;
        const Life life(*this);
        m_bDrawing = true;
        try {
            paint();
        } catch (...) {
            paintFailed();
        }
        if (life) m_bDrawing = false;
    }
    [[nodiscard]] bool isDrawing() const { return m_bDrawing; }

    [[nodiscard]] virtual const Text& tip() const = 0;
    // In a running program: gives the tip to the service that shows it when the mouse rests.
    void handTip() const;
    // Cuts the window to a rounded rectangle of its size, or back to a whole one.
    void roundWindow(bool bRound);
    // The same by a mask, on a transparent window.
    void maskWindow(bool bRound);
    // Leaves of the window what is not black in a mask of its size.
    void maskWindow(clsMEMDC& mask);

    // Enabled and Font; with bMouse also OLEDropMode, MousePointer and MouseIcon.
    void readHost(const PropertyBag& oBag, bool bMouse);
    void writeHost(PropertyBag& oBag, bool bMouse) const;
    // The last three alone.
    void readMouse(const PropertyBag& oBag);
    void writeMouse(PropertyBag& oBag) const;

    void onAmbientChanged() override { pvRefresh(); }
    void onFontChanged() override { pvRefresh(); }
    void onEnabledChanged() override { pvRefresh(); }

private:
    static void paintFailed();
    bool m_bDrawing = false;
    bool m_bHasRegion = false;
};

// A control that raises what the mouse does.
class MouseControl : public DrawnControl {
public:
    Event<> Click, DblClick;
    Event<std::int16_t&, std::int16_t&, float&, float&> MouseDown, MouseMove, MouseUp;

protected:
    void onClick() override { Click(); }
    void onDblClick() override { DblClick(); }
    void onMouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y) override {
        MouseDown(Button, Shift, X, Y);
    }
    void onMouseMove(std::int16_t Button, std::int16_t Shift, float X, float Y) override {
        const Life life(*this);
        handTip();
        if (life) MouseMove(Button, Shift, X, Y);
    }
    void onMouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y) override {
        MouseUp(Button, Shift, X, Y);
    }
};

// The six events of a drag, passed on from the window to the owner of any control.
template <class Base> class OleControl : public Base {
public:
    Event<DataObject&, std::int32_t&> OLEStartDrag;
    Event<DataObject&, std::int16_t&> OLESetData;
    Event<std::int32_t&, bool&> OLEGiveFeedback;
    Event<DataObject&, std::int32_t&, std::int16_t&, std::int16_t&, float&, float&, std::int16_t&>
        OLEDragOver;
    Event<DataObject&, std::int32_t&, std::int16_t&, std::int16_t&, float&, float&> OLEDragDrop;
    Event<std::int32_t&> OLECompleteDrag;

protected:
    void onOLEStartDrag(DataObject& Data, std::int32_t& AllowedEffects) override {
        OLEStartDrag(Data, AllowedEffects);
    }
    void onOLESetData(DataObject& Data, std::int16_t& DataFormat) override {
        OLESetData(Data, DataFormat);
    }
    void onOLEGiveFeedback(std::int32_t& Effect, bool& DefaultCursors) override {
        OLEGiveFeedback(Effect, DefaultCursors);
    }
    void onOLEDragOver(DataObject& Data, std::int32_t& Effect, std::int16_t Button,
                       std::int16_t Shift, float X, float Y, std::int16_t State) override {
        OLEDragOver(Data, Effect, Button, Shift, X, Y, State);
    }
    void onOLEDragDrop(DataObject& Data, std::int32_t& Effect, std::int16_t Button,
                       std::int16_t Shift, float X, float Y) override {
        OLEDragDrop(Data, Effect, Button, Shift, X, Y);
    }
    void onOLECompleteDrag(std::int32_t& Effect) override { OLECompleteDrag(Effect); }
};
