// The model and the messages: taking a menu over, giving it back, what window and control hear.
#include "menu/ctlUTF8Menu.h"

#include "menu/captions.h"
#include "menu/menuMessages.h"
#include "menu/menuTree_test.h"
#include "platform/base/codepages.h"
#include "platform/window/handles.h"
#include "platform/window/testhooks.h"
#include "support/PlatformVersion.h"
#include "support/raised.h"
#include "support/window/LoggedWindow.h"
#include "win/MSubclass.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

using namespace platform;
using ::test::LoggedWindow;
using ::test::menuDump;
using ::test::menuTree;

namespace {

const std::vector<::test::MenuEntry> kTree{
    {1, u"&File", {{20, u"Open|2\tCtrl+O"}, {21, u"-"}, {22, u"[sep]More"}, {23, u""}}},
    {2, u"[SEP]x", {{30, u"Deep", {{31, u"Deeper"}}}}},
};
const std::string kNative = "1 d1000 '&File'[20 d20000 'Open|2\tCtrl+O' 21 sep d21000 '' "
                            "22 d22000 '[sep]More' 23 d23000 ''] "
                            "2 d2000 '[SEP]x'[30 d30000 'Deep'[31 d31000 'Deeper']]";
const std::string kTaken = "1 own d0 '&File'[20 own d1 'Open|2\tCtrl+O' 21 own sep d2 '' "
                           "22 own d3 '[sep]More' 23 own d4 ''] "
                           "2 own d5 '[SEP]x'[30 own d6 'Deep'[31 own d7 'Deeper']]";

// Each record as key, type and caption.
std::string dump(const ctlUTF8Menu& menu) {
    static const char* const kTypes[] = {"bar", "popup", "line", "SEP"};
    std::string all;
    for (const clsCtlUniIMenuItem& item : menu.Items()) {
        if (!all.empty()) all += ", ";
        all += 'K' + std::to_string(item.Key) + ' ' +
               kTypes[static_cast<std::size_t>(item.ItemType)] + " '" + toUtf8(item.Caption) + "'";
    }
    return all;
}

WindowOptions mainWindow() {
    WindowOptions options;
    options.kind = WindowKind::Main;
    options.size = {200, 100};
    return options;
}

void addItem(HMENU hMenu, std::uint32_t id, TextView text) {
    MENUITEMINFOW info;
    info.fMask = MIIM_ID | MIIM_STRING;
    info.wID = id;
    info.dwTypeData = text;
    ASSERT_TRUE(InsertMenuItemW(hMenu, ~0U, true, info));
}

// Counts the messages about menus that come to the window's own procedure, and answers 77.
class HearingWindow : public LoggedWindow {
public:
    HearingWindow(::test::MessageLog& log, const std::string& name, WindowOptions options)
        : LoggedWindow(log, name, std::move(options)) {
        on = [this](std::uint32_t uMsg, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (uMsg == WM_MDIGETACTIVE) return activeChild;
            if (std::ranges::find(kOfMenus, uMsg) == std::end(kOfMenus)) return std::nullopt;
            ++heard;
            return 77;
        };
    }
    int heard = 0;
    HWND activeChild = 0;

private:
    static constexpr std::uint32_t kOfMenus[] = {
        WM_DRAWITEM,     WM_MEASUREITEM,    WM_INITMENUPOPUP,  WM_SETTINGCHANGE,    WM_MDISETMENU,
        WM_APP_MDIFRAME, WM_APP_REQDATA_MI, WM_APP_REQDATA_DI, WM_APP_MDISAVEPOPUP,
    };
};

class Menu : public testing::Test {
public:
    ~Menu() override {
        menu.Detach();
        platform::test::settle();
    }
    static WindowOptions childOf(HWND parent, Text className = {}) {
        WindowOptions options;
        options.parent = parent;
        options.className = std::move(className);
        return options;
    }
    // Gives the window that menu, and the control the window.
    HMENU attachTo(const std::vector<::test::MenuEntry>& tree) {
        const HMENU bar = menuTree(tree);
        SetMenu(window.hWnd(), bar);
        menu.Attach(window.hWnd());
        return bar;
    }
    struct Measured {
        std::uint32_t width = 0, height = 0;
        LRESULT answer = 0;
    };
    static Measured measured(HWND hWnd, std::uint32_t key) {
        MEASUREITEMSTRUCT item;
        item.itemWidth = 3;
        item.itemData = key;
        const LRESULT answer =
            SendMessageW(hWnd, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&item));
        return {item.itemWidth, item.itemHeight, answer};
    }
    platform::test::WindowHookScope windowHooks;
    ::test::MessageLog log;
    HearingWindow window{log, "main", mainWindow()};
    ctlUTF8Menu menu;
};

