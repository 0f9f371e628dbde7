#include "controls/ctlUniToolTip.h"

#include "file/pvWindowsVersion.h"
#include "gfx/modCtlCommon_ctl_text.h"
#include "gfx/rounding.h"
#include "platform/window/input.h"
#include "platform/window/textout.h"

#include <algorithm>

namespace {

constexpr std::int32_t kActivate = 1, kWatch = 2, kHide = 3;
constexpr std::uint32_t kDelay = 400, kWatchPeriod = 100, kShowTime = 3000;  // milliseconds
constexpr int kBelow = 15, kAbove = 5, kBeside = 1;  // pixels from the mouse
constexpr std::int32_t kWindows2000 = 8;             // version code
constexpr std::intptr_t kLayered = 0x80000;

Text trimmed(const Text& s) {
    const std::size_t first = s.find_first_not_of(u' ');
    return first == Text::npos ? Text() : s.substr(first, s.find_last_not_of(u' ') - first + 1);
}

POINT cursor() {
    POINT at;
    platform::GetCursorPos(at);
    return at;
}

}  // namespace

ctlUniToolTip::ctlUniToolTip() : Form(platform::WindowKind::Tip) {
    lblTip.VAlignment(1);
    lblTip.BorderStyle(1);
    lblTip.Style(-1);
    lblTip.BackColor(sysColor(24));
    lblTip.ForeColor(sysColor(23));
    lblTip.Margin(2);
    lblTip.AutoSize(true);
}

ctlUniToolTip::~ctlUniToolTip() {
    endTips();
    destroy();
}

void ctlUniToolTip::onLoad() { lblTip.create(hWnd(), {0, 0, 1, 1}); }

void ctlUniToolTip::onUnload(bool&) { endTips(); }

void ctlUniToolTip::endTips() {
    if (m_bUnloading) return;
    m_bUnloading = true;
    tipService().m_bTipsActive = false;
    TimerActivate.TmrStop();
    TimerActiveMM.TmrStop();
    TimerHideTip.TmrStop();
}

// ---- Text

void ctlUniToolTip::pvSetCaption(const Text& sTip) { lblTip.Caption(trimmed(sTip) + u' '); }

bool ctlUniToolTip::endsTip(const Text& sTip, const std::optional<Text>& sTag) {
    if (sTag) m_sTag = *sTag;
    if (!trimmed(sTip).empty()) return false;
    HideTip();
    m_sTip = sTip;
    return true;
}

void ctlUniToolTip::SetTip(const Text& sTip, std::int32_t lMaxWidth,
                           const std::optional<Text>& sTag) {
    if (m_bUnloading || endsTip(sTip, sTag)) return;
    const bool same = sTip == m_sTip && cursor() == m_tCursor;
    if (same && !tipService().m_bPersistentTip) return;
    if (!same && TipIsVisible()) HideTip();
    TimerActivate.TmrStop();
    TimerHideTip.TmrStop();
    m_sTip = sTip;
    pvSetCaption(sTip);
    m_lMaxWidth = lMaxWidth;
    if (TipIsVisible()) pvPlace();
    m_tCursor = cursor();
    (void)TimerActivate.TmrStart(*this, kDelay, kActivate);  // without timers there are no tips
    tellAccessible(platform::AccessibleChange::Name);
}

void ctlUniToolTip::UpdateTip(const Text& sTip, std::int32_t lMaxWidth,
                              const std::optional<Text>& sTag) {
    if (m_bUnloading || endsTip(sTip, sTag)) return;
    pvSetCaption(sTip);
    m_sTip = sTip;
    m_lMaxWidth = lMaxWidth;
    if (TipIsVisible()) pvPlace();
    tellAccessible(platform::AccessibleChange::Name);
}

void ctlUniToolTip::HideTip() {
    TimerActivate.TmrStop();
    TimerActiveMM.TmrStop();
    TimerHideTip.TmrStop();
    Hide();
}

// ---- Timers

void ctlUniToolTip::UniTimerFired(std::uint32_t, std::int32_t nID) {
    switch (nID) {
    case kActivate:
        pvActivateFired();
        break;
    case kWatch:
        if (cursor() != m_tCursor) {
            HideTip();
        } else if (!TipIsVisible()) {
            TimerActiveMM.TmrStop();
        }
        break;
    default:
        pvHideFired();
        break;
    }
}

