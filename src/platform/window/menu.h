// platform/window/menu.h: menus as lists of items, the menu bar of a window, pop-up menus, and keys
// that stand for commands.
//
// A menu is a numbered list of items; each has an identifier, a type, a text, a word of user data,
// a state and perhaps a submenu, which then belongs to it. Menus change at any time, also while
// they are open or being drawn; what shows follows through the message loop.
//
// What a window hears of its bar, of what opens from there, and of its pop-up menus:
//   WM_INITMENUPOPUP  ahead of each opening. wParam: the menu; lParam: the position of the item
//                     that it opens from, in the high word whether it is the system's menu (0)
//   WM_MEASUREITEM    for each item of the type MFT_OWNERDRAW; lParam: MEASUREITEMSTRUCT*. A bar
//                     asks after changes, a popup at each opening
//   WM_DRAWITEM       lParam: const DRAWITEMSTRUCT*
//   WM_COMMAND        posted when an item is picked or its key pressed; wParam: the identifier
// Keyboard, placing and the handling of the mouse are the desktop's; F10 does as Alt alone: it
// gives the keys to the bar and back, and closes popups. The letter after a "&" picks an item; that
// and what screen readers say come from setMenuItemShownText.
//
// Positions count from 0. An unknown menu, position or identifier gives false, 0 or -1, and nothing
// happens. All of it belongs to the window thread.
#pragma once
#include "platform/window/messages.h"

#include <span>

