#include "platform/window/menu.h"

#include "platform/base/codepages.h"
#include "platform/window/application.h"
#include "platform/window/handles.h"
#include "platform/window/surface.h"
#include "platform/window/testhooks.h"
#include "support/gui/Golden.h"
#include "support/window/LoggedWindow.h"

#include <array>
#include <gtest/gtest.h>
#include <sstream>

using namespace platform;
using ::test::LoggedWindow;
using ::test::MessageLog;

namespace {

using platform::test::isMenuOpen;
using platform::test::menuItemPlace;
using platform::test::mouse;
using platform::test::MouseAction;
using platform::test::mouseOnMenu;
using platform::test::pressKey;
using platform::test::pressMenuKey;
using platform::test::settle;

struct Entry {
    std::uint32_t id;
    Text text;  // "-" is a separator
    std::uint32_t state = 0;
    HMENU opens = 0;
};

HMENU menuOfEntries(const std::vector<Entry>& entries) {
    const HMENU hMenu = CreateMenu();
    for (const Entry& entry : entries) {
        MENUITEMINFOW info;
        info.fMask = MIIM_ID | MIIM_STATE | MIIM_FTYPE | MIIM_STRING | MIIM_SUBMENU;
        info.fType = entry.text == u"-" ? MFT_SEPARATOR : MFT_STRING;
        if (entry.text != u"-") info.dwTypeData = entry.text;
        info.wID = entry.id;
        info.fState = entry.state;
        info.hSubMenu = entry.opens;
        EXPECT_TRUE(InsertMenuItemW(hMenu, ~0U, true, info));
    }
    return hMenu;
}

// Each item as identifier, type, state, user data and text; submenus in brackets.
std::string dump(HMENU hMenu) {
    std::ostringstream out;
    for (int i = 0; i < GetMenuItemCount(hMenu); ++i) {
        MENUITEMINFOW info;
        info.fMask = MIIM_ID | MIIM_STATE | MIIM_FTYPE | MIIM_STRING | MIIM_DATA;
        EXPECT_TRUE(GetMenuItemInfoW(hMenu, static_cast<std::uint32_t>(i), true, info));
        out << (i > 0 ? " " : "") << info.wID;
        if (info.fType != 0) out << std::hex << " t" << info.fType << std::dec;
        if (info.fState != 0) out << " s" << info.fState;
        if (info.dwItemData != 0) out << " d" << info.dwItemData;
        out << '\'' << toUtf8(info.dwTypeData) << '\'';
        if (const HMENU inside = GetSubMenu(hMenu, i)) out << '[' << dump(inside) << ']';
    }
    return out.str();
}

void setText(HMENU hMenu, std::uint32_t id, TextView text) {
    MENUITEMINFOW info;
    info.fMask = MIIM_STRING;
    info.dwTypeData = text;
    EXPECT_TRUE(SetMenuItemInfoW(hMenu, id, false, info));
}

void setType(HMENU hMenu, std::uint32_t id, std::uint32_t type) {
    MENUITEMINFOW info;
    info.fMask = MIIM_FTYPE;
    info.fType = type;
    EXPECT_TRUE(SetMenuItemInfoW(hMenu, id, false, info));
}

TEST(MenuItems, AreFoundByPositionAndByIdentifierAtAnyDepth) {
    const HMENU inner = menuOfEntries({{30, u"deep"}, {1, u"hidden behind the outer one"}});
    const HMENU file = menuOfEntries({{20, u"Open\tCtrl+O"}, {21, u"-"}, {22, u"More", 0, inner}});
    const HMENU bar = menuOfEntries({{2, u"&File", 0, file}, {1, u"Exit", MFS_DISABLED}});
    const std::string all =
        "2'&File'[20'Open\tCtrl+O' 21 t800'' 22'More'[30'deep' 1'hidden behind the outer one']] "
        "1 s3'Exit'";
    EXPECT_EQ(dump(bar), all);

    setText(bar, 1, u"Quit");
    setText(bar, 30, u"Deep");
    EXPECT_EQ(dump(bar), "2'&File'[20'Open\tCtrl+O' 21 t800'' 22'More'[30'Deep' 1'hidden behind "
                         "the outer one']] 1 s3'Quit'");
    MENUITEMINFOW info;
    EXPECT_FALSE(SetMenuItemInfoW(bar, 99, false, info));
    EXPECT_FALSE(SetMenuItemInfoW(bar, 2, true, info));
    EXPECT_FALSE(GetMenuItemInfoW(bar, 0xFFFFFFFF, true, info));

    // A menu cannot be inside of itself, or two would hold each other for ever.
    info.fMask = MIIM_SUBMENU;
    info.hSubMenu = bar;
    EXPECT_FALSE(SetMenuItemInfoW(bar, 30, false, info));
    EXPECT_FALSE(InsertMenuItemW(inner, 0, true, info));
    EXPECT_FALSE(InsertMenuItemW(bar, 30, false, info));

    EXPECT_TRUE(RemoveMenu(bar, 22, MF_BYCOMMAND));
    EXPECT_TRUE(IsMenu(inner));
    info = {};
    info.fMask = MIIM_ID;
    info.wID = 40;
    EXPECT_TRUE(InsertMenuItemW(bar, 21, false, info));  // ahead of an item inside
    EXPECT_EQ(dump(file), "20'Open\tCtrl+O' 40'' 21 t800''");
    EXPECT_TRUE(DeleteMenu(bar, 0, MF_BYPOSITION));
    EXPECT_FALSE(IsMenu(file));
    EXPECT_FALSE(DeleteMenu(bar, 2, MF_BYCOMMAND));
    EXPECT_EQ(GetMenuItemCount(file), -1);
    EXPECT_TRUE(DestroyMenu(bar));
    EXPECT_FALSE(DestroyMenu(bar));
    EXPECT_TRUE(DestroyMenu(inner));
}

TEST(MenuItems, CarryTextOfTheSystemCodePage) {
    struct PageScope {
        ~PageScope() { setAnsiCodePage(std::nullopt); }
    } const scope;
    const HMENU menu = menuOfEntries({{1, u"\u0416\u4E2D&x"}, {2, Text(300, u'a')}});
    const struct {
        std::uint32_t page, room;
        std::uint32_t id;
        std::string text;
        std::uint32_t count;
    } kCases[] = {
        {1251, 256, 1, "\xC6?&x", 4},
        {1252, 256, 1, "??&x", 4},
        {936, 256, 1, "\xA7\xA8\xD6\xD0&x", 6},
        {1252, 3, 1, "??", 2},
        {1252, 1, 1, "", 0},
        {1252, 0, 1, "untouched", 0},
        {1252, 256, 2, std::string(255, 'a'), 255},
    };
    for (const auto& c : kCases) {
        setAnsiCodePage(c.page);
        std::array<char, 256> room{"untouched"};
        MENUITEMINFOA info;
        info.fMask = MIIM_STRING;
        info.dwTypeData = room.data();
        info.cch = c.room;
        EXPECT_TRUE(GetMenuItemInfoA(menu, c.id, false, info));
        EXPECT_EQ(room.data(), c.text);
        EXPECT_EQ(info.cch, c.count);
        info.dwTypeData = nullptr;
        EXPECT_TRUE(GetMenuItemInfoA(menu, 2, false, info));
        EXPECT_EQ(info.cch, 300U);
        info.cbSize = 48;
        EXPECT_FALSE(GetMenuItemInfoA(menu, 2, false, info));
        EXPECT_FALSE(SetMenuItemInfoA(menu, 2, false, info));
    }
    DestroyMenu(menu);
}

TEST(MenuItems, LoseTheirTextToAnOldTypeAndKeepItWithANewOne) {
    const HMENU menu = menuOfEntries({{1, u"Open"}, {2, u"Save"}});
    MENUITEMINFOA info;
    info.fType = MFT_OWNERDRAW;
    info.dwItemData = 7;
    info.fMask = MIIM_FTYPE | MIIM_DATA;
    EXPECT_TRUE(SetMenuItemInfoA(menu, 1, false, info));
    info.fMask = MIIM_TYPE | MIIM_DATA;
    EXPECT_TRUE(SetMenuItemInfoA(menu, 2, false, info));
    EXPECT_EQ(dump(menu), "1 t100 d7'Open' 2 t100 d7''");

    // Back again, as the old way needs it.
    char text[] = "Sichern";
    info.fType = MFT_STRING;
    info.dwTypeData = text;
    info.cch = 3;
    info.fMask = MIIM_TYPE;
    EXPECT_TRUE(SetMenuItemInfoA(menu, 2, false, info));
    EXPECT_EQ(dump(menu), "1 t100 d7'Open' 2 d7'Sichern'");
    char room[8] = "#######";
    info = {};
    info.fMask = MIIM_TYPE;
    info.dwTypeData = room;
    info.cch = sizeof room;
    EXPECT_TRUE(GetMenuItemInfoA(menu, 1, false, info));
    EXPECT_EQ(info.cch, 0U) << "an owner-drawn item has no text in the old way";
    EXPECT_EQ(info.fType, MFT_OWNERDRAW);
    DestroyMenu(menu);
}

TEST(MenuItems, TenThousandAreChangedByIdentifierInNoTime) {
    const HMENU menu = CreateMenu();
    MENUITEMINFOW info;
    info.fMask = MIIM_ID;
    for (info.wID = 0; info.wID < 10000; ++info.wID) {
        ASSERT_TRUE(InsertMenuItemW(menu, ~0U, true, info));
    }
    for (std::uint32_t id = 0; id < 10000; ++id) setText(menu, id, u"x");
    EXPECT_EQ(GetMenuItemCount(menu), 10000);
    DestroyMenu(menu);
}

// ---- Windows

class MenuWindow : public testing::Test {
public:
    ~MenuWindow() override { settle(); }
    static WindowOptions options() {
        WindowOptions made;
        made.kind = WindowKind::Main;
        made.position = {100, 50};
        made.size = {300, 120};
        return made;
    }
    // Answers owner-drawn items: each as wide as its user data, painted in a colour by its state.
    void drawItems() {
        window.on = [this](std::uint32_t uMsg, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
            if (uMsg == WM_MEASUREITEM) {
                auto& item = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
                item.itemWidth = item.itemData;
                item.itemHeight = 20;
                return 1;
            }
            if (uMsg == WM_DRAWITEM) {
                const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
                const bool hot = (item.itemState & (ODS_SELECTED | ODS_HOTLIGHT)) != 0;
                const bool grey = (item.itemState & ODS_DISABLED) != 0;
                const HBRUSH brush = CreateSolidBrush(grey  ? rgb(128, 128, 128)
                                                      : hot ? rgb(255, 0, 0)
                                                            : rgb(0, 0, 255));
                FillRect(item.hDC, item.rcItem, brush);
                DeleteObject(brush);
                return 1;
            }
            return std::nullopt;
        };
    }
    void ownerDrawn(HMENU hMenu, std::uint32_t id, std::uint32_t width) {
        MENUITEMINFOW info;
        info.fMask = MIIM_FTYPE;
        EXPECT_TRUE(GetMenuItemInfoW(hMenu, id, false, info));
        info.fMask = MIIM_FTYPE | MIIM_DATA;
        info.fType |= MFT_OWNERDRAW;
        info.dwItemData = width;
        EXPECT_TRUE(SetMenuItemInfoW(hMenu, id, false, info));
    }
    [[nodiscard]] SIZE clientSize() const {
        RECT rect;
        EXPECT_TRUE(GetClientRect(window.hWnd(), rect));
        return {rect.right, rect.bottom};
    }
    // Only the lines about menus.
    std::string takeMenuLines() {
        std::istringstream all(log.take());
        std::string kept;
        for (std::string line; std::getline(all, line);) {
            if (line.find("WM_COMMAND") != std::string::npos ||
                line.find("WM_INITMENUPOPUP") != std::string::npos) {
                kept += line.substr(line.find("WM_")) + '\n';
            }
        }
        return kept;
    }
    HMENU file =
        menuOfEntries({{20, u"&Open"}, {21, u"-"}, {22, u"&Save", MFS_DISABLED}, {23, u"E&xit"}});
    HMENU tools = menuOfEntries({{30, u"Find\tF3"}, {31, u"Filter", MFS_CHECKED}});
    HMENU bar = menuOfEntries({{1, u"&File", 0, file}, {2, u"&Tools", 0, tools}});
    platform::test::WindowHookScope hooks;
    MessageLog log;
    LoggedWindow window{log, "main", options()};
};

TEST_F(MenuWindow, TheBarIsOutsideOfTheClientArea) {
    drawItems();
    ownerDrawn(bar, 1, 40);
    ownerDrawn(bar, 2, 40);
    LoggedWindow child(log, "child", [&] {
        WindowOptions made;
        made.parent = window.hWnd();
        made.position = {10, 5};
        made.size = {50, 40};
        return made;
    }());
    EXPECT_TRUE(SetMenu(window.hWnd(), bar));
    EXPECT_EQ(GetMenu(window.hWnd()), bar);
    EXPECT_EQ(clientSize(), (SIZE{300, 120})) << "nobody sees it: the window grows";
    POINT corner{};
    EXPECT_TRUE(ClientToScreen(window.hWnd(), corner));
    EXPECT_EQ(corner, (POINT{100, 50}));
    ShowWindow(window.hWnd(), SW_SHOW);
    settle();
    EXPECT_EQ(clientSize(), (SIZE{300, 120}));
    const RECT first = menuItemPlace(bar, 0), second = menuItemPlace(bar, 1);
    EXPECT_EQ(first, (RECT{corner.x, corner.y - 20, corner.x + 52, corner.y}));
    EXPECT_EQ(second.left, first.right) << "the width of a check mark comes on top";
    POINT inside{};
    EXPECT_TRUE(ClientToScreen(child.hWnd(), inside));
    EXPECT_EQ(inside, (POINT{corner.x + 10, corner.y + 5}));
    (void)log.take();
    mouse(window.hWnd(), MouseAction::Press, {3, 2}, MK_LBUTTON, MK_LBUTTON);
    mouse(window.hWnd(), MouseAction::Release, {3, 2}, MK_LBUTTON);
    EXPECT_NE(log.take().find("WM_LBUTTONDOWN 1 3,2"), std::string::npos);

    // A visible window makes room, and gets it back.
    EXPECT_TRUE(SetMenu(window.hWnd(), 0));
    EXPECT_EQ(clientSize(), (SIZE{300, 140}));
    EXPECT_NE(log.take().find("main: WM_SIZE 0 300,140"), std::string::npos);
    EXPECT_TRUE(IsMenu(bar));
    EXPECT_TRUE(SetMenu(window.hWnd(), bar));
    EXPECT_EQ(clientSize(), (SIZE{300, 120}));
    SetWindowPos(window.hWnd(), 0, 90, 60, 200, 100, SWP_NOZORDER);
    EXPECT_EQ(clientSize(), (SIZE{200, 100}));
    EXPECT_NE(log.take().find("main: WM_MOVE 0 90,60\nmain: WM_SIZE 0 200,100"), std::string::npos);
    corner = {};
    ClientToScreen(window.hWnd(), corner);
    EXPECT_EQ(corner, (POINT{90, 60}));
    EXPECT_TRUE(SetWindowPos(child.hWnd(), 0, 1, 2, 0, 0, SWP_NOSIZE | SWP_NOZORDER));
    EXPECT_NE(log.take().find("child: WM_MOVE 0 1,2"), std::string::npos);

    EXPECT_FALSE(SetMenu(child.hWnd(), file));
    LoggedWindow other(log, "other", options());
    EXPECT_FALSE(SetMenu(other.hWnd(), bar)) << "one window for a bar";
}

TEST_F(MenuWindow, ABarOfNoItemsTakesNoRoom) {
    const HMENU empty = CreateMenu();
    EXPECT_TRUE(SetMenu(window.hWnd(), empty));
    ShowWindow(window.hWnd(), SW_SHOW);
    settle();
    EXPECT_EQ(clientSize(), (SIZE{300, 120}));
    MENUITEMINFOW info;
    info.fMask = MIIM_ID | MIIM_STRING;
    info.wID = 9;
    info.dwTypeData = u"New";
    EXPECT_TRUE(InsertMenuItemW(empty, 0, true, info));
    EXPECT_EQ(clientSize(), (SIZE{300, 120})) << "the message loop shows it";
    EXPECT_TRUE(DrawMenuBar(window.hWnd())) << "or this";
    EXPECT_LT(clientSize().cy, 120);
    DestroyMenu(bar);
}

TEST_F(MenuWindow, APopupOpensFromTheBarAndItsPickBecomesACommand) {
    drawItems();
    EXPECT_TRUE(SetMenu(window.hWnd(), bar));
    for (const std::uint32_t id : {1, 2}) ownerDrawn(bar, id, 40);
    for (const std::uint32_t id : {20, 21, 22, 23}) ownerDrawn(file, id, 70);
    ShowWindow(window.hWnd(), SW_SHOW);
    settle();
    (void)log.take();

    mouseOnMenu(bar, 0, MouseAction::Press, MK_LBUTTON, MK_LBUTTON);
    mouseOnMenu(bar, 0, MouseAction::Release, MK_LBUTTON);
    settle();
    ASSERT_TRUE(isMenuOpen(file));
    EXPECT_EQ(takeMenuLines(), "WM_INITMENUPOPUP " + std::to_string(file) + " 0\n");
    const RECT open = menuItemPlace(file, 0), save = menuItemPlace(file, 2);
    EXPECT_EQ(open.bottom - open.top, 20);
    EXPECT_EQ(save.right - save.left, 70 + 12);
    EXPECT_EQ(platform::test::accessibleItems(file),
              "item \"Open\"\nseparator disabled\nitem \"Save\" disabled\nitem \"Exit\"\n");

    // Nothing happens on a disabled item; the popup stays.
    mouseOnMenu(file, 2, MouseAction::Move);
    mouseOnMenu(file, 2, MouseAction::Press, MK_LBUTTON, MK_LBUTTON);
    mouseOnMenu(file, 2, MouseAction::Release, MK_LBUTTON);
    settle();
    EXPECT_TRUE(isMenuOpen(file));
    EXPECT_EQ(takeMenuLines(), "");

    // To the next popup and back by arrows, then down to the last item.
    pressMenuKey(VK_RIGHT);
    settle();
    EXPECT_TRUE(isMenuOpen(tools));
    EXPECT_FALSE(isMenuOpen(file));
    pressMenuKey(VK_LEFT);
    settle();
    EXPECT_EQ(takeMenuLines(), "WM_INITMENUPOPUP " + std::to_string(tools) + " 1\n" +
                                   "WM_INITMENUPOPUP " + std::to_string(file) + " 0\n");
    pressMenuKey(VK_UP);
    pressMenuKey(VK_UP);
    EXPECT_TRUE(isMenuOpen(file));
    pressMenuKey(VK_DOWN);
    pressMenuKey(VK_RETURN);
    settle();
    EXPECT_FALSE(isMenuOpen(file));
    const std::string picked = takeMenuLines();
    EXPECT_EQ(picked, "WM_COMMAND 23\n");
}

TEST_F(MenuWindow, APopupAtTheMouseGivesThePickOrSendsIt) {
    ShowWindow(window.hWnd(), SW_SHOW);
    settle();
    // Each letter picks its item, and Escape none; a disabled one is not picked.
    const struct {
        std::int32_t key;
        Text typed;
        std::uint32_t flags;
        std::int32_t result;
        std::string command;
    } kCases[] = {
        {'O', u"o", TPM_RETURNCMD, 20, ""},
        {'X', u"x", TPM_RIGHTALIGN, 1, "WM_COMMAND 23\n"},
        {VK_ESCAPE, u"", TPM_RETURNCMD | TPM_CENTERALIGN, 0, ""},
        {VK_ESCAPE, u"", 0, 1, ""},
    };
    for (const auto& c : kCases) {
        window.on = [&](std::uint32_t uMsg, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (uMsg == WM_APP) {
                EXPECT_TRUE(isMenuOpen(file));
                EXPECT_EQ(TrackPopupMenu(file, 0, 0, 0, window.hWnd()), 0) << "it is open already";
                pressMenuKey('S', u"s");
                EXPECT_TRUE(isMenuOpen(file));
                pressMenuKey(c.key, c.typed);
            }
            return std::nullopt;
        };
        PostMessageW(window.hWnd(), WM_APP, 0, 0);
        (void)log.take();
        EXPECT_EQ(TrackPopupMenu(file, c.flags, 150, 80, window.hWnd()), c.result);
        settle();
        EXPECT_EQ(takeMenuLines(), "WM_INITMENUPOPUP " + std::to_string(file) + " 0\n" + c.command);
    }
    EXPECT_EQ(TrackPopupMenu(0, 0, 0, 0, window.hWnd()), 0);
    EXPECT_EQ(TrackPopupMenu(file, 0, 0, 0, 0), 0);
    DestroyMenu(bar);
}

TEST_F(MenuWindow, AMenuMayChangeAndEndWhileItIsOpenOrDrawn) {
    drawItems();
    EXPECT_TRUE(SetMenu(window.hWnd(), bar));
    ShowWindow(window.hWnd(), SW_SHOW);
    settle();
    const auto draw = window.on;
    enum class Deed { Add, Remove, Replace, Destroy, DestroyBar };
    const struct {
        std::uint32_t when;
        Deed deed;
    } kCases[] = {
        {WM_INITMENUPOPUP, Deed::Add},   {WM_MEASUREITEM, Deed::Add},
        {WM_DRAWITEM, Deed::Remove},     {WM_MEASUREITEM, Deed::Remove},
        {WM_DRAWITEM, Deed::Replace},    {WM_INITMENUPOPUP, Deed::Destroy},
        {WM_MEASUREITEM, Deed::Destroy}, {WM_DRAWITEM, Deed::Destroy},
        {WM_DRAWITEM, Deed::DestroyBar},
    };
    for (const auto& c : kCases) {
        const HMENU popup = menuOfEntries({{50, u"a"}, {51, u"b"}, {52, u"c"}});
        for (const std::uint32_t id : {50, 51, 52}) ownerDrawn(popup, id, 30);
        int deeds = 0;
        window.on = [&](std::uint32_t uMsg, WPARAM wParam,
                        LPARAM lParam) -> std::optional<LRESULT> {
            if (uMsg == c.when && deeds == 0) {
                ++deeds;
                MENUITEMINFOW info;
                info.fMask = MIIM_ID | MIIM_STRING;
                info.wID = 60;
                if (c.deed == Deed::Add) {
                    EXPECT_TRUE(InsertMenuItemW(popup, 0, true, info));
                } else if (c.deed == Deed::Destroy) {
                    EXPECT_TRUE(DestroyMenu(popup));
                } else if (c.deed == Deed::DestroyBar) {
                    EXPECT_TRUE(DestroyMenu(bar));
                } else {
                    EXPECT_TRUE(RemoveMenu(popup, 51, MF_BYCOMMAND));
                    if (c.deed == Deed::Replace) {
                        EXPECT_TRUE(InsertMenuItemW(popup, 50, false, info));
                    }
                }
            }
            if (uMsg == WM_APP) {
                settle();  // it is painted
                pressMenuKey(VK_ESCAPE);
                return 0;
            }
            return draw(uMsg, wParam, lParam);
        };
        PostMessageW(window.hWnd(), WM_APP, 0, 0);
        const bool opens = c.deed != Deed::Destroy || c.when == WM_DRAWITEM;
        EXPECT_EQ(TrackPopupMenu(popup, 0, 10, 10, window.hWnd()), opens ? 1 : 0);
        settle();
        EXPECT_EQ(deeds, 1) << static_cast<int>(c.deed) << " at " << c.when;
        DestroyMenu(popup);
    }
}

TEST_F(MenuWindow, AnOwnerMayReadMessagesWhileAnItemIsMeasuredOrDrawn) {
    drawItems();
    for (const std::uint32_t id : {1, 2}) ownerDrawn(bar, id, 40);
    for (const std::uint32_t id : {20, 22, 23}) ownerDrawn(file, id, 70);
    EXPECT_TRUE(SetMenu(window.hWnd(), bar));
    ShowWindow(window.hWnd(), SW_SHOW);
    settle();
    const auto draw = window.on;
    for (const std::uint32_t when : {WM_MEASUREITEM, WM_DRAWITEM}) {
        int asked = 0;
        window.on = [&](std::uint32_t uMsg, WPARAM wParam,
                        LPARAM lParam) -> std::optional<LRESULT> {
            if (uMsg == when && ++asked == 1) {
                setText(file, 23, when == WM_DRAWITEM ? u"Ends" : u"Leaves");
                DeleteMenu(file, 21, MF_BYCOMMAND);
                settle();  // as a box with a report would
                PostMessageW(window.hWnd(), WM_APP, 0, 0);
            }
            if (uMsg == WM_APP) {
                settle();
                EXPECT_EQ(platform::test::accessibleItems(file),
                          std::string("item \"Open\"\nitem \"Save\" disabled\nitem \"") +
                              (when == WM_DRAWITEM ? "Ends" : "Leaves") + "\"\n");
                pressMenuKey(VK_ESCAPE);
                return 0;
            }
            return draw(uMsg, wParam, lParam);
        };
        EXPECT_EQ(TrackPopupMenu(file, TPM_RETURNCMD, 10, 10, window.hWnd()), 0);
        EXPECT_GT(asked, 0);
    }
}

TEST_F(MenuWindow, APopupThatOpensAgainShowsNothingOfTheLastTime) {
    ownerDrawn(file, 20, 70);
    ShowWindow(window.hWnd(), SW_SHOW);
    settle();
    COLORREF seen[2] = {};
    for (int time = 0; time < 2; ++time) {
        drawItems();
        window.on = [&, draw = window.on](std::uint32_t uMsg, WPARAM wParam,
                                          LPARAM lParam) -> std::optional<LRESULT> {
            if (uMsg == WM_DRAWITEM && time == 1) return 1;  // leaves it as it is
            if (uMsg == WM_APP) {
                settle();
                const HDC screen = GetDC(0), hDC = CreateCompatibleDC(screen);
                const HBITMAP bitmap = CreateCompatibleBitmap(screen, 100, 100);
                const HGDIOBJ old = SelectObject(hDC, bitmap);
                (void)platform::test::paintMenu(file, hDC);
                seen[time] = GetPixel(hDC, 40, 12);
                SelectObject(hDC, old);
                DeleteObject(bitmap);
                DeleteDC(hDC);
                ReleaseDC(0, screen);
                pressMenuKey(VK_ESCAPE);
                return 0;
            }
            return draw(uMsg, wParam, lParam);
        };
        PostMessageW(window.hWnd(), WM_APP, 0, 0);
        EXPECT_EQ(TrackPopupMenu(file, TPM_RETURNCMD, 10, 10, window.hWnd()), 0);
    }
    EXPECT_EQ(seen[0], rgb(0, 0, 255));
    EXPECT_EQ(seen[1], GetSysColor(4));
    DestroyMenu(bar);
}

TEST_F(MenuWindow, AWindowMayEndWhileItsMenuIsMeasuredOrDrawn) {
    enum class Way { SetMenu, Show, DrawMenuBar, Popup };
    const struct {
        Way way;
        std::uint32_t when;
    } kCases[] = {
        {Way::SetMenu, WM_MEASUREITEM}, {Way::Show, WM_DRAWITEM},
        {Way::Show, WM_MEASUREITEM},    {Way::DrawMenuBar, WM_MEASUREITEM},
        {Way::Popup, WM_INITMENUPOPUP}, {Way::Popup, WM_MEASUREITEM},
        {Way::Popup, WM_DRAWITEM},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::to_string(static_cast<int>(c.way)) + " at " + std::to_string(c.when));
        LoggedWindow mortal(log, "mortal", options());
        const HMENU popup = menuOfEntries({{50, u"a"}, {51, u"b"}});
        const HMENU shown = menuOfEntries({{1, u"File", 0, popup}, {2, u"Tools"}});
        for (const std::uint32_t id : {1, 2, 50, 51}) ownerDrawn(shown, id, 40);
        bool armed = false;
        mortal.on = [&](std::uint32_t uMsg, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (armed && uMsg == c.when) DestroyWindow(mortal.hWnd());
            return std::nullopt;
        };
        armed = c.way == Way::SetMenu;
        EXPECT_TRUE(SetMenu(mortal.hWnd(), shown));
        armed = armed || c.way == Way::Show;
        if (c.way != Way::SetMenu) ShowWindow(mortal.hWnd(), SW_SHOW);
        settle();
        armed = true;
        if (c.way == Way::DrawMenuBar) {
            MENUITEMINFOW info;
            info.fMask = MIIM_STRING;
            info.dwTypeData = u"Wider";
            EXPECT_TRUE(SetMenuItemInfoW(shown, 1, false, info));
            EXPECT_TRUE(DrawMenuBar(mortal.hWnd()));
        }
        if (c.way == Way::Popup) (void)TrackPopupMenu(popup, 0, 10, 10, mortal.hWnd());
        settle();
        if (c.way == Way::Show && c.when == WM_MEASUREITEM) {
            EXPECT_TRUE(IsWindow(mortal.hWnd()) || !IsMenu(shown));
            continue;  // its items were measured before
        }
        EXPECT_FALSE(IsWindow(mortal.hWnd()));
        EXPECT_FALSE(IsMenu(shown));
    }
    DestroyMenu(bar);
}

