// The messages of the text box's two windows, and its keys.
#include "controls/ctlUniTextBoxXP_internal.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_src_errors.h"
#include "gfx/modCtlCommon_src_helpers.h"
#include "platform/window/edit.h"
#include "platform/window/input.h"
#include "platform/window/surface.h"

using namespace platform;

namespace {

constexpr std::int16_t kLeft = 1, kRight = 2, kMiddle = 4;

bool movesCaret(std::int32_t code) { return code >= VK_PRIOR && code <= VK_DOWN; }

}  // namespace

void ctlUniTextBoxXP::Sink::ISubclass_WindowProc(bool, bool& bStopMsg, LRESULT& lReturn, HWND hWnd,
                                                 std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    if (m_owner == nullptr) return;
    Message message{bStopMsg, lReturn, hWnd, uMsg, wParam, lParam};
    if (hWnd == m_owner->m_hWndEdit) {
        m_owner->pvEditMessage(message);
    } else if (hWnd == m_owner->m_hWndOwner) {
        m_owner->pvOwnerMessage(message);
    }
}

// ---- The control's window, behind its own handling

void ctlUniTextBoxXP::pvOwnerMessage(Message& message) {
    const bool fromEdit = IsStarted() && static_cast<HWND>(message.lParam) == m_hWndEdit;
    switch (message.uMsg) {
    case WM_SETFOCUS:
        if (IsStarted()) platform::SetFocus(m_hWndEdit);
        break;
    case WM_SYSCOLORCHANGE:
        m_bColorChanged = true;
        pvInvalidateEdit();
        break;
    case WM_MOUSEACTIVATE:
        if (const HWND focus = GetFocus();
            focus != m_hWndEdit && focus != m_hWndOwner && IsChild(m_hWndOwner, focus)) {
            platform::SetFocus(m_hWndOwner);
        }
        break;
    case WM_COMMAND:
        if (fromEdit && hiWord(message.wParam) == EN_CHANGE && m_props.RaiseChangeEvent &&
            !m_bHoldChange) {
            Change();
        }
        break;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
        if (!fromEdit) break;
        SetBkColor(static_cast<HDC>(message.wParam), TranslateColor(m_props.BackColor));
        SetTextColor(static_cast<HDC>(message.wParam),
                     TranslateColor(Enabled() ? m_props.ForeColor : kDisabledText));
        if (m_oBrush.Handle() != 0) message.lReturn = m_oBrush.Handle();
        break;
    default:
        break;
    }
}

// ---- The edit window, ahead of its own handling

void ctlUniTextBoxXP::pvEditMessage(Message& message) {
    switch (message.uMsg) {
    case WM_SETFOCUS:
        pvActivateFilter();
        break;
    case WM_SETCURSOR:
        pvSetCursor(message);
        break;
    case WM_KEYDOWN:
    case WM_KEYUP:
        pvKey(message);
        break;
    case WM_UNICHAR:
        if (message.wParam == UNICODE_NOCHAR) {
            message.lReturn = 1;
            message.bStopMsg = true;
            break;
        }
        [[fallthrough]];
    case WM_CHAR:
        pvCharacter(message);
        break;
    case WM_CUT:
    case WM_PASTE:
    case WM_CLEAR:
    case WM_UNDO:
        if (Locked()) {
            message.swallow();
        } else {
            message.passOn(message.wParam);
        }
        break;
    case WM_IME_STARTCOMPOSITION:
        m_bInIME = true;
        break;
    case WM_IME_ENDCOMPOSITION:
        m_bInIME = false;
        break;
    case WM_IME_COMPOSITION:
        pvComposition(message);
        break;
    default:
        pvMouse(message);
        break;
    }
}

void ctlUniTextBoxXP::pvSetCursor(Message& message) {
    if (MousePointer() == 0) return;
    SetCursor(pointerCursor());
    message.bStopMsg = true;
    message.lReturn = 1;
}

void ctlUniTextBoxXP::pvKey(Message& message) {
    auto code = static_cast<std::int16_t>(loWord(message.wParam));
    const Life life(*this);
    message.bStopMsg = true;  // unless we come to the end
    if (!m_bInIME) {
        std::int16_t shift = shiftState();
        (message.uMsg == WM_KEYDOWN ? KeyDown : KeyUp)(code, shift);
        if (!life) return;
    }
    if (code == 0) {
        message.swallow();
    } else if (!Locked()) {
        message.passOn(static_cast<std::uint16_t>(code));
    } else if (movesCaret(code)) {
        message.bStopMsg = false;
    } else {
        message.swallow();
    }
}

