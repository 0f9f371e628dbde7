// workbench/menuEntries.h: the menu of the main window, as a table.
#pragma once
#include "platform/window/menu.h"

#include <span>

// The identifiers of the native items.
enum MenuEntry : std::uint32_t {
    mnuFile = 1,
    mnuOpenMainFile,
    sep1,
    mnuOpenTranslatedFile,
    mnuCreateNewTranslationEmpty,
    mnuCreateNewTranslationFull,
    sep3,
    mnuSave,
    sep2,
    mnuExit,
    mnuTools,
    mnuFindNextUntranslated,
    mnuFindPhrase,
    mnuFindTransPhrase,
    sep10,
    mnuShowOnlyUntranslated,
    mnuGotoLine,
    mnuHelp,
    mnuShowHelp,
    mnuAbout,
};

struct MenuLine {
    MenuEntry entry;
    bool onBar;
    TextView sCaption;
    TextView sShortcut = {};  // as shown
    std::uint8_t modifiers = 0;
    std::int32_t key = 0;  // 0: none
};
[[nodiscard]] std::span<const MenuLine>
menuLines();  // in order; each follows the bar's item it is in
[[nodiscard]] TextView captionOf(MenuEntry entry);

// A fresh menu bar of these lines, mnuSave disabled.
[[nodiscard]] platform::HMENU makeMenuBar();
bool setMenuKeys(platform::HWND hWnd);
// The submenu of an item on the bar.
[[nodiscard]] platform::HMENU submenuOf(platform::HMENU bar, MenuEntry entry);
