// menu/menuTree_test.h: menus for tests, written and read as text.
#pragma once
#include "platform/window/menu.h"

#include <string>
#include <vector>

namespace test {

struct MenuEntry {
    std::uint32_t id = 0;
    Text text{};  // "-" is a separator
    std::vector<MenuEntry> opens{};
    std::uint32_t state = 0;
};

inline platform::HMENU menuTree(const std::vector<MenuEntry>& entries) {
    using namespace platform;
    const HMENU hMenu = CreateMenu();
    for (const MenuEntry& entry : entries) {
        MENUITEMINFOW info;
        info.fMask = MIIM_ID | MIIM_STATE | MIIM_FTYPE | MIIM_STRING | MIIM_SUBMENU | MIIM_DATA;
        const bool separator = entry.text == u"-";
        info.fType = separator ? MFT_SEPARATOR : MFT_STRING;
        if (!separator) info.dwTypeData = entry.text;
        info.wID = entry.id;
        info.fState = entry.state;
        info.dwItemData = entry.id * 1000;
        if (!entry.opens.empty()) info.hSubMenu = menuTree(entry.opens);
        (void)InsertMenuItemW(hMenu, ~0U, true, info);
    }
    return hMenu;
}

// Each item as identifier, type in hexadecimal unless 0, user data and text; submenus in brackets.
inline std::string menuDump(platform::HMENU hMenu) {
    using namespace platform;
    std::string all;
    for (int i = 0; i < GetMenuItemCount(hMenu); ++i) {
        MENUITEMINFOW info;
        info.fMask = MIIM_ID | MIIM_FTYPE | MIIM_STRING | MIIM_DATA;
        (void)GetMenuItemInfoW(hMenu, static_cast<std::uint32_t>(i), true, info);
        if (i > 0) all += ' ';
        all += std::to_string(info.wID);
        if ((info.fType & MFT_OWNERDRAW) != 0) all += " own";
        if ((info.fType & MFT_SEPARATOR) != 0) all += " sep";
        all += " d" + std::to_string(info.dwItemData) + " '" + toUtf8(info.dwTypeData) + "'";
        if (const HMENU inside = GetSubMenu(hMenu, i)) all += '[' + menuDump(inside) + ']';
    }
    return all;
}

}  // namespace test
