// host/HostWindow.h: what every drawn control rests on: one window inside of another, with a
// picture that stays, a font, and notifications.
//
// A control derives from this and overrides the notifications it wants. Members may be used before
// create and after the window is gone: values are kept, and what needs a window does nothing then.
// Sizes and positions are client pixels. A member whose name has no argument reads, the same name
// with one writes.
//
// Any notification may destroy the window, and even the object: after raising an event a control
// asks a Life that it took before whether it is still there. What an owner's handler raises goes on
// to the sender of the message, and for messages of the desktop to the handler of setFailureHandler
// (platform/window/application.h); the state of the control is whole by then.
#pragma once
#include "gfx/clsFontHDC.h"
#include "gfx/types.h"
#include "host/DataObject.h"
#include "host/Event.h"
#include "host/PropertyBag.h"
#include "platform/window/accessibility.h"
#include "platform/window/dragdrop.h"
#include "platform/window/window.h"

class Form;
class HostFocus;

// Codes of MousePointer: 0 the usual pointer, 1 to 15 those of CursorResource, and this.
constexpr std::int16_t kCustomPointer = 99;  // MouseIcon

class HostWindow : public platform::Accessible, private platform::DropTarget {
public:
    HostWindow();
    // Ends the window. What a control does at its end it does in its own destructor.
    ~HostWindow() override;
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    // Makes the window inside another one, at a place there; then onResize and, with the first
    // WM_PAINT, onPaint. False, and nothing changes, when there is a window already and when the
    // desktop has none to give. With Visible(false) before, it starts hidden.
    bool create(HWND parent, const RECT& place);
    void destroy();

    // Whether an object is still there, for code that runs owners' handlers.
    class Life {
    public:
        explicit Life(const HostWindow& host) : m_token(host.m_life) {}
        [[nodiscard]] explicit operator bool() const { return !m_token.expired(); }

    private:
        std::weak_ptr<const char> m_token;
    };

    // The host whose own window this is; nullptr for any other window.
    [[nodiscard]] static HostWindow* find(HWND hWnd);
    // The form around the window; nullptr when there is none.
    [[nodiscard]] Form* form() const;
    // Calls f(host) for every host with a window, in the order of creation. f may end any of them.
    static void forEachHost(const std::function<void(HostWindow&)>& f);

    [[nodiscard]] HWND hWnd() const { return m_hWnd; }  // 0: none
    // Draws on the window's picture, with the font selected, the fore colour as text colour, and
    // a transparent background mode. The same from create to the window's end; 0 without a window.
    [[nodiscard]] HDC hDC() const { return m_hDC; }
    [[nodiscard]] HFONT hFont() const { return m_hFont; }  // as selected; 0 without a window

    [[nodiscard]] int ScaleWidth() const { return m_place.right - m_place.left; }
    [[nodiscard]] int ScaleHeight() const { return m_place.bottom - m_place.top; }
    [[nodiscard]] int Left() const { return m_place.left; }  // inside the parent
    [[nodiscard]] int Top() const { return m_place.top; }
    // Negative sizes count as 0. Without a window onResize comes, too, for another size.
    void move(int left, int top, int width, int height);
    void move(int left, int top) { move(left, top, ScaleWidth(), ScaleHeight()); }

    // A control's own name, the caption that it starts with.
    [[nodiscard]] const Text& Name() const { return m_name; }
    void Name(Text sName) { m_name = std::move(sName); }
    // True in a running program, false in a designer.
    [[nodiscard]] bool UserMode() const { return m_userMode; }
    void UserMode(bool bUserMode) { m_userMode = bUserMode; }

    [[nodiscard]] bool Enabled() const { return m_enabled; }
    void Enabled(bool bEnabled);  // on a change: the window, then onEnabledChanged
    [[nodiscard]] bool Visible() const { return m_visible; }
    void Visible(bool bVisible);
    [[nodiscard]] Color ForeColor() const { return m_foreColor; }
    void ForeColor(Color iColor);
    [[nodiscard]] Color BackColor() const { return m_backColor; }
    void BackColor(Color iColor);  // what the picture holds where nothing was drawn; no repaint
    [[nodiscard]] const StdFont& Font() const { return m_font; }
    void Font(const StdFont& oFont);  // selects it, then onFontChanged, also for an equal one
    void ApplyFontChanges() { Font(StdFont(m_font)); }

    [[nodiscard]] std::int16_t MousePointer() const { return m_mousePointer; }
    void MousePointer(std::int16_t iPointer);  // an unknown code is the usual pointer
    [[nodiscard]] const Picture& MouseIcon() const { return m_mouseIcon; }
    void MouseIcon(Picture oIcon);  // an icon; any other picture is the arrow