TEST_F(Menu, IsTakenOverWithAllItsLevelsAndGivenBackAsItWas) {
    const HMENU bar = attachTo(kTree);
    for (int round = 0; round < 2; ++round) {
        menu.Attach(window.hWnd());
        EXPECT_EQ(menuDump(bar), kTaken);
        EXPECT_EQ(dump(menu), "K0 bar '&File', K1 popup 'Open|2\tCtrl+O', K2 line '', "
                              "K3 SEP '[sep]More', K4 popup '', K5 SEP '[SEP]x', K6 popup 'Deep', "
                              "K7 popup 'Deeper'");
        menu.Attach(window.hWnd());  // gives all back first
        menu.Detach();
        menu.Detach();
        EXPECT_EQ(menuDump(bar), kNative);
        EXPECT_EQ(dump(menu), "");
    }
    {
        ctlUTF8Menu designed(false);
        designed.Attach(window.hWnd());
        EXPECT_EQ(menuDump(bar), kNative);
        ctlUTF8Menu running;
        running.Attach(window.hWnd());
    }
    EXPECT_EQ(menuDump(bar), kNative) << "its end gives the menu back, too";
}

TEST_F(Menu, OfAnOldPlatformLosesItsTextsMeanwhile) {
    ::test::PlatformVersion version;
    const struct {
        OSVERSIONINFOA version;
        bool old;
    } kCases[] = {
        {{4, 0, VER_PLATFORM_WIN32_NT}, true},      {{3, 51, VER_PLATFORM_WIN32_NT}, true},
        {{4, 0, VER_PLATFORM_WIN32_WINDOWS}, true}, {{4, 10, VER_PLATFORM_WIN32_WINDOWS}, false},
        {{5, 0, VER_PLATFORM_WIN32_NT}, false},     {{0, 0, 9}, true},
    };
    for (const auto& c : kCases) {
        version.set(c.version);
        const HMENU bar = attachTo(kTree);
        EXPECT_EQ(menuDump(bar), c.old ? "1 own d0 ''[20 own d1 '' 21 own sep d2 '' 22 own d3 '' "
                                         "23 d23000 ''] 2 own d4 ''[30 own d5 ''[31 own d6 '']]"
                                       : kTaken);
        menu.Detach();
        EXPECT_EQ(menuDump(bar), kNative);
        SetMenu(window.hWnd(), 0);
        DestroyMenu(bar);
    }
}

TEST_F(Menu, FollowsItemsThatComeAndGo) {
    menu.Refresh();  // nothing is taken: nothing happens
    const HMENU bar = attachTo({{1, u"File", {{20, u"a"}, {21, u"b"}, {22, u"c"}}}, {2, u"Help"}});
    const HMENU file = GetSubMenu(bar, 0);
    EXPECT_TRUE(DeleteMenu(file, 21, MF_BYCOMMAND));
    addItem(file, 25, u"new|1");
    addItem(bar, 3, u"More");
    menu.Refresh();
    EXPECT_EQ(dump(menu), "K0 bar 'File', K1 popup 'a', K3 popup 'c', K4 bar 'Help', "
                          "K5 popup 'new|1', K6 bar 'More'");

    // Rewritten by the program: its type is the program's again, so it is a new item.
    MENUITEMINFOW info;
    info.fMask = MIIM_FTYPE | MIIM_STRING;
    info.dwTypeData = u"A";
    EXPECT_TRUE(SetMenuItemInfoW(file, 20, false, info));
    addItem(bar, 4, u"on the bar");
    addItem(file, 26, u"in the popup");
    EXPECT_EQ(SendMessageW(window.hWnd(), WM_INITMENUPOPUP, static_cast<WPARAM>(file), 0), 0);
    EXPECT_EQ(dump(menu), "K0 bar 'File', K1 popup 'a', K3 popup 'c', K4 bar 'Help', "
                          "K5 popup 'new|1', K6 bar 'More', K7 popup 'A', K8 popup 'in the popup'")
        << "a popup that opens looks at its own level only";
    EXPECT_EQ(window.heard, 0);

    DestroyMenu(file);
    menu.Refresh();
    EXPECT_EQ(dump(menu), "K0 bar 'File', K4 bar 'Help', K6 bar 'More', K9 bar 'on the bar'");
    menu.Detach();
    EXPECT_EQ(menuDump(bar), "1 d1000 'File' 2 d2000 'Help' 3 d0 'More' 4 d0 'on the bar'");
    menu.Attach(window.hWnd());
    EXPECT_EQ(menu.Items().front().Key, 0);
    DestroyMenu(bar);
    menu.Refresh();
    EXPECT_TRUE(menu.Items().empty());
}