TEST_F(MenuWindow, AWindowMayEndWhileItsPopupOpens) {
    drawItems();
    EXPECT_TRUE(SetMenu(window.hWnd(), bar));
    ShowWindow(window.hWnd(), SW_SHOW);
    settle();
    window.on = [&](std::uint32_t uMsg, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (uMsg == WM_INITMENUPOPUP) DestroyWindow(window.hWnd());
        return std::nullopt;
    };
    mouseOnMenu(bar, 0, MouseAction::Press, MK_LBUTTON, MK_LBUTTON);
    settle();
    EXPECT_FALSE(IsMenu(bar));
    EXPECT_FALSE(IsMenu(file)) << "the bar goes with its window, and with it what is inside";
}

TEST_F(MenuWindow, ItemsThatDrawThemselvesShowWhatTheirOwnerDraws) {
    drawItems();
    for (const std::uint32_t id : {1, 2}) ownerDrawn(bar, id, 40);
    for (const std::uint32_t id : {20, 21, 22}) ownerDrawn(file, id, 70);
    EXPECT_TRUE(SetMenu(window.hWnd(), bar));
    ShowWindow(window.hWnd(), SW_SHOW);
    settle();
    mouseOnMenu(bar, 0, MouseAction::Press, MK_LBUTTON, MK_LBUTTON);
    mouseOnMenu(bar, 0, MouseAction::Release, MK_LBUTTON);
    settle();
    mouseOnMenu(file, 0, MouseAction::Move);
    EXPECT_GOLDEN("menu/native-bar", SIZE{300, 20},
                  [&](HDC hDC) { (void)platform::test::paintMenu(bar, hDC); });
    // The last item is left to the platform.
    EXPECT_GOLDEN("menu/native-popup", SIZE{130, 88},
                  [&](HDC hDC) { (void)platform::test::paintMenu(file, hDC); });
    pressMenuKey(VK_ESCAPE);
    settle();
}

