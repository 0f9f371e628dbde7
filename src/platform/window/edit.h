// platform/window/edit.h: edit windows, the desktop's own fields for a line or a page of text.
//
// An edit window is a child window of class "EDIT". It does by itself what a person expects of a
// field: a caret, selecting, typing, an input method, the clipboard, undo, a menu by the right
// button. All of it arrives as messages first, and a procedure in front may change or keep each of
// them: keys as WM_KEYDOWN and WM_CHAR, the clipboard's as WM_CUT, WM_COPY, WM_PASTE, WM_CLEAR and
// WM_UNDO, an input method's as WM_IME_... Tab and Escape are the business of whoever is around it;
// a WM_CHAR of 9 goes into a field of several lines.
//
// Positions and lengths count UTF-16 units from 0. In a field of several lines a line break is CR
// LF, two units. A lone CR, a lone LF or a U+2029 that was set by WM_SETTEXT breaks the line as
// well, and stays one unit until it is edited away; those that are typed, pasted or put in place of
// the selection become CR LF. In a field of one line breaks that are set stay in the text and show
// as blanks; a run of them that comes in another way becomes one blank.
// A line of more than 4096 units shows as several lines, and counts so where lines are counted.
//
// A change of the text sends WM_COMMAND with EN_CHANGE to the parent, once it is made, except the
// one by WM_SETTEXT in a field of several lines.
#pragma once
#include "platform/window/window.h"

namespace platform {

constexpr std::uint32_t WS_TABSTOP = 0x00010000;  // kept, no effect of its own
constexpr std::uint32_t WS_HSCROLL = 0x00100000;
constexpr std::uint32_t WS_VSCROLL = 0x00200000;
constexpr std::uint32_t WS_VISIBLE = 0x10000000;
constexpr std::uint32_t WS_CHILD = 0x40000000;

constexpr std::uint32_t ES_CENTER = 0x0001;
constexpr std::uint32_t ES_RIGHT = 0x0002;
constexpr std::uint32_t ES_MULTILINE = 0x0004;
constexpr std::uint32_t ES_AUTOVSCROLL = 0x0040;  // kept, no effect of its own
constexpr std::uint32_t ES_AUTOHSCROLL = 0x0080;  // without it several lines break at words, and
                                                  // so do those that are not left-aligned
constexpr std::uint32_t ES_NOHIDESEL = 0x0100;    // the selection shows without the focus, too
constexpr std::uint32_t ES_READONLY = 0x0800;
constexpr std::uint32_t ES_WANTRETURN = 0x1000;  // kept, no effect of its own

constexpr std::uint32_t WS_EX_RTLREADING = 0x00002000;
constexpr std::uint32_t WS_EX_LAYOUTRTL = 0x00400000;  // sides change places, text reads from right

enum : std::uint32_t {
    // wParam, lParam: std::int32_t* for start and end, or 0. Both as low and high word, or -1 for
    // an end beyond 65,535.
    EM_GETSEL = 0x00B0,
    // wParam: the end that stays; lParam: the end with the caret, -1 the end of the text. Held to
    // the text. wParam -1: nothing is selected any more.
    EM_SETSEL = 0x00B1,
    EM_SCROLLCARET = 0x00B7,  // brings the caret into view
    // wParam: the line, counted from 0 as shown, or -1 for the caret's. Where it starts, or -1.
    EM_LINEINDEX = 0x00BB,
    // wParam: 1 if it can be undone; lParam: const Text* to go in place of the selection. What the
    // limit does not let in is cut off.
    EM_REPLACESEL = 0x00C2,
    // wParam: the greatest length that typing, the clipboard, an input method and EM_REPLACESEL
    // may make; 0 or less: none. A longer text that is there or is set stays.
    EM_LIMITTEXT = 0x00C5,
    EM_CANUNDO = 0x00C6,
    EM_UNDO = 0x00C7,
    EM_LINEFROMCHAR = 0x00C9,     // wParam: a position, -1 the selection's start
    EM_SETPASSWORDCHAR = 0x00CC,  // wParam: the unit that shows for each, 0 none; one line only
    EM_SETREADONLY = 0x00CF,      // wParam: 1 or 0; changes ES_READONLY in the style
    EM_GETLIMITTEXT = 0x00D5,     // kNoTextLimit without a limit
};
constexpr std::int32_t kNoTextLimit = 0x7FFFFFFE;

constexpr std::int32_t EN_CHANGE = 0x0300;  // high word of WM_COMMAND's wParam

// A window of a native class; "EDIT" is the one there is, in any letter case. It starts with the
// title as its text, in the stock font, visible with WS_VISIBLE. Position and size are pixels in
// the parent's client area. hMenu, hInstance and param have no influence. 0 for another class,
// without a living parent, and when the desktop has no window to give.
[[nodiscard]] HWND CreateWindowExW(std::uint32_t extendedStyle, TextView className, TextView title,
                                   std::uint32_t style, int x, int y, int cx, int cy, HWND parent,
                                   HMENU hMenu = 0, std::uint32_t hInstance = 0,
                                   const void* param = nullptr);

// What a screen reader calls the window; nothing for one that is no edit window. Its role and its
// text are known anyway, and a password's is not told.
void setEditName(HWND hWnd, TextView name);

// ---- Input methods
//
// A composition is WM_IME_STARTCOMPOSITION, any number of WM_IME_COMPOSITION, and
// WM_IME_ENDCOMPOSITION. By default the field shows what is being composed and takes the result;
// a procedure that keeps a WM_IME_COMPOSITION with GCS_RESULTSTR from it takes the result itself.

constexpr LPARAM GCS_COMPSTR = 0x0008;    // what is being composed
constexpr LPARAM GCS_RESULTSTR = 0x0800;  // what has come of it

using HIMC = std::uint32_t;
[[nodiscard]] HIMC ImmGetContext(HWND hWnd);  // 0 for a window that is no edit window
// Copies the string of a GCS_... index of the message that is on its way, no more than size bytes,
// without an end mark. Its length in bytes; with a size of 0 the length alone. 0 without one.
std::int32_t ImmGetCompositionStringW(HIMC hIMC, LPARAM index, void* buffer, std::uint32_t size);
bool ImmReleaseContext(HWND hWnd, HIMC hIMC);

}  // namespace platform
