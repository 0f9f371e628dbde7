#include "platform/window/menu.h"

#include "platform/base/codepages.h"
#include "platform/window/menu_internal.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace platform {

HandleTable<MenuRecord>& menuTable() {
    static HandleTable<MenuRecord> table(HandleKind::Menu);
    return table;
}

std::size_t MenuRecord::positionOf(std::uint32_t id) {
    if (!m_known) {
        m_positions.clear();
        for (std::size_t i = 0; i < items.size(); ++i) m_positions.try_emplace(items[i].id, i);
        m_known = true;
    }
    const auto found = m_positions.find(id);
    return found == m_positions.end() ? npos : found->second;
}

namespace {

MenuPlace findByIdentifier(MenuRecord& menu, std::uint32_t id) {
    if (const std::size_t own = menu.positionOf(id); own != MenuRecord::npos) return {&menu, own};
    for (const MenuItem& item : menu.items) {
        MenuRecord* inside = menuOf(item.subMenu);
        if (inside == nullptr) continue;
        if (const MenuPlace found = findByIdentifier(*inside, id)) return found;
    }
    return {};
}

}  // namespace

MenuPlace findItem(HMENU hMenu, std::uint32_t item, bool byPosition) {
    MenuRecord* menu = menuOf(hMenu);
    if (menu == nullptr) return {};
    if (!byPosition) return findByIdentifier(*menu, item);
    return item < menu->items.size() ? MenuPlace{menu, item} : MenuPlace{};
}

Text captionOf(const MenuItem& item) {
    Text caption = item.shown ? *item.shown : item.text.substr(0, item.text.rfind(u'\t'));
    std::ranges::replace_if(
        caption, [](char16_t unit) { return unit < 32; }, u' ');
    return caption;
}

TextView keyNameOf(const MenuItem& item) {
    const std::size_t tab = item.text.rfind(u'\t');
    return tab == Text::npos ? TextView() : TextView(item.text).substr(tab + 1);
}

namespace {

bool showsText(std::uint32_t type) { return (type & (MFT_OWNERDRAW | MFT_SEPARATOR)) == 0; }

// Whether a menu is the other one or holds it at any depth.
bool holds(HMENU hMenu, HMENU other) {
    if (hMenu == other) return true;
    const MenuRecord* menu = menuOf(hMenu);
    return menu != nullptr && std::ranges::any_of(menu->items, [&](const MenuItem& item) {
               return item.subMenu != 0 && holds(item.subMenu, other);
           });
}

void itemsChanged(MenuRecord& menu) {
    if (menu.bar != nullptr) menu.bar->itemsChanged();
    if (menu.popup != nullptr) menu.popup->itemsChanged();
}

// What both forms of the record have in common.
struct ItemValues {
    std::uint32_t fMask, fType, fState, wID;
    HMENU hSubMenu;
    std::uint32_t dwItemData;
};

// Writes what fMask names; text is what the record carries as such.
void write(MenuRecord& menu, MenuItem& item, const ItemValues& values, Text text) {
    const std::uint32_t mask = values.fMask;
    if ((mask & MIIM_STATE) != 0) item.state = values.fState;
    if ((mask & MIIM_DATA) != 0) item.data = values.dwItemData;
    if ((mask & MIIM_SUBMENU) != 0) item.subMenu = values.hSubMenu;
    if ((mask & MIIM_ID) != 0 && item.id != values.wID) {
        item.id = values.wID;
        menu.forgetPositions();
    }
    if ((mask & (MIIM_FTYPE | MIIM_TYPE)) != 0) item.type = values.fType;
    if ((mask & MIIM_TYPE) != 0 && !showsText(item.type)) text.clear();
    if ((mask & (MIIM_STRING | MIIM_TYPE)) != 0) item.text = std::move(text);
    if ((mask & (MIIM_STRING | MIIM_TYPE | MIIM_FTYPE)) != 0) item.shown.reset();
    ++item.revision;
    itemsChanged(menu);
}

bool setItem(HMENU hMenu, std::uint32_t item, bool byPosition, const ItemValues& values,
             Text text) {
    const MenuPlace place = findItem(hMenu, item, byPosition);
    if (!place) return false;
    const bool newSubMenu = (values.fMask & MIIM_SUBMENU) != 0 && values.hSubMenu != 0;
    if (newSubMenu && holds(values.hSubMenu, place.menu->handle)) return false;
    write(*place.menu, place.item(), values, std::move(text));
    return true;
}

ItemValues valuesOf(const MENUITEMINFOW& info) {
    return {info.fMask, info.fType, info.fState, info.wID, info.hSubMenu, info.dwItemData};
}

// Whether the text is asked for and there.
bool read(const MenuItem& item, std::uint32_t mask, auto& info) {
    if ((mask & MIIM_STATE) != 0) info.fState = item.state;
    if ((mask & MIIM_DATA) != 0) info.dwItemData = item.data;
    if ((mask & MIIM_SUBMENU) != 0) info.hSubMenu = item.subMenu;
    if ((mask & MIIM_ID) != 0) info.wID = item.id;
    if ((mask & (MIIM_FTYPE | MIIM_TYPE)) != 0) info.fType = item.type;
    return (mask & MIIM_STRING) != 0 || ((mask & MIIM_TYPE) != 0 && showsText(item.type));
}

// Takes an item out; its submenu.
std::optional<HMENU> takeOut(HMENU hMenu, std::uint32_t item, std::uint32_t flags) {
    const MenuPlace place = findItem(hMenu, item, (flags & MF_BYPOSITION) != 0);
    if (!place) return std::nullopt;
    MenuRecord& menu = *place.menu;
    const HMENU subMenu = place.item().subMenu;
    menu.items.erase(menu.items.begin() + static_cast<std::ptrdiff_t>(place.position));
    menu.forgetPositions();
    itemsChanged(menu);
    return subMenu;
}

}  // namespace