TEST_F(MenuWindow, ScreenReadersAndLettersKnowWhatAnItemShows) {
    EXPECT_TRUE(SetMenu(window.hWnd(), bar));
    EXPECT_TRUE(setMenuItemShownText(bar, 1, false, u"&Datei"));
    EXPECT_TRUE(setMenuItemShownText(file, 20, false, u"\u00D6&ffnen"));
    EXPECT_FALSE(setMenuItemShownText(bar, 99, false, u""));
    ShowWindow(window.hWnd(), SW_SHOW);
    settle();
    EXPECT_EQ(platform::test::accessibleItems(bar), "item \"Datei\"\nitem \"Tools\"\n");
    window.on = [&](std::uint32_t uMsg, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (uMsg != WM_APP) return std::nullopt;
        EXPECT_EQ(
            platform::test::accessibleItems(file),
            "item \"\u00D6ffnen\"\nseparator disabled\nitem \"Save\" disabled\nitem \"Exit\"\n");
        pressMenuKey('F', u"f");
        return 0;
    };
    PostMessageW(window.hWnd(), WM_APP, 0, 0);
    EXPECT_EQ(TrackPopupMenu(file, TPM_RETURNCMD, 0, 0, window.hWnd()), 20);
    setType(file, 20, MFT_STRING);  // what was shown is of no account any more
    window.on = [&](std::uint32_t uMsg, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (uMsg != WM_APP) return std::nullopt;
        EXPECT_EQ(platform::test::accessibleItems(tools),
                  "item \"Find\"\nitem \"Filter\" checked\n");
        pressMenuKey(VK_ESCAPE);
        return 0;
    };
    PostMessageW(window.hWnd(), WM_APP, 0, 0);
    EXPECT_EQ(TrackPopupMenu(tools, TPM_RETURNCMD, 0, 0, window.hWnd()), 0);
}