    // With a picture that paints itself (true) there is no onPaint: the control draws when it
    // wants to, and Refresh brings that to the screen. Otherwise onPaint draws all of it.
    [[nodiscard]] bool AutoRedraw() const { return m_autoRedraw; }
    void AutoRedraw(bool b) { m_autoRedraw = b; }
    void Refresh();     // brings the picture to the screen at once, after an onPaint
    void Invalidate();  // asks for an onPaint, which comes once for any number of requests

    // The visible shape. With BackStyle 0 and a mask picture only pixels stay whose colour in the
    // mask is not MaskColor; the mouse falls through the others. Otherwise the region, if one is
    // set, or the whole rectangle.
    [[nodiscard]] int BackStyle() const { return m_backStyle; }
    void BackStyle(int iStyle);  // 0 transparent, 1 opaque
    [[nodiscard]] Color MaskColor() const { return m_maskColor; }
    void MaskColor(Color iColor) { m_maskColor = iColor; }
    [[nodiscard]] const Picture& MaskPicture() const { return m_maskPicture; }
    void MaskPicture(Picture oMask);
    void WindowRegion(HRGN hRgn);  // takes it over; 0: none

    // Whether the focus can be on the control at all; a press of a button then gives it the focus.
    // Set by the control's class, before create.
    [[nodiscard]] bool CanGetFocus() const { return m_canGetFocus; }
    void CanGetFocus(bool b) { m_canGetFocus = b; }
    [[nodiscard]] bool TabStop() const { return m_tabStop; }  // Tab stops here; true at first
    void TabStop(bool b) { m_tabStop = b; }
    // Place in the order of Tab, 0 and up; -1, as at first: in the order of creation, behind those
    // that have one.
    [[nodiscard]] int TabIndex() const { return m_tabIndex; }
    void TabIndex(int i) { m_tabIndex = i; }
    void SetFocus();
    [[nodiscard]] bool HasFocus() const;  // it, or a window inside of it

    // The button that Enter presses, and the one that Escape presses. One of each in a form:
    // setting it takes it from the others. Both sides hear onAmbientChanged.
    [[nodiscard]] bool Default() const { return m_default; }
    void Default(bool b);
    [[nodiscard]] bool Cancel() const { return m_cancel; }
    void Cancel(bool b);
    // A control of this kind takes Enter for itself while it has the focus.
    [[nodiscard]] bool DefaultCancel() const { return m_defaultCancel; }
    void DefaultCancel(bool b) { m_defaultCancel = b; }
    // Letters that call the control with Alt, in any letter case; empty: none.
    [[nodiscard]] const Text& AccessKeys() const { return m_accessKeys; }
    void AccessKeys(Text sKeys) { m_accessKeys = std::move(sKeys); }

    // 0 takes no drops, 1 raises the drag events, 2 as 1.
    [[nodiscard]] std::int16_t OLEDropMode() const { return m_oleDropMode; }
    void OLEDropMode(std::int16_t iMode);
    // Starts a drag: onOLEStartDrag fills it, onOLECompleteDrag tells what became of it. Returns
    // when it is over; onOLESetData and onOLEGiveFeedback come meanwhile.
    void OLEDrag();

    // For helpers of the desktop, in place of the name that the control would give.
    void AccessibleName(Text sName);

    // Loading and saving of stored properties; the values of properties without a stored one are
    // the documented defaults.
    virtual void InitProperties() { ReadProperties({}); }  // of a fresh control
    virtual void ReadProperties(const PropertyBag&) {}
    virtual void WriteProperties(PropertyBag&) const {}

    // platform::Accessible. The name is AccessibleName, else accessibleText.
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::Client;
    }
    [[nodiscard]] Text accessibleName() const override;
    [[nodiscard]] Text accessibleAccelerator() const override;
    [[nodiscard]] platform::AccessibleState accessibleState() const override;

