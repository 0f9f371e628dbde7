#include "host/Form.h"

#include "gfx/modCtlCommon_src_helpers.h"
#include "gfx/rounding.h"
#include "platform/base/casemap.h"
#include "platform/window/screen.h"

#include <algorithm>
#include <utility>

using platform::LPARAM;
using platform::LRESULT;
using platform::WPARAM;

Form::~Form() = default;

// ---- Life

bool Form::Load(HWND owner) {
    if (Loaded()) return true;
    platform::WindowOptions options;
    options.kind = m_kind;
    options.parent = owner;
    options.size = {ScaleWidth(), ScaleHeight()};
    options.title = m_caption;
    if (!createOfKind(options)) return false;
    applyIcon();
    const Life life(*this);
    platform::setKeyFilter(
        hWnd(), [this, life](HWND window, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
            if (!life) return false;
            if (onFormKey(window, uMsg, wParam, lParam)) return true;
            return life && keyMessage(window, uMsg, wParam);
        });
    onLoad();
    return life && Loaded();
}

void Form::Show(bool bModal, HWND owner) {
    if (!Load(owner)) return;
    if (bModal) {
        platform::runModal(hWnd());
        return;
    }
    platform::ShowWindow(hWnd(), platform::SW_SHOW);
}

void Form::Hide() {
    if (Loaded()) platform::ShowWindow(hWnd(), platform::SW_HIDE);
}

bool Form::Unload(UnloadReason reason) {
    if (!Loaded()) return true;
    const Life life(*this);
    bool cancel = false;
    onQueryUnload(cancel, reason);
    if (cancel || !life || !Loaded()) return !cancel;
    onUnload(cancel);
    if (cancel || !life) return !cancel;
    destroy();
    return true;
}

bool Form::onMessage(std::uint32_t uMsg, WPARAM, LPARAM, LRESULT&) {
    if (uMsg != platform::WM_CLOSE) return false;
    (void)Unload(kClosedByUser);
    return true;
}

void Form::Caption(Text sCaption) {
    m_caption = std::move(sCaption);
    if (Loaded()) platform::SetWindowTextW(hWnd(), m_caption);
}

void Form::Icon(Picture oIcon) {
    m_icon = std::move(oIcon);
    applyIcon();
}

void Form::applyIcon() const {
    if (!Loaded()) return;
    const bool icon = m_icon != nullptr && m_icon->Type() == platform::PICTYPE_ICON;
    platform::setWindowIcon(hWnd(), icon ? m_icon->Handle() : 0);
}

// ---- Place

void Form::ClientSize(int width, int height) {
    if (!Loaded()) {
        move(0, 0, width, height);
    } else {
        platform::SetWindowPos(hWnd(), 0, 0, 0, width, height,
                               platform::SWP_NOMOVE | platform::SWP_NOZORDER |
                                   platform::SWP_NOACTIVATE);
    }
}

void Form::CenterOnScreen() {
    const platform::HMONITOR monitor =
        platform::MonitorFromWindow(hWnd(), platform::MONITOR_DEFAULTTOPRIMARY);
    platform::MONITORINFO info;
    RECT place;
    if (!platform::GetMonitorInfoA(monitor, info) || !platform::GetWindowRect(hWnd(), place)) {
        return;
    }
    const RECT& work = info.rcWork;
    const int left = work.left + (work.right - work.left - (place.right - place.left)) / 2;
    const int top = work.top + (work.bottom - work.top - (place.bottom - place.top)) / 2;
    platform::SetWindowPos(hWnd(), 0, std::max(left, work.left), std::max(top, work.top), 0, 0,
                           platform::SWP_NOSIZE | platform::SWP_NOZORDER |
                               platform::SWP_NOACTIVATE);
}

bool Form::Minimised() const { return platform::IsIconic(hWnd()); }

namespace {

int pixels(double twips, int resolutionIndex) {
    constexpr double kTwipsPerInch = 1440.0;
    const int dotsPerInch = platform::screenDotsPerInch(resolutionIndex);
    return gfx::roundHalfEven(std::clamp(twips * dotsPerInch / kTwipsPerInch, -1e9, 1e9));
}

}  // namespace

int Form::PixelsX(double twips) { return pixels(twips, platform::LOGPIXELSX); }
int Form::PixelsY(double twips) { return pixels(twips, platform::LOGPIXELSY); }

RECT Form::PlaceOfTwips(int left, int top, int width, int height) {
    const int x = PixelsX(left), y = PixelsY(top);
    return {x, y, x + PixelsX(width), y + PixelsY(height)};
}

