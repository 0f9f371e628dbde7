// The window's messages: owner-drawing, opening popups, and the talk between frame and children.
#include "gfx/modCtlCommon_src_errors.h"
#include "menu/ctlUTF8Menu.h"
#include "menu/menuMessages.h"
#include "platform/base/failure.h"
#include "platform/window/window.h"
#include "win/MSubclass.h"

using namespace platform;

namespace {

// A copy of the record that a message carries by address. Raises without one.
template <class T> T recordAt(LPARAM lParam) {
    if (lParam == 0) throw Failure(kOwnError, u"ctlUTF8Menu", u"The message carries no record.");
    return *reinterpret_cast<const T*>(lParam);
}

}  // namespace

void ctlUTF8Menu::ISubclass_WindowProc(bool /*bBefore*/, bool& bStopMsg, LRESULT& lReturn,
                                       HWND hWnd, std::uint32_t uMsg, WPARAM wParam,
                                       LPARAM lParam) {
    try {
        handle(bStopMsg, lReturn, hWnd, uMsg, wParam, lParam);
    } catch (...) {
        // What was answered so far stands.
        ReportCaughtFailure(u"ctlUTF8Menu.ISubclass_WindowProc");
    }
}

void ctlUTF8Menu::handle(bool& bStopMsg, LRESULT& lReturn, HWND hWnd, std::uint32_t uMsg,
                         WPARAM wParam, LPARAM lParam) {
    switch (uMsg) {
    case WM_DRAWITEM: {
        bStopMsg = true;
        if (wParam != 0) {  // a control, no menu
            lReturn = SubclassCallOld(hWnd, uMsg, wParam, lParam);
            return;
        }
        auto item = recordAt<DRAWITEMSTRUCT>(lParam);
        if (!m_oItems.empty()) {
            pvDrawItem(item, m_props.StringMode);
        } else if (pvIsMdiChild()) {
            SendMessageW(m_hWndMdiFrame, WM_APP_REQDATA_DI, m_props.StringMode,
                         reinterpret_cast<LPARAM>(&item));
        }
        lReturn = 1;
        return;
    }
    case WM_MEASUREITEM: {
        bStopMsg = true;
        if (wParam != 0) {
            lReturn = SubclassCallOld(hWnd, uMsg, wParam, lParam);
            return;
        }
        auto item = recordAt<MEASUREITEMSTRUCT>(lParam);
        if (pvIsMdiChild()) {
            SendMessageW(m_hWndMdiFrame, WM_APP_REQDATA_MI, m_props.StringMode,
                         reinterpret_cast<LPARAM>(&item));
        } else {
            pvMeasureItem(item, m_props.StringMode);
        }
        *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam) = item;
        lReturn = 1;
        return;
    }
    case WM_INITMENUPOPUP:
        bStopMsg = true;
        lReturn = pvManagedPopup(wParam, lParam) ? 0 : SubclassCallOld(hWnd, uMsg, wParam, lParam);
        return;
    case WM_SETTINGCHANGE:
        pvLoadMenuFont();
        lReturn = 0;
        return;
    case WM_MDISETMENU: {
        const auto hMenu = static_cast<HMENU>(wParam);
        if (hMenu == 0 || hMenu == m_hMenu) return;
        pvTakeMenu(hMenu);
        pvTellActiveChild();
        return;
    }
    case WM_APP_MDIFRAME:
        bStopMsg = true;
        m_hWndMdiFrame = static_cast<HWND>(wParam);
        lReturn = 1;
        return;
    case WM_APP_REQDATA_MI: {
        bStopMsg = true;
        auto item = recordAt<MEASUREITEMSTRUCT>(lParam);
        pvMeasureItem(item, static_cast<std::int32_t>(wParam));
        *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam) = item;
        lReturn = 1;
        return;
    }
    case WM_APP_REQDATA_DI: {
        bStopMsg = true;
        const auto item = recordAt<DRAWITEMSTRUCT>(lParam);
        pvDrawItem(item, static_cast<std::int32_t>(wParam));
        lReturn = 1;
        return;
    }
    case WM_APP_MDISAVEPOPUP:
        bStopMsg = true;
        pvPreparePopup(static_cast<HMENU>(wParam));
        return;
    default:
        return;
    }
}

// Whether a popup is one of ours to prepare, here or in the control on the frame. The windows' own
// menus are not.
bool ctlUTF8Menu::pvManagedPopup(WPARAM wParam, LPARAM lParam) {
    const auto hMenu = static_cast<HMENU>(wParam);
    if (hMenu == 0 || hMenu == GetSystemMenu(m_hWnd, false)) return false;
    if (hiWord(lParam) != 0) return false;
    if (pvIsMdiContainer()) {
        const HWND hWndChild = pvActiveMdiChild();
        if (IsWindow(hWndChild) && hMenu == GetSystemMenu(hWndChild, false)) return false;
    } else if (pvIsMdiChild()) {
        SendMessageW(m_hWndMdiFrame, WM_APP_MDISAVEPOPUP, wParam, lParam);
        return true;
    }
    pvPreparePopup(hMenu);
    return true;
}