// ---- Menus

HMENU CreateMenu() {
    const HMENU hMenu = menuTable().add({});
    if (MenuRecord* menu = menuOf(hMenu)) menu->handle = hMenu;
    return hMenu;
}

bool DestroyMenu(HMENU hMenu) {
    MenuRecord* menu = menuOf(hMenu);
    if (menu == nullptr) return false;
    if (menu->window != 0) SetMenu(menu->window, 0);
    if (menu->popup != nullptr) menu->popup->closeLater();
    const std::vector<MenuItem> items = std::move(menu->items);
    menuTable().remove(hMenu);
    for (const MenuItem& item : items) DestroyMenu(item.subMenu);
    return true;
}

bool IsMenu(HMENU hMenu) { return menuOf(hMenu) != nullptr; }

int GetMenuItemCount(HMENU hMenu) {
    const MenuRecord* menu = menuOf(hMenu);
    return menu == nullptr ? -1 : static_cast<int>(menu->items.size());
}

HMENU GetSubMenu(HMENU hMenu, int position) {
    const MenuPlace place = findItem(hMenu, static_cast<std::uint32_t>(position), true);
    return place && IsMenu(place.item().subMenu) ? place.item().subMenu : 0;
}

// ---- Items

bool GetMenuItemInfoA(HMENU hMenu, std::uint32_t item, bool byPosition, MENUITEMINFOA& info) {
    const MenuPlace place = findItem(hMenu, item, byPosition);
    if (!place || info.cbSize != MENUITEMINFOA().cbSize) return false;
    const bool withText = read(place.item(), info.fMask, info);
    if (!withText && (info.fMask & MIIM_TYPE) == 0) return true;
    const Bytes text =
        withText && !place.item().text.empty() ? textToBytes(place.item().text, GetACP()) : Bytes();
    if (info.dwTypeData == nullptr) {
        info.cch = static_cast<std::uint32_t>(text.size());
    } else if (info.cch > 0) {
        info.cch = static_cast<std::uint32_t>(std::min<std::size_t>(info.cch - 1, text.size()));
        std::copy_n(text.begin(), info.cch, info.dwTypeData);
        info.dwTypeData[info.cch] = '\0';
    }
    return true;
}

bool GetMenuItemInfoW(HMENU hMenu, std::uint32_t item, bool byPosition, MENUITEMINFOW& info) {
    const MenuPlace place = findItem(hMenu, item, byPosition);
    if (!place) return false;
    if (read(place.item(), info.fMask, info)) {
        info.dwTypeData = place.item().text;
    } else if ((info.fMask & MIIM_TYPE) != 0) {
        info.dwTypeData.clear();
    }
    return true;
}

bool SetMenuItemInfoA(HMENU hMenu, std::uint32_t item, bool byPosition, const MENUITEMINFOA& info) {
    if (info.cbSize != MENUITEMINFOA().cbSize) return false;
    Text text;
    const bool withText =
        (info.fMask & MIIM_STRING) != 0 || ((info.fMask & MIIM_TYPE) != 0 && showsText(info.fType));
    if (withText && info.dwTypeData != nullptr) {
        text = bytesToText(reinterpret_cast<const std::uint8_t*>(info.dwTypeData),
                           std::strlen(info.dwTypeData), GetACP());
    }
    return setItem(hMenu, item, byPosition,
                   {info.fMask, info.fType, info.fState, info.wID, info.hSubMenu, info.dwItemData},
                   std::move(text));
}

bool SetMenuItemInfoW(HMENU hMenu, std::uint32_t item, bool byPosition, const MENUITEMINFOW& info) {
    return setItem(hMenu, item, byPosition, valuesOf(info), info.dwTypeData);
}

bool InsertMenuItemW(HMENU hMenu, std::uint32_t item, bool byPosition, const MENUITEMINFOW& info) {
    MenuRecord* menu = menuOf(hMenu);
    if (menu == nullptr) return false;
    const bool hasSubMenu = (info.fMask & MIIM_SUBMENU) != 0 && info.hSubMenu != 0;
    if (hasSubMenu && holds(info.hSubMenu, hMenu)) return false;

    std::size_t position = menu->items.size();
    if (const MenuPlace place = findItem(hMenu, item, byPosition)) {
        menu = place.menu;
        position = place.position;
        if (hasSubMenu && holds(info.hSubMenu, menu->handle)) return false;
    }
    static std::uint64_t s_lastSerial = 0;
    MenuItem made;
    made.serial = ++s_lastSerial;
    menu->items.insert(menu->items.begin() + static_cast<std::ptrdiff_t>(position), made);
    menu->forgetPositions();
    write(*menu, menu->items[position], valuesOf(info), info.dwTypeData);
    return true;
}

bool RemoveMenu(HMENU hMenu, std::uint32_t item, std::uint32_t flags) {
    return takeOut(hMenu, item, flags).has_value();
}

bool DeleteMenu(HMENU hMenu, std::uint32_t item, std::uint32_t flags) {
    const std::optional<HMENU> subMenu = takeOut(hMenu, item, flags);
    if (subMenu) DestroyMenu(*subMenu);
    return subMenu.has_value();
}

bool setMenuItemShownText(HMENU hMenu, std::uint32_t item, bool byPosition, TextView text) {
    const MenuPlace place = findItem(hMenu, item, byPosition);
    if (!place) return false;
    if (place.item().shown != text) {
        place.item().shown = Text(text);
        itemsChanged(*place.menu);
    }
    return true;
}

}  // namespace platform
