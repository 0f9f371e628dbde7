// controls/ctlUniButtonXP.h: the drawn push button.
#pragma once
#include "controls/DrawnControl.h"

struct ButtonProps {  // stored under these names
    Text Caption{};   // the control's own name, where none is stored
    Color BackColor = sysColor(15), ForeColor = sysColor(18), BorderColor = kAutoColor;
    Text Tip{};
    std::int32_t Style = -1;  // of DrawButtonFace; -1: AppButtonStyle
    bool RoundedBorders = true;
    Color BackColorOut = kAutoColor;  // behind cut corners; -1: BackColor
    bool UseRoundRegions = false, ShowFocus = true;
};
struct ButtonState {
    bool bEnabled = true, bDefault = false, bCancel = false, bFocus = false, bPressed = false;
};
// Paints the whole control from (0, 0). Leaves the context with the text's colour.
void paintButton(HDC hDC, SIZE inner, const ButtonProps& props, const ButtonState& state);

class ctlUniButtonXP : public MouseControl {
public:
    ctlUniButtonXP();

    [[nodiscard]] static const PropertyTable<ButtonProps>& properties();
    void ReadProperties(const PropertyBag& oBag) override;
    void WriteProperties(PropertyBag& oBag) const override;

    [[nodiscard]] const Text& Caption() const { return m_props.Caption; }
    void Caption(Text sCaption);  // paints at once
    [[nodiscard]] Color BackColor() const { return m_props.BackColor; }
    void BackColor(Color iColor) { set(&ButtonProps::BackColor, iColor); }
    [[nodiscard]] Color ForeColor() const { return m_props.ForeColor; }
    void ForeColor(Color iColor) { set(&ButtonProps::ForeColor, iColor); }
    [[nodiscard]] Color BorderColor() const { return m_props.BorderColor; }
    void BorderColor(Color iColor) { set(&ButtonProps::BorderColor, iColor); }
    [[nodiscard]] const Text& Tip() const { return m_props.Tip; }
    void Tip(Text sTip) { m_props.Tip = std::move(sTip); }  // no repaint
    [[nodiscard]] std::int32_t Style() const { return m_props.Style; }
    void Style(std::int32_t iStyle) { set(&ButtonProps::Style, iStyle); }
    [[nodiscard]] bool RoundedBorders() const { return m_props.RoundedBorders; }
    void RoundedBorders(bool b) { set(&ButtonProps::RoundedBorders, b); }
    [[nodiscard]] Color BackColorOut() const { return m_props.BackColorOut; }
    void BackColorOut(Color iColor) { set(&ButtonProps::BackColorOut, iColor); }
    [[nodiscard]] bool UseRoundRegions() const { return m_props.UseRoundRegions; }
    // RoundedBorders follows, and the window's shape, and Resize is raised.
    void UseRoundRegions(bool b);
    [[nodiscard]] bool ShowFocus() const { return m_props.ShowFocus; }
    void ShowFocus(bool b) { set(&ButtonProps::ShowFocus, b); }

    void Refresh();         // paints at once
    void ForceLostFocus();  // shows neither focus nor press, wherever the focus is

    // Click and the events of the mouse: see MouseControl.
    Event<std::int16_t&, std::int16_t&> KeyDown;
    Event<std::int16_t&> KeyPress;  // 32 or 13 coming back clicks
    Event<std::int16_t&, std::int16_t&> KeyUp;
    Event<> Resize;

    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::Button;
    }
    [[nodiscard]] platform::AccessibleState accessibleState() const override;
    bool accessibleAction() override;

protected:
    void onPaint() override { pvDraw(); }
    void onResize() override;
    void onEnterFocus() override;
    void onExitFocus() override { ForceLostFocus(); }
    void onMouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y) override;
    void onMouseMove(std::int16_t Button, std::int16_t Shift, float X, float Y) override;
    void onMouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y) override;
    void onKeyDown(std::int16_t& KeyCode, std::int16_t& Shift) override { KeyDown(KeyCode, Shift); }
    void onKeyPress(std::int16_t& KeyAscii) override;
    void onKeyUp(std::int16_t& KeyCode, std::int16_t& Shift) override { KeyUp(KeyCode, Shift); }
    void onAccessKey(std::int16_t code) override;
    void onAmbientChanged() override { pvDraw(); }
    [[nodiscard]] Text accessibleText() const override {
        return withoutAccessMarks(m_props.Caption);
    }
    [[nodiscard]] const Text& tip() const override { return m_props.Tip; }

private:
    template <class T> void set(T ButtonProps::*member, T value) {
        m_props.*member = value;
        pvRefresh();
    }
    void pvDraw();
    void pvRoundWindow() { roundWindow(m_props.UseRoundRegions && m_props.RoundedBorders); }

    ButtonProps m_props;
    bool m_bFocus = false, m_bPressed = false;
};
