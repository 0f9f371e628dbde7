// platform/window/window.h: windows, their procedures and their messages.
//
// A window has a 32-bit handle, a procedure that hears its messages, and a picture of its own that
// stays: whatever is drawn into a context of GetDC(hWnd) is kept and shows as soon as the message
// loop runs, also when it was drawn outside WM_PAINT. The desktop's events become messages (see
// messages.h); each goes through the window's procedure, which hands on what it does not keep by
// CallWindowProcW to the procedure that it replaced, in the end DefWindowProcW.
//
// Positions and sizes are pixels; those of a child are relative to its parent's client area, those
// of other windows to the screen, and both mean the client area, without any frame and menu bar. An
// edit's scroll bars are inside of its size, and outside of its client area.
// All of it belongs to the window thread. An unknown handle gives false, 0 or an empty text, and
// nothing happens.
//
// A window may be destroyed while one of its messages runs: its handle is gone at once, the object
// behind it when the message is over. What a procedure raises reaches the caller of SendMessageW,
// CallWindowProcW and DestroyWindow; what goes back to the message loop ends there, in the handler
// of setFailureHandler (application.h). A message that the desktop causes inside another operation,
// such as WM_KILLFOCUS inside SetFocus, counts as one of the message loop.
#pragma once
#include "platform/window/messages.h"

#include <functional>