TEST_F(MenuWindow, KeysOfCommandsWorkWhereverTheFocusIs) {
    LoggedWindow child(log, "child", [&] {
        WindowOptions made;
        made.parent = window.hWnd();
        made.size = {50, 40};
        return made;
    }());
    EXPECT_TRUE(SetMenu(window.hWnd(), bar));
    const ACCEL kKeys[] = {{FCONTROL, 'S', 22}, {0, VK_F1 + 2, 30}, {FSHIFT | FALT, 'Q', 77}};
    EXPECT_TRUE(setAccelerators(window.hWnd(), kKeys));
    EXPECT_FALSE(setAccelerators(0, kKeys));
    ShowWindow(window.hWnd(), SW_SHOW);
    settle();
    const struct {
        std::int32_t key;
        WPARAM modifiers;
        std::string heard;
    } kCases[] = {
        {VK_F1 + 2, 0, "main: WM_COMMAND 30\n"},
        {VK_F1 + 2, MK_SHIFT, "child: WM_KEYDOWN 114\n"},
        {'S', MK_CONTROL, ""},  // disabled
        {'S', MK_CONTROL | MK_SHIFT, "child: WM_KEYDOWN 83\nchild: WM_CHAR 19\n"},
        {'Q', platform::test::kAlt | MK_SHIFT, "main: WM_COMMAND 77\n"},
    };
    for (const auto& c : kCases) {
        (void)log.take();
        pressKey(child.hWnd(), c.key, {}, c.modifiers);
        settle();
        EXPECT_EQ(log.take(), c.heard) << c.key;
    }
    // An item inside of a disabled one cannot be picked either.
    MENUITEMINFOW info;
    info.fMask = MIIM_STATE;
    info.fState = MFS_DISABLED;
    EXPECT_TRUE(SetMenuItemInfoW(bar, 2, false, info));
    pressKey(child.hWnd(), VK_F1 + 2);
    settle();
    EXPECT_EQ(takeMenuLines(), "");
    EXPECT_TRUE(setAccelerators(window.hWnd(), {}));
    pressKey(child.hWnd(), VK_F1 + 2);
    EXPECT_EQ(log.take(), "child: WM_KEYDOWN 114\n");
}

