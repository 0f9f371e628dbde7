#include "controls/ctlUniTextBoxXP.h"

#include "controls/ctlUniTextBoxXP_internal.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_ctl_faces.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "gfx/modCtlCommon_ctl_text.h"
#include "gfx/modCtlCommon_src_errors.h"
#include "gfx/modCtlCommon_src_helpers.h"
#include "platform/window/edit.h"
#include "platform/window/textout.h"

#include <algorithm>
#include <cstdint>
#include <utility>

using namespace platform;

namespace {

constexpr int kBorder = 2;  // pixels around the edit window

// While it lives a flag is set; the object that has the flag may end earlier.
class FlagScope {
public:
    FlagScope(const HostWindow& host, bool& flag)
        : m_life(host), m_flag(flag), m_before(std::exchange(flag, true)) {}
    ~FlagScope() {
        if (m_life) m_flag = m_before;
    }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;

private:
    HostWindow::Life m_life;
    bool& m_flag;
    bool m_before;
};

}  // namespace

// ---- Painting

void paintTextBox(HDC hDC, SIZE inner, const TextBoxProps& props, const TextBoxState& state) {
    RECT rect{0, 0, inner.cx, inner.cy};
    DrawFlatFace(hDC, rect,
                 {.iBackColor = props.BackColor,
                  .iBorderColor = props.BorderColor,
                  .bRounded = props.RoundedBorders,
                  .iOuterColor = props.BackColorOut,
                  .bOnlyBottomBorder = props.OnlyBottomBorder});
    if (state.bEditWindow) return;
    rect = {rect.left + kBorder, rect.top + kBorder, rect.right - kBorder, rect.bottom - kBorder};
    DrawRect(hDC, rect, props.BackColor, true);
    constexpr std::uint32_t kAlignments[] = {DT_LEFT, DT_RIGHT, DT_CENTER};
    const bool known = props.Alignment >= 0 && props.Alignment <= 2;
    TextDrawColor(hDC, props.PasswordChar.empty() ? TextView(props.Text) : u"***", rect,
                  state.bEnabled ? props.ForeColor : kDisabledText,
                  DT_NOPREFIX | kAlignments[known ? props.Alignment : 0]);
}

void ctlUniTextBoxXP::pvDraw() {
    guardedPaint([&] {
        if (IsStarted() && std::exchange(m_bColorChanged, false)) {
            m_oBrush.Handle(CreateSolidBrush(TranslateColor(m_props.BackColor)));
        }
        paintTextBox(hDC(), {ScaleWidth(), ScaleHeight()}, m_props, {Enabled(), IsStarted()});
    });
}

void ctlUniTextBoxXP::pvInvalidateEdit() const { InvalidateRect(m_hWndEdit); }

void ctlUniTextBoxXP::pvResize() {
    roundWindow(m_props.UseRoundRegions && m_props.RoundedBorders);
    if (m_bResizing) return;
    const FlagScope resizing(*this, m_bResizing);
    const Life life(*this);
    if (IsStarted()) {
        SetWindowPos(m_hWndEdit, 0, kBorder, kBorder, ScaleWidth() - 2 * kBorder,
                     ScaleHeight() - 2 * kBorder, SWP_NOZORDER | SWP_NOACTIVATE);
    }
    if (life) pvRefresh();
}

// ---- Life

ctlUniTextBoxXP::ctlUniTextBoxXP() : m_sink(std::make_shared<Sink>(*this)) {}

ctlUniTextBoxXP::~ctlUniTextBoxXP() {
    try {
        pvStop();
    } catch (...) {
        // Somebody who listens to the end of the edit window; it is gone all the same.
        ReportCaughtFailure(u"UserControl_Terminate");
    }
    m_sink->Forget();
}

void ctlUniTextBoxXP::onCreate() {
    if (!m_props.ManualStart) pvStart();
}

void ctlUniTextBoxXP::ExternalInitControl() {
    const Life life(*this);
    pvStart();
    if (life) pvResize();
}

