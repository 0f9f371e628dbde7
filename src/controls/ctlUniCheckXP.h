// controls/ctlUniCheckXP.h: the drawn check box.
#pragma once
#include "controls/DrawnControl.h"

struct CheckProps {          // stored under these names
    Text Caption{};          // the control's own name, where none is stored
    std::int32_t Align = 0;  // 0: the box left of the text, else at the right edge
    Color CheckBackColor = sysColor(5), CheckForeColor = sysColor(8);  // of the box
    Color BackColor = sysColor(15), ForeColor = sysColor(18), BorderColor = kAutoColor;
    bool Pressed = false;
    Text Tip{};
    std::int32_t Style = -1;
    bool ShowFocus = true;
};
struct CheckState {
    bool bEnabled = true, bFocus = false;
};
[[nodiscard]] RECT checkBoxRect(SIZE inner, const CheckProps& props);
// Where the caption goes, by the context's font; that of the box without a caption.
[[nodiscard]] RECT checkTextRect(HDC hDC, SIZE inner, const CheckProps& props);
// Paints the whole control from (0, 0).
void paintCheck(HDC hDC, SIZE inner, const CheckProps& props, const CheckState& state);

class ctlUniCheckXP : public OleControl<MouseControl> {
public:
    [[nodiscard]] static const PropertyTable<CheckProps>& properties();
    void ReadProperties(const PropertyBag& oBag) override;
    void WriteProperties(PropertyBag& oBag) const override;

    [[nodiscard]] const Text& Caption() const { return m_props.Caption; }
    void Caption(Text sCaption);  // its "&" also sets the access key
    [[nodiscard]] std::int32_t Align() const { return m_props.Align; }
    void Align(std::int32_t i) { set(&CheckProps::Align, i); }
    [[nodiscard]] Color CheckBackColor() const { return m_props.CheckBackColor; }
    void CheckBackColor(Color iColor) { set(&CheckProps::CheckBackColor, iColor); }
    [[nodiscard]] Color CheckForeColor() const { return m_props.CheckForeColor; }
    void CheckForeColor(Color iColor) { set(&CheckProps::CheckForeColor, iColor); }
    [[nodiscard]] Color BackColor() const { return m_props.BackColor; }
    void BackColor(Color iColor) { set(&CheckProps::BackColor, iColor); }
    [[nodiscard]] Color ForeColor() const { return m_props.ForeColor; }
    void ForeColor(Color iColor) { set(&CheckProps::ForeColor, iColor); }
    [[nodiscard]] Color BorderColor() const { return m_props.BorderColor; }
    void BorderColor(Color iColor) { set(&CheckProps::BorderColor, iColor); }
    [[nodiscard]] bool Pressed() const { return m_props.Pressed; }
    void Pressed(bool bPressed);  // only on a change: repaints, then raises Click
    [[nodiscard]] std::int16_t Value() const { return m_props.Pressed ? 1 : 0; }
    void Value(std::int16_t iValue) { Pressed(iValue != 0); }
    [[nodiscard]] const Text& Tip() const { return m_props.Tip; }
    void Tip(Text sTip) { m_props.Tip = std::move(sTip); }  // no repaint
    [[nodiscard]] std::int32_t Style() const { return m_props.Style; }
    void Style(std::int32_t iStyle) { set(&CheckProps::Style, iStyle); }
    [[nodiscard]] bool ShowFocus() const { return m_props.ShowFocus; }
    void ShowFocus(bool b) { set(&CheckProps::ShowFocus, b); }

    Event<std::int16_t&, std::int16_t&> KeyDown;
    Event<std::int16_t&> KeyPress;  // 32 or 13 coming back toggles
    Event<std::int16_t&, std::int16_t&> KeyUp;

    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::CheckBox;
    }
    [[nodiscard]] platform::AccessibleState accessibleState() const override;
    bool accessibleAction() override;

protected:
    void onPaint() override { pvDraw(); }
    void onResize() override { pvRefresh(); }
    void onEnterFocus() override { showFocus(true); }
    void onExitFocus() override { showFocus(false); }
    void onMouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y) override;
    void onClick() override { pvClick(); }
    void onDblClick() override;
    void onKeyDown(std::int16_t& KeyCode, std::int16_t& Shift) override { KeyDown(KeyCode, Shift); }
    void onKeyPress(std::int16_t& KeyAscii) override;
    void onKeyUp(std::int16_t& KeyCode, std::int16_t& Shift) override { KeyUp(KeyCode, Shift); }
    void onAccessKey(std::int16_t code) override;
    [[nodiscard]] Text accessibleText() const override {
        return withoutAccessMarks(m_props.Caption);
    }
    [[nodiscard]] const Text& tip() const override { return m_props.Tip; }

private:
    template <class T> void set(T CheckProps::*member, T value) {
        m_props.*member = value;
        pvRefresh();
    }
    void pvDraw();
    void pvClick();
    void pvSetAccessKey();
    void showFocus(bool bFocus);

    CheckProps m_props;
    bool m_bFocus = false;
    bool m_bArmed = false;  // the coming click may toggle
};