TEST_F(Menu, ItemsThatShareAnIdentifierAreGivenBackOneByOne) {
    const HMENU bar = menuTree({{0, u"File", {{0, u"a"}, {0, u"-"}, {20, u"b"}, {0, u"-"}}},
                                {0, u"Tools", {{20, u"c"}}},
                                {5, u"Gone", {{5, u"d"}}}});
    SetMenu(window.hWnd(), bar);
    std::uint32_t data = 100;
    const std::function<void(HMENU)> number = [&](HMENU hMenu) {
        for (int i = 0; i < GetMenuItemCount(hMenu); ++i) {
            MENUITEMINFOW info;
            info.fMask = MIIM_DATA;
            info.dwItemData = data++;
            EXPECT_TRUE(SetMenuItemInfoW(hMenu, static_cast<std::uint32_t>(i), true, info));
            if (const HMENU inside = GetSubMenu(hMenu, i)) number(inside);
        }
    };
    number(bar);
    const std::string native = menuDump(bar);
    menu.Attach(window.hWnd());
    menu.Detach();
    EXPECT_EQ(menuDump(bar), native);

    // One that is gone leaves alone whoever has its identifier now; one that the program has made
    // its own meanwhile gets its former values by its identifier.
    menu.Attach(window.hWnd());
    const HMENU gone = GetSubMenu(bar, 2);
    EXPECT_TRUE(RemoveMenu(bar, 2, MF_BYPOSITION));
    MENUITEMINFOW info;
    info.fMask = MIIM_SUBMENU;
    info.hSubMenu = gone;
    EXPECT_TRUE(SetMenuItemInfoW(GetSubMenu(bar, 1), 0, true, info));
    info.fMask = MIIM_DATA;
    info.dwItemData = 777;
    EXPECT_TRUE(SetMenuItemInfoW(GetSubMenu(bar, 0), 20, false, info));
    menu.Detach();
    EXPECT_EQ(
        menuDump(bar),
        native.substr(0, native.find(" 5 d")).insert(native.find(" 5 d") - 1, "[5 d108 'd']"));
}

TEST_F(Menu, LongTextsAndTextsOfAnotherCodePageComeAsTheNativeMenuHasThem) {
    struct PageScope {
        ~PageScope() { setAnsiCodePage(std::nullopt); }
    } const scope;
    setAnsiCodePage(936);
    attachTo({{1, u"\u6253\u5F00\u0416|4"}, {2, Text(1000, u'x') + u"\tF1"}});
    EXPECT_EQ(menu.Items()[0].Caption, u"\u6253\u5F00\u0416|4");
    EXPECT_EQ(menu.Items()[0].RawLength, 8);
    EXPECT_EQ(menu.Items()[1].Caption, Text(255, u'x'));
}

TEST_F(Menu, ItemsAreKnownToScreenReadersByTheDrawnCaption) {
    menu.OnOwnerDraw = [](MenuItemLook& look, bool) {
        if (look.sCaption == u"&Plain|1") look.sCaption = u"Pl&ainer";
    };
    const HMENU bar = attachTo(
        {{1, u"0XQQA=7C|3\tCtrl+A"}, {2, u"&Plain|1"}, {3, u"[SEP]" + encodedText(u"\u6253")}});
    ShowWindow(window.hWnd(), SW_SHOW);
    platform::test::settle();
    EXPECT_EQ(platform::test::accessibleItems(bar),
              "item \"A\"\nitem \"Plainer\"\nitem \"\u6253\"\n");
    menu.Detach();
    platform::test::settle();
    EXPECT_TRUE(platform::test::accessibleItems(bar).starts_with("item \"0XQQA=7C|3\"\n"));
}