void ctlUniTextBoxXP::pvStart() {
    const HWND owner = HostWindow::hWnd();
    if (!UserMode() || owner == 0) return;
    const Life life(*this);
    try {
        if (m_hWndOwner != owner) {
            for (const std::uint32_t uMsg : kOwnerMessages) {
                SubclassAttach(*m_sink, owner, uMsg, smAfter);
            }
            m_hWndOwner = owner;
        }
        pvCreateEdit();
    } catch (...) {
        // Without its messages the edit window is of no use: the control shows its text itself.
        ReportCaughtFailure(u"pvStart");
        if (life) pvStop();
    }
}

void ctlUniTextBoxXP::pvStop() {
    m_props.Text = Text();
    m_props.Locked = Locked();
    for (const std::uint32_t uMsg : kOwnerMessages) {
        SubclassDetach(*m_sink, HostWindow::hWnd(), uMsg);
    }
    m_hWndOwner = 0;
    m_oBrush.Destroy();
    pvEndEdit();  // last: who gets the focus may end the control
}

void ctlUniTextBoxXP::pvEndEdit() {
    m_tFilter.Clear();
    const HWND edit = std::exchange(m_hWndEdit, 0);
    if (edit == 0) return;
    for (const std::uint32_t uMsg : kEditMessages) SubclassDetach(*m_sink, edit, uMsg);
    m_bInIME = m_bMouseDown = false;
    DestroyWindow(edit);
}

std::uint32_t ctlUniTextBoxXP::editStyle() const {
    std::uint32_t style = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
    if (m_props.Alignment == 1) style |= ES_RIGHT;
    if (m_props.Alignment == 2) style |= ES_CENTER;
    constexpr std::uint32_t kLines = ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN;
    if (!m_props.MultiLine) {
        style |= ES_AUTOHSCROLL;
    } else if (m_props.ScrollBars == 1) {
        style |= kLines | ES_AUTOHSCROLL | WS_HSCROLL;
    } else if (m_props.ScrollBars == 2) {
        style |= kLines | WS_VSCROLL;
    } else if (m_props.ScrollBars == 3) {
        style |= kLines | ES_AUTOHSCROLL | WS_HSCROLL | WS_VSCROLL;
    } else {
        style |= kLines;
    }
    if (m_props.NoHideSel) style |= ES_NOHIDESEL;
    if (m_props.Locked) style |= ES_READONLY;
    return style;
}

void ctlUniTextBoxXP::pvCreateEdit() {
    m_props.Text = Text();
    const Life life(*this);
    const bool focused = IsStarted() && GetFocus() == m_hWndEdit;
    pvEndEdit();
    if (!life || HostWindow::hWnd() == 0) return;
    m_bColorChanged = true;
    m_oBrush.Destroy();
    const HWND edit =
        CreateWindowExW(m_props.RightToLeft ? WS_EX_LAYOUTRTL | WS_EX_RTLREADING : 0, u"EDIT", {},
                        editStyle(), kBorder, kBorder, ScaleWidth() - 2 * kBorder,
                        ScaleHeight() - 2 * kBorder, HostWindow::hWnd());
    if (edit == 0) {
        pvRefresh();
        return;
    }
    m_hWndEdit = edit;
    sendEdit(EM_SETPASSWORDCHAR, AscWide(m_props.PasswordChar));
    if (!m_props.Text.empty()) {
        const FlagScope hold(*this, m_bHoldChange);
        SetWindowTextW(edit, m_props.Text);
    }
    sendEdit(WM_SETFONT, static_cast<WPARAM>(hFont()), 1);
    sendEdit(EM_LIMITTEXT, m_props.MaxLength);
    for (const std::uint32_t uMsg : kEditMessages) SubclassAttach(*m_sink, edit, uMsg, smBefore);
    setEditName(edit, accessibleName());
    pvRefresh();
    if (focused) platform::SetFocus(edit);
}

// ---- Stored properties

