// controls/ctlUniFrameXP.h: the drawn frame around other controls.
#pragma once
#include "controls/DrawnControl.h"

struct FrameProps {  // stored under these names
    Text Caption{};  // the control's own name, where none is stored
    bool Enabled = true;
    Color ForeColor = sysColor(6), BorderColor = kAutoColor, BackColor = sysColor(15);
    Text Tip{};
    bool VistaStyle = true;             // a title band in place of a caption in the border
    Color BackColorOut = kAutoColor;    // of the cut corners; -1: BackColor
    Color TitleBackColor = kAutoColor;  // of the band; -1: made from BackColor
    bool UseShadow = false;             // behind the text
};
// Paints the whole control from (0, 0).
void paintFrame(HDC hDC, SIZE inner, const FrameProps& props);

class ctlUniFrameXP : public OleControl<MouseControl> {
public:
    ctlUniFrameXP() { CanGetFocus(false); }

    [[nodiscard]] static const PropertyTable<FrameProps>& properties();
    void ReadProperties(const PropertyBag& oBag) override;
    void WriteProperties(PropertyBag& oBag) const override;

    [[nodiscard]] const Text& Caption() const { return m_props.Caption; }
    void Caption(Text sCaption);
    // In a running program the window and all in it follow; in a designer it stays enabled.
    [[nodiscard]] bool Enabled() const { return m_props.Enabled; }
    void Enabled(bool bEnabled);
    [[nodiscard]] Color ForeColor() const { return m_props.ForeColor; }
    void ForeColor(Color iColor) { set(&FrameProps::ForeColor, iColor); }
    [[nodiscard]] Color BorderColor() const { return m_props.BorderColor; }
    void BorderColor(Color iColor) { set(&FrameProps::BorderColor, iColor); }
    [[nodiscard]] Color BackColor() const { return m_props.BackColor; }
    void BackColor(Color iColor) { set(&FrameProps::BackColor, iColor); }
    [[nodiscard]] const Text& Tip() const { return m_props.Tip; }
    void Tip(Text sTip) { m_props.Tip = std::move(sTip); }  // no repaint
    [[nodiscard]] bool VistaStyle() const { return m_props.VistaStyle; }
    void VistaStyle(bool b) { set(&FrameProps::VistaStyle, b); }
    [[nodiscard]] Color BackColorOut() const { return m_props.BackColorOut; }
    void BackColorOut(Color iColor) { set(&FrameProps::BackColorOut, iColor); }
    [[nodiscard]] Color TitleBackColor() const { return m_props.TitleBackColor; }
    void TitleBackColor(Color iColor) { set(&FrameProps::TitleBackColor, iColor); }
    [[nodiscard]] bool UseShadow() const { return m_props.UseShadow; }
    void UseShadow(bool b) { set(&FrameProps::UseShadow, b); }

    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::Group;
    }

protected:
    void onPaint() override { pvDraw(); }
    void onResize() override { pvRefresh(); }
    void onEnabledChanged() override;
    void paintAtOnce() override { pvDraw(); }
    // The band shows a "&" as it is, the border underlines what stands behind it.
    [[nodiscard]] Text accessibleText() const override {
        return m_props.VistaStyle ? m_props.Caption : withoutAccessMarks(m_props.Caption);
    }
    [[nodiscard]] const Text& tip() const override { return m_props.Tip; }

private:
    template <class T> void set(T FrameProps::*member, T value) {
        m_props.*member = value;
        pvRefresh();
    }
    void pvDraw();

    FrameProps m_props;
};