// ---- Messages

TEST_F(Menu, MessagesThatAreNotAboutTheMenuGoOnToTheWindow) {
    const HMENU bar = attachTo(kTree);
    const HWND hWnd = window.hWnd();
    const auto file = static_cast<WPARAM>(GetSubMenu(bar, 0));
    const auto system = static_cast<WPARAM>(GetSystemMenu(hWnd, false));
    DRAWITEMSTRUCT draw;
    MEASUREITEMSTRUCT measure;
    const auto drawParam = reinterpret_cast<LPARAM>(&draw);
    const auto measureParam = reinterpret_cast<LPARAM>(&measure);
    const struct {
        std::uint32_t uMsg;
        WPARAM wParam;
        LPARAM lParam;
        LRESULT answer;
        int heard;
    } kCases[] = {
        {WM_DRAWITEM, 5, drawParam, 77, 1},  // of a control
        {WM_MEASUREITEM, 5, measureParam, 77, 1},
        {WM_DRAWITEM, 0, drawParam, 1, 0},
        {WM_MEASUREITEM, 0, measureParam, 1, 0},
        {WM_INITMENUPOPUP, file, 0, 0, 0},
        {WM_INITMENUPOPUP, file, 3, 0, 0},
        {WM_INITMENUPOPUP, file, makeLParam(0, 1), 77, 1},  // said to be the system's
        {WM_INITMENUPOPUP, system, 0, 77, 1},
        {WM_INITMENUPOPUP, 0, 0, 77, 1},
        {WM_SETTINGCHANGE, 0, 0, 77, 1},
        {WM_APP_MDISAVEPOPUP, file, 0, 0, 0},
        {WM_APP_REQDATA_MI, 0, measureParam, 1, 0},
        {WM_APP_REQDATA_DI, 0, drawParam, 1, 0},
        {WM_DRAWITEM, 0, 0, 0, 0},  // without a record
        {WM_MEASUREITEM, 0, 0, 0, 0},
        {WM_APP_REQDATA_MI, 0, 0, 0, 0},
        {WM_APP_REQDATA_DI, 0, 0, 0, 0},
    };
    for (const auto& c : kCases) {
        window.heard = 0;
        EXPECT_EQ(SendMessageW(hWnd, c.uMsg, c.wParam, c.lParam), c.answer) << c.uMsg;
        EXPECT_EQ(window.heard, c.heard) << c.uMsg;
    }
    menu.Detach();
    window.heard = 0;
    for (const auto& c : kCases) {
        EXPECT_EQ(SendMessageW(hWnd, c.uMsg, c.wParam, c.lParam), 77) << c.uMsg;
    }
    EXPECT_EQ(window.heard, static_cast<int>(std::size(kCases)));
}

TEST_F(Menu, ItemsWithoutRecordAndHandlersThatFailLeaveItUsable) {
    const HMENU bar = attachTo(kTree);
    const int before = handleCount(HandleKind::DeviceContext);
    Measured item = measured(window.hWnd(), 99);
    EXPECT_EQ(item.width, 3U);
    EXPECT_EQ(item.answer, 0) << "stopped, without an answer";
    EXPECT_EQ(window.heard, 0);
    menu.OnOwnerDraw = [](MenuItemLook&, bool) { throw std::runtime_error("no"); };
    item = measured(window.hWnd(), 0);
    EXPECT_EQ(item.height, 0U);
    EXPECT_EQ(item.answer, 0);
    // The handler may even take everything away, and put another handler in its place.
    menu.OnOwnerDraw = [&](MenuItemLook& look, bool) {
        look.sCaption = u"gone";
        DestroyMenu(bar);
        menu.Detach();
        menu.OnOwnerDraw = nullptr;
    };
    item = measured(window.hWnd(), 0);
    EXPECT_GT(item.width, 3U);
    EXPECT_EQ(item.answer, 1);
    EXPECT_EQ(handleCount(HandleKind::DeviceContext), before);
}

