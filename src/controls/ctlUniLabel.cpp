#include "controls/ctlUniLabel.h"

#include "gfx/Selection.h"
#include "gfx/clsMEMDC.h"
#include "gfx/modCtlCommon_ctl_faces.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "gfx/modCtlCommon_ctl_text.h"
#include "gfx/rounding.h"
#include "platform/window/textout.h"

#include <algorithm>

namespace {

constexpr std::int32_t kRight = 1, kCentre = 2, kMiddle = 1;
constexpr int kBorderWidth = 2;  // pixels on each side

}  // namespace

// ---- Geometry and painting

SIZE labelAutoSize(HDC hDC, const LabelProps& props) {
    const int width = std::max(TextMaxLineWidth(hDC, props.Caption, 0), 1);
    RECT text{0, 0, width, 1};
    platform::DrawTextW(hDC, props.Caption, text, platform::DT_CALCRECT | platform::DT_EXPANDTABS);
    const int padding = 2 * props.Margin + (props.BorderStyle == 1 ? 2 * kBorderWidth : 0);
    return {width + padding, text.bottom - text.top + padding};
}

std::uint32_t labelTextFlags(const LabelProps& props) {
    std::uint32_t flags = platform::DT_EXPANDTABS;
    if (!props.AutoSize) flags |= platform::DT_WORDBREAK;
    if (props.Alignment == kCentre) flags |= platform::DT_CENTER;
    if (props.Alignment == kRight) flags |= platform::DT_RIGHT;
    return flags;
}

RECT labelTextRect(HDC hDC, SIZE inner, const LabelProps& props) {
    RECT area{0, 0, inner.cx, inner.cy};
    const int inset = (props.BorderStyle == 1 ? kBorderWidth : 0) +
                      (props.AutoSize ? static_cast<int>(props.Margin) : 0);
    platform::InflateRect(area, -inset, -inset);
    if (props.AutoSize || props.VAlignment == 0) return area;

    RECT text{0, 0, inner.cx, inner.cy};
    platform::DrawTextW(hDC, props.Caption, text,
                        platform::DT_CALCRECT | platform::DT_WORDBREAK | platform::DT_EXPANDTABS);
    const int room = area.bottom - area.top - (text.bottom - text.top);
    const int offset = props.VAlignment == kMiddle ? gfx::roundHalfEven(room / 2.0) : room;
    area.top += std::max(offset, 0);
    return area;
}

void paintLabel(HDC hDC, SIZE inner, const LabelProps& props, bool bEnabled) {
    const RECT area{0, 0, inner.cx, inner.cy};
    if (props.BackStyle != 0) {
        DrawButtonFace(hDC, area,
                       {.iBackColor = props.BackColor,
                        .bBorder = props.BorderStyle == 1,
                        .iBorderColor = props.BorderColor,
                        .bRounded = props.RoundedBorders,
                        .iStyle = props.Style,
                        .iOuterColor = props.BackColorOut,
                        .bAdapt = true});
    } else {
        DrawRect(hDC, area, props.BackColor, true);
    }
    TextDrawColor(hDC, props.Caption, labelTextRect(hDC, inner, props),
                  bEnabled ? props.ForeColor : kDisabledText, labelTextFlags(props));
}

// ---- Properties

const PropertyTable<LabelProps>& LabelControl::properties() {
    using P = LabelProps;
    static const PropertyTable<P> table{
        {u"Caption", &P::Caption},
        {u"BackColor", &P::BackColor},
        {u"ForeColor", &P::ForeColor},
        {u"BorderColor", &P::BorderColor},
        {u"Alignment", &P::Alignment},
        {u"VAlignment", &P::VAlignment},
        {u"BackStyle", &P::BackStyle},
        {u"BorderStyle", &P::BorderStyle},
        {u"AutoSize", &P::AutoSize},
        {u"Tip", &P::Tip},
        {u"Style", &P::Style},
        {u"Margin", &P::Margin},
        {u"RoundedBorders", &P::RoundedBorders},
        {u"BackColorOut", &P::BackColorOut},
        {u"UseRoundRegions", &P::UseRoundRegions},
    };
    return table;
}

