#include "controls/ctlProgressXP.h"

#include "gfx/modCtlCommon_ctl_faces.h"
#include "gfx/rounding.h"

#include <algorithm>
#include <string>

namespace {

constexpr int kBarEnd = 5;  // columns of the bar's rounded end

}  // namespace

// ---- Painting

void ProgressSurfaces::build(SIZE inner, const ProgressProps& props) {
    m_oTrack.Destroy();
    m_oBar.Destroy();
    m_lBlockWidth = 0;
    m_lBlockGap = 1;
    if (inner.cx < 1 || inner.cy < 1) return;
    m_oTrack.CreateDC(inner.cx, inner.cy);
    DrawButtonFace(m_oTrack.Hdc(), {0, 0, inner.cx, inner.cy},
                   {.iBackColor = props.BackColor,
                    .bBorder = props.Border,
                    .iBorderColor = props.BorderColor,
                    .bRounded = props.RoundedBorders,
                    .iStyle = props.BackStyle,
                    .iOuterColor = props.BackColorOut,
                    .bAdapt = true});

    const int inset = (props.Border ? 2 : 0) + (props.BorderSpace ? 2 : 0);
    const SIZE bar{inner.cx - inset, inner.cy - inset};
    if (bar.cx < 1 || bar.cy < 1) return;
    m_oBar.CreateDC(bar.cx, bar.cy);
    DrawButtonFace(m_oBar.Hdc(), {0, 0, bar.cx, bar.cy},
                   {.iBackColor = props.ForeColor, .iStyle = props.Style, .bAdapt = true});
    m_lBlockGap = std::max(gfx::roundHalfEven(bar.cy / 20.0), 1);
    m_lBlockWidth = bar.cy / 2;
}

void ProgressSurfaces::paint(HDC hDC, const ProgressProps& props) const {
    if (m_oTrack.Hdc() == 0) return;
    clsMEMDC whole;
    whole.CloneFromHdc(m_oTrack.Hdc());
    const int width = m_oBar.Width(), height = m_oBar.Height();
    const int filled = gfx::roundHalfEven(width / 100.0 * props.Percent);
    const int offset = (props.Border ? 1 : 0) + (props.BorderSpace ? 1 : 0);
    const auto copy = [&](int to, int from, int columns) {
        if (columns < 1) return;
        m_oBar.PaintPicture(whole.Hdc(), offset + to, offset, columns, height, from, 0, columns,
                            height);
    };
    if (props.Spaces) {
        for (int x = 0; x < filled; x += m_lBlockWidth + m_lBlockGap) {
            copy(x, x, std::min(m_lBlockWidth, width - x));
        }
    } else if (filled <= kBarEnd) {
        copy(0, width - filled, filled);
    } else {
        copy(0, 0, filled - kBarEnd);
        copy(filled - kBarEnd, width - kBarEnd, kBarEnd);  // the rounded end stands at the tip
    }
    whole.PaintPicture(hDC);
}

// ---- Properties

const PropertyTable<ProgressProps>& ctlProgressXP::properties() {
    using P = ProgressProps;
    static const PropertyTable<P> table{
        {u"Percent", &P::Percent},
        {u"BackColor", &P::BackColor},
        {u"ForeColor", &P::ForeColor},
        {u"Border", &P::Border},
        {u"BorderColor", &P::BorderColor},
        {u"BorderSpace", &P::BorderSpace},
        {u"Spaces", &P::Spaces},
        {u"Tip", &P::Tip},
        {u"Style", &P::Style},
        {u"BackStyle", &P::BackStyle},
        {u"RoundedBorders", &P::RoundedBorders},
        {u"BackColorOut", &P::BackColorOut},
        {u"UseRoundRegions", &P::UseRoundRegions},
    };
    return table;
}

void ctlProgressXP::ReadProperties(const PropertyBag& oBag) {
    properties().read(oBag, m_props, {});
    m_props.Percent = std::clamp<std::int16_t>(m_props.Percent, 0, 100);
    HostWindow::BackColor(m_props.BackColor);
    HostWindow::ForeColor(m_props.ForeColor);
    readMouse(oBag);
    pvResize();
}

void ctlProgressXP::WriteProperties(PropertyBag& oBag) const {
    properties().write(oBag, m_props, {});
    writeMouse(oBag);
}

void ctlProgressXP::Percent(std::int16_t iPercent) {
    if (iPercent < 0 || iPercent > 100 || iPercent == m_props.Percent) return;
    m_props.Percent = iPercent;
    const Life life(*this);
    pvRepaint(true);
    if (life) tellAccessible(platform::AccessibleChange::Value);
}

void ctlProgressXP::BackColor(Color iColor) {
    HostWindow::BackColor(iColor);
    rebuild(&ProgressProps::BackColor, iColor);
}

void ctlProgressXP::ForeColor(Color iColor) {
    HostWindow::ForeColor(iColor);
    rebuild(&ProgressProps::ForeColor, iColor);
}

void ctlProgressXP::Spaces(bool b) {
    m_props.Spaces = b;
    pvRepaint(false);
}

void ctlProgressXP::UseRoundRegions(bool b) {
    m_props.RoundedBorders = b;
    rebuild(&ProgressProps::UseRoundRegions, b);
}

Text ctlProgressXP::accessibleValue() const {
    return fromUtf8(std::to_string(m_props.Percent) + '%');
}

platform::AccessibleRange ctlProgressXP::accessibleRange() const {
    return {0, 100, m_props.Percent};
}

// ---- Repaints

// The surfaces wait for the paint, so that many changes in a row build them once.
void ctlProgressXP::pvResize() {
    m_bStale = true;
    guardedPaint([&] { maskWindow(m_props.UseRoundRegions && m_props.RoundedBorders); });
    pvRepaint(false);
}

void ctlProgressXP::pvRepaint(bool bNow) {
    if (AutoRedraw()) pvDraw();
    if (bNow) {
        HostWindow::Refresh();
    } else {
        pvRefresh();
    }
}

void ctlProgressXP::pvDraw() {
    guardedPaint([&] {
        if (m_bStale) m_surfaces.build({ScaleWidth(), ScaleHeight()}, m_props);
        m_bStale = false;
        m_surfaces.paint(hDC(), m_props);
    });
}