TEST_F(Menu, AHandlerMayEndTheControlAndTheWindowWhileTheMenuIsShown) {
    enum class Deed { Throw, EndMenu, EndWindow, EndBoth, Rewrite, AttachAgain };
    for (const Deed deed : {Deed::Throw, Deed::EndMenu, Deed::EndWindow, Deed::EndBoth,
                            Deed::Rewrite, Deed::AttachAgain}) {
        for (const bool inDrawing : {false, true}) {
            SCOPED_TRACE(std::to_string(static_cast<int>(deed)) + (inDrawing ? " drawing" : ""));
            const int before = handleCount(HandleKind::DeviceContext);
            HearingWindow shown(log, "shown", mainWindow());
            const HMENU bar = menuTree(kTree);
            SetMenu(shown.hWnd(), bar);
            auto ending = std::make_unique<ctlUTF8Menu>();
            int asked = 0;
            bool armed = !inDrawing;
            ending->OnOwnerDraw = [&, hWnd = shown.hWnd()](MenuItemLook& look, bool) {
                if (!armed || ++asked > 1) return;
                look.sCaption = u"deed";
                if (deed == Deed::Throw) throw std::runtime_error("no");
                if (deed == Deed::EndMenu || deed == Deed::EndBoth) ending.reset();
                if (deed == Deed::EndWindow || deed == Deed::EndBoth) DestroyWindow(hWnd);
                if (deed == Deed::AttachAgain) ending->Attach(hWnd);
                if (deed == Deed::Rewrite) {
                    EXPECT_TRUE(DeleteMenu(bar, 0, MF_BYPOSITION));
                    addItem(bar, 9, u"New");
                    ending->Refresh();
                }
            };
            ending->Attach(shown.hWnd());
            ShowWindow(shown.hWnd(), SW_SHOW);
            if (inDrawing) {
                platform::test::settle();
                armed = true;
                SetWindowPos(shown.hWnd(), 0, 0, 0, 400, 90, SWP_NOMOVE | SWP_NOZORDER);
                if (IsWindow(shown.hWnd())) {
                    platform::test::mouseOnMenu(bar, 1, platform::test::MouseAction::Move);
                }
            }
            platform::test::settle();
            EXPECT_GE(asked, 1);
            const bool windowEnds = deed == Deed::EndWindow || deed == Deed::EndBoth;
            EXPECT_EQ(IsWindow(shown.hWnd()), !windowEnds);
            EXPECT_EQ(IsMenu(bar), !windowEnds);
            if (deed == Deed::EndMenu) {
                EXPECT_EQ(menuDump(bar), kNative);
            }
            if (deed == Deed::Rewrite) {
                EXPECT_EQ(dump(*ending), "K5 SEP '[SEP]x', K6 popup 'Deep', K7 popup 'Deeper', "
                                         "K8 bar 'New'");
            }
            ending.reset();
            DestroyWindow(shown.hWnd());
            platform::test::settle();
            EXPECT_EQ(handleCount(HandleKind::DeviceContext), before);
        }
    }
}

TEST_F(Menu, PopupsOfAWindowWithoutAMenuAreDrawnToo) {
    const HMENU popup = menuTree({{40, u"Copy"}, {41, u"More", {{42, u"Deep"}}}});
    std::string drawn;
    menu.OnOwnerDraw = [&](MenuItemLook& look, bool bSelected) {
        if (bSelected) drawn += toUtf8(look.sCaption) + ' ';
    };
    menu.Attach(window.hWnd());
    EXPECT_EQ(dump(menu), "");
    window.on = [](std::uint32_t uMsg, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (uMsg == WM_APP) {
            for (const std::int32_t key : {VK_DOWN, VK_DOWN, VK_RIGHT}) {
                platform::test::pressMenuKey(key);
                platform::test::settle();
            }
            platform::test::pressMenuKey(VK_RETURN);
        }
        return std::nullopt;
    };
    PostMessageW(window.hWnd(), WM_APP, 0, 0);
    EXPECT_EQ(TrackPopupMenu(popup, TPM_RETURNCMD, 0, 0, window.hWnd()), 42);
    EXPECT_EQ(dump(menu), "K0 popup 'Copy', K1 popup 'More', K2 popup 'Deep'");
    EXPECT_NE(drawn.find("Copy More"), std::string::npos) << drawn;
    EXPECT_NE(drawn.find("Deep"), std::string::npos) << drawn;
    DestroyMenu(popup);
    SendMessageW(window.hWnd(), WM_INITMENUPOPUP, static_cast<WPARAM>(popup), 0);
    EXPECT_EQ(dump(menu), "") << "what is gone is forgotten with the next popup";
}

