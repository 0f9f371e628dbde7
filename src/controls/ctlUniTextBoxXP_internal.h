// controls/ctlUniTextBoxXP_internal.h: what the sources of the text box share.
#pragma once
#include "controls/ctlUniTextBoxXP.h"
#include "win/MSubclass.h"

constexpr std::uint32_t kOwnerMessages[] = {
    platform::WM_SETFOCUS,       platform::WM_MOUSEACTIVATE,  platform::WM_CTLCOLOREDIT,
    platform::WM_CTLCOLORSTATIC, platform::WM_SYSCOLORCHANGE, platform::WM_COMMAND,
};
constexpr std::uint32_t kEditMessages[] = {
    platform::WM_SETFOCUS,
    platform::WM_SETCURSOR,
    platform::WM_CUT,
    platform::WM_PASTE,
    platform::WM_CLEAR,
    platform::WM_UNDO,
    platform::WM_UNICHAR,
    platform::WM_CHAR,
    platform::WM_KEYDOWN,
    platform::WM_KEYUP,
    platform::WM_IME_STARTCOMPOSITION,
    platform::WM_IME_ENDCOMPOSITION,
    platform::WM_IME_COMPOSITION,
    platform::WM_MOUSEMOVE,
    platform::WM_LBUTTONDOWN,
    platform::WM_LBUTTONUP,
    platform::WM_LBUTTONDBLCLK,
    platform::WM_RBUTTONDOWN,
    platform::WM_RBUTTONUP,
    platform::WM_RBUTTONDBLCLK,
    platform::WM_MBUTTONDOWN,
    platform::WM_MBUTTONUP,
    platform::WM_MBUTTONDBLCLK,
    platform::WM_MOUSEWHEEL,
};

struct ctlUniTextBoxXP::Message {
    bool& bStopMsg;
    platform::LRESULT& lReturn;
    HWND hWnd;
    std::uint32_t uMsg;
    platform::WPARAM wParam;
    platform::LPARAM lParam;

    // The window does not get the message.
    void swallow() {
        lReturn = 0;
        bStopMsg = true;
    }
    // The window gets it now, with another first parameter.
    void passOn(platform::WPARAM wChanged) {
        lReturn = SubclassCallOld(hWnd, uMsg, wChanged, lParam);
        bStopMsg = true;
    }
};

// Hears the messages of both windows. It outlives its control when that ends inside of a message.
class ctlUniTextBoxXP::Sink final : public ISubclass {
public:
    explicit Sink(ctlUniTextBoxXP& oOwner) : m_owner(&oOwner) {}
    void Forget() { m_owner = nullptr; }
    void ISubclass_WindowProc(bool bBefore, bool& bStopMsg, platform::LRESULT& lReturn, HWND hWnd,
                              std::uint32_t uMsg, platform::WPARAM wParam,
                              platform::LPARAM lParam) override;

private:
    ctlUniTextBoxXP* m_owner;
};