TEST_F(MenuWindow, F10GivesTheKeysToTheBarAndBack) {
    LoggedWindow child(log, "child", [&] {
        WindowOptions made;
        made.parent = window.hWnd();
        made.size = {50, 40};
        return made;
    }());
    const auto heard = [&] {
        const std::string lines = log.take();
        return lines.substr(0, lines.find("child: WM_SYSKEYUP"));
    };
    ShowWindow(window.hWnd(), SW_SHOW);
    SetFocus(child.hWnd());
    settle();
    (void)log.take();
    pressKey(child.hWnd(), VK_F10);  // without a bar it is a key as others are
    EXPECT_EQ(heard(), "child: WM_SYSKEYDOWN 121\n");

    drawItems();
    for (const std::uint32_t id : {1, 2}) ownerDrawn(bar, id, 40);
    std::string selected;  // items of the bar, by identifier
    window.on = [&, draw = window.on](std::uint32_t uMsg, WPARAM wParam,
                                      LPARAM lParam) -> std::optional<LRESULT> {
        if (uMsg == WM_DRAWITEM) {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            if (item.itemState != 0) selected = std::to_string(item.itemID);
        }
        return draw(uMsg, wParam, lParam);
    };
    EXPECT_TRUE(SetMenu(window.hWnd(), bar));
    settle();
    (void)log.take();
    for (int round = 0; round < 2; ++round) {
        selected.clear();
        pressKey(child.hWnd(), VK_F10);
        settle();
        EXPECT_EQ(selected, "1");
        EXPECT_FALSE(isMenuOpen(file)) << "the bar has the keys, nothing opens by itself";
        EXPECT_EQ(GetFocus(), child.hWnd()) << "the focus stays";
        pressMenuKey(VK_RIGHT);
        settle();
        EXPECT_EQ(selected, "2");
        if (round == 1) {
            pressMenuKey(VK_DOWN);
            settle();
            EXPECT_TRUE(isMenuOpen(tools));
        }
        pressMenuKey(VK_F10);  // ends all of it
        settle();
        EXPECT_FALSE(isMenuOpen(tools));
        (void)log.take();
        pressMenuKey('X', u"x");
        EXPECT_EQ(log.take(), "child: WM_KEYDOWN 88\nchild: WM_CHAR 120\nchild: WM_KEYUP 88\n");
    }
    selected.clear();
    pressKey(child.hWnd(), VK_F10, {}, MK_SHIFT);
    settle();
    EXPECT_EQ(selected, "") << "F10 alone";
    (void)log.take();
}

