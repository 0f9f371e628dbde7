#include "controls/ctlUniCheckXP.h"

#include "gfx/modCtlCommon_ctl_faces.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "gfx/modCtlCommon_ctl_text.h"
#include "gfx/rounding.h"
#include "platform/window/textout.h"

#include <algorithm>

namespace {

constexpr int kBox = 15;     // pixels, both ways
constexpr int kTextAt = 19;  // from the side of the box
constexpr std::int16_t kSpace = 32, kEnter = 13;
constexpr std::uint32_t kMeasure = platform::DT_EXPANDTABS | platform::DT_EDITCONTROL;

void paintMark(HDC hDC, const RECT& box, Color color) {
    const int cx = box.left + 6, cy = box.top + 8;
    for (int i = 0; i < 3; ++i) DrawLine(hDC, cx, cy + i, cx - 3, cy - 3 + i, color);
    for (int i = 0; i < 3; ++i) DrawLine(hDC, cx, cy + i, cx + 5, cy - 5 + i, color);
}

RECT focusRect(const RECT& text, SIZE inner) {
    return {std::max(text.left - 1, 0), std::max(text.top - 1, 0),
            std::min(text.right + 2, inner.cx), std::min(text.bottom + 2, inner.cy)};
}

}  // namespace

RECT checkBoxRect(SIZE inner, const CheckProps& props) {
    const int top = gfx::roundHalfEven(inner.cy / 2.0 - 7.5);
    const int left = props.Align != 0 ? inner.cx - kBox : 0;
    return {left, top, left + kBox, top + kBox};
}

RECT checkTextRect(HDC hDC, SIZE inner, const CheckProps& props) {
    // Without a caption the focus shows around the box.
    if (props.Caption.empty()) return checkBoxRect(inner, props);
    const RECT area = props.Align != 0 ? RECT{1, 1, inner.cx - kTextAt, inner.cy - 1}
                                       : RECT{kTextAt, 1, inner.cx - 1, inner.cy - 1};
    const SIZE text =
        TextSizeInRect(hDC, props.Caption, area.left, area.top, area.right, area.bottom, kMeasure);
    const int top = (inner.cy - text.cy) / 2;
    if (props.Align != 0) return {area.right - text.cx, top, area.right, top + text.cy};
    return {area.left, top, area.left + text.cx, top + text.cy};
}

void paintCheck(HDC hDC, SIZE inner, const CheckProps& props, const CheckState& state) {
    DrawRect(hDC, {0, 0, inner.cx, inner.cy}, props.BackColor, true);
    const RECT box = checkBoxRect(inner, props);
    ButtonFace face{
        .bBorder = true, .iBorderColor = props.BorderColor, .bRounded = true, .bAdapt = true};
    if (state.bEnabled) {
        face.iBackColor = props.CheckBackColor;
        face.iStyle = props.Style;
    } else {
        face.iBackColor = props.BackColor;
        face.bPressed = true;
        face.iStyle = 1;
    }
    DrawButtonFace(hDC, box, face);
    for (const int x : {box.left, box.right - 1}) {
        for (const int y : {box.top, box.bottom - 1}) DrawPixel(hDC, x, y, props.BackColor);
    }
    if (props.Pressed) paintMark(hDC, box, state.bEnabled ? props.CheckForeColor : kDisabledText);

    const bool showsFocus = state.bFocus && props.ShowFocus;
    if (props.Caption.empty() && !showsFocus) return;
    const RECT text = checkTextRect(hDC, inner, props);
    if (!props.Caption.empty()) {
        TextDrawColor(hDC, props.Caption, text, state.bEnabled ? props.ForeColor : kDisabledText,
                      kMeasure | platform::DT_WORDBREAK);
    }
    if (showsFocus) DrawFocus(hDC, focusRect(text, inner));
}

// ---- Properties

const PropertyTable<CheckProps>& ctlUniCheckXP::properties() {
    using P = CheckProps;
    static const PropertyTable<P> table{
        {u"Caption", &P::Caption},
        {u"Align", &P::Align},
        {u"CheckBackColor", &P::CheckBackColor},
        {u"CheckForeColor", &P::CheckForeColor},
        {u"BackColor", &P::BackColor},
        {u"ForeColor", &P::ForeColor},
        {u"BorderColor", &P::BorderColor},
        {u"Pressed", &P::Pressed},
        {u"Tip", &P::Tip},
        {u"Style", &P::Style},
        {u"ShowFocus", &P::ShowFocus},
    };
    return table;
}

void ctlUniCheckXP::ReadProperties(const PropertyBag& oBag) {
    CheckProps defaults;
    defaults.Caption = Name();
    properties().read(oBag, m_props, defaults);
    pvSetAccessKey();
    readHost(oBag, true);
    tellAccessible(platform::AccessibleChange::Name);
}

void ctlUniCheckXP::WriteProperties(PropertyBag& oBag) const {
    CheckProps defaults;
    defaults.Caption = Name();
    properties().write(oBag, m_props, defaults);
    writeHost(oBag, true);
}

void ctlUniCheckXP::Caption(Text sCaption) {
    m_props.Caption = std::move(sCaption);
    pvSetAccessKey();
    pvRefresh();
    tellAccessible(platform::AccessibleChange::Name);
}

// The marked character; the last one of several, which is also the one that is underlined.
void ctlUniCheckXP::pvSetAccessKey() {
    Text keys;
    const Text& s = m_props.Caption;
    for (std::size_t i = 0; i + 1 < s.size(); ++i) {
        if (s[i] != u'&') continue;
        ++i;
        if (s[i] != u'&') keys = s[i];
    }
    AccessKeys(std::move(keys));
}

void ctlUniCheckXP::Pressed(bool bPressed) {
    if (bPressed == m_props.Pressed) return;
    m_props.Pressed = bPressed;
    pvRefresh();
    const Life life(*this);
    Click();
    if (life) tellAccessible(platform::AccessibleChange::State);
}

// ---- Painting

void ctlUniCheckXP::pvDraw() {
    guardedPaint([&] {
        HostWindow::ForeColor(Enabled() ? m_props.ForeColor : kDisabledText);
        paintCheck(hDC(), {ScaleWidth(), ScaleHeight()}, m_props,
                   {.bEnabled = Enabled(), .bFocus = m_bFocus});
    });
}

// ---- State

void ctlUniCheckXP::showFocus(bool bFocus) {
    m_bFocus = bFocus;
    pvRefresh();
}

void ctlUniCheckXP::pvClick() {
    if (m_bArmed) Pressed(!m_props.Pressed);
}

void ctlUniCheckXP::onMouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y) {
    m_bArmed = (Button & 1) != 0;
    MouseDown(Button, Shift, X, Y);
}

void ctlUniCheckXP::onDblClick() {
    const Life life(*this);
    pvClick();
    if (life) DblClick();
}

void ctlUniCheckXP::onKeyPress(std::int16_t& KeyAscii) {
    const Life life(*this);
    KeyPress(KeyAscii);
    if (!life || (KeyAscii != kSpace && KeyAscii != kEnter)) return;
    m_bArmed = true;
    pvClick();
}

void ctlUniCheckXP::onAccessKey(std::int16_t) {
    if (!Enabled()) return;
    m_bArmed = true;
    pvClick();
}

platform::AccessibleState ctlUniCheckXP::accessibleState() const {
    platform::AccessibleState state = OleControl::accessibleState();
    state.checkable = true;
    state.checked = m_props.Pressed;
    return state;
}

bool ctlUniCheckXP::accessibleAction() {
    if (!Enabled()) return false;
    onAccessKey(0);
    return true;
}