TEST_F(Menu, AttachingSomewhereElseLetsGoOfTheFormerWindow) {
    const HMENU bar = attachTo(kTree);
    HearingWindow other(log, "other", mainWindow());
    menu.Attach(other.hWnd());  // without a menu: only the messages
    EXPECT_EQ(menuDump(bar), kNative);
    SendMessageW(window.hWnd(), WM_INITMENUPOPUP, 0, 0);
    SendMessageW(window.hWnd(), WM_APP_MDIFRAME, 0, 0);
    EXPECT_EQ(window.heard, 2);
    EXPECT_EQ(SendMessageW(other.hWnd(), WM_APP_MDIFRAME, 0, 0), 1);

    const HWND dead = [&] { return HearingWindow(log, "dead", mainWindow()).hWnd(); }();
    EXPECT_EQ(::test::raised([&] { menu.Attach(dead); }),
              std::to_string(kInvalidWindow) + " menu_test.WindowProc: Invalid window");
    EXPECT_EQ(SendMessageW(other.hWnd(), WM_APP_MDIFRAME, 0, 0), 77);
    menu.Attach(window.hWnd());
    EXPECT_EQ(menuDump(bar), kTaken);

    // A window that ends takes its menu along; the control lives on.
    {
        HearingWindow gone(log, "gone", mainWindow());
        SetMenu(gone.hWnd(), menuTree(kTree));
        menu.Attach(gone.hWnd());
    }
    menu.Refresh();
    menu.Detach();
    menu.Attach(window.hWnd());
    EXPECT_EQ(menuDump(bar), kTaken);
}

TEST_F(Menu, TheFontFollowsTheSettingsAndTheCustomFace) {
    const HMENU bar = attachTo({{1, u"Width"}});
    menu.IconDim(0);  // the text alone decides the height
    const auto height = [&] { return measured(window.hWnd(), 0).height; };
    const int fonts = handleCount(HandleKind::Font);
    (void)height();
    const std::uint32_t plain = height();
    EXPECT_EQ(handleCount(HandleKind::Font), fonts + 1) << "one for all items";
    menu.CustomFontFace(u"Noto Sans Thai");
    EXPECT_EQ(height(), plain);
    SendMessageW(window.hWnd(), WM_SETTINGCHANGE, 0, 0);
    const std::uint32_t custom = height();
    EXPECT_NE(custom, plain);
    menu.CustomFontFace(Text(33, u'f'));
    EXPECT_EQ(SendMessageW(window.hWnd(), WM_SETTINGCHANGE, 0, 0), 77) << "nothing is raised there";
    EXPECT_EQ(height(), custom) << "and the font is the one before";
    menu.CustomFontFace(Text(32, u'f'));
    menu.Attach(window.hWnd());
    menu.CustomFontFace(Text(33, u'f'));
    EXPECT_EQ(::test::raised([&] { menu.Attach(window.hWnd()); }),
              "9 ctlUTF8Menu.pvLoadMenuFont: Subscript out of range");
    EXPECT_EQ(menuDump(bar), "1 d1000 'Width'");
    menu.CustomFontFace(u"");
    menu.Attach(window.hWnd());
    EXPECT_EQ(height(), plain);
}

// ---- Several documents

class MdiMenu : public Menu {
public:
    MdiMenu() { client.activeChild = child.hWnd(); }
    HearingWindow client{log, "client", childOf(window.hWnd(), u"MDIClient")};
    HearingWindow child{log, "child", childOf(client.hWnd())};
    HMENU bar = menuTree({{1, u"File", {{20, u"a"}}}});
    ctlUTF8Menu& onFrame = menu;
    ctlUTF8Menu onChild;
};

