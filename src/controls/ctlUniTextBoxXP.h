// controls/ctlUniTextBoxXP.h: the field for text: a drawn border around a native edit window.
//
// The edit window exists from the start on: when the control has its window and its stored
// properties, unless ManualStart is set, and never in a designer. Before it exists, and when the
// desktop has none to give, the control shows its text itself and the members about the selection
// do nothing and read 0 or "". Setters that need an edit window of another style make it anew: the
// text stays, the selection and what could be undone do not.
//
// Every key and every click raises its event ahead of the edit window, and a handler may change or
// drop it. Handlers may do anything, also end the control. What one raises reaches the sender of
// the message; the message itself goes no further then.
//
// Positions count UTF-16 units from 0; in several lines a line break counts two (see
// platform/window/edit.h). X and Y of events are pixels inside the edit window.
#pragma once
#include "controls/DrawnControl.h"
#include "controls/modOIPAOTextbox.h"
#include "gfx/clsGdiHandle.h"
#include "win/ISubclass.h"

struct TextBoxProps {  // stored under these names, except where the table has another one
    Color BorderColor = kAutoColor;
    Color BackColor = sysColor(5), ForeColor = sysColor(8);
    bool Locked = false;
    ::Text Text{};
    std::int32_t MaxLength = 0;  // units; 0 and less: no limit
    bool MultiLine = false;
    std::int32_t Alignment = 0;   // 0 left, 1 right, 2 centre
    std::int32_t ScrollBars = 0;  // 1 horizontal, 2 vertical, 3 both; with MultiLine
    ::Text PasswordChar{};        // its first unit counts
    bool TrapTabKey = false;
    bool EnableContextMenu = true;
    bool RaiseChangeEvent = true;
    ::Text Tip{};
    bool NoHideSel = false;  // the selection shows without the focus, too
    bool RightToLeft = false;
    bool ManualStart = false;
    bool RoundedBorders = false;
    Color BackColorOut = kAutoColor;  // outside of rounded corners; -1: the back colour
    bool UseRoundRegions = false;
    bool OnlyBottomBorder = false;
};

struct TextBoxState {
    bool bEnabled = true;
    bool bEditWindow = false;  // it covers the inside and shows the text
};
// Paints all but the edit window, from (0, 0). Text is drawn with the context's font.
void paintTextBox(HDC hDC, SIZE inner, const TextBoxProps& props, const TextBoxState& state);

class ctlUniTextBoxXP : public OleControl<DrawnControl>, private IAcceleratorOwner {
public:
    ctlUniTextBoxXP();
    ~ctlUniTextBoxXP() override;

    [[nodiscard]] static const PropertyTable<TextBoxProps>& properties();
    void ReadProperties(const PropertyBag& oBag) override;  // then starts
    void WriteProperties(PropertyBag& oBag) const override;

    // ---- Stored properties

    [[nodiscard]] Color BorderColor() const { return m_props.BorderColor; }
    void BorderColor(Color iColor) { set(&TextBoxProps::BorderColor, iColor); }
    [[nodiscard]] Color BackColor() const { return m_props.BackColor; }
    void BackColor(Color iColor);
    [[nodiscard]] Color ForeColor() const { return m_props.ForeColor; }
    void ForeColor(Color iColor);
    // The person can move about and select, and copy by the menu, but not change the text; keys
    // raise their events all the same.
    [[nodiscard]] bool Locked() const;
    void Locked(bool bLocked);
    [[nodiscard]] ::Text Text() const;
    // Another text raises Change, once by the control, and in one line once more by the edit
    // window; the same text does nothing.
    void Text(TextView sText);
    // With an edit window what that says: platform::kNoTextLimit without a limit.
    [[nodiscard]] std::int32_t MaxLength() const;
    void MaxLength(std::int32_t lLength);  // a longer text is cut
    [[nodiscard]] bool MultiLine() const { return m_props.MultiLine; }
    void MultiLine(bool b) { setStyle(&TextBoxProps::MultiLine, b); }
    [[nodiscard]] std::int32_t Alignment() const { return m_props.Alignment; }
    void Alignment(std::int32_t iAlignment);
    [[nodiscard]] std::int32_t ScrollBars() const { return m_props.ScrollBars; }
    void ScrollBars(std::int32_t iBars) { setStyle(&TextBoxProps::ScrollBars, iBars); }
    [[nodiscard]] const ::Text& PasswordChar() const { return m_props.PasswordChar; }
    void PasswordChar(::Text sChar);
    // Tab raises KeyDown and KeyUp and stays here; otherwise it moves the focus.
    [[nodiscard]] bool TrapTabKey() const { return m_props.TrapTabKey; }
    void TrapTabKey(bool b) { m_props.TrapTabKey = b; }
    [[nodiscard]] bool EnableContextMenu() const { return m_props.EnableContextMenu; }
    void EnableContextMenu(bool b) { m_props.EnableContextMenu = b; }
    [[nodiscard]] bool RaiseChangeEvent() const { return m_props.RaiseChangeEvent; }
    void RaiseChangeEvent(bool b) { m_props.RaiseChangeEvent = b; }
    [[nodiscard]] const ::Text& Tip() const { return m_props.Tip; }
    void Tip(::Text sTip) { m_props.Tip = std::move(sTip); }
    [[nodiscard]] bool NoHideSel() const { return m_props.NoHideSel; }
    void NoHideSel(bool b) { setStyle(&TextBoxProps::NoHideSel, b); }
    [[nodiscard]] bool RightToLeft() const;
    void RightToLeft(bool b);
    [[nodiscard]] bool ManualStart() const { return m_props.ManualStart; }
    void ManualStart(bool b) { m_props.ManualStart = b; }
    [[nodiscard]] bool RoundedBorders() const { return m_props.RoundedBorders; }
    void RoundedBorders(bool b) { set(&TextBoxProps::RoundedBorders, b); }
    [[nodiscard]] Color BackColorOut() const { return m_props.BackColorOut; }
    void BackColorOut(Color iColor) { set(&TextBoxProps::BackColorOut, iColor); }
    [[nodiscard]] bool UseRoundRegions() const { return m_props.UseRoundRegions; }
    void UseRoundRegions(bool b);  // RoundedBorders, too
    [[nodiscard]] bool OnlyBottomBorder() const { return m_props.OnlyBottomBorder; }
    void OnlyBottomBorder(bool b) { set(&TextBoxProps::OnlyBottomBorder, b); }

