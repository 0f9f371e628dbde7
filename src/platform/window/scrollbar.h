// platform/window/scrollbar.h: the desktop's scroll bar as a child window.
//
// Numbers are those of a bar of 16 bits, 0 to 32767; what is beyond is held to that. Members may
// be used before create and after the window is gone: values are kept. All of it belongs to the
// window thread.
#pragma once
#include "platform/window/window.h"

#include <memory>

namespace platform {

class ScrollBar {
public:
    enum class Direction : std::uint8_t { Horizontal, Vertical };
    explicit ScrollBar(Direction direction);
    ~ScrollBar();  // ends the window
    ScrollBar(const ScrollBar&) = delete;
    ScrollBar& operator=(const ScrollBar&) = delete;

    // Makes the window, visible unless Visible(false) came before. False, and nothing changes, when
    // there is one already and when the parent is unknown.
    bool create(HWND parent, const RECT& place);
    [[nodiscard]] HWND hWnd() const;  // 0: none

    // The minimum is always 0. A value above a new maximum falls to it. While the person drags, the
    // value follows the mouse.
    [[nodiscard]] int Max() const;
    void Max(int l);
    [[nodiscard]] int Value() const;
    void Value(int l);  // held to 0 and Max
    [[nodiscard]] int SmallChange() const;
    void SmallChange(int l);  // of an arrow button, at least 1
    [[nodiscard]] int LargeChange() const;
    void LargeChange(int l);  // of a press beside the thumb, which is as large, at least 1
    [[nodiscard]] bool Visible() const;
    void Visible(bool b);

    // Pixels across, as the desktop's style has it: the height of a horizontal bar.
    [[nodiscard]] int thickness() const;

    // Change: another value, but not while the person drags; once when a drag that changed it is
    // over. Also inside the setters above, before they return.
    // Scroll: another value while the person drags the thumb.
    // The wheel over the bar goes to the parent as WM_MOUSEWHEEL. A handler may end the window and
    // the object.
    std::function<void()> Change, Scroll;

private:
    struct Impl;
    std::shared_ptr<Impl> m_impl;
};

}  // namespace platform
