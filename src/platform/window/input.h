// platform/window/input.h: the keyboard's state, the mouse's position, cursors.
#pragma once
#include "platform/window/messages.h"

namespace platform {

// Whether a key is down at this moment, as the sign: below 0 when it is. Known are VK_SHIFT,
// VK_CONTROL, VK_MENU and the mouse's VK_LBUTTON, VK_RBUTTON, VK_MBUTTON; any other is up. The keys
// are known also while no message is read, the mouse's are those of its last message. Asking the
// desktop is slow (about 45 microseconds), so an answer is kept for 10 milliseconds, and that of an
// input event counts as one.
[[nodiscard]] std::int16_t GetAsyncKeyState(std::int32_t key);

bool GetCursorPos(POINT& point);  // screen pixels

// A cursor is one of the desktop's, whose handle is its id, or an icon of CreateIconIndirect.
using HCURSOR = HICON;

constexpr std::uint32_t IDC_ARROW = 32512;
constexpr std::uint32_t IDC_IBEAM = 32513;
constexpr std::uint32_t IDC_WAIT = 32514;
constexpr std::uint32_t IDC_CROSS = 32515;
constexpr std::uint32_t IDC_UPARROW = 32516;
constexpr std::uint32_t IDC_SIZE = 32640;
constexpr std::uint32_t IDC_ICON = 32641;
constexpr std::uint32_t IDC_SIZENWSE = 32642;
constexpr std::uint32_t IDC_SIZENESW = 32643;
constexpr std::uint32_t IDC_SIZEWE = 32644;
constexpr std::uint32_t IDC_SIZENS = 32645;
constexpr std::uint32_t IDC_SIZEALL = 32646;
constexpr std::uint32_t IDC_NO = 32648;
constexpr std::uint32_t IDC_HAND = 32649;
constexpr std::uint32_t IDC_APPSTARTING = 32650;
constexpr std::uint32_t IDC_HELP = 32651;

// One of the desktop's cursors by its id; 0 for any other number. hInstance has no influence.
[[nodiscard]] HCURSOR LoadCursorA(std::uint32_t hInstance, std::uint32_t id);

// Sets the cursor of the window that the mouse is over, until its next WM_SETCURSOR. Gives the one
// that was set before. 0 is the arrow, and so is a handle that is unknown.
HCURSOR SetCursor(HCURSOR cursor);

}  // namespace platform
