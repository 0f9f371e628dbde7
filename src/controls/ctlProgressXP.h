// controls/ctlProgressXP.h: the drawn progress bar.
#pragma once
#include "controls/DrawnControl.h"
#include "gfx/clsMEMDC.h"

struct ProgressProps {  // stored under these names
    std::int16_t Percent = 0;
    Color BackColor = sysColor(5), ForeColor = sysColor(13);  // of the track and of the bar
    bool Border = true;                                       // of the track
    Color BorderColor = kAutoColor;
    bool BorderSpace = true;  // one pixel stays free between border and bar
    bool Spaces = true;       // the bar is made of blocks
    Text Tip{};
    std::int32_t Style = -1, BackStyle = -1;  // of the bar and of the track
    bool RoundedBorders = true;
    Color BackColorOut = kAutoColor;
    bool UseRoundRegions = false;
};

// The two pictures that a progress bar is put together from.
struct ProgressSurfaces {
    clsMEMDC m_oBar, m_oTrack;  // empty for a size without area
    std::int32_t m_lBlockWidth = 0, m_lBlockGap = 1;

    void build(SIZE inner, const ProgressProps& props);
    // Puts them together from (0, 0). Raises as clsMEMDC.
    void paint(HDC hDC, const ProgressProps& props) const;
};

class ctlProgressXP : public OleControl<DrawnControl> {
public:
    ctlProgressXP() { CanGetFocus(false); }

    [[nodiscard]] static const PropertyTable<ProgressProps>& properties();
    void ReadProperties(const PropertyBag& oBag) override;
    void WriteProperties(PropertyBag& oBag) const override;

    // Two names of one value, 0 to 100; any other is ignored. A change shows at once.
    [[nodiscard]] std::int16_t Percent() const { return m_props.Percent; }
    void Percent(std::int16_t iPercent);
    [[nodiscard]] std::int16_t Value() const { return Percent(); }
    void Value(std::int16_t iValue) { Percent(iValue); }

    [[nodiscard]] Color BackColor() const { return HostWindow::BackColor(); }
    void BackColor(Color iColor);
    [[nodiscard]] Color ForeColor() const { return HostWindow::ForeColor(); }
    void ForeColor(Color iColor);
    [[nodiscard]] bool Border() const { return m_props.Border; }
    void Border(bool b) { rebuild(&ProgressProps::Border, b); }
    [[nodiscard]] Color BorderColor() const { return m_props.BorderColor; }
    void BorderColor(Color iColor) { rebuild(&ProgressProps::BorderColor, iColor); }
    [[nodiscard]] bool BorderSpace() const { return m_props.BorderSpace; }
    void BorderSpace(bool b) { rebuild(&ProgressProps::BorderSpace, b); }
    [[nodiscard]] bool Spaces() const { return m_props.Spaces; }
    void Spaces(bool b);
    [[nodiscard]] const Text& Tip() const { return m_props.Tip; }
    void Tip(Text sTip) { m_props.Tip = std::move(sTip); }  // no repaint
    [[nodiscard]] std::int32_t Style() const { return m_props.Style; }
    void Style(std::int32_t i) { rebuild(&ProgressProps::Style, i); }
    [[nodiscard]] std::int32_t BackStyle() const { return m_props.BackStyle; }
    void BackStyle(std::int32_t i) { rebuild(&ProgressProps::BackStyle, i); }
    [[nodiscard]] bool RoundedBorders() const { return m_props.RoundedBorders; }
    void RoundedBorders(bool b) { rebuild(&ProgressProps::RoundedBorders, b); }
    [[nodiscard]] Color BackColorOut() const { return m_props.BackColorOut; }
    void BackColorOut(Color iColor) { rebuild(&ProgressProps::BackColorOut, iColor); }
    [[nodiscard]] bool UseRoundRegions() const { return m_props.UseRoundRegions; }
    void UseRoundRegions(bool b);  // RoundedBorders follows

    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::ProgressBar;
    }
    [[nodiscard]] Text accessibleValue() const override;
    [[nodiscard]] platform::AccessibleRange accessibleRange() const override;

protected:
    void onPaint() override { pvDraw(); }
    void onResize() override { pvResize(); }
    void onMouseMove(std::int16_t, std::int16_t, float, float) override { handTip(); }
    void onAmbientChanged() override { pvResize(); }
    void paintAtOnce() override { HostWindow::Refresh(); }
    [[nodiscard]] const Text& tip() const override { return m_props.Tip; }

private:
    template <class T> void rebuild(T ProgressProps::*member, T value) {
        m_props.*member = value;
        pvResize();
    }
    void pvResize();
    void pvRepaint(bool bNow);
    void pvDraw();

    ProgressProps m_props;
    ProgressSurfaces m_surfaces;
    bool m_bStale = true;  // the surfaces are built anew ahead of the next paint
};