TEST_F(MdiMenu, ChildrenHaveTheirItemsMeasuredAndDrawnByTheFrame) {
    SetMenu(window.hWnd(), bar);
    PropertyBag bag;
    bag.WriteProperty(u"StringMode", std::int32_t{smPackedUTF8}, std::int32_t{smEncoded});
    onChild.ReadProperties(bag);
    onChild.Attach(child.hWnd());
    const auto file = GetSubMenu(bar, 0);

    // Without a link to a frame it draws nothing, and says that it did.
    DRAWITEMSTRUCT draw;
    EXPECT_EQ(SendMessageW(child.hWnd(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&draw)), 1);
    EXPECT_EQ(measured(child.hWnd(), 0).width, 3U);

    onFrame.Attach(window.hWnd());  // tells the active child
    std::string drawn;
    onFrame.OnOwnerDraw = [&](MenuItemLook& look, bool) {
        drawn += toUtf8(look.sCaption) + ' ';
        look.sCaption = u"\u00C3\u2013";  // one character in the child's string mode
    };
    const Measured forwarded = measured(child.hWnd(), 0);
    EXPECT_LT(forwarded.width, measured(window.hWnd(), 0).width);
    EXPECT_EQ(forwarded.answer, 1);
    EXPECT_EQ(SendMessageW(child.hWnd(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&draw)), 1);
    EXPECT_EQ(drawn, "File File File ");

    addItem(file, 21, u"b");
    EXPECT_EQ(SendMessageW(child.hWnd(), WM_INITMENUPOPUP, static_cast<WPARAM>(file), 2), 0);
    EXPECT_EQ(dump(onFrame), "K0 bar 'File', K1 popup 'a', K2 popup 'b'");
    EXPECT_EQ(
        SendMessageW(child.hWnd(), WM_INITMENUPOPUP, static_cast<WPARAM>(file), makeLParam(0, 1)),
        77);
    // A frame that is gone leaves a control on a standard window.
    onFrame.Detach();
    SendMessageW(child.hWnd(), WM_APP_MDIFRAME, 12345, 0);
    EXPECT_EQ(measured(child.hWnd(), 0).width, 3U);
    EXPECT_EQ(measured(child.hWnd(), 0).answer, 0);
}

TEST_F(MdiMenu, AHandlerOnTheFrameMayEndTheControlOfTheChildThatAsks) {
    SetMenu(window.hWnd(), bar);
    DRAWITEMSTRUCT draw;
    MEASUREITEMSTRUCT measure;
    const struct {
        std::uint32_t uMsg;
        LPARAM lParam;
    } kCases[] = {{WM_DRAWITEM, reinterpret_cast<LPARAM>(&draw)},
                  {WM_MEASUREITEM, reinterpret_cast<LPARAM>(&measure)}};
    for (const auto& c : kCases) {
        auto ending = std::make_unique<ctlUTF8Menu>();
        ending->Attach(child.hWnd());
        onFrame.Attach(window.hWnd());
        onFrame.OnOwnerDraw = [&](MenuItemLook&, bool) { ending.reset(); };
        EXPECT_EQ(SendMessageW(child.hWnd(), c.uMsg, 0, c.lParam), 1);
        EXPECT_EQ(ending, nullptr);
        EXPECT_EQ(SendMessageW(child.hWnd(), c.uMsg, 0, c.lParam), 77)
            << "it is the window's again";
    }
    EXPECT_GT(measure.itemWidth, 0U);
}

TEST_F(MdiMenu, AChildThatHoldsRecordsDrawsThemItself) {
    HearingWindow standard(log, "standard", mainWindow());
    SetMenu(standard.hWnd(), bar);
    onChild.Attach(standard.hWnd());
    std::string calls;
    onChild.OnOwnerDraw = [&](MenuItemLook&, bool) { calls += "own "; };
    onFrame.OnOwnerDraw = [&](MenuItemLook&, bool) { calls += "frame "; };
    attachTo({{5, u"Frame"}});
    SendMessageW(standard.hWnd(), WM_APP_MDIFRAME, static_cast<WPARAM>(window.hWnd()), 0);
    DRAWITEMSTRUCT draw;
    SendMessageW(standard.hWnd(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&draw));
    (void)measured(standard.hWnd(), 0);
    onChild.Detach();  // ahead of its window
    EXPECT_EQ(calls, "own frame ");
}

