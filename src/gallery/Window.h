// gallery/Window.h: a window as an object, and the push button of the gallery. They stand on the
// platform's windows alone.
#pragma once
#include "gfx/types.h"
#include "platform/window/window.h"

#include <functional>

namespace gallery {

// Destroyed with the object. A window that is destroyed earlier leaves a handle behind that does
// nothing.
class Window {
public:
    explicit Window(platform::WindowOptions options);
    virtual ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    [[nodiscard]] HWND hWnd() const { return m_hWnd; }
    [[nodiscard]] SIZE size() const;
    void place(const RECT& rect);

protected:
    // What is not handled goes to the base class's, whose is that of every window. WM_PAINT comes
    // as a call of paint.
    virtual platform::LRESULT message(std::uint32_t uMsg, platform::WPARAM wParam,
                                      platform::LPARAM lParam);
    // Draws all of it, from (0, 0); shown when it is complete.
    virtual void paint(HDC hDC, SIZE size) = 0;
    void repaint() { platform::InvalidateRect(m_hWnd); }

private:
    static platform::LRESULT procedure(HWND hWnd, std::uint32_t uMsg, platform::WPARAM wParam,
                                       platform::LPARAM lParam);
    HWND m_hWnd = 0;
};

[[nodiscard]] platform::WindowOptions childOf(HWND parent, Text title = {});

// A button with a caption, for the mouse, Space and Enter.
class PushButton : public Window {
public:
    // The caption is the window's title, too.
    PushButton(HWND parent, Text caption, std::function<void()> click);

    // How it looks, for pages that show it without being open.
    struct Look {
        bool pressed = false, focus = false;
    };
    static void draw(HDC hDC, const RECT& rect, TextView caption, Look look);

protected:
    platform::LRESULT message(std::uint32_t uMsg, platform::WPARAM wParam,
                              platform::LPARAM lParam) override;
    void paint(HDC hDC, SIZE size) override;

private:
    void press(bool pressed);
    Text m_caption;
    std::function<void()> m_click;
    bool m_pressed = false;  // looks pressed
    bool m_armed = false;    // the mouse went down on it
};

}  // namespace gallery