    // ---- At run time

    // The edit window, 0 without one. The control's own is that of HostWindow.
    [[nodiscard]] HWND hWnd() const { return m_hWndEdit; }
    [[nodiscard]] bool IsStarted() const { return m_hWndEdit != 0; }
    [[nodiscard]] bool IsInIME() const { return m_bInIME; }
    [[nodiscard]] std::int32_t SelStart() const;
    void SelStart(std::int32_t lStart);  // nothing is selected then; comes into view
    [[nodiscard]] std::int32_t SelLength() const;
    void SelLength(std::int32_t lLength);
    [[nodiscard]] ::Text SelText() const;
    void SelText(TextView sText);  // can be undone; held to MaxLength
    // Reads the line of SelStart counted from 0, takes a line counted from 1.
    [[nodiscard]] std::int32_t CurrentLine() const;
    void CurrentLine(std::int32_t lLine);
    void ExternalInitControl();  // starts a control with ManualStart
    void AccessibleName(::Text sName);

    // ---- Events. Button 1 left, 2 right, 4 middle; Shift the sum of 1 Shift, 2 Ctrl, 4 Alt.

    Event<> Change;
    // A code of 0 on return keeps the key or character from the edit window.
    Event<std::int16_t&, std::int16_t&> KeyDown, KeyPress, KeyUp;  // code, Shift
    Event<std::int16_t> Click, DblClick;                           // Button
    Event<std::int16_t, std::int16_t, float, float> MouseDown, MouseMove, MouseUp;
    // X and Y are pixels of the screen; true: the wheel turned towards the user.
    Event<std::int16_t, std::int16_t, float, float, bool> MouseWheel;
    // The result of an input method, ahead of a KeyPress for each of its units.
    Event<const ::Text&> IMEComposition;

    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return IsStarted() ? platform::AccessibleRole::Client : platform::AccessibleRole::EditText;
    }
    [[nodiscard]] ::Text accessibleValue() const override;

protected:
    void onCreate() override;
    void onDestroy() override { pvStop(); }
    void onPaint() override { pvDraw(); }
    void onResize() override { pvResize(); }
    void onFontChanged() override;
    void onEnabledChanged() override;
    [[nodiscard]] const ::Text& tip() const override { return m_props.Tip; }

private:
    class Sink;
    struct Message;

    template <class T> void set(T TextBoxProps::*member, T value) {
        m_props.*member = value;
        pvRefresh();
    }
    template <class T> void setStyle(T TextBoxProps::*member, T value) {
        if (m_props.*member == value) return;
        m_props.*member = value;
        if (IsStarted()) pvCreateEdit();
    }

    void pvStart();
    void pvStop();  // the text stays
    void pvCreateEdit();
    void pvEndEdit();
    void pvResize();
    void pvDraw();
    void pvInvalidateEdit() const;
    [[nodiscard]] std::uint32_t editStyle() const;
    platform::LRESULT sendEdit(std::uint32_t uMsg, platform::WPARAM wParam = 0,
                               platform::LPARAM lParam = 0) const;
    struct Selection {
        std::int32_t start = 0, end = 0;
    };
    [[nodiscard]] Selection selection() const;

    void pvOwnerMessage(Message& message);
    void pvEditMessage(Message& message);
    void pvKey(Message& message);
    void pvCharacter(Message& message);
    void pvComposition(Message& message);
    void pvMouse(Message& message);
    void pvButtonUp(Message& message, std::int16_t button);
    void pvSetCursor(Message& message);
    void pvActivateFilter();
    void pvTranslateAccelerator(const KeyMessage& message, bool& bHandled) override;

    TextBoxProps m_props;
    std::shared_ptr<Sink> m_sink;
    HWND m_hWndEdit = 0;
    HWND m_hWndOwner = 0;  // the control's own window, once it is listened to
    AcceleratorFilter m_tFilter;
    clsGdiHandle m_oBrush;
    bool m_bResizing = false, m_bColorChanged = false, m_bMouseDown = false, m_bInIME = false;
    bool m_bHoldChange = false;  // a text is set that is no change
};
