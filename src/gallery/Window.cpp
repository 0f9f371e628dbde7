#include "gallery/Window.h"

#include "gallery/Sheet.h"
#include "gfx/clsMEMDC.h"
#include "gfx/modCtlCommon_ctl_faces.h"
#include "gfx/modCtlCommon_ctl_shapes.h"

#include <utility>

namespace gallery {

using namespace platform;

Window::Window(WindowOptions options) {
    options.procedure = procedure;
    options.userData = reinterpret_cast<std::intptr_t>(this);
    options.background = kPaper;
    m_hWnd = createWindow(options);
}

Window::~Window() {
    SetWindowLongW(m_hWnd, GWL_USERDATA, 0);
    DestroyWindow(m_hWnd);
}

SIZE Window::size() const {
    RECT rect;
    GetClientRect(m_hWnd, rect);
    return {rect.right, rect.bottom};
}

void Window::place(const RECT& rect) {
    SetWindowPos(m_hWnd, HWND_TOP, rect.left, rect.top, widthOf(rect), heightOf(rect),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT Window::message(std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    if (uMsg == WM_PAINT) {
        const SIZE all = size();
        clsMEMDC surface;
        surface.CreateDC(all.cx, all.cy);
        paint(surface.Hdc(), all);
        const HDC hDC = GetDC(m_hWnd);
        surface.PaintPicture(hDC);
        ReleaseDC(m_hWnd, hDC);
        return 0;
    }
    if (uMsg == WM_SIZE || uMsg == WM_SETFOCUS || uMsg == WM_KILLFOCUS ||
        uMsg == WM_SYSCOLORCHANGE) {
        repaint();
    }
    return DefWindowProcW(m_hWnd, uMsg, wParam, lParam);
}

LRESULT Window::procedure(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    auto* const self = reinterpret_cast<Window*>(GetWindowLongW(hWnd, GWL_USERDATA));
    // The first messages come before the handle is known here, the last ones after the object.
    if (self == nullptr || self->m_hWnd != hWnd) return DefWindowProcW(hWnd, uMsg, wParam, lParam);
    return self->message(uMsg, wParam, lParam);
}

WindowOptions childOf(HWND parent, Text title) {
    WindowOptions options;
    options.parent = parent;
    options.title = std::move(title);
    return options;
}

PushButton::PushButton(HWND parent, Text caption, std::function<void()> click)
    : Window(childOf(parent, caption)), m_caption(std::move(caption)), m_click(std::move(click)) {}

void PushButton::draw(HDC hDC, const RECT& rect, TextView caption, Look look) {
    DrawButtonFace(hDC, rect,
                   {.iBackColor = rgb(226, 230, 235),
                    .bBorder = true,
                    .bPressed = look.pressed,
                    .bFocus = look.focus,
                    .bRounded = true,
                    .iStyle = 4,
                    .iOuterColor = kPaper,
                    .bAdapt = true});
    write(hDC, rect, caption, {.points = 9}, kOneLine | DT_CENTER);
}

void PushButton::paint(HDC hDC, SIZE size) {
    DrawRectXY(hDC, 0, 0, size.cx, size.cy, kPaper, true);
    draw(hDC, {0, 0, size.cx, size.cy}, m_caption, {m_pressed, GetFocus() == hWnd()});
}

void PushButton::press(bool pressed) {
    if (std::exchange(m_pressed, pressed) != pressed) repaint();
}

LRESULT PushButton::message(std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    const auto inside = [&] {
        const POINT at = pointOf(lParam);
        return at.x >= 0 && at.y >= 0 && at.x < size().cx && at.y < size().cy;
    };
    const bool key = wParam == VK_SPACE || wParam == VK_RETURN;
    switch (uMsg) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        SetFocus(hWnd());
        m_armed = true;
        press(true);
        return 0;
    case WM_MOUSEMOVE:
        if (m_armed) press(inside());
        return 0;
    case WM_LBUTTONUP: {
        const bool clicked = std::exchange(m_armed, false) && inside();
        press(false);
        if (clicked) m_click();  // the last thing here: the click may end the button
        return 0;
    }
    case WM_KEYDOWN:
        if (key) press(true);
        return 0;
    case WM_KEYUP:
        if (key && m_pressed && !m_armed) {
            press(false);
            m_click();
        }
        return 0;
    case WM_KILLFOCUS:
        m_armed = false;
        press(false);
        break;
    default:
        break;
    }
    return Window::message(uMsg, wParam, lParam);
}

}  // namespace gallery