protected:
    // ---- Notifications. Button 1 left, 2 right, 4 middle, for a move the sum of what is down (see
    // buttonsIn); Shift the sum of 1 Shift, 2 Ctrl, 4 Alt (shiftState). A press and a release
    // inside give onMouseDown, onMouseUp, onClick; a second press soon after gives onDblClick, then
    // onMouseUp.
    virtual void onCreate() {}   // the window is there, with hDC
    virtual void onDestroy() {}  // the window is about to go; not from the destructor
    virtual void onPaint() {}
    virtual void onResize() {}
    virtual void onEnterFocus() {}  // from outside to it or to a window inside of it
    virtual void onExitFocus() {}
    virtual void onMouseDown(std::int16_t, std::int16_t, float, float) {}
    virtual void onMouseMove(std::int16_t, std::int16_t, float, float) {}
    virtual void onMouseUp(std::int16_t, std::int16_t, float, float) {}
    virtual void onClick() {}
    virtual void onDblClick() {}
    virtual void onKeyDown(std::int16_t& /*KeyCode*/, std::int16_t& /*Shift*/) {}
    virtual void onKeyPress(std::int16_t& /*KeyAscii, one unit*/) {}
    virtual void onKeyUp(std::int16_t& /*KeyCode*/, std::int16_t& /*Shift*/) {}
    // 13 or 27 from Enter or Escape in the form, else the letter typed with Alt.
    virtual void onAccessKey(std::int16_t /*code*/) {}
    virtual void onAmbientChanged() {}  // Default, Cancel, colours of the desktop
    virtual void onEnabledChanged() {}
    virtual void onFontChanged() {}
    virtual void onOLEStartDrag(DataObject&, std::int32_t& /*AllowedEffects*/) {}
    virtual void onOLESetData(DataObject&, std::int16_t& /*DataFormat*/) {}
    virtual void onOLEGiveFeedback(std::int32_t& /*Effect*/, bool& /*DefaultCursors*/) {}
    // State: 0 enter, 1 leave, 2 over. Effect: in what is allowed, out what a drop would do.
    virtual void onOLEDragOver(DataObject&, std::int32_t&, std::int16_t, std::int16_t, float, float,
                               std::int16_t) {}
    virtual void onOLEDragDrop(DataObject&, std::int32_t&, std::int16_t, std::int16_t, float,
                               float) {}
    virtual void onOLECompleteDrag(std::int32_t& /*Effect*/) {}

    // Sees every message after its notification; true and a result keep it from the default
    // procedure.
    virtual bool onMessage(std::uint32_t, platform::WPARAM, platform::LPARAM, platform::LRESULT&) {
        return false;
    }
    // The text that names the control to helpers: its caption without the marks of access keys.
    [[nodiscard]] virtual Text accessibleText() const { return {}; }
    void tellAccessible(platform::AccessibleChange change) const;
    [[nodiscard]] static std::int16_t shiftState();                       // the keys at this moment
    [[nodiscard]] static std::int16_t buttonsIn(platform::WPARAM flags);  // of MK_... flags
    // What MousePointer and MouseIcon ask for; 0 is the arrow.
    [[nodiscard]] HICON pointerCursor() const;

    // For windows of another kind (host/Form.h).
    bool createOfKind(const platform::WindowOptions& options);

private:
    friend class Form;
    friend class HostFocus;
    static platform::LRESULT procedure(HWND hWnd, std::uint32_t uMsg, platform::WPARAM wParam,
                                       platform::LPARAM lParam);
    bool dispatch(std::uint32_t uMsg, platform::WPARAM wParam, platform::LPARAM lParam);
    void mousePressed(std::int16_t button, POINT at, bool second);
    void mouseReleased(std::int16_t button, POINT at);
    void leaveWindow();
    void selectFont();
    void applyCursor();
    void applyShape();
    void setSoleFlag(bool HostWindow::*flag, bool value);
    std::int32_t dragOver(const platform::DragData* data, const platform::DragPosition& position,
                          platform::DragState state) override;
    std::int32_t drop(const platform::DragData& data,
                      const platform::DragPosition& position) override;

    std::shared_ptr<const char> m_life = std::make_shared<const char>('\0');
    HWND m_hWnd = 0;
    HDC m_hDC = 0;
    HFONT m_hFont = 0, m_hOldFont = 0;
    RECT m_place;
    HRGN m_hRgn = 0;
    std::uint32_t m_creation = 0;  // number in the order of all creations
    int m_pressed = 0;             // buttons that went down inside by a first press
    int m_tabIndex = -1, m_backStyle = 1;
    Color m_foreColor = sysColor(18), m_backColor = sysColor(15), m_maskColor = sysColor(15);
    StdFont m_font;
    Picture m_mouseIcon, m_maskPicture;
    Text m_name, m_accessKeys, m_accessibleName;
    std::int16_t m_mousePointer = 0, m_oleDropMode = 0;
    bool m_userMode = true, m_enabled = true, m_visible = true, m_autoRedraw = false;
    bool m_canGetFocus = true, m_tabStop = true, m_default = false, m_cancel = false;
    bool m_defaultCancel = false;
};

// A caption as it is read out: without the "&" of access keys.
[[nodiscard]] Text withoutAccessMarks(TextView sCaption);
