#include "controls/DrawnControl.h"

#include "gfx/clsMEMDC.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "gfx/modCtlCommon_src_errors.h"
#include "host/tipService.h"

void DrawnControl::pvRefresh() {
    if (!UserMode() || AutoRedraw()) {
        paintAtOnce();
    } else {
        Invalidate();
    }
}

void DrawnControl::paintAtOnce() {
    if (AutoRedraw()) onPaint();  // the window does not ask for it
    HostWindow::Refresh();
}

void DrawnControl::paintFailed() { ReportCaughtFailure(u"pvDraw"); }

void DrawnControl::handTip() const {
    if (UserMode()) ShowTip(tip(), kTipWidth);
}

void DrawnControl::roundWindow(bool bRound) {
    if (!bRound && !m_bHasRegion) return;
    m_bHasRegion = bRound;
    WindowRegion(bRound ? CreateRoundRegion(ScaleWidth(), ScaleHeight(), kWindowCorner) : 0);
}

void DrawnControl::maskWindow(bool bRound) {
    if (!bRound) {
        BackStyle(1);
        return;
    }
    clsMEMDC mask;
    mask.CreateDC(ScaleWidth(), ScaleHeight());
    DrawRoundRect(
        mask.Hdc(), 0, 0, ScaleWidth(), ScaleHeight(),
        {.bFill = true, .iFillColor = kInMask, .iPenColor = kInMask, .iRadius = kWindowCorner});
    maskWindow(mask);
}

void DrawnControl::maskWindow(clsMEMDC& mask) {
    constexpr Color kBlack = 0x000000;
    MaskColor(kBlack);
    MaskPicture(mask.Picture());
    BackStyle(0);
}

void DrawnControl::readHost(const PropertyBag& oBag, bool bMouse) {
    const Life life(*this);
    Enabled(oBag.ReadProperty(u"Enabled", true));
    if (life) Font(oBag.ReadProperty(u"Font", StdFont()));
    if (life && bMouse) readMouse(oBag);
}

void DrawnControl::writeHost(PropertyBag& oBag, bool bMouse) const {
    oBag.WriteProperty(u"Enabled", Enabled(), true);
    oBag.WriteProperty(u"Font", Font(), StdFont());
    if (bMouse) writeMouse(oBag);
}

void DrawnControl::readMouse(const PropertyBag& oBag) {
    OLEDropMode(oBag.ReadProperty(u"OLEDropMode", std::int16_t{0}));
    MousePointer(oBag.ReadProperty(u"MousePointer", std::int16_t{0}));
    MouseIcon(oBag.ReadProperty(u"MouseIcon", Picture()));
}

void DrawnControl::writeMouse(PropertyBag& oBag) const {
    oBag.WriteProperty(u"OLEDropMode", OLEDropMode(), std::int16_t{0});
    oBag.WriteProperty(u"MousePointer", MousePointer(), std::int16_t{0});
    oBag.WriteProperty(u"MouseIcon", MouseIcon(), Picture());
}