TEST_F(MdiMenu, TheFrameFollowsTheMenuThatItIsGiven) {
    SetMenu(window.hWnd(), bar);
    onChild.Attach(child.hWnd());
    onFrame.Attach(window.hWnd());
    const HMENU second = menuTree({{7, u"Edit", {{70, u"Undo"}}}});
    const auto setMenu = [&](HMENU hMenu) {
        return SendMessageW(client.hWnd(), WM_MDISETMENU, static_cast<WPARAM>(hMenu), 0);
    };
    EXPECT_EQ(setMenu(0), 77) << "the client window hears it in any case";
    EXPECT_EQ(setMenu(bar), 77);
    EXPECT_EQ(dump(onFrame), "K0 bar 'File', K1 popup 'a'");
    SendMessageW(child.hWnd(), WM_APP_MDIFRAME, 0, 0);  // the child forgets its frame
    EXPECT_EQ(setMenu(second), 77);
    EXPECT_EQ(client.heard, 3);
    EXPECT_EQ(menuDump(bar), "1 d1000 'File'[20 d20000 'a']");
    EXPECT_EQ(dump(onFrame), "K0 bar 'Edit', K1 popup 'Undo'");
    EXPECT_GT(measured(child.hWnd(), 0).width, 3U) << "the child was told";

    // The menus of the windows themselves are nobody's here.
    const auto opens = [&](HMENU hMenu) {
        return SendMessageW(window.hWnd(), WM_INITMENUPOPUP, static_cast<WPARAM>(hMenu), 0);
    };
    EXPECT_EQ(opens(GetSubMenu(second, 0)), 0);
    EXPECT_EQ(opens(GetSystemMenu(child.hWnd(), false)), 77);
    EXPECT_EQ(opens(GetSystemMenu(window.hWnd(), false)), 77);
    client.activeChild = 0;
    EXPECT_EQ(opens(GetSystemMenu(child.hWnd(), false)), 0);
    EXPECT_EQ(setMenu(bar), 77);
    onFrame.Detach();
    EXPECT_EQ(setMenu(second), 77);
    EXPECT_TRUE(onFrame.Items().empty());
    DestroyMenu(second);
}

// ---- Properties

namespace {

// Another value than the default for each property, and each number another one.
PropertyBag otherValues() {
    PropertyBag bag;
    const MenuProps defaults;
    int number = 0;
    for (const MenuProperty& property : kMenuProperties) {
        std::visit(
            [&]<class T>(T MenuProps::*member) {
                T value{};
                if constexpr (std::is_same_v<T, Text>) value = u"Arial";
                if constexpr (std::is_same_v<T, bool>) value = !(defaults.*member);
                if constexpr (std::is_same_v<T, std::int16_t> || std::is_same_v<T, std::int32_t>) {
                    value = static_cast<T>(defaults.*member + ++number);
                }
                if constexpr (std::is_same_v<T, std::shared_ptr<MenuPictures>>) {
                    value = std::make_shared<MenuPictures>(2);
                }
                bag.WriteProperty(property.sName, value, defaults.*member);
            },
            property.member);
    }
    return bag;
}

}  // namespace

TEST(MenuProperties, AreStoredByNameUnlessTheyAreTheDefaults) {
    ctlUTF8Menu read;
    const PropertyBag stored = otherValues();
    read.ReadProperties(stored);
    EXPECT_EQ(read.IconDim(), 17);
    EXPECT_EQ(read.CustomFontFace(), u"Arial");
    PropertyBag written, none;
    read.WriteProperties(written);
    EXPECT_TRUE(written == stored);
    read.ReadProperties({});
    EXPECT_EQ(read.Properties(), MenuProps());
    read.WriteProperties(none);
    EXPECT_EQ(none.Count(), 0U);

    // The colours of text separators follow those of the menu where nothing else is stored.
    PropertyBag colors;
    colors.WriteProperty(u"MenuBackColor", std::int32_t{5}, std::int32_t{0});
    colors.WriteProperty(u"MenuForeColorNormal", std::int32_t{6}, std::int32_t{0});
    read.ReadProperties(colors);
    EXPECT_EQ(read.ExtSepBackColor(), 5);
    EXPECT_EQ(read.ExtSepForeColor(), 6);
    EXPECT_EQ(::test::raised([&] { read.StringMode(1); }),
              "StringMode: This property can be set only a design time!");
    EXPECT_EQ(read.StringMode(), smEncoded);
    ctlUTF8Menu designed(false);
    designed.StringMode(1);
    EXPECT_EQ(designed.StringMode(), smPackedUTF8);
}

}  // namespace
