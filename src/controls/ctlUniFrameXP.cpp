#include "controls/ctlUniFrameXP.h"

#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "gfx/modCtlCommon_ctl_text.h"
#include "platform/window/textout.h"

namespace {

using namespace platform;

constexpr Color kWhite = 0xFFFFFF;
constexpr int kTextAt = 3;           // pixels from the left side of the band
constexpr int kCaptionAt = 5;        // pixels from the left side of the border
constexpr std::int32_t kDark = 171;  // luminance below which a text has a light shadow

Color shadowColor(Color iText) {
    return ColorLuminance(iText) < kDark ? ColorToLuminance(iText, 255) : ColorBrighten(iText, -85);
}

void drawCaption(HDC hDC, TextView padded, RECT area, const FrameProps& props, Color text,
                 std::uint32_t flags) {
    if (props.UseShadow) {
        TextDrawColor(hDC, padded, {area.left + 1, area.top + 1, area.right + 1, area.bottom + 1},
                      shadowColor(text), flags);
    }
    TextDrawColor(hDC, padded, area, text, flags);
}

void paintBand(HDC hDC, SIZE inner, const FrameProps& props, const Text& padded, Color text) {
    const int bottom = TextSize(hDC, padded, DT_NOPREFIX).cy + 2;
    const bool derived = props.TitleBackColor == kAutoColor;
    const Color base = derived ? props.BackColor : props.TitleBackColor;
    GradientH(hDC, 0, 0, inner.cx, bottom, ColorBrighten(base, derived ? -17 : 17),
              ColorBrighten(base, derived ? -34 : -17));
    drawCaption(hDC, padded, {kTextAt, 0, inner.cx - kTextAt, bottom}, props, text,
                DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

void cutTopCorners(HDC hDC, int width, Color border, Color outside) {
    DrawLine(hDC, 0, 2, 2, 0, border);
    DrawLine(hDC, width - 1, 2, width - 3, 0, border);
    DrawLine(hDC, 0, 0, 2, 0, outside);
    DrawLine(hDC, 0, 0, 0, 2, outside);
    DrawLine(hDC, width - 1, 0, width - 3, 0, outside);
    DrawLine(hDC, width - 1, 2, width - 1, 0, outside);
}

void paintClassic(HDC hDC, SIZE inner, const FrameProps& props, const Text& padded, Color text,
                  Color border) {
    if (padded.empty()) {
        DrawRectXY(hDC, 0, 0, inner.cx, inner.cy, border, false);
        DrawRectXY(hDC, 1, 1, inner.cx - 1, inner.cy - 1, kWhite, false);
        return;
    }
    const SIZE size = TextSize(hDC, padded, DT_NOPREFIX);
    const int top = size.cy / 2;
    DrawRectXY(hDC, 0, top, inner.cx, inner.cy, border, false);
    DrawRectXY(hDC, 1, top + 1, inner.cx - 1, inner.cy - 1, kWhite, false);
    const RECT caption{kCaptionAt, 0, kCaptionAt + size.cx, size.cy};
    DrawRect(hDC, caption, props.BackColor, true);  // it interrupts the frame
    drawCaption(hDC, padded, caption, props, text, 0);
}

}  // namespace

void paintFrame(HDC hDC, SIZE inner, const FrameProps& props) {
    const Color text = props.Enabled ? props.ForeColor : kDisabledText;
    const Color border = AutoBorderColor(props.BorderColor, props.BackColor);
    const Text padded = props.Caption.empty() ? Text() : u' ' + props.Caption + u' ';
    DrawRectXY(hDC, 0, 0, inner.cx, inner.cy, props.BackColor, true);
    if (!props.VistaStyle) {
        paintClassic(hDC, inner, props, padded, text, border);
        return;
    }
    if (!padded.empty()) paintBand(hDC, inner, props, padded, text);
    DrawRectXY(hDC, 0, 0, inner.cx, inner.cy, border, false);
    cutTopCorners(hDC, inner.cx, border,
                  props.BackColorOut == kAutoColor ? props.BackColor : props.BackColorOut);
}

// ---- Properties

const PropertyTable<FrameProps>& ctlUniFrameXP::properties() {
    using P = FrameProps;
    static const PropertyTable<P> table{
        {u"Caption", &P::Caption},
        {u"Enabled", &P::Enabled},
        {u"ForeColor", &P::ForeColor},
        {u"BorderColor", &P::BorderColor},
        {u"BackColor", &P::BackColor},
        {u"Tip", &P::Tip},
        {u"VistaStyle", &P::VistaStyle},
        {u"BackColorOut", &P::BackColorOut},
        {u"TitleBackColor", &P::TitleBackColor},
        {u"UseShadow", &P::UseShadow},
    };
    return table;
}

void ctlUniFrameXP::ReadProperties(const PropertyBag& oBag) {
    FrameProps defaults;
    defaults.Caption = Name();
    readHost(oBag, true);
    properties().read(oBag, m_props, defaults);
    if (!UserMode()) HostWindow::Enabled(true);
    tellAccessible(platform::AccessibleChange::Name);
}

void ctlUniFrameXP::WriteProperties(PropertyBag& oBag) const {
    FrameProps defaults;
    defaults.Caption = Name();
    writeHost(oBag, true);
    properties().write(oBag, m_props, defaults);
}

void ctlUniFrameXP::Caption(Text sCaption) {
    set(&FrameProps::Caption, std::move(sCaption));
    tellAccessible(platform::AccessibleChange::Name);
}

void ctlUniFrameXP::Enabled(bool bEnabled) {
    m_props.Enabled = bEnabled;
    const Life life(*this);
    if (UserMode()) HostWindow::Enabled(bEnabled);
    if (life) pvRefresh();
}

void ctlUniFrameXP::onEnabledChanged() {
    if (!UserMode() || isDrawing()) return;
    m_props.Enabled = HostWindow::Enabled();
    pvRefresh();
}

// ---- Painting

void ctlUniFrameXP::pvDraw() {
    guardedPaint([&] {
        if (UserMode()) HostWindow::Enabled(m_props.Enabled);
        HostWindow::ForeColor(m_props.Enabled ? m_props.ForeColor : kDisabledText);
        paintFrame(hDC(), {ScaleWidth(), ScaleHeight()}, m_props);
    });
    if (AutoRedraw()) HostWindow::Refresh();
}