void ctlUniToolTip::pvActivateFired() {
    if (cursor() != m_tCursor) {
        HideTip();
        return;
    }
    TimerActivate.TmrStop();
    pvPlace();
    TimerHideTip.TmrStop();
    TimerActiveMM.TmrStop();
    (void)TimerHideTip.TmrStart(*this, kShowTime, kHide);
    (void)TimerActiveMM.TmrStart(*this, kWatchPeriod, kWatch);
}

void ctlUniToolTip::pvHideFired() {
    const POINT now = cursor();
    const bool rests = now.x == m_tCursor.x || now.y == m_tCursor.y;
    if (!tipService().m_bPersistentTip || !rests) {
        HideTip();
        return;
    }
    TimerHideTip.TmrStop();
    (void)TimerHideTip.TmrStart(*this, kShowTime, kHide);
}

// ---- Size and place

void ctlUniToolTip::pvMeasure() {
    const SIZE line = TextSize(lblTip.Hdc(), lblTip.Caption(), 0);
    if (m_lMaxWidth < 1 || line.cx <= m_lMaxWidth) {
        lblTip.AutoSize(true);
    } else {
        RECT text{0, 0, m_lMaxWidth, line.cy};
        platform::DrawTextW(lblTip.Hdc(), lblTip.Caption(), text,
                            platform::DT_CALCRECT | platform::DT_WORDBREAK |
                                platform::DT_EXPANDTABS);
        lblTip.AutoSize(false);
        const int padding = 2 * lblTip.Margin();
        lblTip.move(0, 0, text.right - text.left + padding, text.bottom - text.top + padding);
    }
    if (lblTip.ScaleWidth() == ScaleWidth() && lblTip.ScaleHeight() == ScaleHeight()) return;
    ClientSize(lblTip.ScaleWidth(), lblTip.ScaleHeight());
    Refresh();
}

void ctlUniToolTip::pvPlace() {
    if (m_bUnloading || !Load()) return;
    pvMeasure();
    const int width = m_oScreens.VirtualWidth(), height = m_oScreens.VirtualHeight();
    const int below = m_tCursor.y + kBelow, beside = m_tCursor.x + kBeside;
    const int top = below + ScaleHeight() <= height ? below : m_tCursor.y - kAbove - ScaleHeight();
    const int left = beside + ScaleWidth() <= width ? beside : width - ScaleWidth();
    const bool visible = TipIsVisible();
    std::uint32_t flags = platform::SWP_NOSIZE | platform::SWP_NOACTIVATE |
                          platform::SWP_NOOWNERZORDER | platform::SWP_ASYNCWINDOWPOS;
    if (visible) flags |= platform::SWP_NOZORDER;
    // The place comes first, or the tip would be seen on its way.
    platform::SetWindowPos(hWnd(), platform::HWND_TOPMOST, left, top, 0, 0, flags);
    if (!visible) platform::ShowWindow(hWnd(), platform::SW_SHOWNOACTIVATE);
    if (tipService().m_iTipTransparency != m_iTransparency) {
        m_iTransparency = tipService().m_iTipTransparency;
        pvSetTransparency(m_iTransparency);
    }
}

std::uint8_t ctlUniToolTip::alphaOf(std::int16_t iTransparency) {
    const int percent = std::clamp<int>(iTransparency, 0, 100);
    return static_cast<std::uint8_t>(255 - gfx::roundHalfEven(255.0 / 100.0 * percent));
}

void ctlUniToolTip::pvSetTransparency(std::int16_t iPercent) {
    if (m_bUnloading || pvWindowsVersion() < kWindows2000) return;
    const std::intptr_t style = platform::GetWindowLongW(hWnd(), platform::GWL_EXSTYLE);
    platform::SetWindowLongW(hWnd(), platform::GWL_EXSTYLE, style | kLayered);
    platform::SetLayeredWindowAttributes(hWnd(), 0, alphaOf(iPercent), platform::LWA_ALPHA);
}