const PropertyTable<TextBoxProps>& ctlUniTextBoxXP::properties() {
    using P = TextBoxProps;
    static const PropertyTable<P> table{
        {u"BorderColor", &P::BorderColor},
        {u"BackColor", &P::BackColor},
        {u"ForeColor", &P::ForeColor},
        {u"Locked", &P::Locked},
        {u"Text", &P::Text},
        {u"MaxLength", &P::MaxLength},
        {u"MultiLine", &P::MultiLine},
        {u"Alignment", &P::Alignment},
        {u"ScrollBars", &P::ScrollBars},
        {u"PasswordChar", &P::PasswordChar, true},
        {u"TrapTab", &P::TrapTabKey},
        {u"EnableContextMenu", &P::EnableContextMenu},
        {u"RaiseChangeEvent", &P::RaiseChangeEvent},
        {u"Tip", &P::Tip},
        {u"NoHideSel", &P::NoHideSel},
        {u"RightToLeft", &P::RightToLeft},
        {u"ManualStart", &P::ManualStart},
        {u"RoundedBorders", &P::RoundedBorders},
        {u"BackColorOut", &P::BackColorOut},
        {u"UseRoundRegions", &P::UseRoundRegions},
        {u"OnlyBottomBorder", &P::OnlyBottomBorder},
    };
    return table;
}

void ctlUniTextBoxXP::ReadProperties(const PropertyBag& oBag) {
    const Life life(*this);
    pvStop();
    if (!life) return;
    properties().read(oBag, m_props, TextBoxProps());
    readHost(oBag, true);
    if (life && !m_props.ManualStart) pvStart();
    if (life) pvResize();
}

void ctlUniTextBoxXP::WriteProperties(PropertyBag& oBag) const {
    TextBoxProps now = m_props;
    now.Text = Text();
    now.Locked = Locked();
    now.RightToLeft = RightToLeft();
    properties().write(oBag, now, TextBoxProps());
    writeHost(oBag, true);
}

void ctlUniTextBoxXP::BackColor(Color iColor) {
    m_props.BackColor = iColor;
    if (IsStarted()) {
        m_bColorChanged = true;
        pvInvalidateEdit();
    }
    pvRefresh();
}

void ctlUniTextBoxXP::ForeColor(Color iColor) {
    m_props.ForeColor = iColor;
    if (IsStarted()) {
        pvInvalidateEdit();
    } else {
        pvRefresh();
    }
}

void ctlUniTextBoxXP::onEnabledChanged() {
    pvInvalidateEdit();
    DrawnControl::onEnabledChanged();
}

void ctlUniTextBoxXP::onFontChanged() {
    if (IsStarted()) {
        sendEdit(WM_SETFONT, static_cast<WPARAM>(hFont()), 1);
    } else {
        pvRefresh();
    }
}

bool ctlUniTextBoxXP::Locked() const {
    if (!IsStarted()) return m_props.Locked;
    return (GetWindowLongW(m_hWndEdit, GWL_STYLE) & ES_READONLY) != 0;
}

void ctlUniTextBoxXP::Locked(bool bLocked) {
    m_props.Locked = bLocked;
    sendEdit(EM_SETREADONLY, bLocked ? 1 : 0);
}

Text ctlUniTextBoxXP::Text() const {
    return IsStarted() ? GetWindowTextW(m_hWndEdit) : m_props.Text;
}

void ctlUniTextBoxXP::Text(TextView sText) {
    if (!IsStarted()) {
        m_props.Text = sText;
        pvRefresh();
        return;
    }
    if (sText == Text()) return;
    const Life life(*this);
    SetWindowTextW(m_hWndEdit, sText);
    if (life && m_props.RaiseChangeEvent) Change();
}

std::int32_t ctlUniTextBoxXP::MaxLength() const {
    return IsStarted() ? static_cast<std::int32_t>(sendEdit(EM_GETLIMITTEXT)) : m_props.MaxLength;
}

