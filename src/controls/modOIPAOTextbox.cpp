#include "controls/modOIPAOTextbox.h"

#include "platform/window/window.h"

void AcceleratorFilter::Activate(HWND hWnd, IAcceleratorOwner& oOwner) {
    if (hWnd == m_hWnd) return;
    Clear();
    m_hWnd = hWnd;
    platform::setKeyFilter(hWnd, [&oOwner](HWND hWndKey, std::uint32_t uMsg,
                                           platform::WPARAM wParam, platform::LPARAM lParam) {
        bool bHandled = false;
        oOwner.pvTranslateAccelerator({hWndKey, uMsg, wParam, lParam}, bHandled);
        return bHandled;
    });
}

void AcceleratorFilter::Clear() {
    if (m_hWnd != 0) platform::setKeyFilter(m_hWnd, nullptr);
    m_hWnd = 0;
}