// ---- Focus and keys

std::vector<HostWindow*> Form::Controls() const {
    std::vector<HostWindow*> controls;
    forEachHost([&](HostWindow& host) {
        if (&host != this && platform::IsChild(hWnd(), host.hWnd())) controls.push_back(&host);
    });
    std::ranges::sort(controls, [](const HostWindow* a, const HostWindow* b) {
        const auto place = [](const HostWindow& host) {
            return std::pair(static_cast<unsigned>(host.m_tabIndex), host.m_creation);
        };
        return place(*a) < place(*b);
    });
    return controls;
}

bool Form::takesInput(const HostWindow& host) {
    if (!platform::IsWindowVisible(host.hWnd())) return false;
    for (HWND window = host.hWnd(); window != 0; window = platform::GetParent(window)) {
        if (!platform::IsWindowEnabled(window)) return false;
        if (window != host.hWnd() && dynamic_cast<Form*>(find(window)) != nullptr) break;
    }
    return true;
}

bool Form::reachable(const HostWindow& host) { return host.CanGetFocus() && takesInput(host); }

bool Form::MoveFocus(bool bForward) {
    std::vector<HostWindow*> stops = Controls();
    if (!bForward) std::ranges::reverse(stops);
    // The innermost that has the focus; the walk begins behind it.
    auto start = stops.end();
    for (auto it = stops.begin(); it != stops.end(); ++it) {
        if ((*it)->HasFocus() &&
            (start == stops.end() || platform::IsChild((*start)->hWnd(), (*it)->hWnd()))) {
            start = it;
        }
    }
    HostWindow* const current = start == stops.end() ? nullptr : *start;
    if (current != nullptr) std::rotate(stops.begin(), start + 1, stops.end());
    for (HostWindow* host : stops) {
        // A window around the focus is no way on: the focus would come back to where it is.
        if (host == current || !host->TabStop() || !reachable(*host) || host->HasFocus()) continue;
        host->SetFocus();
        return true;
    }
    return false;
}

bool Form::pressButton(bool HostWindow::*flag, std::int16_t code) {
    for (HostWindow* host : Controls()) {
        if (!(host->*flag)) continue;
        if (!platform::IsWindowVisible(host->hWnd())) return false;
        if (takesInput(*host)) host->onAccessKey(code);
        return true;
    }
    return false;
}

bool Form::callAccessKey(char16_t unit) {
    const char16_t letter = platform::lowerUnit(unit);
    std::vector<HostWindow*> controls = Controls();
    // With several of one letter the next behind the focus has its turn.
    const auto focused = std::ranges::find_if(controls, [](const HostWindow* host) {
        return host->HasFocus() && !host->AccessKeys().empty();
    });
    if (focused != controls.end()) {
        std::rotate(controls.begin(), focused + 1, controls.end());
    }
    for (HostWindow* host : controls) {
        const bool named = std::ranges::any_of(
            host->AccessKeys(), [&](char16_t key) { return platform::lowerUnit(key) == letter; });
        if (!named || !takesInput(*host)) continue;
        const Life life(*host);
        if (host->CanGetFocus()) host->SetFocus();
        if (life) host->onAccessKey(static_cast<std::int16_t>(unit));
        return true;
    }
    return false;
}

bool Form::keyMessage(HWND hWndFocus, std::uint32_t uMsg, WPARAM wParam) {
    using namespace platform;
    if (uMsg == WM_SYSCHAR) return callAccessKey(static_cast<char16_t>(wParam));
    if (uMsg != WM_KEYDOWN) return false;
    const std::int32_t shift = GetShiftState();
    switch (wParam) {
    case VK_TAB:
        return (shift & 6) == 0 && MoveFocus((shift & 1) == 0);
    case VK_RETURN: {
        if ((shift & 6) != 0) return false;
        const HostWindow* focused = find(hWndFocus);
        if (focused != nullptr && focused->DefaultCancel()) return false;
        return pressButton(&HostWindow::m_default, VK_RETURN);
    }
    case VK_ESCAPE:
        return pressButton(&HostWindow::m_cancel, VK_ESCAPE);
    default:
        return false;
    }
}

// ---- Helpers of the desktop

platform::AccessibleRole Form::accessibleRole() const {
    switch (m_kind) {
    case platform::WindowKind::Dialog:
        return platform::AccessibleRole::Dialog;
    case platform::WindowKind::Tip:
        return platform::AccessibleRole::ToolTip;
    default:
        return platform::AccessibleRole::Window;
    }
}
