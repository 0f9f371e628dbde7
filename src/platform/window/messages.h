// platform/window/messages.h: the numbers of messages, keys and window services.
#pragma once
#include "platform/window/types.h"

namespace platform {

// Parameters and results are as wide as a pointer, so that a message can carry the address of a
// record. Only handles have 32 bits.
using WPARAM = std::intptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;

using WNDPROC = LRESULT (*)(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam);

enum : std::uint32_t {
    WM_DESTROY = 0x0002,        // the window and its children are still there
    WM_MOVE = 0x0003,           // lParam: left in the low, top in the high word, of the client area
    WM_SIZE = 0x0005,           // wParam: SIZE_...; lParam: width and height of the client area
    WM_SETFOCUS = 0x0007,       // wParam: the window that had the focus last, or 0
    WM_KILLFOCUS = 0x0008,      // wParam: the window that gets it, or 0
    WM_ENABLE = 0x000A,         // wParam: 1 enabled, 0 disabled
    WM_SETTEXT = 0x000C,        // lParam: const Text*
    WM_GETTEXT = 0x000D,        // lParam: Text*
    WM_GETTEXTLENGTH = 0x000E,  // the result: UTF-16 units
    WM_PAINT = 0x000F,          // the window draws itself into a context of GetDC
    WM_CLOSE = 0x0010,          // by default destroys the window
    WM_SYSCOLORCHANGE = 0x0015,
    WM_SETTINGCHANGE = 0x001A,
    WM_SETCURSOR = 0x0020,      // wParam: the window under the mouse; the result 1 ends it
    WM_MOUSEACTIVATE = 0x0021,  // before each press of a button; by default the parent is asked
    WM_DRAWITEM = 0x002B,       // these two: menu.h
    WM_MEASUREITEM = 0x002C,
    WM_SETFONT = 0x0030,      // wParam: the font, 0 the stock font; lParam: 1 to draw anew
    WM_CONTEXTMENU = 0x007B,  // lParam: the screen position, -1 by key
    WM_KEYDOWN = 0x0100,      // wParam: key code; lParam: bit 30 the key was down before
    WM_KEYUP = 0x0101,
    WM_CHAR = 0x0102,        // wParam: one UTF-16 unit
    WM_SYSKEYDOWN = 0x0104,  // with Alt held, and F10
    WM_SYSKEYUP = 0x0105,
    WM_SYSCHAR = 0x0106,
    WM_UNICHAR = 0x0109,  // wParam: a character's code, or UNICODE_NOCHAR to ask: 1 is yes
    WM_IME_STARTCOMPOSITION = 0x010D,
    WM_IME_ENDCOMPOSITION = 0x010E,
    WM_IME_COMPOSITION = 0x010F,  // lParam: GCS_... of what is there; see edit.h
    WM_COMMAND = 0x0111,          // of a child: high word of wParam what happened, lParam the child
    WM_TIMER = 0x0113,            // wParam: the timer
    WM_INITMENUPOPUP = 0x0117,
    // An edit window is about to paint itself, and its parent is asked: wParam the context whose
    // text and background colour count, lParam the window; the result is the brush for the area.
    // The second comes from one that is read-only or disabled.
    WM_CTLCOLOREDIT = 0x0133,
    WM_CTLCOLORSTATIC = 0x0138,
    // Mouse. wParam: MK_... of what is down; lParam: client position, signed words.
    WM_MOUSEMOVE = 0x0200,
    WM_LBUTTONDOWN = 0x0201,
    WM_LBUTTONUP = 0x0202,
    WM_LBUTTONDBLCLK = 0x0203,  // in place of the second press
    WM_RBUTTONDOWN = 0x0204,
    WM_RBUTTONUP = 0x0205,
    WM_RBUTTONDBLCLK = 0x0206,
    WM_MBUTTONDOWN = 0x0207,
    WM_MBUTTONUP = 0x0208,
    WM_MBUTTONDBLCLK = 0x0209,
    WM_MOUSEWHEEL = 0x020A,    // high word of wParam: signed, 120 a notch, above 0 away from the
                               // user; lParam: the screen position. By default the parent gets it
    WM_MDIGETACTIVE = 0x0229,  // to the window of the class "MDIClient"; gives its active child
    WM_MDISETMENU = 0x0230,    // to the same; wParam: the menu that the frame is to show
    WM_DROPFILES = 0x0233,     // lParam: const std::vector<Text>*, paths in the inside form
    WM_MOUSELEAVE = 0x02A3,
    WM_CUT = 0x0300,
    WM_COPY = 0x0301,
    WM_PASTE = 0x0302,
    WM_CLEAR = 0x0303,  // takes the selection out
    WM_UNDO = 0x0304,
    WM_USER = 0x0400,
    WM_APP = 0x8000,
};

enum : WPARAM { SIZE_RESTORED = 0, SIZE_MINIMIZED = 1, SIZE_MAXIMIZED = 2 };
enum : WPARAM { MK_LBUTTON = 1, MK_RBUTTON = 2, MK_SHIFT = 4, MK_CONTROL = 8, MK_MBUTTON = 16 };
enum : LRESULT { MA_ACTIVATE = 1 };

enum : std::int32_t {
    VK_LBUTTON = 1,
    VK_RBUTTON = 2,
    VK_MBUTTON = 4,
    VK_BACK = 8,
    VK_TAB = 9,
    VK_RETURN = 13,
    VK_SHIFT = 16,
    VK_CONTROL = 17,
    VK_MENU = 18,  // Alt
    VK_PAUSE = 19,
    VK_CAPITAL = 20,
    VK_ESCAPE = 27,
    VK_SPACE = 32,
    VK_PRIOR = 33,  // Page Up
    VK_NEXT = 34,   // Page Down
    VK_END = 35,
    VK_HOME = 36,
    VK_LEFT = 37,
    VK_UP = 38,
    VK_RIGHT = 39,
    VK_DOWN = 40,
    VK_SNAPSHOT = 44,
    VK_INSERT = 45,
    VK_DELETE = 46,
    VK_HELP = 47,  // digits and letters have the codes of their capital ASCII characters
    VK_LWIN = 91,
    VK_RWIN = 92,
    VK_APPS = 93,
    VK_NUMPAD0 = 96,
    VK_MULTIPLY = 106,
    VK_ADD = 107,
    VK_SUBTRACT = 109,
    VK_DECIMAL = 110,
    VK_DIVIDE = 111,
    VK_F1 = 112,
    VK_F10 = 121,
    VK_NUMLOCK = 144,
    VK_SCROLL = 145,
    VK_OEM_1 = 0xBA,       // ;
    VK_OEM_PLUS = 0xBB,    // =
    VK_OEM_COMMA = 0xBC,   // ,
    VK_OEM_MINUS = 0xBD,   // -
    VK_OEM_PERIOD = 0xBE,  // .
    VK_OEM_2 = 0xBF,       // /
    VK_OEM_3 = 0xC0,       // `
    VK_OEM_4 = 0xDB,       // [
    VK_OEM_5 = 0xDC,       // backslash
    VK_OEM_6 = 0xDD,       // ]
    VK_OEM_7 = 0xDE,       // '
    VK_OTHER = 0xE8,       // a key without a code of its own
};

constexpr WPARAM UNICODE_NOCHAR = 0xFFFF;

// The words of a parameter.
constexpr std::int32_t loWord(std::intptr_t v) { return static_cast<std::uint16_t>(v); }
constexpr std::int32_t hiWord(std::intptr_t v) { return static_cast<std::uint16_t>(v >> 16); }
// A position out of lParam: both words signed.
constexpr POINT pointOf(LPARAM lParam) {
    return {static_cast<std::int16_t>(loWord(lParam)), static_cast<std::int16_t>(hiWord(lParam))};
}
constexpr LPARAM makeLParam(std::int32_t low, std::int32_t high) {
    return static_cast<LPARAM>(static_cast<std::uint32_t>(static_cast<std::uint16_t>(high)) << 16 |
                               static_cast<std::uint16_t>(low));
}

}  // namespace platform
