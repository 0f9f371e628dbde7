#include "platform/window/menu.h"

#include "platform/base/codepages.h"
#include "platform/window/application.h"
#include "platform/window/handles.h"
#include "platform/window/surface.h"
#include "platform/window/testhooks.h"
#include "support/gui/Golden.h"
#include "support/window/Canvas.h"
#include "support/window/LoggedWindow.h"

#include <array>
#include <gtest/gtest.h>
#include <sstream>

using namespace platform;
using namespace platform::test;
using ::test::Canvas;
using ::test::childOf;
using ::test::clientSize;
using ::test::LoggedWindow;
using ::test::MessageLog;

namespace {

struct Entry {
    std::uint32_t id;
    Text text;  // "-" is a separator
    std::uint32_t state = 0;
    HMENU opens = 0;
};

HMENU menuOfEntries(const std::vector<Entry>& entries) {
    const HMENU hMenu = CreateMenu();
    for (const Entry& entry : entries) {
        const bool separates = entry.text == u"-";
        const MENUITEMINFOW info{.fMask =
                                     MIIM_ID | MIIM_STATE | MIIM_FTYPE | MIIM_STRING | MIIM_SUBMENU,
                                 .fType = separates ? MFT_SEPARATOR : MFT_STRING,
                                 .fState = entry.state,
                                 .wID = entry.id,
                                 .hSubMenu = entry.opens,
                                 .dwTypeData = separates ? Text() : entry.text};
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

bool setText(HMENU hMenu, std::uint32_t id, TextView text) {
    return SetMenuItemInfoW(hMenu, id, false, {.fMask = MIIM_STRING, .dwTypeData = Text(text)});
}

TEST(MenuItems, AreFoundByPositionAndByIdentifierAtAnyDepth) {
    const HMENU inner = menuOfEntries({{30, u"deep"}, {1, u"hidden behind the outer one"}});
    const HMENU file = menuOfEntries({{20, u"Open\tCtrl+O"}, {21, u"-"}, {22, u"More", 0, inner}});
    const HMENU bar = menuOfEntries({{2, u"&File", 0, file}, {1, u"Exit", MFS_DISABLED}});
    EXPECT_EQ(dump(bar), "2'&File'[20'Open\tCtrl+O' 21 t800'' 22'More'[30'deep' 1'hidden behind "
                         "the outer one']] 1 s3'Exit'");

    EXPECT_TRUE(setText(bar, 1, u"Quit"));
    EXPECT_TRUE(setText(bar, 30, u"Deep"));
    EXPECT_EQ(dump(bar), "2'&File'[20'Open\tCtrl+O' 21 t800'' 22'More'[30'Deep' 1'hidden behind "
                         "the outer one']] 1 s3'Quit'");
    MENUITEMINFOW info;
    EXPECT_FALSE(setText(bar, 99, u""));
    EXPECT_FALSE(SetMenuItemInfoW(bar, 2, true, info));
    EXPECT_FALSE(GetMenuItemInfoW(bar, 0xFFFFFFFF, true, info));

    // A menu cannot be inside of itself, or two would hold each other for ever.
    info = {.fMask = MIIM_SUBMENU, .hSubMenu = bar};
    EXPECT_FALSE(SetMenuItemInfoW(bar, 30, false, info));
    EXPECT_FALSE(InsertMenuItemW(inner, 0, true, info));
    EXPECT_FALSE(InsertMenuItemW(bar, 30, false, info));

    EXPECT_TRUE(RemoveMenu(bar, 22, MF_BYCOMMAND));
    EXPECT_TRUE(IsMenu(inner));
    // Ahead of an item inside.
    EXPECT_TRUE(InsertMenuItemW(bar, 21, false, {.fMask = MIIM_ID, .wID = 40}));
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
        MENUITEMINFOA info{.fMask = MIIM_STRING, .dwTypeData = room.data(), .cch = c.room};
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
    MENUITEMINFOA info{.fMask = MIIM_FTYPE | MIIM_DATA, .fType = MFT_OWNERDRAW, .dwItemData = 7};
    EXPECT_TRUE(SetMenuItemInfoA(menu, 1, false, info));
    info.fMask = MIIM_TYPE | MIIM_DATA;
    EXPECT_TRUE(SetMenuItemInfoA(menu, 2, false, info));
    EXPECT_EQ(dump(menu), "1 t100 d7'Open' 2 t100 d7''");
    EXPECT_TRUE(SetMenuItemInfoW(
        menu, 2, false, {.fMask = MIIM_TYPE, .fType = MFT_OWNERDRAW, .dwTypeData = u"none"}));
    EXPECT_EQ(dump(menu), "1 t100 d7'Open' 2 t100 d7''");

    // Back again, as the old way needs it.
    char text[] = "Sichern";
    info = {.fMask = MIIM_TYPE, .fType = MFT_STRING, .dwTypeData = text, .cch = 3};
    EXPECT_TRUE(SetMenuItemInfoA(menu, 2, false, info));
    EXPECT_EQ(dump(menu), "1 t100 d7'Open' 2 d7'Sichern'");
    char room[8] = "#######";
    info = {.fMask = MIIM_TYPE, .dwTypeData = room, .cch = sizeof room};
    EXPECT_TRUE(GetMenuItemInfoA(menu, 1, false, info));
    EXPECT_EQ(info.cch, 0U) << "an owner-drawn item has no text in the old way";
    EXPECT_EQ(info.fType, MFT_OWNERDRAW);
    DestroyMenu(menu);
}

// ---- Windows

// Items that their owner draws are as wide as their user data, in a colour by their state.
class MenuWindow : public testing::Test {
public:
    MenuWindow() {
        window.on = [this](std::uint32_t uMsg, WPARAM, LPARAM lParam) {
            return answer(uMsg, lParam);
        };
    }
    ~MenuWindow() override { settle(); }
    static WindowOptions options() {
        return {.kind = WindowKind::Main, .position = {100, 50}, .size = {300, 120}};
    }
    static void ownerDrawn(HMENU hMenu, std::initializer_list<std::uint32_t> ids,
                           std::uint32_t width) {
        for (const std::uint32_t id : ids) {
            MENUITEMINFOW info{.fMask = MIIM_FTYPE};
            EXPECT_TRUE(GetMenuItemInfoW(hMenu, id, false, info));
            info.fMask = MIIM_FTYPE | MIIM_DATA;
            info.fType |= MFT_OWNERDRAW;
            info.dwItemData = width;
            EXPECT_TRUE(SetMenuItemInfoW(hMenu, id, false, info));
        }
    }
    // With the bar or without one.
    void show(HMENU shown) {
        EXPECT_TRUE(SetMenu(window.hWnd(), shown));
        ShowWindow(window.hWnd(), SW_SHOW);
        settle();
        (void)log.take();
    }
    static void click(HMENU hMenu, int position) {
        mouseOnMenu(hMenu, position, MouseAction::Press, MK_LBUTTON, MK_LBUTTON);
        mouseOnMenu(hMenu, position, MouseAction::Release, MK_LBUTTON);
        settle();
    }
    // Opens a popup, does `inside` once it shows, and gives the result.
    std::int32_t track(HMENU popup, std::uint32_t flags, std::function<void()> inside) {
        whileOpen = std::move(inside);
        PostMessageW(window.hWnd(), WM_APP, 0, 0);
        const std::int32_t result = TrackPopupMenu(popup, flags, 150, 80, window.hWnd());
        settle();
        return result;
    }
    [[nodiscard]] static std::string initLine(HMENU popup, int position) {
        return "WM_INITMENUPOPUP " + std::to_string(popup) + ' ' + std::to_string(position) + '\n';
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
    std::function<void(std::uint32_t uMsg, LPARAM lParam)> heard;  // ahead of the answer
    bool paints = true;
    WindowHookScope hooks;
    MessageLog log;
    LoggedWindow window{log, "main", options()};

private:
    std::optional<LRESULT> answer(std::uint32_t uMsg, LPARAM lParam) {
        if (heard) heard(uMsg, lParam);
        if (uMsg == WM_APP && whileOpen) {
            settle();
            whileOpen();
            return 0;
        }
        if (uMsg == WM_MEASUREITEM) {
            auto& item = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
            item.itemWidth = item.itemData;
            item.itemHeight = 20;
            return 1;
        }
        if (uMsg == WM_DRAWITEM && paints) {
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
    }
    std::function<void()> whileOpen;
};

class MenuWindowWithChild : public MenuWindow {
public:
    LoggedWindow child{log, "child", childOf(window.hWnd(), {10, 5, 60, 45})};
};

TEST_F(MenuWindowWithChild, TheBarIsOutsideOfTheClientArea) {
    ownerDrawn(bar, {1, 2}, 40);
    EXPECT_TRUE(SetMenu(window.hWnd(), bar));
    EXPECT_EQ(GetMenu(window.hWnd()), bar);
    EXPECT_EQ(clientSize(window.hWnd()), (SIZE{300, 120})) << "nobody sees it: the window grows";
    POINT corner{};
    EXPECT_TRUE(ClientToScreen(window.hWnd(), corner));
    EXPECT_EQ(corner, (POINT{100, 50}));
    show(bar);
    EXPECT_EQ(clientSize(window.hWnd()), (SIZE{300, 120}));
    const RECT first = menuItemPlace(bar, 0), second = menuItemPlace(bar, 1);
    EXPECT_EQ(first, (RECT{corner.x, corner.y - 20, corner.x + 52, corner.y}));
    EXPECT_EQ(second.left, first.right) << "the width of a check mark comes on top";
    POINT inside{};
    EXPECT_TRUE(ClientToScreen(child.hWnd(), inside));
    EXPECT_EQ(inside, (POINT{corner.x + 10, corner.y + 5}));
    mouse(window.hWnd(), MouseAction::Press, {3, 2}, MK_LBUTTON, MK_LBUTTON);
    mouse(window.hWnd(), MouseAction::Release, {3, 2}, MK_LBUTTON);
    EXPECT_NE(log.take().find("WM_LBUTTONDOWN 1 3,2"), std::string::npos);

    // A visible window makes room, and gets it back.
    EXPECT_TRUE(SetMenu(window.hWnd(), 0));
    EXPECT_EQ(clientSize(window.hWnd()), (SIZE{300, 140}));
    EXPECT_NE(log.take().find("main: WM_SIZE 0 300,140"), std::string::npos);
    EXPECT_TRUE(IsMenu(bar));
    EXPECT_TRUE(SetMenu(window.hWnd(), bar));
    EXPECT_EQ(clientSize(window.hWnd()), (SIZE{300, 120}));
    SetWindowPos(window.hWnd(), 0, 90, 60, 200, 100, SWP_NOZORDER);
    EXPECT_EQ(clientSize(window.hWnd()), (SIZE{200, 100}));
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
    show(empty);
    EXPECT_EQ(clientSize(window.hWnd()), (SIZE{300, 120}));
    EXPECT_TRUE(InsertMenuItemW(empty, 0, true, {.fMask = MIIM_STRING, .dwTypeData = u"New"}));
    EXPECT_EQ(clientSize(window.hWnd()), (SIZE{300, 120})) << "the message loop shows it";
    EXPECT_TRUE(DrawMenuBar(window.hWnd())) << "or this";
    EXPECT_LT(clientSize(window.hWnd()).cy, 120);
    DestroyMenu(bar);
}

TEST_F(MenuWindow, APopupOpensFromTheBarAndItsPickBecomesACommand) {
    ownerDrawn(bar, {1, 2}, 40);
    ownerDrawn(file, {20, 21, 22, 23}, 70);
    show(bar);
    click(bar, 0);
    ASSERT_TRUE(isMenuOpen(file));
    EXPECT_EQ(takeMenuLines(), initLine(file, 0));
    const RECT open = menuItemPlace(file, 0), save = menuItemPlace(file, 2);
    EXPECT_EQ(open.bottom - open.top, 20);
    EXPECT_EQ(save.right - save.left, 70 + 12);
    EXPECT_EQ(accessibleItems(file),
              "item \"Open\"\nseparator disabled\nitem \"Save\" disabled\nitem \"Exit\"\n");

    // Nothing happens on a disabled item; the popup stays.
    mouseOnMenu(file, 2, MouseAction::Move);
    click(file, 2);
    EXPECT_TRUE(isMenuOpen(file));
    EXPECT_EQ(takeMenuLines(), "");

    // To the next popup and back by arrows, then down to the last item.
    pressMenuKey(VK_RIGHT);
    settle();
    EXPECT_TRUE(isMenuOpen(tools));
    EXPECT_FALSE(isMenuOpen(file));
    pressMenuKey(VK_LEFT);
    settle();
    EXPECT_EQ(takeMenuLines(), initLine(tools, 1) + initLine(file, 0));
    pressMenuKey(VK_UP);
    pressMenuKey(VK_UP);
    EXPECT_TRUE(isMenuOpen(file));
    pressMenuKey(VK_DOWN);
    pressMenuKey(VK_RETURN);
    settle();
    EXPECT_FALSE(isMenuOpen(file));
    EXPECT_EQ(takeMenuLines(), "WM_COMMAND 23\n");
}

TEST_F(MenuWindow, APopupAtTheMouseGivesThePickOrSendsIt) {
    show(0);
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
        const std::int32_t result = track(file, c.flags, [&] {
            EXPECT_TRUE(isMenuOpen(file));
            EXPECT_EQ(TrackPopupMenu(file, 0, 0, 0, window.hWnd()), 0) << "it is open already";
            pressMenuKey('S', u"s");
            EXPECT_TRUE(isMenuOpen(file));
            pressMenuKey(c.key, c.typed);
        });
        EXPECT_EQ(result, c.result);
        EXPECT_EQ(takeMenuLines(), initLine(file, 0) + c.command);
    }
    EXPECT_EQ(TrackPopupMenu(0, 0, 0, 0, window.hWnd()), 0);
    EXPECT_EQ(TrackPopupMenu(file, 0, 0, 0, 0), 0);
    DestroyMenu(bar);
}

TEST_F(MenuWindow, AMenuMayChangeAndEndWhileItIsOpenOrDrawn) {
    show(bar);
    using Deed = void (*)(HMENU popup, HMENU bar);
    const Deed add = [](HMENU popup, HMENU) {
        EXPECT_TRUE(InsertMenuItemW(popup, 0, true, {.fMask = MIIM_ID, .wID = 60}));
    };
    const Deed remove = [](HMENU popup, HMENU) {
        EXPECT_TRUE(RemoveMenu(popup, 51, MF_BYCOMMAND));
    };
    const Deed replace = [](HMENU popup, HMENU) {
        EXPECT_TRUE(RemoveMenu(popup, 51, MF_BYCOMMAND));
        EXPECT_TRUE(InsertMenuItemW(popup, 50, false, {.fMask = MIIM_ID, .wID = 60}));
    };
    const Deed destroy = [](HMENU popup, HMENU) { EXPECT_TRUE(DestroyMenu(popup)); };
    const Deed destroyBar = [](HMENU, HMENU shown) { EXPECT_TRUE(DestroyMenu(shown)); };
    const struct {
        const char* what;
        std::uint32_t when;
        Deed deed;
        int opens = 1;
    } kCases[] = {
        {"add", WM_INITMENUPOPUP, add},
        {"add", WM_MEASUREITEM, add},
        {"remove", WM_DRAWITEM, remove},
        {"remove", WM_MEASUREITEM, remove},
        {"replace", WM_DRAWITEM, replace},
        {"destroy", WM_INITMENUPOPUP, destroy, 0},
        {"destroy", WM_MEASUREITEM, destroy, 0},
        {"destroy", WM_DRAWITEM, destroy},
        {"destroy the bar", WM_DRAWITEM, destroyBar},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.what + (" at " + std::to_string(c.when)));
        const HMENU popup = menuOfEntries({{50, u"a"}, {51, u"b"}, {52, u"c"}});
        ownerDrawn(popup, {50, 51, 52}, 30);
        bool done = false;
        heard = [&](std::uint32_t uMsg, LPARAM) {
            if (uMsg == c.when && !std::exchange(done, true)) c.deed(popup, bar);
        };
        EXPECT_EQ(track(popup, 0, [] { pressMenuKey(VK_ESCAPE); }), c.opens);
        EXPECT_TRUE(done);
        DestroyMenu(popup);
    }
}

TEST_F(MenuWindow, AnOwnerMayReadMessagesWhileAnItemIsMeasuredOrDrawn) {
    ownerDrawn(bar, {1, 2}, 40);
    ownerDrawn(file, {20, 22, 23}, 70);
    show(bar);
    for (const std::uint32_t when : {WM_MEASUREITEM, WM_DRAWITEM}) {
        const std::string caption = when == WM_DRAWITEM ? "Ends" : "Leaves";
        bool asked = false, changed = false;
        heard = [&](std::uint32_t uMsg, LPARAM) {
            if (uMsg != when || std::exchange(asked, true)) return;
            EXPECT_TRUE(setText(file, 23, fromUtf8(caption)));
            DeleteMenu(file, 21, MF_BYCOMMAND);
            settle();  // as a box with a report would
            changed = true;
            PostMessageW(window.hWnd(), WM_APP, 0, 0);
        };
        const auto look = [&] {
            if (!std::exchange(changed, false)) return;
            EXPECT_EQ(accessibleItems(file),
                      "item \"Open\"\nitem \"Save\" disabled\nitem \"" + caption + "\"\n");
            pressMenuKey(VK_ESCAPE);
        };
        EXPECT_EQ(track(file, TPM_RETURNCMD, look), 0);
        EXPECT_TRUE(asked && !changed);
    }
}

TEST_F(MenuWindow, APopupThatOpensAgainShowsNothingOfTheLastTime) {
    ownerDrawn(file, {20}, 70);
    show(0);
    const Canvas canvas(100, 100);
    for (const bool first : {true, false}) {
        paints = first;
        const auto look = [&] {
            (void)paintMenu(file, canvas.hdc());
            pressMenuKey(VK_ESCAPE);
        };
        EXPECT_EQ(track(file, TPM_RETURNCMD, look), 0);
        EXPECT_EQ(GetPixel(canvas.hdc(), 40, 12), first ? rgb(0, 0, 255) : GetSysColor(4));
    }
    DestroyMenu(bar);
}

TEST_F(MenuWindow, AWindowMayEndWhileItsMenuIsMeasuredOrDrawn) {
    enum class Way { SetMenu, Show, DrawMenuBar, Click, Popup };
    const struct {
        Way way;
        std::uint32_t when;
    } kCases[] = {
        {Way::SetMenu, WM_MEASUREITEM},     {Way::Show, WM_DRAWITEM},
        {Way::DrawMenuBar, WM_MEASUREITEM}, {Way::Click, WM_INITMENUPOPUP},
        {Way::Popup, WM_INITMENUPOPUP},     {Way::Popup, WM_MEASUREITEM},
        {Way::Popup, WM_DRAWITEM},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::to_string(static_cast<int>(c.way)) + " at " + std::to_string(c.when));
        LoggedWindow mortal(log, "mortal", options());
        const HMENU popup = menuOfEntries({{50, u"a"}, {51, u"b"}});
        const HMENU shown = menuOfEntries({{1, u"File", 0, popup}, {2, u"Tools"}});
        ownerDrawn(shown, {1, 2, 50, 51}, 40);
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
            EXPECT_TRUE(setText(shown, 1, u"Wider"));
            EXPECT_TRUE(DrawMenuBar(mortal.hWnd()));
        }
        if (c.way == Way::Click) {
            mouseOnMenu(shown, 0, MouseAction::Press, MK_LBUTTON, MK_LBUTTON);
        }
        if (c.way == Way::Popup) (void)TrackPopupMenu(popup, 0, 10, 10, mortal.hWnd());
        settle();
        EXPECT_FALSE(IsWindow(mortal.hWnd()));
        EXPECT_FALSE(IsMenu(shown) || IsMenu(popup)) << "what is inside of the bar goes along";
    }
    DestroyMenu(bar);
}

TEST_F(MenuWindow, ItemsThatDrawThemselvesShowWhatTheirOwnerDraws) {
    ownerDrawn(bar, {1, 2}, 40);
    ownerDrawn(file, {20, 21, 22}, 70);  // the last item is left to the platform
    show(bar);
    click(bar, 0);
    mouseOnMenu(file, 0, MouseAction::Move);
    EXPECT_GOLDEN("menu/native-bar", SIZE{300, 20}, [&](HDC hDC) { (void)paintMenu(bar, hDC); });
    EXPECT_GOLDEN("menu/native-popup", SIZE{130, 88}, [&](HDC hDC) { (void)paintMenu(file, hDC); });
    pressMenuKey(VK_ESCAPE);
    settle();
}

TEST_F(MenuWindow, ScreenReadersAndLettersKnowWhatAnItemShows) {
    EXPECT_TRUE(setMenuItemShownText(bar, 1, false, u"&Datei"));
    EXPECT_TRUE(setMenuItemShownText(file, 20, false, u"\u00D6&ffnen"));
    EXPECT_FALSE(setMenuItemShownText(bar, 99, false, u""));
    show(bar);
    EXPECT_EQ(accessibleItems(bar), "item \"Datei\"\nitem \"Tools\"\n");
    // Reads a popup, then presses a key that ends it.
    const auto read = [&](HMENU popup, std::int32_t key, TextView typed, std::int32_t picked) {
        std::string items;
        const std::int32_t result = track(popup, TPM_RETURNCMD, [&] {
            items = accessibleItems(popup);
            pressMenuKey(key, typed);
        });
        EXPECT_EQ(result, picked);
        return items;
    };
    const std::string others = "separator disabled\nitem \"Save\" disabled\nitem \"Exit\"\n";
    EXPECT_EQ(read(file, 'F', u"f", 20), "item \"\u00D6ffnen\"\n" + others);
    // With another type what was shown is of no account any more.
    EXPECT_TRUE(SetMenuItemInfoW(file, 20, false, {.fMask = MIIM_FTYPE}));
    EXPECT_EQ(read(file, VK_ESCAPE, {}, 0), "item \"Open\"\n" + others);
    EXPECT_EQ(read(tools, VK_ESCAPE, {}, 0), "item \"Find\"\nitem \"Filter\" checked\n");
}

TEST_F(MenuWindowWithChild, KeysOfCommandsWorkWhereverTheFocusIs) {
    const ACCEL kKeys[] = {{FCONTROL, 'S', 22}, {0, VK_F1 + 2, 30}, {FSHIFT | FALT, 'Q', 77}};
    EXPECT_TRUE(setAccelerators(window.hWnd(), kKeys));
    EXPECT_FALSE(setAccelerators(0, kKeys));
    show(bar);
    const struct {
        std::int32_t key;
        WPARAM modifiers;
        std::string expected;
    } kCases[] = {
        {VK_F1 + 2, 0, "main: WM_COMMAND 30\n"},
        {VK_F1 + 2, MK_SHIFT, "child: WM_KEYDOWN 114\n"},
        {'S', MK_CONTROL, ""},  // disabled
        {'S', MK_CONTROL | MK_SHIFT, "child: WM_KEYDOWN 83\nchild: WM_CHAR 19\n"},
        {'Q', kAlt | MK_SHIFT, "main: WM_COMMAND 77\n"},
    };
    for (const auto& c : kCases) {
        (void)log.take();
        pressKey(child.hWnd(), c.key, {}, c.modifiers);
        settle();
        EXPECT_EQ(log.take(), c.expected) << c.key;
    }
    // An item inside of a disabled one cannot be picked either.
    EXPECT_TRUE(SetMenuItemInfoW(bar, 2, false, {.fMask = MIIM_STATE, .fState = MFS_DISABLED}));
    pressKey(child.hWnd(), VK_F1 + 2);
    settle();
    EXPECT_EQ(takeMenuLines(), "");
    EXPECT_TRUE(setAccelerators(window.hWnd(), {}));
    pressKey(child.hWnd(), VK_F1 + 2);
    EXPECT_EQ(log.take(), "child: WM_KEYDOWN 114\n");
}

TEST_F(MenuWindowWithChild, F10GivesTheKeysToTheBarAndBack) {
    ownerDrawn(bar, {1, 2}, 40);
    show(0);
    SetFocus(child.hWnd());
    (void)log.take();
    pressKey(child.hWnd(), VK_F10);
    EXPECT_EQ(log.take(), "child: WM_SYSKEYDOWN 121\n") << "without a bar a key as others are";

    std::string selected;  // items of the bar, by identifier
    heard = [&](std::uint32_t uMsg, LPARAM lParam) {
        if (uMsg != WM_DRAWITEM) return;
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        if (item.itemState != 0) selected = std::to_string(item.itemID);
    };
    show(bar);
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
}

TEST_F(MenuWindow, ClassNamesAndSystemMenusTellWindowsApart) {
    const auto child = [&](const char* name, Text className) {
        return LoggedWindow(log, name,
                            {.parent = window.hWnd(), .className = std::move(className)});
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