void ctlUniTextBoxXP::MaxLength(std::int32_t lLength) {
    m_props.MaxLength = lLength;
    sendEdit(EM_LIMITTEXT, lLength);
    if (lLength <= 0) return;
    const ::Text sText = Text();
    const auto length = static_cast<std::size_t>(lLength);
    if (length < sText.size()) Text(TextView(sText).substr(0, length));
}

void ctlUniTextBoxXP::Alignment(std::int32_t iAlignment) {
    if (m_props.Alignment == iAlignment) return;
    m_props.Alignment = iAlignment;
    if (IsStarted()) {
        pvCreateEdit();
    } else {
        pvRefresh();
    }
}

void ctlUniTextBoxXP::PasswordChar(::Text sChar) {
    m_props.PasswordChar = std::move(sChar);
    if (IsStarted()) {
        sendEdit(EM_SETPASSWORDCHAR, AscWide(m_props.PasswordChar));
    } else {
        pvRefresh();
    }
}

bool ctlUniTextBoxXP::RightToLeft() const {
    return IsStarted() ? GetWindowLongW(m_hWndEdit, GWL_EXSTYLE) != 0 : m_props.RightToLeft;
}

void ctlUniTextBoxXP::RightToLeft(bool b) {
    const bool other = IsStarted() && b != RightToLeft();
    m_props.RightToLeft = b;
    if (other) pvCreateEdit();
}

void ctlUniTextBoxXP::UseRoundRegions(bool b) {
    m_props.UseRoundRegions = m_props.RoundedBorders = b;
    pvResize();
}

// ---- The selection

LRESULT ctlUniTextBoxXP::sendEdit(std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) const {
    return SendMessageW(m_hWndEdit, uMsg, wParam, lParam);
}

ctlUniTextBoxXP::Selection ctlUniTextBoxXP::selection() const {
    Selection now;
    sendEdit(EM_GETSEL, reinterpret_cast<WPARAM>(&now.start), reinterpret_cast<LPARAM>(&now.end));
    return now;
}

std::int32_t ctlUniTextBoxXP::SelStart() const { return selection().start; }

void ctlUniTextBoxXP::SelStart(std::int32_t lStart) {
    sendEdit(EM_SETSEL, lStart, lStart);
    sendEdit(EM_SCROLLCARET);
}

std::int32_t ctlUniTextBoxXP::SelLength() const {
    const Selection now = selection();
    return now.end - now.start;
}

void ctlUniTextBoxXP::SelLength(std::int32_t lLength) {
    const std::int64_t start = selection().start;
    const std::int64_t end = std::clamp<std::int64_t>(start + lLength, 0, INT32_MAX);
    sendEdit(EM_SETSEL, start, end);
}

Text ctlUniTextBoxXP::SelText() const {
    const Selection now = selection();
    if (now.end <= now.start) return {};
    return Text().substr(static_cast<std::size_t>(now.start),
                         static_cast<std::size_t>(now.end - now.start));
}

void ctlUniTextBoxXP::SelText(TextView sText) {
    const ::Text copy(sText);
    sendEdit(EM_REPLACESEL, 1, reinterpret_cast<LPARAM>(&copy));
}

std::int32_t ctlUniTextBoxXP::CurrentLine() const {
    return static_cast<std::int32_t>(sendEdit(EM_LINEFROMCHAR, SelStart()));
}

void ctlUniTextBoxXP::CurrentLine(std::int32_t lLine) {
    // A line that isn't there starts at -1: nothing is selected then, and the caret stays.
    const LRESULT start = sendEdit(EM_LINEINDEX, static_cast<WPARAM>(std::int64_t{lLine} - 1));
    SelStart(static_cast<std::int32_t>(start));
}

// ---- Helpers of the desktop

void ctlUniTextBoxXP::AccessibleName(::Text sName) {
    HostWindow::AccessibleName(std::move(sName));
    setEditName(m_hWndEdit, accessibleName());
}

Text ctlUniTextBoxXP::accessibleValue() const {
    return IsStarted() || !m_props.PasswordChar.empty() ? ::Text() : m_props.Text;
}
