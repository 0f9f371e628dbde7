// controls/ctlUniLabel.h: drawn captions: the plain label, and the one that does not flicker.
//
// Both are one control but for the way of a paint to the screen. ctlUniLabel draws when the window
// asks for it. ctlUniLabelNoFlick draws at once into a picture that stays, and shows it whole.
#pragma once
#include "controls/DrawnControl.h"

struct LabelProps {  // stored under these names
    Text Caption{};
    Color BackColor = sysColor(15), ForeColor = sysColor(18), BorderColor = kAutoColor;
    std::int32_t Alignment = 0;    // 0 left, 1 right, 2 centre
    std::int32_t VAlignment = 0;   // 0 top, 1 middle, 2 bottom; not with AutoSize
    std::int32_t BackStyle = 1;    // 1 a face, 0 transparent: only the letters stay
    std::int32_t BorderStyle = 0;  // 1 a border
    bool AutoSize = false;
    Text Tip{};
    std::int32_t Style = 0;   // of DrawButtonFace
    std::int16_t Margin = 0;  // pixels on each side; only with AutoSize
    bool RoundedBorders = false;
    Color BackColorOut = kAutoColor;
    bool UseRoundRegions = false;
};

// The size that a label with AutoSize takes, by the context's font.
[[nodiscard]] SIZE labelAutoSize(HDC hDC, const LabelProps& props);
// Where the caption goes, by the context's font, and the flags to draw it with.
[[nodiscard]] RECT labelTextRect(HDC hDC, SIZE inner, const LabelProps& props);
[[nodiscard]] std::uint32_t labelTextFlags(const LabelProps& props);
// Paints the whole control from (0, 0).
void paintLabel(HDC hDC, SIZE inner, const LabelProps& props, bool bEnabled);

class LabelControl : public OleControl<MouseControl> {
public:
    [[nodiscard]] static const PropertyTable<LabelProps>& properties();
    void ReadProperties(const PropertyBag& oBag) override;
    void WriteProperties(PropertyBag& oBag) const override;

    // These change the shape at once, where it follows the text, and ask for a repaint.
    [[nodiscard]] const Text& Caption() const { return m_props.Caption; }
    void Caption(Text sCaption);
    [[nodiscard]] std::int16_t Margin() const { return m_props.Margin; }
    void Margin(std::int16_t iMargin) { reshape(&LabelProps::Margin, iMargin); }
    [[nodiscard]] std::int32_t Alignment() const { return m_props.Alignment; }
    void Alignment(std::int32_t i) { reshape(&LabelProps::Alignment, i); }
    [[nodiscard]] std::int32_t VAlignment() const { return m_props.VAlignment; }
    void VAlignment(std::int32_t i) { reshape(&LabelProps::VAlignment, i); }
    [[nodiscard]] std::int32_t BorderStyle() const { return m_props.BorderStyle; }
    void BorderStyle(std::int32_t i) { reshape(&LabelProps::BorderStyle, i); }
    [[nodiscard]] bool AutoSize() const { return m_props.AutoSize; }
    void AutoSize(bool b) { reshape(&LabelProps::AutoSize, b); }
    [[nodiscard]] bool RoundedBorders() const { return m_props.RoundedBorders; }
    void RoundedBorders(bool b) { reshape(&LabelProps::RoundedBorders, b); }

    // These ask for a repaint only.
    [[nodiscard]] Color BackColor() const { return m_props.BackColor; }
    void BackColor(Color iColor) { set(&LabelProps::BackColor, iColor); }
    [[nodiscard]] Color ForeColor() const { return m_props.ForeColor; }
    void ForeColor(Color iColor) { set(&LabelProps::ForeColor, iColor); }
    [[nodiscard]] Color BorderColor() const { return m_props.BorderColor; }
    void BorderColor(Color iColor) { set(&LabelProps::BorderColor, iColor); }
    [[nodiscard]] std::int32_t Style() const { return m_props.Style; }
    void Style(std::int32_t iStyle) { set(&LabelProps::Style, iStyle); }
    [[nodiscard]] Color BackColorOut() const { return m_props.BackColorOut; }
    void BackColorOut(Color iColor) { set(&LabelProps::BackColorOut, iColor); }
    [[nodiscard]] bool UseRoundRegions() const { return m_props.UseRoundRegions; }
    void UseRoundRegions(bool b) {  // RoundedBorders follows
        m_props.RoundedBorders = b;
        set(&LabelProps::UseRoundRegions, b);
    }

    [[nodiscard]] const Text& Tip() const { return m_props.Tip; }
    void Tip(Text sTip) { m_props.Tip = std::move(sTip); }

    Event<> Resize;

    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::Label;
    }

protected:
    LabelControl() { CanGetFocus(false); }

    void pvDraw(HDC hDCTo);
    // Brings size and mask up to date where they follow the text. Raises Resize on a new size,
    // whose handler may end the control.
    virtual void pvUpdateShape() = 0;
    template <class T> void set(T LabelProps::*member, T value) {
        m_props.*member = value;
        pvRefresh();
    }
    template <class T> void reshape(T LabelProps::*member, T value) {
        m_props.*member = std::move(value);
        pvReshape();
    }
    void pvReshape();
    [[nodiscard]] bool needsMask() const {
        return m_props.BackStyle == 0 || m_props.UseRoundRegions;
    }

    void onCreate() override { pvUpdateShape(); }
    void onResize() override;
    void onFontChanged() override { pvReshape(); }
    [[nodiscard]] Text accessibleText() const override {
        return withoutAccessMarks(m_props.Caption);
    }
    [[nodiscard]] const Text& tip() const override { return m_props.Tip; }

    LabelProps m_props;

private:
    void pvAutoSize(HDC hDCTo);
    void pvMask();
};

class ctlUniLabel final : public LabelControl {
public:
    void Refresh(bool bNow = false);  // bNow: paints at once

protected:
    void onPaint() override { pvDraw(hDC()); }
    void pvUpdateShape() override;

private:
    bool drawOnWindow();
};

class ctlUniLabelNoFlick final : public LabelControl {
public:
    ctlUniLabelNoFlick() { AutoRedraw(true); }

    void Refresh(bool bNow = false);  // paints at once in both cases
    [[nodiscard]] HDC Hdc() const { return hDC(); }
    [[nodiscard]] std::int32_t BackStyle() const { return m_props.BackStyle; }
    void BackStyle(std::int32_t i) { reshape(&LabelProps::BackStyle, i); }

protected:
    void onAmbientChanged() override { paintAtOnce(); }
    void paintAtOnce() override;
    void pvUpdateShape() override { paintAtOnce(); }
};
