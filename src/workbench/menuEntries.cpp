#include "workbench/menuEntries.h"

#include <algorithm>
#include <vector>

namespace {

constexpr TextView kSeparator = u"-";

constexpr MenuLine kMenu[] = {
    {mnuFile, true, u"&File"},
    {mnuOpenMainFile, false, u"Open the main translation file"},
    {sep1, false, kSeparator},
    {mnuOpenTranslatedFile, false, u"Open the file to translate"},
    {mnuCreateNewTranslationEmpty, false, u"Create a new translation from an empty file"},
    {mnuCreateNewTranslationFull, false, u"Create a new translation from a copy of the main  file"},
    {sep3, false, kSeparator},
    {mnuSave, false, u"Save Translation", u"Ctrl+S", platform::FCONTROL, 'S'},
    {sep2, false, kSeparator},
    {mnuExit, false, u"Exit"},
    {mnuTools, true, u"&Tools"},
    {mnuFindNextUntranslated, false, u"Find Next Untranslated", u"F3", 0, platform::VK_F1 + 2},
    {mnuFindPhrase, false, u"Find Phrase", u"Ctrl+F", platform::FCONTROL, 'F'},
    {mnuFindTransPhrase, false, u"Find Translated Phrase", u"Ctrl+T", platform::FCONTROL, 'T'},
    {sep10, false, kSeparator},
    {mnuShowOnlyUntranslated, false, u"Show only untranslated strings"},
    {mnuGotoLine, false, u"Go to Line...", u"Ctrl+G", platform::FCONTROL, 'G'},
    {mnuHelp, true, u"&Help"},
    {mnuShowHelp, false, u"Help"},
    {mnuAbout, false, u"&About"},
};

platform::MENUITEMINFOW itemOf(const MenuLine& line) {
    platform::MENUITEMINFOW item;
    item.fMask = platform::MIIM_ID | platform::MIIM_TYPE | platform::MIIM_STATE;
    item.wID = line.entry;
    if (line.sCaption == kSeparator) {
        item.fType = platform::MFT_SEPARATOR;
        return item;
    }
    item.dwTypeData = line.sCaption;
    if (!line.sShortcut.empty()) item.dwTypeData += u'\t' + Text(line.sShortcut);
    if (line.entry == mnuSave) item.fState = platform::MFS_DISABLED;
    return item;
}

}  // namespace

std::span<const MenuLine> menuLines() { return kMenu; }

TextView captionOf(MenuEntry entry) {
    return std::ranges::find(kMenu, entry, &MenuLine::entry)->sCaption;
}

platform::HMENU makeMenuBar() {
    constexpr std::uint32_t kAtEnd = 0xFFFF;
    const platform::HMENU bar = platform::CreateMenu();
    platform::HMENU popup = 0;
    for (const MenuLine& line : kMenu) {
        platform::MENUITEMINFOW item = itemOf(line);
        if (line.onBar) {
            popup = platform::CreateMenu();
            item.fMask |= platform::MIIM_SUBMENU;
            item.hSubMenu = popup;
        }
        platform::InsertMenuItemW(line.onBar ? bar : popup, kAtEnd, true, item);
    }
    return bar;
}

bool setMenuKeys(platform::HWND hWnd) {
    std::vector<platform::ACCEL> keys;
    for (const MenuLine& line : kMenu) {
        if (line.key != 0) keys.push_back({line.modifiers, line.key, line.entry});
    }
    return platform::setAccelerators(hWnd, keys);
}

platform::HMENU submenuOf(platform::HMENU bar, MenuEntry entry) {
    platform::MENUITEMINFOW item;
    item.fMask = platform::MIIM_SUBMENU;
    return platform::GetMenuItemInfoW(bar, entry, false, item) ? item.hSubMenu : 0;
}
