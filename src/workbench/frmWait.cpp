#include "workbench/frmWait.h"

#include "platform/window/wait.h"
#include "workbench/modMain.h"
#include "workbench/storedValues.h"

namespace {

constexpr Color kWhite = 0xFFFFFF;

}  // namespace

frmWait::frmWait() : Form(platform::WindowKind::Bare) {
    Caption(u"Please wait");  // for helpers of the desktop: there is no title bar
    BackColor(kWhite);
    ClientSize(PixelsX(4890), PixelsY(1695));
}

void frmWait::onLoad() {
    placeControl(*this, lblTip, u"lblTip", {0, 0, ScaleWidth(), ScaleHeight()},
                 StoredValues()
                     .text(u"Caption", u"")
                     .number(u"BackColor", kWhite)
                     .number(u"Alignment", 2)
                     .number(u"VAlignment", 1)
                     .font({.Name = u"Arial", .Size = 9.75, .Bold = true}));
    ApplyUnicodeFont(*this);
    CenterOnScreen();
}

void frmWait::onResize() { lblTip.move(0, 0, ScaleWidth(), ScaleHeight()); }

void frmWait::showNow() { (void)platform::showPainted(hWnd()); }