namespace platform {

enum class WindowKind : std::uint8_t {
    Child,   // inside its parent, without a frame
    Main,    // a frame that can be sized, an entry in the task bar
    Dialog,  // a frame of fixed size with a close box, no entry in the task bar
    Bare,    // no frame, no entry in the task bar, above other windows, never the focus
    Tip,     // the same, and the mouse does not see it; showing it activates nothing
};

struct WindowOptions {
    WindowKind kind = WindowKind::Child;
    HWND parent = 0;   // of a child; the owner of other windows, or 0
    POINT position{};  // where nothing was said by SetWindowPos, a framed window is placed by the
    SIZE size{};       // desktop unless position is set
    Text title{};
    WNDPROC procedure = nullptr;                 // DefWindowProcW
    std::intptr_t userData = 0;                  // of GetWindowLongW(GWL_USERDATA)
    COLORREF background = 0xFFFFFF;              // what the picture holds where nothing was drawn
    std::uint32_t style = 0, extendedStyle = 0;  // kept for GetWindowLongW, no effect of their own
    Text className{};                            // kept for FindWindowExA
};
// The window is hidden, except that a child starts visible. 0 for a child without a living parent
// and when the desktop has none to give.
[[nodiscard]] HWND createWindow(const WindowOptions& options);

// WM_DESTROY for the window, then for what it holds and owns, each before its own children. False
// for an unknown window; true without a second WM_DESTROY while the first one still runs.
bool DestroyWindow(HWND hWnd);
[[nodiscard]] bool IsWindow(HWND hWnd);
[[nodiscard]] HWND GetParent(HWND hWnd);              // the owner, for other windows than children
[[nodiscard]] bool IsChild(HWND hParent, HWND hWnd);  // at any depth; never of itself
// The next child of hParent behind hAfter (0: from the first on) whose class has that name, its
// letter case aside. 0 without one.
[[nodiscard]] HWND FindWindowExA(HWND hParent, HWND hAfter, const char* className);

// The thread's id (1), and the process that the window belongs to.
std::uint32_t GetWindowThreadProcessId(HWND hWnd, std::uint32_t& processId);
[[nodiscard]] std::uint32_t GetCurrentProcessId();

// ---- Procedures and messages

constexpr int GWL_WNDPROC = -4;
constexpr int GWL_STYLE = -16;
constexpr int GWL_EXSTYLE = -20;
constexpr int GWL_USERDATA = -21;
// Gives the previous value. For GWL_WNDPROC 0 is a failure, and the procedure stays: an unknown
// window, or the value 0.
std::intptr_t SetWindowLongW(HWND hWnd, int index, std::intptr_t value);
[[nodiscard]] std::intptr_t GetWindowLongW(HWND hWnd, int index);

// 0 without a procedure and for a window that is gone.
LRESULT CallWindowProcW(WNDPROC procedure, HWND hWnd, std::uint32_t uMsg, WPARAM wParam,
                        LPARAM lParam);
// The end of every chain: what a window does by itself with a message. An event of the desktop that
// came as this message is handled by the desktop's library here.
LRESULT DefWindowProcW(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam);
LRESULT SendMessageW(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam);
// The message comes through the message loop, in the order of posting; it is dropped when the
// window is gone by then. False for an unknown window.
bool PostMessageW(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam);

// Sees each key message (WM_KEYDOWN to WM_SYSCHAR) for the window or anything inside it before the
// window that has the focus, hWnd, does; an inner window's filter is asked first. True: the message
// is used up, and a key that goes down makes no character then.
using KeyFilter = std::function<bool(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam)>;
void setKeyFilter(HWND hWnd, KeyFilter filter);  // an empty one takes it away

// ---- State, place and title

constexpr int SW_HIDE = 0;
constexpr int SW_SHOWNORMAL = 1;
constexpr int SW_SHOWMINIMIZED = 2;
constexpr int SW_SHOWMAXIMIZED = 3;
constexpr int SW_SHOWNOACTIVATE = 4;
constexpr int SW_SHOW = 5;
bool ShowWindow(HWND hWnd, int command);        // whether it was visible before
[[nodiscard]] bool IsWindowVisible(HWND hWnd);  // itself and all around it
[[nodiscard]] bool IsIconic(HWND hWnd);         // minimised
// A disabled window and what is inside it take no mouse and no keys; the mouse goes to its parent.
bool EnableWindow(HWND hWnd, bool enable);  // whether it was disabled before
[[nodiscard]] bool IsWindowEnabled(HWND hWnd);

constexpr HWND HWND_TOP = 0;
constexpr HWND HWND_BOTTOM = 1;
constexpr HWND HWND_TOPMOST = 0xFFFFFFFF;
constexpr HWND HWND_NOTOPMOST = 0xFFFFFFFE;
constexpr std::uint32_t SWP_NOSIZE = 0x0001;
constexpr std::uint32_t SWP_NOMOVE = 0x0002;
constexpr std::uint32_t SWP_NOZORDER = 0x0004;
constexpr std::uint32_t SWP_NOACTIVATE = 0x0010;
constexpr std::uint32_t SWP_SHOWWINDOW = 0x0040;
constexpr std::uint32_t SWP_HIDEWINDOW = 0x0080;
constexpr std::uint32_t SWP_NOOWNERZORDER = 0x0200;
constexpr std::uint32_t SWP_ASYNCWINDOWPOS = 0x4000;
// Moves, sizes, shows and hides; sizes below 0 count as 0. WM_MOVE and WM_SIZE come at once, also
// to a hidden window, and only for a change. insertAfter: HWND_TOP, HWND_BOTTOM, HWND_TOPMOST,
// HWND_NOTOPMOST, or a sibling to go under.
bool SetWindowPos(HWND hWnd, HWND insertAfter, int x, int y, int cx, int cy, std::uint32_t flags);
bool GetClientRect(HWND hWnd, RECT& rect);  // left and top are 0
bool GetWindowRect(HWND hWnd, RECT& rect);  // on the screen, with the frame where there is one
bool ClientToScreen(HWND hWnd, POINT& point);
bool ScreenToClient(HWND hWnd, POINT& point);

bool SetWindowTextW(HWND hWnd, TextView text);  // by WM_SETTEXT
[[nodiscard]] Text GetWindowTextW(HWND hWnd);   // by WM_GETTEXT
[[nodiscard]] int GetWindowTextLengthW(HWND hWnd);

// The icon of a window that is not a child, in its frame and in the task bar. A copy is taken; 0 is
// that of the program (resources.h), or the desktop's own.
bool setWindowIcon(HWND hWnd, HICON icon);

// Cuts the client area to a copy of the region; with 0 it is a rectangle again. A menu bar above
// it shows in any case.
bool SetWindowRgn(HWND hWnd, HRGN hRgn, bool redraw);

constexpr std::uint32_t LWA_ALPHA = 2;
// Opacity of a window that is not a child, 0 to 255. It shows where the desktop composes windows.
bool SetLayeredWindowAttributes(HWND hWnd, COLORREF key, std::uint8_t alpha, std::uint32_t flags);

// Files dropped on the window come as WM_DROPFILES.
void DragAcceptFiles(HWND hWnd, bool accept);

// Shows the window and runs the message loop until it is hidden or destroyed, or the program ends;
// the program's other windows take no input meanwhile. False for an unknown window.
bool runModal(HWND hWnd);

// ---- Painting

// Asks for WM_PAINT, which comes through the message loop, once for any number of requests. With
// erase the rectangle (none: all of it) has the background's colour by then.
bool InvalidateRect(HWND hWnd, const RECT* rect = nullptr, bool erase = false);
// Brings the picture to the screen before it returns, after a WM_PAINT when one was asked for. Does
// nothing for a hidden window, and inside its own WM_PAINT.
bool UpdateWindow(HWND hWnd);
void setWindowBackground(HWND hWnd, COLORREF color);  // for erasing and for parts that are new

// ---- Focus and mouse

// The window that had the focus. The new one gets it when the program's window is active; a hidden
// one keeps the wish until it shows. With 0 no window has it. A press of a button moves no focus by
// itself, but keeps the mouse with its window until the last button is up.
HWND SetFocus(HWND hWnd);
[[nodiscard]] HWND GetFocus();  // 0 while no window of the program has it
// The cursor over the window; 0 is the arrow. See input.h.
void setWindowCursor(HWND hWnd, HICON cursor);

}  // namespace platform