void ctlUniTextBoxXP::pvCharacter(Message& message) {
    if (message.wParam == VK_TAB) {
        message.swallow();
        return;
    }
    auto code = static_cast<std::int16_t>(loWord(message.wParam));
    const std::int16_t before = code;
    const Life life(*this);
    message.bStopMsg = true;
    if (!m_bInIME) {
        std::int16_t shift = shiftState();
        KeyPress(code, shift);
        if (!life) return;
    }
    // A character beyond 16 bits goes on whole unless somebody has changed it.
    const WPARAM next = code == before ? message.wParam : static_cast<std::uint16_t>(code);
    if (next == 0 || Locked()) {
        message.swallow();
    } else {
        message.passOn(next);
    }
}

void ctlUniTextBoxXP::pvComposition(Message& message) {
    if ((message.lParam & GCS_RESULTSTR) == 0 || !IsNT5OrLater()) return;
    const HIMC context = ImmGetContext(message.hWnd);
    if (context == 0) return;
    const std::int32_t bytes = ImmGetCompositionStringW(context, GCS_RESULTSTR, nullptr, 0);
    ::Text composed(static_cast<std::size_t>(bytes) / sizeof(char16_t), u'\0');
    (void)ImmGetCompositionStringW(context, GCS_RESULTSTR, composed.data(),
                                   static_cast<std::uint32_t>(bytes));
    ImmReleaseContext(message.hWnd, context);

    const Life life(*this);
    message.bStopMsg = true;
    IMEComposition(composed);
    ::Text result;
    result.reserve(composed.size());
    for (const char16_t unit : composed) {
        if (!life) return;
        auto code = static_cast<std::int16_t>(unit);
        std::int16_t shift = shiftState();
        KeyPress(code, shift);
        if (code != 0) result += static_cast<char16_t>(code);
    }
    if (life) SelText(result);
}

// ---- Mouse

void ctlUniTextBoxXP::pvMouse(Message& message) {
    const POINT at = pointOf(message.lParam);
    const auto x = static_cast<float>(at.x), y = static_cast<float>(at.y);
    const auto down = [&](std::int16_t button) {
        m_bMouseDown = true;
        MouseDown(button, shiftState(), x, y);
    };
    switch (message.uMsg) {
    case WM_LBUTTONDOWN:
        down(kLeft);
        break;
    case WM_RBUTTONDOWN:
        down(kRight);
        break;
    case WM_MBUTTONDOWN:
        down(kMiddle);
        break;
    case WM_LBUTTONUP:
        pvButtonUp(message, kLeft);
        break;
    case WM_RBUTTONUP:
        pvButtonUp(message, kRight);
        break;
    case WM_MBUTTONUP:
        pvButtonUp(message, kMiddle);
        break;
    case WM_LBUTTONDBLCLK:
        DblClick(kLeft);
        break;
    case WM_RBUTTONDBLCLK:
        DblClick(kRight);
        break;
    case WM_MBUTTONDBLCLK:
        DblClick(kMiddle);
        break;
    case WM_MOUSEMOVE: {
        const Life life(*this);
        handTip();
        if (life) MouseMove(buttonsIn(message.wParam), shiftState(), x, y);
        break;
    }
    case WM_MOUSEWHEEL: {
        // Also by less than a notch.
        const bool towards = static_cast<std::int16_t>(hiWord(message.wParam)) < 0;
        MouseWheel(buttonsIn(loWord(message.wParam)), shiftState(), x, y, towards);
        break;
    }
    default:
        break;
    }
}

void ctlUniTextBoxXP::pvButtonUp(Message& message, std::int16_t button) {
    const POINT at = pointOf(message.lParam);
    const Life life(*this);
    MouseUp(button, shiftState(), static_cast<float>(at.x), static_cast<float>(at.y));
    if (life && std::exchange(m_bMouseDown, false)) Click(button);
    // Its own menu comes from the release of the right button.
    if (life && button == kRight && !m_props.EnableContextMenu) message.swallow();
}

// ---- Keys ahead of the window

void ctlUniTextBoxXP::pvActivateFilter() { m_tFilter.Activate(m_hWndEdit, *this); }

void ctlUniTextBoxXP::pvTranslateAccelerator(const KeyMessage& message, bool& bHandled) {
    const bool down = message.uMsg == WM_KEYDOWN;
    if (!down && message.uMsg != WM_KEYUP) return;
    try {
        if (movesCaret(static_cast<std::int32_t>(message.wParam))) {
            bHandled = true;
            sendEdit(message.uMsg, message.wParam, message.lParam);
        } else if (message.wParam == VK_TAB && m_props.TrapTabKey) {
            bHandled = true;
            const Life life(*this);
            std::int16_t code = VK_TAB, shift = shiftState();
            (down ? KeyDown : KeyUp)(code, shift);
            if (life && down && code == 0) platform::SetFocus(m_hWndOwner);
        }
    } catch (...) {
        ReportCaughtFailure(u"pvTranslateAccelerator");
    }
}