void LabelControl::ReadProperties(const PropertyBag& oBag) {
    const Life life(*this);
    properties().read(oBag, m_props, {});
    readHost(oBag, true);
    if (life) pvUpdateShape();
    if (life) tellAccessible(platform::AccessibleChange::Name);
}

void LabelControl::WriteProperties(PropertyBag& oBag) const {
    properties().write(oBag, m_props, {});
    writeHost(oBag, true);
}

void LabelControl::Caption(Text sCaption) {
    const Life life(*this);
    reshape(&LabelProps::Caption, std::move(sCaption));
    if (life) tellAccessible(platform::AccessibleChange::Name);
}

void LabelControl::pvReshape() {
    const Life life(*this);
    pvUpdateShape();
    if (life) pvRefresh();
}

void LabelControl::onResize() {
    if (!isDrawing()) pvRefresh();
    Resize();
}

// ---- Painting

void LabelControl::pvAutoSize(HDC hDCTo) {
    if (!m_props.AutoSize) return;
    const SIZE wanted = labelAutoSize(hDCTo, m_props);
    const SIZE present{ScaleWidth(), ScaleHeight()};
    if (wanted == present) return;
    const int shrunk = present.cx - wanted.cx;
    int left = Left();
    if (m_props.Alignment == kCentre) left += gfx::roundHalfEven(shrunk / 2.0);
    if (m_props.Alignment == kRight) left += shrunk;
    move(left, Top(), wanted.cx, wanted.cy);
}

// Only the letters of a transparent label stay of the window.
void LabelControl::pvMask() {
    if (m_props.BackStyle != 0) {
        maskWindow(m_props.UseRoundRegions);
        return;
    }
    clsMEMDC letters;
    letters.CreateDC(ScaleWidth(), ScaleHeight());
    {
        const gfx::Selection font(letters.Hdc(), hFont());
        TextDrawColor(letters.Hdc(), m_props.Caption,
                      labelTextRect(letters.Hdc(), {ScaleWidth(), ScaleHeight()}, m_props), kInMask,
                      labelTextFlags(m_props));
    }
    maskWindow(letters);
}

void LabelControl::pvDraw(HDC hDCTo) {
    if (hDCTo == 0) return;
    guardedPaint([&] {
        const Life life(*this);
        pvAutoSize(hDCTo);
        if (!life || hWnd() == 0) return;  // a handler of Resize has ended it
        const Color color = Enabled() ? m_props.ForeColor : kDisabledText;
        if (HostWindow::ForeColor() != color) HostWindow::ForeColor(color);
        pvMask();
        paintLabel(hDCTo, {ScaleWidth(), ScaleHeight()}, m_props, Enabled());
    });
}

// ---- ctlUniLabel

bool ctlUniLabel::drawOnWindow() {
    const HDC window = hWnd() == 0 ? 0 : platform::GetDC(hWnd());
    if (window == 0) return false;
    const HWND owner = hWnd();  // a handler may end the window meanwhile
    platform::SetBkMode(window, platform::TRANSPARENT);
    {
        const gfx::Selection font(window, hFont());
        pvDraw(window);
    }
    platform::ReleaseDC(owner, window);
    return true;
}

void ctlUniLabel::pvUpdateShape() {
    if (needsMask()) (void)drawOnWindow();
}

void ctlUniLabel::Refresh(bool bNow) {
    const Life life(*this);
    pvUpdateShape();
    if (!life) return;
    if (!bNow || !drawOnWindow()) {
        if (life) pvRefresh();
    } else if (life && hWnd() != 0) {
        platform::UpdateWindow(hWnd());
    }
}

// ---- ctlUniLabelNoFlick

void ctlUniLabelNoFlick::Refresh(bool) { pvRefresh(); }

void ctlUniLabelNoFlick::paintAtOnce() {
    const Life life(*this);
    pvDraw(hDC());
    if (life && !isDrawing()) HostWindow::Refresh();
}