namespace platform {

constexpr std::uint32_t MIIM_STATE = 0x0001;
constexpr std::uint32_t MIIM_ID = 0x0002;
constexpr std::uint32_t MIIM_SUBMENU = 0x0004;
constexpr std::uint32_t MIIM_TYPE = 0x0010;  // MIIM_FTYPE, and the text of items that show one
constexpr std::uint32_t MIIM_DATA = 0x0020;
constexpr std::uint32_t MIIM_STRING = 0x0040;
constexpr std::uint32_t MIIM_FTYPE = 0x0100;

constexpr std::uint32_t MFT_STRING = 0;
constexpr std::uint32_t MFT_OWNERDRAW = 0x0100;
constexpr std::uint32_t MFT_SEPARATOR = 0x0800;

constexpr std::uint32_t MFS_DISABLED = 0x0003;  // any of its two bits; grey, and cannot be picked
constexpr std::uint32_t MFS_CHECKED = 0x0008;

// The text in the system ANSI code page.
struct MENUITEMINFOA {
    std::uint32_t cbSize = 44;
    std::uint32_t fMask = 0;
    std::uint32_t fType = 0;
    std::uint32_t fState = 0;
    std::uint32_t wID = 0;
    HMENU hSubMenu = 0;
    std::uint32_t dwItemData = 0;
    char* dwTypeData = nullptr;  // ended by NUL
    std::uint32_t cch = 0;       // see GetMenuItemInfoA
};
struct MENUITEMINFOW {
    std::uint32_t fMask = 0;
    std::uint32_t fType = 0;
    std::uint32_t fState = 0;
    std::uint32_t wID = 0;
    HMENU hSubMenu = 0;
    std::uint32_t dwItemData = 0;
    Text dwTypeData{};  // caption, and behind the last tab the name of its key
};

// ---- Menus and their items

// An empty menu, for a bar or to pop up. 0 when too many are alive.
[[nodiscard]] HMENU CreateMenu();
// Ends a menu with its submenus, also while it is open. A window takes its bar along by itself.
bool DestroyMenu(HMENU hMenu);
[[nodiscard]] bool IsMenu(HMENU hMenu);

[[nodiscard]] int GetMenuItemCount(HMENU hMenu);  // -1 for an unknown menu
// 0 also for an item without one.
[[nodiscard]] HMENU GetSubMenu(HMENU hMenu, int position);

// item is a position, or an identifier: the first item of that menu that has it, else the first in
// its submenus. What fMask names is read or written, and nothing else.
//
// The text goes into the dwTypeData of the record, at most cch - 1 bytes of it and a NUL; cch then
// counts the bytes without that. With nullptr in place of room, cch is the length of the text.
// False for a cbSize other than 44.
bool GetMenuItemInfoA(HMENU hMenu, std::uint32_t item, bool byPosition, MENUITEMINFOA& info);
bool GetMenuItemInfoW(HMENU hMenu, std::uint32_t item, bool byPosition, MENUITEMINFOW& info);
// The text is read up to its NUL, whatever cch says. With MIIM_TYPE an item of the type
// MFT_OWNERDRAW or MFT_SEPARATOR loses its text; with MIIM_FTYPE it keeps it. A submenu that the
// item had lives on by itself. False also for a submenu that would be inside of itself.
bool SetMenuItemInfoA(HMENU hMenu, std::uint32_t item, bool byPosition, const MENUITEMINFOA& info);
bool SetMenuItemInfoW(HMENU hMenu, std::uint32_t item, bool byPosition, const MENUITEMINFOW& info);
// Ahead of the item; a position beyond the last one and an unknown identifier append.
bool InsertMenuItemW(HMENU hMenu, std::uint32_t item, bool byPosition, const MENUITEMINFOW& info);

constexpr std::uint32_t MF_BYCOMMAND = 0x0000;
constexpr std::uint32_t MF_BYPOSITION = 0x0400;
bool RemoveMenu(HMENU hMenu, std::uint32_t item, std::uint32_t flags);  // its submenu lives on,
bool DeleteMenu(HMENU hMenu, std::uint32_t item, std::uint32_t flags);  // or goes along

// What an item draws by itself, with a "&" ahead of its letter: the name that screen readers say,
// and the letter that picks it. Until something is set, and again when the text or the type is
// written, it is the item's text up to its last tab.
bool setMenuItemShownText(HMENU hMenu, std::uint32_t item, bool byPosition, TextView text);

// ---- Menus of windows

// Gives a window its bar, or with 0 takes it away; the former one lives on. The bar is outside of
// the client area: a window that is not visible grows by it, a visible one gives it room. False for
// a child window and for a menu that is another window's bar.
bool SetMenu(HWND hWnd, HMENU hMenu);
[[nodiscard]] HMENU GetMenu(HWND hWnd);  // 0 without a bar
// Brings the bar up to date at once.
bool DrawMenuBar(HWND hWnd);
// Stands for the menu that the desktop itself opens at a window's title. It is empty.
[[nodiscard]] HMENU GetSystemMenu(HWND hWnd, bool bRevert);

constexpr std::uint32_t TPM_LEFTALIGN = 0x0000;  // what of the menu is at x
constexpr std::uint32_t TPM_CENTERALIGN = 0x0004;
constexpr std::uint32_t TPM_RIGHTALIGN = 0x0008;
constexpr std::uint32_t TPM_RETURNCMD = 0x0100;
// Opens a menu at a place on the screen and reads messages until it is closed. With TPM_RETURNCMD
// the identifier of what was picked, or 0, and no WM_COMMAND is posted; else 1. 0 when it could not
// be opened: unknown menu or window, open already, or ended by its owner ahead of that.
std::int32_t TrackPopupMenu(HMENU hMenu, std::uint32_t flags, int x, int y, HWND hWnd);

// ---- Keys for commands

constexpr std::uint8_t FSHIFT = 0x04;
constexpr std::uint8_t FCONTROL = 0x08;
constexpr std::uint8_t FALT = 0x10;
struct ACCEL {
    std::uint8_t fVirt = 0;  // the keys held with it, exactly these
    std::int32_t key = 0;    // key code
    std::uint32_t cmd = 0;   // wParam of the WM_COMMAND that hWnd gets
};
// From now on these keys are commands wherever in the window the focus is; nobody else hears them
// go down. One whose item in the bar is disabled, or inside of a disabled one, is used up without a
// command. An empty list takes them away.
bool setAccelerators(HWND hWnd, std::span<const ACCEL> keys);

// ---- Messages

constexpr std::uint32_t ODT_MENU = 1;
constexpr std::uint32_t ODA_DRAWENTIRE = 1;
constexpr std::uint32_t ODS_SELECTED = 0x0001;
constexpr std::uint32_t ODS_DISABLED = 0x0004;
constexpr std::uint32_t ODS_CHECKED = 0x0008;
constexpr std::uint32_t ODS_HOTLIGHT = 0x0040;  // of a bar: the mouse is over it

// Pixels. The width of a check mark comes on top of itemWidth.
struct MEASUREITEMSTRUCT {
    std::uint32_t CtlType = ODT_MENU;
    std::uint32_t CtlID = 0, itemID = 0;
    std::uint32_t itemWidth = 0, itemHeight = 0;
    std::uint32_t itemData = 0;
};
// hDC holds the menu font and keeps what was drawn before; rcItem is where the item is in it. What
// is drawn outside of that does not show.
struct DRAWITEMSTRUCT {
    std::uint32_t CtlType = ODT_MENU;
    std::uint32_t CtlID = 0, itemID = 0;
    std::uint32_t itemAction = ODA_DRAWENTIRE, itemState = 0;
    HMENU hwndItem = 0;  // the menu
    HDC hDC = 0;
    RECT rcItem;
    std::uint32_t itemData = 0;
};

}  // namespace platform