TEST_F(MenuWindow, ClassNamesAndSystemMenusTellWindowsApart) {
    const auto child = [&](const char* name, Text className) {
        WindowOptions made;
        made.parent = window.hWnd();
        made.className = std::move(className);
        return LoggedWindow(log, name, made);
    };
    const LoggedWindow one = child("one", u"MDICLIENT"), two = child("two", u"x"),
                       three = child("three", u"MDIClient");
    EXPECT_EQ(FindWindowExA(window.hWnd(), 0, "MDIClient"), one.hWnd());
    EXPECT_EQ(FindWindowExA(window.hWnd(), one.hWnd(), "mdiclient"), three.hWnd());
    EXPECT_EQ(FindWindowExA(window.hWnd(), three.hWnd(), "MDIClient"), 0U);
    EXPECT_EQ(FindWindowExA(one.hWnd(), 0, "MDIClient"), 0U);
    EXPECT_EQ(FindWindowExA(0, 0, "MDIClient"), 0U);

    const HMENU own = GetSystemMenu(window.hWnd(), false);
    EXPECT_TRUE(IsMenu(own));
    EXPECT_EQ(GetSystemMenu(window.hWnd(), false), own);
    EXPECT_NE(GetSystemMenu(two.hWnd(), false), own);
    EXPECT_EQ(GetSystemMenu(0, false), 0U);
    DestroyMenu(bar);
}

}  // namespace
