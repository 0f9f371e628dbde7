#include "controls/ctlUniButtonXP.h"

#include "gfx/modCtlCommon_ctl_faces.h"
#include "gfx/modCtlCommon_ctl_text.h"
#include "platform/window/textout.h"

namespace {

constexpr std::int16_t kSpace = 32, kEnter = 13, kEscape = 27;

}  // namespace

void paintButton(HDC hDC, SIZE inner, const ButtonProps& props, const ButtonState& state) {
    const RECT area{0, 0, inner.cx, inner.cy};
    DrawButtonFace(hDC, area,
                   {.iBackColor = props.BackColor,
                    .bBorder = true,
                    .iBorderColor = props.BorderColor,
                    .bPressed = state.bPressed,
                    .bDefault = state.bDefault && state.bEnabled,
                    .bCancel = state.bCancel && state.bEnabled,
                    .bFocus = state.bFocus && !state.bPressed && state.bEnabled && props.ShowFocus,
                    .bRounded = props.RoundedBorders,
                    .iStyle = props.Style,
                    .iOuterColor = props.BackColorOut,
                    .bAdapt = true});
    if (props.Caption.empty()) return;
    TextDrawColor(hDC, props.Caption, area, state.bEnabled ? props.ForeColor : kDisabledText,
                  platform::DT_CENTER | platform::DT_VCENTER | platform::DT_SINGLELINE);
}

ctlUniButtonXP::ctlUniButtonXP() { DefaultCancel(true); }

const PropertyTable<ButtonProps>& ctlUniButtonXP::properties() {
    using P = ButtonProps;
    static const PropertyTable<P> table{
        {u"Caption", &P::Caption},
        {u"BackColor", &P::BackColor},
        {u"ForeColor", &P::ForeColor},
        {u"BorderColor", &P::BorderColor},
        {u"Tip", &P::Tip},
        {u"Style", &P::Style},
        {u"RoundedBorders", &P::RoundedBorders},
        {u"BackColorOut", &P::BackColorOut},
        {u"UseRoundRegions", &P::UseRoundRegions},
        {u"ShowFocus", &P::ShowFocus},
    };
    return table;
}

void ctlUniButtonXP::ReadProperties(const PropertyBag& oBag) {
    ButtonProps defaults;
    defaults.Caption = Name();
    properties().read(oBag, m_props, defaults);
    readHost(oBag, false);
    pvRoundWindow();
    tellAccessible(platform::AccessibleChange::Name);
}

void ctlUniButtonXP::WriteProperties(PropertyBag& oBag) const {
    ButtonProps defaults;
    defaults.Caption = Name();
    properties().write(oBag, m_props, defaults);
    writeHost(oBag, false);
}

// ---- Properties

void ctlUniButtonXP::Caption(Text sCaption) {
    m_props.Caption = std::move(sCaption);
    Refresh();
    tellAccessible(platform::AccessibleChange::Name);
}

void ctlUniButtonXP::UseRoundRegions(bool b) {
    m_props.UseRoundRegions = m_props.RoundedBorders = b;
    const Life life(*this);
    onResize();
    if (life) pvRefresh();
}

// ---- Painting

void ctlUniButtonXP::pvDraw() {
    guardedPaint([&] {
        HostWindow::ForeColor(Enabled() ? m_props.ForeColor : kDisabledText);
        paintButton(hDC(), {ScaleWidth(), ScaleHeight()}, m_props,
                    {.bEnabled = Enabled(),
                     .bDefault = Default(),
                     .bCancel = Cancel(),
                     .bFocus = m_bFocus,
                     .bPressed = m_bPressed});
    });
}

void ctlUniButtonXP::Refresh() {
    // No paint notification comes for a hidden window, nor for a picture that stays.
    if (AutoRedraw() || !platform::IsWindowVisible(hWnd())) pvDraw();
    HostWindow::Refresh();
}

void ctlUniButtonXP::onResize() {
    pvRoundWindow();
    if (AutoRedraw()) pvRefresh();
    Resize();
}

// ---- State

void ctlUniButtonXP::onEnterFocus() {
    m_bFocus = true;
    pvRefresh();
}

void ctlUniButtonXP::ForceLostFocus() {
    if (!m_bFocus) return;
    m_bFocus = m_bPressed = false;
    pvRefresh();
}

void ctlUniButtonXP::onMouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y) {
    m_bPressed = Button == 1;
    pvRefresh();
    MouseDown(Button, Shift, X, Y);
}

void ctlUniButtonXP::onMouseMove(std::int16_t Button, std::int16_t Shift, float X, float Y) {
    m_bPressed = Button == 1;
    MouseControl::onMouseMove(Button, Shift, X, Y);
}

void ctlUniButtonXP::onMouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y) {
    m_bPressed = false;
    pvRefresh();
    MouseUp(Button, Shift, X, Y);
}

void ctlUniButtonXP::onKeyPress(std::int16_t& KeyAscii) {
    const Life life(*this);
    KeyPress(KeyAscii);
    if (life && (KeyAscii == kSpace || KeyAscii == kEnter)) Click();
}

void ctlUniButtonXP::onAccessKey(std::int16_t code) {
    if (Enabled() && (code == kEnter || code == kEscape)) Click();
}

platform::AccessibleState ctlUniButtonXP::accessibleState() const {
    platform::AccessibleState state = MouseControl::accessibleState();
    state.pressed = m_bPressed;
    return state;
}

bool ctlUniButtonXP::accessibleAction() {
    if (!Enabled()) return false;
    Click();
    return true;
}
